#include "midi/CMIDIOutput.h"

#include <algorithm>
#include <thread>

int CMIDIOutput::initialize()
{
    return 0;
}

bool CMIDIOutput::isMIDIConnect() const
{
    return m_connected;
}

void CMIDIOutput::setMIDIConnection(bool connected)
{
    m_connected = connected;
}

bool CMIDIOutput::sendInPackets(const unsigned char* data, int size, const SendPacket& sendPacket) const
{
    if (!m_connected || data == nullptr || size <= 0)
        return false;
    while (true) {
        const int chunk = std::min(size, k_packetLimit);
        if (!sendPacket(data, chunk))
            return false;
        size -= chunk;
        if (size == 0)
            return true;
        data += chunk;
        // Gives the device time to take a packet in before the next one.
        std::this_thread::sleep_for(k_packetPause);
    }
}
