#include "midi/MIDIPlatform.h"

#include "midi/alsa/ALSASequencer.h"
#include "midi/alsa/CMIDIInput_ALSA.h"
#include "midi/alsa/CMIDIOutput_ALSA.h"
#include "midi/alsa/CPortList_ALSA.h"

namespace
{
/// An endpoint is its index plus 1, with this bit set for a destination.
constexpr MIDIEndpoint k_destinationBit = 0x8000'0000;

MIDIEndpoint endpointAt(const CPortList_ALSA& list, int index)
{
    return list.at(index) != nullptr ? static_cast<MIDIEndpoint>(index) + 1 : 0;
}

const ALSAPort* portOf(MIDIEndpoint endpoint)
{
    const bool isDestination = (endpoint & k_destinationBit) != 0;
    const CPortList_ALSA& list = isDestination ? CPortList_ALSA::destinations() : CPortList_ALSA::sources();
    return list.at(static_cast<qsizetype>(endpoint & ~k_destinationBit) - 1);
}
} // namespace

int MIDIPlatform::listSources()
{
    return CPortList_ALSA::sources().refresh();
}

int MIDIPlatform::listDestinations()
{
    return CPortList_ALSA::destinations().refresh();
}

int MIDIPlatform::sourceCount()
{
    return CPortList_ALSA::sources().count();
}

int MIDIPlatform::destinationCount()
{
    return CPortList_ALSA::destinations().count();
}

MIDIEndpoint MIDIPlatform::source(int index)
{
    return endpointAt(CPortList_ALSA::sources(), index);
}

MIDIEndpoint MIDIPlatform::destination(int index)
{
    const MIDIEndpoint endpoint = endpointAt(CPortList_ALSA::destinations(), index);
    return endpoint != 0 ? endpoint | k_destinationBit : 0;
}

QString MIDIPlatform::endpointName(MIDIEndpoint endpoint)
{
    const ALSAPort* port = portOf(endpoint);
    return port != nullptr ? port->endpointName : QString();
}

QString MIDIPlatform::deviceName(MIDIEndpoint endpoint)
{
    const ALSAPort* port = portOf(endpoint);
    return port != nullptr ? port->deviceName : QString();
}

QStringList MIDIPlatform::otherPrograms()
{
    return otherClientNames();
}

void MIDIPlatform::setProgramName(const char* name)
{
    setClientName(name);
}

std::unique_ptr<CMIDIInput> MIDIPlatform::createInput()
{
    return std::make_unique<CMIDIInput_ALSA>();
}

std::unique_ptr<CMIDIOutput> MIDIPlatform::createOutput()
{
    return std::make_unique<CMIDIOutput_ALSA>();
}
