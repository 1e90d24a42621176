#include "tests/app/EditorFixture.h"
#include "tests/support/CTestCase.h"

#include <QClipboard>
#include <QMimeData>
#include <QProcess>

namespace
{
const QString k_plainText = QStringLiteral("text/plain");
const QByteArray k_bytes = "the user's";

/// This program once more, as another one that holds something on the clipboard.
class CClipboardOwner
{
  public:
    explicit CClipboardOwner(const QString& format)
    {
        m_process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--own"), format});
        QVERIFY(m_process.waitForReadyRead());
    }
    ~CClipboardOwner()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    CClipboardOwner(const CClipboardOwner&) = delete;
    CClipboardOwner& operator=(const CClipboardOwner&) = delete;

  private:
    QProcess m_process;
};

int ownClipboard(const QString& format)
{
    auto* data = new QMimeData;
    data->setData(format, k_bytes);
    QGuiApplication::clipboard()->setMimeData(data);
    QCoreApplication::processEvents();
    std::puts("held");
    std::fflush(stdout);
    return QCoreApplication::exec();
}

QByteArray onTheClipboard(const QString& format)
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData(); // some platforms have none for an empty one
    return data == nullptr ? QByteArray() : data->data(format);
}
} // namespace

/// What is on the clipboard when the editor starts and ends. Another program's is held by another process.
class TestCopiedSettings : public CTestCase
{
    Q_OBJECT

  private slots:
    void startTakesOnlySettings_data();
    void startTakesOnlySettings();
    void endTakesOnlySettings_data();
    void endTakesOnlySettings();
    void endTakesTheEditorsOwn();
    void knobOfAnotherProgramCannotBePasted();
};

void TestCopiedSettings::startTakesOnlySettings_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<bool>("stays");
    QTest::newRow("text") << k_plainText << true;
    QTest::newRow("picture") << "image/png" << true;
    QTest::newRow("knob") << k_mimeType_Knob << false;
    QTest::newRow("CC number") << k_mimeType_CCNum << false;
    QTest::newRow("MIDI channel") << k_mimeType_MIDICh << false;
    QTest::newRow("maximum") << k_mimeType_Max << false;
    QTest::newRow("minimum") << k_mimeType_Min << false;
    QTest::newRow("LED type") << k_mimeType_LEDType << false;
}

void TestCopiedSettings::startTakesOnlySettings()
{
    QFETCH(QString, format);
    QFETCH(bool, stays);
    const CClipboardOwner owner(format);
    QTRY_COMPARE(onTheClipboard(format), k_bytes);
    EditorFixture fixture;
    fixture.startWhole();
    QTRY_COMPARE(onTheClipboard(format), stays ? k_bytes : QByteArray());
    QVERIFY(!fixture.page(0)->canPaste());
}

void TestCopiedSettings::endTakesOnlySettings_data()
{
    startTakesOnlySettings_data();
}

void TestCopiedSettings::endTakesOnlySettings()
{
    QFETCH(QString, format);
    QFETCH(bool, stays);
    EditorFixture fixture;
    fixture.startWhole();
    const CClipboardOwner owner(format);
    QTRY_COMPARE(onTheClipboard(format), k_bytes);
    fixture.window.reset();
    QTRY_COMPARE(onTheClipboard(format), stays ? k_bytes : QByteArray());
}

void TestCopiedSettings::endTakesTheEditorsOwn()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    window.copy();
    QVERIFY(QGuiApplication::clipboard()->mimeData()->hasFormat(k_mimeType_Knob));
    fixture.window.reset();
    const QMimeData* left = QGuiApplication::clipboard()->mimeData();
    QVERIFY(left == nullptr || !left->hasFormat(k_mimeType_Knob));
}

void TestCopiedSettings::knobOfAnotherProgramCannotBePasted()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    fixture.page(2)->knobSelect();
    window.copy();
    QVERIFY(fixture.page(2)->canPaste());
    // From here on a knob is what another program says, whatever was copied here before.
    const CClipboardOwner owner(k_mimeType_Knob);
    QTRY_COMPARE(onTheClipboard(k_mimeType_Knob), k_bytes);
    QVERIFY(!fixture.page(2)->canPaste());
    const KnobSettings before = fixture.shown(5);
    fixture.page(5)->knobSelect();
    window.paste();
    QCOMPARE(fixture.shown(5), before);
}

KTZ_TEST_MAIN(TestCopiedSettings)(int argc, char** argv)
{
    QApplication application(argc, argv);
    if (argc == 3 && argv[1] == QByteArray("--own"))
        return ownClipboard(QString::fromLocal8Bit(argv[2]));
    TestCopiedSettings test;
    return QTest::qExec(&test, argc, argv);
}
#include "TestCopiedSettings.moc"
