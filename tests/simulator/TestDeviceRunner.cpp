#include "simulator/console/CDeviceRunner.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/device/DeviceMessages.h"
#include "simulator/transports/CPolledTransport.h"
#include "tests/support/CTestCase.h"

#include <unistd.h>

#include <array>
#include <chrono>
#include <future>

using namespace DeviceMessages;

namespace
{
/// Two ends of a byte channel.
class CPipe
{
  public:
    CPipe()
    {
        if (pipe(m_ends.data()) != 0)
            qFatal("no pipe");
    }

    ~CPipe()
    {
        closeWriting();
        close(m_ends[0]);
    }

    CPipe(const CPipe&) = delete;
    CPipe& operator=(const CPipe&) = delete;

    void write(const QByteArray& bytes) const
    {
        QCOMPARE(::write(m_ends[1], bytes.constData(), static_cast<size_t>(bytes.size())), bytes.size());
    }

    void closeWriting()
    {
        if (m_ends[1] >= 0)
            close(m_ends[1]);
        m_ends[1] = -1;
    }

    [[nodiscard]] int reading() const
    {
        return m_ends[0];
    }

    [[nodiscard]] bool isReady() const
    {
        pollfd wait = {.fd = m_ends[0], .events = POLLIN, .revents = 0};
        return poll(&wait, 1, 0) > 0;
    }

  private:
    std::array<int, 2> m_ends = {-1, -1};
};

/// MIDI through a pipe; its end is the end of the other side.
class CPipeTransport : public CPolledTransport
{
  public:
    QString open(CSimulatedDevice& device) override
    {
        m_device = &device;
        device.plug(*this);
        return {};
    }

    [[nodiscard]] QString description() const override
    {
        return QStringLiteral("a pipe");
    }

    [[nodiscard]] std::vector<pollfd> descriptors() const override
    {
        return {{.fd = midi.reading(), .events = POLLIN, .revents = 0}};
    }

    bool process() override
    {
        while (midi.isReady()) {
            std::array<char, 64> bytes = {};
            const ssize_t count = read(midi.reading(), bytes.data(), bytes.size());
            if (count <= 0)
                return false;
            m_device->receive(QByteArray(bytes.data(), count));
        }
        return true;
    }

    void deviceSent(CSimulatedDevice&, const QByteArray& packet) override
    {
        sent += packet;
    }

    void deviceUnplugged(CSimulatedDevice&) override {}

    CPipe midi;
    QList<QByteArray> sent;

  private:
    CSimulatedDevice* m_device = nullptr;
};

/// A runner on a thread of its own, with its output in a file.
class CRunning
{
  public:
    explicit CRunning(bool keepRunning) : m_output(std::tmpfile())
    {
        static_cast<void>(transport.open(device));
        m_result = std::async(std::launch::async, [this, keepRunning] {
            CDeviceRunner runner(device, transport, commands.reading(), m_output, keepRunning);
            return runner.run();
        });
    }

    ~CRunning()
    {
        commands.closeWriting();
        transport.midi.closeWriting();
        m_result = {};
        std::fclose(m_output);
        device.unplug();
    }

    CRunning(const CRunning&) = delete;
    CRunning& operator=(const CRunning&) = delete;

    /// Waits for the end of run() and gives its result.
    bool end()
    {
        return m_result.get();
    }

    [[nodiscard]] bool isRunning() const
    {
        return m_result.wait_for(std::chrono::seconds(0)) != std::future_status::ready;
    }

    /// What was printed, without the times.
    QStringList printed()
    {
        QByteArray text(65536, '\0');
        std::rewind(m_output);
        text.truncate(static_cast<qsizetype>(std::fread(text.data(), 1, static_cast<size_t>(text.size()), m_output)));
        QStringList lines = QString::fromLatin1(text).split('\n', Qt::SkipEmptyParts);
        static const QRegularExpression k_time("^ *[0-9]+\\.[0-9]{3} ");
        for (QString& line : lines)
            line.remove(k_time);
        return lines;
    }

    CSimulatedDevice device;
    CPipeTransport transport;
    CPipe commands;

  private:
    std::FILE* m_output;
    std::future<bool> m_result;
};

const QString k_keepReceived = QStringLiteral("received  F0 43 10 3E 18 05 02 01 F7  keep");
const QString k_keepSent = QStringLiteral("sent      F0 43 10 3E 18 05 02 01 F7  keep");
} // namespace

class TestDeviceRunner : public CTestCase
{
    Q_OBJECT

  private slots:
    void answersAndPrintsMessages();
    void carriesOutCommandsInOrder();
    void quitEndsItAndLeavesTheRestUnread();
    void endOfCommandsEndsIt();
    void lastLineNeedsNoLineBreak();
    void endOfCommandsLeavesItRunningWhenToldSo();
    void lineInPiecesIsOneCommand();
    void endlessLineIsCut();
    void endOfTheOtherSideEndsItAsAFailure();
    void timeIsRealTime();
};

void TestDeviceRunner::answersAndPrintsMessages()
{
    CRunning running(false);
    running.transport.midi.write(keep());
    QTRY_COMPARE(running.device.trafficSince(0).size(), 2);
    running.commands.write("quit\n");
    QVERIFY(running.end());
    QCOMPARE(running.transport.sent, QList{keep()});
    QCOMPARE(running.printed(), QStringList({k_keepReceived, k_keepSent}));
}

void TestDeviceRunner::carriesOutCommandsInOrder()
{
    CRunning running(false);
    running.commands.write("turn 3 64\nturn 9 1\nsilent\nshow\n\nquit\n");
    QVERIFY(running.end());
    const QStringList printed = running.printed();
    QCOMPARE(printed.size(), 11);
    QCOMPARE(printed.at(0), "sent      F0 43 10 3E 18 05 02 04 03 40 F7  notice value: knob 3, value 64");
    QCOMPARE(printed.at(1), "\"9\" is no knob, which is 0 to 7");
    QCOMPARE(printed.at(5), "knob 3: value 64, cc 7, channel 0, max 127, min 0, led 0 (ascent)");
    QCOMPARE(printed.at(10), "silent");
}

void TestDeviceRunner::quitEndsItAndLeavesTheRestUnread()
{
    CRunning running(true);
    running.commands.write("quit\nturn 3 64\n");
    QVERIFY(running.end());
    QCOMPARE(running.device.value(3), 0);
}

void TestDeviceRunner::endOfCommandsEndsIt()
{
    CRunning running(false);
    running.commands.closeWriting();
    QVERIFY(running.end());
}

void TestDeviceRunner::lastLineNeedsNoLineBreak()
{
    CRunning running(false);
    running.commands.write("turn 3 64");
    running.commands.closeWriting();
    QVERIFY(running.end());
    QCOMPARE(running.device.value(3), 64);
}

void TestDeviceRunner::endOfCommandsLeavesItRunningWhenToldSo()
{
    CRunning running(true);
    running.commands.write("turn 3 64\n");
    running.commands.closeWriting();
    QTRY_COMPARE(running.device.value(3), 64);
    running.transport.midi.write(keep());
    QTRY_COMPARE(running.device.received(), QList{keep()});
    QVERIFY(running.isRunning());
    running.transport.midi.closeWriting();
    QVERIFY(!running.end());
}

void TestDeviceRunner::lineInPiecesIsOneCommand()
{
    CRunning running(false);
    for (const char letter : QByteArray("turn 3 64\n"))
        running.commands.write(QByteArray(1, letter));
    QTRY_COMPARE(running.device.value(3), 64);
    running.commands.write("quit\n");
    QVERIFY(running.end());
    QCOMPARE(running.printed().size(), 1);
}

void TestDeviceRunner::endlessLineIsCut()
{
    CRunning running(false);
    running.commands.write(QByteArray(10'000, 'x'));
    running.commands.write("\nturn 3 64\nquit\n");
    QVERIFY(running.end());
    QCOMPARE(running.device.value(3), 64);
    const QString error = "unknown command \"" + QString(40, 'x') + "...\"; help lists them";
    const QStringList printed = running.printed();
    QVERIFY(printed.size() >= 3);
    for (qsizetype i = 0; i + 1 < printed.size(); ++i)
        QVERIFY(printed.at(i).startsWith("unknown command \"xxx"));
    QCOMPARE(printed.first(), error);
}

void TestDeviceRunner::endOfTheOtherSideEndsItAsAFailure()
{
    CRunning running(true);
    running.transport.midi.write(keep());
    running.transport.midi.closeWriting();
    QVERIFY(!running.end());
    QCOMPARE(running.printed(), QStringList({k_keepReceived, k_keepSent}));
}

void TestDeviceRunner::timeIsRealTime()
{
    CRunning running(false);
    running.transport.midi.write(keep());
    QTRY_COMPARE(running.device.received().size(), 1);
    QTest::qWait(30);
    running.transport.midi.write(keep());
    QTRY_COMPARE(running.device.received().size(), 2);
    const QList<Traffic> traffic = running.device.trafficSince(0);
    QVERIFY(traffic.last().time - traffic.first().time >= 29);
    running.commands.write("quit\n");
    QVERIFY(running.end());
}

KTZ_TEST(QCoreApplication, TestDeviceRunner)
#include "TestDeviceRunner.moc"
