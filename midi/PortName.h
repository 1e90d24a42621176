#pragma once

#include "midi/MIDIPlatform.h"

/// The name under which the editor knows a port: "<device> <endpoint>", or the endpoint's name alone where that already
/// contains the device's.
///
/// index   the port's place in its list; names an endpoint without a name ("Port #2").
/// Empty for the endpoint 0. A missing device is called "Unknown Device".
[[nodiscard]] QString getPortName(MIDIEndpoint endpoint, int index);
