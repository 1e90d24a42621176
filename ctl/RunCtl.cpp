#include "ctl/RunCtl.h"

#include "app/common/Version.h"
#include "ctl/CConsole.h"
#include "ctl/CStopRequest.h"
#include "ctl/CtlCommands.h"

namespace
{
/// Whether all that a command had to say was written. A reader who has read enough is no error.
CtlStatus statusOfOutput(const CtlContext& context)
{
    if (context.console.outputError().isEmpty() || context.console.isReaderGone())
        return CtlStatus::Done;
    if (!context.stop.isRequested())
        return fail(context, CtlStatus::FileError, QStringLiteral("standard output: ") + context.console.outputError());
    // A request is how a watch ends.
    return context.arguments.command == CtlArguments::Command::Watch ? CtlStatus::Done : CtlStatus::Interrupted;
}

CtlStatus runCommand(const CtlContext& context)
{
    switch (context.arguments.command) {
    case CtlArguments::Command::Ports:
        return runPorts(context);
    case CtlArguments::Command::Show:
        return runShow(context);
    case CtlArguments::Command::Get:
        return runGet(context);
    case CtlArguments::Command::Set:
        return runSet(context);
    case CtlArguments::Command::Save:
        return runSave(context);
    case CtlArguments::Command::Load:
        return runLoad(context);
    case CtlArguments::Command::Copy:
        return runCopy(context);
    case CtlArguments::Command::Reset:
        return runReset(context);
    case CtlArguments::Command::Diff:
        return runDiff(context);
    case CtlArguments::Command::Check:
        return runCheck(context);
    case CtlArguments::Command::Watch:
        return runWatch(context);
    case CtlArguments::Command::Help:
        context.console.print(CCtlArguments::help());
        break;
    case CtlArguments::Command::Version:
        context.console.print(QStringLiteral("ktz-jxctl " KTZ_VERSION "\n"));
        break;
    }
    return CtlStatus::Done;
}
} // namespace

CtlStatus fail(const CtlContext& context, CtlStatus status, const QString& error)
{
    context.console.complain(error);
    return status;
}

int runCtl(const QStringList& arguments, int output, int errors, CStopRequest& stop, const CtlTimes& times,
           const EditorBusMaker& makeBus)
{
    CConsole console(output, errors, stop);
    const CCtlArguments::Result parsed = CCtlArguments::parse(arguments);
    if (!parsed.error.isEmpty()) {
        console.complain(parsed.error);
        return int(CtlStatus::WrongUse);
    }
    const CtlContext context{parsed.arguments, times, console, stop, makeBus};
    CtlStatus status = runCommand(context);
    if (status == CtlStatus::Done)
        status = statusOfOutput(context);
    return status == CtlStatus::Interrupted ? int(CtlStatus::Interrupted) + stop.number() : int(status);
}
