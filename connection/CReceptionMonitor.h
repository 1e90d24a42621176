#pragma once

#include "connection/ConnectionTimes.h"
#include "device/CMemAPIObserver.h"

#include <QObject>
#include <QTimer>

class CMemAPIWrapper;

/// Keeps the editor right after something that the device sent was lost: asks the device for everything again, at once
/// but at most once in a pause, and once more after the pause if more was lost in it.
///
/// Threads  paramChanged(): any, moves itself to the GUI thread. Everything else: GUI thread.
/// Borrows  the memory, which outlives this object. From construction to destruction this is the memory's overrun
///          observer.
/// Failure  a request that cannot be sent is not repeated: the connection's own watch notices a lost device.
class CReceptionMonitor : public QObject, public CMemAPIObserver
{
    Q_OBJECT

  public:
    CReceptionMonitor(QObject* parent, CMemAPIWrapper* memory, const ConnectionTimes& times = {});
    ~CReceptionMonitor() override;

    /// Something was lost.
    void paramChanged() override;

  signals:
    void overran();

  private:
    void requestAgain();
    void endPause();

    CMemAPIWrapper* m_memory;
    QTimer* m_pause;         ///< child
    bool m_lostMore = false; ///< during the pause
};
