#include "widgets/DoubleBuffer.h"

#include <QPaintEvent>
#include <QPainter>
#include <QWidget>

#include <cmath>

namespace
{
// Whole device pixels: under a fractional ratio the last one is partly covered and has to be painted too.
QSize deviceSize(const QWidget& widget)
{
    const qreal ratio = widget.devicePixelRatioF();
    return {static_cast<int>(std::ceil(widget.width() * ratio)), static_cast<int>(std::ceil(widget.height() * ratio))};
}
} // namespace

DoubleBuffer::DoubleBuffer(QWidget* widget) : m_widget(widget) {}

bool DoubleBuffer::eventDoubleBuffer(QEvent* event)
{
    switch (event->type()) {
    case QEvent::Show:
        updateDoubleBufferPixmap();
        return false;
    case QEvent::Polish:
        m_polished = true;
        updateDoubleBufferPixmap();
        return true;
    case QEvent::Paint:
        updateDoubleBufferPixmap();
        paintWidget(static_cast<QPaintEvent*>(event)->region());
        return true;
    default:
        return false;
    }
}

void DoubleBuffer::updateDoubleBuffer()
{
    if (!m_polished)
        return;
    m_dirty = true;
    m_widget->update();
}

void DoubleBuffer::repaintDoubleBuffer()
{
    if (!m_polished)
        return;
    m_dirty = true;
    m_widget->repaint();
}

void DoubleBuffer::updateDoubleBufferPixmap()
{
    if (!m_dirty && fitsWidget())
        return;
    const bool opaque = m_widget->testAttribute(Qt::WA_OpaquePaintEvent);
    QPixmap face(deviceSize(*m_widget));
    face.setDevicePixelRatio(m_widget->devicePixelRatioF());
    face.fill(opaque ? Qt::black : Qt::transparent);
    if (!face.isNull()) {
        QPainter painter(&face);
        const QPalette& palette = m_widget->palette();
        painter.setPen(QPen(palette.brush(m_widget->foregroundRole()), 1));
        painter.setBackground(palette.brush(m_widget->backgroundRole()));
        painter.setFont(m_widget->font());
        painter.setRenderHint(QPainter::TextAntialiasing, false);
        // Pictures come in whole densities; between two of them they are scaled.
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        paintDoubleBuffer(&painter);
    }
    // What was painted on keeps its paint engine, which outweighs a control's face, but not a window's; a copy has
    // none.
    m_pixmap = opaque ? face : face.copy();
    m_dirty = false;
}

QWidget* DoubleBuffer::widget() const
{
    return m_widget;
}

bool DoubleBuffer::fitsWidget() const
{
    return m_pixmap.size() == deviceSize(*m_widget) &&
           qFuzzyCompare(m_pixmap.devicePixelRatio(), m_widget->devicePixelRatioF());
}

void DoubleBuffer::paintWidget(const QRegion& region)
{
    QPainter painter(m_widget);
    if (!m_widget->testAttribute(Qt::WA_OpaquePaintEvent)) {
        painter.drawPixmap(0, 0, m_pixmap);
        return;
    }
    // One rectangle at a time, which is copied row by row: a clip of many is filled in spans, by threads of their own.
    // Each is a pixel larger all round, since between two ratios an edge lies within a device pixel.
    for (const QRect& part : region) {
        painter.setClipRect(part.adjusted(-1, -1, 1, 1));
        painter.drawPixmap(0, 0, m_pixmap);
    }
}
