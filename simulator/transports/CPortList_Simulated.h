#pragma once

#include "midi/MIDIPlatform.h"

#include <QList>

/// The simulated system's sources, or its destinations, as they were at one moment: an index keeps its port until the
/// next refresh(), whatever is plugged or unplugged meanwhile.
///
/// Threads  GUI thread only.
class CPortList_Simulated
{
  public:
    /// The program's two lists, empty until refreshed.
    static CPortList_Simulated& sources();
    static CPortList_Simulated& destinations();

    /// Lists the ports of now and gives their number.
    int refresh();

    /// The number of ports of now, whatever is listed.
    [[nodiscard]] int count() const;

    /// The port at an index, 0 outside the list.
    [[nodiscard]] MIDIEndpoint at(int index) const;

  private:
    explicit CPortList_Simulated(bool sources);

    const bool m_listsSources;
    QList<MIDIEndpoint> m_endpoints;
};
