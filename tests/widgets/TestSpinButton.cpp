#include "tests/support/CTestCase.h"
#include "tests/support/MemoryRig.h"
#include "tests/widgets/ActiveWindow.h"
#include "tests/widgets/ColorStrip.h"
#include "widgets/COnOffButton.h"
#include "widgets/CSpinButton.h"

#include <QAbstractEventDispatcher>
#include <QMenu>
#include <QMessageBox>
#include <QTimer>

#include <functional>
#include <memory>

namespace
{
constexpr QSize k_size(12, 20);
constexpr QPoint k_up(6, 4);
constexpr QPoint k_down(6, 15);

constexpr int k_never = 3'600'000; ///< milliseconds

constexpr int k_minimumRow = 0;
constexpr int k_betweenRow = 1;
constexpr int k_upRow = 2;
constexpr int k_downRow = 3;
constexpr int k_maximumRow = 4;

/// Counts the presses that its child lets through.
class CPressCounter : public QWidget
{
    Q_OBJECT

  public:
    int m_presses = 0;

  protected:
    void mousePressEvent(QMouseEvent*) override
    {
        ++m_presses;
    }
};

/// Keeps a release from the window that it was meant for.
class CReleaseEater : public QObject
{
    Q_OBJECT

  public:
    bool m_hasEaten = false;

    bool eventFilter(QObject*, QEvent* event) override
    {
        const bool isRelease = event->type() == QEvent::MouseButtonRelease;
        m_hasEaten = m_hasEaten || isRelease;
        return isRelease;
    }
};

/// A spin button from 0 to 10 in a shown window, with a picture of its own size.
class Panel
{
  public:
    explicit Panel(int value)
    {
        m_window.resize(100, 100);
        m_spin.setGeometry(0, 0, k_size.width(), k_size.height());
        m_spin.setCombinedImage(coloredStrip(k_size, 1, 5));
        m_spin.setRange(0, 10);
        m_spin.setValue(value);
        for (COnOffButton* half : m_spin.findChildren<COnOffButton*>())
            half->setAutoRepeatDelay(k_never);
    }

    [[nodiscard]] bool show()
    {
        return showActive(m_window);
    }

    [[nodiscard]] QColor face()
    {
        return shownColor(m_spin, QPoint(5, 5));
    }

    [[nodiscard]] COnOffButton* half(const QPoint& at)
    {
        return static_cast<COnOffButton*>(m_spin.childAt(at));
    }

    void mousePress(const QPoint& at)
    {
        QTest::mousePress(m_window.windowHandle(), Qt::LeftButton, {}, at);
    }

    void mouseRelease(const QPoint& at)
    {
        QTest::mouseRelease(m_window.windowHandle(), Qt::LeftButton, {}, at);
    }

    void wheel(int delta, const QPointF& at)
    {
        QWheelEvent event(at, m_spin.mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&m_spin, &event);
    }

    /// Ends a flash that has begun, whose length has been looked at, at once.
    void hastenFlash()
    {
        auto* timer = m_spin.findChild<QTimer*>();
        if (timer->isActive())
            timer->start(0);
    }

    CPressCounter m_window;
    CSpinButton m_spin{&m_window};
};
} // namespace

class TestSpinButton : public CTestCase
{
    Q_OBJECT

  private slots:
    void startsWithTheDefaults();
    void propertiesAreInOrder();
    void halvesAreHitAreas();
    void halvesShareTheHeight_data();
    void halvesShareTheHeight();
    void rowFollowsLimitsAndHalves_data();
    void rowFollowsLimitsAndHalves();
    void emptyRangeIsAtTheMinimum();
    void categoryIsTheColumn();
    void categoriesBelowOneAreOne();
    void frameIsPlacedByTheAlignment();
    void everySetterRedraws();
    void nullStripDrawsNothing();
    void halvesAreEnabledWithinTheLimits_data();
    void halvesAreEnabledWithinTheLimits();
    void pressShowsTheHalfAndReleaseSteps_data();
    void pressShowsTheHalfAndReleaseSteps();
    void heldHalfRepeats();
    void halfHeldToTheLimitStopsItsTimer();
    void heldHalfStopsWhenItsReleaseGoesElsewhere_data();
    void heldHalfStopsWhenItsReleaseGoesElsewhere();
    void destroyedSpinButtonIsForgottenByTheMemory();
    void clickFocusesTheSpinButton();
    void pressAtALimitIsDropped_data();
    void pressAtALimitIsDropped();
    void stepsFollowInvertedControls_data();
    void stepsFollowInvertedControls();
    void wheelMovesOneStep_data();
    void wheelMovesOneStep();
    void wheelOutsideDoesNothing_data();
    void wheelOutsideDoesNothing();
    void keyStepsAndFlashes_data();
    void keyStepsAndFlashes();
    void otherKeysDoNotFlash();
    void flashEndsWithAPress();
    void valueIsWrittenAndSent();
    void refusedValueFallsBack();
    void changeInTheMemoryIsShown();
    void consumedEventsGiveFalse();
};

void TestSpinButton::startsWithTheDefaults()
{
    const CSpinButton spin(nullptr);
    QCOMPARE(spin.alignment(), Qt::AlignCenter);
    QVERIFY(spin.combinedImage().isNull());
    QCOMPARE(spin.imageCategories(), 1);
    QCOMPARE(spin.category(), 0);
    QCOMPARE(spin.controllerID(), 0);
    QCOMPARE(spin.sizeHint(), QSize(16, 16));
    QCOMPARE(spin.minimumSizeHint(), QSize(0, 0));
    QCOMPARE(spin.focusPolicy(), Qt::ClickFocus);
}

void TestSpinButton::propertiesAreInOrder()
{
    const QMetaObject& meta = CSpinButton::staticMetaObject;
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        names.append(QLatin1String(meta.property(i).name()));
    QCOMPARE(names, QStringList({"alignment", "combinedImage", "imageCategories", "controllerID"}));
    QStringList slotNames;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        slotNames.append(QString::fromLatin1(meta.method(i).methodSignature()));
    QCOMPARE(slotNames, QStringList({"checkUpdate()", "updateValue()", "stepDown()", "stepUp()"}));
}

void TestSpinButton::halvesAreHitAreas()
{
    const CSpinButton spin(nullptr);
    const QList<COnOffButton*> halves = spin.findChildren<COnOffButton*>();
    QCOMPARE(halves.size(), 2);
    for (const COnOffButton* half : halves) {
        QVERIFY(!half->isCheckable());
        QVERIFY(half->autoRepeat());
        QVERIFY(half->combinedImage().isNull());
        QCOMPARE(half->focusPolicy(), Qt::NoFocus);
    }
}

void TestSpinButton::halvesShareTheHeight_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("up");
    QTest::addColumn<QRect>("down");
    QTest::newRow("even") << QSize(12, 20) << QRect(0, 0, 12, 10) << QRect(0, 10, 12, 10);
    QTest::newRow("odd") << QSize(12, 35) << QRect(0, 0, 12, 17) << QRect(0, 17, 12, 18);
    QTest::newRow("one pixel") << QSize(12, 1) << QRect(0, 0, 12, 0) << QRect(0, 0, 12, 1);
}

void TestSpinButton::halvesShareTheHeight()
{
    QFETCH(QSize, size);
    CSpinButton spin(nullptr);
    const QList<COnOffButton*> halves = spin.findChildren<COnOffButton*>();
    QCOMPARE(halves[0]->geometry(), QRect(0, 0, spin.width(), spin.height() / 2));
    spin.setWindowFlags(Qt::FramelessWindowHint);
    spin.resize(size);
    spin.show();
    QTRY_COMPARE(spin.size(), size);
    QTEST(halves[0]->geometry(), "up");
    QTEST(halves[1]->geometry(), "down");
}

void TestSpinButton::rowFollowsLimitsAndHalves_data() // from 0 to 10
{
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("up");
    QTest::addColumn<bool>("down");
    QTest::addColumn<int>("row");
    QTest::newRow("minimum") << 0 << false << false << k_minimumRow;
    QTest::newRow("minimum, up pressed") << 0 << true << false << k_upRow;
    QTest::newRow("minimum, down pressed") << 0 << false << true << k_minimumRow;
    QTest::newRow("minimum, both pressed") << 0 << true << true << k_upRow;
    QTest::newRow("between") << 5 << false << false << k_betweenRow;
    QTest::newRow("between, up pressed") << 5 << true << false << k_upRow;
    QTest::newRow("between, down pressed") << 5 << false << true << k_downRow;
    QTest::newRow("between, both pressed: down first") << 5 << true << true << k_downRow;
    QTest::newRow("maximum") << 10 << false << false << k_maximumRow;
    QTest::newRow("maximum, up pressed") << 10 << true << false << k_maximumRow;
    QTest::newRow("maximum, down pressed") << 10 << false << true << k_downRow;
    QTest::newRow("maximum, both pressed") << 10 << true << true << k_downRow;
}

void TestSpinButton::rowFollowsLimitsAndHalves()
{
    QFETCH(int, value);
    QFETCH(bool, up);
    QFETCH(bool, down);
    QFETCH(int, row);
    CSpinButton spin(nullptr);
    spin.resize(k_size);
    spin.setCombinedImage(coloredStrip(k_size, 1, 5));
    spin.setRange(0, 10);
    spin.setValue(value);
    const QList<COnOffButton*> halves = spin.findChildren<COnOffButton*>();
    halves[0]->setDown(up);
    halves[1]->setDown(down);
    spin.checkUpdate();
    QCOMPARE(shownColor(spin, QPoint(0, 0)), frameColor(0, row));
    QCOMPARE(shownColor(spin, QPoint(11, 19)), frameColor(0, row));
}

void TestSpinButton::emptyRangeIsAtTheMinimum()
{
    Panel panel(0);
    panel.m_spin.setRange(0, 0);
    panel.m_spin.updateDoubleBuffer();
    QCOMPARE(panel.face(), frameColor(0, k_minimumRow));
}

void TestSpinButton::categoryIsTheColumn()
{
    CSpinButton spin(nullptr);
    spin.resize(k_size);
    spin.setCombinedImage(coloredStrip(k_size, 3, 5));
    spin.setImageCategories(3);
    spin.ensurePolished();
    for (const auto& [asked, column] : {std::pair(-1, 0), std::pair(1, 1), std::pair(3, 2)}) {
        spin.setCategory(asked);
        QCOMPARE(spin.category(), column);
        QCOMPARE(shownColor(spin, QPoint(11, 19)), frameColor(column, k_minimumRow));
    }
}

void TestSpinButton::categoriesBelowOneAreOne()
{
    CSpinButton spin(nullptr);
    spin.setImageCategories(0);
    QCOMPARE(spin.imageCategories(), 1);
    QVERIFY(spin.setProperty("imageCategories", -3));
    QCOMPARE(spin.imageCategories(), 1);
}

void TestSpinButton::frameIsPlacedByTheAlignment()
{
    CSpinButton spin(nullptr);
    spin.setPalette(QPalette(Qt::green));
    spin.resize(20, 35);
    spin.setCombinedImage(coloredStrip(k_size, 1, 5));
    spin.setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    QCOMPARE(shownColor(spin, QPoint(0, 6)), QColor(Qt::green));
    QCOMPARE(shownColor(spin, QPoint(0, 7)), frameColor(0, k_minimumRow));
    QCOMPARE(shownColor(spin, QPoint(11, 26)), frameColor(0, k_minimumRow));
    QCOMPARE(shownColor(spin, QPoint(12, 26)), QColor(Qt::green));
    QCOMPARE(shownColor(spin, QPoint(11, 27)), QColor(Qt::green));
}

void TestSpinButton::everySetterRedraws()
{
    CSpinButton spin(nullptr);
    spin.setPalette(QPalette(Qt::green));
    spin.resize(2 * k_size);
    spin.ensurePolished();
    const QColor bare(Qt::green);
    QCOMPARE(shownColor(spin, QPoint(12, 20)), bare);
    spin.setCombinedImage(coloredStrip(k_size, 1, 5));
    QCOMPARE(shownColor(spin, QPoint(12, 20)), frameColor(0, k_minimumRow));
    QCOMPARE(shownColor(spin, QPoint(8, 0)), bare);
    spin.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    QCOMPARE(shownColor(spin, QPoint(8, 0)), frameColor(0, k_minimumRow));
    spin.setImageCategories(2); // frames become 6 wide
    QCOMPARE(shownColor(spin, QPoint(8, 0)), bare);
}

void TestSpinButton::nullStripDrawsNothing()
{
    CSpinButton spin(nullptr);
    spin.setPalette(QPalette(Qt::green));
    spin.resize(k_size);
    QCOMPARE(shownColor(spin, QPoint(5, 5)), QColor(Qt::green));
}

void TestSpinButton::halvesAreEnabledWithinTheLimits_data() // from 0 to 10
{
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("up");
    QTest::addColumn<bool>("down");
    QTest::newRow("minimum") << 0 << true << false;
    QTest::newRow("between") << 5 << true << true;
    QTest::newRow("maximum") << 10 << false << true;
}

void TestSpinButton::halvesAreEnabledWithinTheLimits()
{
    QFETCH(int, value);
    CSpinButton spin(nullptr);
    const QList<COnOffButton*> halves = spin.findChildren<COnOffButton*>();
    spin.setRange(0, 10);
    spin.setValue(value);
    QTEST(halves[0]->isEnabled(), "up");
    QTEST(halves[1]->isEnabled(), "down");
    spin.setRange(-5, 20);
    QVERIFY(halves[0]->isEnabled());
    QVERIFY(halves[1]->isEnabled());
}

void TestSpinButton::pressShowsTheHalfAndReleaseSteps_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<int>("pressedRow");
    QTest::addColumn<int>("valueAfter");
    QTest::addColumn<int>("rowAfter");
    QTest::newRow("up") << 5 << k_up << k_upRow << 6 << k_betweenRow;
    QTest::newRow("down") << 5 << k_down << k_downRow << 4 << k_betweenRow;
    QTest::newRow("up to the maximum") << 9 << k_up << k_upRow << 10 << k_maximumRow;
    QTest::newRow("down to the minimum") << 1 << k_down << k_downRow << 0 << k_minimumRow;
    QTest::newRow("up at the maximum") << 10 << k_up << k_maximumRow << 10 << k_maximumRow;
    QTest::newRow("down at the minimum") << 0 << k_down << k_minimumRow << 0 << k_minimumRow;
    QTest::newRow("up at the minimum") << 0 << k_up << k_upRow << 1 << k_betweenRow;
    QTest::newRow("down at the maximum") << 10 << k_down << k_downRow << 9 << k_betweenRow;
}

void TestSpinButton::pressShowsTheHalfAndReleaseSteps()
{
    QFETCH(int, value);
    QFETCH(QPoint, at);
    QFETCH(int, pressedRow);
    QFETCH(int, rowAfter);
    Panel panel(value);
    QVERIFY(panel.show());
    QSignalSpy actions(&panel.m_spin, SIGNAL(actionTriggered(int)));
    panel.mousePress(at);
    QCOMPARE(panel.face(), frameColor(0, pressedRow));
    panel.mouseRelease(at);
    QTEST(panel.m_spin.value(), "valueAfter");
    QCOMPARE(panel.face(), frameColor(0, rowAfter));
    QCOMPARE(actions.size(), panel.m_spin.value() == value ? 0 : 1);
}

void TestSpinButton::heldHalfRepeats()
{
    Panel panel(0);
    QVERIFY(panel.show());
    panel.half(k_up)->setAutoRepeatDelay(5);
    panel.half(k_up)->setAutoRepeatInterval(5);
    panel.mousePress(k_up);
    panel.half(k_up)->setAutoRepeatDelay(k_never); // of the next press: the interval alone drives the repeats
    QTRY_VERIFY(panel.m_spin.value() >= 3);
    panel.mouseRelease(k_up);
}

void TestSpinButton::halfHeldToTheLimitStopsItsTimer()
{
    Panel panel(8);
    QVERIFY(panel.show());
    COnOffButton* up = panel.half(k_up);
    up->setAutoRepeatDelay(5);
    up->setAutoRepeatInterval(5);
    panel.mousePress(k_up);
    QVERIFY(!QAbstractEventDispatcher::instance()->registeredTimers(up).isEmpty());
    QTRY_COMPARE(panel.m_spin.value(), 10);
    QVERIFY(!up->isDown());
    QCOMPARE(panel.face(), frameColor(0, k_maximumRow));
    QVERIFY(QAbstractEventDispatcher::instance()->registeredTimers(up).isEmpty());
    panel.mouseRelease(k_up);
    QCOMPARE(panel.m_spin.value(), 10);
}

void TestSpinButton::heldHalfStopsWhenItsReleaseGoesElsewhere_data()
{
    QTest::addColumn<std::function<void(QWidget*)>>("event");
    QTest::addColumn<Qt::FocusPolicy>("focusPolicy");
    const std::function openMenu([](QWidget* window) {
        QMenu menu(window);
        menu.addAction(QStringLiteral("x"));
        QTimer::singleShot(50, &menu, &QWidget::close);
        menu.exec(window->pos());
    });
    QTest::newRow("message box") << std::function([](QWidget* window) {
        QMessageBox box(window);
        QTimer::singleShot(50, &box, &QDialog::accept);
        box.exec();
    }) << Qt::ClickFocus;
    QTest::newRow("menu") << openMenu << Qt::ClickFocus;
    QTest::newRow("menu, the focus is not here") << openMenu << Qt::NoFocus;
    QTest::newRow("hidden window") << std::function([](QWidget* window) { window->hide(); }) << Qt::ClickFocus;
    QTest::newRow("disabled window") << std::function([](QWidget* window) { window->setEnabled(false); })
                                     << Qt::ClickFocus;
    QTest::newRow("the release alone is lost") << std::function([](QWidget* window) {
        CReleaseEater eater;
        window->windowHandle()->installEventFilter(&eater);
        QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, {}, k_up);
        QVERIFY(eater.m_hasEaten);
    }) << Qt::ClickFocus;
}

void TestSpinButton::heldHalfStopsWhenItsReleaseGoesElsewhere()
{
    QFETCH(std::function<void(QWidget*)>, event);
    QFETCH(Qt::FocusPolicy, focusPolicy);
    MemoryRig memory;
    Panel panel(0);
    panel.m_spin.setFocusPolicy(focusPolicy);
    panel.m_spin.setRange(0, 1'000'000);
    memory.bind(panel.m_spin);
    memory.connect();
    QVERIFY(panel.show());
    panel.half(k_up)->setAutoRepeatDelay(1);
    panel.half(k_up)->setAutoRepeatInterval(1);
    panel.mousePress(k_up);
    QTRY_VERIFY(panel.m_spin.value() >= 3);
    int valueThen = 0;
    qsizetype sentThen = 0;
    QTimer::singleShot(20, &panel.m_spin, [&] {
        valueThen = panel.m_spin.value();
        sentThen = memory.received().size();
    });
    event(&panel.m_window);
    QTRY_VERIFY(valueThen > 0);
    // Thirty repeats would have come by now.
    QTest::qWait(30);
    QCOMPARE(panel.m_spin.value(), valueThen);
    QCOMPARE(memory.received().size(), sentThen);
    for (COnOffButton* half : panel.m_spin.findChildren<COnOffButton*>())
        QVERIFY(!half->isDown());
    QVERIFY(panel.face() != frameColor(0, k_upRow));
    QTest::mouseRelease(panel.m_window.windowHandle(), Qt::LeftButton, {}, k_up);
    QCOMPARE(panel.m_spin.value(), valueThen);
}

void TestSpinButton::destroyedSpinButtonIsForgottenByTheMemory()
{
    MemoryRig memory;
    auto spin = std::make_unique<CSpinButton>();
    memory.bind(*spin);
    spin.reset();
    memory.change(64);
    QCOMPARE(memory.value(), 64);
}

void TestSpinButton::clickFocusesTheSpinButton()
{
    Panel panel(5);
    QVERIFY(panel.show());
    panel.mousePress(k_up);
    panel.mouseRelease(k_up);
    QVERIFY(panel.m_spin.hasFocus());
}

void TestSpinButton::pressAtALimitIsDropped_data() // height 20
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("y");
    QTest::addColumn<bool>("dropped");
    QTest::newRow("maximum, top") << 10 << 0 << true;
    QTest::newRow("maximum, middle") << 10 << 10 << true;
    QTest::newRow("maximum, below the middle") << 10 << 11 << false;
    QTest::newRow("minimum, middle") << 0 << 10 << false;
    QTest::newRow("minimum, below the middle") << 0 << 11 << true;
    QTest::newRow("minimum, bottom") << 0 << 19 << true;
    QTest::newRow("between, top") << 5 << 0 << false;
    QTest::newRow("between, bottom") << 5 << 19 << false;
}

void TestSpinButton::pressAtALimitIsDropped()
{
    QFETCH(int, value);
    QFETCH(int, y);
    QFETCH(bool, dropped);
    Panel panel(value);
    QTest::mousePress(&panel.m_spin, Qt::LeftButton, {}, QPoint(6, y));
    QCOMPARE(panel.m_window.m_presses, dropped ? 0 : 1);
    QCOMPARE(panel.m_spin.value(), value);
}

void TestSpinButton::stepsFollowInvertedControls_data()
{
    QTest::addColumn<bool>("inverted");
    QTest::addColumn<int>("afterUp");
    QTest::newRow("plain") << false << 6;
    QTest::newRow("inverted") << true << 4;
}

void TestSpinButton::stepsFollowInvertedControls()
{
    QFETCH(bool, inverted);
    CSpinButton spin(nullptr);
    spin.setRange(0, 10);
    spin.setValue(5);
    spin.setInvertedControls(inverted);
    spin.stepUp();
    QTEST(spin.value(), "afterUp");
    spin.stepDown();
    QCOMPARE(spin.value(), 5);
}

void TestSpinButton::wheelMovesOneStep_data() // from 0 to 10
{
    QTest::addColumn<bool>("inverted");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("delta");
    QTest::addColumn<int>("valueAfter");
    QTest::addColumn<int>("row");
    QTest::newRow("one notch up") << false << 5 << 120 << 6 << k_upRow;
    QTest::newRow("one notch down") << false << 5 << -120 << 4 << k_downRow;
    QTest::newRow("a fine wheel's smallest step") << false << 5 << 1 << 6 << k_upRow;
    QTest::newRow("eight notches at once") << false << 5 << -960 << 4 << k_downRow;
    QTest::newRow("delta 0") << false << 5 << 0 << 5 << k_betweenRow;
    QTest::newRow("up at the maximum") << false << 10 << 120 << 10 << k_maximumRow;
    QTest::newRow("down at the minimum") << false << 0 << -120 << 0 << k_minimumRow;
    QTest::newRow("down to the minimum") << false << 1 << -120 << 0 << k_minimumRow;
    QTest::newRow("inverted up") << true << 5 << 120 << 4 << k_upRow;
    QTest::newRow("inverted down") << true << 5 << -120 << 6 << k_downRow;
    QTest::newRow("inverted up at the minimum") << true << 0 << 120 << 0 << k_minimumRow;
    QTest::newRow("inverted down at the maximum") << true << 10 << -120 << 10 << k_maximumRow;
    QTest::newRow("inverted up at the maximum") << true << 10 << 120 << 9 << k_upRow;
}

void TestSpinButton::wheelMovesOneStep()
{
    QFETCH(bool, inverted);
    QFETCH(int, value);
    QFETCH(int, delta);
    QFETCH(int, valueAfter);
    QFETCH(int, row);
    Panel panel(value);
    QVERIFY(panel.show());
    panel.m_spin.setInvertedControls(inverted);
    panel.wheel(delta, QPointF(6, 10));
    QCOMPARE(panel.m_spin.value(), valueAfter);
    QCOMPARE(panel.face(), frameColor(0, row));
    const int rowAfter = valueAfter == 0 ? k_minimumRow : valueAfter == 10 ? k_maximumRow : k_betweenRow;
    panel.hastenFlash();
    QTRY_COMPARE(panel.face(), frameColor(0, rowAfter));
}

void TestSpinButton::wheelOutsideDoesNothing_data() // 12 x 20
{
    QTest::addColumn<QPointF>("at");
    QTest::newRow("left") << QPointF(-1, 10);
    QTest::newRow("above") << QPointF(6, -1);
    QTest::newRow("right") << QPointF(12, 10);
    QTest::newRow("below") << QPointF(6, 20);
}

void TestSpinButton::wheelOutsideDoesNothing()
{
    QFETCH(QPointF, at);
    Panel panel(5);
    QVERIFY(panel.show());
    panel.wheel(120, at);
    QCOMPARE(panel.m_spin.value(), 5);
    QCOMPARE(panel.face(), frameColor(0, k_betweenRow));
}

void TestSpinButton::keyStepsAndFlashes_data() // from 0 to 10, page step 3
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("valueAfter");
    QTest::addColumn<int>("flashRow");
    QTest::newRow("up") << Qt::Key_Up << 5 << 6 << k_upRow;
    QTest::newRow("right") << Qt::Key_Right << 5 << 6 << k_upRow;
    QTest::newRow("page up") << Qt::Key_PageUp << 5 << 8 << k_upRow;
    QTest::newRow("end, at the limit afterwards") << Qt::Key_End << 5 << 10 << k_maximumRow;
    QTest::newRow("down") << Qt::Key_Down << 5 << 4 << k_downRow;
    QTest::newRow("left") << Qt::Key_Left << 5 << 4 << k_downRow;
    QTest::newRow("page down") << Qt::Key_PageDown << 5 << 2 << k_downRow;
    QTest::newRow("home, at the limit afterwards") << Qt::Key_Home << 5 << 0 << k_minimumRow;
    QTest::newRow("up at the maximum") << Qt::Key_Up << 10 << 10 << k_maximumRow;
    QTest::newRow("right at the maximum") << Qt::Key_Right << 10 << 10 << k_maximumRow;
    QTest::newRow("page up at the maximum") << Qt::Key_PageUp << 10 << 10 << k_maximumRow;
    QTest::newRow("end at the maximum") << Qt::Key_End << 10 << 10 << k_maximumRow;
    QTest::newRow("down at the minimum") << Qt::Key_Down << 0 << 0 << k_minimumRow;
    QTest::newRow("left at the minimum") << Qt::Key_Left << 0 << 0 << k_minimumRow;
    QTest::newRow("page down at the minimum") << Qt::Key_PageDown << 0 << 0 << k_minimumRow;
    QTest::newRow("home at the minimum") << Qt::Key_Home << 0 << 0 << k_minimumRow;
}

void TestSpinButton::keyStepsAndFlashes()
{
    QFETCH(Qt::Key, key);
    QFETCH(int, value);
    QFETCH(int, valueAfter);
    QFETCH(int, flashRow);
    Panel panel(value);
    QVERIFY(panel.show());
    panel.m_spin.setPageStep(3);
    panel.m_spin.setFocus();
    const auto* timer = panel.m_spin.findChild<QTimer*>();
    QTest::keyPress(&panel.m_spin, key);
    QCOMPARE(timer->isActive(), value != valueAfter);
    QCOMPARE(timer->interval(), value != valueAfter ? 100 : 0);
    QCOMPARE(panel.m_spin.value(), valueAfter);
    QCOMPARE(panel.face(), frameColor(0, flashRow));
    const int rowAfter = valueAfter == 0 ? k_minimumRow : valueAfter == 10 ? k_maximumRow : k_betweenRow;
    panel.hastenFlash();
    QTRY_COMPARE(panel.face(), frameColor(0, rowAfter));
    QTest::keyRelease(&panel.m_spin, key);
}

void TestSpinButton::otherKeysDoNotFlash()
{
    Panel panel(5);
    QTest::keyClick(&panel.m_spin, Qt::Key_A);
    QVERIFY(!panel.m_spin.findChild<QTimer*>()->isActive());
    QCOMPARE(panel.m_spin.value(), 5);
}

void TestSpinButton::flashEndsWithAPress()
{
    Panel panel(5);
    QVERIFY(panel.show());
    QTest::keyPress(&panel.m_spin, Qt::Key_Up);
    QCOMPARE(panel.face(), frameColor(0, k_upRow));
    panel.mousePress(k_down);
    QVERIFY(!panel.m_spin.findChild<QTimer*>()->isActive());
    QCOMPARE(panel.face(), frameColor(0, k_downRow));
    panel.mouseRelease(k_down);
}

void TestSpinButton::valueIsWrittenAndSent()
{
    MemoryRig memory;
    CSpinButton spin(nullptr);
    spin.setRange(0, 127);
    memory.bind(spin);
    spin.stepUp();
    QCOMPARE(memory.value(), 1);
    QVERIFY(memory.received().isEmpty());
    memory.connect();
    spin.stepUp();
    QCOMPARE(memory.value(), 2);
    QCOMPARE(memory.received().size(), 1);
    spin.setValue(2);
    QCOMPARE(memory.received().size(), 1);
}

void TestSpinButton::refusedValueFallsBack()
{
    MemoryRig memory;
    CSpinButton spin(nullptr);
    spin.setRange(0, 127);
    memory.bind(spin);
    spin.setValue(40);
    memory.loseDevice();
    spin.stepUp();
    QCOMPARE(memory.value(), 40);
    QCOMPARE(spin.value(), 40);
}

void TestSpinButton::changeInTheMemoryIsShown()
{
    MemoryRig memory;
    Panel panel(5);
    QVERIFY(panel.show());
    memory.bind(panel.m_spin);
    memory.change(10);
    QCOMPARE(panel.m_spin.value(), 10);
    QCOMPARE(panel.face(), frameColor(0, k_maximumRow));
}

void TestSpinButton::consumedEventsGiveFalse()
{
    CSpinButton spin(nullptr);
    QObject& object = spin;
    QEvent polish(QEvent::Polish);
    QVERIFY(!object.event(&polish));
    QEvent change(QEvent::EnabledChange);
    QVERIFY(object.event(&change));
}

KTZ_TEST(QApplication, TestSpinButton)
#include "TestSpinButton.moc"
