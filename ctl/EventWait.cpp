#include "ctl/EventWait.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>

bool waitForEvents(const std::function<bool()>& condition, QDeadlineTimer deadline)
{
    QTimer alarm; // ends the wait for events in time
    alarm.setTimerType(Qt::PreciseTimer);
    alarm.setSingleShot(true);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        if (!deadline.isForever())
            alarm.start(std::chrono::milliseconds(std::max<qint64>(1, deadline.remainingTime())));
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}
