#include "midi/mac/CMIDIInput_Mac.h"

#include "app/common/CMutex.h"
#include "midi/CCircularBuffer.h"

#include <cstddef>
#include <cstring>
#include <set>

namespace
{
/// The input objects that live now. The lock is held by a read procedure for as long as it uses one of them, so that
/// none goes meanwhile; it only copies, and so holds up nobody.
struct LiveInputs
{
    CMutex lock;
    std::set<const void*> inputs;
};

LiveInputs& liveInputs()
{
    static LiveInputs live;
    return live;
}
} // namespace

CMIDIInput_Mac::CMIDIInput_Mac()
{
    const std::scoped_lock lock(liveInputs().lock);
    liveInputs().inputs.insert(this);
}

CMIDIInput_Mac::~CMIDIInput_Mac()
{
    {
        const std::scoped_lock lock(liveInputs().lock);
        liveInputs().inputs.erase(this);
    }
    // Disposes its port too.
    if (m_client != 0)
        MIDIClientDispose(m_client);
}

int CMIDIInput_Mac::initialize()
{
    CMIDIInput::initialize();
    ring()->initialize(k_ringCapacity);
    const OSStatus status = MIDIClientCreate(CFSTR("MIDI Client"), nullptr, nullptr, &m_client);
    if (status != noErr)
        m_client = 0;
    return status;
}

bool CMIDIInput_Mac::openPort(int index)
{
    if (m_client == 0)
        return false;
    if (m_port != 0)
        return true;

    if (MIDIInputPortCreate(m_client, CFSTR("Input port"), midiReadProc, nullptr, &m_port) != noErr) {
        m_port = 0;
        return false;
    }
    const MIDIEndpointRef source = MIDIGetSource(static_cast<ItemCount>(index));
    if (source == 0)
        return false;

    // Before the source is connected, so that its first packet already finds the thread.
    startDelivery();
    if (MIDIPortConnectSource(m_port, source, this) != noErr)
        return false;
    m_source = source;
    setConnected(true);
    return true;
}

void CMIDIInput_Mac::closePort()
{
    // The port is gone for us whatever the system answers, so no status is looked at.
    if (m_port != 0) {
        if (m_source != 0)
            MIDIPortDisconnectSource(m_port, m_source);
        m_source = 0;
        MIDIPortDispose(m_port);
        m_port = 0;
    }
    stopDelivery();
    setConnected(false);
}

void CMIDIInput_Mac::readMessageFromBuffer(unsigned char* data, int* size)
{
    readRecord(data, size);
}

void CMIDIInput_Mac::midiReadProc(const MIDIPacketList* packets, void* /*readProcRefCon*/, void* srcConnRefCon)
{
    const std::scoped_lock lock(liveInputs().lock);
    if (packets == nullptr || !liveInputs().inputs.contains(srcConnRefCon))
        return;
    auto* input = static_cast<CMIDIInput_Mac*>(srcConnRefCon);
    if (input->ring() == nullptr)
        return;
    input->receive(*packets);
    input->wakeDelivery();
}

void CMIDIInput_Mac::receive(const MIDIPacketList& packets)
{
    // A packet may begin at any address, so it is read as bytes. Where the next one begins is the system's to say: on
    // ARM each begins at an address that can be divided by four, on Intel where the one before it ends.
    constexpr std::size_t k_lengthOffset = offsetof(MIDIPacket, length);
    constexpr std::size_t k_dataOffset = offsetof(MIDIPacket, data);
    const MIDIPacket* packet = packets.packet;
    for (UInt32 i = 0; i < packets.numPackets; ++i) {
        const auto* bytes = reinterpret_cast<const unsigned char*>(packet);
        UInt16 length = 0;
        std::memcpy(&length, bytes + k_lengthOffset, sizeof length);
        writeRecord(bytes + k_dataOffset, length); // what does not fit is dropped
        packet = MIDIPacketNext(packet);
    }
}
