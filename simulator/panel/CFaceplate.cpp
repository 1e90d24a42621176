#include "simulator/panel/CFaceplate.h"

#include "simulator/panel/PanelLook.h"

#include <QPainter>

using namespace PanelLook;

namespace
{
constexpr int k_nameMargin = 20;
constexpr int k_nameSize = 20; // pixels, twice the font's own size

void drawPlate(QPainter& painter, const QRect& rect)
{
    QLinearGradient light(rect.topLeft(), rect.bottomLeft());
    light.setStops({{0, white}, {0.12, plate}, {1, mist}});
    painter.fillRect(rect, light);
    painter.fillRect(rect.left(), rect.top() - 1, rect.width(), 1, mist);
}

void drawFoot(QPainter& painter, const QRect& rect)
{
    QLinearGradient light(rect.topLeft(), rect.bottomLeft());
    light.setStops({{0, graphite}, {0.25, faint(graphite, 0.75)}, {1, faint(graphite, 0.2)}});
    painter.fillRect(rect, ink);
    painter.fillRect(rect, light);
    painter.fillRect(rect.left(), rect.top() - 1, rect.width(), 1, steel);
    painter.fillRect(rect.left(), rect.top(), rect.width(), 1, faint(white, 0.25));

    painter.setFont(font(k_fontGLT10Bold, k_nameSize));
    painter.setPen(white);
    painter.drawText(k_nameMargin, rect.top() + 24, k_editorName);
    painter.setFont(captionFont());
    painter.setPen(mist);
    const QString text = CFaceplate::tr("SIMULATED DEVICE");
    painter.drawText(rect.right() - k_nameMargin - painter.fontMetrics().horizontalAdvance(text), rect.top() + 21,
                     text);
}
} // namespace

void CFaceplate::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(0, 0, width(), k_headHeight, white);
    drawPlate(painter, {0, k_headHeight, width(), height() - k_headHeight - k_footHeight});
    drawFoot(painter, {0, height() - k_footHeight, width(), k_footHeight});
}
