// The program without a window with a simulated device in its own process, one knob of which turns while it is watched.

#include "ctl/CStopRequest.h"
#include "ctl/RunCtl.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/transports/CSimulatedSystem.h"

#include <QCoreApplication>
#include <QTimer>

#include <unistd.h>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    CSimulatedDevice device;
    CSimulatedSystem::instance().plug(device);
    CStopRequest stop;
    QTimer turning;
    QObject::connect(&turning, &QTimer::timeout, [&, value = 0]() mutable {
        value = (value + 1) % 128;
        device.turn(0, value);
        device.setSetting(1, &KnobSettings::cc, value);
        device.reportSettings(1);
    });
    turning.start(1);
    CtlTimes times;
    times.startPause = {};
    return runCtl(QCoreApplication::arguments().mid(1), STDOUT_FILENO, STDERR_FILENO, stop, times);
}
