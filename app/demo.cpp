#include "app/RunEditor.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/device/CTrafficFile.h"
#include "simulator/panel/CDevicePanel.h"
#include "simulator/transports/CSimulatedSystem.h"

#include <QScreen>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstring>

namespace
{
constexpr std::chrono::milliseconds k_logInterval{50};
constexpr int k_edge = 40; // pixels, room for the panel's frame and title

/// The panel beside the place where the editor comes up; every message is in the log soon after it has passed.
std::unique_ptr<QWidget> makePanel(CSimulatedDevice& device, CTrafficFile& log)
{
    auto panel = std::make_unique<CDevicePanel>(device);
    // Closing the editor ends the demo, whether or not the panel is still there.
    panel->setAttribute(Qt::WA_QuitOnClose, false);
    // At the right edge, so that the window manager finds room for the editor beside it.
    const QRect screen = panel->screen()->availableGeometry();
    panel->move(screen.right() - panel->sizeHint().width() - k_edge, screen.top() + k_edge);
    panel->show();
    auto* timer = new QTimer(panel.get());
    QObject::connect(timer, &QTimer::timeout, panel.get(), [&log] { log.update(); });
    timer->start(k_logInterval);
    return panel;
}
} // namespace

/// The editor with a simulated device inside the process: what a newcomer sees first, without MIDI or hardware.
///
///     ktz-jx-demo [--log FILE] [SETTINGS-FILE]
int main(int argc, char** argv)
{
    CSimulatedDevice device;
    CTrafficFile log(device);
    if (argc > 1 && std::strcmp(argv[1], "--log") == 0) {
        if (argc < 3 || !log.open(QString::fromLocal8Bit(argv[2]))) {
            std::fputs("ktz-jx-demo: --log needs the name of a file that can be written\n", stderr);
            return 1;
        }
        // The editor sees a command line without the two.
        argv[2] = argv[0];
        argv += 2;
        argc -= 2;
    }
    CSimulatedSystem::instance().plug(device);
    return runEditor(argc, argv, [&] { return makePanel(device, log); });
}
