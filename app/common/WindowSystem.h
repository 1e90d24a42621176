#pragma once

#include <QByteArray>
#include <QString>

/// What the window system under the editor lets a program do. GUI thread only, while the application object lives.
class WindowSystem
{
  public:
    /// The present one.
    static WindowSystem current();

    /// platform         Qt's name for it, as in QGuiApplication::platformName().
    /// waylandDisplay   WAYLAND_DISPLAY in the environment, and
    /// sessionType      XDG_SESSION_TYPE: an X server in a Wayland session obeys that session.
    WindowSystem(const QString& platform, const QByteArray& waylandDisplay, const QByteArray& sessionType);

    /// Whether a program places its windows and the pointer itself.
    [[nodiscard]] bool letsProgramsPlace() const;

    /// Whether a window can be kept in front of all others.
    [[nodiscard]] bool keepsWindowsInFront() const;

    /// Whether global positions count a dense screen's own pixels between the screens' corners, so that each screen
    /// has a ratio of its own to them. Elsewhere all screens share one logical space.
    [[nodiscard]] bool scalesScreensApart() const;

  private:
    bool m_isWayland;
    bool m_isInWaylandSession;
    bool m_isMac;
};
