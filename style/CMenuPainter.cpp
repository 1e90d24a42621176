#include "style/CMenuPainter.h"

#include "style/StyleColors.h"
#include "style/StyleImages.h"

#include <QIcon>
#include <QPainter>
#include <QStyleOptionMenuItem>

namespace
{
constexpr int k_sideGap = 5;
constexpr QSize k_radioSize{5, 5};

// The grid that the "Windows" style measures menu items by.
constexpr int k_itemFrame = 2;
constexpr int k_checkColumn = 12;
constexpr int k_textGap = 3;
constexpr int k_textTopGap = 2;
constexpr int k_rightBorder = 15;
constexpr int k_arrowGap = 6;
} // namespace

CMenuPainter::CMenuPainter(const QStyle& style, const QStyleOptionMenuItem& item, QPainter* painter,
                           const QWidget* widget)
    : m_style(style), m_item(item), m_painter(painter), m_widget(widget),
      m_enabled(item.state.testFlag(QStyle::State_Enabled)), m_selected(item.state.testFlag(QStyle::State_Selected)),
      m_sunken(item.state.testFlag(QStyle::State_Sunken))
{
}

void CMenuPainter::paintMenuBarItem() const
{
    QColor background = colorMenuBarDisableBackgorund;
    QColor text = colorMenuBarDisableText;
    if (m_enabled) {
        background = m_selected ? colorMenuBarSelectBackground : colorMenuBarEnableBackgorund;
        text = m_selected ? colorMenuBarSelectText : colorMenuBarEnableText;
    }
    m_painter->fillRect(m_item.rect, background);

    const QPixmap picture = icon();
    if (!picture.isNull()) {
        m_style.drawItemPixmap(m_painter, m_item.rect, Qt::AlignCenter, picture);
        return;
    }
    m_painter->setPen(text);
    m_painter->drawText(m_item.rect, Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip | mnemonicFlag(),
                        m_item.text);
}

void CMenuPainter::paintMenuItem() const
{
    if (m_item.menuItemType == QStyleOptionMenuItem::Separator) {
        paintSeparator();
        return;
    }
    m_painter->fillRect(m_item.rect, menuBackground());
    paintIndicator();
    paintText();
    if (m_item.menuItemType == QStyleOptionMenuItem::SubMenu)
        paintSubMenuArrow();
}

void CMenuPainter::paintSeparator() const
{
    m_painter->fillRect(m_item.rect, colorMenuEnableBackground);

    const QRect inner = m_item.rect.adjusted(k_sideGap, 0, -k_sideGap, 0);
    int textGap = 0;
    if (!m_item.text.isEmpty()) {
        m_painter->setFont(m_item.font);
        m_painter->setPen(colorMenuEnableText);
        const Qt::Alignment alignment = QStyle::visualAlignment(m_item.direction, Qt::AlignLeft | Qt::AlignVCenter);
        m_painter->drawText(inner, int(alignment) | Qt::TextSingleLine, m_item.text);
        textGap = QFontMetrics(m_item.font).horizontalAdvance(m_item.text) + k_sideGap;
    }
    const QRect line(inner.left() + textGap, inner.center().y(), inner.width() - textGap, 1);
    if (line.isValid())
        m_painter->fillRect(visual(line), colorMenuEnableText);
}

void CMenuPainter::paintIndicator() const
{
    const QRect inner = m_item.rect.adjusted(k_sideGap, 0, -k_sideGap, 0);
    const Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;

    const QPixmap picture = icon();
    if (!picture.isNull()) {
        const QSize size = picture.deviceIndependentSize().toSize();
        m_painter->drawPixmap(QStyle::alignedRect(m_item.direction, alignment, size, inner), picture);
        return;
    }
    if (m_item.checkType == QStyleOptionMenuItem::NotCheckable)
        return;
    const bool shownChecked = m_item.checked || (m_enabled && m_sunken);
    m_painter->drawImage(QStyle::alignedRect(m_item.direction, alignment, k_radioSize, inner),
                         QImage(shownChecked ? radio_check_image : radio_image));
}

void CMenuPainter::paintText() const
{
    const int start = k_itemFrame + qMax(m_item.maxIconWidth, k_checkColumn) + k_textGap;
    const int end = m_item.rect.width() - k_rightBorder - m_item.reservedShortcutWidth + 1;
    const QRect row = m_item.rect.adjusted(0, k_textTopGap, 0, -k_textTopGap);
    const QRect label = visual(QRect(row.left() + start, row.top(), end - start, row.height()));
    const QRect shortcut = visual(QRect(row.left() + end, row.top(), row.width() - end, row.height()));

    const Qt::Alignment alignment = QStyle::visualAlignment(m_item.direction, Qt::AlignLeft | Qt::AlignVCenter);
    const int flags = int(alignment) | Qt::TextSingleLine | Qt::TextDontClip | mnemonicFlag();
    const qsizetype tab = m_item.text.indexOf(QLatin1Char('\t'));

    QFont font = m_item.font;
    m_painter->setPen(menuTextColor());
    m_painter->setFont(font);
    if (tab >= 0)
        m_painter->drawText(shortcut, flags, m_item.text.mid(tab + 1));
    if (m_item.menuItemType == QStyleOptionMenuItem::DefaultItem) {
        font.setBold(true);
        m_painter->setFont(font);
    }
    m_painter->drawText(label, flags, m_item.text.left(tab));
}

void CMenuPainter::paintSubMenuArrow() const
{
    const QRect& rect = m_item.rect;
    const int size = (rect.height() - 2 * k_itemFrame) / 2;
    const int half = size / 2;
    const QRect arrow = visual(QRect(rect.left() + rect.width() - k_arrowGap - k_itemFrame - size,
                                     rect.center().y() - half, half + 1, 2 * half + 1));
    const bool rightToLeft = m_item.direction == Qt::RightToLeft;
    const int base = rightToLeft ? arrow.right() : arrow.left();
    const int tip = rightToLeft ? arrow.left() : arrow.right();
    const QPoint corners[] = {{base, arrow.top()}, {tip, arrow.center().y()}, {base, arrow.bottom()}};
    m_painter->setPen(menuTextColor());
    m_painter->setBrush(menuTextColor());
    m_painter->drawConvexPolygon(corners, 3);
}

QColor CMenuPainter::menuBackground() const
{
    if (m_sunken)
        return colorMenuSunkenBackground;
    if (m_selected)
        return colorMenuSelectBackground;
    return m_enabled ? colorMenuEnableBackground : colorMenuDisableBackground;
}

QColor CMenuPainter::menuTextColor() const
{
    if (!m_enabled)
        return colorMenuDisableText;
    if (m_sunken)
        return colorMenuSunkenText;
    return m_selected ? colorMenuSelectText : colorMenuEnableText;
}

QPixmap CMenuPainter::icon() const
{
    if (m_item.icon.isNull())
        return {};
    const int extent = m_style.pixelMetric(QStyle::PM_SmallIconSize, &m_item, m_widget);
    return m_item.icon.pixmap(QSize(extent, extent), m_painter->device()->devicePixelRatioF(),
                              m_enabled ? QIcon::Normal : QIcon::Disabled, m_item.checked ? QIcon::On : QIcon::Off);
}

int CMenuPainter::mnemonicFlag() const
{
    const bool underlined = m_style.styleHint(QStyle::SH_UnderlineShortcut, &m_item, m_widget) != 0;
    return underlined ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
}

QRect CMenuPainter::visual(const QRect& logical) const
{
    return QStyle::visualRect(m_item.direction, m_item.rect, logical);
}
