#include "app/Manual.h"

#include "app/common/Constants.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QLocale>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>
#include <QUrl>

#include <unistd.h>

namespace
{
/// Whether documents are opened by a program beside this one: neither on macOS, nor in a sandbox, where the toolkit
/// asks the desktop's portal and learns what became of it.
bool hasLauncher()
{
#ifdef Q_OS_MACOS
    return false;
#else
    return !QFileInfo::exists(QStringLiteral("/.flatpak-info")) && !qEnvironmentVariableIsSet("SNAP");
#endif
}
} // namespace

QStringList Manual::folders()
{
    const QString programFolder = QCoreApplication::applicationDirPath();
    return {programFolder + QStringLiteral("/manual"), programFolder + QStringLiteral("/../share/ktz-jx-editor/manual"),
            programFolder + QStringLiteral("/../Resources")};
}

QString Manual::find(const QString& language, const QStringList& folders)
{
    for (const QString& localisation : {language, QStringLiteral("English")}) {
        for (const QString& folder : folders) {
            // A Mac's bundle calls the folder of a language so.
            for (const QString& suffix : {QString(), QStringLiteral(".lproj")}) {
                const QFileInfo manual(folder + u'/' + localisation + suffix + u'/' + k_manualFileName);
                if (manual.isFile())
                    return manual.absoluteFilePath();
            }
        }
    }
    return {};
}

void Manual::open(QObject* context, const std::function<void()>& failed)
{
    const QString path = find(QLocale::languageToString(QLocale::system().language()), folders());
    if (!path.isEmpty() && hasLauncher())
        launch(path, context, failed);
    else if (path.isEmpty() || !QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
        failed();
}

void Manual::launch(const QString& path, QObject* context, const std::function<void()>& failed,
                    std::chrono::milliseconds patience)
{
    const QString launcher = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (launcher.isEmpty()) {
        failed();
        return;
    }
    // Belongs to nobody, and goes with the end of its program: an owner that went first would end the viewer.
    auto* process = new QProcess;
    process->setProgram(launcher);
    process->setArguments({path});
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    // A session of its own, so that what ends the editor's terminal leaves the viewer alone.
    process->setChildProcessModifier([] { ::setsid(); });

    auto* listener = new QObject(context);
    const auto ended = [=](bool opened) {
        listener->deleteLater();
        process->deleteLater();
        if (!opened)
            failed();
    };
    QObject::connect(process, &QProcess::finished, listener,
                     [=](int status, QProcess::ExitStatus how) { ended(status == 0 && how == QProcess::NormalExit); });
    QObject::connect(process, &QProcess::errorOccurred, listener, [=](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            ended(false);
    });
    // Nobody listens any longer, but the object stays as long as its program.
    QObject::connect(listener, &QObject::destroyed, process,
                     [=] { QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater); });
    QTimer::singleShot(patience, listener, &QObject::deleteLater);
    process->start();
}
