#include "midi/mac/CMIDIOutput_Mac.h"

#include <algorithm>

CMIDIOutput_Mac::~CMIDIOutput_Mac()
{
    // Disposes its port too.
    if (m_client != 0)
        MIDIClientDispose(m_client);
}

int CMIDIOutput_Mac::initialize()
{
    CMIDIOutput::initialize();
    const OSStatus status = MIDIClientCreate(CFSTR("MIDI Client"), nullptr, nullptr, &m_client);
    if (status != noErr)
        m_client = 0;
    return status;
}

bool CMIDIOutput_Mac::openPort(int index)
{
    if (m_client == 0)
        return false;
    if (m_port != 0)
        return true;

    if (MIDIOutputPortCreate(m_client, CFSTR("Output port"), &m_port) != noErr) {
        m_port = 0;
        return false;
    }
    m_destination = MIDIGetDestination(static_cast<ItemCount>(index));
    if (m_destination == 0)
        return false;
    setMIDIConnection(true);
    return true;
}

void CMIDIOutput_Mac::closePort()
{
    m_destination = 0;
    if (m_port != 0)
        MIDIPortDispose(m_port); // gone for us whatever the system answers
    m_port = 0;
    setMIDIConnection(false);
}

bool CMIDIOutput_Mac::sendMessage(const unsigned char* data, int size)
{
    if (m_port == 0 || m_destination == 0)
        return false;
    return sendInPackets(data, size, [this](const unsigned char* chunk, int chunkSize) {
        MIDIPacketList list{}; // time stamp 0: now
        list.numPackets = 1;
        list.packet[0].length = static_cast<UInt16>(chunkSize);
        std::copy_n(chunk, chunkSize, list.packet[0].data);
        return MIDISend(m_port, m_destination, &list) == noErr;
    });
}
