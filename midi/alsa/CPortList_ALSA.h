#pragma once

#include <alsa/asoundlib.h>

#include <QList>
#include <QStringList>

/// A port of the sequencer as it was when it was listed.
struct ALSAPort
{
    snd_seq_addr_t address;
    QString deviceName;
    QString endpointName;
};

/// The sequencer's sources, or its destinations, as they were at one moment: an index keeps its port until the next
/// refresh(), whatever comes or goes meanwhile.
///
/// The System client's ports are left out, and so are this program's own, which nobody else may subscribe to.
/// Threads  GUI thread only.
class CPortList_ALSA
{
  public:
    /// The program's two lists, empty until refreshed.
    static CPortList_ALSA& sources();
    static CPortList_ALSA& destinations();

    /// Lists the ports of now and gives their number; 0 without a sequencer.
    int refresh();

    /// The number of ports of now, whatever is listed.
    [[nodiscard]] int count() const;

    /// The port at an index, or null outside the list. Valid until the next refresh().
    [[nodiscard]] const ALSAPort* at(qsizetype index) const;

  private:
    /// capabilities   what a port must allow to be listed.
    explicit CPortList_ALSA(unsigned int capabilities);

    [[nodiscard]] QList<ALSAPort> portsOfNow() const;
    void addPortsOf(snd_seq_t* sequencer, snd_seq_client_info_t* client, QList<ALSAPort>* ports) const;

    const unsigned int m_capabilities;
    QList<ALSAPort> m_ports;
};

/// The names of the sequencer's clients with ports that belong to other processes, each once, without sound cards and
/// the system.
/// Empty without a sequencer.
[[nodiscard]] QStringList otherClientNames();
