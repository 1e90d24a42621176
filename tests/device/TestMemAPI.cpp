#include "app/common/Constants.h"
#include "device/CMemAPI.h"
#include "device/CMemAPIObserver.h"
#include "device/CMessageManagerWrapper.h"
#include "midi/CMIDIInput.h"
#include "midi/CMIDIOutput.h"
#include "simulator/device/CTrafficLog.h"
#include "tests/device/Reception.h"
#include "tests/support/CTestCase.h"
#include "tests/support/SimulatedDeviceFixture.h"

#include <QSemaphore>

#include <thread>

namespace
{
/// Writes its name down whenever it is called.
class CNotingObserver : public CMemAPIObserver
{
  public:
    CNotingObserver(QStringList& notes, const QString& name) : m_notes(notes), m_name(name) {}

    void paramChanged() override
    {
        m_notes.append(m_name);
    }

  private:
    QStringList& m_notes;
    QString m_name;
};

/// Stays in the call until it is let go.
class CSlowObserver : public CMemAPIObserver
{
  public:
    void paramChanged() override
    {
        entered.release();
        leave.acquire();
        left = true;
    }

    QSemaphore entered;
    QSemaphore leave;
    std::atomic<bool> left = false;
};

} // namespace

class TestMemAPI : public CTestCase
{
    Q_OBJECT

  private slots:
    void uninitializedMemoryDoesNothing();
    void idZeroChangesNothingAndNotifiesNobody();
    void idZeroRegistersNothing();
    void setParamStoresAndNotifies();
    void observersAreCalledInTheOrderOfTheirAdding();
    void observerRegisteredTwiceIsCalledTwiceAndErasedAtOnce();
    void unregisteringOneOfTwoLeavesBoth();
    void unregisteringWaitsForACallInFlight();
    void observerThatUnregistersInItsCallIsNotCalledAgain();
    void wholeListMovesWithoutNotification();
    void portsOpenByName();
    void portsOfAnUnknownNameDoNotOpen();
    void refusedPortIsClosedAgain();
    void portThatWasNeverOpenedGivesNullAndNoSend();
    void closedPortStaysAndOpensAgain();
    void connectedFlagOfAnOutput();
    void sendNeedsOutputCodecAndType();
    void messagesStayWholeWhilePortsAreOpenedAndClosed();
    void memoryMayGoWithAnOpenInput();
    void packetWithoutAWholeMessageGivesFalse();
    void realTimeBytesBetweenPiecesAreNoPartOfTheMessage();
    void startAndKeepRepliesReachTheirObservers();
    void repliesWithoutObserversGiveFalse();
    void endIsAcceptedAndIgnored();
    void otherTypesAreNotDeveloped();
    void replyIsDealtWithWhileTheMessageMutexIsHeld();
    void clearingAReplyObserverWaitsForACallInFlight();
    void clearingAnotherReplyObserverChangesNothing();
};

void TestMemAPI::uninitializedMemoryDoesNothing()
{
    CMemAPI memory;
    memory.setParam(1100, 5);
    QCOMPARE(memory.getParam(1100), 0);
    memory.setParamList({{QStringLiteral("1"), 1}});
    QVERIFY(memory.getParamList().isEmpty());
    memory.setDirty(true);
    QVERIFY(!memory.isDirty());
    QVERIFY(!memory.openInput(k_jxEditorPortName));
    QVERIFY(!memory.openOutput(k_jxEditorPortName));
    memory.closeInput(k_jxEditorPortName);
    memory.closeOutput(k_jxEditorPortName);
    QVERIFY(!memory.getMidiInputByString(k_jxEditorPortName));
    QVERIFY(!memory.getMidiOutputByString(k_jxEditorPortName));
    memory.setOutputConnection(k_jxEditorPortName, true);
    QVERIFY(!memory.isConnectOutput(k_jxEditorPortName));
    QVERIFY(!memory.sendMessage(k_jxEditorPortName, 0, 0));
    QVERIFY(!receive(memory, "F043103E18050200F7"));
    QVERIFY(!memory.isConnected());
}

void TestMemAPI::idZeroChangesNothingAndNotifiesNobody()
{
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    QStringList notes;
    CNotingObserver observer(notes, QStringLiteral("a"));
    memory.registerObserver(0, &observer);
    memory.setParam(0, 5);
    QVERIFY(notes.isEmpty());
    QCOMPARE(memory.getParam(0), 0);
    QVERIFY(!memory.isDirty());
}

void TestMemAPI::idZeroRegistersNothing()
{
    CMemAPI memory;
    QStringList notes;
    CNotingObserver observer(notes, QStringLiteral("a"));
    memory.registerObserver(0, &observer);
    memory.notifyParamChabgedById(0);
    memory.unregisterObserver(0, &observer);
    QVERIFY(notes.isEmpty());
}

void TestMemAPI::setParamStoresAndNotifies()
{
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    QStringList notes;
    CNotingObserver observer(notes, QStringLiteral("a"));
    memory.registerObserver(1100, &observer);
    memory.setParam(1100, 5);
    memory.setParam(1101, 6);
    QCOMPARE(notes, QStringList{QStringLiteral("a")});
    QCOMPARE(memory.getParam(1100), 5);
    QVERIFY(memory.isDirty());
    memory.setDirty(false);
    QVERIFY(!memory.isDirty());
    QVERIFY(memory.isEditable(1100));
    QVERIFY(!memory.isEditable(0));
}

void TestMemAPI::observersAreCalledInTheOrderOfTheirAdding()
{
    CMemAPI memory;
    QStringList notes;
    CNotingObserver a(notes, QStringLiteral("a"));
    CNotingObserver b(notes, QStringLiteral("b"));
    memory.registerObserver(7, &b);
    memory.registerObserver(7, &a);
    memory.notifyParamChabgedById(7);
    QCOMPARE(notes, (QStringList{QStringLiteral("b"), QStringLiteral("a")}));
    memory.notifyParamChabgedById(8);
    QCOMPARE(notes.size(), 2);
}

void TestMemAPI::observerRegisteredTwiceIsCalledTwiceAndErasedAtOnce()
{
    CMemAPI memory;
    QStringList notes;
    CNotingObserver observer(notes, QStringLiteral("a"));
    memory.registerObserver(7, &observer);
    memory.registerObserver(7, &observer);
    memory.notifyParamChabgedById(7);
    QCOMPARE(notes.size(), 2);
    memory.unregisterObserver(7, &observer);
    memory.notifyParamChabgedById(7);
    QCOMPARE(notes.size(), 2);
}

void TestMemAPI::unregisteringOneOfTwoLeavesBoth()
{
    CMemAPI memory;
    QStringList notes;
    CNotingObserver a(notes, QStringLiteral("a"));
    CNotingObserver b(notes, QStringLiteral("b"));
    memory.registerObserver(7, &a);
    memory.registerObserver(7, &b);
    memory.unregisterObserver(7, &a);
    memory.notifyParamChabgedById(7);
    QCOMPARE(notes, (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
}

void TestMemAPI::unregisteringWaitsForACallInFlight()
{
    CMemAPI memory;
    CSlowObserver observer;
    memory.registerObserver(1100, &observer);
    std::thread delivery([&] { memory.notifyParamChabgedById(1100); });
    observer.entered.acquire();
    std::thread release([&] {
        // So that whoever does not wait for the call is through by then.
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        observer.leave.release();
    });
    memory.unregisterObserver(1100, &observer);
    QVERIFY(observer.left);
    delivery.join();
    release.join();
}

void TestMemAPI::observerThatUnregistersInItsCallIsNotCalledAgain()
{
    struct CLeavingObserver : CMemAPIObserver
    {
        explicit CLeavingObserver(CMemAPI& memory) : m_memory(memory) {}
        void paramChanged() override
        {
            ++m_calls;
            m_memory.unregisterObserver(1100, this);
        }
        CMemAPI& m_memory;
        int m_calls = 0;
    };
    CMemAPI memory;
    CLeavingObserver observer(memory);
    memory.registerObserver(1100, &observer);
    memory.registerObserver(1100, &observer);
    memory.notifyParamChabgedById(1100);
    memory.notifyParamChabgedById(1100);
    QCOMPARE(observer.m_calls, 1);
}

void TestMemAPI::wholeListMovesWithoutNotification()
{
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    QStringList notes;
    CNotingObserver observer(notes, QStringLiteral("a"));
    memory.registerObserver(1, &observer);
    const ParamList list{{QStringLiteral("1"), 2}};
    memory.setParamList(list);
    QCOMPARE(memory.getParamList(), list);
    QVERIFY(notes.isEmpty());
}

void TestMemAPI::portsOpenByName()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    QVERIFY(memory.openInput(k_jxEditorPortName));
    QVERIFY(memory.openOutput(k_jxEditorPortName));
    QVERIFY(memory.getMidiInputByString(k_jxEditorPortName)->isMIDIConnect());
    QVERIFY(memory.isConnectOutput(k_jxEditorPortName));
    // Opening what is open changes nothing.
    const CMIDIInput* input = memory.getMidiInputByString(k_jxEditorPortName);
    QVERIFY(memory.openInput(k_jxEditorPortName));
    QCOMPARE(memory.getMidiInputByString(k_jxEditorPortName), input);
    memory.closeInput(k_jxEditorPortName);
}

void TestMemAPI::portsOfAnUnknownNameDoNotOpen()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    QVERIFY(!memory.openInput(QStringLiteral("Trellwick KTZ-JX Port4")));
    QVERIFY(!memory.openOutput(QStringLiteral("Trellwick KTZ-JX")));
}

void TestMemAPI::refusedPortIsClosedAgain()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    CSimulatedSystem::instance().refuseOpens(2);
    QVERIFY(!memory.openInput(k_jxEditorPortName));
    QVERIFY(!memory.openOutput(k_jxEditorPortName));
    QVERIFY(!memory.getMidiInputByString(k_jxEditorPortName)->isMIDIConnect());
    QVERIFY(!memory.isConnectOutput(k_jxEditorPortName));
    // The refusal was no final word.
    QVERIFY(memory.openInput(k_jxEditorPortName));
    QVERIFY(memory.openOutput(k_jxEditorPortName));
    memory.closeInput(k_jxEditorPortName);
}

void TestMemAPI::portThatWasNeverOpenedGivesNullAndNoSend()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    QVERIFY(!memory.getMidiOutputByString(k_jxEditorPortName));
    QVERIFY(!memory.getMidiInputByString(k_jxEditorPortName));
    QVERIFY(!memory.sendMessage(k_jxEditorPortName, 0, 0));
    QVERIFY(fixture.sent().isEmpty());
}

void TestMemAPI::closedPortStaysAndOpensAgain()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    QVERIFY(memory.openOutput(k_jxEditorPortName));
    const CMIDIOutput* output = memory.getMidiOutputByString(k_jxEditorPortName);
    memory.closeOutput(k_jxEditorPortName);
    QCOMPARE(memory.getMidiOutputByString(k_jxEditorPortName), output);
    QVERIFY(!memory.sendMessage(k_jxEditorPortName, 0, 0));
    QVERIFY(memory.openOutput(k_jxEditorPortName));
    QVERIFY(memory.sendMessage(k_jxEditorPortName, 0, 0));
}

void TestMemAPI::connectedFlagOfAnOutput()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    QVERIFY(memory.openOutput(k_jxEditorPortName));
    memory.setOutputConnection(k_jxEditorPortName, false);
    QVERIFY(!memory.isConnectOutput(k_jxEditorPortName));
    QVERIFY(!memory.sendMessage(k_jxEditorPortName, 1, 0));
    memory.setOutputConnection(k_jxEditorPortName, true);
    QVERIFY(memory.sendMessage(k_jxEditorPortName, 1, 0));
}

void TestMemAPI::sendNeedsOutputCodecAndType()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    QVERIFY(memory.openOutput(k_jxEditorPortName));
    QVERIFY(memory.sendMessage(k_jxEditorPortName, 0, 0));
    QVERIFY(memory.sendMessage(k_jxEditorPortName, 1, 0));
    QVERIFY(memory.sendMessage(k_jxEditorPortName, 2, 0));
    QCOMPARE(fixture.sent(), (QStringList{QStringLiteral("f043103e18050200f7"), QStringLiteral("f043103e18050201f7"),
                                          QStringLiteral("f043103e18050202f7")}));
    fixture.forgetSent();
    // The plain memory collects no data for a change-parameter message.
    for (const int type : {3, 4, 5, 6})
        QVERIFY(!memory.sendMessage(k_jxEditorPortName, type, 1100));
    QVERIFY(!memory.sendMessage(QStringLiteral("elsewhere"), 0, 0));
    QVERIFY(fixture.sent().isEmpty());
}

void TestMemAPI::messagesStayWholeWhilePortsAreOpenedAndClosed()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    // The device remembers no more keeps than these, with its answer to each.
    constexpr qsizetype k_mostKeeps = CTrafficLog::k_limit / 2;
    std::atomic<bool> stop = false;
    qsizetype taken = 0;
    std::thread keep([&] {
        while (!stop && taken < k_mostKeeps)
            taken += memory.sendMessage(k_jxEditorPortName, k_keepMessage, 0) ? 1 : 0;
    });
    const QStringList names{QStringLiteral("Trellwick KTZ-JX Port1"), QStringLiteral("Trellwick KTZ-JX Port2"),
                            k_jxEditorPortName};
    for (int i = 0; i < 300; ++i) {
        const QString& name = names.at(i % names.size());
        QVERIFY(memory.openOutput(name));
        QVERIFY(memory.openInput(name));
        memory.closeOutput(name);
        memory.closeInput(name);
    }
    stop = true;
    keep.join();
    QCOMPARE(fixture.device.received().count(QByteArray::fromHex("f043103e18050201f7")), taken);
}

void TestMemAPI::memoryMayGoWithAnOpenInput()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    {
        CMemAPI memory;
        memory.initialize(std::make_unique<CMessageManagerWrapper>());
        QVERIFY(memory.openInput(k_jxEditorPortName));
    }
    fixture.device.turn(0, 64); // nobody is there any more
}

void TestMemAPI::packetWithoutAWholeMessageGivesFalse()
{
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    QStringList notes;
    CNotingObserver observer(notes, QStringLiteral("start"));
    memory.startReplyObserver().set(&observer);
    QVERIFY(!receive(memory, "F043103E180502"));
    QVERIFY(notes.isEmpty());
    QVERIFY(receive(memory, "00F7"));
    QCOMPARE(notes.size(), 1);
    memory.startReplyObserver().clear(&observer);
}

void TestMemAPI::realTimeBytesBetweenPiecesAreNoPartOfTheMessage()
{
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    QStringList notes;
    CNotingObserver observer(notes, QStringLiteral("start"));
    memory.startReplyObserver().set(&observer);
    for (const char* byte : {"F8", "FA", "FE", "FF"}) {
        QVERIFY(!receive(memory, "F043103E"));
        QVERIFY(!receive(memory, byte));
        QVERIFY(receive(memory, "18050200F7"));
    }
    QCOMPARE(notes.size(), 4);
    memory.startReplyObserver().clear(&observer);
}

void TestMemAPI::startAndKeepRepliesReachTheirObservers()
{
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    QStringList notes;
    CNotingObserver start(notes, QStringLiteral("start"));
    CNotingObserver keep(notes, QStringLiteral("keep"));
    memory.startReplyObserver().set(&start);
    memory.keepReplyObserver().set(&keep);
    QVERIFY(receive(memory, "F043103E18050201F7"));
    QVERIFY(receive(memory, "F043103E18050200F7"));
    QCOMPARE(notes, (QStringList{QStringLiteral("keep"), QStringLiteral("start")}));
}

void TestMemAPI::repliesWithoutObserversGiveFalse()
{
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    QVERIFY(!receive(memory, "F043103E18050200F7"));
    QVERIFY(!receive(memory, "F043103E18050201F7"));
}

void TestMemAPI::endIsAcceptedAndIgnored()
{
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    QVERIFY(receive(memory, "F043103E18050202F7"));
    QVERIFY(!memory.isDirty());
}

void TestMemAPI::otherTypesAreNotDeveloped()
{
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    QVERIFY(!receive(memory, "F043103E18050203050A0F7F0003F7"));
    QVERIFY(!receive(memory, "F043103E180502040740F7"));
    QVERIFY(!memory.isDirty());
    ParamList data;
    QVERIFY(!memory.collectMessageData(3, 1100, &data));
    QVERIFY(data.isEmpty());
}

void TestMemAPI::replyIsDealtWithWhileTheMessageMutexIsHeld()
{
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    QStringList notes;
    CNotingObserver observer(notes, QStringLiteral("start"));
    memory.startReplyObserver().set(&observer);
    memory.lockMessageReceived();
    memory.lockMessageReceived(); // recursive
    std::thread delivery([&] { receive(memory, "F043103E18050200F7"); });
    delivery.join();
    memory.unlockMessageReceived();
    memory.unlockMessageReceived();
    QCOMPARE(notes.size(), 1);
}

void TestMemAPI::clearingAReplyObserverWaitsForACallInFlight()
{
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    CSlowObserver observer;
    memory.keepReplyObserver().set(&observer);
    std::thread delivery([&] { receive(memory, "F043103E18050201F7"); });
    observer.entered.acquire();
    std::thread release([&] {
        // So that whoever does not wait for the call is through by then.
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        observer.leave.release();
    });
    memory.keepReplyObserver().clear(&observer);
    QVERIFY(observer.left);
    delivery.join();
    release.join();
    QVERIFY(!receive(memory, "F043103E18050201F7"));
}

void TestMemAPI::clearingAnotherReplyObserverChangesNothing()
{
    CMemAPI memory;
    memory.initialize(std::make_unique<CMessageManagerWrapper>());
    QStringList notes;
    CNotingObserver first(notes, QStringLiteral("first"));
    CNotingObserver second(notes, QStringLiteral("second"));
    memory.startReplyObserver().set(&first);
    memory.startReplyObserver().set(&second);
    memory.startReplyObserver().clear(&first);
    QVERIFY(receive(memory, "F043103E18050200F7"));
    QCOMPARE(notes, QStringList{QStringLiteral("second")});
}

KTZ_TEST(QCoreApplication, TestMemAPI)
#include "TestMemAPI.moc"
