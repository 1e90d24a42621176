#pragma once

#include "ctl/CEditorBus.h"
#include "ctl/CtlTimes.h"

#include <QStringList>

class CStopRequest;

/// Runs the program without a window. There has to be an application object.
///
/// arguments        without the program's name.
/// output, errors   descriptors; see CConsole.
/// stop             borrowed; what ends a command early.
/// makeBus          how the running editor is reached; empty: it is not.
/// The result is the status for the shell: CtlStatus, or 128 and the number of the stop request.
[[nodiscard]] int runCtl(const QStringList& arguments, int output, int errors, CStopRequest& stop,
                         const CtlTimes& times = {}, const EditorBusMaker& makeBus = {});
