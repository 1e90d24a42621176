#include "midi/CMIDIPortWrapper.h"

#include "app/common/Constants.h"

int CMIDIPortWrapper::createInputPortList()
{
    const int total = CMIDIPort::createInputPortList();
    keepDevicePorts(&m_inputPortList);
    return total;
}

int CMIDIPortWrapper::createOutputPortList()
{
    const int total = CMIDIPort::createOutputPortList();
    keepDevicePorts(&m_outputPortList);
    return total;
}

void CMIDIPortWrapper::keepDevicePorts(PortList* list)
{
    list->removeIf([](PortList::iterator port) { return port->indexOf(k_jxPortName, 0, Qt::CaseSensitive) == -1; });
}
