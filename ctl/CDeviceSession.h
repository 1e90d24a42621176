#pragma once

#include "app/common/CMutex.h"
#include "connection/CConnectionWatch.h"
#include "connection/CReceptionMonitor.h"
#include "ctl/CDeviceMemory.h"
#include "ctl/CWireListener.h"
#include "ctl/CtlStatus.h"
#include "ctl/CtlTimes.h"
#include "ctl/SettingsTable.h"

#include <QDeadlineTimer>
#include <QList>
#include <QObject>

#include <functional>
#include <set>

class CConsole;
class CStopRequest;

/// A message of the device, as it came.
struct DeviceNews
{
    std::chrono::steady_clock::time_point time;
    int type = 0; ///< a MessageType
    ParamList data;
};

/// The time from start to end message with a device: finds it, shakes hands, keeps the connection, reads everything,
/// writes what is different.
///
/// Threads  the thread that made it, whose event loop it runs while it waits.
/// Borrows  the console and the stop request, which outlive it.
/// Failure  a status, and error() with one line for the user. Whatever happened, the destructor sends the end message
///          to a device that has answered, and closes the ports.
class CDeviceSession : public QObject, private CWireListener
{
    Q_OBJECT

  public:
    struct Options
    {
        QString port;
        std::optional<std::chrono::milliseconds> wait; ///< nothing: a device is there or it is not
        bool force = false;                            ///< beside other programs that have the device
        bool holdsBack = false;                        ///< what would change the device
        bool traces = false;
    };

    CDeviceSession(const Options& options, const CtlTimes& times, CConsole& console, CStopRequest& stop);
    ~CDeviceSession() override;

    /// NoDevice, NoAnswer, Interrupted, or Done with everything read.
    [[nodiscard]] CtlStatus open();

    /// What the device holds, as far as it said.
    [[nodiscard]] SettingsTable settings() const;

    /// Borrowed from the session, between open() and its end.
    [[nodiscard]] CDeviceMemory& memory();

    /// Asks for everything anew. As open().
    [[nodiscard]] CtlStatus readAll();

    /// Sends each knob of which a setting is given that the device does not hold, with its other settings as they are.
    ///
    /// sent    gets the knobs that were sent, also before a failure.
    /// left    gets the knobs that still have to be.
    /// NoAnswer: lost. Interrupted: on a stop request, between two knobs.
    [[nodiscard]] CtlStatus write(const SettingsTable& wanted, QList<int>* sent, QList<int>* left);

    /// Waits for news. false: the deadline has passed; or lost or a stop was requested.
    bool waitForNews(QDeadlineTimer deadline);

    /// What the device has sent since the last call, in its order. Of a flood that nobody fetched the first
    /// k_newsLimit are there; the others are counted.
    [[nodiscard]] QList<DeviceNews> takeNews();
    [[nodiscard]] qint64 lostNews() const;
    static constexpr qsizetype k_newsLimit = 100'000;

    /// Messages that were held back.
    [[nodiscard]] QList<QByteArray> heldMessages() const;

    [[nodiscard]] bool isLost() const;
    [[nodiscard]] QString error() const;

  signals:
    void heard(); ///< from any thread

  private:
    enum class Wait
    {
        Met,
        Expired,
        Lost,
        Stopped
    };

    class CWatch : public CConnectionWatch
    {
      public:
        CWatch(CDeviceSession* session, const ConnectionTimes& times);
        ~CWatch() override;

      protected:
        void tellLoss() override;

      private:
        CDeviceSession* m_session;
    };

    [[nodiscard]] CtlStatus find();
    [[nodiscard]] CtlStatus checkIsFree();
    [[nodiscard]] CtlStatus connectDevice(QDeadlineTimer deadline);
    [[nodiscard]] CtlStatus shakeHands(QDeadlineTimer deadline);
    [[nodiscard]] CtlStatus watchConnection();
    void close();
    [[nodiscard]] Wait waitUntil(const std::function<bool()>& condition, QDeadlineTimer deadline);
    [[nodiscard]] CtlStatus failed(CtlStatus status, const QString& error);
    [[nodiscard]] CtlStatus failed(Wait wait);
    [[nodiscard]] bool isSaidOfAll(const std::set<int>& knobs) const;
    void traceMessage(const char* direction, const QByteArray& message);

    void messageSent(const QByteArray& message) override;
    void messageHeld(const QByteArray& message) override;
    void messageReceived(const QByteArray& message, int type, const ParamList& data) override;
    void messageTaken(int type, const ParamList& data) override;

    const Options m_options;
    const CtlTimes m_times;
    CConsole& m_console;
    CStopRequest& m_stop;
    QString m_error;
    bool m_isAnswered = false; ///< the device expects an end message
    bool m_isLost = false;

    mutable CMutex m_mutex;       ///< guards the next five
    std::set<int> m_settingsSaid; ///< knobs
    std::set<int> m_valuesSaid;
    QList<DeviceNews> m_news;
    qint64 m_lostNews = 0;
    QList<QByteArray> m_held;

    // The memory is destroyed last: the others watch it.
    std::unique_ptr<CDeviceMemory> m_memory;
    std::unique_ptr<CWatch> m_watch;
    std::unique_ptr<CReceptionMonitor> m_reception;
};
