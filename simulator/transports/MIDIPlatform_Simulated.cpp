#include "midi/MIDIPlatform.h"
#include "simulator/transports/CMIDIInput_Simulated.h"
#include "simulator/transports/CMIDIOutput_Simulated.h"
#include "simulator/transports/CPortList_Simulated.h"
#include "simulator/transports/CSimulatedSystem.h"

namespace MIDIPlatform
{
int listSources()
{
    return CPortList_Simulated::sources().refresh();
}

int listDestinations()
{
    return CPortList_Simulated::destinations().refresh();
}

int sourceCount()
{
    return CPortList_Simulated::sources().count();
}

int destinationCount()
{
    return CPortList_Simulated::destinations().count();
}

MIDIEndpoint source(int index)
{
    return CPortList_Simulated::sources().at(index);
}

MIDIEndpoint destination(int index)
{
    return CPortList_Simulated::destinations().at(index);
}

QString endpointName(MIDIEndpoint endpoint)
{
    return CSimulatedSystem::instance().endpointName(endpoint);
}

QString deviceName(MIDIEndpoint endpoint)
{
    return CSimulatedSystem::instance().deviceName(endpoint);
}

QStringList otherPrograms()
{
    return CSimulatedSystem::instance().otherPrograms();
}

void setProgramName(const char* /*name*/) {} // nobody else is in this process

std::unique_ptr<CMIDIInput> createInput()
{
    return std::make_unique<CMIDIInput_Simulated>();
}

std::unique_ptr<CMIDIOutput> createOutput()
{
    return std::make_unique<CMIDIOutput_Simulated>();
}
} // namespace MIDIPlatform
