#include "tests/fakes/FakeMIDIPlatform.h"

#include "midi/MIDIPlatform.h"

namespace FakeMIDIPlatform
{
QList<FakePort> g_sources;
QList<FakePort> g_destinations;
} // namespace FakeMIDIPlatform

namespace
{
constexpr MIDIEndpoint k_firstDestination = 1000;

MIDIEndpoint endpointAt(const QList<FakePort>& ports, int index, MIDIEndpoint first)
{
    if (index < 0 || index >= ports.size() || ports[index].absent)
        return 0;
    return first + static_cast<MIDIEndpoint>(index);
}

FakePort portOf(MIDIEndpoint endpoint)
{
    if (endpoint >= k_firstDestination)
        return FakeMIDIPlatform::g_destinations.at(endpoint - k_firstDestination);
    return FakeMIDIPlatform::g_sources.at(endpoint - 1);
}
} // namespace

int MIDIPlatform::listSources()
{
    return sourceCount();
}

int MIDIPlatform::listDestinations()
{
    return destinationCount();
}

int MIDIPlatform::sourceCount()
{
    return static_cast<int>(FakeMIDIPlatform::g_sources.size());
}

int MIDIPlatform::destinationCount()
{
    return static_cast<int>(FakeMIDIPlatform::g_destinations.size());
}

MIDIEndpoint MIDIPlatform::source(int index)
{
    return endpointAt(FakeMIDIPlatform::g_sources, index, 1);
}

MIDIEndpoint MIDIPlatform::destination(int index)
{
    return endpointAt(FakeMIDIPlatform::g_destinations, index, k_firstDestination);
}

QString MIDIPlatform::endpointName(MIDIEndpoint endpoint)
{
    return portOf(endpoint).endpoint;
}

QString MIDIPlatform::deviceName(MIDIEndpoint endpoint)
{
    return portOf(endpoint).device;
}

QStringList MIDIPlatform::otherPrograms()
{
    return {};
}
