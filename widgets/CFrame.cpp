#include "widgets/CFrame.h"

#include <QPainter>

CFrame::CFrame(QWidget* parent, Qt::WindowFlags flags) : QFrame(parent, flags), DoubleBuffer(this)
{
    setFocusPolicy(Qt::ClickFocus);
}

QPixmap CFrame::backgroundPixmap() const
{
    return m_backgroundPixmap;
}

void CFrame::setBackgroundPixmap(const QPixmap& pixmap)
{
    m_backgroundPixmap = pixmap;
    updateDoubleBuffer();
}

QSize CFrame::sizeHint() const
{
    return {100, 100};
}

QSize CFrame::minimumSizeHint() const
{
    return {0, 0};
}

bool CFrame::event(QEvent* event)
{
    return !eventDoubleBuffer(event) && QWidget::event(event);
}

void CFrame::mousePressEvent(QMouseEvent*) {}

void CFrame::mouseReleaseEvent(QMouseEvent*) {}

void CFrame::mouseMoveEvent(QMouseEvent*) {}

void CFrame::paintDoubleBuffer(QPainter* painter)
{
    painter->drawPixmap(0, 0, m_backgroundPixmap);
}
