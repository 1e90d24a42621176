#include "tests/app/CEditorProcess.h"

#include "app/CApplication.h"
#include "app/CMainWindow.h"
#include "app/CSingleEditor.h"
#include "app/RunEditor.h"
#include "style/CSplashView.h"
#include "widgets/CSlideEditor.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QCoreApplication>
#include <QFile>
#include <QMenu>
#include <QMessageBox>
#include <QTimer>

#include <cstdio>
#include <iostream>
#include <thread>

namespace
{
constexpr char k_modeVariable[] = "KTZ_TEST_EDITOR";
constexpr char k_reportVariable[] = "KTZ_TEST_REPORT";

void say(const QByteArray& text)
{
    std::printf("%s\n", text.constData());
    std::fflush(stdout);
}

void waitForGo()
{
    std::string line;
    std::getline(std::cin, line);
}

CSlideEditor* ccEditor()
{
    const QList<CSlideEditor*> editors = g_mainWindow->findChildren<CSlideEditor*>();
    for (CSlideEditor* editor : editors) {
        if (editor->controllerID() == 1103)
            return editor;
    }
    return nullptr;
}

QList<QMessageBox*> boxes()
{
    QList<QMessageBox*> found;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* box = qobject_cast<QMessageBox*>(widget);
        if (box != nullptr && box->isVisible())
            found.append(box);
    }
    return found;
}

QByteArray answer(QMessageBox::StandardButton button)
{
    const QList<QMessageBox*> open = boxes();
    if (open.isEmpty() || open.first()->button(button) == nullptr)
        return "no such button";
    open.first()->button(button)->click();
    return "answered";
}

QByteArray environmentTokens()
{
    return qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN") || qEnvironmentVariableIsSet("DESKTOP_STARTUP_ID")
               ? "left"
               : "none";
}

/// In the event loop of the editor, also in that of a box.
QByteArray carryOut(const std::string& command)
{
    if (command == "value") // of the CC number of knob 3; 7 in the factory preset
        return QByteArray::number(ccEditor()->getValue());
    if (command == "end splash")
        return g_mainWindow->findChild<CSplashView*>()->timeout(), "ended";
    if (command == "edit") // what the user does to that number
        return ccEditor()->findChild<QAbstractSlider*>(QString(), Qt::FindDirectChildrenOnly)->setValue(9), "edited";
    if (command == "revert")
        return g_mainWindow->revert(), "reverted";
    if (command == "menu")
        return g_mainWindow->findChild<QMenu*>()->popup({0, 0}), "opened";
    if (command == "escape")
        return QApplication::activePopupWidget()->close(), "closed";
    if (command == "boxes")
        return QByteArray::number(boxes().size());
    if (command == "box")
        return boxes().isEmpty() ? QByteArray("none") : boxes().first()->text().section(u'\r', 0, 0).toUtf8();
    if (command == "yes")
        return answer(QMessageBox::Yes);
    if (command == "no")
        return answer(QMessageBox::No);
    if (command == "cancel")
        return answer(QMessageBox::Cancel);
    if (command == "ok")
        return answer(QMessageBox::Ok);
    if (command == "minimise")
        return g_mainWindow->showMinimized(), "minimised";
    if (command == "state")
        return g_mainWindow->isMinimized() ? "minimised" : g_mainWindow->isActiveWindow() ? "active" : "behind";
    if (command == "tokens")
        return environmentTokens();
    if (command == "close")
        return g_mainWindow->close() ? "closed" : "still open";
    return "unknown command";
}

/// "command" is answered when it is done, "command &" at once: it goes on while a box is open.
void obeyCommands()
{
    std::string line;
    while (std::getline(std::cin, line)) {
        const bool wait = !line.ends_with(" &");
        const std::string command = wait ? line : line.substr(0, line.size() - 2);
        QMetaObject::invokeMethod(
            qApp,
            [command, wait] {
                if (!wait)
                    say("begun");
                const QByteArray result = carryOut(command);
                if (wait)
                    say(result);
            },
            Qt::QueuedConnection);
    }
}

/// For an editor that nobody can ask: ends the splash, writes what was opened to a file, and closes.
void reportAndClose()
{
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, qApp, [] {
        if (g_mainWindow->isInitializing())
            g_mainWindow->findChild<CSplashView*>()->timeout();
        if (ccEditor()->getValue() == 7)
            return;
        QFile report(qEnvironmentVariable(k_reportVariable));
        if (report.open(QIODevice::WriteOnly))
            report.write(QByteArray::number(ccEditor()->getValue()));
        g_mainWindow->close();
    });
    timer->start(5);
}

/// Says that the editor comes, and at its end that it has gone, and waits where it was told to.
class CCompanion : public QWidget
{
  public:
    CCompanion() : m_hold(CEditorProcess::Hold(qEnvironmentVariableIntValue(k_modeVariable)))
    {
        say("editor");
        if (m_hold == CEditorProcess::Hold::BeforeTheWindow)
            waitForGo();
        if (qEnvironmentVariableIsSet(k_reportVariable))
            reportAndClose();
        else if (m_hold != CEditorProcess::Hold::AtTheEnd)
            std::thread(obeyCommands).detach();
        else
            QTimer::singleShot(0, qApp, [] { g_mainWindow->close(); });
    }

    ~CCompanion() override
    {
        if (m_hold != CEditorProcess::Hold::AtTheEnd)
            return;
        say("ending");
        waitForGo();
    }

    CCompanion(const CCompanion&) = delete;
    CCompanion& operator=(const CCompanion&) = delete;

  private:
    CEditorProcess::Hold m_hold;
};
} // namespace

bool CEditorProcess::isEditor()
{
    return qEnvironmentVariableIsSet(k_modeVariable);
}

int CEditorProcess::run(int argc, char** argv)
{
    return runEditor(
        argc, argv, [] { return std::make_unique<CCompanion>(); }, makeSingleEditor);
}

QProcessEnvironment CEditorProcess::environmentFor(const QString& bus)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
    environment.remove(QStringLiteral("XDG_RUNTIME_DIR"));
    if (!bus.isEmpty())
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus);
    environment.insert(QString::fromLatin1(k_modeVariable), QStringLiteral("0"));
    return environment;
}

CEditorProcess::CEditorProcess(const QString& bus, const QString& file, Hold hold)
{
    QProcessEnvironment environment = environmentFor(bus);
    environment.insert(QString::fromLatin1(k_modeVariable), QString::number(int(hold)));
    setProcessEnvironment(environment);
    setProcessChannelMode(QProcess::ForwardedErrorChannel);
    start(QCoreApplication::applicationFilePath(), file.isEmpty() ? QStringList() : QStringList(file));
}

CEditorProcess::CEditorProcess(const QProcessEnvironment& environment, const QByteArray& file, const QString& folder)
{
    // QProcess takes text only: the shell makes the bytes of the argument.
    QByteArray octal;
    for (const char byte : file)
        octal += '\\' + QByteArray::number(uchar(byte), 8).rightJustified(3, '0');
    setProcessEnvironment(environment);
    setWorkingDirectory(folder);
    setProcessChannelMode(QProcess::ForwardedErrorChannel);
    start(QStringLiteral("/bin/sh"),
          {QStringLiteral("-c"), QStringLiteral("exec \"$0\" \"$(printf '%1')\"").arg(octal.constData()),
           QCoreApplication::applicationFilePath()});
}

CEditorProcess::~CEditorProcess()
{
    kill();
    waitForFinished();
}

QByteArray CEditorProcess::nextLine()
{
    while (!canReadLine() && waitForReadyRead(60000)) {
    }
    return readLine().trimmed();
}

bool CEditorProcess::becameEditor()
{
    return nextLine() == "editor";
}

int CEditorProcess::silentEnd()
{
    if (state() != NotRunning && !waitForFinished(60000))
        return -1;
    return exitStatus() == NormalExit && readAllStandardOutput().isEmpty() ? exitCode() : -1;
}

void CEditorProcess::go()
{
    write("go\n");
    waitForBytesWritten();
}

QByteArray CEditorProcess::ask(const QByteArray& command)
{
    write(command + '\n');
    waitForBytesWritten();
    return nextLine();
}
