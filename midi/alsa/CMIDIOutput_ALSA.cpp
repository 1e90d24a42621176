#include "midi/alsa/CMIDIOutput_ALSA.h"

#include "midi/alsa/CPortList_ALSA.h"

int CMIDIOutput_ALSA::initialize()
{
    CMIDIOutput::initialize();
    return openSequencer(&m_sequencer, SND_SEQ_OPEN_OUTPUT);
}

bool CMIDIOutput_ALSA::openPort(int index)
{
    if (!m_sequencer)
        return false;
    if (m_port >= 0)
        return true;

    // Read by the subscription made here alone: without SUBS_READ nobody else can add one.
    m_port = snd_seq_create_simple_port(m_sequencer.get(), "Output port", SND_SEQ_PORT_CAP_READ,
                                        SND_SEQ_PORT_TYPE_MIDI_GENERIC | SND_SEQ_PORT_TYPE_APPLICATION);
    if (m_port < 0)
        return false;
    const ALSAPort* destination = CPortList_ALSA::destinations().at(index);
    if (destination == nullptr)
        return false;

    // A device's port takes events from subscribers only.
    const snd_seq_addr_t address = destination->address;
    if (snd_seq_connect_to(m_sequencer.get(), m_port, address.client, address.port) < 0)
        return false;
    m_destination = address;
    setMIDIConnection(true);
    return true;
}

void CMIDIOutput_ALSA::closePort()
{
    m_destination.reset();
    if (m_port >= 0) {
        // Its subscription goes with it. The port is gone for us whatever the sequencer answers.
        snd_seq_delete_simple_port(m_sequencer.get(), m_port);
        m_port = -1;
    }
    setMIDIConnection(false);
}

bool CMIDIOutput_ALSA::sendMessage(const unsigned char* data, int size)
{
    if (!m_destination)
        return false;
    return sendInPackets(data, size, [this](const unsigned char* packet, int n) { return sendPacket(packet, n); });
}

bool CMIDIOutput_ALSA::sendPacket(const unsigned char* data, int size)
{
    if (!isSubscribed())
        return false;
    snd_seq_event_t event;
    snd_seq_ev_clear(&event);
    snd_seq_ev_set_source(&event, static_cast<unsigned char>(m_port));
    snd_seq_ev_set_subs(&event);
    snd_seq_ev_set_direct(&event);
    // The bytes are only read.
    snd_seq_ev_set_sysex(&event, static_cast<unsigned int>(size), const_cast<unsigned char*>(data));
    return snd_seq_event_output_direct(m_sequencer.get(), &event) >= 0;
}

bool CMIDIOutput_ALSA::isSubscribed()
{
    const snd_seq_addr_t source{static_cast<unsigned char>(snd_seq_client_id(m_sequencer.get())),
                                static_cast<unsigned char>(m_port)};
    snd_seq_port_subscribe_t* subscription = nullptr;
    snd_seq_port_subscribe_alloca(&subscription);
    snd_seq_port_subscribe_set_sender(subscription, &source);
    snd_seq_port_subscribe_set_dest(subscription, &*m_destination);
    return snd_seq_get_port_subscription(m_sequencer.get(), subscription) >= 0;
}
