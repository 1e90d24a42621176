#include "app/CApplication.h"

#include "app/CMainWindow.h"
#include "app/CRequestedFile.h"

#include <QFileOpenEvent>

CMainWindow* g_mainWindow = nullptr;

CApplication::CApplication(int& argc, char** argv) : QApplication(argc, argv)
{
    // What window managers show for a message box, which has no title of its own.
    setApplicationName(QStringLiteral("KTZ-JX Editor"));
    setDesktopFileName(QStringLiteral("ktz-jx-editor"));
}

bool CApplication::event(QEvent* e)
{
    if (e->type() != QEvent::FileOpen || g_mainWindow == nullptr)
        return QApplication::event(e);

    handleRequest(static_cast<QFileOpenEvent*>(e)->file(), {});
    return true;
}

void CApplication::handleRequest(const QString& path, const ActivationToken& token)
{
    token.bringToFront(*g_mainWindow);
    if (path.isEmpty())
        return;
    g_mainWindow->setApplicationFilePath(path);
    CRequestedFile::open(g_mainWindow);
}
