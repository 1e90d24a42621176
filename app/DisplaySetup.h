#pragma once

#include <QFont>

/// What the process settles with the window system before and after the application object is made.
namespace DisplaySetup
{
/// Before the application object: asks for 72 dots an inch, for which the skin is laid out, and for an X server in a
/// Wayland session that has one, since the window places itself and the sliders move the pointer. What the user has
/// set in the environment stays.
void prepareEnvironment();

/// The desktop's dialog font at the size in pixels that it has at the desktop's usual 96 dots an inch, told to a
/// process that runs at the given logical dots an inch.
[[nodiscard]] QFont dialogFont(const QFont& desktopFont, qreal dotsPerInch);

/// While it lives, a fatal message of the toolkit, such as that there is no display, goes to standard error as one
/// line and ends the process with status 1 instead of aborting it.
class CFatalMessageGuard
{
  public:
    CFatalMessageGuard();
    ~CFatalMessageGuard();
    CFatalMessageGuard(const CFatalMessageGuard&) = delete;
    CFatalMessageGuard& operator=(const CFatalMessageGuard&) = delete;

  private:
    QtMessageHandler m_previous;
};
} // namespace DisplaySetup
