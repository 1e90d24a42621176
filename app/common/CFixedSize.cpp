#include "app/common/CFixedSize.h"

#include <QEvent>
#include <QWidget>

CFixedSize::CFixedSize(QWidget* window, std::chrono::milliseconds settling) : QObject(window), m_window(window)
{
    m_settling.setSingleShot(true);
    m_settling.setInterval(settling);
    m_settling.callOnTimeout(this, &CFixedSize::restore);
    window->installEventFilter(this);
}

bool CFixedSize::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        m_settling.start();
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
