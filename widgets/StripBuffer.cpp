#include "widgets/StripBuffer.h"

#include "widgets/ImageStrip.h"

#include <QPainter>
#include <QWidget>

#include <algorithm>

Qt::Alignment StripBuffer::alignment() const
{
    return m_alignment;
}

void StripBuffer::setAlignment(Qt::Alignment alignment)
{
    m_alignment = alignment;
    updateDoubleBuffer();
}

QPixmap StripBuffer::combinedImage() const
{
    return m_combinedImage;
}

void StripBuffer::setCombinedImage(const QPixmap& image)
{
    m_combinedImage = image;
    updateDoubleBuffer();
}

int StripBuffer::imageCategories() const
{
    return m_imageCategories;
}

void StripBuffer::setImageCategories(int count)
{
    m_imageCategories = std::max(count, 1);
    updateDoubleBuffer();
}

int StripBuffer::category() const
{
    return m_category;
}

void StripBuffer::setCategory(int category)
{
    m_category = std::clamp(category, 0, m_imageCategories - 1);
    updateDoubleBuffer();
}

void StripBuffer::paintDoubleBuffer(QPainter* painter)
{
    if (m_combinedImage.isNull())
        return;
    const ImageStrip strip(m_combinedImage, m_imageCategories, imageRows());
    painter->drawPixmap(strip.target(widget()->size(), m_alignment), m_combinedImage,
                        strip.source(m_category, imageRow()));
}
