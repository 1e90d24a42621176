#include "app/common/CFixedSize.h"

#include <QEvent>
#include <QMetaObject>
#include <QWidget>

CFixedSize::CFixedSize(QWidget* window) : QObject(window), m_window(window)
{
    window->installEventFilter(this);
}

bool CFixedSize::eventFilter(QObject* watched, QEvent* event)
{
    // Afterwards: the news is still being taken in.
    if (event->type() == QEvent::Resize)
        QMetaObject::invokeMethod(this, &CFixedSize::restore, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

void CFixedSize::restore()
{
    const QSize fixed = m_window->minimumSize();
    if (fixed != m_window->maximumSize() || fixed == m_window->size() || !m_patience.hasExpired())
        return;
    m_patience = QDeadlineTimer(k_patience);
    m_window->resize(fixed);
}
