#include "widgets/CImageSlider.h"

#include "widgets/ImageStrip.h"

#include <QMouseEvent>
#include <QPainter>

CImageSlider::CImageSlider(QWidget* parent) : CTracklessSlider(parent) {}

CImageSlider::~CImageSlider()
{
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

void CImageSlider::mousePressEvent(QMouseEvent* event)
{
    if (press(*event))
        drag().warpPointer(drag().centre());
}

void CImageSlider::mouseReleaseEvent(QMouseEvent* event)
{
    release();
    if (event->button() == Qt::LeftButton)
        drag().warpPointer(drag().pressPos());
}

void CImageSlider::paintDoubleBuffer(QPainter* painter)
{
    if (m_image.isNull())
        return;
    painter->drawPixmap(QRectF(rect()), m_image, ImageStrip(m_image, 1, m_totalImages).source(0, value()));
}
