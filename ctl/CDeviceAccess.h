#pragma once

#include "app/common/CMutex.h"
#include "ctl/CtlStatus.h"
#include "ctl/CtlTimes.h"
#include "ctl/SettingsTable.h"

#include <QDeadlineTimer>
#include <QList>
#include <QObject>

#include <functional>

class CConsole;
class CStopRequest;

/// What a knob says of itself: where it stands, or its settings.
struct KnobNews
{
    std::chrono::steady_clock::duration time = {}; ///< of its arrival in this program, from the watch's begin
    std::size_t knob = 0;                          ///< counted from 0
    std::optional<int> value = {};                 ///< a turn; nothing: settings
    KnobSettingsRow settings = {};
};

/// The device as the commands use it, whoever has the connection to it.
///
/// Threads  the thread that made it, whose event loop it runs while it waits. addNews(), forgetNews(), heard(): any.
/// Borrows  the console and the stop request, which outlive it.
/// Failure  a status, and error() with one line for the user.
class CDeviceAccess : public QObject
{
    Q_OBJECT

  public:
    struct Options
    {
        QString port;
        bool force = false; ///< beside other programs that have the device
        bool traces = false;
    };

    CDeviceAccess(const Options& options, const CtlTimes& times, CConsole& console, const CStopRequest& stop);

    /// deadline   until which a device that does not answer is asked on; one that has passed: as often as is usual.
    /// NoDevice, NoAnswer, Interrupted, or Done with everything read.
    [[nodiscard]] virtual CtlStatus open(QDeadlineTimer deadline) = 0;

    /// What the device holds, as far as it said.
    [[nodiscard]] virtual SettingsTable settings() const = 0;

    /// Asks the device for everything anew. As open().
    [[nodiscard]] virtual CtlStatus readAll() = 0;

    /// Sends each knob of which a setting is given that the device does not hold, with its other settings as they are.
    ///
    /// sent    gets the knobs that were sent, also before a failure.
    /// left    gets the knobs that still have to be.
    /// NoAnswer: lost. Interrupted: on a stop request, between two knobs. NoDevice: who has it refuses; nothing is
    /// sent.
    [[nodiscard]] CtlStatus write(const SettingsTable& wanted, QList<int>* sent, QList<int>* left);

    /// There is news from a moment on that has just been, or is now: all that has been said since, nothing older.
    ///
    /// held   gets the settings of that moment, which the news changes.
    /// As open().
    [[nodiscard]] virtual CtlStatus beginWatch(SettingsTable* held) = 0;

    /// Waits for news. false: the deadline has passed; or lost or a stop was requested.
    bool waitForNews(QDeadlineTimer deadline);

    /// What the device has said since the last call, in its order. Of a flood that nobody fetched the first
    /// k_newsLimit are there; the others are counted.
    [[nodiscard]] QList<KnobNews> takeNews();
    [[nodiscard]] qint64 lostNews() const;
    static constexpr qsizetype k_newsLimit = 100'000;

    [[nodiscard]] bool isLost() const;
    [[nodiscard]] QString error() const;

  signals:
    void heard(); ///< something that is waited for may have come; from any thread

  protected:
    enum class Wait
    {
        Met,
        Expired,
        Lost,
        Stopped
    };

    [[nodiscard]] Wait waitUntil(const std::function<bool()>& condition, QDeadlineTimer deadline);
    [[nodiscard]] CtlStatus failed(CtlStatus status, const QString& error);
    [[nodiscard]] CtlStatus failed(Wait wait);
    [[nodiscard]] CtlStatus failedAsTaken(const char* program); ///< which has the device
    void addNews(KnobNews news);                                ///< stamps it with its time
    void forgetNews();                                          ///< a watch would begin with what comes now
    void setLost();
    void trace(const QString& line); ///< if that is wanted; any thread

    /// The knob's given settings, of which one at least is news.
    [[nodiscard]] virtual CtlStatus writeKnob(std::size_t knob, const KnobSettingsRow& given) = 0;

    const Options m_options;
    const CtlTimes m_times;

  private:
    CConsole& m_console;
    const CStopRequest& m_stop;
    QString m_error;
    bool m_isLost = false;

    mutable CMutex m_newsMutex; ///< guards the next three
    QList<KnobNews> m_news;
    qint64 m_lostNews = 0;
    std::chrono::steady_clock::time_point m_newsBegin;
};
