#include "app/CRequestedFile.h"

#include "app/CMainWindow.h"

#include <QAbstractEventDispatcher>

void CRequestedFile::open(CMainWindow* window)
{
    if (!window->isApplicationFilePending())
        return;
    if (window->isFree())
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
    if (m_window->isApplicationFilePending() && !m_window->isFree())
        return;
    disconnect(QAbstractEventDispatcher::instance(), nullptr, this, nullptr);
    deleteLater();
    // Not from inside the dispatcher.
    QMetaObject::invokeMethod(
        m_window, [window = m_window] { open(window); }, Qt::QueuedConnection);
}
