#include "ctl/CDeviceAccess.h"

#include "ctl/CConsole.h"
#include "ctl/CStopRequest.h"
#include "ctl/EventWait.h"

#include <QCoreApplication>

#include <utility>

CDeviceAccess::CDeviceAccess(const Options& options, const CtlTimes& times, CConsole& console, const CStopRequest& stop)
    : m_options(options), m_times(times), m_console(console), m_stop(stop)
{
    // The call itself does nothing: that it was made ends a wait of the event loop.
    connect(
        this, &CDeviceAccess::heard, this, [] {}, Qt::QueuedConnection);
}

CtlStatus CDeviceAccess::write(const SettingsTable& wanted, QList<int>* sent, QList<int>* left)
{
    *left = knobsThatDiffer(wanted, settings());
    while (!left->isEmpty()) {
        QCoreApplication::processEvents(); // a loss, or a stop
        if (m_stop.isRequested())
            return failed(Wait::Stopped);
        if (m_isLost)
            return failed(Wait::Lost);
        const auto knob = std::size_t(left->first());
        if (const CtlStatus status = writeKnob(knob, wanted[knob]); status != CtlStatus::Done)
            return status == CtlStatus::NoDevice && !sent->isEmpty() ? CtlStatus::NoAnswer : status;
        sent->append(left->takeFirst());
    }
    return CtlStatus::Done;
}

bool CDeviceAccess::waitForNews(QDeadlineTimer deadline)
{
    const auto isNewsThere = [this] {
        const std::scoped_lock lock(m_newsMutex);
        return !m_news.isEmpty();
    };
    return waitUntil(isNewsThere, deadline) == Wait::Met;
}

QList<KnobNews> CDeviceAccess::takeNews()
{
    const std::scoped_lock lock(m_newsMutex);
    return std::exchange(m_news, {});
}

qint64 CDeviceAccess::lostNews() const
{
    const std::scoped_lock lock(m_newsMutex);
    return m_lostNews;
}

void CDeviceAccess::addNews(KnobNews news)
{
    const std::scoped_lock lock(m_newsMutex);
    news.time = std::chrono::steady_clock::now() - m_newsBegin;
    if (m_news.size() < k_newsLimit)
        m_news.append(news);
    else
        ++m_lostNews;
    // One waiting wake-up is enough for all of them.
    if (m_news.size() == 1)
        emit heard();
}

void CDeviceAccess::forgetNews()
{
    const std::scoped_lock lock(m_newsMutex);
    m_news.clear();
    m_lostNews = 0;
    m_newsBegin = std::chrono::steady_clock::now();
}

bool CDeviceAccess::isLost() const
{
    return m_isLost;
}

void CDeviceAccess::setLost()
{
    m_isLost = true;
}

QString CDeviceAccess::error() const
{
    return m_error;
}

CDeviceAccess::Wait CDeviceAccess::waitUntil(const std::function<bool()>& condition, QDeadlineTimer deadline)
{
    Wait end = Wait::Expired;
    waitForEvents(
        [&] {
            if (condition())
                end = Wait::Met;
            else if (m_isLost)
                end = Wait::Lost;
            else if (m_stop.isRequested())
                end = Wait::Stopped;
            return end != Wait::Expired;
        },
        deadline);
    return end;
}

CtlStatus CDeviceAccess::failed(CtlStatus status, const QString& error)
{
    m_error = error;
    return status;
}

CtlStatus CDeviceAccess::failed(Wait wait)
{
    return wait == Wait::Stopped ? failed(CtlStatus::Interrupted, QStringLiteral("interrupted"))
                                 : failed(CtlStatus::NoAnswer, QStringLiteral("the connection to the device is lost"));
}

CtlStatus CDeviceAccess::failedAsTaken(const char* program)
{
    return failed(CtlStatus::NoDevice, QStringLiteral("\"%1\" is running and has the device; --force goes on beside it")
                                           .arg(QLatin1StringView(program)));
}

void CDeviceAccess::trace(const QString& line)
{
    if (m_options.traces)
        m_console.trace(line);
}
