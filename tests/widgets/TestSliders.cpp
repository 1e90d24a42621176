#include "tests/support/CTestCase.h"
#include "tests/support/MemoryRig.h"
#include "tests/widgets/ActiveWindow.h"
#include "tests/widgets/WidgetEvents.h"
#include "widgets/CImageSlider.h"
#include "widgets/CTextSlider.h"

#include <QMenu>
#include <QMessageBox>
#include <QTimer>

#include <functional>
#include <memory>

/// One of the two kinds of sliders, and the setting of knob 2 that it is bound to in these tests.
struct SliderKind
{
    std::function<QAbstractSlider*(QWidget*)> create; ///< in the middle of its range
    int category = 0;
    int KnobSettings::*setting = nullptr;
    int factoryValue = 0;
};
Q_DECLARE_METATYPE(SliderKind)

namespace
{
constexpr int k_knob = 2;

QAbstractSlider* createTextSlider(QWidget* parent)
{
    auto* slider = new CTextSlider(parent);
    slider->setRange(0, 127);
    slider->setValue(64);
    return slider;
}

QAbstractSlider* createImageSlider(QWidget* parent)
{
    auto* slider = new CImageSlider(parent);
    slider->setTotalImages(4);
    slider->setValue(1);
    return slider;
}
} // namespace

/// What every slider does alike, whatever it shows.
class TestSliders : public CTestCase
{
    Q_OBJECT

  private slots:
    void initTestCase_data();
    void init();
    void cleanup();

    void consumedEventsAreNotPassedOn();
    void pressOfAnotherButtonOnlyPutsTheSliderDown();
    void releaseShowsThePointerWhereThePressWas();
    void releaseOfAnotherButtonEndsTheDragWithoutMovingThePointer();
    void everyReleaseEndsAnOverrideCursor_data();
    void everyReleaseEndsAnOverrideCursor();
    void hidingDuringADragShowsThePointer();
    void destructionDuringADragShowsThePointer();
    void dragEndsWhenItsReleaseGoesElsewhere_data();
    void dragEndsWhenItsReleaseGoesElsewhere();
    void rightPressWhoseReleaseAMenuTakesLeavesTheNextPressToSelect();
    void rightPressWhoseReleaseIsLostLeavesTheNextPressToSelect();
    void dragGoesOnThroughThePressOfAnotherButton();
    void pressAfterALostReleaseHidesThePointerOnce();

    void wheelStepsOnce_data();
    void wheelStepsOnce();

    void editReachesTheDevice();
    void refusedEditFallsBack();
    void changeInTheMemoryIsShown();
    void destroyedSliderIsForgottenByTheMemory();

  private:
    [[nodiscard]] QPoint topLeft() const;

    /// Connects the slider to its setting, of which it shows the factory value afterwards.
    void bind();

    SliderKind m_kind;
    int m_id = 0;
    std::unique_ptr<MemoryRig> m_connected;
    std::unique_ptr<QWidget> m_window;
    QAbstractSlider* m_slider = nullptr; ///< child of the window
    int m_start = 0;                     ///< its value before a test does anything
};

void TestSliders::initTestCase_data()
{
    QTest::addColumn<SliderKind>("kind");
    QTest::newRow("text slider") << SliderKind{createTextSlider, k_ccNumCategory, &KnobSettings::cc, 10};
    QTest::newRow("image slider") << SliderKind{createImageSlider, k_ledTypeCategory, &KnobSettings::led, 2};
}

void TestSliders::init()
{
    CTestCase::init();
    QFETCH_GLOBAL(SliderKind, kind);
    m_kind = kind;
    m_id = kind.category + k_knob;
    m_connected = std::make_unique<MemoryRig>();
    m_connected->setFactorySettings();
    m_connected->connect();
    m_window = std::make_unique<QWidget>();
    m_window->setGeometry(20, 20, 300, 200);
    m_slider = kind.create(m_window.get());
    m_slider->setGeometry(50, 50, 73, 15);
    m_start = m_slider->value();
    QVERIFY(showActive(*m_window));
    m_slider->setFocus();
}

void TestSliders::cleanup()
{
    m_window.reset();
    m_connected.reset();
    QVERIFY(QApplication::overrideCursor() == nullptr);
}

QPoint TestSliders::topLeft() const
{
    return m_slider->mapToGlobal(QPoint(0, 0));
}

void TestSliders::bind()
{
    auto* proxy = dynamic_cast<CMemAPIProxy*>(m_slider);
    m_connected->bind(*proxy, m_id);
    proxy->updateMemAPI();
    QCOMPARE(m_slider->value(), m_kind.factoryValue);
}

void TestSliders::consumedEventsAreNotPassedOn()
{
    QEvent polish(QEvent::Polish);
    QVERIFY(!QApplication::sendEvent(m_slider, &polish));
}

void TestSliders::pressOfAnotherButtonOnlyPutsTheSliderDown()
{
    sendPress(*m_slider, centreOf(*m_slider), Qt::RightButton);
    QVERIFY(m_slider->isSliderDown());
    QVERIFY(QApplication::overrideCursor() == nullptr);
    sendMove(*m_slider, centreOf(*m_slider) - QPoint(0, 8));
    QCOMPARE(m_slider->value(), m_start);
    sendRelease(*m_slider, centreOf(*m_slider), Qt::RightButton);
    QVERIFY(!m_slider->isSliderDown());
}

void TestSliders::releaseShowsThePointerWhereThePressWas()
{
    const QPoint press = topLeft() + QPoint(3, 2);
    QCursor::setPos(press);
    sendPress(*m_slider, press);
    sendMove(*m_slider, press + QPoint(0, 1));
    QTRY_COMPARE(QCursor::pos(), centreOf(*m_slider));
    sendRelease(*m_slider, centreOf(*m_slider));
    QTRY_COMPARE(QCursor::pos(), press);
    QVERIFY(!m_slider->isSliderDown());
    QVERIFY(QApplication::overrideCursor() == nullptr);
    const int value = m_slider->value();
    sendMove(*m_slider, press - QPoint(0, 30));
    QCOMPARE(m_slider->value(), value);
}

void TestSliders::releaseOfAnotherButtonEndsTheDragWithoutMovingThePointer()
{
    const QPoint press = topLeft() + QPoint(3, 2);
    sendPress(*m_slider, press);
    const QPoint elsewhere = press + QPoint(100, 100);
    QCursor::setPos(elsewhere);
    sendRelease(*m_slider, elsewhere, Qt::RightButton);
    QCOMPARE(QCursor::pos(), elsewhere);
    QVERIFY(!m_slider->isSliderDown());
    QVERIFY(QApplication::overrideCursor() == nullptr);
    sendMove(*m_slider, press - QPoint(0, 30));
    QCOMPARE(m_slider->value(), m_start);
}

void TestSliders::everyReleaseEndsAnOverrideCursor_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::newRow("the left button's") << Qt::LeftButton;
    QTest::newRow("the right button's") << Qt::RightButton;
}

void TestSliders::everyReleaseEndsAnOverrideCursor()
{
    QFETCH(Qt::MouseButton, button);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    sendRelease(*m_slider, centreOf(*m_slider), button);
    QVERIFY(QApplication::overrideCursor() == nullptr);
    sendRelease(*m_slider, centreOf(*m_slider), button);
    QVERIFY(QApplication::overrideCursor() == nullptr);
}

void TestSliders::hidingDuringADragShowsThePointer()
{
    m_slider->clearFocus();
    sendPress(*m_slider, centreOf(*m_slider));
    QVERIFY(QApplication::overrideCursor() != nullptr);
    m_window->hide();
    QVERIFY(QApplication::overrideCursor() == nullptr);
    QVERIFY(!m_slider->isSliderDown());
}

void TestSliders::destructionDuringADragShowsThePointer()
{
    sendPress(*m_slider, centreOf(*m_slider));
    QVERIFY(QApplication::overrideCursor() != nullptr);
    delete m_slider;
    QVERIFY(QApplication::overrideCursor() == nullptr);
}

void TestSliders::dragEndsWhenItsReleaseGoesElsewhere_data()
{
    QTest::addColumn<bool>("menu");
    QTest::addColumn<Qt::FocusPolicy>("focusPolicy");
    QTest::newRow("message box") << false << Qt::ClickFocus;
    QTest::newRow("message box, the focus is elsewhere") << false << Qt::NoFocus;
    QTest::newRow("menu") << true << Qt::ClickFocus;
}

void TestSliders::dragEndsWhenItsReleaseGoesElsewhere()
{
    QFETCH(bool, menu);
    QFETCH(Qt::FocusPolicy, focusPolicy);
    m_slider->clearFocus();
    m_slider->setFocusPolicy(focusPolicy);
    const QPoint centre = m_slider->geometry().center();
    QTest::mousePress(m_window->windowHandle(), Qt::LeftButton, {}, centre);
    QVERIFY(QApplication::overrideCursor() != nullptr);
    QMessageBox box(m_window.get());
    QMenu popup(m_window.get());
    popup.addAction(QStringLiteral("x"));
    bool isPointerShown = false;
    QTimer::singleShot(0, m_slider, [&] {
        isPointerShown = QApplication::overrideCursor() == nullptr;
        box.accept();
        popup.close();
    });
    if (menu)
        popup.exec(m_window->pos());
    else
        box.exec();
    QVERIFY(isPointerShown);
    QVERIFY(!m_slider->isSliderDown());
    // The pointer's button is still down.
    const int value = m_slider->value();
    QTest::mouseMove(m_window->windowHandle(), centre - QPoint(0, 9));
    QCOMPARE(m_slider->value(), value);
    QTest::mouseRelease(m_window->windowHandle(), Qt::LeftButton, {}, centre);
    QVERIFY(QApplication::overrideCursor() == nullptr);
}

void TestSliders::rightPressWhoseReleaseAMenuTakesLeavesTheNextPressToSelect()
{
    const QPoint centre = m_slider->geometry().center();
    QSignalSpy presses(m_slider, &QAbstractSlider::sliderPressed);
    QTest::mousePress(m_window->windowHandle(), Qt::RightButton, {}, centre);
    QCOMPARE(presses.count(), 1);
    QMenu menu(m_window.get());
    menu.addAction(QStringLiteral("x"));
    menu.popup(m_window->mapToGlobal(QPoint(150, 150)));
    QTest::mouseRelease(menu.windowHandle(), Qt::RightButton, {}, QPoint(-50, -50));
    menu.close();
    QVERIFY(!m_slider->isSliderDown());
    QTest::mousePress(m_window->windowHandle(), Qt::LeftButton, {}, centre);
    QCOMPARE(presses.count(), 2);
    QTest::mouseRelease(m_window->windowHandle(), Qt::LeftButton, {}, centre);
}

void TestSliders::rightPressWhoseReleaseIsLostLeavesTheNextPressToSelect()
{
    QSignalSpy presses(m_slider, &QAbstractSlider::sliderPressed);
    sendPress(*m_slider, centreOf(*m_slider), Qt::RightButton);
    sendPress(*m_slider, centreOf(*m_slider), Qt::LeftButton);
    QCOMPARE(presses.count(), 2);
    sendRelease(*m_slider, centreOf(*m_slider));
}

void TestSliders::dragGoesOnThroughThePressOfAnotherButton()
{
    const QPoint centre = centreOf(*m_slider);
    sendPress(*m_slider, centre);
    sendMouse(*m_slider, QEvent::MouseButtonPress, centre, Qt::RightButton, Qt::LeftButton | Qt::RightButton);
    sendMove(*m_slider, centre - QPoint(0, 8));
    QVERIFY(m_slider->value() > m_start);
    sendRelease(*m_slider, centre);
}

void TestSliders::pressAfterALostReleaseHidesThePointerOnce()
{
    sendPress(*m_slider, centreOf(*m_slider));
    sendPress(*m_slider, centreOf(*m_slider));
    sendRelease(*m_slider, centreOf(*m_slider));
    QVERIFY(QApplication::overrideCursor() == nullptr);
}

void TestSliders::wheelStepsOnce_data()
{
    QTest::addColumn<QPoint>("delta");
    QTest::addColumn<bool>("inverted");
    QTest::addColumn<int>("step");
    QTest::newRow("up") << QPoint(0, 120) << false << 1;
    QTest::newRow("down") << QPoint(0, -120) << false << -1;
    QTest::newRow("up, inverted") << QPoint(0, 120) << true << -1;
    QTest::newRow("down, inverted") << QPoint(0, -120) << true << 1;
    QTest::newRow("many notches are one step") << QPoint(0, 1200) << false << 1;
    QTest::newRow("a part of a notch is one step") << QPoint(0, -1) << false << -1;
    QTest::newRow("nothing") << QPoint(0, 0) << false << 0;
    QTest::newRow("sideways") << QPoint(120, 0) << false << 0;
}

void TestSliders::wheelStepsOnce()
{
    QFETCH(QPoint, delta);
    QFETCH(bool, inverted);
    QFETCH(int, step);
    m_slider->setInvertedControls(inverted);
    QSignalSpy actions(m_slider, &QAbstractSlider::actionTriggered);
    sendWheel(*m_slider, topLeft(), delta);
    QCOMPARE(m_slider->value(), m_start + step);
    QCOMPARE(actions.count(), step == 0 ? 0 : 1);
}

void TestSliders::editReachesTheDevice()
{
    bind();
    sendWheel(*m_slider, centreOf(*m_slider), QPoint(0, 120));
    QCOMPARE(m_slider->value(), m_kind.factoryValue + 1);
    QCOMPARE(m_connected->memory.getParam(m_id), m_kind.factoryValue + 1);
    QCOMPARE(m_connected->device.settings(k_knob).*m_kind.setting, m_kind.factoryValue + 1);
    QCOMPARE(m_connected->device.received().size(), 1);
}

void TestSliders::refusedEditFallsBack()
{
    bind();
    m_connected->device.refuseSend(1);
    sendWheel(*m_slider, centreOf(*m_slider), QPoint(0, 120));
    QCOMPARE(m_slider->value(), m_kind.factoryValue);
    QCOMPARE(m_connected->memory.getParam(m_id), m_kind.factoryValue);
}

void TestSliders::changeInTheMemoryIsShown()
{
    bind();
    m_connected->memory.setParam(m_id, m_kind.factoryValue + 1);
    m_connected->memory.updateKnob(k_knob);
    QCOMPARE(m_slider->value(), m_kind.factoryValue + 1);
    QCOMPARE(m_connected->device.received().size(), 0);
}

void TestSliders::destroyedSliderIsForgottenByTheMemory()
{
    bind();
    delete m_slider;
    m_connected->memory.updateKnob(k_knob);
}

KTZ_TEST(QApplication, TestSliders)
#include "TestSliders.moc"
