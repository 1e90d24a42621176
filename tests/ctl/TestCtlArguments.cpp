#include "ctl/CCtlArguments.h"
#include "tests/support/CTestCase.h"

class TestCtlArguments : public CTestCase
{
    Q_OBJECT

  private slots:
    void commandsAreKnown_data();
    void commandsAreKnown();
    void optionsAreTakenOver();
    void defaults();
    void wrongUseIsOneLine_data();
    void wrongUseIsOneLine();
    void helpNamesEveryCommand();
};

void TestCtlArguments::commandsAreKnown_data()
{
    using Command = CtlArguments::Command;
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("operands");
    const auto row = [](const char* name, const QStringList& arguments, Command command, int operands) {
        QTest::newRow(name) << arguments << int(command) << operands;
    };
    row("ports", {"ports"}, Command::Ports, 0);
    row("show", {"show"}, Command::Show, 0);
    row("show a file", {"show", "a.CJX"}, Command::Show, 1);
    row("get", {"get", "3.cc", "4"}, Command::Get, 2);
    row("set", {"set", "3.cc=1"}, Command::Set, 1);
    row("save", {"save", "a.CJX"}, Command::Save, 1);
    row("load", {"load", "a.CJX"}, Command::Load, 1);
    row("copy", {"copy", "1", "2", "3"}, Command::Copy, 3);
    row("reset", {"reset"}, Command::Reset, 0);
    row("reset a knob", {"reset", "4"}, Command::Reset, 1);
    row("diff", {"diff", "device", "factory"}, Command::Diff, 2);
    row("check", {"check", "a", "b"}, Command::Check, 2);
    row("watch", {"watch"}, Command::Watch, 0);
    row("help", {"--help"}, Command::Help, 0);
    row("help of a command", {"show", "-h"}, Command::Help, 0);
    row("version", {"--version"}, Command::Version, 0);
    row("a file that is called like an option", {"show", "--", "--json"}, Command::Show, 1);
}

void TestCtlArguments::commandsAreKnown()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, command);
    QFETCH(int, operands);
    const CCtlArguments::Result result = CCtlArguments::parse(arguments);
    QCOMPARE(result.error, QString());
    QCOMPARE(int(result.arguments.command), command);
    QCOMPARE(result.arguments.operands.size(), operands);
}

void TestCtlArguments::optionsAreTakenOver()
{
    const CtlArguments load = CCtlArguments::parse({"--json", "load", "a", "--no-verify", "--dry-run", "--force",
                                                    "--quiet", "--port", "Other", "--wait=1.5"})
                                  .arguments;
    QVERIFY(load.json && !load.verify && load.dryRun && load.force && load.quiet && !load.verbose);
    QCOMPARE(load.port, "Other");
    QCOMPARE(load.wait, std::chrono::milliseconds(1500));
    const CtlArguments watch = CCtlArguments::parse({"watch", "--count", "3", "--for", "2", "--verbose"}).arguments;
    QCOMPARE(watch.count, 3);
    QCOMPARE(watch.watchTime, std::chrono::milliseconds(2000));
    QVERIFY(watch.verbose);
}

void TestCtlArguments::defaults()
{
    const CtlArguments arguments = CCtlArguments::parse({"load", "a"}).arguments;
    QVERIFY(arguments.verify && !arguments.json && !arguments.dryRun && !arguments.force && !arguments.quiet);
    QVERIFY(!arguments.wait && !arguments.watchTime);
    QCOMPARE(arguments.count, 0);
    QCOMPARE(arguments.port, "Trellwick KTZ-JX Port3");
}

void TestCtlArguments::wrongUseIsOneLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* name, const QStringList& arguments, const QString& error) {
        QTest::newRow(name) << arguments << error;
    };
    row("nothing", {}, "a command is missing; --help lists them");
    row("unknown command", {"xyzzy"}, "unknown command \"xyzzy\"");
    row("near command", {"shwo"}, "unknown command \"shwo\"; did you mean \"show\"?");
    row("beginning of a command", {"wat"}, "unknown command \"wat\"; did you mean \"watch\"?");
    row("unknown option", {"--usb", "show"}, "unknown option \"--usb\"");
    row("near option", {"--jsno", "show"}, "unknown option \"--jsno\"; did you mean \"--json\"?");
    row("short option", {"-x", "show"}, "unknown option \"-x\"");
    row("value for a switch", {"--json=1", "show"}, "Unexpected value after '--json'");
    row("no value", {"show", "--port"}, "Missing value after '--port'");
    row("empty port", {"show", "--port", ""}, "--port needs the name of a port; \"ktz-jxctl ports\" lists them");
    row("time that is none", {"show", "--wait", "soon"}, "--wait needs a number of seconds, 0 to 86400");
    row("negative time", {"show", "--wait=-1"}, "--wait needs a number of seconds, 0 to 86400");
    row("endless time", {"show", "--wait", "inf"}, "--wait needs a number of seconds, 0 to 86400");
    row("no number at all", {"watch", "--for", "nan"}, "--for needs a number of seconds, 0 to 86400");
    row("count of 0", {"watch", "--count", "0"}, "--count needs a number from 1 on");
    row("huge count", {"watch", "--count", "1e9"}, "--count needs a number from 1 on");
    row("count of show", {"show", "--count", "1"}, "\"show\" has no --count");
    row("dry run of show", {"show", "--dry-run"}, "\"show\" has no --dry-run");
    row("port of check", {"check", "a", "--port", "b"}, "\"check\" has no --port");
    row("waiting for ports", {"ports", "--wait", "1"}, "\"ports\" has no --wait");
    row("JSON of save", {"save", "a", "--json"}, "\"save\" has no --json");
    row("both of verify", {"load", "a", "--verify", "--no-verify"}, "--verify and --no-verify exclude each other");
    row("quiet and verbose", {"load", "a", "--quiet", "--verbose"}, "--quiet and --verbose exclude each other");
    row("get nothing", {"get"}, "usage: ktz-jxctl get KNOB[.SETTING]...");
    row("set nothing", {"set"}, "usage: ktz-jxctl set KNOB.SETTING=VALUE...");
    row("save two", {"save", "a", "b"}, "usage: ktz-jxctl save FILE");
    row("load none", {"load"}, "usage: ktz-jxctl load FILE");
    row("copy one", {"copy", "1"}, "usage: ktz-jxctl copy KNOB KNOB...");
    row("diff one", {"diff", "a"}, "usage: ktz-jxctl diff SOURCE SOURCE");
    row("check nothing", {"check"}, "usage: ktz-jxctl check FILE...");
    row("watch what", {"watch", "1"}, "usage: ktz-jxctl watch");
    row("ports of", {"ports", "1"}, "usage: ktz-jxctl ports");
    row("show two", {"show", "a", "b"}, "usage: ktz-jxctl show [SOURCE]");
}

void TestCtlArguments::wrongUseIsOneLine()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    QCOMPARE(CCtlArguments::parse(arguments).error, error);
}

void TestCtlArguments::helpNamesEveryCommand()
{
    const QString help = CCtlArguments::help();
    for (const CCtlArguments::Command& command : CCtlArguments::commands())
        QVERIFY(help.contains(QStringLiteral("  %1 ").arg(command.name)));
}

KTZ_TEST(QCoreApplication, TestCtlArguments)
#include "TestCtlArguments.moc"
