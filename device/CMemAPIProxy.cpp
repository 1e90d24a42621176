#include "device/CMemAPIProxy.h"

#include "device/CMemAPI.h"
#include "device/CMemProxyEventObject.h"

#include <QApplication>
#include <QThread>
#include <QWidget>

CMemAPIProxy::CMemAPIProxy() : m_eventObject(std::make_unique<CMemProxyEventObject>(this)) {}

CMemAPIProxy::~CMemAPIProxy() = default;

int CMemAPIProxy::controllerID() const
{
    return m_id;
}

void CMemAPIProxy::setControllerID(int id)
{
    m_id = id;
}

void CMemAPIProxy::initialize(CMemAPI* memory)
{
    m_memory = memory;
    registerObserverToMemAPI();
}

void CMemAPIProxy::setPortName(const QString& name)
{
    m_portName = name;
}

void CMemAPIProxy::registerObserverToMemAPI()
{
    if (m_memory != nullptr)
        m_memory->registerObserver(m_id, this);
}

void CMemAPIProxy::unregisterObserverFromMemAPI()
{
    if (m_memory != nullptr)
        m_memory->unregisterObserver(m_id, this);
}

int CMemAPIProxy::getParam() const
{
    return m_memory != nullptr ? m_memory->getParam(m_id) : 0;
}

bool CMemAPIProxy::setParam(int value)
{
    if (m_memory == nullptr)
        return true;
    const int old = m_memory->getParam(m_id);
    if (old == value || !m_memory->isEditable(m_id))
        return true;
    m_memory->setParam(m_id, value);
    if (!m_memory->isConnected() || m_memory->sendMessage(m_portName, k_changeParamMessage, m_id))
        return true;
    m_memory->setParam(m_id, old);
    return false;
}

void CMemAPIProxy::paramChanged()
{
    if (qApp != nullptr && qApp->thread() == QThread::currentThread()) {
        updateMemAPI();
        if (QWidget* popup = QApplication::activePopupWidget())
            popup->close();
    } else {
        m_eventObject->paramUpdate();
    }
}

CMemAPI* CMemAPIProxy::memory() const
{
    return m_memory;
}
