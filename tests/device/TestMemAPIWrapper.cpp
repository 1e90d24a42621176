#include "app/common/CMutex.h"
#include "app/common/Constants.h"
#include "device/CMemAPIObserver.h"
#include "device/CMemAPIWrapper.h"
#include "tests/device/Reception.h"
#include "tests/support/CTestCase.h"
#include "tests/support/SimulatedDeviceFixture.h"

namespace
{
/// Writes the ids down for which it was called; watches all eight knobs.
class CIdNotes
{
  public:
    explicit CIdNotes(CMemAPI& memory)
    {
        for (int knob = 0; knob < k_numOfKnobs; ++knob) {
            for (const int category : {k_knobValueCategory, k_ccNumCategory, k_midiChCategory, k_maxCategory,
                                       k_minCategory, k_ledTypeCategory})
                watch(memory, category + knob);
        }
    }

    [[nodiscard]] QList<int> take()
    {
        const std::scoped_lock lock(m_mutex);
        return std::exchange(m_ids, {});
    }

    [[nodiscard]] qsizetype count()
    {
        const std::scoped_lock lock(m_mutex);
        return m_ids.size();
    }

  private:
    class CObserver : public CMemAPIObserver
    {
      public:
        CObserver(CIdNotes& notes, int id) : m_notes(notes), m_id(id) {}

        void paramChanged() override
        {
            const std::scoped_lock lock(m_notes.m_mutex);
            m_notes.m_ids.append(m_id);
        }

      private:
        CIdNotes& m_notes;
        int m_id;
    };

    void watch(CMemAPI& memory, int id)
    {
        m_observers.push_back(std::make_unique<CObserver>(*this, id));
        memory.registerObserver(id, m_observers.back().get());
    }

    CMutex m_mutex;
    QList<int> m_ids;
    std::vector<std::unique_ptr<CObserver>> m_observers;
};

void setFactoryPreset(CMemAPIWrapper& memory)
{
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        for (std::size_t i = 0; i < k_settingCategories.size(); ++i)
            memory.setParam(k_settingCategories[i] + knob, k_defaultParamList[static_cast<std::size_t>(knob)][i]);
    }
}

QList<int> settingIds(int knob)
{
    return {1100 + knob, 1200 + knob, 1300 + knob, 1400 + knob, 1500 + knob};
}

} // namespace

class TestMemAPIWrapper : public CTestCase
{
    Q_OBJECT

  private slots:
    void settingsAreThoseThatTheDeviceHas();
    void uninitializedMemoryDoesNothing();
    void initializeOpensTheEditorsPorts();
    void inputThatIsRefusedClosesTheOutput();
    void absentDeviceLeavesThePortsClosed();
    void idsReadTheirOwnKnob();
    void setParamNotifiesNobodyAndSendsNothing();
    void idsThatAreNoSettingsNeverEnterTheTable_data();
    void idsThatAreNoSettingsNeverEnterTheTable();
    void updateKnobNotifiesTheSettingsInOrder();
    void noticeValueNotifiesItsKnobAlone();
    void changeParamReplyNotifiesTheFiveSettingsInOrder();
    void changeParamReplyOntoAnEmptyKnobTakesNothing();
    void reportOfWhatIsKnownIsNoChange();
    void replyForAKnobAboveSevenIsIgnored_data();
    void replyForAKnobAboveSevenIsIgnored();
    void severalTypesInOnePacketAreDevelopedAsTheLast();
    void requestAllWithoutAnOutputGivesTrueAndSendsNothing();
    void requestAllBringsTheDevicesSettings();
    void requestAllRefusedGivesFalse();
    void sendKnobTellsTheDeviceAlone();
    void allKnobsGoToObserversAndDeviceOneByOne();
    void messageGoesToTheEditorsPort();
    void revertSendsEightMessagesKnobZeroFirst();
    void revertBringsTheBackupBack();
    void copiedKnobLandsOnAnother();
    void pasteOntoAnEmptyKnobSendsZeros();
    void collectedData();
    void collectedDataHasNoValueAbove127();
    void dataThatCannotBeCollected();
    void destructionSendsNothing();
};

void TestMemAPIWrapper::settingsAreThoseThatTheDeviceHas()
{
    QCOMPARE(k_settingParams.size(), k_deviceSettings.size());
    for (std::size_t i = 0; i < k_numOfSettings; ++i) {
        QCOMPARE(k_settingParams[i].highest, k_deviceSettings[i].last);
        QVERIFY(std::ranges::equal(k_settingParams[i].factory, k_deviceSettings[i].factory));
    }
}

void TestMemAPIWrapper::uninitializedMemoryDoesNothing()
{
    CMemAPIWrapper memory;
    memory.setParam(1100, 5);
    QCOMPARE(memory.getParam(1100), 0);
    memory.setKnob(1000, 5);
    QCOMPARE(memory.getKnob(1000), 0);
    memory.updateKnob(0);
    memory.copyParamListFromKnobValueList(0);
    memory.pasteParamListToKnobValueList(0);
    QVERIFY(memory.requestAllParam());
    QVERIFY(!memory.isConnectOutput());
    memory.backupParams();
    memory.revertParams();
    memory.sendKnob(0);
    memory.updateAndSendAllKnobs();
    QVERIFY(!memory.sendMessage(k_endMessage, 0));
    QVERIFY(memory.developMessageData(k_changeParamMessage, {{QStringLiteral("0"), ParamList()}}));
    ParamList data;
    QVERIFY(!memory.collectMessageData(k_changeParamMessage, 0, &data));
}

void TestMemAPIWrapper::initializeOpensTheEditorsPorts()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPIWrapper memory;
    memory.initialize();
    QVERIFY(memory.isConnectOutput());
    QVERIFY(memory.getMidiInputByString(k_jxEditorPortName));
    QVERIFY(fixture.sent().isEmpty());
}

void TestMemAPIWrapper::inputThatIsRefusedClosesTheOutput()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CSimulatedSystem::instance().refuseOpens(1);
    CMemAPIWrapper memory;
    memory.initialize();
    QVERIFY(!memory.isConnectOutput());
    QVERIFY(!memory.sendMessage(k_jxEditorPortName, k_startMessage, 0));
}

void TestMemAPIWrapper::absentDeviceLeavesThePortsClosed()
{
    SimulatedDeviceFixture fixture;
    CMemAPIWrapper memory;
    memory.initialize();
    QVERIFY(!memory.isConnectOutput());
    QVERIFY(!memory.sendMessage(k_jxEditorPortName, k_startMessage, 0));
}

void TestMemAPIWrapper::idsReadTheirOwnKnob()
{
    SimulatedDeviceFixture fixture;
    CMemAPIWrapper memory;
    memory.initialize();
    memory.setParam(1305, 99);
    QCOMPARE(memory.getParam(1305), 99);
    QCOMPARE(memory.getParam(1304), 0);
    QCOMPARE(memory.getParam(0), 0);
    QCOMPARE(memory.getKnob(0), 0);
    memory.setKnob(1003, 64);
    memory.setKnob(0, 1);
    QCOMPARE(memory.getKnob(1003), 64);
}

void TestMemAPIWrapper::setParamNotifiesNobodyAndSendsNothing()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPIWrapper memory;
    memory.initialize();
    CIdNotes notes(memory);
    setFactoryPreset(memory);
    memory.setKnob(1003, 64);
    QVERIFY(notes.take().isEmpty());
    QVERIFY(fixture.sent().isEmpty());
}

void TestMemAPIWrapper::idsThatAreNoSettingsNeverEnterTheTable_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("close button") << 100;
    QTest::newRow("minimise button") << 101;
    QTest::newRow("keep-in-front button") << 102;
    QTest::newRow("knob value") << 1003;
    QTest::newRow("knob 8") << 1108;
    QTest::newRow("no id") << 0;
}

void TestMemAPIWrapper::idsThatAreNoSettingsNeverEnterTheTable()
{
    QFETCH(int, id);
    SimulatedDeviceFixture fixture;
    CMemAPIWrapper memory;
    memory.initialize();
    setFactoryPreset(memory);
    memory.setDirty(false);
    const ParamList before = memory.getParamList();
    memory.setParam(id, 1);
    memory.setParam(3, id, 1);
    QCOMPARE(memory.getParamList(), before);
    QVERIFY(!memory.isDirty());
    QVERIFY(!memory.isEditable(id));
    QVERIFY(memory.isEditable(1103));
}

void TestMemAPIWrapper::updateKnobNotifiesTheSettingsInOrder()
{
    SimulatedDeviceFixture fixture;
    CMemAPIWrapper memory;
    memory.initialize();
    CIdNotes notes(memory);
    memory.updateKnob(4);
    QVERIFY(notes.take().isEmpty());
    setFactoryPreset(memory);
    memory.updateKnob(4);
    QCOMPARE(notes.take(), settingIds(4));
}

void TestMemAPIWrapper::noticeValueNotifiesItsKnobAlone()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPIWrapper memory;
    memory.initialize();
    CIdNotes notes(memory);
    fixture.device.turn(3, 64);
    QTRY_COMPARE(notes.count(), 1);
    QCOMPARE(notes.take(), QList<int>{1003});
    QCOMPARE(memory.getKnob(1003), 64);
}

void TestMemAPIWrapper::changeParamReplyNotifiesTheFiveSettingsInOrder()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPIWrapper memory;
    memory.initialize();
    setFactoryPreset(memory);
    CIdNotes notes(memory);
    fixture.device.setSettings(4, {10, 15, 126, 1, 3});
    fixture.device.reportSettings(4);
    QTRY_COMPARE(notes.count(), 5);
    QCOMPARE(notes.take(), settingIds(4));
    QCOMPARE(memory.getParam(1104), 10);
    QCOMPARE(memory.getParam(1204), 15);
    QCOMPARE(memory.getParam(1304), 126);
    QCOMPARE(memory.getParam(1404), 1);
    QCOMPARE(memory.getParam(1504), 3);
}

void TestMemAPIWrapper::changeParamReplyOntoAnEmptyKnobTakesNothing()
{
    SimulatedDeviceFixture fixture;
    CMemAPIWrapper memory;
    memory.initialize();
    CIdNotes notes(memory);
    QVERIFY(receive(memory, "F043103E18050203050A0F7F0003F7"));
    QCOMPARE(memory.getParam(1105), 0);
    QVERIFY(notes.take().isEmpty());
}

void TestMemAPIWrapper::reportOfWhatIsKnownIsNoChange()
{
    SimulatedDeviceFixture fixture;
    CMemAPIWrapper memory;
    memory.initialize();
    setFactoryPreset(memory);
    memory.setParam(1105, 10);
    memory.setDirty(false);
    CIdNotes notes(memory);
    QVERIFY(receive(memory, "F043103E18050203050A007F0000F7"));
    QVERIFY(!memory.isDirty());
    QCOMPARE(notes.take(), settingIds(5));
    QVERIFY(receive(memory, "F043103E18050203050A007F0001F7"));
    QVERIFY(memory.isDirty());
    // What was unsaved before stays so.
    QVERIFY(receive(memory, "F043103E18050203050A007F0001F7"));
    QVERIFY(memory.isDirty());
}

void TestMemAPIWrapper::replyForAKnobAboveSevenIsIgnored_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::newRow("settings of knob 8") << QByteArray("F043103E18050203080A0F7F0003F7");
    QTest::newRow("settings of knob 127") << QByteArray("F043103E180502037F0A0F7F0003F7");
    QTest::newRow("value of knob 8") << QByteArray("F043103E180502040840F7");
    QTest::newRow("value of knob 200, whose id is another's channel") << QByteArray("F043103E18050204C840F7");
}

void TestMemAPIWrapper::replyForAKnobAboveSevenIsIgnored()
{
    QFETCH(QByteArray, hex);
    SimulatedDeviceFixture fixture;
    CMemAPIWrapper memory;
    memory.initialize();
    setFactoryPreset(memory);
    memory.setDirty(false);
    const ParamList before = memory.getParamList();
    CIdNotes notes(memory);
    QVERIFY(receive(memory, hex.constData()));
    QCOMPARE(memory.getParamList(), before);
    QVERIFY(!memory.isDirty());
    QVERIFY(notes.take().isEmpty());
}

void TestMemAPIWrapper::severalTypesInOnePacketAreDevelopedAsTheLast()
{
    SimulatedDeviceFixture fixture;
    CMemAPIWrapper memory;
    memory.initialize();
    setFactoryPreset(memory);
    CIdNotes notes(memory);
    // One map and one type for the whole packet: the value is developed, the settings before it are not.
    QVERIFY(receive(memory, "F043103E18050203050A0F7F0003F7F043103E180502040740F7"));
    QCOMPARE(notes.take(), QList<int>{1007});
    QCOMPARE(memory.getParam(1105), 72);
    QCOMPARE(memory.getKnob(1007), 64);
    // And the other way round.
    QVERIFY(receive(memory, "F043103E180502040741F7F043103E18050203050A0F7F0003F7"));
    QCOMPARE(notes.take(), settingIds(5));
    QCOMPARE(memory.getParam(1105), 10);
    QCOMPARE(memory.getKnob(1007), 64);
    QCOMPARE(memory.getParamList().size(), 8);
}

void TestMemAPIWrapper::requestAllWithoutAnOutputGivesTrueAndSendsNothing()
{
    SimulatedDeviceFixture fixture;
    CMemAPIWrapper memory;
    memory.initialize();
    QVERIFY(memory.requestAllParam());
    QVERIFY(fixture.sent().isEmpty());
}

void TestMemAPIWrapper::requestAllBringsTheDevicesSettings()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPIWrapper memory;
    memory.initialize();
    setFactoryPreset(memory);
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        fixture.device.setSettings(knob, {knob + 1, knob, 120 + knob, knob * 2, knob % 4});
        fixture.device.setValue(knob, knob * 10);
    }
    CIdNotes notes(memory);
    QVERIFY(memory.requestAllParam());
    QCOMPARE(fixture.sent(), QStringList{QStringLiteral("f043303e180502007ff7")});
    QTRY_COMPARE(notes.count(), 48);
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        QCOMPARE(memory.getParam(1100 + knob), knob + 1);
        QCOMPARE(memory.getParam(1200 + knob), knob);
        QCOMPARE(memory.getParam(1300 + knob), 120 + knob);
        QCOMPARE(memory.getParam(1400 + knob), knob * 2);
        QCOMPARE(memory.getParam(1500 + knob), knob % 4);
        QCOMPARE(memory.getKnob(1000 + knob), knob * 10);
    }
}

void TestMemAPIWrapper::requestAllRefusedGivesFalse()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPIWrapper memory;
    memory.initialize();
    fixture.device.refuseSend(1);
    QVERIFY(!memory.requestAllParam());
}

void TestMemAPIWrapper::sendKnobTellsTheDeviceAlone()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPIWrapper memory;
    memory.initialize();
    setFactoryPreset(memory);
    memory.setDirty(false);
    CIdNotes notes(memory);
    memory.sendKnob(2);
    QCOMPARE(fixture.sent(), QStringList{QStringLiteral("f043103e18050203020a007f0002f7")});
    QVERIFY(notes.take().isEmpty());
    QVERIFY(!memory.isDirty());
}

void TestMemAPIWrapper::allKnobsGoToObserversAndDeviceOneByOne()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPIWrapper memory;
    memory.initialize();
    setFactoryPreset(memory);

    // Each knob's observers are called before it is sent, and after the one before it was.
    class CObserver : public CMemAPIObserver
    {
      public:
        void paramChanged() override
        {
            m_sentBefore.append(SimulatedDeviceFixture::sent().size());
        }

        QList<qsizetype> m_sentBefore;
    } observer;
    for (int knob = 0; knob < k_numOfKnobs; ++knob)
        memory.registerObserver(k_ccNumCategory + knob, &observer);
    memory.updateAndSendAllKnobs();
    QCOMPARE(observer.m_sentBefore, QList<qsizetype>({0, 1, 2, 3, 4, 5, 6, 7}));

    // A knob that is refused holds up none of the others.
    SimulatedDeviceFixture::forgetSent();
    fixture.device.clearTraffic();
    fixture.device.refuseSend(3);
    memory.updateAndSendAllKnobs();
    QCOMPARE(fixture.device.received().size(), 7);
}

void TestMemAPIWrapper::messageGoesToTheEditorsPort()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPIWrapper memory;
    memory.initialize();
    QVERIFY(memory.sendMessage(k_endMessage, 0));
    QCOMPARE(fixture.sent(), QStringList{QStringLiteral("f043103e18050202f7")});
    fixture.device.refuseSend(1);
    QVERIFY(!memory.sendMessage(k_endMessage, 0));
}

void TestMemAPIWrapper::revertSendsEightMessagesKnobZeroFirst()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPIWrapper memory;
    memory.initialize();
    setFactoryPreset(memory);
    memory.backupParams();
    memory.revertParams();
    const QStringList sent = fixture.sent();
    QCOMPARE(sent.size(), 8);
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        QCOMPARE(sent[knob].size(), 30);
        QVERIFY(sent[knob].startsWith(QStringLiteral("f043103e180502030%1").arg(knob)));
    }
    QCOMPARE(sent[2], QStringLiteral("f043103e1805020302") + QStringLiteral("0a007f0002") + QStringLiteral("f7"));
}

void TestMemAPIWrapper::revertBringsTheBackupBack()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPIWrapper memory;
    memory.initialize();
    setFactoryPreset(memory);
    memory.backupParams();
    const ParamList before = memory.getParamList();
    memory.setParam(1103, 99);
    memory.setDirty(false);
    CIdNotes notes(memory);
    memory.revertParams();
    QCOMPARE(memory.getParamList(), before);
    QVERIFY(memory.isDirty());
    QCOMPARE(notes.take().size(), 40);
    QCOMPARE(fixture.device.settings(3), k_factorySettings[3]);
}

void TestMemAPIWrapper::copiedKnobLandsOnAnother()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPIWrapper memory;
    memory.initialize();
    setFactoryPreset(memory);
    CIdNotes notes(memory);
    memory.copyParamListFromKnobValueList(2);
    memory.setParam(1102, 55); // the copy is of the moment of copying
    memory.pasteParamListToKnobValueList(5);
    QCOMPARE(notes.take(), settingIds(5));
    QCOMPARE(memory.getParam(1105), 10);
    QCOMPARE(memory.getParam(1505), 2);
    QCOMPARE(fixture.sent(), QStringList{QStringLiteral("f043103e18050203050a007f0002f7")});
    QCOMPARE(fixture.device.settings(5), k_factorySettings[2]);
}

void TestMemAPIWrapper::pasteOntoAnEmptyKnobSendsZeros()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPIWrapper memory;
    memory.initialize();
    memory.setParam(1102, 55);
    memory.copyParamListFromKnobValueList(2);
    CIdNotes notes(memory);
    memory.pasteParamListToKnobValueList(5);
    QVERIFY(notes.take().isEmpty());
    QCOMPARE(memory.getParam(1105), 0);
    QCOMPARE(fixture.sent(), QStringList{QStringLiteral("f043103e18050203050000000000f7")});
}

void TestMemAPIWrapper::collectedData()
{
    SimulatedDeviceFixture fixture;
    CMemAPIWrapper memory;
    memory.initialize();
    memory.setParam(1305, 99);
    ParamList data;
    QVERIFY(memory.collectMessageData(k_changeParamMessage, 1505, &data));
    QCOMPARE(data, (ParamList{{QStringLiteral("5"), ParamList{{QStringLiteral("1305"), 99}}}}));
}

void TestMemAPIWrapper::collectedDataHasNoValueAbove127()
{
    // A byte of 200 on the wire would end the message that it is in.
    SimulatedDeviceFixture fixture;
    CMemAPIWrapper memory;
    memory.initialize();
    setFactoryPreset(memory);
    QVERIFY(receive(memory, "F043103E1805020305C880FF7F03F7"));
    QCOMPARE(memory.getParam(1105), 200);
    ParamList data;
    QVERIFY(memory.collectMessageData(k_changeParamMessage, 1505, &data));
    const ParamList settings = data.value(QStringLiteral("5")).toMap();
    QCOMPARE(settings.values(), (QList<QVariant>{127, 127, 127, 127, 3}));
}

void TestMemAPIWrapper::dataThatCannotBeCollected()
{
    SimulatedDeviceFixture fixture;
    CMemAPIWrapper memory;
    memory.initialize();
    QVERIFY(!memory.collectMessageData(k_changeParamMessage, 1505, nullptr));
    ParamList data;
    for (const int type : {0, 1, 2, 4, 5})
        QVERIFY(!memory.collectMessageData(type, 1505, &data));
    QVERIFY(data.isEmpty());
    QVERIFY(!memory.developMessageData(k_requestAllParamMessage, {}));
}

void TestMemAPIWrapper::destructionSendsNothing()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    {
        CMemAPIWrapper memory;
        memory.initialize();
        memory.setConnected(true);
    }
    QVERIFY(fixture.sent().isEmpty());
    // The delivery thread has gone with it: a late report finds nobody.
    fixture.device.turn(1, 5);
}

KTZ_TEST(QCoreApplication, TestMemAPIWrapper)
#include "TestMemAPIWrapper.moc"
