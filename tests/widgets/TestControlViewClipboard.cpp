#include "tests/widgets/CControlViewTest.h"
#include "widgets/CKnobLED.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

/// Counts how often it is asked what it holds.
class CAskedMimeData : public QMimeData
{
    Q_OBJECT

  public:
    mutable int m_questions = 0;

    [[nodiscard]] bool hasFormat(const QString& mimeType) const override
    {
        ++m_questions;
        return QMimeData::hasFormat(mimeType);
    }
};

/// Copying from a page and pasting onto one.
class TestControlViewClipboard : public CControlViewTest
{
    Q_OBJECT

  private slots:
    void formatNames_data();
    void formatNames();
    void everyControlHasAFormatOfItsOwn();
    void copiedIsWhatAPageCopies();
    void freshPageCopiesTheWholeKnob();
    void copiedSettingIsItsStoredValueAsText_data();
    void copiedSettingIsItsStoredValueAsText();
    void canPasteWhatTheSelectedControlTakes_data();
    void canPasteWhatTheSelectedControlTakes();
    void emptyClipboardCannotBePasted();
    void clipboardIsAskedOnceUntilSomethingChanges();
    void pastedTextEndsInTheEditorsRange_data();
    void pastedTextEndsInTheEditorsRange();
    void pastedSettingReachesTheDevice();
    void pasteOfAnotherFormatDoesNothing_data();
    void pasteOfAnotherFormatDoesNothing();
    void settingPastesOntoTheSameControlOfAnotherKnob();
    void pastedKnobReachesMemoryWidgetsAndDevice();
    void knobOfAnotherEditorIsNotPasted_data();
    void knobOfAnotherEditorIsNotPasted();
    void knobCopiedBeforeARestartCannotBePasted();
};

void TestControlViewClipboard::formatNames_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("name");
    QTest::newRow("knob") << k_mimeType_Knob << "application/x-morlan-ktz-jx-konb";
    QTest::newRow("CC number") << k_mimeType_CCNum << "application/x-morlan-ktz-jx-ccnum";
    QTest::newRow("MIDI channel") << k_mimeType_MIDICh << "application/x-morlan-ktz-jx-midich";
    QTest::newRow("maximum") << k_mimeType_Max << "application/x-morlan-ktz-jx-max";
    QTest::newRow("minimum") << k_mimeType_Min << "application/x-morlan-ktz-jx-min";
    QTest::newRow("LED type") << k_mimeType_LEDType << "application/x-morlan-ktz-jx-led-type";
}

void TestControlViewClipboard::formatNames()
{
    QFETCH(QString, format);
    QTEST(format, "name");
}

void TestControlViewClipboard::everyControlHasAFormatOfItsOwn()
{
    const int controls = 1 + static_cast<int>(k_numOfSettings);
    QStringList formats;
    for (int control = 0; control < controls; ++control) {
        select(m_page2, control);
        m_page2->copy();
        formats += QGuiApplication::clipboard()->mimeData()->formats();
    }
    QCOMPARE(formats.size(), controls);
    QCOMPARE(formats.removeDuplicates(), 0);
}

void TestControlViewClipboard::copiedIsWhatAPageCopies()
{
    for (int control = 0; control <= static_cast<int>(k_numOfSettings); ++control) {
        select(m_page2, control);
        m_page2->copy();
        QVERIFY(CControlView::isCopied(*QGuiApplication::clipboard()->mimeData()));
    }
    QMimeData other;
    QVERIFY(!CControlView::isCopied(other));
    other.setText(QStringLiteral("64"));
    QVERIFY(!CControlView::isCopied(other));
}

void TestControlViewClipboard::freshPageCopiesTheWholeKnob()
{
    QVERIFY(m_page2->canCopy());
    m_page2->copy();
    const QMimeData* mimeData = QGuiApplication::clipboard()->mimeData();
    QCOMPARE(mimeData->formats(), QStringList({k_mimeType_Knob}));
    QCOMPARE(mimeData->data(k_mimeType_Knob), QByteArray());
    QVERIFY(m_page2->canPaste());
    QVERIFY(m_page5->canPaste());
}

void TestControlViewClipboard::copiedSettingIsItsStoredValueAsText_data()
{
    QTest::addColumn<int>("control");
    QTest::addColumn<int>("value");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("CC number") << 1 << 103 << QByteArray("103");
    QTest::newRow("MIDI channel, shown as 16") << 2 << 15 << QByteArray("15");
    QTest::newRow("MIDI channel, shown as 1") << 2 << 0 << QByteArray("0");
    QTest::newRow("maximum") << 3 << 127 << QByteArray("127");
    QTest::newRow("minimum") << 4 << 7 << QByteArray("7");
    QTest::newRow("LED type") << 5 << 3 << QByteArray("3");
}

void TestControlViewClipboard::copiedSettingIsItsStoredValueAsText()
{
    QFETCH(int, control);
    QFETCH(int, value);
    editorOf(m_page2, control)->setValue(value);
    select(m_page2, control);
    m_page2->copy();
    const QMimeData* mimeData = QGuiApplication::clipboard()->mimeData();
    QCOMPARE(mimeData->formats(), QStringList({mimeTypeOf(control)}));
    QTEST(mimeData->data(mimeTypeOf(control)), "text");
}

void TestControlViewClipboard::canPasteWhatTheSelectedControlTakes_data()
{
    QTest::addColumn<int>("held");
    for (int held = 0; held <= 5; ++held)
        QTest::addRow("clipboard holds control %d", held) << held;
}

void TestControlViewClipboard::canPasteWhatTheSelectedControlTakes()
{
    QFETCH(int, held);
    select(m_page2, held);
    m_page2->copy();
    for (int control = 0; control <= 5; ++control) {
        select(m_page2, control);
        QCOMPARE(m_page2->canPaste(), control == held);
    }
}

void TestControlViewClipboard::emptyClipboardCannotBePasted()
{
    for (int control = 0; control <= 5; ++control) {
        select(m_page2, control);
        QVERIFY(!m_page2->canPaste());
        m_page2->paste();
    }
    QCOMPARE(m_connected->device.received().size(), 0);
}

void TestControlViewClipboard::clipboardIsAskedOnceUntilSomethingChanges()
{
    auto* held = new CAskedMimeData;
    held->setData(k_mimeType_CCNum, "9");
    QGuiApplication::clipboard()->setMimeData(held);
    select(m_page2, k_ccNum);
    QVERIFY(m_page2->canPaste());
    const int questions = held->m_questions;
    // As each step of a drag does.
    for (int i = 0; i < 10; ++i) {
        select(m_page2, k_ccNum);
        QVERIFY(m_page2->canPaste());
    }
    QCOMPARE(held->m_questions, questions);
    select(m_page2, k_midiCh);
    QVERIFY(!m_page2->canPaste());
    select(m_page2, k_ccNum);
    QVERIFY(m_page2->canPaste());
    QGuiApplication::clipboard()->clear();
    QVERIFY(!m_page2->canPaste());
    fillClipboard(k_mimeType_CCNum, "7");
    QVERIFY(m_page2->canPaste());
}

void TestControlViewClipboard::pastedTextEndsInTheEditorsRange_data()
{
    QTest::addColumn<int>("control");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("value");
    QTest::newRow("200 into the CC number") << 1 << QByteArray("200") << 127;
    QTest::newRow("abc into the CC number") << 1 << QByteArray("abc") << 0;
    QTest::newRow("nothing into the CC number") << 1 << QByteArray() << 0;
    QTest::newRow("-5 into the CC number") << 1 << QByteArray("-5") << 0;
    QTest::newRow("99999999999 into the CC number") << 1 << QByteArray("99999999999") << 0;
    QTest::newRow("16 into the MIDI channel") << 2 << QByteArray("16") << 15;
    QTest::newRow("60 into the maximum") << 3 << QByteArray("60") << 60;
    QTest::newRow("60 into the minimum") << 4 << QByteArray("60") << 60;
    QTest::newRow("4 into the LED type") << 5 << QByteArray("4") << 3;
}

void TestControlViewClipboard::pastedTextEndsInTheEditorsRange()
{
    QFETCH(int, control);
    QFETCH(QByteArray, text);
    QFETCH(int, value);
    select(m_page2, control);
    fillClipboard(mimeTypeOf(control), text);
    m_page2->paste();
    QCOMPARE(editorOf(m_page2, control)->getValue(), value);
    QCOMPARE(m_connected->memory.getParam(editorOf(m_page2, control)->controllerID()), value);
}

void TestControlViewClipboard::pastedSettingReachesTheDevice()
{
    select(m_page2, k_midiCh);
    fillClipboard(k_mimeType_MIDICh, QByteArray("9"));
    m_page2->paste();
    QCOMPARE(m_connected->device.settings(2).channel, 9);
    QCOMPARE(m_connected->device.received().size(), 1);
}

void TestControlViewClipboard::pasteOfAnotherFormatDoesNothing_data()
{
    QTest::addColumn<int>("held");
    QTest::addColumn<int>("control");
    QTest::newRow("CC number onto a MIDI channel") << 1 << 2;
    QTest::newRow("CC number onto a knob") << 1 << 0;
    QTest::newRow("knob onto a CC number") << 0 << 1;
    QTest::newRow("maximum onto a minimum") << 3 << 4;
}

void TestControlViewClipboard::pasteOfAnotherFormatDoesNothing()
{
    QFETCH(int, held);
    QFETCH(int, control);
    fillClipboard(mimeTypeOf(held), QByteArray("9"));
    const ParamList before = m_connected->memory.getParamList();
    select(m_page2, control);
    m_page2->paste();
    QCOMPARE(m_connected->memory.getParamList(), before);
    QCOMPARE(m_connected->device.received().size(), 0);
}

void TestControlViewClipboard::settingPastesOntoTheSameControlOfAnotherKnob()
{
    select(m_page2, k_ccNum);
    m_page2->copy();
    select(m_page5, k_ccNum);
    QVERIFY(m_page5->canPaste());
    m_page5->paste();
    QCOMPARE(m_connected->memory.getParam(1105), 10);
    QCOMPARE(m_connected->device.settings(5).cc, 10);
}

void TestControlViewClipboard::pastedKnobReachesMemoryWidgetsAndDevice()
{
    editorOf(m_page2, k_midiCh)->setValue(11);
    select(m_page2, 0);
    m_page2->copy();
    // What is pasted is what was copied, not what the knob holds by then.
    editorOf(m_page2, k_ccNum)->setValue(50);
    m_page5->paste();
    QCOMPARE(m_connected->memory.getParam(1105), 10);
    QCOMPARE(m_connected->memory.getParam(1205), 11);
    QCOMPARE(m_connected->memory.getParam(1505), 2);
    QCOMPARE(editorOf(m_page5, k_ccNum)->getValue(), 10);
    QCOMPARE(editorOf(m_page5, k_midiCh)->getValue(), 11);
    QCOMPARE(editorOf(m_page5, k_ledType)->getValue(), 2);
    QCOMPARE(m_connected->device.settings(5), (KnobSettings{10, 11, 127, 0, 2}));
}

void TestControlViewClipboard::knobOfAnotherEditorIsNotPasted_data()
{
    QTest::addColumn<bool>("copiedHereBefore");
    QTest::newRow("none was copied here") << false;
    QTest::newRow("another one was copied here before") << true;
}

void TestControlViewClipboard::knobOfAnotherEditorIsNotPasted()
{
    QFETCH(bool, copiedHereBefore);
    if (copiedHereBefore)
        m_page2->copy();
    fillClipboard(k_mimeType_Knob, QByteArray());
    const ParamList before = m_connected->memory.getParamList();
    QVERIFY(!m_page5->canPaste());
    m_page5->paste();
    QCOMPARE(m_connected->memory.getParamList(), before);
    QCOMPARE(editorOf(m_page5, k_ccNum)->getValue(), 72);
    QCOMPARE(m_connected->device.received().size(), 0);
}

void TestControlViewClipboard::knobCopiedBeforeARestartCannotBePasted()
{
    m_page2->copy();
    // What the main window does at every start and end.
    QGuiApplication::clipboard()->clear();
    QVERIFY(!m_page5->canPaste());
    m_page5->paste();
    QCOMPARE(m_connected->memory.getParam(1105), 72);
    QCOMPARE(m_connected->device.received().size(), 0);
}

KTZ_TEST(QApplication, TestControlViewClipboard)
#include "TestControlViewClipboard.moc"
