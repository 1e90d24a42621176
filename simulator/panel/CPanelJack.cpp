#include "simulator/panel/CPanelJack.h"

#include "simulator/panel/PanelLook.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

using namespace PanelLook;

namespace
{
constexpr QSize k_jackSize{126, 40};
constexpr QRectF k_socket{4, 4, 36, 20};
constexpr QRectF k_plug{26, 5, 30, 16}; // in the socket
constexpr double k_farthest = 36;       // pixels that the plug is pulled out
constexpr double k_free = k_farthest / 2;
constexpr int k_jackBaseLine = 36;

QLinearGradient satin(const QRectF& rect)
{
    QLinearGradient gradient(rect.topLeft(), rect.bottomLeft());
    gradient.setStops({{0, steel}, {0.3, graphite}, {1, ink}});
    return gradient;
}

void drawSocket(QPainter& painter)
{
    painter.setBrush(mist);
    painter.drawRoundedRect(k_socket.translated(1, 1), 4, 4);
    QLinearGradient rim(k_socket.topLeft(), k_socket.bottomRight());
    rim.setStops({{0, steel}, {0.4, graphite}, {1, ink}});
    painter.setBrush(rim);
    painter.drawRoundedRect(k_socket, 4, 4);
    painter.setBrush(ink);
    painter.drawRoundedRect(k_socket.adjusted(2, 2, -2, -2), 2, 2);
    painter.fillRect(QRectF(k_socket.left() + 7, k_socket.center().y() - 2, 20, 3), steel); // its contacts
}

void drawCable(QPainter& painter, const QPointF& from, const QPointF& to)
{
    QPainterPath path(from);
    const double half = (to.x() - from.x()) / 2;
    path.cubicTo(from + QPointF(half, 0), to - QPointF(half, 0), to);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(ink, 5, Qt::SolidLine, Qt::FlatCap));
    painter.drawPath(path);
    painter.setPen(QPen(graphite, 3, Qt::SolidLine, Qt::FlatCap));
    painter.drawPath(path);
    painter.setPen(Qt::NoPen);
}

void drawPlug(QPainter& painter, const QRectF& plug)
{
    painter.fillRect(QRectF(plug.left() - 16, plug.top() + 3, 17, 10), mist);
    painter.fillRect(QRectF(plug.left() - 16, plug.top() + 10, 17, 3), steel);
    painter.setBrush(satin(plug));
    painter.drawRoundedRect(plug, 3, 3);
    for (const int ridge : {18, 21, 24})
        painter.fillRect(QRectF(plug.left() + ridge, plug.top() + 3, 1, plug.height() - 6), faint(ink, 0.7));
}
} // namespace

CPanelJack::CPanelJack(const QString& text, QWidget* parent) : QAbstractButton(parent)
{
    setText(text);
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
}

QSize CPanelJack::sizeHint() const
{
    return k_jackSize;
}

double CPanelJack::restingPull() const
{
    return isChecked() ? 0 : k_farthest;
}

void CPanelJack::mousePressEvent(QMouseEvent* event)
{
    m_pressedAt = qRound(event->position().x());
    m_dragged = false;
    m_pull = restingPull();
    QAbstractButton::mousePressEvent(event);
}

void CPanelJack::mouseMoveEvent(QMouseEvent* event)
{
    if (!event->buttons().testFlag(Qt::LeftButton))
        return;
    const double way = event->position().x() - m_pressedAt;
    m_dragged = m_dragged || qAbs(way) >= QApplication::startDragDistance();
    if (!m_dragged)
        return;
    m_pull = std::clamp(restingPull() + way, 0.0, k_farthest);
    update();
}

void CPanelJack::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_dragged) {
        m_dragged = false;
        setDown(false);
        setChecked(m_pull < k_free);
        update();
        return;
    }
    QAbstractButton::mouseReleaseEvent(event);
}

void CPanelJack::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    drawSocket(painter);

    const double pull = m_dragged ? m_pull : restingPull();
    const double drop = pull > k_free ? 4 : 0; // a plug that nothing holds hangs
    const QRectF plug = k_plug.translated(pull, drop);
    drawCable(painter, {plug.right() - 1, plug.center().y()}, {width() + 1.0, k_plug.center().y()});
    painter.save();
    painter.setClipRect(QRectF(k_socket.left() + 4, 0, width(), height()));
    drawPlug(painter, plug);
    painter.restore();
    QRectF inside = k_socket.adjusted(2, 2, -2, -2);
    inside.setRight(std::min(inside.right(), plug.left()));
    painter.fillRect(inside, faint(ink, 0.5)); // what is deep in the socket is in its shadow
    if (hasFocus()) {
        painter.setPen(QPen(green, 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(k_socket.adjusted(-1, -1, 1, 1), 4, 4);
    }
    painter.setFont(captionFont());
    painter.setPen(graphite);
    painter.drawText(static_cast<int>(k_socket.left()), k_jackBaseLine, text().toUpper());
}
