#include "simulator/panel/CPanelKnob.h"

#include "simulator/panel/LEDRing.h"
#include "simulator/panel/PanelLook.h"
#include "simulator/panel/PanelText.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPixmapCache>
#include <QSignalBlocker>

using namespace PanelLook;

namespace
{
constexpr QSize k_knobSize{118, 124};
constexpr int k_face = 87;       // pixels, width and height of the knob with its ticks
constexpr int k_numberLine = 94; // base lines
constexpr int k_midiLine = 107;
constexpr int k_rangeLine = 118;
constexpr double k_lastAngle = 135; // degrees from the top, to both sides

double angleOf(int index, int last)
{
    return -k_lastAngle + 2 * k_lastAngle * index / last;
}

void disc(QPainter& painter, const QPointF& centre, double radius, const QBrush& brush)
{
    painter.setBrush(brush);
    painter.drawEllipse(centre, radius, radius);
}

/// Light from the upper left, over whatever shape it fills.
QLinearGradient slope(const QGradientStops& stops)
{
    QLinearGradient gradient(0.2, 0, 0.8, 1);
    gradient.setCoordinateMode(QGradient::ObjectMode);
    gradient.setStops(stops);
    return gradient;
}

QRadialGradient radial(const QPointF& centre, double radius, const QGradientStops& stops)
{
    QRadialGradient gradient(centre, radius);
    gradient.setStops(stops);
    return gradient;
}

void drawTicks(QPainter& painter)
{
    constexpr int k_ticks = 11;
    for (int tick = 0; tick < k_ticks; ++tick) {
        const bool isLong = tick % 5 == 0;
        painter.save();
        painter.rotate(angleOf(tick, k_ticks - 1));
        painter.fillRect(isLong ? QRectF(-0.75, -37.5, 1.5, 6) : QRectF(-0.6, -35.5, 1.2, 4),
                         isLong ? graphite : steel);
        painter.restore();
    }
}

/// What never changes, about (0, 0): ticks, skirt, the channel of the LEDs, the cap.
void drawFace(QPainter& painter)
{
    painter.setPen(Qt::NoPen);
    disc(painter, {1, 4.5}, 35,
         radial({1, 4.5}, 35, {{0.55, faint(ink, 0.45)}, {0.8, faint(ink, 0.15)}, {1, faint(ink, 0)}}));
    disc(painter, {}, 28, slope({{0, steel}, {0.3, graphite}, {1, ink}}));
    disc(painter, {}, 27, graphite);
    disc(painter, {}, 23.5, slope({{0, ink}, {0.6, graphite}, {1, steel}}));
    drawTicks(painter);
    disc(painter, {}, 22, ink);
    disc(painter, {}, 21.5, radial({0, 1}, 21.5, {{0.6, ink}, {0.92, faint(graphite, 0.55)}, {1, ink}}));
    disc(painter, {0.4, 1.3}, 14.2, ink);
    disc(painter, {}, 14, slope({{0, steel}, {0.35, graphite}, {1, ink}}));
    disc(painter, {}, 11.5, faint(ink, 0.5));
    disc(painter, {0, 0.2}, 11, graphite);
    disc(painter, {0, 0.2}, 11, slope({{0, graphite}, {0.5, faint(graphite, 0.75)}, {1, faint(steel, 0.55)}}));
}

/// The face at a density, drawn once for all knobs.
QPixmap face(qreal ratio)
{
    const QString key = QStringLiteral("device-panel-knob-%1").arg(ratio);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    pixmap = QPixmap(QSizeF(k_face * ratio, k_face * ratio).toSize());
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(k_face / 2.0, k_face / 2.0);
    drawFace(painter);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

void drawLED(QPainter& painter, bool isLit)
{
    constexpr QPointF k_place{0, -17.8};
    if (!isLit) {
        disc(painter, k_place, 1.7, moss);
        return;
    }
    disc(painter, k_place, 3.7,
         radial(k_place, 3.7, {{0, faint(green, 0.9)}, {0.45, faint(green, 0.45)}, {1, faint(green, 0)}}));
    disc(painter, k_place, 2.1, green);
    disc(painter, k_place, 1.2, glow);
}

void drawRing(QPainter& painter, int lit)
{
    for (int led = 0; led < LEDRing::k_leds; ++led) {
        painter.save();
        painter.rotate(angleOf(led, LEDRing::k_leds - 1));
        drawLED(painter, led < lit);
        painter.restore();
    }
}

/// The line on the cap that says how far the knob is turned.
void drawPointer(QPainter& painter, double angle)
{
    painter.save();
    painter.rotate(angle);
    painter.setBrush(plate);
    painter.drawRoundedRect(QRectF(-0.9, -10, 1.8, 6), 0.9, 0.9);
    painter.restore();
}
} // namespace

CPanelKnob::CPanelKnob(int knob, QWidget* parent) : QDial(parent), m_knob(knob)
{
    setObjectName(QStringLiteral("dial%1").arg(knob));
    setAccessibleName(tr("Knob %1").arg(knob + 1));
    setRange(0, 127);
    setCursor(Qt::SizeVerCursor);
    describe();
}

void CPanelKnob::hold(int value, const KnobSettings& settings)
{
    const QSignalBlocker noTurn(this);
    setValue(value);
    if (settings == m_settings)
        return;
    m_settings = settings;
    describe();
    update();
}

int CPanelKnob::litLEDs() const
{
    return LEDRing::lit(m_settings.led, value());
}

QSize CPanelKnob::sizeHint() const
{
    return k_knobSize;
}

QSize CPanelKnob::minimumSizeHint() const
{
    return k_knobSize;
}

void CPanelKnob::describe()
{
    const QString text = PanelText::settings(m_settings);
    setAccessibleDescription(text);
    setToolTip(text);
}

void CPanelKnob::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_pressedAt = event->position().toPoint();
    m_pressedValue = value();
    setSliderDown(true);
}

void CPanelKnob::mouseMoveEvent(QMouseEvent* event)
{
    if (!isSliderDown())
        return;
    const QPoint way = event->position().toPoint() - m_pressedAt;
    setSliderPosition(m_pressedValue + way.x() - way.y());
}

void CPanelKnob::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        setSliderDown(false);
}

void CPanelKnob::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QPoint corner((width() - k_face) / 2, 0);
    painter.drawPixmap(corner, face(devicePixelRatioF()));

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(corner + QPointF(k_face / 2.0, k_face / 2.0));
    if (hasFocus()) {
        painter.setPen(QPen(green, 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(QPointF(), 29.2, 29.2);
    }
    painter.setPen(Qt::NoPen);
    drawRing(painter, litLEDs());
    drawPointer(painter, angleOf(value(), maximum()));
    painter.restore();

    const auto write = [&](const QFont& textFont, int baseLine, const QString& text) {
        painter.setFont(textFont);
        painter.drawText((width() - painter.fontMetrics().horizontalAdvance(text)) / 2, baseLine, text);
    };
    painter.setPen(graphite);
    write(numberFont(), k_numberLine, QString::number(m_knob + 1));
    write(captionFont(), k_midiLine, tr("CC %1  CH %2").arg(m_settings.cc).arg(m_settings.channel + 1));
    write(captionFont(), k_rangeLine, tr("%1 TO %2").arg(m_settings.min).arg(m_settings.max));
}
