#pragma once

#include "ctl/CStopRequest.h"
#include "ctl/CtlStatus.h"
#include "ctl/RunCtl.h"
#include "tests/support/CTestCase.h"
#include "tests/support/SimulatedDeviceFixture.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTimer>

#include <array>
#include <csignal>
#include <poll.h>
#include <unistd.h>
#include <utility>

using namespace std::chrono_literals;

/// What a run of the program left behind.
struct CtlOutcome
{
    int status = -1;
    QString output;
    QString errors;

    [[nodiscard]] QJsonObject json() const
    {
        return QJsonDocument::fromJson(output.toUtf8()).object();
    }
};

/// The program without a window in this process, with a simulated device that is plugged in or not.
struct CtlFixture : SimulatedDeviceFixture
{
    /// Small enough for a test, and long where a machine under load must not be taken for a fault.
    CtlTimes times{.connection = {.startInterval = 20s, .keepInterval = 3600s, .watchdog = 3600s, .requestPause = 1ms},
                   .startPause = 0ms,
                   .answer = 20s,
                   .values = 20s,
                   .lookPause = 2ms,
                   .meetingPause = 2ms};

    CtlOutcome run(const QStringList& arguments)
    {
        QTemporaryFile output;
        QTemporaryFile errors;
        if (!output.open() || !errors.open())
            return {};
        outputPath = output.fileName();
        CtlOutcome outcome;
        outcome.status = runCtl(arguments, output.handle(), errors.handle(), stop, times, makeBus);
        outcome.output = written();
        outcome.errors = textOf(errors.fileName());
        return outcome;
    }

    /// What the program has written to its output, while it runs.
    [[nodiscard]] QString written() const
    {
        return textOf(outputPath);
    }

    [[nodiscard]] QString path(const QString& name) const
    {
        return folder.filePath(name);
    }

    [[nodiscard]] QString make(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName() : QString();
    }

    /// What the device got that changes it.
    [[nodiscard]] QList<QByteArray> changes() const
    {
        QList<QByteArray> found;
        for (const QByteArray& message : device.received()) {
            if (message.startsWith(QByteArray::fromHex("f043103e18050203")))
                found.append(message);
        }
        return found;
    }

    static QString textOf(const QString& filePath)
    {
        QFile file(filePath);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    CStopRequest stop;
    QString outputPath; ///< of the run that goes on
    EditorBusMaker makeBus;
    QTemporaryDir folder;
};

/// A pipe as an output.
class CPipe
{
  public:
    CPipe()
    {
        [&] { QCOMPARE(pipe(m_ends.data()), 0); }();
    }

    ~CPipe()
    {
        closeReader();
        close(m_ends[1]);
        std::signal(SIGPIPE, m_before);
    }

    CPipe(const CPipe&) = delete;
    CPipe& operator=(const CPipe&) = delete;

    [[nodiscard]] int input() const
    {
        return m_ends[1];
    }

    /// Whether a writer would not have to wait.
    [[nodiscard]] bool takesMore() const
    {
        pollfd end{.fd = m_ends[1], .events = POLLOUT, .revents = 0};
        return poll(&end, 1, 0) == 1;
    }

    /// Nobody reads it any more.
    void closeReader()
    {
        if (m_ends[0] >= 0)
            close(std::exchange(m_ends[0], -1));
    }

  private:
    std::array<int, 2> m_ends{-1, -1};
    void (*const m_before)(int) = std::signal(SIGPIPE, SIG_IGN); ///< as the program has it
};

inline const QByteArray k_startMessageBytes = QByteArray::fromHex("f043103e18050200f7");
inline const QByteArray k_keepMessageBytes = QByteArray::fromHex("f043103e18050201f7");
inline const QByteArray k_endMessageBytes = QByteArray::fromHex("f043103e18050202f7");
inline const QByteArray k_requestAllBytes = QByteArray::fromHex("f043303e180502007ff7");
