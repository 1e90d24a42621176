#include "tests/support/CTestCase.h"
#include "tests/support/MemoryRig.h"
#include "tests/widgets/ActiveWindow.h"
#include "tests/widgets/ColorStrip.h"
#include "widgets/COnOffButton.h"

#include <QMenu>
#include <QMessageBox>
#include <QTimer>

#include <functional>
#include <memory>

namespace
{
constexpr QSize k_frame(10, 8);

/// Counts the events that its child lets through.
class CEventCounter : public QWidget
{
    Q_OBJECT

  public:
    int m_presses = 0;
    int m_keys = 0;
    QPointF m_pressed; ///< where the last one was

  protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        ++m_presses;
        m_pressed = event->scenePosition();
    }

    void keyPressEvent(QKeyEvent*) override
    {
        ++m_keys;
    }

    void keyReleaseEvent(QKeyEvent*) override
    {
        ++m_keys;
    }
};
} // namespace

class TestOnOffButton : public CTestCase
{
    Q_OBJECT

  private slots:
    void startsWithTheDefaults();
    void propertiesAreInOrder();
    void propertiesReachTheFields();
    void rowFollowsTheState_data();
    void rowFollowsTheState();
    void categoryIsTheColumn();
    void categoriesBelowOneAreOne();
    void categoryIsBroughtIntoRange_data();
    void categoryIsBroughtIntoRange();
    void frameIsPlacedByTheAlignment_data();
    void frameIsPlacedByTheAlignment();
    void frameOfTheScreensDensityIsCopiedPixelForPixel();
    void everySetterRedraws();
    void nullStripDrawsNothing();
    void pressedFaceShowsWhileTheMouseIsHeld();
    void clickWritesTheValueOfTheNewState();
    void clickIsSentToTheDevice();
    void unchangedStateWritesNothing();
    void heldButtonLetsGoWithoutAClick_data();
    void heldButtonLetsGoWithoutAClick();
    void pressThatTakesTheFocusKeepsItsPlace();
    void destroyedButtonIsForgottenByTheMemory();
    void refusedEditFallsBackToTheMemory();
    void valueOfNeitherStateKeepsTheState_data();
    void valueOfNeitherStateKeepsTheState();
    void updateMemAPIFollowsTheMemory_data();
    void updateMemAPIFollowsTheMemory();
    void newValueOfThePresentStateIsWritten_data();
    void newValueOfThePresentStateIsWritten();
    void refusedValueOfThePresentStateFallsBack();
    void pressFollowsTheTriggers_data();
    void pressFollowsTheTriggers();
    void otherMouseButtonsTriggerNothing();
    void uncheckableButtonTriggersNothing();
    void arrowKeysAreSwallowed_data();
    void arrowKeysAreSwallowed();
    void spaceClicksAndOtherKeysTravelOn();
    void disabledButtonLetsThePressThrough();
    void consumedEventsGiveFalse();
};

void TestOnOffButton::startsWithTheDefaults()
{
    const COnOffButton button(nullptr);
    QCOMPARE(button.alignment(), Qt::AlignCenter);
    QCOMPARE(button.onStateTrigger(), COnOffButton::buttonRelease);
    QCOMPARE(button.offStateTrigger(), COnOffButton::buttonRelease);
    QCOMPARE(button.onValue(), 1);
    QCOMPARE(button.offValue(), 0);
    QVERIFY(button.combinedImage().isNull());
    QVERIFY(button.hasDownImage());
    QCOMPARE(button.imageCategories(), 1);
    QCOMPARE(button.category(), 0);
    QCOMPARE(button.controllerID(), 0);
    QCOMPARE(button.focusPolicy(), Qt::ClickFocus);
    QCOMPARE(int(COnOffButton::buttonRelease), 0);
    QCOMPARE(int(COnOffButton::buttonPush), 1);
}

void TestOnOffButton::propertiesAreInOrder()
{
    const QMetaObject& meta = COnOffButton::staticMetaObject;
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        names.append(QLatin1String(meta.property(i).name()));
    QCOMPARE(names, QStringList({"alignment", "offStateTrigger", "onStateTrigger", "onValue", "offValue",
                                 "combinedImage", "hasDownImage", "imageCategories", "controllerID"}));
}

void TestOnOffButton::propertiesReachTheFields()
{
    COnOffButton button(nullptr);
    QVERIFY(button.setProperty("alignment", QVariant::fromValue(Qt::Alignment(Qt::AlignRight))));
    QCOMPARE(button.alignment(), Qt::AlignRight);
    QVERIFY(button.setProperty("offStateTrigger", 1));
    QCOMPARE(button.offStateTrigger(), COnOffButton::buttonPush);
    QVERIFY(button.setProperty("onStateTrigger", 1));
    QCOMPARE(button.onStateTrigger(), COnOffButton::buttonPush);
    QVERIFY(button.setProperty("onValue", 7));
    QCOMPARE(button.onValue(), 7);
    QVERIFY(button.setProperty("offValue", 3));
    QCOMPARE(button.offValue(), 3);
    QVERIFY(button.setProperty("combinedImage", coloredStrip(k_frame, 1, 3)));
    QVERIFY(!button.combinedImage().isNull());
    QVERIFY(button.setProperty("hasDownImage", false));
    QVERIFY(!button.hasDownImage());
    QVERIFY(button.setProperty("imageCategories", 4));
    QCOMPARE(button.imageCategories(), 4);
    QVERIFY(button.setProperty("controllerID", 1203));
    QCOMPARE(button.controllerID(), 1203);
}

void TestOnOffButton::rowFollowsTheState_data()
{
    QTest::addColumn<bool>("hasDownImage");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<bool>("down");
    QTest::addColumn<int>("row");
    QTest::newRow("off") << true << false << false << 0;
    QTest::newRow("on") << true << true << false << 1;
    QTest::newRow("off, pressed") << true << false << true << 2;
    QTest::newRow("on, pressed") << true << true << true << 2;
    QTest::newRow("two rows: off") << false << false << false << 0;
    QTest::newRow("two rows: on") << false << true << false << 1;
    QTest::newRow("two rows: off, pressed, shows on") << false << false << true << 1;
    QTest::newRow("two rows: on, pressed, shows on") << false << true << true << 1;
}

void TestOnOffButton::rowFollowsTheState()
{
    QFETCH(bool, hasDownImage);
    QFETCH(bool, checked);
    QFETCH(bool, down);
    QFETCH(int, row);
    COnOffButton button(nullptr);
    button.resize(k_frame);
    button.setCheckable(true);
    button.setHasDownImage(hasDownImage);
    button.setCombinedImage(coloredStrip(k_frame, 1, hasDownImage ? 3 : 2));
    button.setChecked(checked);
    button.setDown(down);
    QCOMPARE(shownColor(button, QPoint(0, 0)), frameColor(0, row));
    QCOMPARE(shownColor(button, QPoint(9, 7)), frameColor(0, row));
}

void TestOnOffButton::categoryIsTheColumn()
{
    COnOffButton button(nullptr);
    button.resize(k_frame);
    button.setCombinedImage(coloredStrip(k_frame, 3, 3));
    button.setImageCategories(3);
    button.ensurePolished();
    for (int category = 0; category < 3; ++category) {
        button.setCategory(category);
        QCOMPARE(shownColor(button, QPoint(0, 0)), frameColor(category, 0));
        QCOMPARE(shownColor(button, QPoint(9, 7)), frameColor(category, 0));
    }
}

void TestOnOffButton::categoriesBelowOneAreOne()
{
    COnOffButton button(nullptr);
    button.resize(k_frame);
    button.setCombinedImage(coloredStrip(k_frame, 1, 3));
    for (const int count : {0, -5}) {
        button.setImageCategories(count);
        QCOMPARE(button.imageCategories(), 1);
        QCOMPARE(shownColor(button, QPoint(9, 7)), frameColor(0, 0));
    }
}

void TestOnOffButton::categoryIsBroughtIntoRange_data() // 3 categories
{
    QTest::addColumn<int>("asked");
    QTest::addColumn<int>("stored");
    QTest::newRow("below 0") << -1 << 0;
    QTest::newRow("first") << 0 << 0;
    QTest::newRow("last") << 2 << 2;
    QTest::newRow("one past the last") << 3 << 2;
}

void TestOnOffButton::categoryIsBroughtIntoRange()
{
    QFETCH(int, asked);
    COnOffButton button(nullptr);
    button.setImageCategories(3);
    button.setCategory(asked);
    QTEST(button.category(), "stored");
}

void TestOnOffButton::frameIsPlacedByTheAlignment_data() // a frame of 10 x 8 in a button of 31 x 25
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<QPoint>("topLeft");
    QTest::newRow("left, top") << int(Qt::AlignLeft | Qt::AlignTop) << QPoint(0, 0);
    QTest::newRow("centre") << int(Qt::AlignCenter) << QPoint(10, 8);
    QTest::newRow("right, bottom") << int(Qt::AlignRight | Qt::AlignBottom) << QPoint(21, 17);
}

void TestOnOffButton::frameIsPlacedByTheAlignment()
{
    QFETCH(int, alignment);
    QFETCH(QPoint, topLeft);
    COnOffButton button(nullptr);
    button.setPalette(QPalette(Qt::green));
    button.resize(31, 25);
    button.setCombinedImage(coloredStrip(k_frame, 1, 3));
    button.ensurePolished();
    button.setAlignment(Qt::Alignment::fromInt(static_cast<Qt::Alignment::Int>(alignment)));
    const QRect frame(topLeft, k_frame);
    const QColor bare(Qt::green);
    QCOMPARE(shownColor(button, frame.topLeft()), frameColor(0, 0));
    QCOMPARE(shownColor(button, frame.bottomRight()), frameColor(0, 0));
    for (const QPoint& corner : {frame.topLeft() - QPoint(1, 1), frame.bottomRight() + QPoint(1, 1)}) {
        if (button.rect().contains(corner))
            QCOMPARE(shownColor(button, corner), bare);
    }
}

void TestOnOffButton::frameOfTheScreensDensityIsCopiedPixelForPixel()
{
    COnOffButton button(nullptr);
    button.resize(k_frame);
    const qreal ratio = button.devicePixelRatioF();
    const QSize frame = (QSizeF(k_frame) * ratio).toSize();
    QImage strip(frame.width(), 3 * frame.height(), QImage::Format_RGB32);
    for (int y = 0; y < strip.height(); ++y) {
        for (int x = 0; x < strip.width(); ++x)
            strip.setPixelColor(x, y, QColor(x * 8, y * 3, (x + y) % 2 * 255));
    }
    strip.setDevicePixelRatio(ratio);
    button.setCombinedImage(QPixmap::fromImage(strip));
    button.setCheckable(true);
    button.setChecked(true);
    QImage shown = button.grab().toImage().convertToFormat(QImage::Format_RGB32);
    shown.setDevicePixelRatio(ratio);
    QCOMPARE(shown, strip.copy(0, frame.height(), frame.width(), frame.height()));
}

void TestOnOffButton::everySetterRedraws()
{
    COnOffButton button(nullptr);
    button.setPalette(QPalette(Qt::green));
    button.resize(2 * k_frame);
    button.ensurePolished();
    const QColor bare(Qt::green);
    QCOMPARE(shownColor(button, QPoint(10, 8)), bare);
    button.setCombinedImage(coloredStrip(k_frame, 1, 3));
    QCOMPARE(shownColor(button, QPoint(10, 8)), frameColor(0, 0));
    QCOMPARE(shownColor(button, QPoint(0, 0)), bare);
    button.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    QCOMPARE(shownColor(button, QPoint(0, 0)), frameColor(0, 0));
    QCOMPARE(shownColor(button, QPoint(0, 10)), bare);
    button.setHasDownImage(false); // frames become 12 high: one and a half of the three
    QCOMPARE(shownColor(button, QPoint(0, 10)), frameColor(0, 1));
    QCOMPARE(shownColor(button, QPoint(7, 0)), frameColor(0, 0));
    button.setImageCategories(2); // and 5 wide
    QCOMPARE(shownColor(button, QPoint(7, 0)), bare);
}

void TestOnOffButton::nullStripDrawsNothing()
{
    COnOffButton button(nullptr);
    button.setPalette(QPalette(Qt::green));
    button.resize(k_frame);
    QCOMPARE(shownColor(button, QPoint(5, 4)), QColor(Qt::green));
}

void TestOnOffButton::pressedFaceShowsWhileTheMouseIsHeld()
{
    COnOffButton button(nullptr);
    button.resize(k_frame);
    button.setCombinedImage(coloredStrip(k_frame, 1, 3));
    button.show();
    QVERIFY(QTest::qWaitForWindowExposed(&button));
    QTest::mousePress(&button, Qt::LeftButton);
    QCOMPARE(shownColor(button, QPoint(5, 4)), frameColor(0, 2));
    QTest::mouseRelease(&button, Qt::LeftButton);
    QCOMPARE(shownColor(button, QPoint(5, 4)), frameColor(0, 0));
}

void TestOnOffButton::clickWritesTheValueOfTheNewState()
{
    MemoryRig memory;
    COnOffButton button(nullptr);
    button.setCheckable(true);
    button.setOnValue(20);
    button.setOffValue(10);
    memory.bind(button);
    QTest::mouseClick(&button, Qt::LeftButton);
    QVERIFY(button.isChecked());
    QCOMPARE(memory.value(), 20);
    QTest::mouseClick(&button, Qt::LeftButton);
    QVERIFY(!button.isChecked());
    QCOMPARE(memory.value(), 10);
    QVERIFY(memory.received().isEmpty());
}

void TestOnOffButton::clickIsSentToTheDevice()
{
    MemoryRig memory;
    memory.connect();
    COnOffButton button(nullptr);
    button.setCheckable(true);
    memory.bind(button);
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(memory.received().size(), 1);
}

void TestOnOffButton::unchangedStateWritesNothing()
{
    MemoryRig memory;
    COnOffButton button(nullptr);
    button.setCheckable(true);
    memory.bind(button);
    memory.setValue(55);
    button.checkUpdate();
    QCOMPARE(memory.value(), 55);
    button.setChecked(true);
    QCOMPARE(memory.value(), 1);
    memory.setValue(55);
    button.checkUpdate();
    QCOMPARE(memory.value(), 55);
}

void TestOnOffButton::heldButtonLetsGoWithoutAClick_data()
{
    QTest::addColumn<std::function<void(QWidget*, COnOffButton*)>>("event");
    QTest::newRow("message box") << std::function([](QWidget* window, COnOffButton*) {
        QMessageBox box(window);
        QTimer::singleShot(0, &box, &QDialog::accept);
        box.exec();
    });
    QTest::newRow("menu") << std::function([](QWidget* window, COnOffButton*) {
        QMenu menu(window);
        menu.addAction(QStringLiteral("x"));
        QTimer::singleShot(0, &menu, &QWidget::close);
        menu.exec(window->pos());
    });
    QTest::newRow("hidden window") << std::function([](QWidget* window, COnOffButton*) {
        window->hide();
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
    });
    QTest::newRow("disabled") << std::function([](QWidget*, COnOffButton* button) {
        button->setEnabled(false);
        button->setEnabled(true);
    });
    QTest::newRow("focus elsewhere") << std::function([](QWidget* window, COnOffButton*) { window->setFocus(); });
}

void TestOnOffButton::heldButtonLetsGoWithoutAClick()
{
    QFETCH(std::function<void(QWidget*, COnOffButton*)>, event);
    QWidget window;
    window.resize(100, 100);
    COnOffButton button(&window);
    button.setGeometry(10, 10, 20, 20);
    button.setCheckable(true);
    QVERIFY(showActive(window));
    QSignalSpy clicks(&button, &QAbstractButton::clicked);
    QSignalSpy releases(&button, &QAbstractButton::released);
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, QPoint(15, 15));
    QVERIFY(button.isDown());
    event(&window, &button);
    QVERIFY(!button.isDown());
    QCOMPARE(releases.count(), 1);
    // The pointer's button is still down: neither a movement nor the late release is one of this button's.
    QTest::mouseMove(window.windowHandle(), QPoint(16, 16));
    QVERIFY(!button.isDown());
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, QPoint(15, 15));
    QCOMPARE(clicks.count(), 0);
    QVERIFY(!button.isChecked());
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, QPoint(15, 15));
    QCOMPARE(clicks.count(), 1);
}

void TestOnOffButton::pressThatTakesTheFocusKeepsItsPlace()
{
    CEventCounter window;
    window.setFocusPolicy(Qt::ClickFocus);
    window.resize(100, 100);
    COnOffButton button(&window);
    button.setGeometry(10, 10, 20, 20);
    QVERIFY(showActive(window));
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, QPoint(15, 15));
    QVERIFY(button.hasFocus());
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, QPoint(60, 70));
    QVERIFY(!button.hasFocus());
    QCOMPARE(window.m_presses, 1);
    QCOMPARE(window.m_pressed, QPointF(60, 70));
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, QPoint(60, 70));
}

void TestOnOffButton::destroyedButtonIsForgottenByTheMemory()
{
    MemoryRig memory;
    auto button = std::make_unique<COnOffButton>();
    memory.bind(*button);
    button.reset();
    memory.change(64);
    QCOMPARE(memory.value(), 64);
}

void TestOnOffButton::refusedEditFallsBackToTheMemory()
{
    MemoryRig memory;
    COnOffButton button(nullptr);
    button.setCheckable(true);
    memory.bind(button);
    memory.loseDevice();
    QTest::mouseClick(&button, Qt::LeftButton);
    QVERIFY(!button.isChecked());
    QCOMPARE(memory.value(), 0);
}

void TestOnOffButton::valueOfNeitherStateKeepsTheState_data()
{
    QTest::addColumn<bool>("checked");
    QTest::newRow("checked") << true;
    QTest::newRow("unchecked") << false;
}

void TestOnOffButton::valueOfNeitherStateKeepsTheState()
{
    QFETCH(bool, checked);
    MemoryRig memory;
    COnOffButton button(nullptr);
    button.setCheckable(true);
    memory.bind(button);
    button.setChecked(checked);
    memory.change(64);
    QCOMPARE(button.isChecked(), checked);
    QCOMPARE(memory.value(), 64);
}

void TestOnOffButton::updateMemAPIFollowsTheMemory_data() // on 20, off 10
{
    QTest::addColumn<bool>("checkable");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("result");
    QTest::newRow("on value checks") << true << false << 20 << true;
    QTest::newRow("on value keeps checked") << true << true << 20 << true;
    QTest::newRow("off value unchecks") << true << true << 10 << false;
    QTest::newRow("off value keeps unchecked") << true << false << 10 << false;
    QTest::newRow("not checkable") << false << false << 20 << false;
}

void TestOnOffButton::updateMemAPIFollowsTheMemory()
{
    QFETCH(bool, checkable);
    QFETCH(bool, checked);
    QFETCH(int, value);
    MemoryRig memory;
    COnOffButton button(nullptr);
    button.setCheckable(checkable);
    button.setOnValue(20);
    button.setOffValue(10);
    button.setChecked(checked);
    memory.bind(button);
    memory.change(value);
    QTEST(button.isChecked(), "result");
    QCOMPARE(memory.value(), value);
}

void TestOnOffButton::newValueOfThePresentStateIsWritten_data() // the memory holds 55
{
    QTest::addColumn<bool>("checked");
    QTest::addColumn<bool>("setsOnValue");
    QTest::addColumn<int>("stored");
    QTest::newRow("on value while checked") << true << true << 99;
    QTest::newRow("on value while unchecked") << false << true << 55;
    QTest::newRow("off value while unchecked") << false << false << 99;
    QTest::newRow("off value while checked") << true << false << 55;
}

void TestOnOffButton::newValueOfThePresentStateIsWritten()
{
    QFETCH(bool, checked);
    QFETCH(bool, setsOnValue);
    MemoryRig memory;
    COnOffButton button(nullptr);
    button.setCheckable(true);
    button.setChecked(checked);
    memory.setValue(55);
    memory.bind(button);
    if (setsOnValue)
        button.setOnValue(99);
    else
        button.setOffValue(99);
    QCOMPARE(setsOnValue ? button.onValue() : button.offValue(), 99);
    QTEST(memory.value(), "stored");
    QCOMPARE(button.isChecked(), checked);
}

void TestOnOffButton::refusedValueOfThePresentStateFallsBack()
{
    MemoryRig memory;
    COnOffButton button(nullptr);
    button.setCheckable(true);
    button.setChecked(true);
    memory.bind(button);
    memory.loseDevice();
    button.setOnValue(99);
    QCOMPARE(memory.value(), 0);
    QVERIFY(!button.isChecked());
}

void TestOnOffButton::pressFollowsTheTriggers_data()
{
    using Trigger = COnOffButton::TOnOffStateTrigger;
    constexpr Trigger push = COnOffButton::buttonPush;
    constexpr Trigger release = COnOffButton::buttonRelease;
    QTest::addColumn<Trigger>("on");
    QTest::addColumn<Trigger>("off");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<bool>("afterPress");
    QTest::addColumn<int>("clicks");
    QTest::newRow("release both, unchecked") << release << release << false << false << 0;
    QTest::newRow("release both, checked") << release << release << true << true << 0;
    QTest::newRow("push for on, unchecked") << push << release << false << true << 1;
    QTest::newRow("push for on, checked") << push << release << true << true << 0;
    QTest::newRow("push for off, unchecked") << release << push << false << false << 0;
    QTest::newRow("push for off, checked") << release << push << true << false << 1;
    QTest::newRow("push both, unchecked: clicks twice and ends unchecked") << push << push << false << false << 2;
    QTest::newRow("push both, checked") << push << push << true << false << 1;
}

void TestOnOffButton::pressFollowsTheTriggers()
{
    QFETCH(COnOffButton::TOnOffStateTrigger, on);
    QFETCH(COnOffButton::TOnOffStateTrigger, off);
    QFETCH(bool, checked);
    QFETCH(int, clicks);
    COnOffButton button(nullptr);
    button.setCheckable(true);
    button.setChecked(checked);
    button.setOnStateTrigger(on);
    button.setOffStateTrigger(off);
    QSignalSpy clicked(&button, SIGNAL(clicked(bool)));
    QTest::mousePress(&button, Qt::LeftButton);
    QTEST(button.isChecked(), "afterPress");
    QCOMPARE(clicked.size(), clicks);
    QVERIFY(button.isDown());
}

void TestOnOffButton::otherMouseButtonsTriggerNothing()
{
    COnOffButton button(nullptr);
    button.setCheckable(true);
    button.setOnStateTrigger(COnOffButton::buttonPush);
    QTest::mousePress(&button, Qt::RightButton);
    QVERIFY(!button.isChecked());
    QVERIFY(!button.isDown());
}

void TestOnOffButton::uncheckableButtonTriggersNothing()
{
    COnOffButton button(nullptr);
    button.setOnStateTrigger(COnOffButton::buttonPush);
    QSignalSpy clicked(&button, SIGNAL(clicked(bool)));
    QTest::mousePress(&button, Qt::LeftButton);
    QCOMPARE(clicked.size(), 0);
    QTest::mouseRelease(&button, Qt::LeftButton);
    QCOMPARE(clicked.size(), 1);
}

void TestOnOffButton::arrowKeysAreSwallowed_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("left") << Qt::Key_Left;
    QTest::newRow("up") << Qt::Key_Up;
    QTest::newRow("right") << Qt::Key_Right;
    QTest::newRow("down") << Qt::Key_Down;
}

void TestOnOffButton::arrowKeysAreSwallowed()
{
    QFETCH(Qt::Key, key);
    CEventCounter parent;
    COnOffButton first(&parent);
    COnOffButton second(&parent);
    for (COnOffButton* button : {&first, &second}) {
        button->setCheckable(true);
        button->setAutoExclusive(true);
        button->setFocusPolicy(Qt::StrongFocus);
    }
    second.move(0, 50);
    QVERIFY(showActive(parent));
    first.setFocus();
    QTest::keyClick(&first, key);
    QVERIFY(first.hasFocus());
    second.setFocus();
    QTest::keyClick(&second, key);
    QVERIFY(second.hasFocus());
    QCOMPARE(parent.m_keys, 0);
}

void TestOnOffButton::spaceClicksAndOtherKeysTravelOn()
{
    CEventCounter parent;
    COnOffButton button(&parent);
    button.setCheckable(true);
    QTest::keyClick(&button, Qt::Key_Space);
    QVERIFY(button.isChecked());
    QCOMPARE(parent.m_keys, 0);
    QTest::keyClick(&button, Qt::Key_A);
    QCOMPARE(parent.m_keys, 2);
}

void TestOnOffButton::disabledButtonLetsThePressThrough()
{
    CEventCounter parent;
    COnOffButton button(&parent);
    button.setEnabled(false);
    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    QTest::mousePress(parent.windowHandle(), Qt::LeftButton, {}, QPoint(2, 2));
    QCOMPARE(parent.m_presses, 1);
}

void TestOnOffButton::consumedEventsGiveFalse()
{
    COnOffButton button(nullptr);
    QObject& object = button;
    QEvent polish(QEvent::Polish);
    QVERIFY(!object.event(&polish));
    QEvent change(QEvent::EnabledChange);
    QVERIFY(object.event(&change));
}

KTZ_TEST(QApplication, TestOnOffButton)
#include "TestOnOffButton.moc"
