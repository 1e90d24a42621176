#include "app/common/Version.h"
#include "file/CFileWrapper.h"
#include "tests/ctl/CtlFixture.h"
#include "tests/support/MemoryRig.h"

#include <QJsonArray>

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace
{
constexpr auto k_factoryTable = "knob\tcc\tchannel\tmax\tmin\tled\n"
                                "1\t74\t1\t127\t0\tascent\n"
                                "2\t71\t1\t127\t0\tascent\n"
                                "3\t10\t1\t127\t0\tconcave\n"
                                "4\t7\t1\t127\t0\tascent\n"
                                "5\t73\t1\t127\t0\tascent\n"
                                "6\t72\t1\t127\t0\tascent\n"
                                "7\t91\t1\t127\t0\tascent\n"
                                "8\t93\t1\t127\t0\tascent\n";

QByteArray fileWith(const QByteArray& knobs)
{
    return "<!DOCTYPE KTZJXEditor>\n<parameters version=\"1.0\">\n<controlview>\n" + knobs +
           "</controlview>\n</parameters>\n";
}
} // namespace

class TestCtlReading : public CTestCase
{
    Q_OBJECT

  private slots:
    void helpAndVersion();
    void portsNameThePairThatWouldBeUsed();
    void portsOfAnotherName();
    void portsWithoutAny();
    void showTheDevice();
    void showTheFactory();
    void showAFile();
    void showAFileThatLacksSettings();
    void showTellsWhatOfAFileIsTakenOtherwise();
    void showAsJson();
    void valuesBeyondTheEditorsRangeAreShown();
    void getValues_data();
    void getValues();
    void getAsJson();
    void diffEqual();
    void diffDifferent();
    void diffAsJson();
    void saveIsTheEditorsFile();
    void saveReplacesAFileWhole();
    void checkGoodFile();
    void checkFindings_data();
    void checkFindings();
    void checkRefusedFiles_data();
    void checkRefusedFiles();
    void everyRefusalHasAReason();
    void checkAsJson();
    void wrongUseReachesNoDevice_data();
    void wrongUseReachesNoDevice();
    void handshakeIsTheEditors();
    void verboseTellsEveryMessage();
    void controlCharactersReachNoTerminal();
    void terminalGetsColumnsAndABoldHeading_data();
    void terminalGetsColumnsAndABoldHeading();
};

void TestCtlReading::helpAndVersion()
{
    CtlFixture fixture;
    const CtlOutcome help = fixture.run({"--help"});
    QCOMPARE(help.status, 0);
    QVERIFY(help.output.startsWith("Usage: ktz-jxctl"));
    QCOMPARE(fixture.run({"--version"}).output, "ktz-jxctl " KTZ_VERSION "\n");
    const CtlOutcome wrong = fixture.run({"xyzzy"});
    QCOMPARE(wrong.status, int(CtlStatus::WrongUse));
    QCOMPARE(wrong.errors, "ktz-jxctl: unknown command \"xyzzy\"\n");
}

void TestCtlReading::portsNameThePairThatWouldBeUsed()
{
    CtlFixture fixture;
    CSimulatedSystem::instance().addSource("Synth", "Out");
    fixture.plug();
    const CtlOutcome ports = fixture.run({"ports"});
    QCOMPARE(ports.status, 0);
    QCOMPARE(ports.output, "source\tSynth Out\n"
                           "source\tTrellwick KTZ-JX Port1\n"
                           "source\tTrellwick KTZ-JX Port2\n"
                           "source\tTrellwick KTZ-JX Port3\tused\n"
                           "destination\tTrellwick KTZ-JX Port1\n"
                           "destination\tTrellwick KTZ-JX Port2\n"
                           "destination\tTrellwick KTZ-JX Port3\tused\n");
    QCOMPARE(ports.errors, QString());
    const QJsonObject json = fixture.run({"ports", "--json"}).json();
    QCOMPARE(json["sources"].toArray().size(), 4);
    QCOMPARE(json["destinations"].toArray()[2], (QJsonObject{{"name", "Trellwick KTZ-JX Port3"}, {"used", true}}));
    QVERIFY(fixture.device.received().isEmpty());
}

void TestCtlReading::portsOfAnotherName()
{
    CtlFixture fixture;
    fixture.plug();
    const CtlOutcome ports = fixture.run({"ports", "--port", "Trellwick KTZ-JX Port1"});
    QVERIFY(ports.output.contains("source\tTrellwick KTZ-JX Port1\tused\n"));
    QVERIFY(!ports.output.contains("Port3\tused"));
}

void TestCtlReading::portsWithoutAny()
{
    CtlFixture fixture;
    const CtlOutcome ports = fixture.run({"ports"});
    QCOMPARE(ports.status, 0);
    QCOMPARE(ports.output, QString());
    QCOMPARE(ports.errors, "ktz-jxctl: there is no pair of ports named \"Trellwick KTZ-JX Port3\"\n");
}

void TestCtlReading::showTheDevice()
{
    CtlFixture fixture;
    fixture.plug();
    fixture.device.setSettings(1, {.cc = 1, .channel = 15, .max = 100, .min = 20, .led = 3});
    const CtlOutcome shown = fixture.run({"show"});
    QCOMPARE(shown.errors, QString());
    QCOMPARE(shown.status, 0);
    QCOMPARE(shown.output, QString(k_factoryTable).replace("2\t71\t1\t127\t0\tascent", "2\t1\t16\t100\t20\tconvex"));
    QCOMPARE(fixture.run({"show", "device"}).output, shown.output);
}

void TestCtlReading::showTheFactory()
{
    CtlFixture fixture;
    const CtlOutcome shown = fixture.run({"show", "factory"});
    QCOMPARE(shown.status, 0);
    QCOMPARE(shown.output, k_factoryTable);
}

void TestCtlReading::showAFile()
{
    CtlFixture fixture;
    fixture.plug();
    QCOMPARE(fixture.run({"save", fixture.path("a.CJX")}).status, 0);
    const CtlOutcome shown = fixture.run({"show", fixture.path("a.CJX")});
    QCOMPARE(shown.status, 0);
    QCOMPARE(shown.output, k_factoryTable);
    QCOMPARE(shown.errors, QString());
}

void TestCtlReading::showAFileThatLacksSettings()
{
    CtlFixture fixture;
    const QString name = fixture.make("part.CJX", fileWith("<key1>\n<key1101>5</key1101>\n</key1>\n"));
    const CtlOutcome shown = fixture.run({"show", name, "--quiet"});
    QCOMPARE(shown.status, 0);
    QVERIFY(shown.output.contains("1\t-\t-\t-\t-\t-\n2\t5\t-\t-\t-\t-\n3\t-"));
    QCOMPARE(shown.errors, QString());
    QCOMPARE(fixture.run({"show", name, "--json", "--quiet"}).json()["knobs"].toArray()[1],
             (QJsonObject{{"knob", 2}, {"cc", 5}}));
}

void TestCtlReading::showTellsWhatOfAFileIsTakenOtherwise()
{
    CtlFixture fixture;
    const QString name = fixture.make("high.CJX", fileWith("<key0>\n<key1100>128</key1100>\n</key0>\n"));
    const CtlOutcome shown = fixture.run({"show", name});
    QCOMPARE(shown.status, 0);
    QVERIFY(shown.errors.startsWith(
        QStringLiteral("ktz-jxctl: %1:5: <key1100> is \"128\" and is taken as 127\n").arg(name)));
}

void TestCtlReading::showAsJson()
{
    CtlFixture fixture;
    const QJsonObject json = fixture.run({"show", "factory", "--json"}).json();
    QCOMPARE(json["source"], "factory");
    QCOMPARE(json["knobs"].toArray().size(), 8);
    QCOMPARE(json["knobs"].toArray()[2],
             (QJsonObject{{"knob", 3}, {"cc", 10}, {"channel", 1}, {"max", 127}, {"min", 0}, {"led", "concave"}}));
}

void TestCtlReading::valuesBeyondTheEditorsRangeAreShown()
{
    CtlFixture fixture;
    fixture.plug();
    fixture.device.setSettings(0, {.channel = 16, .led = 4});
    QCOMPARE(fixture.run({"get", "1"}).output, "0\n17\n127\n0\n4\n");
}

void TestCtlReading::getValues_data()
{
    QTest::addColumn<QStringList>("operands");
    QTest::addColumn<QString>("output");
    QTest::newRow("one") << QStringList{"3.cc"} << "10\n";
    QTest::newRow("two, in the given order") << QStringList{"3.led", "1.cc"} << "concave\n74\n";
    QTest::newRow("knob") << QStringList{"4"} << "7\n1\n127\n0\nascent\n";
    QTest::newRow("range") << QStringList{"1-3.cc"} << "74\n71\n10\n";
    QTest::newRow("all") << QStringList{"all.channel"} << "1\n1\n1\n1\n1\n1\n1\n1\n";
}

void TestCtlReading::getValues()
{
    QFETCH(QStringList, operands);
    CtlFixture fixture;
    fixture.plug();
    const CtlOutcome got = fixture.run(QStringList("get") + operands);
    QCOMPARE(got.status, 0);
    QTEST(got.output, "output");
}

void TestCtlReading::getAsJson()
{
    CtlFixture fixture;
    fixture.plug();
    const QJsonArray values = fixture.run({"get", "3.cc", "3.led", "--json"}).json()["values"].toArray();
    QCOMPARE(values, (QJsonArray{QJsonObject{{"knob", 3}, {"setting", "cc"}, {"value", 10}},
                                 QJsonObject{{"knob", 3}, {"setting", "led"}, {"value", "concave"}}}));
}

void TestCtlReading::diffEqual()
{
    CtlFixture fixture;
    fixture.plug();
    const CtlOutcome compared = fixture.run({"diff", "device", "factory"});
    QCOMPARE(compared.status, 0);
    QCOMPARE(compared.output, QString());
    QCOMPARE(compared.errors, QString());
}

void TestCtlReading::diffDifferent()
{
    CtlFixture fixture;
    fixture.plug();
    fixture.device.setSetting(2, &KnobSettings::channel, 9);
    fixture.device.setSetting(7, &KnobSettings::led, 1);
    const CtlOutcome compared = fixture.run({"diff", "factory", "device"});
    QCOMPARE(compared.status, int(CtlStatus::Different));
    QCOMPARE(compared.output, "3.channel: 1, 10\n8.led: ascent, descend\n");
    QCOMPARE(compared.errors, QString());
    const CtlOutcome quiet = fixture.run({"diff", "factory", "device", "--quiet"});
    QCOMPARE(quiet.status, int(CtlStatus::Different));
    QCOMPARE(quiet.output, QString());
    const QString part = fixture.make("part.CJX", fileWith("<key0>\n<key1100>74</key1100>\n</key0>\n"));
    QVERIFY(fixture.run({"diff", part, "factory"}).output.startsWith("1.channel: -, 1\n"));
}

void TestCtlReading::diffAsJson()
{
    CtlFixture fixture;
    fixture.plug();
    fixture.device.setSetting(2, &KnobSettings::channel, 9);
    const CtlOutcome compared = fixture.run({"diff", "factory", "device", "--json"});
    QCOMPARE(compared.status, int(CtlStatus::Different));
    QCOMPARE(compared.json(),
             (QJsonObject{{"first", "factory"},
                          {"second", "device"},
                          {"differences", QJsonArray{QJsonObject{
                                              {"knob", 3}, {"setting", "channel"}, {"first", 1}, {"second", 10}}}}}));
}

void TestCtlReading::saveIsTheEditorsFile()
{
    CtlFixture fixture;
    fixture.plug();
    fixture.device.setSettings(1, {.cc = 1, .channel = 15, .max = 100, .min = 20, .led = 3});
    const CtlOutcome saved = fixture.run({"save", fixture.path("ctl.CJX")});
    QCOMPARE(saved.status, 0);
    QCOMPARE(saved.output, QStringLiteral("saved to %1\n").arg(fixture.path("ctl.CJX")));

    // As the editor's memory has it after the same device's answers.
    CMemAPIWrapper memory;
    memory.initialize();
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        for (const SettingParam& setting : k_settingParams)
            memory.setParam(setting.category + knob, setting.factory[std::size_t(knob)]);
    }
    memory.requestAllParam();
    QTRY_COMPARE(memory.getParam(k_ledTypeCategory + 1), 3);
    QCOMPARE(CFileWrapper(nullptr, &memory).write(fixture.path("editor.CJX")), QString());
    QFile ours(fixture.path("ctl.CJX"));
    QFile editors(fixture.path("editor.CJX"));
    QVERIFY(ours.open(QIODevice::ReadOnly) && editors.open(QIODevice::ReadOnly));
    QCOMPARE(ours.readAll(), editors.readAll());
}

void TestCtlReading::saveReplacesAFileWhole()
{
    CtlFixture fixture;
    fixture.plug();
    const QString name = fixture.make("a.CJX", QByteArray(5000, 'x'));
    QCOMPARE(fixture.run({"save", name, "--quiet"}).output, QString());
    QCOMPARE(fixture.run({"show", name}).output, k_factoryTable);
}

void TestCtlReading::checkGoodFile()
{
    CtlFixture fixture;
    fixture.plug();
    const QString name = fixture.path("a.CJX");
    QCOMPARE(fixture.run({"save", name}).status, 0);
    const CtlOutcome checked = fixture.run({"check", name});
    QCOMPARE(checked.status, 0);
    QCOMPARE(checked.output, name + ": good\n");
    QCOMPARE(fixture.run({"check", name, "--quiet"}).output, QString());
}

void TestCtlReading::checkFindings_data()
{
    QTest::addColumn<QByteArray>("knobs");
    QTest::addColumn<QString>("finding");
    QTest::newRow("too high") << QByteArray("<key0>\n<key1100>128</key1100>\n</key0>\n")
                              << ":5: <key1100> is \"128\" and is taken as 127\n";
    QTest::newRow("no number") << QByteArray("<key0>\n<key1100>loud</key1100>\n</key0>\n")
                               << ":5: <key1100> is \"loud\" and is taken as 0\n";
    QTest::newRow("another knob's setting")
        << QByteArray("<key0>\n<key1101>1</key1101>\n<key1100>1</key1100>\n</key0>\n")
        << ":5: <key1101> is no setting of this knob and is ignored\n";
    QTest::newRow("setting twice") << QByteArray("<key0>\n<key1100>1</key1100>\n<key1100>2</key1100>\n</key0>\n")
                                   << ":6: <key1100> is here a second time; the first one counts\n";
    QTest::newRow("knob twice") << QByteArray(
                                       "<key0>\n<key1100>1</key1100>\n</key0>\n<key0>\n<key1100>2</key1100>\n</key0>\n")
                                << ":7: <key0> is here a second time; the first one counts\n";
    QTest::newRow("ninth knob") << QByteArray(
                                       "<key8>\n<key1108>1</key1108>\n</key8>\n<key0><key1100>1</key1100></key0>\n")
                                << ":4: <key8> is no knob and is ignored\n";
    QTest::newRow("lacks a setting") << QByteArray("<key0>\n<key1100>1</key1100>\n</key0>\n")
                                     << ":4: <key0> lacks <key1200>, which keeps its value\n";
    QTest::newRow("lacks a knob") << QByteArray("<key0>\n<key1100>1</key1100>\n</key0>\n")
                                  << ":3: there is no <key1>; the knob keeps its values\n";
}

void TestCtlReading::checkFindings()
{
    QFETCH(QByteArray, knobs);
    QFETCH(QString, finding);
    CtlFixture fixture;
    const QString name = fixture.make("a.CJX", fileWith(knobs));
    const CtlOutcome checked = fixture.run({"check", name});
    QCOMPARE(checked.status, int(CtlStatus::Different));
    QVERIFY2(checked.output.contains(name + finding), qPrintable(checked.output));
    QVERIFY(checked.output.contains(name + ": the editor makes this of it\nknob\tcc"));
    QCOMPARE(checked.errors, QString());
}

void TestCtlReading::checkRefusedFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("finding");
    QTest::newRow("empty") << QByteArray() << ": is empty\n";
    QTest::newRow("tag without an end") << QByteArray("<!DOCTYPE KTZJXEditor>\n<parameters version=\"1.0\"\n")
                                        << ":2: a tag without an end, or more than a settings file ever holds\n";
    QTest::newRow("wrong end tag") << QByteArray("<!DOCTYPE KTZJXEditor>\n<parameters>\n</controlview>\n")
                                   << ":3: no XML: ";
    QTest::newRow("another document") << QByteArray("<html>\n</html>\n")
                                      << ": no settings file: the document type is not KTZJXEditor\n";
    QTest::newRow("no parameters") << QByteArray("<!DOCTYPE KTZJXEditor>\n<other/>\n")
                                   << ": there is no <parameters>\n";
    QTest::newRow("old version") << QByteArray("<!DOCTYPE KTZJXEditor>\n<parameters version=\"0.9\"/>\n")
                                 << ":2: the version is missing or below 1.0\n";
    QTest::newRow("no view") << QByteArray("<!DOCTYPE KTZJXEditor>\n<parameters version=\"1.0\"/>\n")
                             << ":2: there is no <controlview>\n";
    QTest::newRow("empty knob") << fileWith("<key0>\n<key1100>1</key1100>\n</key0>\n<key1/>\n")
                                << ":7: an element holds neither a value nor elements\n";
    QTest::newRow("no text") << QByteArray("<\xff\xff>") << ": the bytes are no text in the encoding";
}

void TestCtlReading::checkRefusedFiles()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, finding);
    CtlFixture fixture;
    const QString name = fixture.make("a.CJX", bytes);
    const CtlOutcome checked = fixture.run({"check", name});
    QCOMPARE(checked.status, int(CtlStatus::FileError));
    QVERIFY2(checked.output.contains(name + finding), qPrintable(checked.output));
    QVERIFY(checked.output.endsWith(name + ": the editor refuses it\n"));
    QCOMPARE(checked.errors, "ktz-jxctl: the editor refuses a file\n");
    // Whatever else reads a file says the same, and nothing on the output.
    const CtlOutcome shown = fixture.run({"show", name});
    QCOMPARE(shown.status, int(CtlStatus::FileError));
    QCOMPARE(shown.output, QString());
    QVERIFY(shown.errors.startsWith("ktz-jxctl: " + name + finding.trimmed()));
    QCOMPARE(shown.errors.count('\n'), 1);
}

void TestCtlReading::everyRefusalHasAReason()
{
    CtlFixture fixture;
    const QStringList names = QDir(KTZ_BROKEN_FILES).entryList(QDir::Files);
    QVERIFY(names.size() > 30);
    int refused = 0;
    for (const QString& name : names) {
        const QJsonObject file =
            fixture.run({"check", "--json", QDir(KTZ_BROKEN_FILES).filePath(name)}).json()["files"][0].toObject();
        if (file["usable"].toBool())
            continue;
        ++refused;
        QVERIFY2(!file["notes"].toArray().isEmpty(), qPrintable(name));
    }
    QVERIFY(refused > 20);
}

void TestCtlReading::checkAsJson()
{
    CtlFixture fixture;
    const QString good = fixture.make("a.CJX", fileWith("<key0>\n<key1100>200</key1100>\n</key0>\n"));
    const CtlOutcome checked = fixture.run({"check", "--json", good, fixture.path("none.CJX")});
    QCOMPARE(checked.status, int(CtlStatus::FileError));
    const QJsonArray files = checked.json()["files"].toArray();
    QCOMPARE(files.size(), 2);
    QCOMPARE(files[0]["usable"], true);
    QCOMPARE(files[0]["notes"][0], (QJsonObject{{"line", 5}, {"text", "<key1100> is \"200\" and is taken as 127"}}));
    QCOMPARE(files[0]["knobs"][0]["cc"], 127);
    QCOMPARE(files[1], (QJsonObject{{"file", fixture.path("none.CJX")},
                                    {"usable", false},
                                    {"notes", QJsonArray{QJsonObject{{"line", 0}, {"text", "does not exist"}}}}}));
}

void TestCtlReading::wrongUseReachesNoDevice_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("get") << QStringList{"get", "0.cc"};
    QTest::newRow("set") << QStringList{"set", "1.cc=1", "1.cc=128"};
    QTest::newRow("copy of a setting") << QStringList{"copy", "1.cc", "2"};
    QTest::newRow("copy of two") << QStringList{"copy", "1-2", "3"};
    QTest::newRow("copy to a ninth") << QStringList{"copy", "1", "9"};
    QTest::newRow("reset") << QStringList{"reset", "1.cc"};
}

void TestCtlReading::wrongUseReachesNoDevice()
{
    QFETCH(QStringList, arguments);
    CtlFixture fixture;
    fixture.plug();
    const CtlOutcome outcome = fixture.run(arguments);
    QCOMPARE(outcome.status, int(CtlStatus::WrongUse));
    QCOMPARE(outcome.output, QString());
    QVERIFY(outcome.errors.startsWith("ktz-jxctl: ") && outcome.errors.count('\n') == 1);
    QVERIFY(fixture.device.received().isEmpty());
}

void TestCtlReading::handshakeIsTheEditors()
{
    CtlFixture fixture;
    fixture.plug();
    fixture.device.dropKeeps(1); // so that it waits for the second one, which another thread sends
    QCOMPARE(fixture.run({"show"}).status, 0);
    QCOMPARE(fixture.device.received(), (QList<QByteArray>{k_startMessageBytes, k_keepMessageBytes, k_keepMessageBytes,
                                                           k_requestAllBytes, k_endMessageBytes}));
}

void TestCtlReading::verboseTellsEveryMessage()
{
    CtlFixture fixture;
    fixture.plug();
    const CtlOutcome shown = fixture.run({"show", "--verbose"});
    QCOMPARE(shown.output, k_factoryTable);
    for (const char* line :
         {"> F0 43 10 3E 18 05 02 00 F7  start\n", "< F0 43 10 3E 18 05 02 00 F7  start\n",
          "> F0 43 10 3E 18 05 02 01 F7  keep\n", "> F0 43 30 3E 18 05 02 00 7F F7  request all\n",
          "< F0 43 10 3E 18 05 02 03 02 0A 00 7F 00 02 F7  change parameter, knob 3\n",
          "< F0 43 10 3E 18 05 02 04 07 00 F7  notice value, knob 8\n", "> F0 43 10 3E 18 05 02 02 F7  end\n"})
        QVERIFY2(shown.errors.contains(line), line);
}

void TestCtlReading::controlCharactersReachNoTerminal()
{
    CtlFixture fixture;
    const QString name = fixture.make("a.CJX", fileWith("<key0>\n<key1100>\xc2\x9b"
                                                        "31m\x7f</key1100>\n</key0>\n"));
    QVERIFY(fixture.run({"check", name}).output.contains(":5: <key1100> is \"?31m?\" and is taken as 0\n"));
    const CtlOutcome wrong = fixture.run({"\033[31mshow\n"});
    QCOMPARE(wrong.errors, "ktz-jxctl: unknown command \"?[31mshow \"\n");
}

void TestCtlReading::terminalGetsColumnsAndABoldHeading_data()
{
    QTest::addColumn<QByteArray>("noColour");
    QTest::addColumn<QByteArray>("beginning");
    QTest::newRow("colours") << QByteArray()
                             << QByteArray("\033[1mknob     cc       channel  max      min      led\033[0m\r\n");
    QTest::newRow("NO_COLOR") << QByteArray("1") << QByteArray("knob     cc       channel  max      min      led\r\n");
}

void TestCtlReading::terminalGetsColumnsAndABoldHeading()
{
    QFETCH(QByteArray, noColour);
    QFETCH(QByteArray, beginning);
    const QByteArray before = qgetenv("NO_COLOR");
    qputenv("NO_COLOR", noColour);
    CtlFixture fixture;
    const int master = posix_openpt(O_RDWR | O_NOCTTY);
    QVERIFY(master >= 0 && grantpt(master) == 0 && unlockpt(master) == 0);
    const int terminal = open(ptsname(master), O_RDWR | O_NOCTTY);
    QVERIFY(terminal >= 0);
    QCOMPARE(runCtl({"show", "factory"}, terminal, STDERR_FILENO, fixture.stop, fixture.times), 0);
    QByteArray output;
    std::array<char, 4096> piece{};
    while (output.count('\n') < 9) {
        const ssize_t size = read(master, piece.data(), piece.size());
        QVERIFY(size > 0);
        output.append(piece.data(), size);
    }
    QCOMPARE(output.first(beginning.size()), beginning);
    QVERIFY(output.contains("\n3        10       1        127      0        concave\r\n"));
    close(terminal);
    close(master);
    qputenv("NO_COLOR", before);
}

KTZ_TEST(QCoreApplication, TestCtlReading)
#include "TestCtlReading.moc"
