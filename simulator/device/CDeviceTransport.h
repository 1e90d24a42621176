#pragma once

#include <QByteArray>

class CSimulatedDevice;

/// Carries a simulated device's bytes to whoever talks to it. It hands what comes the other way to
/// CSimulatedDevice::receive().
class CDeviceTransport
{
  public:
    virtual ~CDeviceTransport() = default;

    /// One packet of the device, at least 1 byte.
    /// Threads  whichever thread made the device send, one at a time; the device holds no lock meanwhile.
    virtual void deviceSent(CSimulatedDevice& device, const QByteArray& packet) = 0;

    /// The device was unplugged or is about to be destroyed: its ports vanish before this returns, and no call of
    /// receive() is under way any more.
    virtual void deviceUnplugged(CSimulatedDevice& device) = 0;
};
