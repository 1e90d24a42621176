#include "app/CApplication.h"
#include "app/CCommandLine.h"
#include "app/CMainWindow.h"
#include "app/RunEditor.h"
#include "app/demo/MakePanel.h"
#include "app/demo/RunPanel.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/device/CTrafficFile.h"
#include "simulator/panel/CDevicePanel.h"
#include "simulator/transports/CPolledTransport.h"
#include "simulator/transports/CSimulatedSystem.h"
#include "simulator/transports/CableCount.h"
#include "simulator/transports/DevicePort.h"

#include <cstdio>
#include <vector>

namespace
{
constexpr int k_failed = 1;
constexpr int k_wrongUse = 2;

/// What --device cannot do here, in words behind it; null when it can.
/// cables   0 for what is no number of them.
const char* objection(const CCommandLine& commandLine, int cables)
{
    if (cables == 0)
        return "needs a number from 1 to 3";
    if (commandLine.hasFile())
        return "opens no file, which is the editor's";
    if (createDevicePort(cables) == nullptr)
        return "needs the ALSA sequencer, without which this was built";
    return nullptr;
}

/// The panel beside the place where the editor comes up.
/// again   set when the editor closes to be started again.
std::unique_ptr<QWidget> makeCompanion(CSimulatedDevice& device, CTrafficFile& log, bool& again)
{
    std::unique_ptr<CDevicePanel> panel = makePanel(device, log);
    QObject::connect(panel.get(), &CDevicePanel::cablePulled, panel.get(), [&device] { device.unplug(); });
    QObject::connect(panel.get(), &CDevicePanel::cablePutIn, panel.get(),
                     [&device] { CSimulatedSystem::instance().plug(device); });
    // The editor asks about unsaved edits, and may stay.
    panel->offerEditorRestart();
    QObject::connect(panel.get(), &CDevicePanel::editorRestartWanted, panel.get(),
                     [&again] { again = g_mainWindow->close(); });
    // Closing the editor ends the demo, whether or not the panel is still there.
    panel->setAttribute(Qt::WA_QuitOnClose, false);
    return panel;
}

/// The editor with the device inside the process: what a newcomer sees first, without MIDI or hardware.
int runDemo(CCommandLine& commandLine, CSimulatedDevice& device, CTrafficFile& log)
{
    CSimulatedSystem::instance().plug(device);
    // The device outlives the editor, as on a stage.
    int status = 0;
    for (bool again = true; again;) {
        again = false;
        // The toolkit takes its options out of the list.
        std::vector<char*> arguments(commandLine.argv(), commandLine.argv() + commandLine.argc() + 1);
        status = runEditor(commandLine.argc(), arguments.data(), [&] { return makeCompanion(device, log, again); });
    }
    return status;
}
} // namespace

int main(int argc, char** argv)
{
    const QString logOption = QStringLiteral("log");
    const QString deviceOption = QStringLiteral("device");
    CCommandLine commandLine(QStringLiteral("ktz-jx-demo"),
                             QStringLiteral("The KTZ-JX Editor with a simulated device, which needs no MIDI."));
    commandLine.addOption(logOption, QStringLiteral("file"), QStringLiteral("Writes every message to a file."));
    commandLine.addOption(deviceOption, QStringLiteral("N"),
                          QStringLiteral("The device alone, as a client of the ALSA sequencer with so many ports, 1 to "
                                         "3: ktz-jx-device --panel."));
    if (const std::optional<int> status = commandLine.parse(argc, argv))
        return *status;

    const bool isAlone = commandLine.isSet(deviceOption);
    const int cables = cableCount(QString::fromLatin1(commandLine.valueOf(deviceOption))).value_or(0);
    if (const char* const why = isAlone ? objection(commandLine, cables) : nullptr) {
        std::fprintf(stderr, "ktz-jx-demo: --device %s\n", why);
        return k_wrongUse;
    }

    CSimulatedDevice device;
    CTrafficFile log(device);
    const QByteArray logName = commandLine.valueOf(logOption);
    if (!logName.isEmpty() && !log.open(QString::fromLocal8Bit(logName))) {
        std::fprintf(stderr, "ktz-jx-demo: %s cannot be written\n", logName.constData());
        return k_failed;
    }
    if (!isAlone)
        return runDemo(commandLine, device, log);
    const auto makePort = [cables] { return createDevicePort(cables); };
    return runPanel(commandLine.argc(), commandLine.argv(), makePort, device, log);
}
