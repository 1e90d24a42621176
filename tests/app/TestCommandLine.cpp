#include "app/CCommandLine.h"
#include "tests/support/CTestCase.h"

#include <QProcess>

/// What is left of a command line, and the programs themselves, without a display.
class TestCommandLine : public CTestCase
{
    Q_OBJECT

  private slots:
    void editorGetsWhatIsItsOwn_data();
    void editorGetsWhatIsItsOwn();
    void ownOptionHasItsValueByteByByte();
    void programsAnswerWithoutADisplay_data();
    void programsAnswerWithoutADisplay();
    void wrongUseGetsOneLineAndStatus2_data();
    void wrongUseGetsOneLineAndStatus2();
    void helpThatCannotBeWrittenIsNoSuccess();
    void toolkitTakesItsOptions();
};

namespace
{
using Words = QList<QByteArray>;

struct Outcome
{
    int status = -1;
    QByteArray output;
    QByteArray errors;
};

void startWithoutDisplay(QProcess& process, const QString& program, const QStringList& arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QString::fromLatin1(name));
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
}

Outcome runProgram(const QString& program, const QStringList& arguments)
{
    QProcess process;
    startWithoutDisplay(process, program, arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

/// The status of a parse, -1 where the program goes on.
int parse(CCommandLine& commandLine, Words words)
{
    std::vector<char*> argv;
    for (QByteArray& word : words)
        argv.push_back(word.data());
    return commandLine.parse(static_cast<int>(argv.size()), argv.data()).value_or(-1);
}

Words left(CCommandLine& commandLine)
{
    Words words;
    for (int i = 0; i < commandLine.argc(); ++i)
        words.append(commandLine.argv()[i]);
    return words;
}
} // namespace

void TestCommandLine::editorGetsWhatIsItsOwn_data()
{
    QTest::addColumn<Words>("given");
    QTest::addColumn<Words>("expected");
    QTest::newRow("nothing") << Words{"p"} << Words{"p"};
    QTest::newRow("not even a name") << Words{} << Words{"ktz-jx-editor"};
    QTest::newRow("a file") << Words{"p", "a.CJX"} << Words{"p", "a.CJX"};
    QTest::newRow("a file that is no text") << Words{"p", "\xff\xfe\x80.CJX"} << Words{"p", "\xff\xfe\x80.CJX"};
    QTest::newRow("an empty name") << Words{"p", ""} << Words{"p", ""};
    QTest::newRow("options of the toolkit before it")
        << Words{"p", "-style", "fusion", "a.CJX"} << Words{"p", "-style", "fusion", "a.CJX"};
    QTest::newRow("and behind it, in other ways") << Words{"p", "a.CJX", "--reverse", "--platform=offscreen"}
                                                  << Words{"p", "-platform", "offscreen", "-reverse", "a.CJX"};
    QTest::newRow("an option twice") << Words{"p", "-plugin", "a", "-plugin", "b"}
                                     << Words{"p", "-plugin", "a", "-plugin", "b"};
    QTest::newRow("a file like an option") << Words{"p", "--", "--help"} << Words{"p", "./--help"};
    QTest::newRow("a file like an option of the toolkit") << Words{"p", "--", "-style"} << Words{"p", "./-style"};
}

void TestCommandLine::editorGetsWhatIsItsOwn()
{
    QFETCH(Words, given);
    QFETCH(Words, expected);
    CCommandLine commandLine(QStringLiteral("ktz-jx-editor"), QString());
    QCOMPARE(parse(commandLine, given), -1);
    QCOMPARE(left(commandLine), expected);
    QVERIFY(commandLine.argv()[commandLine.argc()] == nullptr);
}

void TestCommandLine::ownOptionHasItsValueByteByByte()
{
    CCommandLine commandLine(QStringLiteral("ktz-jx-demo"), QString());
    commandLine.addOption(QStringLiteral("log"), QStringLiteral("file"), QString());
    QCOMPARE(parse(commandLine, {"p", "--log", "\xff.log", "a.CJX"}), -1);
    QCOMPARE(commandLine.valueOf(QStringLiteral("log")), QByteArray("\xff.log"));
    QCOMPARE(left(commandLine), (Words{"p", "a.CJX"}));
}

void TestCommandLine::programsAnswerWithoutADisplay_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QByteArray>("begin");
    for (const char* const program : {KTZ_EDITOR, KTZ_DEMO}) {
        const QByteArray name = QByteArray(program).split('/').last();
        for (const char* const option : {"--help", "-h"})
            QTest::addRow("%s %s", name.constData(), option) << program << option << QByteArray("Usage: ") + program;
        for (const char* const option : {"--version", "-v"})
            QTest::addRow("%s %s", name.constData(), option)
                << program << option << name + " (KTZ-JX Editor) " KTZ_PROJECT_VERSION "\n";
    }
}

void TestCommandLine::programsAnswerWithoutADisplay()
{
    QFETCH(QString, program);
    QFETCH(QString, option);
    QFETCH(QByteArray, begin);
    const Outcome outcome = runProgram(program, {option});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.output.left(begin.size()), begin);
    QCOMPARE(outcome.errors, QByteArray());
}

void TestCommandLine::wrongUseGetsOneLineAndStatus2_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("errors");
    const QString editor = QStringLiteral(KTZ_EDITOR);
    const QString demo = QStringLiteral(KTZ_DEMO);
    QTest::newRow("unknown") << editor << QStringList{"--usb"} << QByteArray("ktz-jx-editor: Unknown option 'usb'.\n");
    QTest::newRow("unknown, short") << editor << QStringList{"-x"}
                                    << QByteArray("ktz-jx-editor: Unknown option 'x'.\n");
    QTest::newRow("the demo's") << editor << QStringList{"--log", "x"}
                                << QByteArray("ktz-jx-editor: Unknown option 'log'.\n");
    QTest::newRow("unknown beside --help")
        << editor << QStringList{"--help", "--usb"} << QByteArray("ktz-jx-editor: Unknown option 'usb'.\n");
    QTest::newRow("with a line break") << demo << QStringList{"--u\nsb"}
                                       << QByteArray("ktz-jx-demo: Unknown option 'u sb'.\n");
    QTest::newRow("two files") << editor << QStringList{"a.CJX", "b.CJX"}
                               << QByteArray("ktz-jx-editor: Only one file can be opened.\n");
    QTest::newRow("no value") << demo << QStringList{"--log"}
                              << QByteArray("ktz-jx-demo: Missing value after '--log'.\n");
    QTest::newRow("too many cables") << demo << QStringList{"--device", "4"}
                                     << QByteArray("ktz-jx-demo: --device needs a number from 1 to 3\n");
    QTest::newRow("no number of cables") << demo << QStringList{"--device="}
                                         << QByteArray("ktz-jx-demo: --device needs a number from 1 to 3\n");
    QTest::newRow("a device with a file") << demo << QStringList{"--device", "3", "a.CJX"}
                                          << QByteArray("ktz-jx-demo: --device opens no file, which is the editor's\n");
    QTest::newRow("no value for the toolkit")
        << editor << QStringList{"-style"} << QByteArray("ktz-jx-editor: Missing value after '-style'.\n");
    QTest::newRow("a value too many") << editor << QStringList{"--version=2"}
                                      << QByteArray("ktz-jx-editor: Unexpected value after '--version'.\n");
}

void TestCommandLine::wrongUseGetsOneLineAndStatus2()
{
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, errors);
    const Outcome outcome = runProgram(program, arguments);
    QCOMPARE(outcome.status, 2);
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(outcome.errors, errors);
}

void TestCommandLine::helpThatCannotBeWrittenIsNoSuccess()
{
    QProcess process;
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    startWithoutDisplay(process, QStringLiteral(KTZ_EDITOR), {"--help"});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 1);
}

void TestCommandLine::toolkitTakesItsOptions()
{
    // A platform that it does not have is named in what the editor then says.
    const Outcome outcome = runProgram(QStringLiteral(KTZ_EDITOR), {"a.CJX", "--platform", "nonsense"});
    QCOMPARE(outcome.status, 1);
    QVERIFY2(outcome.errors.startsWith("ktz-jx-editor: This application failed to start because no Qt platform plugin"),
             outcome.errors.constData());
}

KTZ_TEST(QCoreApplication, TestCommandLine)
#include "TestCommandLine.moc"
