#pragma once

#include <QColor>
#include <QPixmap>
#include <QRect>

class QPainter;
class QStyle;
class QStyleOptionMenuItem;
class QWidget;

/// Paints one item of the menu bar or of a menu, for the length of one call.
///
/// Units    logical pixels.      Threads  GUI thread only.
/// Owns     nothing; the style, the item and the painter outlive it. The widget may be null.
class CMenuPainter
{
  public:
    CMenuPainter(const QStyle& style, const QStyleOptionMenuItem& item, QPainter* painter, const QWidget* widget);

    void paintMenuBarItem() const;
    void paintMenuItem() const;

  private:
    void paintSeparator() const;
    void paintIndicator() const;
    void paintText() const;
    void paintSubMenuArrow() const;

    [[nodiscard]] QColor menuBackground() const;
    [[nodiscard]] QColor menuTextColor() const;
    [[nodiscard]] QPixmap icon() const;
    [[nodiscard]] int mnemonicFlag() const;
    [[nodiscard]] QRect visual(const QRect& logical) const;

    const QStyle& m_style;
    const QStyleOptionMenuItem& m_item;
    QPainter* m_painter;
    const QWidget* m_widget;
    bool m_enabled;
    bool m_selected;
    bool m_sunken;
};
