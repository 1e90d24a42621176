#include "simulator/transports/CMIDIOutput_Simulated.h"

#include "simulator/transports/CSimulatedSystem.h"

#include <QThread>

#include <algorithm>

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
    if (m_destination == 0 || !isMIDIConnect() || !data || size <= 0)
        return false;
    for (int position = 0; position < size; position += k_packetLimit) {
        if (position > 0)
            QThread::usleep(k_packetPause);
        const QByteArray packet(reinterpret_cast<const char*>(data) + position,
                                std::min(size - position, k_packetLimit));
        if (!CSimulatedSystem::instance().send(m_destination, packet))
            return false;
    }
    return true;
}
