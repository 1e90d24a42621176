#include "app/common/WindowSystem.h"

#include <QGuiApplication>

WindowSystem WindowSystem::current()
{
    return {QGuiApplication::platformName(), qgetenv("WAYLAND_DISPLAY"), qgetenv("XDG_SESSION_TYPE")};
}

WindowSystem::WindowSystem(const QString& platform, const QByteArray& waylandDisplay, const QByteArray& sessionType)
    : m_isWayland(platform.startsWith(QLatin1String("wayland"))),
      m_isInWaylandSession(
          m_isWayland || (platform == QLatin1String("xcb") && (!waylandDisplay.isEmpty() || sessionType == "wayland"))),
      m_isMac(platform == QLatin1String("cocoa"))
{
}

bool WindowSystem::letsProgramsPlace() const
{
    return !m_isInWaylandSession;
}

bool WindowSystem::keepsWindowsInFront() const
{
    return !m_isWayland;
}

bool WindowSystem::scalesScreensApart() const
{
    return !m_isMac;
}
