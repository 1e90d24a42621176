#include "bench/CPlainRing.h"

#include "widgets/CKnobLED.h"

#include <QPainter>

CPlainRing::CPlainRing(QWidget* parent)
    : QWidget(parent), m_picture(k_ledRect.size(), QImage::Format_ARGB32_Premultiplied)
{
    m_picture.fill(QColor(12, 100, 40, 128));
    resize(m_picture.size());
    connect(&m_gate, &CFrameGate::frame, this, qOverload<>(&QWidget::update));
}

void CPlainRing::change()
{
    m_gate.request();
}

void CPlainRing::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.drawImage(0, 0, m_picture);
    painter.drawImage(0, 0, m_picture);
}
