#include "app/CApplication.h"
#include "app/CCommandLine.h"
#include "app/CMainWindow.h"
#include "app/RunEditor.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/device/CTrafficFile.h"
#include "simulator/panel/CDevicePanel.h"
#include "simulator/transports/CSimulatedSystem.h"

#include <QScreen>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace
{
constexpr std::chrono::milliseconds k_logInterval{50};
constexpr QSize k_frame{8, 40}; // pixels, room for the panel's frame and title

/// The panel beside the place where the editor comes up; every message is in the log soon after it has passed.
/// again   set when the editor closes to be started again.
std::unique_ptr<QWidget> makePanel(CSimulatedDevice& device, CTrafficFile& log, bool& again)
{
    auto panel = std::make_unique<CDevicePanel>(device);
    QObject::connect(panel.get(), &CDevicePanel::cablePutIn, panel.get(),
                     [&device] { CSimulatedSystem::instance().plug(device); });
    // The editor asks about unsaved edits, and may stay.
    QObject::connect(panel.get(), &CDevicePanel::editorRestartWanted, panel.get(),
                     [&again] { again = g_mainWindow->close(); });
    // Closing the editor ends the demo, whether or not the panel is still there.
    panel->setAttribute(Qt::WA_QuitOnClose, false);
    // At the right edge, so that the window manager finds room for the editor beside it.
    const QRect screen = panel->screen()->availableGeometry();
    panel->resize(panel->width(), std::min(panel->height(), screen.height() - 2 * k_frame.height()));
    panel->move(screen.right() - panel->width() - k_frame.width(), screen.top() + k_frame.height());
    panel->show();
    auto* timer = new QTimer(panel.get());
    QObject::connect(timer, &QTimer::timeout, panel.get(), [&log] { log.update(); });
    timer->start(k_logInterval);
    return panel;
}
} // namespace

/// The editor with a simulated device inside the process: what a newcomer sees first, without MIDI or hardware.
int main(int argc, char** argv)
{
    const QString logOption = QStringLiteral("log");
    CCommandLine commandLine(QStringLiteral("ktz-jx-demo"),
                             QStringLiteral("The KTZ-JX Editor with a simulated device, which needs no MIDI."));
    commandLine.addOption(logOption, QStringLiteral("file"), QStringLiteral("Writes every message to a file."));
    if (const std::optional<int> status = commandLine.parse(argc, argv))
        return *status;

    CSimulatedDevice device;
    CTrafficFile log(device);
    const QByteArray logName = commandLine.valueOf(logOption);
    if (!logName.isEmpty() && !log.open(QString::fromLocal8Bit(logName))) {
        std::fprintf(stderr, "ktz-jx-demo: %s cannot be written\n", logName.constData());
        return 1;
    }
    CSimulatedSystem::instance().plug(device);
    // The device outlives the editor, as on a stage.
    int status = 0;
    for (bool again = true; again;) {
        again = false;
        // The toolkit takes its options out of the list.
        std::vector<char*> arguments(commandLine.argv(), commandLine.argv() + commandLine.argc() + 1);
        status = runEditor(commandLine.argc(), arguments.data(), [&] { return makePanel(device, log, again); });
    }
    return status;
}
