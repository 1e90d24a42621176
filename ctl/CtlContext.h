#pragma once

#include "ctl/CCtlArguments.h"
#include "ctl/CEditorBus.h"
#include "ctl/CtlStatus.h"
#include "ctl/CtlTimes.h"

class CConsole;
class CStopRequest;

/// What a command works with. All of it is borrowed and outlives the command.
struct CtlContext
{
    const CtlArguments& arguments;
    const CtlTimes& times;
    CConsole& console;
    CStopRequest& stop;
    const EditorBusMaker& makeBus; ///< empty: the running editor cannot be asked
};

/// Says why, on standard error. The result is the status.
CtlStatus fail(const CtlContext& context, CtlStatus status, const QString& error);
