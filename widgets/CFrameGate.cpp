#include "widgets/CFrameGate.h"

#include <QElapsedTimer>

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
    const qint64 rest = m_lastFrame ? *m_lastFrame + k_interval - m_clock() : 0;
    if (rest > 0)
        m_timer.start(static_cast<int>(rest));
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

qint64 CFrameGate::monotonicClock()
{
    QElapsedTimer timer;
    timer.start();
    return timer.msecsSinceReference();
}
