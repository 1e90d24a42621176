#include "tests/ctl/CtlFixture.h"

#include <QJsonArray>

class TestCtlWriting : public CTestCase
{
    Q_OBJECT

  private slots:
    void changes_data();
    void changes();
    void valueThatIsThereAlreadyIsNotSent();
    void valueThatTheKnobHasOtherwiseStays();
    void loadPutsAFileOntoTheDevice();
    void loadSendsOnlyWhatDiffers();
    void loadOfAPartKeepsTheRest();
    void verifyAsksAgain();
    void noVerifyDoesNot();
    void dryRunPrintsTheMessagesAndSendsNone();
    void dryRunAsJson();
    void jsonReports();
    void quietSaysNothing();
};

void TestCtlWriting::changes_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<QString>("output");
    QTest::newRow("set one") << QStringList{"set", "3.cc=11"} << QStringList{"020b007f0002"}
                             << "sent to knobs 3; the device holds it\n";
    QTest::newRow("set two of one knob, in one message")
        << QStringList{"set", "3.cc=11", "3.led=ascent"} << QStringList{"020b007f0000"}
        << "sent to knobs 3; the device holds it\n";
    QTest::newRow("set a range") << QStringList{"set", "1-2.channel=10"} << QStringList{"004a097f0000", "0147097f0000"}
                                 << "sent to knobs 1, 2; the device holds it\n";
    QTest::newRow("set all") << QStringList{"set", "all.max=100"}
                             << QStringList{"004a00640000", "014700640000", "020a00640002", "030700640000",
                                            "044900640000", "054800640000", "065b00640000", "075d00640000"}
                             << "sent to knobs 1, 2, 3, 4, 5, 6, 7, 8; the device holds it\n";
    QTest::newRow("copy") << QStringList{"copy", "3", "1", "8"} << QStringList{"000a007f0002", "070a007f0002"}
                          << "sent to knobs 1, 8; the device holds it\n";
    QTest::newRow("copy onto itself") << QStringList{"copy", "3", "3"} << QStringList()
                                      << "nothing to send: the device holds it already\n";
    QTest::newRow("reset of what is so already")
        << QStringList{"reset"} << QStringList() << "nothing to send: the device holds it already\n";
}

void TestCtlWriting::changes()
{
    QFETCH(QStringList, arguments);
    QFETCH(QStringList, sent);
    CtlFixture fixture;
    fixture.plug();
    const CtlOutcome outcome = fixture.run(arguments);
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(outcome.status, 0);
    QStringList found;
    for (const QByteArray& message : fixture.changes())
        found.append(message.sliced(8).chopped(1).toHex());
    QCOMPARE(found, sent);
    QTEST(outcome.output, "output");
}

void TestCtlWriting::valueThatIsThereAlreadyIsNotSent()
{
    CtlFixture fixture;
    fixture.plug();
    QCOMPARE(fixture.run({"set", "3.cc=10", "4.cc=8"}).output, "sent to knobs 4; the device holds it\n");
    QCOMPARE(fixture.changes().size(), 1);
}

void TestCtlWriting::valueThatTheKnobHasOtherwiseStays()
{
    CtlFixture fixture;
    fixture.plug();
    fixture.device.setSettings(4, {.cc = 1, .channel = 2, .max = 3, .min = 4, .led = 3});
    QCOMPARE(fixture.run({"set", "5.max=90"}).status, 0);
    QVERIFY(fixture.device.settings(4) == (KnobSettings{.cc = 1, .channel = 2, .max = 90, .min = 4, .led = 3}));
    QCOMPARE(fixture.run({"reset", "5"}).output, "sent to knobs 5; the device holds it\n");
    QVERIFY(fixture.device.settings(4) == k_factorySettings[4]);
}

void TestCtlWriting::loadPutsAFileOntoTheDevice()
{
    CtlFixture fixture;
    fixture.plug();
    for (int knob = 0; knob < CSimulatedDevice::k_knobs; ++knob)
        fixture.device.setSettings(knob,
                                   {.cc = knob, .channel = knob, .max = 100 - knob, .min = knob, .led = knob % 4});
    QCOMPARE(fixture.run({"save", fixture.path("a.CJX")}).status, 0);
    QCOMPARE(fixture.run({"reset"}).status, 0);
    QVERIFY(fixture.device.settings(7) == k_factorySettings[7]);
    const CtlOutcome loaded = fixture.run({"load", fixture.path("a.CJX")});
    QCOMPARE(loaded.status, 0);
    QCOMPARE(loaded.output, "sent to knobs 1, 2, 3, 4, 5, 6, 7, 8; the device holds it\n");
    for (int knob = 0; knob < CSimulatedDevice::k_knobs; ++knob)
        QVERIFY(fixture.device.settings(knob) ==
                (KnobSettings{.cc = knob, .channel = knob, .max = 100 - knob, .min = knob, .led = knob % 4}));
    QCOMPARE(fixture.run({"diff", "device", fixture.path("a.CJX")}).status, 0);
}

void TestCtlWriting::loadSendsOnlyWhatDiffers()
{
    CtlFixture fixture;
    fixture.plug();
    QCOMPARE(fixture.run({"save", fixture.path("a.CJX")}).status, 0);
    fixture.device.setSetting(5, &KnobSettings::cc, 1);
    QCOMPARE(fixture.run({"load", fixture.path("a.CJX")}).output, "sent to knobs 6; the device holds it\n");
    QCOMPARE(fixture.run({"load", fixture.path("a.CJX")}).output, "nothing to send: the device holds it already\n");
}

void TestCtlWriting::loadOfAPartKeepsTheRest()
{
    CtlFixture fixture;
    fixture.plug();
    fixture.device.setSettings(1, {.cc = 1, .channel = 2, .max = 3, .min = 4, .led = 3});
    const QString name =
        fixture.make("part.CJX", "<!DOCTYPE KTZJXEditor><parameters version=\"1.0\"><controlview><key1>"
                                 "<key1101>5</key1101></key1></controlview></parameters>");
    QCOMPARE(fixture.run({"load", name, "--quiet"}).status, 0);
    QVERIFY(fixture.device.settings(1) == (KnobSettings{.cc = 5, .channel = 2, .max = 3, .min = 4, .led = 3}));
    QCOMPARE(fixture.changes().size(), 1);
}

void TestCtlWriting::verifyAsksAgain()
{
    CtlFixture fixture;
    fixture.plug();
    QCOMPARE(fixture.run({"set", "1.cc=1"}).status, 0);
    QCOMPARE(fixture.device.received().count(k_requestAllBytes), 2);
    QCOMPARE(fixture.device.received().constLast(), k_endMessageBytes);
}

void TestCtlWriting::noVerifyDoesNot()
{
    CtlFixture fixture;
    fixture.plug();
    const CtlOutcome set = fixture.run({"set", "1.cc=1", "--no-verify"});
    QCOMPARE(set.output, "sent to knobs 1\n");
    QCOMPARE(fixture.device.received().count(k_requestAllBytes), 1);
}

void TestCtlWriting::dryRunPrintsTheMessagesAndSendsNone()
{
    CtlFixture fixture;
    fixture.plug();
    const CtlOutcome set = fixture.run({"set", "1-2.cc=1", "--dry-run"});
    QCOMPARE(set.status, 0);
    QCOMPARE(set.output, "F0 43 10 3E 18 05 02 03 00 01 00 7F 00 00 F7  change parameter, knob 1\n"
                         "F0 43 10 3E 18 05 02 03 01 01 00 7F 00 00 F7  change parameter, knob 2\n");
    QVERIFY(fixture.changes().isEmpty());
    QCOMPARE(fixture.device.received().constLast(), k_endMessageBytes);
}

void TestCtlWriting::dryRunAsJson()
{
    CtlFixture fixture;
    fixture.plug();
    const QJsonObject json = fixture.run({"reset", "--dry-run", "--json"}).json();
    QCOMPARE(json, (QJsonObject{{"messages", QJsonArray()}}));
    QCOMPARE(
        fixture.run({"set", "1.cc=1", "--dry-run", "--json"}).json()["messages"][0],
        (QJsonObject{{"bytes", "F0 43 10 3E 18 05 02 03 00 01 00 7F 00 00 F7"}, {"name", "change parameter, knob 1"}}));
}

void TestCtlWriting::jsonReports()
{
    CtlFixture fixture;
    fixture.plug();
    QCOMPARE(
        fixture.run({"set", "2.cc=1", "--json"}).json(),
        (QJsonObject{
            {"sent", QJsonArray{2}}, {"unsent", QJsonArray()}, {"verified", true}, {"differences", QJsonArray()}}));
}

void TestCtlWriting::quietSaysNothing()
{
    CtlFixture fixture;
    fixture.plug();
    const CtlOutcome set = fixture.run({"set", "2.cc=1", "--quiet"});
    QCOMPARE(set.status, 0);
    QCOMPARE(set.output + set.errors, QString());
}

KTZ_TEST(QCoreApplication, TestCtlWriting)
#include "TestCtlWriting.moc"
