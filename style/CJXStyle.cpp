#include "style/CJXStyle.h"

#include "style/CMenuPainter.h"
#include "style/CScrollBarGeometry.h"
#include "style/StyleColors.h"
#include "style/StyleImages.h"

#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QScrollBar>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTreeView>

namespace
{
bool isPopupTree(const QWidget* w)
{
    return qobject_cast<const QTreeView*>(w) != nullptr && w->objectName() == QLatin1String("CPopupTreeWidget");
}

bool isPopupList(const QWidget* w)
{
    return qobject_cast<const QListView*>(w) != nullptr && w->objectName() == QLatin1String("CPopupListWidget");
}

/// A line edit of a dialog: it has no panel, and its ground alone shows where to write.
bool hasOwnGround(const QWidget* w)
{
    const auto* edit = qobject_cast<const QLineEdit*>(w);
    return edit != nullptr && edit->hasFrame();
}
} // namespace

CJXStyle::CJXStyle()
    : QProxyStyle(QStyleFactory::create(QStringLiteral("Windows"))), m_fallbackStyle(QApplication::style())
{
    m_fallbackStyle->setParent(this); // the application deletes its previous style only while it is the parent
    m_palette = m_fallbackStyle->standardPalette();
    setStandardPaletteColorGroup(&m_palette, QPalette::Disabled);
    setStandardPaletteColorGroup(&m_palette, QPalette::Active);
    setStandardPaletteColorGroup(&m_palette, QPalette::Inactive);
}

bool CJXStyle::isCustomStyle(const QWidget* w) const
{
    return qobject_cast<const QMenuBar*>(w) != nullptr || qobject_cast<const QMenu*>(w) != nullptr ||
           qobject_cast<const QScrollBar*>(w) != nullptr || qobject_cast<const QLineEdit*>(w) != nullptr ||
           isPopupTree(w) || isPopupList(w);
}

void CJXStyle::setStandardPaletteColorGroup(QPalette* palette, QPalette::ColorGroup group) const
{
    const auto fill = [palette, group](std::initializer_list<QPalette::ColorRole> roles, const QColor& color) {
        for (const QPalette::ColorRole role : roles)
            palette->setBrush(group, role, color);
    };
    fill({QPalette::Window, QPalette::Base, QPalette::AlternateBase, QPalette::Button}, colorPaletteBase);
    fill({QPalette::WindowText, QPalette::Text, QPalette::ButtonText}, colorPaletteText);
    fill({QPalette::BrightText, QPalette::HighlightedText}, colorPaletteHighlightedText);
    fill({QPalette::Light, QPalette::Midlight, QPalette::Dark, QPalette::Mid, QPalette::Shadow}, colorPaletteFrame);
    fill({QPalette::Highlight, QPalette::Link, QPalette::LinkVisited}, colorPaletteHighlight);
}

void CJXStyle::polish(QWidget* w)
{
    if (!isCustomStyle(w)) {
        m_fallbackStyle->polish(w);
        return;
    }
    QProxyStyle::polish(w);
    if (isPopupTree(w) || isPopupList(w))
        w->setPalette(m_palette);
    if (hasOwnGround(w))
        w->setAutoFillBackground(true);
}

void CJXStyle::unpolish(QWidget* w)
{
    if (!isCustomStyle(w)) {
        m_fallbackStyle->unpolish(w);
        return;
    }
    QProxyStyle::unpolish(w);
    if (hasOwnGround(w))
        w->setAutoFillBackground(false);
}

void CJXStyle::polish(QApplication* application)
{
    m_fallbackStyle->polish(application);
    QProxyStyle::polish(application);
}

void CJXStyle::unpolish(QApplication* application)
{
    m_fallbackStyle->unpolish(application);
    QProxyStyle::unpolish(application);
}

void CJXStyle::polish(QPalette& palette)
{
    m_fallbackStyle->polish(palette);
    QProxyStyle::polish(palette);
}

QPalette CJXStyle::standardPalette() const
{
    return m_fallbackStyle->standardPalette();
}

void CJXStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* w) const
{
    if (element == PE_FrameFocusRect && w == nullptr)
        w = dynamic_cast<const QWidget*>(painter->device());
    if (!isCustomStyle(w)) {
        m_fallbackStyle->drawPrimitive(element, option, painter, w);
        return;
    }
    painter->setRenderHint(QPainter::TextAntialiasing, false);
    switch (element) {
    case PE_FrameFocusRect:
    case PE_PanelMenuBar:
    case PE_PanelLineEdit:
        break;
    case PE_Frame:
    case PE_FrameMenu:
        painter->fillRect(option->rect, colorPaletteFrame);
        break;
    case PE_IndicatorBranch:
        drawBranch(*option, painter);
        break;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, w);
    }
}

void CJXStyle::drawBranch(const QStyleOption& option, QPainter* painter) const
{
    const QRect& cell = option.rect;
    const QPoint centre(cell.left() + cell.width() / 2, cell.top() + cell.height() / 2);
    if (option.state.testAnyFlags(State_Item | State_Sibling | State_Children | State_Open))
        painter->fillRect(QRect(QPoint(centre.x(), cell.top()), centre), colorListViewLine);
    if (option.state.testFlag(State_Sibling))
        painter->fillRect(QRect(centre, QPoint(centre.x(), cell.bottom())), colorListViewLine);
    if (option.state.testFlag(State_Item)) {
        const QRect line(centre, QPoint(cell.right(), centre.y()));
        const QRect mirrored(QPoint(cell.left(), centre.y()), centre);
        painter->fillRect(option.direction == Qt::RightToLeft ? mirrored : line, colorListViewLine);
    }
    if (option.state.testFlag(State_Children)) {
        const QImage box(option.state.testFlag(State_Open) ? list_open_image : list_close_image);
        painter->drawImage(centre - box.rect().center(), box);
    }
}

void CJXStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                           const QWidget* w) const
{
    if (!isCustomStyle(w)) {
        m_fallbackStyle->drawControl(element, option, painter, w);
        return;
    }
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    const bool isItem = item != nullptr && (element == CE_MenuBarItem || element == CE_MenuItem);
    if (!isItem && element != CE_MenuBarEmptyArea) {
        QProxyStyle::drawControl(element, option, painter, w);
        return;
    }
    painter->setRenderHint(QPainter::TextAntialiasing, false);
    painter->save();
    if (element == CE_MenuBarEmptyArea)
        painter->fillRect(option->rect, Qt::white);
    else if (element == CE_MenuBarItem)
        CMenuPainter(*this, *item, painter, w).paintMenuBarItem();
    else
        CMenuPainter(*this, *item, painter, w).paintMenuItem();
    painter->restore();
}

void CJXStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                  const QWidget* w) const
{
    if (!isCustomStyle(w)) {
        m_fallbackStyle->drawComplexControl(control, option, painter, w);
        return;
    }
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && bar != nullptr)
        drawScrollBar(*bar, painter, w);
    else
        QProxyStyle::drawComplexControl(control, option, painter, w);
}

void CJXStyle::drawScrollBar(const QStyleOptionSlider& bar, QPainter* painter, const QWidget* w) const
{
    const auto part = [&](SubControl control) { return subControlRect(CC_ScrollBar, &bar, control, w); };
    const auto pressed = [&](SubControl arrow) {
        return bar.activeSubControls.testFlag(arrow) && bar.state.testFlag(State_Sunken);
    };
    const bool canMoveBack = bar.sliderPosition > bar.minimum;
    const bool canMoveOn = bar.sliderPosition < bar.maximum;
    const bool horizontal = bar.orientation == Qt::Horizontal;

    painter->fillRect(bar.rect, colorScrollBarBackground);
    const QRect groove = part(SC_ScrollBarGroove);
    if (bar.subControls.testFlag(SC_ScrollBarGroove) && !groove.isEmpty()) {
        painter->fillRect(groove, colorScrollBarForeground);
        painter->fillRect(groove.adjusted(1, 1, -1, -1), colorScrollBarBackground);
    }
    const QRect slider = part(SC_ScrollBarSlider).adjusted(1, 1, -1, -1);
    if (bar.subControls.testFlag(SC_ScrollBarSlider) && (canMoveBack || canMoveOn) && !slider.isEmpty())
        painter->fillRect(slider, colorScrollBarForeground);

    const auto drawArrow = [&](SubControl arrow, const char* const image[]) {
        painter->drawImage(part(arrow), QImage(image));
    };
    if (canMoveBack && pressed(SC_ScrollBarSubLine))
        drawArrow(SC_ScrollBarSubLine, horizontal ? scrollbar_left_highlight_image : scrollbar_up_highlight_image);
    else
        drawArrow(SC_ScrollBarSubLine, horizontal ? scrollbar_left_image : scrollbar_up_image);
    if (canMoveOn && pressed(SC_ScrollBarAddLine))
        drawArrow(SC_ScrollBarAddLine, horizontal ? scrollbar_right_highlight_image : scrollbar_down_highlight_image);
    else
        drawArrow(SC_ScrollBarAddLine, horizontal ? scrollbar_right_image : scrollbar_down_image);
}

QRect CJXStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* w) const
{
    return isCustomStyle(w) ? QProxyStyle::subElementRect(element, option, w)
                            : m_fallbackStyle->subElementRect(element, option, w);
}

QRect CJXStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl subControl,
                               const QWidget* w) const
{
    if (!isCustomStyle(w))
        return m_fallbackStyle->subControlRect(control, option, subControl, w);
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || bar == nullptr)
        return QProxyStyle::subControlRect(control, option, subControl, w);
    const CScrollBarGeometry geometry(*bar, pixelMetric(PM_ScrollBarExtent, bar, w),
                                      pixelMetric(PM_ScrollBarSliderMin, bar, w));
    return visualRect(bar->direction, bar->rect, geometry.part(subControl));
}

QStyle::SubControl CJXStyle::hitTestComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                                   const QPoint& position, const QWidget* w) const
{
    return isCustomStyle(w) ? QProxyStyle::hitTestComplexControl(control, option, position, w)
                            : m_fallbackStyle->hitTestComplexControl(control, option, position, w);
}

QSize CJXStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                 const QWidget* w) const
{
    return isCustomStyle(w) ? QProxyStyle::sizeFromContents(type, option, size, w)
                            : m_fallbackStyle->sizeFromContents(type, option, size, w);
}

int CJXStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* w) const
{
    if (!isCustomStyle(w))
        return m_fallbackStyle->pixelMetric(metric, option, w);
    switch (metric) {
    case PM_ScrollBarExtent:
        return 16;
    case PM_ScrollBarSliderMin:
        return 10;
    case PM_DefaultFrameWidth:
        return 1;
    case PM_MenuBarPanelWidth:
        return 0;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        // The base scales its one pixel to the resolution of the menu's font, an option's; at the skin's 72 dots an
        // inch nothing of it is left.
        return option != nullptr ? 0 : QProxyStyle::pixelMetric(metric, option, w);
    default:
        return QProxyStyle::pixelMetric(metric, option, w);
    }
}

int CJXStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* w,
                        QStyleHintReturn* returnData) const
{
    if (!isCustomStyle(w))
        return m_fallbackStyle->styleHint(hint, option, w, returnData);
    if (hint == SH_ItemView_ShowDecorationSelected && isPopupTree(w))
        return 0;
    if (hint == SH_ItemView_ShowDecorationSelected && isPopupList(w))
        return 1;
    return QProxyStyle::styleHint(hint, option, w, returnData);
}

int CJXStyle::layoutSpacing(QSizePolicy::ControlType control1, QSizePolicy::ControlType control2,
                            Qt::Orientation orientation, const QStyleOption* option, const QWidget* w) const
{
    return isCustomStyle(w) ? QProxyStyle::layoutSpacing(control1, control2, orientation, option, w)
                            : m_fallbackStyle->layoutSpacing(control1, control2, orientation, option, w);
}

QPixmap CJXStyle::standardPixmap(StandardPixmap pixmap, const QStyleOption* option, const QWidget* w) const
{
    return isCustomStyle(w) ? QProxyStyle::standardPixmap(pixmap, option, w)
                            : m_fallbackStyle->standardPixmap(pixmap, option, w);
}

QIcon CJXStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* w) const
{
    const bool isOurs = isCustomStyle(w);
    // A menu bar asks for its overflow arrow while it is made. Ours never overflows, and the first of the toolkit's
    // icons has it load every image plugin of the system.
    if (icon == SP_ToolBarHorizontalExtensionButton && isOurs)
        return {};
    // Qt remembers the name of every picture that it drew of an icon, and each icon made anew brings new names: a
    // dialog's buttons would cost memory each time that it opens.
    QIcon& kept = m_standardIcons[{icon, isOurs}];
    if (kept.isNull())
        kept = isOurs ? QProxyStyle::standardIcon(icon, option, w) : m_fallbackStyle->standardIcon(icon, option, w);
    return kept;
}

QPixmap CJXStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap, const QStyleOption* option) const
{
    return m_fallbackStyle->generatedIconPixmap(mode, pixmap, option);
}

QRect CJXStyle::itemPixmapRect(const QRect& rect, int flags, const QPixmap& pixmap) const
{
    return m_fallbackStyle->itemPixmapRect(rect, flags, pixmap);
}

QRect CJXStyle::itemTextRect(const QFontMetrics& metrics, const QRect& rect, int flags, bool enabled,
                             const QString& text) const
{
    return m_fallbackStyle->itemTextRect(metrics, rect, flags, enabled, text);
}

void CJXStyle::drawItemPixmap(QPainter* painter, const QRect& rect, int alignment, const QPixmap& pixmap) const
{
    m_fallbackStyle->drawItemPixmap(painter, rect, alignment, pixmap);
}

void CJXStyle::drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool enabled,
                            const QString& text, QPalette::ColorRole role) const
{
    m_fallbackStyle->drawItemText(painter, rect, flags, palette, enabled, text, role);
}
