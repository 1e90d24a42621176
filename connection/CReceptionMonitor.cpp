#include "connection/CReceptionMonitor.h"

#include "device/CMemAPIWrapper.h"

#include <utility>

CReceptionMonitor::CReceptionMonitor(QObject* parent, CMemAPIWrapper* memory, const ConnectionTimes& times)
    : QObject(parent), m_memory(memory), m_pause(new QTimer(this))
{
    m_pause->setSingleShot(true);
    m_pause->setInterval(times.requestPause);
    connect(m_pause, &QTimer::timeout, this, &CReceptionMonitor::endPause);
    connect(this, &CReceptionMonitor::overran, this, &CReceptionMonitor::requestAgain, Qt::QueuedConnection);
    m_memory->overrunObserver().set(this);
}

CReceptionMonitor::~CReceptionMonitor()
{
    m_memory->overrunObserver().clear(this);
}

void CReceptionMonitor::paramChanged()
{
    emit overran();
}

void CReceptionMonitor::requestAgain()
{
    if (m_pause->isActive()) {
        m_lostMore = true;
        return;
    }
    m_memory->requestAllParam();
    m_pause->start();
}

void CReceptionMonitor::endPause()
{
    if (std::exchange(m_lostMore, false))
        requestAgain();
}
