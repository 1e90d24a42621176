#include "simulator/transports/CMIDIInput_Simulated.h"

#include "midi/CCircularBuffer.h"
#include "midi/MIDIPlatform.h"
#include "simulator/transports/CSimulatedSystem.h"

#include <algorithm>

CMIDIInput_Simulated::~CMIDIInput_Simulated()
{
    CSimulatedSystem::instance().disconnectInput(*this);
}

int CMIDIInput_Simulated::initialize()
{
    const int status = CMIDIInput::initialize();
    ring()->initialize(k_ringCapacity);
    return status;
}

bool CMIDIInput_Simulated::openPort(int index)
{
    if (!ring())
        return false;
    if (isMIDIConnect())
        return true;
    if (!CSimulatedSystem::instance().connectInput(*this, MIDIPlatform::source(index)))
        return false;
    startDelivery();
    setConnected(true);
    return true;
}

void CMIDIInput_Simulated::closePort()
{
    CSimulatedSystem::instance().disconnectInput(*this);
    if (ring())
        stopDelivery();
    setConnected(false);
}

void CMIDIInput_Simulated::readMessageFromBuffer(unsigned char* data, int* size)
{
    readRecord(data, size);
}

void CMIDIInput_Simulated::receive(const QByteArray& packet)
{
    const auto* const bytes = reinterpret_cast<const unsigned char*>(packet.constData());
    for (qsizetype position = 0; position < packet.size(); position += k_largestRecord) {
        const qsizetype length = std::min<qsizetype>(packet.size() - position, k_largestRecord);
        // A full ring loses the record, as it does with any other port.
        static_cast<void>(writeRecord(bytes + position, static_cast<quint16>(length)));
    }
    wakeDelivery();
}

void CMIDIInput_Simulated::overrun()
{
    noteOverrun();
    wakeDelivery();
}

void CMIDIInput_Simulated::endReception()
{
    noteEnd();
    wakeDelivery();
}
