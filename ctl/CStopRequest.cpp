#include "ctl/CStopRequest.h"

#include <QSocketNotifier>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

// A signal handler may use it.
static_assert(std::atomic<int>::is_always_lock_free);

CStopRequest::CStopRequest()
{
    if (pipe(m_pipe.data()) != 0)
        return;
    for (const int end : m_pipe) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    m_notifier = new QSocketNotifier(m_pipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, [this] {
        m_notifier->setEnabled(false);
        emit requested();
    });
}

CStopRequest::~CStopRequest()
{
    delete m_notifier;
    for (const int end : m_pipe) {
        if (end >= 0)
            close(end);
    }
}

void CStopRequest::request(int number)
{
    const int before = errno;
    int none = 0;
    m_number.compare_exchange_strong(none, number);
    // A pipe that is full wakes up as well.
    [[maybe_unused]] const ssize_t written = write(m_pipe[1], "", 1);
    errno = before;
}

bool CStopRequest::isRequested() const
{
    return m_number != 0;
}

int CStopRequest::number() const
{
    return m_number;
}
