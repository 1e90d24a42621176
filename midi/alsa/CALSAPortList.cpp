#include "midi/alsa/CALSAPortList.h"

#include "midi/alsa/ALSAEndpointName.h"
#include "midi/alsa/ALSASequencer.h"

namespace
{
constexpr unsigned int k_source = SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ;
constexpr unsigned int k_destination = SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_WRITE;

bool allows(unsigned int capabilities, unsigned int wanted)
{
    return (capabilities & wanted) == wanted;
}
} // namespace

CALSAPortList::CALSAPortList(unsigned int capabilities) : m_capabilities(capabilities) {}

CALSAPortList& CALSAPortList::sources()
{
    static CALSAPortList list(k_source);
    return list;
}

CALSAPortList& CALSAPortList::destinations()
{
    static CALSAPortList list(k_destination);
    return list;
}

int CALSAPortList::refresh()
{
    m_ports.clear();
    ALSASequencer sequencer;
    if (openSequencer(&sequencer, SND_SEQ_OPEN_DUPLEX) < 0)
        return 0;

    snd_seq_client_info_t* client = nullptr;
    snd_seq_client_info_alloca(&client);
    snd_seq_client_info_set_client(client, -1);
    while (snd_seq_query_next_client(sequencer.get(), client) >= 0) {
        if (snd_seq_client_info_get_client(client) != SND_SEQ_CLIENT_SYSTEM)
            addPortsOf(sequencer.get(), client);
    }
    return static_cast<int>(m_ports.size());
}

void CALSAPortList::addPortsOf(snd_seq_t* sequencer, snd_seq_client_info_t* client)
{
    snd_seq_port_info_t* port = nullptr;
    snd_seq_port_info_alloca(&port);
    snd_seq_port_info_set_client(port, snd_seq_client_info_get_client(client));
    snd_seq_port_info_set_port(port, -1);

    // A port's endpoint name depends on its siblings of both directions, and is the same in both lists.
    QByteArrayList siblings;
    QList<std::pair<qsizetype, snd_seq_addr_t>> listed;
    while (snd_seq_query_next_port(sequencer, port) >= 0) {
        const unsigned int capabilities = snd_seq_port_info_get_capability(port);
        if (!allows(capabilities, k_source) && !allows(capabilities, k_destination))
            continue;
        if (allows(capabilities, m_capabilities))
            listed.append({siblings.size(), *snd_seq_port_info_get_addr(port)});
        siblings.append(snd_seq_port_info_get_name(port));
    }

    const QByteArray name = snd_seq_client_info_get_name(client);
    for (const auto& [index, address] : listed)
        m_ports.append({address, QString::fromUtf8(name), alsaEndpointName(name, siblings, index)});
}

const ALSAPort* CALSAPortList::at(qsizetype index) const
{
    return index >= 0 && index < m_ports.size() ? &m_ports[index] : nullptr;
}
