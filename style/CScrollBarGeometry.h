#pragma once

#include <QRect>
#include <QStyle>

class QStyleOptionSlider;

/// Where the parts of a scroll bar are: both arrows sit together at its start, top or left.
///
/// Units    logical pixels, in the coordinates of the option's rectangle, laid out left to right.
/// Threads  arithmetic alone, in any.
/// Failure  a bar too short for its arrows has an empty groove and an empty slider.
class CScrollBarGeometry
{
  public:
    /// thickness   across the bar.      sliderMinimum   length that a slider has at least, as far as the groove allows.
    CScrollBarGeometry(const QStyleOptionSlider& option, int thickness, int sliderMinimum);

    /// An arrow, the groove, the slider or the page before or behind it; empty for anything else.
    [[nodiscard]] QRect part(QStyle::SubControl control) const;

  private:
    [[nodiscard]] int lengthOfSlider(const QStyleOptionSlider& option, int sliderMinimum) const;
    [[nodiscard]] QRect stretch(int start, int end, int margin) const;

    QRect m_bar;
    bool m_horizontal;
    int m_thickness;
    int m_grooveLength;
    int m_sliderStart;
    int m_sliderEnd; ///< first pixel behind it
};
