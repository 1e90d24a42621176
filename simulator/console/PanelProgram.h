#pragma once

#include <QString>

/// Becomes the program that shows the device as a window, which lies beside this one: so the device on the command line
/// has nothing of windows in it.
///
/// program   this one as it was started; what the other says begins with it.
/// cables    at the sequencer, 1 to k_mostCables.
/// Returns only where that failed: one line that says why.
[[nodiscard]] QString becomePanel(const char* program, int cables);
