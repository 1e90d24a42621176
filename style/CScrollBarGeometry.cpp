#include "style/CScrollBarGeometry.h"

#include <QStyleOptionSlider>

namespace
{
constexpr int k_arrowMargin = 3;
constexpr int k_subLineStart = 3;
constexpr int k_addLineStart = 11;
constexpr int k_arrowLength = 7;

constexpr int k_grooveMargin = 4;
constexpr int k_grooveStart = 21;
constexpr int k_grooveEndGap = 4;

/// A span so wide that a page could not be told from nothing.
constexpr qint64 k_widestSpan = 1073741824;
} // namespace

CScrollBarGeometry::CScrollBarGeometry(const QStyleOptionSlider& option, int thickness, int sliderMinimum)
    : m_bar(option.rect), m_horizontal(option.orientation == Qt::Horizontal), m_thickness(thickness),
      m_grooveLength(qMax(0, (m_horizontal ? m_bar.width() : m_bar.height()) - k_grooveStart - k_grooveEndGap))
{
    const int length = lengthOfSlider(option, sliderMinimum);
    m_sliderStart =
        k_grooveStart + QStyle::sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition,
                                                        m_grooveLength - length, option.upsideDown);
    m_sliderEnd = m_sliderStart + length;
}

QRect CScrollBarGeometry::part(QStyle::SubControl control) const
{
    const int grooveEnd = k_grooveStart + m_grooveLength;
    switch (control) {
    case QStyle::SC_ScrollBarSubLine:
        return stretch(k_subLineStart, k_subLineStart + k_arrowLength, k_arrowMargin);
    case QStyle::SC_ScrollBarAddLine:
        return stretch(k_addLineStart, k_addLineStart + k_arrowLength, k_arrowMargin);
    case QStyle::SC_ScrollBarGroove:
        return stretch(k_grooveStart, grooveEnd, k_grooveMargin);
    case QStyle::SC_ScrollBarSubPage:
        return stretch(k_grooveStart, m_sliderStart, k_grooveMargin);
    case QStyle::SC_ScrollBarSlider:
        return stretch(m_sliderStart, m_sliderEnd, k_grooveMargin);
    case QStyle::SC_ScrollBarAddPage:
        return stretch(m_sliderEnd, grooveEnd, k_grooveMargin);
    default:
        return {};
    }
}

int CScrollBarGeometry::lengthOfSlider(const QStyleOptionSlider& option, int sliderMinimum) const
{
    const qint64 span = qint64(option.maximum) - option.minimum;
    if (span == 0)
        return m_grooveLength;
    qint64 length = qint64(m_grooveLength) * option.pageStep / (span + option.pageStep);
    if (length < sliderMinimum || span >= k_widestSpan)
        length = sliderMinimum;
    return int(qMin<qint64>(length, m_grooveLength));
}

QRect CScrollBarGeometry::stretch(int start, int end, int margin) const
{
    const QRect across(start, margin, end - start, m_thickness - 2 * margin);
    return (m_horizontal ? across : across.transposed().translated(margin - start, start - margin))
        .translated(m_bar.topLeft());
}
