#pragma once

#include <functional>

#include <X11/Xlib.h>

/// What is drawn on an X display, by any program and in any window.
///
/// Threads  one.      Display  borrowed; nobody else takes its events.
/// Failure  a server without the damage extension reports nothing.
class CScreenDamage
{
  public:
    explicit CScreenDamage(Display* display);

    /// Waits until the server has sent something, or so many milliseconds.
    void wait(int timeout) const;

    /// Hands over, without waiting, each rectangle of the screen that was drawn on since the last call.
    void take(const std::function<void(const XRectangle&)>& damaged);

    /// Pixels of the largest window so far that was made or resized since the construction; 1 before the first.
    [[nodiscard]] int largestWindow() const;

  private:
    Display* m_display;
    int m_firstEvent = 0;
    int m_largestWindow = 1;
};
