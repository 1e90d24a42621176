#include "app/CApplication.h"

#include "app/CMainWindow.h"

#include <QFileOpenEvent>

CMainWindow* g_mainWindow = nullptr;

CApplication::CApplication(int& argc, char** argv) : QApplication(argc, argv) {}

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
