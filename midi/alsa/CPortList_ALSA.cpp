#include "midi/alsa/CPortList_ALSA.h"

#include "app/common/Constants.h"
#include "midi/alsa/ALSAEndpointName.h"
#include "midi/alsa/ALSASequencer.h"

#include <cstdlib>
#include <unistd.h>

namespace
{
constexpr unsigned int k_source = SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ;
constexpr unsigned int k_destination = SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_WRITE;

bool allows(unsigned int capabilities, unsigned int wanted)
{
    return (capabilities & wanted) == wanted;
}

/// The long name of the sound card that a client belongs to; empty for a program's client, or when it can't be asked.
QByteArray cardOf(const snd_seq_client_info_t* client)
{
    const int card = snd_seq_client_info_get_card(client);
    char* name = nullptr;
    if (card < 0 || snd_card_get_longname(card, &name) < 0)
        return {};
    QByteArray copy(name);
    std::free(name);
    return copy;
}
} // namespace

CPortList_ALSA::CPortList_ALSA(unsigned int capabilities) : m_capabilities(capabilities) {}

CPortList_ALSA& CPortList_ALSA::sources()
{
    static CPortList_ALSA list(k_source);
    return list;
}

CPortList_ALSA& CPortList_ALSA::destinations()
{
    static CPortList_ALSA list(k_destination);
    return list;
}

int CPortList_ALSA::refresh()
{
    m_ports = portsOfNow();
    return static_cast<int>(m_ports.size());
}

int CPortList_ALSA::count() const
{
    return static_cast<int>(portsOfNow().size());
}

QList<ALSAPort> CPortList_ALSA::portsOfNow() const
{
    QList<ALSAPort> ports;
    ALSASequencer sequencer;
    if (openSequencer(&sequencer, SND_SEQ_OPEN_DUPLEX) < 0)
        return ports;

    snd_seq_client_info_t* client = nullptr;
    snd_seq_client_info_alloca(&client);
    snd_seq_client_info_set_client(client, -1);
    while (snd_seq_query_next_client(sequencer.get(), client) >= 0) {
        if (snd_seq_client_info_get_client(client) != SND_SEQ_CLIENT_SYSTEM)
            addPortsOf(sequencer.get(), client, &ports);
    }
    return ports;
}

void CPortList_ALSA::addPortsOf(snd_seq_t* sequencer, snd_seq_client_info_t* client, QList<ALSAPort>* ports) const
{
    snd_seq_port_info_t* port = nullptr;
    snd_seq_port_info_alloca(&port);
    snd_seq_port_info_set_client(port, snd_seq_client_info_get_client(client));
    snd_seq_port_info_set_port(port, -1);

    QByteArrayList names; // of both directions
    QList<qsizetype> listed;
    QList<snd_seq_addr_t> addresses;
    while (snd_seq_query_next_port(sequencer, port) >= 0) {
        const unsigned int capabilities = snd_seq_port_info_get_capability(port);
        if (!allows(capabilities, k_source) && !allows(capabilities, k_destination))
            continue;
        if (allows(capabilities, m_capabilities)) {
            listed.append(names.size());
            addresses.append(*snd_seq_port_info_get_addr(port));
        }
        names.append(snd_seq_port_info_get_name(port));
    }

    const QByteArray name = snd_seq_client_info_get_name(client);
    if (holdsDeviceName(name) || holdsDeviceName(cardOf(client))) {
        const QStringList endpoints = deviceEndpointNames(name, names, listed);
        for (qsizetype i = 0; i < listed.size(); ++i)
            ports->append({addresses[i], k_jxPortName, endpoints[i]});
    } else {
        for (qsizetype i = 0; i < listed.size(); ++i)
            ports->append({addresses[i], QString::fromUtf8(name), QString::fromUtf8(names[listed[i]])});
    }
}

const ALSAPort* CPortList_ALSA::at(qsizetype index) const
{
    return index >= 0 && index < m_ports.size() ? &m_ports[index] : nullptr;
}

QStringList otherClientNames()
{
    QStringList names;
    ALSASequencer sequencer;
    if (openSequencer(&sequencer, SND_SEQ_OPEN_DUPLEX) < 0)
        return names;
    snd_seq_client_info_t* client = nullptr;
    snd_seq_client_info_alloca(&client);
    snd_seq_client_info_set_client(client, -1);
    while (snd_seq_query_next_client(sequencer.get(), client) >= 0) {
        // The kernel's own clients have no process, and who only looks has no ports.
        const int process = snd_seq_client_info_get_pid(client);
        if (process >= 0 && process != getpid() && snd_seq_client_info_get_num_ports(client) > 0)
            names.append(QString::fromUtf8(snd_seq_client_info_get_name(client)));
    }
    names.removeDuplicates();
    return names;
}
