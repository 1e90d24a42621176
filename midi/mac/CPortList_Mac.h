#pragma once

#include <QList>
#include <QString>

#include <CoreMIDI/CoreMIDI.h>

/// The system's sources, or its destinations, as they were at one moment: an index keeps its endpoint until the next
/// refresh(), whatever comes or goes meanwhile.
///
/// Threads  GUI thread only.
class CPortList_Mac
{
  public:
    /// The program's two lists, empty until refreshed.
    static CPortList_Mac& sources();
    static CPortList_Mac& destinations();

    /// Lists the endpoints of now and gives their number.
    int refresh();

    /// The number of endpoints of now, whatever is listed.
    [[nodiscard]] int count() const;

    /// The endpoint at an index, 0 outside the list.
    [[nodiscard]] MIDIEndpointRef at(int index) const;

  private:
    using Count = ItemCount (*)();
    using Endpoint = MIDIEndpointRef (*)(ItemCount);
    CPortList_Mac(Count countNow, Endpoint endpointAt);

    const Count m_count;
    const Endpoint m_endpoint;
    QList<MIDIEndpointRef> m_endpoints;
};

/// The string's MacRoman bytes as text; each byte above 127 comes out as the Latin-1 character of its number.
///
/// string   borrowed; null gives a null string.
/// Empty, not null: the string has no such bytes, or more than 255 of them and no direct pointer to them.
[[nodiscard]] QString CFStringToQString(CFStringRef string);
