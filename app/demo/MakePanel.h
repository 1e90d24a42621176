#pragma once

#include <memory>

class CDevicePanel;
class CSimulatedDevice;
class CTrafficFile;

/// The panel of a device, on the screen: at its right edge, so that an editor finds room beside it. As long as it
/// lives, every message is in the log soon after it has passed.
///
/// device, log   borrowed; both outlive the panel.
[[nodiscard]] std::unique_ptr<CDevicePanel> makePanel(CSimulatedDevice& device, CTrafficFile& log);
