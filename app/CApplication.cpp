#include "app/CApplication.h"

#include "app/CMainWindow.h"

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

    if (g_mainWindow->isMinimized())
        g_mainWindow->showNormal();
    g_mainWindow->activateWindow();
    g_mainWindow->setApplicationFilePath(static_cast<QFileOpenEvent*>(e)->file());
    if (!g_mainWindow->isInitializing())
        g_mainWindow->applicationFileOpen();
    return true;
}
