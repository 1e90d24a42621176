#include "app/CRequestedFile.h"

#include "app/CMainWindow.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QThread>

namespace
{
bool isFree(const CMainWindow& window)
{
    // A dialog of the desktop's own is no widget, but an event loop inside the editor's.
    return !window.isInitializing() && QApplication::activeModalWidget() == nullptr &&
           QApplication::activePopupWidget() == nullptr && QThread::currentThread()->loopLevel() <= 1;
}
} // namespace

void CRequestedFile::open(CMainWindow* window)
{
    if (!window->isApplicationFilePending())
        return;
    if (isFree(*window))
        window->applicationFileOpen();
    else
        new CRequestedFile(window); // the window owns it
}

CRequestedFile::CRequestedFile(CMainWindow* window) : QObject(window), m_window(window)
{
    // After whatever happens next, since anything can be the end of what is in the way.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, this, &CRequestedFile::lookAgain);
}

void CRequestedFile::lookAgain()
{
    if (m_window->isApplicationFilePending() && !isFree(*m_window))
        return;
    disconnect(QAbstractEventDispatcher::instance(), nullptr, this, nullptr);
    deleteLater();
    // Not from inside the dispatcher.
    QMetaObject::invokeMethod(
        m_window, [window = m_window] { open(window); }, Qt::QueuedConnection);
}
