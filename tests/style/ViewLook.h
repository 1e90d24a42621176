#pragma once

#include "app/common/Constants.h"

#include <QFont>
#include <QPixmap>

// What the splash and the about view have in common.

inline constexpr QSize k_viewSize{421, 580};

/// A picture of their size in one colour.
inline QPixmap blue()
{
    QPixmap pixmap(k_viewSize);
    pixmap.fill(QColor(0, 0, 80));
    return pixmap;
}

/// That of their text.
inline QFont skinFont()
{
    QFont font(k_fontGLT8);
    font.setStyleStrategy(QFont::NoAntialias);
    font.setPixelSize(8);
    return font;
}
