#pragma once

#include "simulator/transports/CDeviceCable.h"

class CSimulatedDevice;
class CTrafficFile;

/// The panel without an editor, from its start to its end: the device is where the other programs of this system find
/// it. Blocks until the panel is closed.
///
/// argc, argv    as a CCommandLine leaves them. What is said of a failure begins with the program's name.
/// makePort      as CDeviceCable wants it.
/// device, log   borrowed.
/// The result is the exit status: 1 after one line on standard error where there is no display, or no port could be
/// opened, else 0.
[[nodiscard]] int runPanel(int argc, char** argv, const CDeviceCable::PortMaker& makePort, CSimulatedDevice& device,
                           CTrafficFile& log);
