#include "app/common/CWindowSize.h"

#include <QEvent>
#include <QWidget>
#include <QWindow>

CWindowSize::CWindowSize(QWidget* window, std::chrono::milliseconds settling) : QObject(window), m_window(window)
{
    m_settling.setSingleShot(true);
    m_settling.setInterval(settling);
    m_settling.callOnTimeout(this, &CWindowSize::restore);
    window->installEventFilter(this);
}

bool CWindowSize::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        m_settling.start();
    return QObject::eventFilter(watched, event);
}

void CWindowSize::restore()
{
    const QWindow* native = m_window->windowHandle();
    if (native == nullptr)
        return;
    const bool isFixed = m_window->minimumSize() == m_window->maximumSize();
    const QSize size = isFixed ? m_window->minimumSize() : native->size();
    if (size == m_window->size() || !m_patience.hasExpired())
        return;
    m_patience = QDeadlineTimer(k_patience);
    m_window->resize(size);
}
