#include "widgets/ImageStrip.h"

namespace
{
// The bits that tell where to; baseline, absolute and the like have no meaning for a picture.
constexpr int k_horizontalBits = 0x1F;
constexpr int k_verticalBits = 0xE0;
} // namespace

ImageStrip::ImageStrip(const QPixmap& picture, int columns, int rows)
    : ImageStrip(picture.deviceIndependentSize(), picture.devicePixelRatio(), columns, rows)
{
}

ImageStrip::ImageStrip(const QSizeF& size, qreal ratio, int columns, int rows)
    : m_frameSize(static_cast<int>(size.width()) / columns, static_cast<int>(size.height()) / rows), m_ratio(ratio)
{
}

QSize ImageStrip::frameSize() const
{
    return m_frameSize;
}

QRectF ImageStrip::source(int column, int row) const
{
    const QPointF topLeft(m_frameSize.width() * column, m_frameSize.height() * row);
    return {topLeft * m_ratio, QSizeF(m_frameSize) * m_ratio};
}

QRect ImageStrip::target(const QSize& area, Qt::Alignment alignment) const
{
    const QSize rest = area - m_frameSize;
    QPoint topLeft;
    switch (alignment.toInt() & k_horizontalBits) {
    case Qt::AlignRight:
        topLeft.setX(rest.width());
        break;
    case Qt::AlignHCenter:
        topLeft.setX(rest.width() / 2);
        break;
    }
    switch (alignment.toInt() & k_verticalBits) {
    case Qt::AlignBottom:
        topLeft.setY(rest.height());
        break;
    case Qt::AlignVCenter:
        topLeft.setY(rest.height() / 2);
        break;
    }
    return {topLeft, m_frameSize};
}
