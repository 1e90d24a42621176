#include "ctl/KnobAddress.h"
#include "ctl/SettingNames.h"
#include "tests/support/CTestCase.h"

class TestKnobAddress : public CTestCase
{
    Q_OBJECT

  private slots:
    void addresses_data();
    void addresses();
    void wrongAddresses_data();
    void wrongAddresses();
    void assignments_data();
    void assignments();
    void wrongAssignments_data();
    void wrongAssignments();
    void laterAssignmentWins();
    void everyValueIsReadAsItIsWritten();
    void valuesOutOfRangeAreShownAsTheyAre();
    void nearNames_data();
    void nearNames();
};

void TestKnobAddress::addresses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("settings");
    QTest::newRow("first knob") << "1" << 0 << 0 << 5;
    QTest::newRow("last knob") << "8" << 7 << 7 << 5;
    QTest::newRow("setting") << "3.cc" << 2 << 2 << 1;
    QTest::newRow("range") << "1-4.channel" << 0 << 3 << 1;
    QTest::newRow("range of one") << "2-2" << 1 << 1 << 5;
    QTest::newRow("all") << "all.max" << 0 << 7 << 1;
}

void TestKnobAddress::addresses()
{
    QFETCH(QString, text);
    KnobAddress address;
    QCOMPARE(KnobAddresses::parse(text, &address), QString());
    QTEST(int(address.firstKnob), "first");
    QTEST(int(address.lastKnob), "last");
    QTEST(int(address.settings.size()), "settings");
    QCOMPARE(address.isWholeKnob, !text.contains(u'.'));
}

void TestKnobAddress::wrongAddresses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("error");
    for (const char* text : {"0", "9", "-1", "", "12", "1-", "-", "4-1", "1-9", "all-2", "1,2", "\u0661"}) {
        const QString knob = QString::fromUtf8(text);
        QTest::newRow(qPrintable("knob " + knob))
            << knob << QStringLiteral("\"%1\" is no knob: 1 to 8, such as 3, 1-4 or all").arg(knob);
    }
    QTest::newRow("setting") << "3.volume"
                             << "\"volume\" is no setting: cc, channel, max, min, led";
    QTest::newRow("near setting") << "3.chanel"
                                  << "\"chanel\" is no setting: cc, channel, max, min, led; did you mean \"channel\"?";
    QTest::newRow("no setting") << "3."
                                << "\"\" is no setting: cc, channel, max, min, led";
}

void TestKnobAddress::wrongAddresses()
{
    QFETCH(QString, text);
    KnobAddress address;
    QTEST(KnobAddresses::parse(text, &address), "error");
}

void TestKnobAddress::assignments_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("knob");
    QTest::addColumn<int>("setting");
    QTest::addColumn<int>("value");
    QTest::newRow("lowest cc") << "1.cc=0" << 0 << 0 << 0;
    QTest::newRow("highest cc") << "1.cc=127" << 0 << 0 << 127;
    QTest::newRow("first channel") << "8.channel=1" << 7 << 1 << 0;
    QTest::newRow("last channel") << "8.channel=16" << 7 << 1 << 15;
    QTest::newRow("max") << "2.max=100" << 1 << 2 << 100;
    QTest::newRow("min") << "2.min=007" << 1 << 3 << 7;
    QTest::newRow("led by name") << "3.led=convex" << 2 << 4 << 3;
    QTest::newRow("led by number") << "3.led=1" << 2 << 4 << 1;
}

void TestKnobAddress::assignments()
{
    QFETCH(QString, text);
    QFETCH(int, knob);
    QFETCH(int, setting);
    QFETCH(int, value);
    SettingsTable table;
    QCOMPARE(KnobAddresses::parseAssignment(text, &table), QString());
    SettingsTable expected;
    expected[std::size_t(knob)][std::size_t(setting)] = value;
    QVERIFY(table == expected);
}

void TestKnobAddress::wrongAssignments_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("error");
    QTest::newRow("no value") << "3.cc"
                              << "\"3.cc\" sets nothing: KNOB.SETTING=VALUE, such as 3.cc=10";
    QTest::newRow("no setting") << "3=10"
                                << "\"3=10\" names no setting: KNOB.SETTING=VALUE, such as 3.cc=10";
    QTest::newRow("knob 9") << "9.cc=1"
                            << "\"9\" is no knob: 1 to 8, such as 3, 1-4 or all";
    for (const char* value : {"128", "1e9", "-1", "", "99999999999999999999", " 1", "0x10", "1.0"})
        QTest::newRow(qPrintable(QStringLiteral("cc of ") + value))
            << QStringLiteral("1.cc=") + value << QStringLiteral("\"%1\" is no value of cc: 0 to 127").arg(value);
    QTest::newRow("channel 0") << "1.channel=0"
                               << "\"0\" is no value of channel: 1 to 16";
    QTest::newRow("channel 17") << "1.channel=17"
                                << "\"17\" is no value of channel: 1 to 16";
    QTest::newRow("led") << "1.led=4"
                         << "\"4\" is no value of led: 0 to 3, ascent, descend, concave, convex";
    QTest::newRow("near led") << "1.led=concav"
                              << "\"concav\" is no value of led: 0 to 3, ascent, descend, concave, convex; did you "
                                 "mean \"concave\"?";
}

void TestKnobAddress::wrongAssignments()
{
    QFETCH(QString, text);
    SettingsTable table;
    QTEST(KnobAddresses::parseAssignment(text, &table), "error");
    QVERIFY(table == SettingsTable());
}

void TestKnobAddress::laterAssignmentWins()
{
    SettingsTable table;
    QCOMPARE(KnobAddresses::parseAssignment("all.cc=1", &table), QString());
    QCOMPARE(KnobAddresses::parseAssignment("2-3.cc=2", &table), QString());
    QCOMPARE(*table[0][0], 1);
    QCOMPARE(*table[2][0], 2);
    QCOMPARE(*table[7][0], 1);
}

void TestKnobAddress::everyValueIsReadAsItIsWritten()
{
    for (std::size_t setting = 0; setting < k_numOfSettings; ++setting) {
        for (int value = 0; value <= k_settingParams[setting].highest; ++value) {
            QCOMPARE(SettingNames::valueOf(setting, SettingNames::valueText(setting, value)), value);
            QCOMPARE(SettingNames::valueJson(setting, value).toVariant().toString(),
                     SettingNames::valueText(setting, value));
        }
    }
}

void TestKnobAddress::valuesOutOfRangeAreShownAsTheyAre()
{
    QCOMPARE(SettingNames::valueText(4, 4), "4");
    QCOMPARE(SettingNames::valueText(1, 127), "128");
}

void TestKnobAddress::nearNames_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("name");
    QTest::newRow("same") << "copy"
                          << "copy";
    QTest::newRow("capitals") << "COPY"
                              << "copy";
    QTest::newRow("letters changed places") << "cpoy"
                                            << "copy";
    QTest::newRow("two letters off") << "copies"
                                     << "";
    QTest::newRow("nothing near") << "xyzzy"
                                  << "";
    QTest::newRow("nothing") << ""
                             << "";
    QTest::newRow("endless") << QString(1000, u'c') << "";
}

void TestKnobAddress::nearNames()
{
    QFETCH(QString, typed);
    QTEST(nearName(typed, {"copy", "watch"}), "name");
}

KTZ_TEST(QCoreApplication, TestKnobAddress)
#include "TestKnobAddress.moc"
