#include "simulator/transports/CPortList_Simulated.h"

#include "simulator/transports/CSimulatedSystem.h"

CPortList_Simulated::CPortList_Simulated(bool sources) : m_listsSources(sources) {}

CPortList_Simulated& CPortList_Simulated::sources()
{
    static CPortList_Simulated list(true);
    return list;
}

CPortList_Simulated& CPortList_Simulated::destinations()
{
    static CPortList_Simulated list(false);
    return list;
}

int CPortList_Simulated::refresh()
{
    m_endpoints = CSimulatedSystem::instance().endpoints(m_listsSources);
    return static_cast<int>(m_endpoints.size());
}

int CPortList_Simulated::count() const
{
    return static_cast<int>(CSimulatedSystem::instance().endpoints(m_listsSources).size());
}

MIDIEndpoint CPortList_Simulated::at(int index) const
{
    return m_endpoints.value(index);
}
