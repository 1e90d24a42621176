#include "midi/MIDIPlatform.h"
#include "simulator/CSimulatedInput.h"
#include "simulator/CSimulatedOutput.h"
#include "simulator/CSimulatedSystem.h"

namespace MIDIPlatform
{
int listSources()
{
    return CSimulatedSystem::instance().listSources();
}

int listDestinations()
{
    return CSimulatedSystem::instance().listDestinations();
}

int sourceCount()
{
    return CSimulatedSystem::instance().sourceCount();
}

int destinationCount()
{
    return CSimulatedSystem::instance().destinationCount();
}

MIDIEndpoint source(int index)
{
    return CSimulatedSystem::instance().source(index);
}

MIDIEndpoint destination(int index)
{
    return CSimulatedSystem::instance().destination(index);
}

QString endpointName(MIDIEndpoint endpoint)
{
    return CSimulatedSystem::instance().endpointName(endpoint);
}

QString deviceName(MIDIEndpoint endpoint)
{
    return CSimulatedSystem::instance().deviceName(endpoint);
}

std::unique_ptr<CMIDIInput> createInput()
{
    return std::make_unique<CSimulatedInput>();
}

std::unique_ptr<CMIDIOutput> createOutput()
{
    return std::make_unique<CSimulatedOutput>();
}
} // namespace MIDIPlatform
