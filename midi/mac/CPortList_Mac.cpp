#include "midi/mac/CPortList_Mac.h"

#include <array>

CPortList_Mac::CPortList_Mac(Count countNow, Endpoint endpointAt) : m_count(countNow), m_endpoint(endpointAt) {}

CPortList_Mac& CPortList_Mac::sources()
{
    static CPortList_Mac list(MIDIGetNumberOfSources, MIDIGetSource);
    return list;
}

CPortList_Mac& CPortList_Mac::destinations()
{
    static CPortList_Mac list(MIDIGetNumberOfDestinations, MIDIGetDestination);
    return list;
}

int CPortList_Mac::refresh()
{
    m_endpoints.clear();
    const ItemCount total = m_count();
    for (ItemCount i = 0; i < total; ++i)
        m_endpoints.append(m_endpoint(i));
    return static_cast<int>(total);
}

int CPortList_Mac::count() const
{
    return static_cast<int>(m_count());
}

MIDIEndpointRef CPortList_Mac::at(int index) const
{
    return m_endpoints.value(index);
}

QString CFStringToQString(CFStringRef string)
{
    if (string == nullptr)
        return QString();
    if (const char* direct = CFStringGetCStringPtr(string, kCFStringEncodingMacRoman))
        return QString::fromLatin1(direct);
    std::array<char, 256> copy{};
    if (CFStringGetCString(string, copy.data(), copy.size(), kCFStringEncodingMacRoman))
        return QString::fromLatin1(copy.data());
    return QLatin1String("");
}
