#include "simulator/transports/CALSADeviceTransport.h"
#include "simulator/transports/DevicePort.h"

std::unique_ptr<CPolledTransport> createDevicePort(int cables)
{
    return std::make_unique<CALSADeviceTransport>(cables);
}
