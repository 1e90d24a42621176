#include "midi/MIDIPlatform.h"
#include "simulator/transports/CMIDIInput_Simulated.h"
#include "simulator/transports/CMIDIOutput_Simulated.h"
#include "simulator/transports/CSimulatedSystem.h"

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
    return std::make_unique<CMIDIInput_Simulated>();
}

std::unique_ptr<CMIDIOutput> createOutput()
{
    return std::make_unique<CMIDIOutput_Simulated>();
}
} // namespace MIDIPlatform
