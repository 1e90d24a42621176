#pragma once

#include "connection/CConnectionThread.h"
#include "connection/ConnectionTimes.h"
#include "device/CMemAPIObserver.h"

#include <QObject>
#include <QTimer>

#include <atomic>
#include <memory>

class CMemAPI;

/// Watches that the device stays there: keep messages out, a watchdog that every reply restarts.
///
/// Threads  sendKeepMessage(): any. paramChanged(): any, moves itself to the GUI thread. Everything else: GUI thread.
/// Borrows  the memory, which may be null and outlives this object. From construction to destruction this is the
///          memory's keep-reply observer, and hears of the end of reception, which is a loss.
/// A watch that was stopped, by its owner or by a loss, stays stopped.
class CConnectionWatch : public QObject, public CMemAPIObserver
{
    Q_OBJECT

  public:
    CConnectionWatch(QObject* parent, CMemAPI* memory, const QString& portName, const ConnectionTimes& times = {});
    ~CConnectionWatch() override;

    /// Starts the keep thread and the watchdog, and sends a first keep message.
    void start();

    /// Stops both, waiting for the keep thread to end; a pause of it ends at once.
    void stop();

    /// A message that cannot be sent is a loss, reported from the event loop.
    void sendKeepMessage();

  public slots:
    /// A keep reply: restarts the watchdog, and the first one after a start or a loss sets the connected flag.
    /// Ignored before start() and after stop().
    void paramChanged() override;

    /// A loss: clears the connected flag, marks the output as not connected, stops, and tells the user.
    void connectionError();

  signals:
    void connected();
    void disconnected();
    void currentThreadParamChanged();
    void currentThreadConnectionError();

  protected:
    /// Stops, and leaves the memory: no other thread calls this object any more. The first thing that a destructor
    /// does, also that of a class derived from this one.
    void leave();

    /// The last act of a loss: whoever has a user tells him.
    virtual void tellLoss() {}

  private:
    /// What the memory calls when nothing that the device sends will arrive any more.
    class CReceptionEnd : public CMemAPIObserver
    {
      public:
        explicit CReceptionEnd(CConnectionWatch* watch) : m_watch(watch) {}
        void paramChanged() override;

      private:
        CConnectionWatch* m_watch;
    };

    CMemAPI* m_memory;
    QString m_portName;
    ConnectionTimes m_times;
    QTimer* m_watchdog;
    std::unique_ptr<CConnectionThread> m_keepThread;
    CReceptionEnd m_receptionEnd{this};
    std::atomic<bool> m_isRunning = false; ///< from start() to stop()
};
