#include "device/CMemAPIProxyWrapper.h"

#include "device/CMemAPIWrapper.h"

int CMemAPIProxyWrapper::getKnob() const
{
    const auto* deviceMemory = dynamic_cast<const CMemAPIWrapper*>(memory());
    return deviceMemory != nullptr ? deviceMemory->getKnob(controllerID()) : 0;
}
