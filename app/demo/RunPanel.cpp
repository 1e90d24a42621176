#include "app/demo/RunPanel.h"

#include "app/ApplicationLook.h"
#include "app/CApplication.h"
#include "app/CFatalMessageGuard.h"
#include "app/common/CMessageBox.h"
#include "app/demo/MakePanel.h"
#include "simulator/panel/CDevicePanel.h"

#include <QFileInfo>

#include <csignal>
#include <cstdio>
#include <optional>

namespace
{
void say(std::FILE* stream, const QString& begin, const QString& text)
{
    std::fprintf(stream, "%s: %s\n", qPrintable(begin), qPrintable(text));
    std::fflush(stream);
}

void sayReady(const CDeviceCable& cable)
{
    say(stdout, QStringLiteral("ready"), cable.description());
}

/// Puts the cable in again, or says why it stays out.
void putInAgain(CDeviceCable& cable, QWidget* panel)
{
    const QString error = cable.putIn();
    if (error.isEmpty())
        sayReady(cable);
    else
        CMessageBox::warning(panel, {}, QStringLiteral("The cable cannot be put in: %1").arg(error), QMessageBox::Ok,
                             QMessageBox::Ok);
}
} // namespace

int runPanel(int argc, char** argv, const CDeviceCable::PortMaker& makePort, CSimulatedDevice& device,
             CTrafficFile& log)
{
    std::signal(SIGPIPE, SIG_IGN); // whoever has read that it is ready may go
    std::optional<CFatalMessageGuard> fatalMessages(std::in_place, argv[0]);
    const CApplication application(argc, argv);
    fatalMessages.reset();
    applyApplicationLook();

    CDeviceCable cable(device, makePort);
    const QString error = cable.putIn();
    if (!error.isEmpty()) {
        say(stderr, QFileInfo(QCoreApplication::arguments().constFirst()).fileName(), error);
        return 1;
    }
    const std::unique_ptr<CDevicePanel> panel = makePanel(device, log);
    QObject::connect(panel.get(), &CDevicePanel::cablePulled, &cable, &CDeviceCable::pull);
    QObject::connect(panel.get(), &CDevicePanel::cablePutIn, &cable, [&] { putInAgain(cable, panel.get()); });
    sayReady(cable);
    return QApplication::exec() != 0 ? 1 : 0;
}
