#include "app/common/CMessageBox.h"
#include "app/common/Constants.h"
#include "tests/support/CMessageBoxAnswer.h"
#include "tests/support/CTestCase.h"

#include <QPushButton>

class TestMessageBox : public CTestCase
{
    Q_OBJECT

  private slots:
    void texts_data();
    void texts();
    void questionShowsWhatItIsGiven();
    void warningShowsWhatItIsGiven();
    void returnAnswersNoWhenNoIsTheDefault();
    void yesAnswersYes();
    void closedBoxIsNoYes();
};

void TestMessageBox::texts_data()
{
    QTest::addColumn<QString>("constant");
    QTest::addColumn<QString>("text");
    QTest::newRow("unsaved changes") << k_checkSave << "The parameter is modified.\r\nSave?";
    QTest::newRow("existing file") << k_fileExists.arg("a.CJX")
                                   << "\"a.CJX\" already exists.\r\nThe data will be overwritten.\r\nContinue?";
    QTest::newRow("open failed") << k_openError << "Failed to open the data.";
    QTest::newRow("save failed") << k_saveError << "Failed to save.";
    QTest::newRow("revert title") << k_revertTitle << "";
    QTest::newRow("revert") << k_revertMessage
                            << "All parameters will be restored to their initial state.\r\nContinue?";
    QTest::newRow("reset title") << k_resetTitle << "";
    QTest::newRow("reset") << k_resetMessage
                           << "All the current parameters will be restored to the factory settings.\r\nContinue?";
    QTest::newRow("manual") << k_errorManual << "Failed to open the manual.";
    QTest::newRow("lost connection title") << k_connectionErrorTitle << "";
    QTest::newRow("lost connection") << k_connectionErrorMessage
                                     << "Lost the connection.\r\nPlease connect the device properly to the computer, "
                                        "and restart this editor.";
    QTest::newRow("editor name") << k_editorName << "KTZ-JX";
    QTest::newRow("version") << k_version << "KTZ-JX ZANDO_CONTROLLER Editor Ver.1.0.1";
    QTest::newRow("device") << k_jxPortName << "Trellwick KTZ-JX";
    QTest::newRow("editor port") << k_jxEditorPortName << "Trellwick KTZ-JX Port3";
    QTest::newRow("7 point font") << k_fontGLT7Bold << "Morlan GLT7 Bold";
    QTest::newRow("8 point font") << k_fontGLT8 << "Morlan GLT8 Regular";
    QTest::newRow("10 point font") << k_fontGLT10Bold << "Morlan GLT10 Bold";
    QTest::newRow("copied knob") << k_mimeType_Knob << "application/x-morlan-ktz-jx-konb";
    QTest::newRow("copied CC number") << k_mimeType_CCNum << "application/x-morlan-ktz-jx-ccnum";
    QTest::newRow("copied MIDI channel") << k_mimeType_MIDICh << "application/x-morlan-ktz-jx-midich";
    QTest::newRow("copied maximum") << k_mimeType_Max << "application/x-morlan-ktz-jx-max";
    QTest::newRow("copied minimum") << k_mimeType_Min << "application/x-morlan-ktz-jx-min";
    QTest::newRow("copied LED type") << k_mimeType_LEDType << "application/x-morlan-ktz-jx-led-type";
}

void TestMessageBox::texts()
{
    QFETCH(QString, constant);
    QFETCH(QString, text);
    QCOMPARE(constant, text);
}

void TestMessageBox::questionShowsWhatItIsGiven()
{
    CMessageBoxAnswer answer(QMessageBox::No);
    QWidget parent;
    QCOMPARE(
        CMessageBox::question(&parent, QString(), k_revertMessage, QMessageBox::Yes | QMessageBox::No, QMessageBox::No),
        int(QMessageBox::No));
    QCOMPARE(answer.boxes().size(), 1);
    const CMessageBoxAnswer::Box& box = answer.boxes().first();
    QCOMPARE(box.icon, QMessageBox::Question);
    QCOMPARE(box.title, QString());
    QCOMPARE(box.text, k_revertMessage);
    QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(box.defaultButton, QMessageBox::No);
    QCOMPARE(box.buttonWidths, (QList<int>{90, 90}));
    QCOMPARE(box.parent, &parent);
}

void TestMessageBox::warningShowsWhatItIsGiven()
{
    CMessageBoxAnswer answer(QMessageBox::Ok);
    QCOMPARE(CMessageBox::warning(nullptr, QStringLiteral("Save file"), k_saveError, QMessageBox::Ok, QMessageBox::Ok),
             int(QMessageBox::Ok));
    const CMessageBoxAnswer::Box& box = answer.boxes().first();
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.title, QStringLiteral("Save file"));
    QCOMPARE(box.buttonWidths, QList<int>{90});
}

void TestMessageBox::returnAnswersNoWhenNoIsTheDefault()
{
    QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
    QCOMPARE(
        CMessageBox::question(nullptr, QString(), k_resetMessage, QMessageBox::Yes | QMessageBox::No, QMessageBox::No),
        int(QMessageBox::No));
}

void TestMessageBox::yesAnswersYes()
{
    CMessageBoxAnswer answer(QMessageBox::Yes);
    QCOMPARE(
        CMessageBox::question(nullptr, QString(), k_resetMessage, QMessageBox::Yes | QMessageBox::No, QMessageBox::No),
        int(QMessageBox::Yes));
}

void TestMessageBox::closedBoxIsNoYes()
{
    QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    QVERIFY(CMessageBox::question(nullptr, QString(), k_resetMessage, QMessageBox::Yes | QMessageBox::No,
                                  QMessageBox::Yes) != QMessageBox::Yes);
}

QTEST_MAIN(TestMessageBox)
#include "TestMessageBox.moc"
