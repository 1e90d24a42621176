#pragma once

#include "app/common/Constants.h"

#include <QColor>
#include <QFont>
#include <QPalette>

/// Colours and fonts of the panel: those of the skin beside which it stands. `resources/skin/README.md` says what each
/// colour is for.
namespace PanelLook
{
inline constexpr QColor white(0xff, 0xff, 0xff);
inline constexpr QColor plate(0xee, 0xee, 0xec);
inline constexpr QColor mist(0xcc, 0xcc, 0xcc);
inline constexpr QColor steel(0x8a, 0x89, 0x89);
inline constexpr QColor graphite(0x37, 0x37, 0x37);
inline constexpr QColor ink(0x12, 0x14, 0x13);
inline constexpr QColor moss(0x24, 0x50, 0x2c);
inline constexpr QColor green(0x00, 0xcc, 0x00);
inline constexpr QColor glow(0xb6, 0xff, 0xae);

/// A colour of the skin at some opacity, 0 to 1: so the skin makes its shades.
[[nodiscard]] inline QColor faint(QColor color, qreal opacity)
{
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

/// A font of the skin, at its own size or a whole multiple of it; its pixels are whole ones, so they are not smoothed.
[[nodiscard]] inline QFont font(const QString& family, int pixels)
{
    QFont font(family);
    font.setPixelSize(pixels);
    font.setStyleStrategy(QFont::NoAntialias);
    return font;
}

[[nodiscard]] inline QFont captionFont()
{
    return font(k_fontGLT7Bold, 7);
}

[[nodiscard]] inline QFont numberFont()
{
    return font(k_fontGLT10Bold, 10);
}

/// What the desktop's own widgets are painted with on the panel, on dark desktops too.
[[nodiscard]] inline QPalette palette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, plate);
    palette.setColor(QPalette::Button, plate);
    palette.setColor(QPalette::Base, white);
    palette.setColor(QPalette::AlternateBase, plate);
    palette.setColor(QPalette::PlaceholderText, steel);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, graphite);
    palette.setColor(QPalette::Highlight, graphite);
    palette.setColor(QPalette::HighlightedText, white);
    return palette;
}
} // namespace PanelLook
