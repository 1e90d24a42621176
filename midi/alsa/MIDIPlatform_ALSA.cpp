#include "midi/MIDIPlatform.h"

#include "midi/alsa/CALSAPortList.h"
#include "midi/alsa/CMIDIInput_ALSA.h"
#include "midi/alsa/CMIDIOutput_ALSA.h"

namespace
{
/// An endpoint is its index plus 1, with this bit set for a destination.
constexpr MIDIEndpoint k_destinationBit = 0x8000'0000;

MIDIEndpoint endpointAt(const CALSAPortList& list, int index)
{
    return list.at(index) != nullptr ? static_cast<MIDIEndpoint>(index) + 1 : 0;
}

const ALSAPort* portOf(MIDIEndpoint endpoint)
{
    const bool isDestination = (endpoint & k_destinationBit) != 0;
    const CALSAPortList& list = isDestination ? CALSAPortList::destinations() : CALSAPortList::sources();
    return list.at(static_cast<qsizetype>(endpoint & ~k_destinationBit) - 1);
}
} // namespace

int MIDIPlatform::listSources()
{
    return CALSAPortList::sources().refresh();
}

int MIDIPlatform::listDestinations()
{
    return CALSAPortList::destinations().refresh();
}

int MIDIPlatform::sourceCount()
{
    return CALSAPortList::sources().count();
}

int MIDIPlatform::destinationCount()
{
    return CALSAPortList::destinations().count();
}

MIDIEndpoint MIDIPlatform::source(int index)
{
    return endpointAt(CALSAPortList::sources(), index);
}

MIDIEndpoint MIDIPlatform::destination(int index)
{
    const MIDIEndpoint endpoint = endpointAt(CALSAPortList::destinations(), index);
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

std::unique_ptr<CMIDIInput> MIDIPlatform::createInput()
{
    return std::make_unique<CMIDIInput_ALSA>();
}

std::unique_ptr<CMIDIOutput> MIDIPlatform::createOutput()
{
    return std::make_unique<CMIDIOutput_ALSA>();
}
