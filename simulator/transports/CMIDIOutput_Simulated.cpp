#include "simulator/transports/CMIDIOutput_Simulated.h"

#include "simulator/transports/CSimulatedSystem.h"

bool CMIDIOutput_Simulated::openPort(int index)
{
    if (m_destination != 0)
        return true;
    const MIDIEndpoint destination = MIDIPlatform::destination(index);
    if (!CSimulatedSystem::instance().connectOutput(destination))
        return false;
    m_destination = destination;
    setMIDIConnection(true);
    return true;
}

void CMIDIOutput_Simulated::closePort()
{
    m_destination = 0;
    setMIDIConnection(false);
}

bool CMIDIOutput_Simulated::sendMessage(const unsigned char* data, int size)
{
    if (m_destination == 0)
        return false;
    return sendInPackets(data, size, [this](const unsigned char* packet, int packetSize) {
        return CSimulatedSystem::instance().send(m_destination,
                                                 QByteArray(reinterpret_cast<const char*>(packet), packetSize));
    });
}
