#include "app/common/Utilities.h"
#include "tests/support/CTestCase.h"
#include "tests/widgets/ConnectedMemory.h"
#include "tests/widgets/WidgetEvents.h"
#include "widgets/CControlView.h"
#include "widgets/CImageSlider.h"
#include "widgets/CKnobLED.h"
#include "widgets/CLineEdit.h"
#include "widgets/CSlideEditor.h"
#include "widgets/CSpinButton.h"
#include "widgets/CTextSlider.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMimeData>
#include <QPropertyAnimation>
#include <QTimer>

#include <functional>
#include <memory>

namespace
{
constexpr int k_ccNum = 1;
constexpr int k_midiCh = 2;
constexpr int k_ledType = 5;

/// Stands in for the main window: two pages and the commands that they call.
class CWindow : public QWidget
{
    Q_OBJECT

  public:
    int m_menuUpdates = 0;
    int m_copies = 0;
    int m_pastes = 0;

  public slots:
    void setEditMenuEnable()
    {
        ++m_menuUpdates;
    }
    void copy()
    {
        ++m_copies;
    }
    void paste()
    {
        ++m_pastes;
    }
};

QString mimeTypeOf(int control)
{
    return QStringList{k_mimeType_Knob, k_mimeType_CCNum, k_mimeType_MIDICh,
                       k_mimeType_Max,  k_mimeType_Min,   k_mimeType_LEDType}
        .at(control);
}

void fillClipboard(const QString& mimeType, const QByteArray& bytes)
{
    auto* mimeData = new QMimeData;
    mimeData->setData(mimeType, bytes);
    QGuiApplication::clipboard()->setMimeData(mimeData);
}
} // namespace

/// The pages of knobs 2 and 5, bound to a connected memory.
class TestControlView : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();

    void controlsHaveTheirPlaces_data();
    void controlsHaveTheirPlaces();
    void editorsAreBuiltInTheirOrder();
    void editorsHaveTheirSliders_data();
    void editorsHaveTheirSliders();
    void ledTypeEditorShowsFourPictures();
    void skinFontReachesEveryControl();

    void factorySettings_data();
    void factorySettings();
    void factorySettingsAreWrittenSilently();
    void pageWithoutAMemoryIsHarmless();
    void pageWithoutControlsWritesNothing();

    void pressSelectsTheControl_data();
    void pressSelectsTheControl();
    void otherWidgetsCannotBeSelected();
    void editorOfAnUnknownParameterSelectsTheKnob();

    void formatNames_data();
    void formatNames();
    void freshPageCopiesTheWholeKnob();
    void copiedSettingIsItsStoredValueAsText_data();
    void copiedSettingIsItsStoredValueAsText();
    void canPasteWhatTheSelectedControlTakes_data();
    void canPasteWhatTheSelectedControlTakes();
    void emptyClipboardCannotBePasted();
    void pastedTextEndsInTheEditorsRange_data();
    void pastedTextEndsInTheEditorsRange();
    void pastedSettingReachesTheDevice();
    void pasteOfAnotherFormatDoesNothing_data();
    void pasteOfAnotherFormatDoesNothing();
    void settingPastesOntoTheSameControlOfAnotherKnob();
    void pastedKnobReachesMemoryWidgetsAndDevice();
    void knobCopiedBeforeARestartCannotBePasted();

    void ledTypeEditChangesTheLED();
    void shownChannelIsOneMoreThanTheStoredOne();

    void rightClickSelectsAndOffersCopyAndPaste_data();
    void rightClickSelectsAndOffersCopyAndPaste();
    void menuCommandsGoThroughTheParent();
    void rightClickOutsideTheControlFallsThrough();
    void hiddenPageLeavesContextMenusAlone();
    void otherEventsPassTheFilter();
    void reportFromTheDeviceClosesTheMenu();
    void pageCanGoWhileItsMenuIsOpen();
    void destroyedPageIsForgottenByTheMemory();

  private:
    [[nodiscard]] CControlView* createPage(int knob);
    void bindAll(QWidget* widget);
    [[nodiscard]] static CSlideEditor* editorOf(const CControlView* page, int control);
    [[nodiscard]] static QAbstractSlider* sliderOf(const CControlView* page, int control);
    static void select(CControlView* page, int control);

    /// Right-clicks at the widget and calls look while the menu is open, which it closes afterwards.
    void rightClick(QWidget* widget, const std::function<void(QMenu*)>& look);

    std::unique_ptr<ConnectedMemory> m_connected;
    std::unique_ptr<CWindow> m_window;
    CControlView* m_page2 = nullptr;
    CControlView* m_page5 = nullptr;
    int m_menusSeen = 0;
};

void TestControlView::init()
{
    CTestCase::init();
    QGuiApplication::clipboard()->clear();
    m_connected = std::make_unique<ConnectedMemory>();
    m_window = std::make_unique<CWindow>();
    m_window->setGeometry(20, 20, 300, 300);
    m_page2 = createPage(2);
    m_page5 = createPage(5);
    m_page5->move(100, 0);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_menusSeen = 0;
}

void TestControlView::cleanup()
{
    m_window.reset();
    m_connected.reset();
}

CControlView* TestControlView::createPage(int knob)
{
    auto* page = new CControlView(m_window.get(), &m_connected->memory);
    page->resize(87, 279);
    page->initialize(knob);
    bindAll(page);
    m_connected->memory.updateKnob(knob);
    return page;
}

void TestControlView::bindAll(QWidget* widget)
{
    for (QObject* child : widget->children()) {
        if (auto* proxy = dynamic_cast<CMemAPIProxy*>(child))
            m_connected->bind(*proxy, proxy->controllerID());
        if (child->isWidgetType())
            bindAll(static_cast<QWidget*>(child));
    }
}

CSlideEditor* TestControlView::editorOf(const CControlView* page, int control)
{
    return page->findChildren<CSlideEditor*>(QString(), Qt::FindDirectChildrenOnly).at(control - 1);
}

QAbstractSlider* TestControlView::sliderOf(const CControlView* page, int control)
{
    return editorOf(page, control)->findChildren<QAbstractSlider*>(QString(), Qt::FindDirectChildrenOnly).first();
}

void TestControlView::select(CControlView* page, int control)
{
    if (control == 0)
        page->knobSelect();
    else
        page->sliderSelect(editorOf(page, control));
}

void TestControlView::controlsHaveTheirPlaces_data()
{
    QTest::addColumn<int>("control");
    QTest::addColumn<QRect>("place");
    QTest::addColumn<int>("id"); // of knob 2
    QTest::newRow("knob") << 0 << QRect(0, 0, 87, 87) << 1002;
    QTest::newRow("CC number") << 1 << QRect(8, 142, 73, 15) << 1102;
    QTest::newRow("MIDI channel") << 2 << QRect(8, 180, 73, 15) << 1202;
    QTest::newRow("maximum") << 3 << QRect(8, 218, 73, 15) << 1302;
    QTest::newRow("minimum") << 4 << QRect(8, 256, 73, 15) << 1402;
    QTest::newRow("LED type, beside its spin button") << 5 << QRect(8, 104, 60, 15) << 1502;
}

void TestControlView::controlsHaveTheirPlaces()
{
    QFETCH(int, control);
    QFETCH(QRect, place);
    QFETCH(int, id);
    if (control == 0) {
        const auto* knob = m_page2->findChild<CKnobLED*>();
        QCOMPARE(knob->geometry(), place);
        QCOMPARE(knob->controllerID(), id);
        return;
    }
    const QAbstractSlider* slider = sliderOf(m_page2, control);
    QCOMPARE(QRect(slider->mapTo(m_page2, QPoint(0, 0)), slider->size()), place);
    QCOMPARE(editorOf(m_page2, control)->controllerID(), id);
}

void TestControlView::editorsAreBuiltInTheirOrder()
{
    QList<int> ids;
    for (const CSlideEditor* editor : m_page5->findChildren<CSlideEditor*>())
        ids.append(editor->controllerID());
    QCOMPARE(ids, QList<int>({1105, 1205, 1305, 1405, 1505}));
}

void TestControlView::editorsHaveTheirSliders_data()
{
    QTest::addColumn<int>("control");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<double>("offset");
    QTest::newRow("CC number") << 1 << 127 << 0.0;
    QTest::newRow("MIDI channel") << 2 << 15 << 1.0;
    QTest::newRow("maximum") << 3 << 127 << 0.0;
    QTest::newRow("minimum") << 4 << 127 << 0.0;
}

void TestControlView::editorsHaveTheirSliders()
{
    QFETCH(int, control);
    QFETCH(int, maximum);
    QFETCH(double, offset);
    const auto* slider = qobject_cast<CTextSlider*>(sliderOf(m_page2, control));
    QVERIFY(slider != nullptr);
    QCOMPARE(slider->minimum(), 0);
    QCOMPARE(slider->maximum(), maximum);
    QCOMPARE(slider->offset(), offset);
    QCOMPARE(slider->alignment(), Qt::AlignCenter);
    QVERIFY(slider->directEdit());
    QCOMPARE(slider->controllerID(), 0);
    const auto* spin = editorOf(m_page2, control)->findChild<CSpinButton*>();
    QCOMPARE(spin->minimum(), 0);
    QCOMPARE(spin->maximum(), maximum);
}

void TestControlView::ledTypeEditorShowsFourPictures()
{
    const auto* slider = qobject_cast<CImageSlider*>(sliderOf(m_page2, k_ledType));
    QVERIFY(slider != nullptr);
    QCOMPARE(slider->getTotalImages(), 4);
    QVERIFY(!slider->getImage().isNull());
    QCOMPARE(slider->value(), 2);
}

void TestControlView::skinFontReachesEveryControl()
{
    // As the main window does before it builds its pages.
    m_window->setFont(QFont(k_fontGLT10Bold));
    Utilities::adjustFont(m_window.get());
    const CControlView* page = createPage(3);
    QVERIFY(page->testAttribute(Qt::WA_SetFont));
    for (int control = 1; control <= 5; ++control) {
        QVERIFY(sliderOf(page, control)->testAttribute(Qt::WA_SetFont));
        QCOMPARE(sliderOf(page, control)->font().family(), k_fontGLT10Bold);
        QCOMPARE(sliderOf(page, control)->font().pointSize(), 10);
        QVERIFY(sliderOf(page, control)->font().styleStrategy() & QFont::NoAntialias);
    }
}

void TestControlView::factorySettings_data()
{
    QTest::addColumn<int>("knob");
    QTest::addColumn<int>("ccNum");
    QTest::addColumn<int>("ledType");
    QTest::newRow("knob 0") << 0 << 74 << 0;
    QTest::newRow("knob 1") << 1 << 71 << 0;
    QTest::newRow("knob 2, the only concave one") << 2 << 10 << 2;
    QTest::newRow("knob 3") << 3 << 7 << 0;
    QTest::newRow("knob 4") << 4 << 73 << 0;
    QTest::newRow("knob 5") << 5 << 72 << 0;
    QTest::newRow("knob 6") << 6 << 91 << 0;
    QTest::newRow("knob 7") << 7 << 93 << 0;
}

void TestControlView::factorySettings()
{
    QFETCH(int, knob);
    CMemAPIWrapper& memory = m_connected->memory;
    for (int category : k_settingCategories)
        memory.setParam(category + knob, 99);
    memory.setKnob(1000 + knob, 99);
    CControlView page(m_window.get(), &memory);
    page.initialize(knob);
    QTEST(memory.getParam(1100 + knob), "ccNum");
    QCOMPARE(memory.getParam(1200 + knob), 0);
    QCOMPARE(memory.getParam(1300 + knob), 127);
    QCOMPARE(memory.getParam(1400 + knob), 0);
    QTEST(memory.getParam(1500 + knob), "ledType");
    QCOMPARE(memory.getKnob(1000 + knob), 0);
}

void TestControlView::factorySettingsAreWrittenSilently()
{
    sliderOf(m_page2, k_ccNum)->setValue(50);
    const auto sent = m_connected->device.received().size();
    m_page2->setAllDefaultParamsToMemAPI();
    QCOMPARE(m_connected->memory.getParam(1102), 10);
    QCOMPARE(sliderOf(m_page2, k_ccNum)->value(), 50);
    QCOMPARE(m_connected->device.received().size(), sent);
    m_connected->memory.updateKnob(2);
    QCOMPARE(sliderOf(m_page2, k_ccNum)->value(), 10);
}

void TestControlView::pageWithoutAMemoryIsHarmless()
{
    CControlView page(m_window.get(), nullptr);
    page.initialize(4);
    page.setAllDefaultParamsToMemAPI();
    page.copy();
    QVERIFY(!page.canPaste());
    fillClipboard(k_mimeType_Knob, QByteArray());
    page.paste();
    QCOMPARE(m_connected->device.received().size(), 0);
}

void TestControlView::pageWithoutControlsWritesNothing()
{
    m_connected->memory.setParam(1100, 99);
    CControlView page(m_window.get(), &m_connected->memory);
    page.setAllDefaultParamsToMemAPI();
    QCOMPARE(m_connected->memory.getParam(1100), 99);
}

void TestControlView::pressSelectsTheControl_data()
{
    QTest::addColumn<int>("control");
    for (int control = 0; control <= 5; ++control)
        QTest::addRow("control %d", control) << control;
}

void TestControlView::pressSelectsTheControl()
{
    QFETCH(int, control);
    // Another one first, so that the knob's selection shows, too.
    select(m_page2, control == 0 ? k_ccNum : 0);
    QSignalSpy selections(m_page2, &CControlView::selected);
    m_window->m_menuUpdates = 0;
    QWidget* target =
        control == 0 ? static_cast<QWidget*>(m_page2->findChild<CKnobLED*>()) : sliderOf(m_page2, control);
    QTest::mouseClick(target, Qt::LeftButton);
    QCOMPARE(selections.count(), 1);
    QCOMPARE(selections.at(0).at(0).toInt(), 2);
    QCOMPARE(m_window->m_menuUpdates, 1);
    m_page2->copy();
    QVERIFY(QGuiApplication::clipboard()->mimeData()->hasFormat(mimeTypeOf(control)));
}

void TestControlView::otherWidgetsCannotBeSelected()
{
    select(m_page2, k_ccNum);
    QSignalSpy selections(m_page2, &CControlView::selected);
    m_page2->sliderSelect(nullptr);
    m_page2->sliderSelect(m_page2);
    QCOMPARE(selections.count(), 0);
    m_page2->copy();
    QVERIFY(QGuiApplication::clipboard()->mimeData()->hasFormat(k_mimeType_CCNum));
}

void TestControlView::editorOfAnUnknownParameterSelectsTheKnob()
{
    CSlideEditor editor;
    editor.setControllerID(1602);
    select(m_page2, k_ccNum);
    QSignalSpy selections(m_page2, &CControlView::selected);
    m_page2->sliderSelect(&editor);
    QCOMPARE(selections.count(), 1);
    m_page2->copy();
    QVERIFY(QGuiApplication::clipboard()->mimeData()->hasFormat(k_mimeType_Knob));
}

void TestControlView::formatNames_data()
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

void TestControlView::formatNames()
{
    QFETCH(QString, format);
    QTEST(format, "name");
}

void TestControlView::freshPageCopiesTheWholeKnob()
{
    QVERIFY(m_page2->canCopy());
    m_page2->copy();
    const QMimeData* mimeData = QGuiApplication::clipboard()->mimeData();
    QCOMPARE(mimeData->formats(), QStringList({k_mimeType_Knob}));
    QCOMPARE(mimeData->data(k_mimeType_Knob), QByteArray());
    QVERIFY(m_page2->canPaste());
    QVERIFY(m_page5->canPaste());
}

void TestControlView::copiedSettingIsItsStoredValueAsText_data()
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

void TestControlView::copiedSettingIsItsStoredValueAsText()
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

void TestControlView::canPasteWhatTheSelectedControlTakes_data()
{
    QTest::addColumn<int>("held");
    for (int held = 0; held <= 5; ++held)
        QTest::addRow("clipboard holds control %d", held) << held;
}

void TestControlView::canPasteWhatTheSelectedControlTakes()
{
    QFETCH(int, held);
    fillClipboard(mimeTypeOf(held), QByteArray("1"));
    for (int control = 0; control <= 5; ++control) {
        select(m_page2, control);
        QCOMPARE(m_page2->canPaste(), control == held);
    }
}

void TestControlView::emptyClipboardCannotBePasted()
{
    for (int control = 0; control <= 5; ++control) {
        select(m_page2, control);
        QVERIFY(!m_page2->canPaste());
        m_page2->paste();
    }
    QCOMPARE(m_connected->device.received().size(), 0);
}

void TestControlView::pastedTextEndsInTheEditorsRange_data()
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

void TestControlView::pastedTextEndsInTheEditorsRange()
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

void TestControlView::pastedSettingReachesTheDevice()
{
    select(m_page2, k_midiCh);
    fillClipboard(k_mimeType_MIDICh, QByteArray("9"));
    m_page2->paste();
    QCOMPARE(m_connected->device.settings(2).channel, 9);
    QCOMPARE(m_connected->device.received().size(), 1);
}

void TestControlView::pasteOfAnotherFormatDoesNothing_data()
{
    QTest::addColumn<int>("held");
    QTest::addColumn<int>("control");
    QTest::newRow("CC number onto a MIDI channel") << 1 << 2;
    QTest::newRow("CC number onto a knob") << 1 << 0;
    QTest::newRow("knob onto a CC number") << 0 << 1;
    QTest::newRow("maximum onto a minimum") << 3 << 4;
}

void TestControlView::pasteOfAnotherFormatDoesNothing()
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

void TestControlView::settingPastesOntoTheSameControlOfAnotherKnob()
{
    select(m_page2, k_ccNum);
    m_page2->copy();
    select(m_page5, k_ccNum);
    QVERIFY(m_page5->canPaste());
    m_page5->paste();
    QCOMPARE(m_connected->memory.getParam(1105), 10);
    QCOMPARE(m_connected->device.settings(5).cc, 10);
}

void TestControlView::pastedKnobReachesMemoryWidgetsAndDevice()
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

void TestControlView::knobCopiedBeforeARestartCannotBePasted()
{
    m_page2->copy();
    // What the main window does at every start and end.
    QGuiApplication::clipboard()->clear();
    QVERIFY(!m_page5->canPaste());
    m_page5->paste();
    QCOMPARE(m_connected->memory.getParam(1105), 72);
    QCOMPARE(m_connected->device.received().size(), 0);
}

void TestControlView::ledTypeEditChangesTheLED()
{
    const auto* fade = m_page5->findChild<CKnobLED*>()->findChild<QPropertyAnimation*>();
    QTRY_COMPARE(fade->state(), QAbstractAnimation::Stopped);
    // Ascent at 0 is dark, descent at 0 is fully lit.
    editorOf(m_page5, k_ledType)->setValue(1);
    QCOMPARE(fade->state(), QAbstractAnimation::Running);
    QCOMPARE(fade->endValue().toInt(), 255);
}

void TestControlView::shownChannelIsOneMoreThanTheStoredOne()
{
    editorOf(m_page2, k_midiCh)->setValue(15);
    auto* slider = qobject_cast<CTextSlider*>(sliderOf(m_page2, k_midiCh));
    static_cast<void>(slider->grab());
    QTest::mouseDClick(slider, Qt::LeftButton, {}, QPoint(10, 7));
    QCOMPARE(slider->lineEdit()->text(), QStringLiteral("16"));
    QTest::keyClick(slider->lineEdit(), Qt::Key_Return);
    QCOMPARE(m_connected->memory.getParam(1202), 15);
}

void TestControlView::rightClick(QWidget* widget, const std::function<void(QMenu*)>& look)
{
    const QPoint local = widget->rect().center();
    const QPoint global = widget->mapToGlobal(local);
    QCursor::setPos(global);
    QTimer watch;
    watch.setInterval(5);
    connect(&watch, &QTimer::timeout, this, [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu == nullptr)
            return;
        watch.stop();
        ++m_menusSeen;
        look(menu);
        if (QApplication::activePopupWidget() != nullptr)
            menu->close();
    });
    watch.start();
    QContextMenuEvent event(QContextMenuEvent::Mouse, local, global);
    QApplication::sendEvent(widget, &event);
}

void TestControlView::rightClickSelectsAndOffersCopyAndPaste_data()
{
    QTest::addColumn<int>("control");
    QTest::addColumn<bool>("canPaste");
    for (int control = 0; control <= 5; ++control) {
        QTest::addRow("control %d, its format on the clipboard", control) << control << true;
        QTest::addRow("control %d, another format on the clipboard", control) << control << false;
    }
}

void TestControlView::rightClickSelectsAndOffersCopyAndPaste()
{
    QFETCH(int, control);
    QFETCH(bool, canPaste);
    fillClipboard(canPaste ? mimeTypeOf(control) : QStringLiteral("text/plain"), QByteArray("1"));
    QSignalSpy selections(m_page2, &CControlView::selected);
    QWidget* target =
        control == 0 ? static_cast<QWidget*>(m_page2->findChild<CKnobLED*>()) : sliderOf(m_page2, control);
    rightClick(target, [&](QMenu* menu) {
        QCOMPARE(menu->parentWidget(), m_page2);
        QCOMPARE(menu->pos(), QCursor::pos());
        QCOMPARE(menu->font().family(), k_fontGLT7Bold);
        QCOMPARE(menu->font().pointSize(), 7);
        const QList<QAction*> actions = menu->actions();
        QCOMPARE(actions.size(), 2);
        QCOMPARE(actions[0]->text(), QStringLiteral("&Copy"));
        QCOMPARE(actions[0]->shortcut(), QKeySequence(QStringLiteral("Ctrl+C")));
        QVERIFY(actions[0]->isEnabled());
        QCOMPARE(actions[1]->text(), QStringLiteral("&Paste"));
        QCOMPARE(actions[1]->shortcut(), QKeySequence(QStringLiteral("Ctrl+V")));
        QCOMPARE(actions[1]->isEnabled(), canPaste);
    });
    QCOMPARE(m_menusSeen, 1);
    QCOMPARE(selections.count(), 1);
    QVERIFY(m_page2->findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly).isEmpty());
    m_page2->copy();
    QVERIFY(QGuiApplication::clipboard()->mimeData()->hasFormat(mimeTypeOf(control)));
}

void TestControlView::menuCommandsGoThroughTheParent()
{
    fillClipboard(k_mimeType_CCNum, QByteArray("1"));
    rightClick(sliderOf(m_page2, k_ccNum), [](QMenu* menu) { menu->actions().at(0)->trigger(); });
    QCOMPARE(m_window->m_copies, 1);
    QCOMPARE(m_window->m_pastes, 0);
    rightClick(sliderOf(m_page2, k_ccNum), [](QMenu* menu) { menu->actions().at(1)->trigger(); });
    QCOMPARE(m_window->m_copies, 1);
    QCOMPARE(m_window->m_pastes, 1);
}

void TestControlView::rightClickOutsideTheControlFallsThrough()
{
    CSlideEditor* editor = editorOf(m_page2, k_ccNum);
    QCursor::setPos(editor->mapToGlobal(QPoint(-1, 5)));
    QSignalSpy selections(m_page2, &CControlView::selected);
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), editor->mapToGlobal(QPoint(5, 5)));
    QVERIFY(!m_page2->eventFilter(editor, &event));
    QCOMPARE(selections.count(), 0);
    QVERIFY(QApplication::activePopupWidget() == nullptr);
}

void TestControlView::hiddenPageLeavesContextMenusAlone()
{
    CSlideEditor* editor = editorOf(m_page2, k_ccNum);
    QCursor::setPos(editor->mapToGlobal(QPoint(5, 5)));
    m_page2->hide();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), QCursor::pos());
    QVERIFY(!m_page2->eventFilter(editor, &event));
}

void TestControlView::otherEventsPassTheFilter()
{
    CSlideEditor* editor = editorOf(m_page2, k_ccNum);
    QCursor::setPos(editor->mapToGlobal(QPoint(5, 5)));
    QEvent event(QEvent::ToolTip);
    QVERIFY(!m_page2->eventFilter(editor, &event));
    QObject noWidget;
    QContextMenuEvent menuEvent(QContextMenuEvent::Mouse, QPoint(5, 5), QCursor::pos());
    QVERIFY(!m_page2->eventFilter(&noWidget, &menuEvent));
}

void TestControlView::reportFromTheDeviceClosesTheMenu()
{
    rightClick(sliderOf(m_page2, k_ccNum), [this](QMenu* menu) {
        const QPointer<QMenu> open = menu;
        m_connected->device.turn(2, 64);
        QTRY_VERIFY(open.isNull() || !open->isVisible());
    });
    QCOMPARE(m_menusSeen, 1);
}

void TestControlView::pageCanGoWhileItsMenuIsOpen()
{
    rightClick(m_page2->findChild<CKnobLED*>(), [this](QMenu*) { delete m_page2; });
    QCOMPARE(m_menusSeen, 1);
    QVERIFY(QApplication::activePopupWidget() == nullptr);
}

void TestControlView::destroyedPageIsForgottenByTheMemory()
{
    delete m_page2;
    m_connected->memory.updateKnob(2);
    m_connected->memory.notifyParamChabgedById(1002);
}

QTEST_MAIN(TestControlView)
#include "TestControlView.moc"
