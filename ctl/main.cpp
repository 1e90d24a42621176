#include "app/common/Constants.h"
#include "ctl/CStopRequest.h"
#include "ctl/EditorBusLibrary.h"
#include "ctl/RunCtl.h"
#include "midi/MIDIPlatform.h"

#include <QCoreApplication>

#include <csignal>
#include <unistd.h>

namespace
{
CStopRequest* g_stop = nullptr; ///< lives until the process ends its work

void requestStop(int number)
{
    g_stop->request(number);
}

void listenToSignals()
{
    struct sigaction action = {};
    action.sa_handler = requestStop;
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        sigaction(number, &action, nullptr);
    // A reader who has gone shows in the next write.
    action.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &action, nullptr);
}
} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    CStopRequest stop;
    g_stop = &stop; // cppcheck-suppress danglingLifetime; a signal that comes later finds the process gone
    listenToSignals();
    MIDIPlatform::setProgramName(k_ctlProgramName);
    return runCtl(QCoreApplication::arguments().mid(1), STDOUT_FILENO, STDERR_FILENO, stop, {},
                  connectToEditorByLibrary);
}
