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
    const auto rest = m_lastFrame ? *m_lastFrame + k_interval - m_clock() : std::chrono::milliseconds(0);
    if (rest > std::chrono::milliseconds(0))
        m_timer.start(rest);
    else
        open();
}

bool CFrameGate::isPending() const
{
    return m_timer.isActive();
}

void CFrameGate::open()
{
    m_lastFrame = m_clock();
    emit frame();
}

std::chrono::milliseconds CFrameGate::monotonicClock()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch());
}
