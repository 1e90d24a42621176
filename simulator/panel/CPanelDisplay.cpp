#include "simulator/panel/CPanelDisplay.h"

#include "simulator/panel/PanelLook.h"

#include <QPainter>

using namespace PanelLook;

namespace
{
constexpr QSize k_displaySize{400, 46};
constexpr int k_displayCaptionAt = 10; // pixels from the left
constexpr int k_displayTextAt = 72;
constexpr int k_receivedLine = 19; // base lines
constexpr int k_sentLine = 36;
} // namespace

CPanelDisplay::CPanelDisplay(QWidget* parent) : QLabel(parent)
{
    setObjectName("display");
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    refresh();
}

void CPanelDisplay::showReceived(const QString& text)
{
    m_received = text;
    refresh();
}

void CPanelDisplay::showSent(const QString& text)
{
    m_sent = text;
    refresh();
}

QSize CPanelDisplay::sizeHint() const
{
    return k_displaySize;
}

QSize CPanelDisplay::minimumSizeHint() const
{
    return k_displaySize;
}

void CPanelDisplay::refresh()
{
    setText(tr("Received: %1\nSent: %2").arg(m_received, m_sent));
}

void CPanelDisplay::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(white); // the plate's lower edge catches the light
    painter.drawRoundedRect(rect(), 4, 4);
    painter.setBrush(graphite);
    painter.drawRoundedRect(rect().adjusted(0, 0, 0, -1), 4, 4);
    painter.setBrush(ink);
    painter.drawRoundedRect(rect().adjusted(2, 2, -2, -3), 3, 3);

    const auto write = [&](int baseLine, const QString& caption, const QString& text) {
        painter.setFont(captionFont());
        painter.setPen(green);
        painter.drawText(k_displayCaptionAt, baseLine, caption);
        painter.setFont(numberFont());
        painter.setPen(glow);
        const int room = width() - k_displayTextAt - k_displayCaptionAt;
        painter.drawText(k_displayTextAt, baseLine, painter.fontMetrics().elidedText(text, Qt::ElideRight, room));
    };
    write(k_receivedLine, tr("RECEIVED"), m_received);
    write(k_sentLine, tr("SENT"), m_sent);
}
