#include "widgets/CImageSlider.h"

#include "widgets/ImageStrip.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

CImageSlider::CImageSlider(QWidget* parent) : QAbstractSlider(parent), DoubleBuffer(this)
{
    setFocusPolicy(Qt::ClickFocus);
    connect(this, SIGNAL(valueChanged(int)), this, SLOT(updateValue()));
    updateValue();
}

CImageSlider::~CImageSlider()
{
    if (m_drag.isActive())
        QApplication::restoreOverrideCursor();
    unregisterObserverFromMemAPI();
}

QPixmap CImageSlider::getImage() const
{
    return m_image;
}

void CImageSlider::setImage(const QPixmap& image)
{
    m_image = image;
    updateDoubleBuffer();
}

int CImageSlider::getTotalImages() const
{
    return m_totalImages;
}

void CImageSlider::setTotalImages(int count)
{
    if (count < 1)
        return;
    m_totalImages = count;
    setRange(0, count - 1);
    updateDoubleBuffer();
}

double CImageSlider::getMagnificationForMouseMove(int range, bool fine)
{
    return DragArithmetic::factor(range, fine);
}

void CImageSlider::setPointerWarps(bool warps)
{
    m_drag.setPointerWarps(warps);
}

void CImageSlider::updateMemAPI()
{
    setValue(getParam());
}

void CImageSlider::updateValue()
{
    if (!setParam(value()))
        setValue(getParam());
    updateDoubleBuffer();
}

bool CImageSlider::event(QEvent* event)
{
    // A message box takes the release, whoever has the focus.
    if (event->type() == QEvent::WindowBlocked)
        letGo();
    return !eventDoubleBuffer(event) && QWidget::event(event);
}

void CImageSlider::mousePressEvent(QMouseEvent* event)
{
    // The release of an earlier press can get lost, but neither its pointer nor that this press selects. Only a drag
    // goes on while another button is pressed.
    if (!m_drag.isActive() || event->button() == Qt::LeftButton)
        letGo();
    setSliderDown(true);
    if (event->button() != Qt::LeftButton)
        return;
    m_drag.begin(*event);
    QApplication::setOverrideCursor(Qt::BlankCursor);
    m_drag.warpPointer(m_drag.centre());
}

void CImageSlider::mouseReleaseEvent(QMouseEvent* event)
{
    setSliderDown(false);
    m_drag.end();
    QApplication::restoreOverrideCursor();
    if (event->button() == Qt::LeftButton)
        m_drag.warpPointer(m_drag.pressPos());
}

void CImageSlider::mouseMoveEvent(QMouseEvent* event)
{
    m_drag.move(*event);
}

void CImageSlider::wheelEvent(QWheelEvent* event)
{
    m_drag.wheel(*event);
}

void CImageSlider::focusOutEvent(QFocusEvent* event)
{
    letGo();
    QAbstractSlider::focusOutEvent(event);
}

void CImageSlider::hideEvent(QHideEvent* event)
{
    letGo();
    QAbstractSlider::hideEvent(event);
}

void CImageSlider::letGo()
{
    setSliderDown(false);
    if (!m_drag.isActive())
        return;
    m_drag.end();
    QApplication::restoreOverrideCursor();
}

void CImageSlider::paintDoubleBuffer(QPainter* painter)
{
    if (m_image.isNull())
        return;
    painter->drawPixmap(QRectF(rect()), m_image, ImageStrip(m_image, 1, m_totalImages).source(0, value()));
}
