#include "app/common/VersionText.h"
#include "simulator/console/CDeviceArguments.h"
#include "simulator/console/CDeviceRunner.h"
#include "simulator/console/PanelProgram.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/transports/CALSADeviceTransport.h"
#include "simulator/transports/CRawMIDITransport.h"

#include <QCoreApplication>

#include <unistd.h>

namespace
{
constexpr int k_ok = 0;
constexpr int k_failed = 1;
constexpr int k_wrongArguments = 2;

std::unique_ptr<CPolledTransport> createTransport(const DeviceArguments& arguments)
{
    if (arguments.port == DeviceArguments::Port::Raw)
        return std::make_unique<CRawMIDITransport>(arguments.rawName);
    return std::make_unique<CALSADeviceTransport>(arguments.cables);
}

int fail(int status, const QString& error)
{
    std::fprintf(stderr, "ktz-jx-device: %s\n", qPrintable(error));
    return status;
}

int print(const QString& text)
{
    return std::fputs(qPrintable(text), stdout) >= 0 && std::fflush(stdout) == 0 ? k_ok : k_failed;
}

int runDevice(const DeviceArguments& arguments)
{
    CSimulatedDevice device;
    const std::unique_ptr<CPolledTransport> transport = createTransport(arguments);
    const QString error = transport->open(device);
    if (!error.isEmpty())
        return fail(k_failed, error);
    std::printf("ready: %s\n", qPrintable(transport->description()));
    std::fflush(stdout);
    CDeviceRunner runner(device, *transport, STDIN_FILENO, stdout, arguments.keepRunning);
    return runner.run() ? k_ok : fail(k_failed, transport->description() + QStringLiteral(": gone"));
}
} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const CDeviceArguments::Result parsed = CDeviceArguments::parse(QCoreApplication::arguments().mid(1));
    if (!parsed.error.isEmpty())
        return fail(k_wrongArguments, parsed.error);
    if (parsed.arguments.help)
        return print(CDeviceArguments::help());
    if (parsed.arguments.version)
        return print(versionText(QStringLiteral("ktz-jx-device")));
    if (parsed.arguments.panel)
        return fail(k_wrongArguments, becomePanel(argv[0], parsed.arguments.cables));
    return runDevice(parsed.arguments);
}
