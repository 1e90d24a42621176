#pragma once

#include <memory>

class CPolledTransport;

/// A port, still closed, at which the other programs of this system find a device, with 1 to k_mostCables cables.
/// null: this build knows no such system.
[[nodiscard]] std::unique_ptr<CPolledTransport> createDevicePort(int cables);
