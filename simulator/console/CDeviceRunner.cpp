#include "simulator/console/CDeviceRunner.h"

#include "simulator/console/CDeviceConsole.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/transports/CPolledTransport.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace
{
constexpr qsizetype k_longestLine = 4096; // a longer one is taken as it is, so that memory stays bounded
} // namespace

CDeviceRunner::CDeviceRunner(CSimulatedDevice& device, CPolledTransport& transport, int input, std::FILE* output,
                             bool keepRunning)
    : m_device(device), m_transport(transport), m_input(input), m_output(output), m_keepRunning(keepRunning)
{
}

bool CDeviceRunner::run()
{
    CDeviceConsole console(m_device);
    m_sinceStart.start();
    while (!console.wantsToQuit() && (!m_inputEnded || m_keepRunning)) {
        waitForNews();
        m_device.advance(m_sinceStart.elapsed() - m_device.now());
        if (!m_transport.process()) {
            print(console.news());
            return false;
        }
        if (inputIsReady())
            readCommands(console);
        print(console.news());
    }
    return true;
}

void CDeviceRunner::waitForNews() const
{
    std::vector<pollfd> waits = m_transport.descriptors();
    if (!m_inputEnded)
        waits.push_back({.fd = m_input, .events = POLLIN, .revents = 0});
    static_cast<void>(poll(waits.data(), waits.size(), -1)); // an interruption is only one more round
}

bool CDeviceRunner::inputIsReady() const
{
    pollfd wait = {.fd = m_input, .events = POLLIN, .revents = 0};
    return !m_inputEnded && poll(&wait, 1, 0) > 0;
}

void CDeviceRunner::readCommands(CDeviceConsole& console)
{
    std::array<char, 4096> bytes = {};
    const ssize_t count = read(m_input, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR)
        return;
    if (count <= 0) {
        m_inputEnded = true;
        m_unfinishedLine += '\n';
    } else {
        m_unfinishedLine.append(bytes.data(), count);
    }
    executeLines(console);
}

void CDeviceRunner::executeLines(CDeviceConsole& console)
{
    while (!console.wantsToQuit()) {
        qsizetype end = m_unfinishedLine.indexOf('\n');
        if (end < 0 && m_unfinishedLine.size() < k_longestLine)
            return;
        if (end < 0)
            end = m_unfinishedLine.size();
        print(console.execute(m_unfinishedLine.left(end)));
        print(console.news());
        m_unfinishedLine.remove(0, end + 1);
    }
}

void CDeviceRunner::print(const QStringList& lines) const
{
    for (const QString& line : lines)
        std::fprintf(m_output, "%s\n", qPrintable(line));
    std::fflush(m_output);
}
