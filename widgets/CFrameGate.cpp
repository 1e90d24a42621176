#include "widgets/CFrameGate.h"

CFrameGate::CFrameGate(QObject* parent, Clock clock) : QObject(parent), m_clock(std::move(clock))
{
    m_timer.setSingleShot(true);
    // A coarse timer may be early.
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &CFrameGate::open);
}

void CFrameGate::request()
{
    if (m_timer.isActive())
        return;
    const std::chrono::milliseconds now = m_clock();
    if (m_lastFrame != now / k_interval)
        open();
    else
        m_timer.start((m_lastFrame + 1) * k_interval - now);
}

bool CFrameGate::isPending() const
{
    return m_timer.isActive();
}

void CFrameGate::open()
{
    m_lastFrame = m_clock() / k_interval;
    emit frame();
}

std::chrono::milliseconds CFrameGate::monotonicClock()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch());
}
