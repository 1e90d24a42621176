#include "app/common/SkinPixmap.h"
#include "tests/support/CTestCase.h"
#include "tests/support/MemoryRig.h"
#include "tests/widgets/WidgetEvents.h"
#include "widgets/CImageSlider.h"
#include "widgets/CLineEdit.h"
#include "widgets/CSlideEditor.h"
#include "widgets/CSpinButton.h"
#include "widgets/CTextSlider.h"

#include <memory>

namespace
{
constexpr int k_ccNumOfKnob2 = 1102;
constexpr QRect k_rect(20, 40, 73, 15);
} // namespace

/// An editor for the CC number of knob 2, bound to a connected memory.
class TestSlideEditor : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();

    void editorAndPartsHaveTheirPlaces_data();
    void editorAndPartsHaveTheirPlaces();
    void spinButtonTakesTheSlidersRangeAndLook();
    void editorWithoutASliderIsHarmless();
    void moveSliderKeepsTheSliderAtThePoint();
    void textColourReachesSliderAndField();
    void otherSlidersHaveNoTextColour();
    void focusGoesToAVisibleSliderAlone();

    void bothPartsAndTheDeviceFollowEitherPart_data();
    void bothPartsAndTheDeviceFollowEitherPart();
    void valueThatBothPartsShowIsIgnored();
    void valueChangeBeforeInitializeIsIgnored();
    void refusedEditBringsBothPartsBack();
    void offlineEditIsStoredAndNotSent();
    void everyActionSelectsTheEditor_data();
    void everyActionSelectsTheEditor();

    void changeInTheMemoryIsShownAndNotSent();
    void newerReportIsNotOverwrittenByAnOlderOne();
    void valueOutsideTheRangeEndsClampedEverywhere_data();
    void valueOutsideTheRangeEndsClampedEverywhere();
    void valueOutsideTheRangeStaysWhenTheDeviceCannotBeTold();
    void clampedValueIsInTheMemoryWhenItIsAnnounced_data();
    void clampedValueIsInTheMemoryWhenItIsAnnounced();
    void editMadeDuringAReloadIsNotLost();
    void setValueIsClampedToTheRange();
    void detachedEditorLeavesTheMemoryAlone();
    void destroyedEditorIsForgottenByTheMemory();

  private:
    [[nodiscard]] CSpinButton* spinButton() const;

    std::unique_ptr<MemoryRig> m_connected;
    std::unique_ptr<QWidget> m_window;
    CSlideEditor* m_editor = nullptr;
    CTextSlider* m_slider = nullptr;
};

void TestSlideEditor::init()
{
    CTestCase::init();
    m_connected = std::make_unique<MemoryRig>();
    m_connected->setFactorySettings();
    m_connected->connect();
    m_window = std::make_unique<QWidget>();
    m_window->setGeometry(20, 20, 300, 200);
    m_editor = new CSlideEditor(m_window.get());
    m_slider = new CTextSlider(m_window.get());
    m_slider->setRange(0, 127);
    m_slider->setValue(5);
    m_editor->initialize(m_slider, k_rect, true);
    m_connected->bind(*m_editor, k_ccNumOfKnob2);
    m_connected->memory.updateKnob(2);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QCOMPARE(m_editor->getValue(), 10);
}

void TestSlideEditor::cleanup()
{
    m_window.reset();
    m_connected.reset();
}

CSpinButton* TestSlideEditor::spinButton() const
{
    return m_editor->findChild<CSpinButton*>();
}

void TestSlideEditor::editorAndPartsHaveTheirPlaces_data()
{
    QTest::addColumn<bool>("spinOverlaps");
    QTest::newRow("spin button over the slider") << true;
    QTest::newRow("spin button beside the slider") << false;
}

void TestSlideEditor::editorAndPartsHaveTheirPlaces()
{
    QFETCH(bool, spinOverlaps);
    const int spinWidth = skinPixmap(k_spinImage).deviceIndependentSize().toSize().width();
    QVERIFY(spinWidth > 0);
    CSlideEditor editor(m_window.get());
    auto* slider = new CImageSlider;
    editor.initialize(slider, k_rect, spinOverlaps);
    QCOMPARE(editor.geometry(), QRect(20, 30, 79, 35));
    QCOMPARE(slider->parentWidget(), &editor);
    QCOMPARE(slider->geometry(), QRect(0, 10, spinOverlaps ? 73 : 73 - spinWidth, 15));
    const auto* spin = editor.findChild<CSpinButton*>();
    QCOMPARE(spin->geometry(), QRect(79 - spinWidth - 6, 0, spinWidth + 6, 35));
    QCOMPARE(editor.children().last(), spin);
}

void TestSlideEditor::spinButtonTakesTheSlidersRangeAndLook()
{
    CSlideEditor editor;
    auto* slider = new CTextSlider;
    slider->setRange(3, 30);
    slider->setValue(7);
    editor.initialize(slider, k_rect, true);
    const auto* spin = editor.findChild<CSpinButton*>();
    QCOMPARE(spin->minimum(), 3);
    QCOMPARE(spin->maximum(), 30);
    QCOMPARE(spin->value(), 7);
    QCOMPARE(spin->alignment(), Qt::AlignLeft | Qt::AlignVCenter);
    QCOMPARE(spin->combinedImage().toImage(), skinPixmap(k_spinImage).toImage());
}

void TestSlideEditor::editorWithoutASliderIsHarmless()
{
    CSlideEditor editor(m_window.get());
    editor.initialize(nullptr, k_rect, true);
    m_connected->bind(editor, 1103);
    QVERIFY(editor.findChild<CSpinButton*>() != nullptr);
    editor.setValue(9);
    QCOMPARE(editor.getValue(), 0);
    editor.valueChange(9);
    editor.setSliderTextColor(Qt::red);
    editor.focusOnSlider();
    editor.updateMemAPI();
    QCOMPARE(m_connected->memory.getParam(1103), 7);
    QCOMPARE(m_connected->device.received().size(), 0);
}

void TestSlideEditor::moveSliderKeepsTheSliderAtThePoint()
{
    m_editor->moveSlider(100, 120);
    QCOMPARE(m_slider->mapTo(m_window.get(), QPoint(0, 0)), QPoint(100, 120));
}

void TestSlideEditor::textColourReachesSliderAndField()
{
    m_editor->setSliderTextColor(Qt::red);
    QCOMPARE(m_slider->textColor(), QColor(Qt::red));
    QCOMPARE(m_slider->lineEdit()->palette().color(QPalette::Text), QColor(Qt::red));
}

void TestSlideEditor::otherSlidersHaveNoTextColour()
{
    CSlideEditor editor;
    auto* slider = new CImageSlider;
    editor.initialize(slider, k_rect, false);
    const QPalette palette = slider->palette();
    editor.setSliderTextColor(Qt::red);
    QCOMPARE(slider->palette(), palette);
}

void TestSlideEditor::focusGoesToAVisibleSliderAlone()
{
    m_editor->hide();
    m_editor->focusOnSlider();
    QVERIFY(!m_slider->hasFocus());
    m_editor->show();
    m_editor->focusOnSlider();
    QVERIFY(m_slider->hasFocus());
}

void TestSlideEditor::bothPartsAndTheDeviceFollowEitherPart_data()
{
    QTest::addColumn<bool>("bySpinButton");
    QTest::newRow("slider") << false;
    QTest::newRow("spin button") << true;
}

void TestSlideEditor::bothPartsAndTheDeviceFollowEitherPart()
{
    QFETCH(bool, bySpinButton);
    QSignalSpy changes(m_editor, &CSlideEditor::valueChanged);
    QAbstractSlider* part = bySpinButton ? static_cast<QAbstractSlider*>(spinButton()) : m_slider;
    sendWheel(*part, centreOf(*part), QPoint(0, 120));
    QCOMPARE(m_slider->value(), 11);
    QCOMPARE(spinButton()->value(), 11);
    QCOMPARE(m_editor->getValue(), 11);
    QCOMPARE(m_connected->memory.getParam(k_ccNumOfKnob2), 11);
    QCOMPARE(m_connected->device.settings(2).cc, 11);
    QCOMPARE(m_connected->device.received().size(), 1);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.at(0).at(0).toInt(), 11);
}

void TestSlideEditor::valueThatBothPartsShowIsIgnored()
{
    QSignalSpy changes(m_editor, &CSlideEditor::valueChanged);
    m_connected->memory.setParam(k_ccNumOfKnob2, 50);
    m_editor->valueChange(10);
    QCOMPARE(changes.count(), 0);
    QCOMPARE(m_connected->memory.getParam(k_ccNumOfKnob2), 50);
    QCOMPARE(m_connected->device.received().size(), 0);
}

void TestSlideEditor::valueChangeBeforeInitializeIsIgnored()
{
    CSlideEditor editor;
    QSignalSpy changes(&editor, &CSlideEditor::valueChanged);
    editor.valueChange(3);
    QCOMPARE(changes.count(), 0);
    QCOMPARE(editor.getValue(), 0);
}

void TestSlideEditor::refusedEditBringsBothPartsBack()
{
    QSignalSpy changes(m_editor, &CSlideEditor::valueChanged);
    m_connected->device.refuseSend(1);
    sendWheel(*m_slider, centreOf(*m_slider), QPoint(0, 120));
    QCOMPARE(m_slider->value(), 10);
    QCOMPARE(spinButton()->value(), 10);
    QCOMPARE(m_connected->memory.getParam(k_ccNumOfKnob2), 10);
    QCOMPARE(m_connected->device.settings(2).cc, 10);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.at(0).at(0).toInt(), 10);
}

void TestSlideEditor::offlineEditIsStoredAndNotSent()
{
    m_connected->memory.setConnected(false);
    sendWheel(*m_slider, centreOf(*m_slider), QPoint(0, 120));
    QCOMPARE(m_connected->memory.getParam(k_ccNumOfKnob2), 11);
    QCOMPARE(m_connected->device.received().size(), 0);
}

void TestSlideEditor::everyActionSelectsTheEditor_data()
{
    QTest::addColumn<QString>("action");
    for (const char* action : {"slider press", "slider wheel", "slider key", "spin button wheel", "spin button click"})
        QTest::newRow(action) << action;
}

void TestSlideEditor::everyActionSelectsTheEditor()
{
    QFETCH(QString, action);
    QSignalSpy selections(m_editor, &CSlideEditor::selected);
    if (action == QLatin1String("slider press"))
        QTest::mouseClick(m_slider, Qt::LeftButton);
    else if (action == QLatin1String("slider wheel"))
        sendWheel(*m_slider, centreOf(*m_slider), QPoint(0, 120));
    else if (action == QLatin1String("slider key"))
        QTest::keyClick(m_slider, Qt::Key_Up);
    else if (action == QLatin1String("spin button wheel"))
        sendWheel(*spinButton(), centreOf(*spinButton()), QPoint(0, 120));
    else
        QTest::mouseClick(spinButton()->childAt(5, 5), Qt::LeftButton);
    QVERIFY(selections.count() >= 1);
    QCOMPARE(selections.at(0).at(0).value<QWidget*>(), m_editor);
}

void TestSlideEditor::changeInTheMemoryIsShownAndNotSent()
{
    m_connected->memory.setParam(k_ccNumOfKnob2, 99);
    m_connected->memory.updateKnob(2);
    QCOMPARE(m_slider->value(), 99);
    QCOMPARE(spinButton()->value(), 99);
    QCOMPARE(m_connected->device.received().size(), 0);
}

void TestSlideEditor::newerReportIsNotOverwrittenByAnOlderOne()
{
    // A second report comes in on its thread while the first is being shown.
    CSlideEditor editor(m_window.get());
    auto* slider = new CTextSlider(m_window.get());
    slider->setRange(0, 127);
    connect(slider, &QAbstractSlider::valueChanged, this, [this](int value) {
        if (value == 20)
            m_connected->memory.setParam(k_ccNumOfKnob2, 30);
    });
    editor.initialize(slider, k_rect, true);
    m_connected->bind(editor, k_ccNumOfKnob2);
    m_connected->memory.setParam(k_ccNumOfKnob2, 20);
    editor.updateMemAPI();
    QCOMPARE(editor.getValue(), 20);
    QCOMPARE(m_connected->memory.getParam(k_ccNumOfKnob2), 30);
    QVERIFY(m_connected->device.received().isEmpty());
    editor.updateMemAPI(); // the second report has asked for it
    QCOMPARE(editor.getValue(), 30);
    QCOMPARE(editor.findChild<CSpinButton*>()->value(), 30);
    QVERIFY(m_connected->device.received().isEmpty());
}

void TestSlideEditor::valueOutsideTheRangeEndsClampedEverywhere_data()
{
    QTest::addColumn<int>("shownBefore");
    QTest::addColumn<int>("stored");
    QTest::addColumn<int>("clamped");
    QTest::newRow("above") << 10 << 200 << 127;
    QTest::newRow("below") << 10 << -1 << 0;
    QTest::newRow("above, the maximum shown already") << 127 << 200 << 127;
    QTest::newRow("below, the minimum shown already") << 0 << -1 << 0;
}

void TestSlideEditor::valueOutsideTheRangeEndsClampedEverywhere()
{
    QFETCH(int, shownBefore);
    QFETCH(int, stored);
    QFETCH(int, clamped);
    m_connected->memory.setParam(k_ccNumOfKnob2, shownBefore);
    m_connected->memory.updateKnob(2);
    m_connected->memory.setParam(k_ccNumOfKnob2, stored);
    m_connected->memory.updateKnob(2);
    QCOMPARE(m_slider->value(), clamped);
    QCOMPARE(spinButton()->value(), clamped);
    QCOMPARE(m_connected->memory.getParam(k_ccNumOfKnob2), clamped);
    QCOMPARE(m_connected->device.settings(2).cc, clamped);
    QCOMPARE(m_connected->device.received().size(), 1);
}

void TestSlideEditor::valueOutsideTheRangeStaysWhenTheDeviceCannotBeTold()
{
    m_connected->device.refuseSend(1, 10);
    m_connected->memory.setParam(k_ccNumOfKnob2, 200);
    m_connected->memory.updateKnob(2);
    QCOMPARE(m_slider->value(), 127);
    QCOMPARE(spinButton()->value(), 127);
    QCOMPARE(m_connected->memory.getParam(k_ccNumOfKnob2), 200);
}

void TestSlideEditor::clampedValueIsInTheMemoryWhenItIsAnnounced_data()
{
    QTest::addColumn<int>("shownBefore");
    QTest::newRow("another value shown") << 10;
    QTest::newRow("shown already") << 127;
}

void TestSlideEditor::clampedValueIsInTheMemoryWhenItIsAnnounced()
{
    QFETCH(int, shownBefore);
    m_connected->memory.setParam(k_ccNumOfKnob2, shownBefore);
    m_connected->memory.updateKnob(2);
    QList<int> announced;
    QList<int> held;
    connect(m_editor, &CSlideEditor::valueChanged, this, [&](int value) {
        announced.append(value);
        held.append(m_connected->memory.getParam(k_ccNumOfKnob2));
    });
    m_connected->memory.setParam(k_ccNumOfKnob2, 200);
    m_connected->memory.updateKnob(2);
    QCOMPARE(announced, QList<int>{127});
    QCOMPARE(held, QList<int>{127});
}

void TestSlideEditor::editMadeDuringAReloadIsNotLost()
{
    // One there and one back to what is being reloaded.
    QList<int> edits{50, 40, 60};
    connect(m_editor, &CSlideEditor::valueChanged, this, [&] {
        if (!edits.isEmpty())
            m_editor->setValue(edits.takeFirst());
    });
    m_connected->memory.setParam(k_ccNumOfKnob2, 40);
    m_connected->memory.updateKnob(2);
    QVERIFY(edits.isEmpty());
    QCOMPARE(m_slider->value(), 60);
    QCOMPARE(spinButton()->value(), 60);
    QCOMPARE(m_connected->memory.getParam(k_ccNumOfKnob2), 60);
    QCOMPARE(m_connected->device.settings(2).cc, 60);
    QCOMPARE(m_connected->device.received().size(), 3);
}

void TestSlideEditor::setValueIsClampedToTheRange()
{
    m_editor->setValue(200);
    QCOMPARE(m_editor->getValue(), 127);
    QCOMPARE(m_connected->device.settings(2).cc, 127);
}

void TestSlideEditor::detachedEditorLeavesTheMemoryAlone()
{
    m_editor->unregisterObserverFromMemAPI();
    m_editor->initialize(nullptr);
    m_editor->setValue(20);
    QCOMPARE(m_editor->getValue(), 20);
    QCOMPARE(m_connected->memory.getParam(k_ccNumOfKnob2), 10);
    // Everything that the editor still does works without the memory.
    m_connected.reset();
    m_editor->setValue(21);
    m_editor->updateMemAPI();
    QCOMPARE(m_editor->getValue(), 0);
}

void TestSlideEditor::destroyedEditorIsForgottenByTheMemory()
{
    delete m_editor;
    m_connected->memory.updateKnob(2);
}

KTZ_TEST(QApplication, TestSlideEditor)
#include "TestSlideEditor.moc"
