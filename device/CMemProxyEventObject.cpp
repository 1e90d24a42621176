#include "device/CMemProxyEventObject.h"

#include "device/CMemAPIProxy.h"

CMemProxyEventObject::CMemProxyEventObject(CMemAPIProxy* proxy) : m_proxy(proxy)
{
    connect(this, SIGNAL(paramUpdateSignal()), this, SLOT(paramUpdateSlot()), Qt::QueuedConnection);
}

void CMemProxyEventObject::paramUpdate()
{
    emit paramUpdateSignal();
}

void CMemProxyEventObject::paramUpdateSlot()
{
    if (m_proxy != nullptr)
        m_proxy->paramChanged();
}
