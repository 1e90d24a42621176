#include "app/common/Utilities.h"
#include "tests/widgets/CControlViewTest.h"
#include "tests/widgets/WidgetEvents.h"
#include "widgets/CImageSlider.h"
#include "widgets/CKnobLED.h"
#include "widgets/CLineEdit.h"
#include "widgets/CSpinButton.h"
#include "widgets/CTextSlider.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QPropertyAnimation>

/// What a page consists of, what it shows, and what can be selected on it.
class TestControlView : public CControlViewTest
{
    Q_OBJECT

  private slots:
    void controlsHaveTheirPlaces_data();
    void controlsHaveTheirPlaces();
    void editorsAreBuiltInTheirOrder();
    void everySettingHasAnEditorOfItsRange();
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

    void ledTypeEditChangesTheLED();
    void ringShowsTheLEDTypeThatAReportWasClampedTo_data();
    void ringShowsTheLEDTypeThatAReportWasClampedTo();
    void shownChannelIsOneMoreThanTheStoredOne();

    void destroyedPageIsForgottenByTheMemory();
};

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

void TestControlView::everySettingHasAnEditorOfItsRange()
{
    int control = 1;
    for (const SettingParam& setting : k_settingParams) {
        QCOMPARE(editorOf(m_page5, control)->controllerID(), setting.category + 5);
        const QAbstractSlider* slider = sliderOf(m_page5, control);
        QCOMPARE(slider->minimum(), 0);
        QCOMPARE(slider->maximum(), setting.highest);
        const QRect place(slider->mapTo(m_page5, QPoint(0, 0)), slider->size());
        QVERIFY(m_page5->rect().contains(place));
        for (int other = 1; other < control; ++other) {
            const QAbstractSlider* above = sliderOf(m_page5, other);
            QVERIFY(!place.intersects(QRect(above->mapTo(m_page5, QPoint(0, 0)), above->size())));
        }
        ++control;
    }
    QCOMPARE(m_page5->findChildren<CSlideEditor*>().size(), control - 1);
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
        QCOMPARE(sliderOf(page, control)->font().pixelSize(), 10);
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

void TestControlView::ledTypeEditChangesTheLED()
{
    const auto* fade = m_page5->findChild<CKnobLED*>()->findChild<QPropertyAnimation*>();
    QTRY_COMPARE(fade->state(), QAbstractAnimation::Stopped);
    // Ascent at 0 is dark, descent at 0 is fully lit.
    editorOf(m_page5, k_ledType)->setValue(1);
    QCOMPARE(fade->state(), QAbstractAnimation::Running);
    QCOMPARE(fade->endValue().toInt(), 255);
}

void TestControlView::ringShowsTheLEDTypeThatAReportWasClampedTo_data()
{
    QTest::addColumn<int>("before");
    QTest::newRow("another type shown") << 0;
    QTest::newRow("the type shown already") << 3;
}

void TestControlView::ringShowsTheLEDTypeThatAReportWasClampedTo() // types 0 to 3, at the value 64
{
    QFETCH(int, before);
    CMemAPIWrapper& memory = m_connected->memory;
    auto* ring = m_page2->findChild<CKnobLED*>();
    CSlideEditor* ledType = editorOf(m_page2, k_ledType);
    const auto picture = [ring] {
        auto* fade = ring->findChild<QPropertyAnimation*>();
        fade->setCurrentTime(fade->duration());
        return ring->grab().toImage();
    };
    memory.setKnob(1002, 64);
    memory.notifyParamChabgedById(1002);
    ledType->setValue(2); // dark
    ledType->setValue(3);
    const QImage convex = picture();
    ledType->setValue(before);
    memory.setParam(1502, 200);
    memory.notifyParamChabgedById(1002);
    memory.updateKnob(2);
    QCOMPARE(ledType->getValue(), 3);
    QCOMPARE(picture(), convex);
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

void TestControlView::destroyedPageIsForgottenByTheMemory()
{
    delete m_page2;
    m_connected->memory.updateKnob(2);
    m_connected->memory.notifyParamChabgedById(1002);
}

KTZ_TEST(QApplication, TestControlView)
#include "TestControlView.moc"
