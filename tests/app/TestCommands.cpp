#include "tests/app/EditorFixture.h"
#include "tests/app/StageFile.h"
#include "tests/support/CFileDialogAnswer.h"
#include "tests/support/CMessageBoxAnswer.h"
#include "tests/support/CTestCase.h"

#include <QClipboard>
#include <QMenu>
#include <QMimeData>
#include <QTemporaryDir>

namespace
{

/// The change-parameter messages among what was sent.
QStringList changes(const EditorFixture& fixture)
{
    QStringList found = fixture.sent();
    found.removeAll(k_keep);
    return found;
}
} // namespace

class TestCommands : public CTestCase
{
    Q_OBJECT

  private slots:
    void openSendsEightMessagesAndShowsTheSettings();
    void openHoldsValuesWithinTheirRanges();
    void failedOpenSendsNothing();
    void argumentFileIsOpenedOnlyAfterTheSplash();
    void openRequestAsksAboutUnsavedChanges();
    void saveWritesWhatTheDeviceHolds();
    void savedSettingsComeBack();
    void revertWithNoChangesNothing();
    void revertClosedChangesNothing();
    void revertGoesBackToTheEndOfTheSplash();
    void factoryPresetWithNoChangesNothing();
    void factoryPresetGoesToTheDevice();
    void copyAndPasteActOnKnobZeroAtFirst();
    void copyAndPasteActOnThePageLastSelected();
    void editMenuOffersPasteForTheClipboardsFormatAlone();
    void shortcutsWork();
    void manualThatIsMissingIsReported();
    void lostConnectionDisablesRevertAndReset();
    void editsAfterALossStayInTheEditor();
    void windowIsSelectedByNumber();
};

void TestCommands::openSendsEightMessagesAndShowsTheSettings()
{
    const QTemporaryDir folder;
    EditorFixture fixture;
    fixture.plug();
    fixture.startWhole();
    fixture.waitUntilConnected();
    fixture.forgetSent();
    CFileDialogAnswer answer({stageFile(folder)});
    fixture.action(k_openString)->trigger();
    QStringList expected;
    for (int knob = 0; knob < 8; ++knob) {
        const std::array<int, 5> settings{20 + knob, knob, 100 + knob, 10 + knob, 3};
        QByteArray message = QByteArray::fromHex("f043103e18050203");
        message.append(static_cast<char>(knob));
        for (const int value : settings)
            message.append(static_cast<char>(value));
        message.append('\xf7');
        expected.append(QString::fromLatin1(message.toHex()));
    }
    QCOMPARE(changes(fixture), expected);
    for (int knob = 0; knob < 8; ++knob) {
        QCOMPARE(fixture.editor(1100 + knob)->getValue(), 20 + knob);
        QCOMPARE(fixture.editor(1500 + knob)->getValue(), 3);
        QCOMPARE(fixture.device.settings(knob).min, 10 + knob);
    }
}

void TestCommands::openHoldsValuesWithinTheirRanges()
{
    const QTemporaryDir folder;
    const QString path = stageFile(folder);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    const QByteArray bytes = file.readAll()
                                 .replace("key1102>22", "key1102>247") // would end a message in its middle
                                 .replace("key1202>2", "key1202>16")
                                 .replace("key1302>102", "key1302>300") // what the editor shows already, once held
                                 .replace("key1402>12", "key1402>-5")
                                 .replace("key1502>3", "key1502>99999999999");
    QVERIFY(file.resize(0) && file.seek(0) && file.write(bytes) == bytes.size());
    file.close();

    EditorFixture fixture;
    fixture.plug();
    fixture.startWhole();
    fixture.waitUntilConnected();
    fixture.forgetSent();
    CFileDialogAnswer answer({path});
    fixture.action(k_openString)->trigger();
    QCOMPARE(changes(fixture).size(), 8);
    QCOMPARE(changes(fixture).at(2), QStringLiteral("f043103e18050203027f0f7f0000f7"));
    QCOMPARE(fixture.editor(1102)->getValue(), 127);
    QCOMPARE(fixture.editor(1402)->getValue(), 0);
}

void TestCommands::failedOpenSendsNothing()
{
    EditorFixture fixture;
    fixture.plug();
    CMainWindow& window = fixture.startWhole();
    fixture.waitUntilConnected();
    fixture.forgetSent();
    CMessageBoxAnswer answer(QMessageBox::Ok);
    window.setApplicationFilePath(QStringLiteral("/nowhere/missing.CJX"));
    window.applicationFileOpen();
    QCOMPARE(answer.boxes().size(), 1);
    QCOMPARE(answer.boxes().first().text, QStringLiteral("Failed to open the data."));
    QCOMPARE(answer.boxes().first().title, QStringLiteral("Open file"));
    QVERIFY(changes(fixture).isEmpty());
}

void TestCommands::argumentFileIsOpenedOnlyAfterTheSplash()
{
    const QTemporaryDir folder;
    EditorFixture fixture;
    CMainWindow& window = fixture.start();
    window.setApplicationFilePath(stageFile(folder));
    QCOMPARE(fixture.editor(1103)->getValue(), 7);
    fixture.finishSplash();
    QCOMPARE(fixture.editor(1103)->getValue(), 23);
    // Opening it at the start is no change: the window closes without a question.
    QVERIFY(window.close());
}

void TestCommands::openRequestAsksAboutUnsavedChanges()
{
    const QTemporaryDir folder;
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    fixture.editor(1103)->setValue(99);
    window.setApplicationFilePath(stageFile(folder));
    CMessageBoxAnswer answer(QMessageBox::Cancel);
    window.applicationFileOpen();
    QCOMPARE(answer.boxes().size(), 1);
    QCOMPARE(answer.boxes().first().text, QStringLiteral("The parameter is modified.\r\nSave?"));
    QCOMPARE(fixture.editor(1103)->getValue(), 99);
    answer.setAnswer(QMessageBox::No);
    window.applicationFileOpen();
    QCOMPARE(fixture.editor(1103)->getValue(), 23);
}

void TestCommands::saveWritesWhatTheDeviceHolds()
{
    const QTemporaryDir folder;
    EditorFixture fixture;
    fixture.plug();
    fixture.device.setSettings(6, {1, 2, 3, 4, 1});
    fixture.startWhole();
    fixture.waitUntilConnected();
    QTRY_COMPARE(fixture.editor(1106)->getValue(), 1);
    const QString path = folder.filePath(QStringLiteral("saved.CJX"));
    CFileDialogAnswer answer({path});
    fixture.action(k_saveAsString)->trigger();
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    QVERIFY(text.startsWith("<!DOCTYPE KTZJXEditor>\n<parameters version=\"1.0\">\n    <controlview>\n"));
    QVERIFY(text.contains("<key1106>1</key1106>"));
    QVERIFY(text.contains("<key1306>3</key1306>"));
}

void TestCommands::savedSettingsComeBack()
{
    const QTemporaryDir folder;
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    fixture.editor(1102)->setValue(42);
    const QString path = folder.filePath(QStringLiteral("typed-without-suffix"));
    {
        CFileDialogAnswer answer({path});
        fixture.action(k_saveAsString)->trigger();
    }
    QVERIFY(QFile::exists(path + QStringLiteral(".CJX")));
    fixture.editor(1102)->setValue(43);
    fixture.action(k_saveString)->trigger(); // to the same file, without a question
    fixture.editor(1102)->setValue(44);
    CMessageBoxAnswer answer(QMessageBox::No);
    window.setApplicationFilePath(path + QStringLiteral(".CJX"));
    window.applicationFileOpen();
    QCOMPARE(fixture.editor(1102)->getValue(), 43);
}

void TestCommands::revertWithNoChangesNothing()
{
    EditorFixture fixture;
    fixture.plug();
    fixture.startWhole();
    fixture.waitUntilConnected();
    fixture.editor(1102)->setValue(42);
    fixture.forgetSent();
    CMessageBoxAnswer answer(QMessageBox::No);
    fixture.action(k_revrtString)->trigger();
    QCOMPARE(answer.boxes().size(), 1);
    QCOMPARE(answer.boxes().first().text, k_revertMessage);
    QCOMPARE(answer.boxes().first().title, QString());
    QCOMPARE(answer.boxes().first().icon, QMessageBox::Question);
    QCOMPARE(answer.boxes().first().buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(answer.boxes().first().defaultButton, QMessageBox::No);
    QCOMPARE(fixture.editor(1102)->getValue(), 42);
    QVERIFY(changes(fixture).isEmpty());
}

void TestCommands::revertClosedChangesNothing()
{
    EditorFixture fixture;
    fixture.plug();
    CMainWindow& window = fixture.startWhole();
    fixture.waitUntilConnected();
    fixture.editor(1102)->setValue(42);
    CMessageBoxAnswer answer(QMessageBox::NoButton); // closes the box
    window.revert();
    window.factoryReset();
    QCOMPARE(answer.boxes().size(), 2);
    QCOMPARE(fixture.editor(1102)->getValue(), 42);
}

void TestCommands::revertGoesBackToTheEndOfTheSplash()
{
    EditorFixture fixture;
    fixture.plug();
    fixture.device.setSettings(2, {50, 1, 120, 5, 1});
    fixture.start();
    QTRY_COMPARE(fixture.editor(1102)->getValue(), 50);
    fixture.finishSplash();
    fixture.waitUntilConnected();
    fixture.editor(1102)->setValue(42);
    fixture.editor(1307)->setValue(1);
    fixture.forgetSent();
    CMessageBoxAnswer answer(QMessageBox::Yes);
    fixture.action(k_revrtString)->trigger();
    QCOMPARE(changes(fixture).size(), 8);
    QCOMPARE(fixture.editor(1102)->getValue(), 50);
    QCOMPARE(fixture.editor(1307)->getValue(), 127);
    QCOMPARE(fixture.device.settings(2), (KnobSettings{50, 1, 120, 5, 1}));
}

void TestCommands::factoryPresetWithNoChangesNothing()
{
    EditorFixture fixture;
    fixture.plug();
    fixture.startWhole();
    fixture.waitUntilConnected();
    fixture.editor(1102)->setValue(42);
    fixture.forgetSent();
    CMessageBoxAnswer answer(QMessageBox::No);
    fixture.action(k_resetString)->trigger();
    QCOMPARE(answer.boxes().first().text, k_resetMessage);
    QCOMPARE(answer.boxes().first().defaultButton, QMessageBox::No);
    QCOMPARE(fixture.editor(1102)->getValue(), 42);
    QVERIFY(changes(fixture).isEmpty());
}

void TestCommands::factoryPresetGoesToTheDevice()
{
    EditorFixture fixture;
    fixture.plug();
    for (int knob = 0; knob < 8; ++knob)
        fixture.device.setSettings(knob, {1, 2, 3, 4, 1});
    fixture.startWhole();
    fixture.waitUntilConnected();
    QTRY_COMPARE(fixture.editor(1107)->getValue(), 1);
    CMessageBoxAnswer answer(QMessageBox::Yes);
    fixture.action(k_resetString)->trigger();
    for (int knob = 0; knob < 8; ++knob) {
        QCOMPARE(fixture.device.settings(knob), k_factorySettings[static_cast<std::size_t>(knob)]);
        QCOMPARE(fixture.editor(1100 + knob)->getValue(), k_factorySettings[static_cast<std::size_t>(knob)].cc);
    }
}

void TestCommands::copyAndPasteActOnKnobZeroAtFirst()
{
    EditorFixture fixture;
    fixture.startWhole();
    fixture.action(k_copyString)->trigger();
    QVERIFY(QGuiApplication::clipboard()->mimeData()->hasFormat(k_mimeType_Knob));
    QTest::mouseClick(fixture.knobLED(5), Qt::LeftButton);
    fixture.action(k_pasteString)->trigger();
    QCOMPARE(fixture.editor(1105)->getValue(), 74);
}

void TestCommands::copyAndPasteActOnThePageLastSelected()
{
    EditorFixture fixture;
    fixture.plug();
    fixture.startWhole();
    fixture.waitUntilConnected();
    QTest::mouseClick(fixture.knobLED(2), Qt::LeftButton);
    fixture.action(k_copyString)->trigger();
    QTest::mouseClick(fixture.knobLED(6), Qt::LeftButton);
    fixture.forgetSent();
    fixture.action(k_pasteString)->trigger();
    QCOMPARE(fixture.device.settings(6), k_factorySettings[2]);
    QCOMPARE(fixture.editor(1106)->getValue(), 10);
    QCOMPARE(fixture.editor(1506)->getValue(), 2);
    QCOMPARE(changes(fixture), QStringList{QStringLiteral("f043103e18050203060a007f0002f7")});
}

void TestCommands::editMenuOffersPasteForTheClipboardsFormatAlone()
{
    EditorFixture fixture;
    fixture.startWhole();
    QTest::mouseClick(fixture.knobLED(2), Qt::LeftButton);
    fixture.action(k_copyString)->trigger();
    QMenu* edit = fixture.menuBar()->actions()[1]->menu();
    emit edit->aboutToShow();
    QVERIFY(fixture.action(k_pasteString)->isEnabled());
    // A channel field of another page takes no knob.
    QTest::mouseClick(fixture.slider(1204), Qt::LeftButton);
    emit edit->aboutToShow();
    QVERIFY(fixture.action(k_copyString)->isEnabled());
    QVERIFY(!fixture.action(k_pasteString)->isEnabled());
}

void TestCommands::shortcutsWork()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTest::mouseClick(fixture.knobLED(2), Qt::LeftButton);
    QTest::keyClick(&window, Qt::Key_C, Qt::ControlModifier);
    QTest::mouseClick(fixture.knobLED(3), Qt::LeftButton);
    QTest::keyClick(&window, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(fixture.editor(1103)->getValue(), 10);
}

void TestCommands::manualThatIsMissingIsReported()
{
    EditorFixture fixture;
    fixture.startWhole();
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.action(k_manualString)->trigger();
    QCOMPARE(answer.boxes().size(), 1);
    QCOMPARE(answer.boxes().first().title, QString());
    QCOMPARE(answer.boxes().first().text, QStringLiteral("Failed to open the manual."));
    QCOMPARE(answer.boxes().first().icon, QMessageBox::Warning);
    QCOMPARE(answer.boxes().first().buttons, QMessageBox::Ok);
    QCOMPARE(answer.boxes().first().defaultButton, QMessageBox::Ok);
}

void TestCommands::lostConnectionDisablesRevertAndReset()
{
    EditorFixture fixture;
    fixture.plug();
    CMainWindow& window = fixture.startWhole();
    fixture.waitUntilConnected();
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.device.unplug();
    QTRY_VERIFY(!answer.boxes().isEmpty());
    QCOMPARE(answer.boxes().first().text, k_connectionErrorMessage);
    QCOMPARE(answer.boxes().first().parent, &window);
    QVERIFY(!fixture.action(k_revrtString)->isEnabled());
    QVERIFY(!fixture.action(k_resetString)->isEnabled());
    QTRY_COMPARE(window.findChild<COnlineMark*>()->getAlpha(), 255);
}

void TestCommands::editsAfterALossStayInTheEditor()
{
    EditorFixture fixture;
    fixture.plug();
    fixture.startWhole();
    fixture.waitUntilConnected();
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.device.unplug();
    QTRY_VERIFY(!answer.boxes().isEmpty());
    fixture.forgetSent();
    fixture.editor(1104)->setValue(5);
    QCOMPARE(fixture.editor(1104)->getValue(), 5);
    QVERIFY(changes(fixture).isEmpty());
}

void TestCommands::windowIsSelectedByNumber()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    window.conViewSelect(4);
    window.copy();
    window.conViewSelect(99); // no such page: nothing to copy or paste
    window.copy();
    window.paste();
    window.setEditMenuEnable();
    QVERIFY(!fixture.action(k_copyString)->isEnabled());
    QVERIFY(!fixture.action(k_pasteString)->isEnabled());
    window.conViewSelect(0);
    window.paste();
    QCOMPARE(fixture.editor(1100)->getValue(), 73);
}

KTZ_TEST(QApplication, TestCommands)
#include "TestCommands.moc"
