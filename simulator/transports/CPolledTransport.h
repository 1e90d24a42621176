#pragma once

#include "simulator/device/CDeviceTransport.h"

#include <QString>

#include <poll.h>

#include <vector>

/// A transport that the system serves through file descriptors.
///
/// Threads  one thread opens it, waits for its descriptors and calls process(); the device is used on it alone.
class CPolledTransport : public CDeviceTransport
{
  public:
    /// Opens the ports and plugs the device in. The result is empty, or one line that says why it did not work.
    [[nodiscard]] virtual QString open(CSimulatedDevice& device) = 0;

    /// What was opened, in words.
    [[nodiscard]] virtual QString description() const = 0;

    /// What to wait for; nothing when it is closed.
    [[nodiscard]] virtual std::vector<pollfd> descriptors() const = 0;

    /// Hands over to the device what has come in, and sends what had to wait. Never blocks.
    /// false: the other side is gone for good.
    [[nodiscard]] virtual bool process() = 0;
};
