#include "app/CMainWindow.h"

#include "app/WindowDrag.h"
#include "app/WindowReach.h"
#include "app/common/Utilities.h"
#include "app/common/WindowSystem.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QWindow>

namespace
{
QList<QRect> screenAreas()
{
    QList<QRect> areas;
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (const QScreen* screen : screens)
        areas.append(screen->availableGeometry());
    return areas;
}

QList<WindowDrag::Screen> screenScales()
{
    const bool apart = WindowSystem::current().scalesScreensApart();
    QList<WindowDrag::Screen> scales;
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (const QScreen* screen : screens)
        scales.append({screen->geometry(), apart ? screen->devicePixelRatio() : 1.0});
    return scales;
}
} // namespace

void CMainWindow::mousePressEvent(QMouseEvent* e)
{
    if (e->button() != Qt::LeftButton)
        return;
    m_dragOffset = e->scenePosition().toPoint();
    m_dragging = true;
}

void CMainWindow::mouseMoveEvent(QMouseEvent* e)
{
    if (!m_dragging || !e->buttons().testFlag(Qt::LeftButton))
        return;
    // At the first movement, so that a click stays a click. The window system then has the pointer until its release.
    if (!WindowSystem::current().letsProgramsPlace() && windowHandle()->startSystemMove()) {
        m_dragging = false;
        return;
    }
    const auto position = WindowDrag::position(e->globalPosition(), m_dragOffset, size(), screenScales(),
                                               QGuiApplication::screens().indexOf(screen()));
    if (position)
        move(*position);
}

void CMainWindow::mouseReleaseEvent(QMouseEvent* e)
{
    if (e->button() != Qt::LeftButton || !m_dragging)
        return;
    if (!WindowReach::isReachable(geometry(), screenAreas())) {
        const QPoint cursor = e->globalPosition().toPoint();
        const QScreen* screen = QGuiApplication::screenAt(cursor);
        if (screen == nullptr)
            screen = QGuiApplication::primaryScreen();
        move(WindowReach::reachablePosition(cursor - m_dragOffset, size(), screen->availableGeometry()));
    }
    m_dragging = false;
    m_dragOffset = QPoint();
}

void CMainWindow::bringOnScreen(const QRect& part)
{
    if (WindowSystem::current().letsProgramsPlace())
        move(pos() + WindowReach::missing(part.translated(pos()), screen()->availableGeometry(), screenAreas()));
}

void CMainWindow::callStaysOnTop(bool isTop)
{
    Utilities::windowStaysOnTop(this, isTop);
}
