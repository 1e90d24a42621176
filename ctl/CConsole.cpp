#include "ctl/CConsole.h"

#include "ctl/CStopRequest.h"

#include <QByteArray>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <poll.h>
#include <system_error>
#include <unistd.h>

namespace
{
/// Wakes up so often to see whether a stop is requested: a signal may come just before the wait.
constexpr int k_lookPause = 100; // milliseconds

QByteArray printable(const QString& lines)
{
    QString text = lines;
    for (QChar& c : text) {
        // A half of a pair belongs to a letter beyond the first 65536.
        if (!c.isPrint() && !c.isSurrogate() && c != u'\n' && c != u'\t')
            c = u'?';
    }
    return text.toUtf8();
}
} // namespace

CConsole::CConsole(int output, int errors, const CStopRequest& stop) : m_output(output), m_errors(errors), m_stop(stop)
{
}

bool CConsole::print(const QString& lines)
{
    return writeOutput(printable(lines));
}

bool CConsole::printHeading(const QString& line)
{
    const QByteArray text = printable(line);
    return writeOutput(isColoured() ? "\033[1m" + text + "\033[0m\n" : text + '\n');
}

bool CConsole::writeOutput(const QByteArray& bytes)
{
    const std::scoped_lock lock(m_mutex);
    if (m_outputStatus == 0)
        m_outputStatus = write(m_output, bytes);
    return m_outputStatus == 0;
}

void CConsole::complain(const QString& line)
{
    trace(QStringLiteral("ktz-jxctl: ") + line);
}

void CConsole::trace(const QString& line)
{
    const std::scoped_lock lock(m_mutex);
    // Nowhere to say that this failed.
    static_cast<void>(write(m_errors, printable(QString(line).replace(u'\n', u' ') + u'\n')));
}

bool CConsole::isTerminal() const
{
    return isatty(m_output) == 1;
}

bool CConsole::isColoured() const
{
    return isTerminal() && qEnvironmentVariableIsEmpty("NO_COLOR");
}

QString CConsole::outputError() const
{
    const std::scoped_lock lock(m_mutex);
    return m_outputStatus == 0 ? QString() : QString::fromStdString(std::system_category().message(m_outputStatus));
}

bool CConsole::isReaderGone() const
{
    const std::scoped_lock lock(m_mutex);
    return m_outputStatus == EPIPE;
}

int CConsole::write(int descriptor, const QByteArray& bytes) const
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        pollfd wait = {.fd = descriptor, .events = POLLOUT, .revents = 0};
        const int ready = poll(&wait, 1, k_lookPause);
        if (ready <= 0) {
            if (m_stop.isRequested())
                return EINTR;
            continue;
        }
        // No more than what a pipe that is ready takes without waiting.
        const auto size = std::size_t(std::min<qsizetype>(bytes.size() - done, PIPE_BUF));
        const ssize_t written = ::write(descriptor, bytes.constData() + done, size);
        if (written < 0 && errno != EINTR && errno != EAGAIN)
            return errno;
        done += std::max<ssize_t>(written, 0);
    }
    return 0;
}
