#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

/// One mouse event at a global position, straight to the widget, as a window system would deliver it.
/// button   the one that the event is about.      buttons   all that are down then.
inline void sendMouse(QWidget& widget, QEvent::Type type, const QPointF& global, Qt::MouseButton button,
                      Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers = {})
{
    QMouseEvent event(type, widget.mapFromGlobal(global), global, button, buttons, modifiers);
    QApplication::sendEvent(&widget, &event);
}

inline void sendPress(QWidget& widget, const QPointF& global, Qt::MouseButton button = Qt::LeftButton)
{
    sendMouse(widget, QEvent::MouseButtonPress, global, button, button);
}

inline void sendMove(QWidget& widget, const QPointF& global, Qt::KeyboardModifiers modifiers = {})
{
    sendMouse(widget, QEvent::MouseMove, global, Qt::NoButton, Qt::LeftButton, modifiers);
}

inline void sendRelease(QWidget& widget, const QPointF& global, Qt::MouseButton button = Qt::LeftButton)
{
    sendMouse(widget, QEvent::MouseButtonRelease, global, button, Qt::NoButton);
}

inline void sendWheel(QWidget& widget, const QPointF& global, const QPoint& angleDelta)
{
    QWheelEvent event(widget.mapFromGlobal(global), global, QPoint(), angleDelta, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
}

/// The point that drags hold the pointer at.
inline QPoint centreOf(const QWidget& widget)
{
    return widget.mapToGlobal(QPoint((widget.width() - 1) / 2, (widget.height() - 1) / 2));
}
