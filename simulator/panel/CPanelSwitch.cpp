#include "simulator/panel/CPanelSwitch.h"

#include "simulator/panel/PanelLook.h"

#include <QFontMetrics>
#include <QPainter>

using namespace PanelLook;

namespace
{
constexpr QRectF k_slot{2, 5, 34, 16};
constexpr double k_capWidth = 16;
constexpr int k_switchTextAt = 44;
constexpr int k_switchHeight = 26;
constexpr int k_switchBaseLine = 16;
} // namespace

CPanelSwitch::CPanelSwitch(const QString& text, QWidget* parent) : QAbstractButton(parent)
{
    setText(text);
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize CPanelSwitch::sizeHint() const
{
    return {k_switchTextAt + QFontMetrics(captionFont()).horizontalAdvance(text().toUpper()) + 4, k_switchHeight};
}

void CPanelSwitch::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(white);
    painter.drawRoundedRect(k_slot.translated(0, 1), 4, 4);
    painter.setBrush(hasFocus() ? green : steel);
    painter.drawRoundedRect(k_slot.adjusted(-1, -1, 1, 0), 4, 4);
    painter.setBrush(isChecked() ? green : ink);
    painter.drawRoundedRect(k_slot, 3, 3);

    QRectF cap(k_slot.left() + 1, k_slot.top() + 1, k_capWidth, k_slot.height() - 2);
    if (isChecked())
        cap.moveRight(k_slot.right() - 1);
    QLinearGradient side(cap.topLeft(), cap.bottomRight());
    side.setStops({{0, steel}, {0.4, graphite}, {1, ink}});
    painter.setBrush(side);
    painter.drawRoundedRect(cap, 2, 2);
    for (const int ridge : {5, 8, 11})
        painter.fillRect(QRectF(cap.left() + ridge - 0.5, cap.top() + 3, 1, cap.height() - 6), faint(plate, 0.6));

    painter.setFont(captionFont());
    painter.setPen(graphite);
    painter.drawText(k_switchTextAt, k_switchBaseLine, text().toUpper());
}
