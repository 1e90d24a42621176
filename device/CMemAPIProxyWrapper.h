#pragma once

#include "device/CMemAPIProxy.h"

/// A proxy that can also read the value that a knob reports.
class CMemAPIProxyWrapper : public CMemAPIProxy
{
  public:
    /// The device memory's knob value under this proxy's id; 0 with any other memory or none.
    [[nodiscard]] int getKnob() const;
};
