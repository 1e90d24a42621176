#include "simulator/device/CSimulatedDevice.h"
#include "simulator/device/DeviceMessages.h"
#include "tests/simulator/CRecordingTransport.h"
#include "tests/support/CTestCase.h"

#include <memory>
#include <thread>

using namespace DeviceMessages;

class TestSimulatedDevice : public CTestCase
{
    Q_OBJECT

  private slots:
    // what it holds
    void leavesTheFactoryWithItsSettings_data();
    void leavesTheFactoryWithItsSettings();
    void settingsAndValuesCanBeSetWithoutAReport();

    // what it answers
    void answersStartAndKeep();
    void takesEndWithoutAnAnswer();
    void takesChangeParameterForItsKnobAlone();
    void changeParameterForAKnobAboveSevenIsIgnored();
    void answersRequestAllWithTwoMessagesForEachKnob();
    void reportsATurnedKnob();
    void reportsSettingsUnasked();
    void joinsAMessageCutAtEveryByte();
    void answersEveryMessageOfOnePacket();
    void ignoresJunk_data();
    void ignoresJunk();

    // faults
    void leavesStartsUnanswered();
    void leavesEveryStartUnanswered();
    void dropsKeepReplies();
    void silentDeviceListensButSendsNothing();
    void silenceDropsWhatWasDelayed();
    void cutsRepliesIntoPackets_data();
    void cutsRepliesIntoPackets();
    void gluesRepliesOfOneAnswer();
    void putsStrayBytesAheadOfMessages();
    void putsOtherEventsBetweenMessages();
    void interruptsMessages_data();
    void interruptsMessages();
    void delaysRepliesUntilTheClockHasMoved();
    void shorterDelayDoesNotOvertake();
    void refusesTheNthSend();
    void refusesSeveralSends();
    void unpluggedDeviceTakesAndSendsNothing();
    void unplugForgetsAnUnfinishedMessage();
    void unplugDropsWhatWasDelayed();
    void unpluggedDeviceCanBePluggedAgain();
    void destructorUnplugs();
    void pluggingElsewhereUnplugsFirst();
    void sendsAPacketExactlyAsGiven();

    // what it remembers
    void remembersBothDirectionsWithTheirTimes();
    void delayedPacketCarriesTheTimeAtWhichItLeft();
    void receivedKnowsJunkToo();
    void logForgetsTheOldest();

    void packetsOfOneThreadKeepTheirOrderWhileAnotherSends();

    void init();
    void cleanup();

  private:
    CRecordingTransport m_transport;
    std::unique_ptr<CSimulatedDevice> m_device;
};

void TestSimulatedDevice::init()
{
    CTestCase::init();
    m_device = std::make_unique<CSimulatedDevice>();
    m_device->plug(m_transport);
}

void TestSimulatedDevice::cleanup()
{
    m_device.reset();
    static_cast<void>(m_transport.take());
}

void TestSimulatedDevice::leavesTheFactoryWithItsSettings_data()
{
    QTest::addColumn<int>("knob");
    QTest::addColumn<int>("cc");
    QTest::addColumn<int>("led");
    QTest::newRow("knob 0") << 0 << 74 << 0;
    QTest::newRow("knob 1") << 1 << 71 << 0;
    QTest::newRow("knob 2") << 2 << 10 << 2;
    QTest::newRow("knob 3") << 3 << 7 << 0;
    QTest::newRow("knob 4") << 4 << 73 << 0;
    QTest::newRow("knob 5") << 5 << 72 << 0;
    QTest::newRow("knob 6") << 6 << 91 << 0;
    QTest::newRow("knob 7") << 7 << 93 << 0;
}

void TestSimulatedDevice::leavesTheFactoryWithItsSettings()
{
    QFETCH(int, knob);
    QFETCH(int, cc);
    QFETCH(int, led);
    QVERIFY(m_device->settings(knob) == KnobSettings({cc, 0, 127, 0, led}));
    QCOMPARE(m_device->value(knob), 0);
}

void TestSimulatedDevice::settingsAndValuesCanBeSetWithoutAReport()
{
    m_device->setSettings(2, {1, 2, 3, 4, 1});
    m_device->setSetting(2, &KnobSettings::max, 99);
    m_device->setValue(2, 55);
    QVERIFY(m_device->settings(2) == KnobSettings({1, 2, 99, 4, 1}));
    QCOMPARE(m_device->value(2), 55);
    QVERIFY(m_transport.take().isEmpty());
}

void TestSimulatedDevice::answersStartAndKeep()
{
    QVERIFY(m_device->receive(start()));
    QCOMPARE(m_transport.take(), QList{start()});
    QVERIFY(m_device->receive(keep()));
    QCOMPARE(m_transport.take(), QList{keep()});
}

void TestSimulatedDevice::takesEndWithoutAnAnswer()
{
    QVERIFY(m_device->receive(end()));
    QVERIFY(m_transport.take().isEmpty());
    QCOMPARE(m_device->received(), QList{end()});
}

void TestSimulatedDevice::takesChangeParameterForItsKnobAlone()
{
    const KnobSettings settings = {1, 2, 3, 4, 3};
    QVERIFY(m_device->receive(changeParameter(6, settings)));
    for (int knob = 0; knob < CSimulatedDevice::k_knobs; ++knob)
        QVERIFY(m_device->settings(knob) == (knob == 6 ? settings : k_factorySettings.at(static_cast<size_t>(knob))));
    QVERIFY(m_transport.take().isEmpty());
}

void TestSimulatedDevice::changeParameterForAKnobAboveSevenIsIgnored()
{
    QVERIFY(m_device->receive(changeParameter(8, {1, 2, 3, 4, 3})));
    for (int knob = 0; knob < CSimulatedDevice::k_knobs; ++knob)
        QVERIFY(m_device->settings(knob) == k_factorySettings.at(static_cast<size_t>(knob)));
}

void TestSimulatedDevice::answersRequestAllWithTwoMessagesForEachKnob()
{
    QList<QByteArray> expected;
    for (int knob = 0; knob < CSimulatedDevice::k_knobs; ++knob) {
        const KnobSettings settings = {knob, 15 - knob, 120 + knob, knob * 2, knob % 4};
        m_device->setSettings(knob, settings);
        m_device->setValue(knob, knob * 10);
        expected += changeParameter(knob, settings);
        expected += noticeValue(knob, knob * 10);
    }
    QVERIFY(m_device->receive(requestAll()));
    QCOMPARE(m_transport.take(), expected);
}

void TestSimulatedDevice::reportsATurnedKnob()
{
    m_device->turn(3, 64);
    QCOMPARE(m_device->value(3), 64);
    QCOMPARE(m_transport.take(), QList{noticeValue(3, 64)});
}

void TestSimulatedDevice::reportsSettingsUnasked()
{
    m_device->setSetting(4, &KnobSettings::cc, 11);
    m_device->reportSettings(4);
    QCOMPARE(m_transport.take(), QList{changeParameter(4, {11, 0, 127, 0, 0})});
}

void TestSimulatedDevice::joinsAMessageCutAtEveryByte()
{
    for (qsizetype cut = 1; cut < start().size(); ++cut) {
        QVERIFY(m_device->receive(start().left(cut)));
        QVERIFY(m_transport.take().isEmpty());
        QVERIFY(m_device->receive(start().mid(cut)));
        QCOMPARE(m_transport.take(), QList{start()});
    }
}

void TestSimulatedDevice::answersEveryMessageOfOnePacket()
{
    QVERIFY(m_device->receive(keep() + start() + keep().left(3)));
    QCOMPARE(m_transport.take(), QList({keep(), start()}));
    QVERIFY(m_device->receive(keep().mid(3)));
    QCOMPARE(m_transport.take(), QList{keep()});
}

void TestSimulatedDevice::ignoresJunk_data()
{
    QTest::addColumn<QByteArray>("junk");
    QTest::newRow("a control change") << QByteArray::fromHex("b04a40");
    QTest::newRow("another maker's message") << QByteArray::fromHex("f07e7f0601f7");
    QTest::newRow("a notice value, which only the device sends") << noticeValue(1, 2);
    QTest::newRow("start without an end") << start().chopped(1);
    QTest::newRow("an end alone") << QByteArray::fromHex("f7");
    QTest::newRow("start, too long") << start().insert(8, '\x01');
    QTest::newRow("change parameter with a value above 127") << changeParameter(1, {200, 0, 127, 0, 0});
    QTest::newRow("200 bytes without an end") << QByteArray(200, '\x01').prepend('\xf0');
}

void TestSimulatedDevice::ignoresJunk()
{
    QFETCH(QByteArray, junk);
    QVERIFY(m_device->receive(junk));
    QVERIFY(m_transport.take().isEmpty());
    for (int knob = 0; knob < CSimulatedDevice::k_knobs; ++knob) {
        QVERIFY(m_device->settings(knob) == k_factorySettings.at(static_cast<size_t>(knob)));
        QCOMPARE(m_device->value(knob), 0);
    }
    QVERIFY(m_device->receive(keep()));
    QCOMPARE(m_transport.take(), QList{keep()});
}

void TestSimulatedDevice::leavesStartsUnanswered()
{
    m_device->ignoreStarts(2);
    for (int i = 0; i < 2; ++i) {
        QVERIFY(m_device->receive(start()));
        QVERIFY(m_transport.take().isEmpty());
    }
    QVERIFY(m_device->receive(keep()));
    QCOMPARE(m_transport.take(), QList{keep()});
    QVERIFY(m_device->receive(start()));
    QCOMPARE(m_transport.take(), QList{start()});
}

void TestSimulatedDevice::leavesEveryStartUnanswered()
{
    m_device->ignoreStarts(CSimulatedDevice::k_always);
    for (int i = 0; i < 100; ++i)
        QVERIFY(m_device->receive(start()));
    QVERIFY(m_transport.take().isEmpty());
    m_device->ignoreStarts(0);
    QVERIFY(m_device->receive(start()));
    QCOMPARE(m_transport.take(), QList{start()});
}

void TestSimulatedDevice::dropsKeepReplies()
{
    m_device->dropKeeps(1);
    QVERIFY(m_device->receive(keep()));
    QVERIFY(m_device->receive(start()));
    QVERIFY(m_device->receive(keep()));
    QCOMPARE(m_transport.take(), QList({start(), keep()}));
}

void TestSimulatedDevice::silentDeviceListensButSendsNothing()
{
    QVERIFY(!m_device->isSilent());
    m_device->goSilent();
    QVERIFY(m_device->isSilent());
    QVERIFY(m_device->receive(start()));
    QVERIFY(m_device->receive(keep()));
    QVERIFY(m_device->receive(requestAll()));
    QVERIFY(m_device->receive(changeParameter(0, {1, 2, 3, 4, 0})));
    m_device->turn(5, 77);
    m_device->reportSettings(5);
    m_device->send(keep());
    QVERIFY(m_transport.take().isEmpty());
    QVERIFY(m_device->settings(0) == KnobSettings({1, 2, 3, 4, 0}));
    QCOMPARE(m_device->value(5), 77);

    m_device->answer();
    QVERIFY(!m_device->isSilent());
    QVERIFY(m_transport.take().isEmpty());
    QVERIFY(m_device->receive(keep()));
    QCOMPARE(m_transport.take(), QList{keep()});
}

void TestSimulatedDevice::silenceDropsWhatWasDelayed()
{
    m_device->delayReplies(10);
    QVERIFY(m_device->receive(keep()));
    m_device->goSilent();
    m_device->answer();
    m_device->advance(20);
    QVERIFY(m_transport.take().isEmpty());
}

void TestSimulatedDevice::cutsRepliesIntoPackets_data()
{
    QTest::addColumn<int>("bytes");
    QTest::addColumn<int>("packets");
    QTest::newRow("uncut") << 0 << 1;
    QTest::newRow("one byte each") << 1 << 11;
    QTest::newRow("five bytes each, the last shorter") << 5 << 3;
    QTest::newRow("exactly the message") << 11 << 1;
    QTest::newRow("more than the message") << 256 << 1;
}

void TestSimulatedDevice::cutsRepliesIntoPackets()
{
    QFETCH(int, bytes);
    QFETCH(int, packets);
    m_device->cutRepliesInto(bytes);
    m_device->turn(1, 100);
    const QList<QByteArray> sent = m_transport.take();
    QCOMPARE(sent.size(), packets);
    QCOMPARE(sent.join(), noticeValue(1, 100));
    for (qsizetype i = 0; i + 1 < sent.size(); ++i)
        QCOMPARE(sent.at(i).size(), bytes);
}

void TestSimulatedDevice::gluesRepliesOfOneAnswer()
{
    m_device->glueReplies(3);
    QVERIFY(m_device->receive(requestAll()));
    const QList<QByteArray> sent = m_transport.take();
    QCOMPARE(sent.size(), 6);
    QCOMPARE(sent.first(),
             changeParameter(0, m_device->settings(0)) + noticeValue(0, 0) + changeParameter(1, m_device->settings(1)));
    QCOMPARE(sent.last(), noticeValue(7, 0));
    m_device->turn(1, 2);
    QCOMPARE(m_transport.take(), QList{noticeValue(1, 2)});
}

void TestSimulatedDevice::putsStrayBytesAheadOfMessages()
{
    m_device->strayBytes("\x01\x7f");
    QVERIFY(m_device->receive(keep() + start()));
    QCOMPARE(m_transport.take(), QList({"\x01\x7f" + keep(), "\x01\x7f" + start()}));
    m_device->strayBytes({});
    m_device->turn(1, 2);
    QCOMPARE(m_transport.take(), QList{noticeValue(1, 2)});
}

void TestSimulatedDevice::putsOtherEventsBetweenMessages()
{
    const QByteArray controlChange = QByteArray::fromHex("b04a40");
    const QByteArray clock = QByteArray::fromHex("f8");
    m_device->otherEvents({controlChange, clock});
    QVERIFY(m_device->receive(keep() + start()));
    QCOMPARE(m_transport.take(), QList({controlChange, clock, keep(), controlChange, clock, start()}));
}

void TestSimulatedDevice::interruptsMessages_data()
{
    QTest::addColumn<int>("after");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("ahead of the first byte") << 0
                                             << QByteArray::fromHex("fe"
                                                                    "f043103e18050201f7");
    QTest::newRow("behind the first byte") << 1
                                           << QByteArray::fromHex("f0"
                                                                  "fe"
                                                                  "43103e18050201f7");
    QTest::newRow("ahead of the last byte") << 8
                                            << QByteArray::fromHex("f043103e18050201"
                                                                   "fe"
                                                                   "f7");
    QTest::newRow("further back than the message goes") << 20
                                                        << QByteArray::fromHex("f043103e18050201f7"
                                                                               "fe");
}

void TestSimulatedDevice::interruptsMessages()
{
    QFETCH(int, after);
    QFETCH(QByteArray, expected);
    m_device->interruptReplies("\xfe", after);
    QVERIFY(m_device->receive(keep()));
    QCOMPARE(m_transport.take(), QList{expected});
}

void TestSimulatedDevice::delaysRepliesUntilTheClockHasMoved()
{
    m_device->delayReplies(100);
    QVERIFY(m_device->receive(keep()));
    m_device->advance(60);
    m_device->turn(2, 9);
    m_device->advance(39);
    QVERIFY(m_transport.take().isEmpty());
    m_device->advance(1);
    QCOMPARE(m_transport.take(), QList{keep()});
    m_device->advance(60);
    QCOMPARE(m_transport.take(), QList{noticeValue(2, 9)});
    QCOMPARE(m_device->now(), 160);
}

void TestSimulatedDevice::shorterDelayDoesNotOvertake()
{
    m_device->delayReplies(100);
    QVERIFY(m_device->receive(keep()));
    m_device->delayReplies(0);
    QVERIFY(m_device->receive(start()));
    QVERIFY(m_transport.take().isEmpty());
    m_device->advance(100);
    QCOMPARE(m_transport.take(), QList({keep(), start()}));
}

void TestSimulatedDevice::refusesTheNthSend()
{
    m_device->refuseSend(3);
    QVERIFY(m_device->receive(keep()));
    QVERIFY(m_device->receive(keep()));
    QVERIFY(!m_device->receive(keep()));
    QVERIFY(m_device->receive(keep()));
    QCOMPARE(m_transport.take().size(), 3);
    QCOMPARE(m_device->received().size(), 3);
}

void TestSimulatedDevice::refusesSeveralSends()
{
    m_device->refuseSend(1, 2);
    QVERIFY(!m_device->receive(keep()));
    QVERIFY(!m_device->receive(keep()));
    QVERIFY(m_device->receive(keep()));
    m_device->refuseSend(1, CSimulatedDevice::k_always);
    for (int i = 0; i < 10; ++i)
        QVERIFY(!m_device->receive(keep()));
}

void TestSimulatedDevice::unpluggedDeviceTakesAndSendsNothing()
{
    const int before = m_transport.unplugged();
    QVERIFY(m_device->isPlugged());
    m_device->unplug();
    QVERIFY(!m_device->isPlugged());
    QCOMPARE(m_transport.unplugged(), before + 1);
    QVERIFY(!m_device->receive(start()));
    m_device->turn(1, 5);
    m_device->reportSettings(1);
    m_device->send(keep());
    m_device->advance(10);
    QVERIFY(m_transport.take().isEmpty());
    QVERIFY(m_device->received().isEmpty());
    QCOMPARE(m_device->value(1), 5);
    m_device->unplug();
    QCOMPARE(m_transport.unplugged(), before + 1);
}

void TestSimulatedDevice::unplugForgetsAnUnfinishedMessage()
{
    QVERIFY(m_device->receive(keep().left(4)));
    m_device->plug(m_transport);
    QVERIFY(m_device->receive(keep().mid(4)));
    QVERIFY(m_transport.take().isEmpty());
}

void TestSimulatedDevice::unplugDropsWhatWasDelayed()
{
    m_device->delayReplies(10);
    QVERIFY(m_device->receive(keep()));
    m_device->plug(m_transport);
    m_device->advance(10);
    QVERIFY(m_transport.take().isEmpty());
}

void TestSimulatedDevice::unpluggedDeviceCanBePluggedAgain()
{
    m_device->setSetting(0, &KnobSettings::cc, 1);
    m_device->unplug();
    m_device->plug(m_transport);
    QCOMPARE(m_device->settings(0).cc, 1);
    QVERIFY(m_device->receive(start()));
    QCOMPARE(m_transport.take(), QList{start()});
}

void TestSimulatedDevice::destructorUnplugs()
{
    const int before = m_transport.unplugged();
    m_device.reset();
    QCOMPARE(m_transport.unplugged(), before + 1);
}

void TestSimulatedDevice::pluggingElsewhereUnplugsFirst()
{
    const int before = m_transport.unplugged();
    CRecordingTransport other;
    m_device->plug(other);
    QCOMPARE(m_transport.unplugged(), before + 1);
    m_device->turn(0, 1);
    QVERIFY(m_transport.take().isEmpty());
    QCOMPARE(other.take(), QList{noticeValue(0, 1)});
    m_device.reset();
}

void TestSimulatedDevice::sendsAPacketExactlyAsGiven()
{
    m_device->strayBytes("\x01");
    m_device->cutRepliesInto(2);
    const QByteArray valueAbove127 = QByteArray::fromHex("f043103e1805020400c8f7");
    m_device->send(valueAbove127);
    const QByteArray large(70'000, '\x05');
    m_device->send(large);
    QCOMPARE(m_transport.take(), QList({valueAbove127, large}));
}

void TestSimulatedDevice::remembersBothDirectionsWithTheirTimes()
{
    m_device->advance(1500);
    QVERIFY(m_device->receive(start()));
    m_device->advance(500);
    m_device->turn(1, 2);
    const QList<Traffic> traffic = m_device->trafficSince(0);
    QCOMPARE(traffic.size(), 3);
    QCOMPARE(traffic.at(0).bytes, start());
    QCOMPARE(traffic.at(0).direction, Traffic::Direction::ToDevice);
    QCOMPARE(traffic.at(0).time, 1500);
    QCOMPARE(traffic.at(1).bytes, start());
    QCOMPARE(traffic.at(1).direction, Traffic::Direction::FromDevice);
    QCOMPARE(traffic.at(1).time, 1500);
    QCOMPARE(traffic.at(2).bytes, noticeValue(1, 2));
    QCOMPARE(traffic.at(2).time, 2000);
    QCOMPARE(m_device->trafficSince(2).size(), 1);
    QCOMPARE(m_device->trafficSince(2).first().number, 2);
    QVERIFY(m_device->trafficSince(3).isEmpty());

    m_device->clearTraffic();
    QVERIFY(m_device->trafficSince(0).isEmpty());
    m_device->turn(1, 3);
    QCOMPARE(m_device->trafficSince(0).first().number, 3);
}

void TestSimulatedDevice::delayedPacketCarriesTheTimeAtWhichItLeft()
{
    m_device->delayReplies(30);
    m_device->turn(1, 2);
    m_device->advance(100);
    QCOMPARE(m_device->trafficSince(0).first().time, 30);
}

void TestSimulatedDevice::receivedKnowsJunkToo()
{
    const QByteArray controlChange = QByteArray::fromHex("b04a40");
    QVERIFY(m_device->receive(keep() + controlChange + end()));
    QCOMPARE(m_device->received(), QList({keep(), controlChange, end()}));
}

void TestSimulatedDevice::logForgetsTheOldest()
{
    for (int i = 0; i < CTrafficLog::k_limit + 5; ++i)
        m_device->turn(0, i % 128);
    const QList<Traffic> traffic = m_device->trafficSince(0);
    QCOMPARE(traffic.size(), CTrafficLog::k_limit);
    QCOMPARE(traffic.first().number, 5);
    QCOMPARE(traffic.last().number, CTrafficLog::k_limit + 4);
    QCOMPARE(m_device->trafficSince(CTrafficLog::k_limit + 100).size(), 0);
}

void TestSimulatedDevice::packetsOfOneThreadKeepTheirOrderWhileAnotherSends()
{
    constexpr int k_rounds = 2000;
    std::thread editor([this] {
        for (int i = 0; i < k_rounds; ++i) {
            if (!m_device->receive(keep()))
                return;
        }
    });
    for (int i = 0; i < k_rounds; ++i)
        m_device->turn(i / 128 % 8, i % 128);
    editor.join();

    int keeps = 0;
    int turns = 0;
    for (const QByteArray& packet : m_transport.take()) {
        if (packet == keep()) {
            ++keeps;
        } else {
            QCOMPARE(packet, noticeValue(turns / 128 % 8, turns % 128));
            ++turns;
        }
    }
    QCOMPARE(keeps, k_rounds);
    QCOMPARE(turns, k_rounds);
}

KTZ_TEST(QCoreApplication, TestSimulatedDevice)
#include "TestSimulatedDevice.moc"
