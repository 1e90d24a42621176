#include "widgets/CSliderDrag.h"

#include "widgets/PointerWarp.h"

#include <QAbstractSlider>
#include <QCursor>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QtMath>

#include <cmath>

// After each movement the pointer goes back to the slider's centre, so that no drag ends at the edge of the screen. The
// way from there to the next event is the travel. The placing causes an event of its own, which lies on the centre and
// so has no travel; on a dense screen it also tells where in the window that centre exactly is.

CSliderDrag::CSliderDrag(QAbstractSlider* slider) : m_slider(slider), m_pointerWarps(PointerWarp::isPossible()) {}

void CSliderDrag::setPointerWarps(bool warps)
{
    m_pointerWarps = warps;
}

bool CSliderDrag::isActive() const
{
    return m_active;
}

void CSliderDrag::begin(const QMouseEvent& press)
{
    m_active = true;
    m_arithmetic.reset();
    m_pressPos = press.globalPosition().toPoint();
    m_centre = m_slider->mapToGlobal(QPoint((m_slider->width() - 1) / 2, (m_slider->height() - 1) / 2));
    m_origin = m_pointerWarps ? QPointF(m_centre) : press.globalPosition();
    // As far from the press as in global coordinates, until an event from the origin itself tells it exactly.
    m_originInWindow = press.scenePosition() + (m_origin - press.globalPosition());
    m_pointerPlaced = false;
}

void CSliderDrag::end()
{
    m_active = false;
}

void CSliderDrag::move(const QMouseEvent& event)
{
    if (!m_active || !event.buttons().testFlag(Qt::LeftButton))
        return;
    const QPointF travel = travelTo(event);
    if (travel.isNull())
        return;

    const int range = m_slider->maximum() - m_slider->minimum();
    const bool fine = event.modifiers().testFlag(Qt::ShiftModifier);
    const int steps = m_arithmetic.steps(travel.y(), DragArithmetic::factor(range, fine));
    const int oldValue = m_slider->value();
    // Up is always more, also with inverted controls, which are about keys and wheel.
    m_slider->setValue(oldValue - steps);
    if (m_slider->value() != oldValue)
        emit m_slider->actionTriggered(QAbstractSlider::SliderMove);

    if (m_pointerWarps) {
        placePointer(m_centre);
    } else {
        m_origin = event.globalPosition();
        m_originInWindow = event.scenePosition();
    }
}

QPointF CSliderDrag::travelTo(const QMouseEvent& event)
{
    // On the screen, for which the toolkit rounds parts of a pixel away.
    const QPointF rounded = event.globalPosition() - m_origin;
    if (m_pointerPlaced && rounded.isNull())
        m_originInWindow = event.scenePosition();
    m_pointerPlaced = false;
    const QPointF exact = event.scenePosition() - m_originInWindow;
    // A window that moves under the drag makes its positions worthless until the pointer has been placed again.
    const QPointF roundedAway = exact - rounded;
    return std::abs(roundedAway.x()) < 1.0 && std::abs(roundedAway.y()) < 1.0 ? exact : rounded;
}

void CSliderDrag::placePointer(const QPoint& position)
{
    PointerWarp::moveTo(position);
    m_pointerPlaced = true;
}

bool CSliderDrag::isOverSlider(const QPointF& position) const
{
    // Downwards: on a dense screen the last half pixel still belongs to the slider.
    return m_slider->rect().contains(qFloor(position.x()), qFloor(position.y()));
}

QPoint CSliderDrag::pressPos() const
{
    return m_pressPos;
}

QPoint CSliderDrag::centre() const
{
    return m_centre;
}

void CSliderDrag::warpPointer(const QPoint& position)
{
    if (m_pointerWarps && QCursor::pos() != position)
        placePointer(position);
}

void CSliderDrag::wheel(const QWheelEvent& event) const
{
    const int delta = event.angleDelta().y();
    if (delta == 0 || !isOverSlider(event.position()))
        return;
    const bool add = (delta > 0) != m_slider->invertedControls();
    m_slider->triggerAction(add ? QAbstractSlider::SliderSingleStepAdd : QAbstractSlider::SliderSingleStepSub);
}
