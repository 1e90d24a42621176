#pragma once

#include "widgets/DragArithmetic.h"

#include <QPointF>

class QAbstractSlider;
class QMouseEvent;
class QWheelEvent;

/// A drag of a slider without a track: up or down it changes the value while the pointer is held at the slider's
/// centre. The wheel steps. Hiding the pointer, and when a drag begins and ends, is the slider's.
///
/// Units    positions are global, in logical pixels.      Threads  GUI thread only.
/// Dense    on a screen whose ratio is not 1 the pointer also stops between two logical pixels. The toolkit rounds that
///          away for the screen, but not for the window: travel is measured in the window. Where in the window the
///          centre's nearest device pixel lies is seen when the pointer has been placed there.
/// Pointer  where the window system does not let it be placed, it moves on, and a drag measures from its last position.
class CSliderDrag
{
  public:
    /// slider   owns this; borrowed.
    explicit CSliderDrag(QAbstractSlider* slider);

    /// Whether the pointer can be placed; what the window system says until it is set. Not during a drag.
    void setPointerWarps(bool warps);

    [[nodiscard]] bool isActive() const;
    void begin(const QMouseEvent& press);
    void end();

    /// Changes the slider's value by what the pointer has travelled and takes the pointer back to the centre.
    /// Nothing happens without a drag or the left button, or where the pointer was placed.
    void move(const QMouseEvent& event);

    /// Whether a position of an event of the slider's, in its own coordinates, lies within it. Asked of the event
    /// alone: where a window is on the screen, not every window system tells.
    [[nodiscard]] bool isOverSlider(const QPointF& position) const;

    /// Where the pointer was at the press, and where the slider's centre was then.
    [[nodiscard]] QPoint pressPos() const;
    [[nodiscard]] QPoint centre() const;

    /// Places the pointer if it is elsewhere and can be placed.
    void warpPointer(const QPoint& position);

    /// One single step for any turn of the wheel over the slider.
    void wheel(const QWheelEvent& event) const;

  private:
    [[nodiscard]] QPointF travelTo(const QMouseEvent& event);
    void placePointer(const QPoint& position);

    QAbstractSlider* m_slider;
    bool m_pointerWarps;
    bool m_active = false;
    DragArithmetic m_arithmetic;
    QPoint m_pressPos;
    QPoint m_centre;
    QPointF m_origin;             ///< travel is measured from here
    QPointF m_originInWindow;     ///< the same place, exactly
    bool m_pointerPlaced = false; ///< since the last event
};
