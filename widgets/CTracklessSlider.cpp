#include "widgets/CTracklessSlider.h"

#include <QApplication>
#include <QMouseEvent>

CTracklessSlider::CTracklessSlider(QWidget* parent) : QAbstractSlider(parent), DoubleBuffer(this)
{
    setFocusPolicy(Qt::ClickFocus);
    connect(this, SIGNAL(valueChanged(int)), this, SLOT(updateValue()));
    updateValue();
}

CTracklessSlider::~CTracklessSlider()
{
    // The pointer is the application's, and would stay hidden.
    if (m_drag.isActive())
        CTracklessSlider::unsetSliderCursor();
}

void CTracklessSlider::setPointerWarps(bool warps)
{
    m_drag.setPointerWarps(warps);
}

void CTracklessSlider::updateMemAPI()
{
    setValue(getParam());
}

void CTracklessSlider::updateValue()
{
    if (!setParam(value()))
        setValue(getParam());
    updateDoubleBuffer();
}

bool CTracklessSlider::event(QEvent* event)
{
    // A message box takes the release, whoever has the focus.
    if (event->type() == QEvent::WindowBlocked)
        letGo();
    return !eventDoubleBuffer(event) && QWidget::event(event);
}

void CTracklessSlider::mouseMoveEvent(QMouseEvent* event)
{
    m_drag.move(*event);
}

void CTracklessSlider::wheelEvent(QWheelEvent* event)
{
    m_drag.wheel(*event);
}

void CTracklessSlider::focusOutEvent(QFocusEvent* event)
{
    letGo();
    QAbstractSlider::focusOutEvent(event);
}

void CTracklessSlider::hideEvent(QHideEvent* event)
{
    letGo();
    QAbstractSlider::hideEvent(event);
}

bool CTracklessSlider::press(const QMouseEvent& event)
{
    // The release of an earlier press can get lost, but neither its pointer nor that this press selects. Only a drag
    // goes on while another button is pressed.
    if (!m_drag.isActive() || event.button() == Qt::LeftButton)
        letGo();
    setSliderDown(true);
    if (event.button() != Qt::LeftButton)
        return false;
    m_drag.begin(event);
    setSliderCursor(Qt::BlankCursor);
    return true;
}

void CTracklessSlider::release()
{
    setSliderDown(false);
    m_drag.end();
    unsetSliderCursor();
}

void CTracklessSlider::letGo()
{
    if (m_drag.isActive())
        release();
    else
        setSliderDown(false);
}

CSliderDrag& CTracklessSlider::drag()
{
    return m_drag;
}

void CTracklessSlider::setSliderCursor(const QCursor& cursor)
{
    QApplication::setOverrideCursor(cursor);
}

void CTracklessSlider::unsetSliderCursor()
{
    QApplication::restoreOverrideCursor();
}
