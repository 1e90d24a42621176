#include "tests/support/CTestCase.h"
#include "tests/widgets/ConnectedMemory.h"
#include "tests/widgets/WidgetEvents.h"
#include "widgets/CLineEdit.h"
#include "widgets/CTextSlider.h"

#include <QMetaProperty>
#include <QValidator>

#include <memory>

namespace
{
constexpr int k_ccNumOfKnob2 = 1102;
}

class TestTextSlider : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();

    void defaults();
    void propertiesInTheirOrder();
    void consumedEventsAreNotPassedOn();

    void dragFollowsRangeAndShift_data();
    void dragFollowsRangeAndShift();
    void subStepTravelIsCarriedOverBetweenMoves();
    void invertedControlsDoNotTurnTheDragAround();
    void everyMoveTakesThePointerBackToTheCentre();
    void firstMoveMeasuresFromTheCentreNotFromThePress();
    void moveAtTheCentreDoesNothing();
    void dragAtTheLimitTriggersNothing();
    void moveWithoutADragDoesNothing_data();
    void moveWithoutADragDoesNothing();
    void whereThePointerCannotBePlacedDragsMeasureFromItsLastPosition();

    void pressHidesThePointerAndLeavesItThere();
    void pressOutsideTheSliderDoesNothing();
    void pressOfAnotherButtonOnlyPutsTheSliderDown();
    void releaseShowsThePointerWhereThePressWas();
    void releaseOfAnotherButtonEndsTheDragWithoutMovingThePointer();
    void everyReleaseEndsAnOverrideCursor();
    void focusLossEndsTheDragWithoutMovingThePointer();
    void hidingDuringADragShowsThePointer();
    void destructionDuringADragShowsThePointer();
    void pressAfterALostReleaseHidesThePointerOnce();

    void wheelStepsOnce_data();
    void wheelStepsOnce();
    void wheelOutsideTheSliderOnlyTakesTheFocus();

    void valueIsShownByTheFormula_data();
    void valueIsShownByTheFormula();
    void textHasItsColourAndPlace();
    void nothingIsDrawnBehindTheEditField();

    void typedNumberIsSetByTheFormula_data();
    void typedNumberIsSetByTheFormula();
    void textThatIsNoNumberLeavesTheValueAndClosesTheField();
    void hugeNumberAndZeroMultiplierAreHarmless();
    void escapeAbortsTyping();
    void acceptAfterAbortChangesNothing();
    void fieldTakesOverTheSlidersLook();
    void fieldAcceptsWholeNumbersUnlessTheFormulaHasFractions_data();
    void fieldAcceptsWholeNumbersUnlessTheFormulaHasFractions();
    void doubleClickIsIgnored_data();
    void doubleClickIsIgnored();

    void editReachesTheDevice();
    void refusedEditFallsBack();
    void changeInTheMemoryIsShown();
    void destroyedSliderIsForgottenByTheMemory();

  private:
    void type(const QString& text);
    [[nodiscard]] QPoint topLeft() const;

    std::unique_ptr<QWidget> m_window;
    CTextSlider* m_slider = nullptr;
};

void TestTextSlider::init()
{
    CTestCase::init();
    m_window = std::make_unique<QWidget>();
    m_window->setGeometry(20, 20, 300, 200);
    m_slider = new CTextSlider(m_window.get());
    m_slider->setGeometry(50, 50, 73, 15);
    m_slider->setRange(0, 127);
    m_slider->setValue(64);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_slider->setFocus();
}

void TestTextSlider::cleanup()
{
    m_window.reset();
    QVERIFY(QApplication::overrideCursor() == nullptr);
}

QPoint TestTextSlider::topLeft() const
{
    return m_slider->mapToGlobal(QPoint(0, 0));
}

void TestTextSlider::defaults()
{
    const CTextSlider slider;
    QCOMPARE(slider.alignment(), Qt::AlignLeft | Qt::AlignVCenter);
    QCOMPARE(slider.format(), QStringLiteral("%.0f"));
    QCOMPARE(slider.offset(), 0.0);
    QCOMPARE(slider.multiplier(), 1.0);
    QCOMPARE(slider.directEdit(), false);
    QCOMPARE(slider.editMaxLength(), QLineEdit().maxLength());
    QCOMPARE(slider.editInputMask(), QString());
    QCOMPARE(slider.editValidatorRegExp(), QString());
    QCOMPARE(slider.controllerID(), 0);
    QCOMPARE(slider.textColor(), QColor(0, 0, 0, 255));
    QCOMPARE(slider.focusPolicy(), Qt::ClickFocus);
    QCOMPARE(slider.sizeHint(), QSize(64, 16));
    QCOMPARE(slider.minimumSizeHint(), QSize(0, 0));
    QVERIFY(slider.lineEdit()->isHidden());
}

void TestTextSlider::propertiesInTheirOrder()
{
    const QMetaObject& meta = CTextSlider::staticMetaObject;
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        names.append(QString::fromLatin1(meta.property(i).name()));
    QCOMPARE(names, QStringList({"alignment", "format", "offset", "multiplier", "directEdit", "editMaxLength",
                                 "editInputMask", "editValidatorRegExp", "controllerID"}));
    m_slider->setProperty("editInputMask", "999");
    m_slider->setProperty("editValidatorRegExp", "[0-9]+");
    m_slider->setProperty("controllerID", 1102);
    QCOMPARE(m_slider->property("editInputMask").toString(), QStringLiteral("999"));
    QCOMPARE(m_slider->property("editValidatorRegExp").toString(), QStringLiteral("[0-9]+"));
    QCOMPARE(m_slider->controllerID(), 1102);
}

void TestTextSlider::consumedEventsAreNotPassedOn()
{
    QEvent polish(QEvent::Polish);
    QVERIFY(!QApplication::sendEvent(m_slider, &polish));
}

void TestTextSlider::dragFollowsRangeAndShift_data()
{
    QTest::addColumn<int>("maximum");
    QTest::addColumn<bool>("shift");
    QTest::addColumn<int>("pixels"); // moved upwards, one by one
    QTest::addColumn<int>("steps");
    QTest::newRow("0 to 127: one step per pixel") << 127 << false << 5 << 5;
    QTest::newRow("0 to 127, Shift: no step within 4 pixels") << 127 << true << 3 << 0;
    QTest::newRow("0 to 127, Shift: one step per 4 pixels") << 127 << true << 9 << 2;
    QTest::newRow("0 to 15: no step within 4 pixels") << 15 << false << 3 << 0;
    QTest::newRow("0 to 15: one step per 4 pixels") << 15 << false << 8 << 2;
    QTest::newRow("0 to 15, Shift: no step within 16 pixels") << 15 << true << 15 << 0;
    QTest::newRow("0 to 15, Shift: one step per 16 pixels") << 15 << true << 32 << 2;
    QTest::newRow("0 to 3: one step per 8 pixels") << 3 << false << 8 << 1;
    QTest::newRow("0 to 32: one step per 2 pixels") << 32 << false << 6 << 3;
    QTest::newRow("0 to 1000: ten steps per pixel") << 1000 << false << 2 << 20;
    QTest::newRow("0 to 1000, Shift: one step per 4 pixels") << 1000 << true << 8 << 2;
}

void TestTextSlider::dragFollowsRangeAndShift()
{
    QFETCH(int, maximum);
    QFETCH(bool, shift);
    QFETCH(int, pixels);
    QFETCH(int, steps);
    const Qt::KeyboardModifiers modifiers = shift ? Qt::ShiftModifier : Qt::NoModifier;
    const QPoint centre = centreOf(*m_slider);
    m_slider->setRange(0, maximum);
    const int start = maximum / 2;

    m_slider->setValue(start);
    sendPress(*m_slider, centre);
    for (int i = 0; i < pixels; ++i)
        sendMove(*m_slider, centre - QPoint(0, 1), modifiers);
    QCOMPARE(m_slider->value(), std::min(start + steps, maximum));
    sendRelease(*m_slider, centre);

    m_slider->setValue(start);
    sendPress(*m_slider, centre);
    for (int i = 0; i < pixels; ++i)
        sendMove(*m_slider, centre + QPoint(0, 1), modifiers);
    QCOMPARE(m_slider->value(), std::max(start - steps, 0));
    sendRelease(*m_slider, centre);
}

void TestTextSlider::subStepTravelIsCarriedOverBetweenMoves()
{
    m_slider->setRange(0, 15);
    m_slider->setValue(8);
    const QPoint centre = centreOf(*m_slider);
    sendPress(*m_slider, centre);
    sendMove(*m_slider, centre - QPoint(0, 3));
    QCOMPARE(m_slider->value(), 8);
    sendMove(*m_slider, centre - QPoint(0, 3));
    QCOMPARE(m_slider->value(), 9);
    sendMove(*m_slider, centre - QPoint(0, 2));
    QCOMPARE(m_slider->value(), 10);
    sendRelease(*m_slider, centre);

    // A new drag starts with nothing.
    sendPress(*m_slider, centre);
    sendMove(*m_slider, centre - QPoint(0, 3));
    sendRelease(*m_slider, centre);
    sendPress(*m_slider, centre);
    sendMove(*m_slider, centre - QPoint(0, 1));
    QCOMPARE(m_slider->value(), 10);
    sendRelease(*m_slider, centre);
}

void TestTextSlider::invertedControlsDoNotTurnTheDragAround()
{
    m_slider->setInvertedControls(true);
    const QPoint centre = centreOf(*m_slider);
    sendPress(*m_slider, centre);
    sendMove(*m_slider, centre - QPoint(0, 3));
    QCOMPARE(m_slider->value(), 67);
    sendRelease(*m_slider, centre);
}

void TestTextSlider::everyMoveTakesThePointerBackToTheCentre()
{
    const QPoint centre = centreOf(*m_slider);
    sendPress(*m_slider, centre);
    for (const QPoint& offset : {QPoint(0, -5), QPoint(0, 9), QPoint(30, 0)}) {
        QCursor::setPos(centre + offset);
        sendMove(*m_slider, centre + offset);
        QTRY_COMPARE(QCursor::pos(), centre);
    }
    QCOMPARE(m_slider->value(), 64 + 5 - 9);
    sendRelease(*m_slider, centre);
}

void TestTextSlider::firstMoveMeasuresFromTheCentreNotFromThePress()
{
    const QPoint centre = centreOf(*m_slider);
    sendPress(*m_slider, centre + QPoint(0, 4));
    sendMove(*m_slider, centre + QPoint(0, 5));
    QCOMPARE(m_slider->value(), 59);
    sendRelease(*m_slider, centre);
}

void TestTextSlider::moveAtTheCentreDoesNothing()
{
    const QPoint centre = centreOf(*m_slider);
    const QPoint elsewhere = centre + QPoint(100, 50);
    sendPress(*m_slider, centre);
    QCursor::setPos(elsewhere);
    sendMove(*m_slider, centre);
    QCOMPARE(m_slider->value(), 64);
    QCOMPARE(QCursor::pos(), elsewhere);
    sendRelease(*m_slider, centre);
}

void TestTextSlider::dragAtTheLimitTriggersNothing()
{
    QSignalSpy actions(m_slider, &QAbstractSlider::actionTriggered);
    const QPoint centre = centreOf(*m_slider);
    m_slider->setValue(126);
    sendPress(*m_slider, centre);
    sendMove(*m_slider, centre - QPoint(0, 3));
    QCOMPARE(m_slider->value(), 127);
    QCOMPARE(actions.count(), 1);
    QCOMPARE(actions.takeFirst().at(0).toInt(), static_cast<int>(QAbstractSlider::SliderMove));
    sendMove(*m_slider, centre - QPoint(0, 3));
    QCOMPARE(actions.count(), 0);
    sendRelease(*m_slider, centre);
}

void TestTextSlider::moveWithoutADragDoesNothing_data()
{
    QTest::addColumn<bool>("press");
    QTest::addColumn<Qt::MouseButtons>("buttons");
    QTest::newRow("no press") << false << Qt::MouseButtons(Qt::LeftButton);
    QTest::newRow("no button held") << true << Qt::MouseButtons(Qt::NoButton);
    QTest::newRow("another button held") << true << Qt::MouseButtons(Qt::RightButton);
}

void TestTextSlider::moveWithoutADragDoesNothing()
{
    QFETCH(bool, press);
    QFETCH(Qt::MouseButtons, buttons);
    const QPoint centre = centreOf(*m_slider);
    if (press)
        sendPress(*m_slider, centre);
    sendMouse(*m_slider, QEvent::MouseMove, centre - QPoint(0, 9), Qt::NoButton, buttons);
    QCOMPARE(m_slider->value(), 64);
    if (press)
        sendRelease(*m_slider, centre);
}

void TestTextSlider::whereThePointerCannotBePlacedDragsMeasureFromItsLastPosition()
{
    m_slider->setPointerWarps(false);
    const QPoint press = centreOf(*m_slider) + QPoint(0, 4);
    const QPoint elsewhere = press + QPoint(100, 100);
    QCursor::setPos(elsewhere);
    sendPress(*m_slider, press);
    sendMove(*m_slider, press);
    QCOMPARE(m_slider->value(), 64);
    sendMove(*m_slider, press + QPoint(0, 5));
    QCOMPARE(m_slider->value(), 59);
    sendMove(*m_slider, press + QPoint(3, 6));
    QCOMPARE(m_slider->value(), 58);
    sendMove(*m_slider, press - QPoint(0, 4));
    QCOMPARE(m_slider->value(), 68);
    sendRelease(*m_slider, press - QPoint(0, 4));
    QCOMPARE(QCursor::pos(), elsewhere);
}

void TestTextSlider::pressHidesThePointerAndLeavesItThere()
{
    const QPoint press = topLeft() + QPoint(3, 2);
    QCursor::setPos(press);
    QSignalSpy pressed(m_slider, &QAbstractSlider::sliderPressed);
    m_slider->setAttribute(Qt::WA_UnderMouse, false);
    sendPress(*m_slider, press);
    QVERIFY(QApplication::overrideCursor() != nullptr);
    QCOMPARE(QApplication::overrideCursor()->shape(), Qt::BlankCursor);
    QVERIFY(m_slider->testAttribute(Qt::WA_UnderMouse));
    QVERIFY(m_slider->isSliderDown());
    QCOMPARE(pressed.count(), 1);
    QCOMPARE(QCursor::pos(), press);
    sendRelease(*m_slider, press);
}

void TestTextSlider::pressOutsideTheSliderDoesNothing()
{
    sendPress(*m_slider, topLeft() - QPoint(1, 0));
    sendPress(*m_slider, topLeft() + QPoint(m_slider->width(), 0));
    sendPress(*m_slider, topLeft() + QPoint(0, m_slider->height()));
    QVERIFY(!m_slider->isSliderDown());
    QVERIFY(QApplication::overrideCursor() == nullptr);
}

void TestTextSlider::pressOfAnotherButtonOnlyPutsTheSliderDown()
{
    sendPress(*m_slider, centreOf(*m_slider), Qt::RightButton);
    QVERIFY(m_slider->isSliderDown());
    QVERIFY(QApplication::overrideCursor() == nullptr);
    sendMove(*m_slider, centreOf(*m_slider) - QPoint(0, 5));
    QCOMPARE(m_slider->value(), 64);
    sendRelease(*m_slider, centreOf(*m_slider), Qt::RightButton);
    QVERIFY(!m_slider->isSliderDown());
}

void TestTextSlider::releaseShowsThePointerWhereThePressWas()
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
    sendMove(*m_slider, press + QPoint(0, 9));
    QCOMPARE(m_slider->value(), value);
}

void TestTextSlider::releaseOfAnotherButtonEndsTheDragWithoutMovingThePointer()
{
    const QPoint press = topLeft() + QPoint(3, 2);
    sendPress(*m_slider, press);
    const QPoint elsewhere = press + QPoint(100, 100);
    QCursor::setPos(elsewhere);
    sendRelease(*m_slider, elsewhere, Qt::RightButton);
    QCOMPARE(QCursor::pos(), elsewhere);
    QVERIFY(!m_slider->isSliderDown());
    QVERIFY(QApplication::overrideCursor() == nullptr);
    sendMove(*m_slider, press + QPoint(0, 9));
    QCOMPARE(m_slider->value(), 64);
}

void TestTextSlider::everyReleaseEndsAnOverrideCursor()
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    sendRelease(*m_slider, centreOf(*m_slider));
    QVERIFY(QApplication::overrideCursor() == nullptr);
    sendRelease(*m_slider, centreOf(*m_slider));
    QVERIFY(QApplication::overrideCursor() == nullptr);
}

void TestTextSlider::focusLossEndsTheDragWithoutMovingThePointer()
{
    const QPoint press = topLeft() + QPoint(3, 2);
    QCursor::setPos(press);
    sendPress(*m_slider, press);
    sendMove(*m_slider, press + QPoint(0, 1));
    QTRY_COMPARE(QCursor::pos(), centreOf(*m_slider));
    const int value = m_slider->value();
    QVERIFY(m_slider->hasFocus());
    m_slider->clearFocus();
    QVERIFY(!m_slider->isSliderDown());
    QVERIFY(QApplication::overrideCursor() == nullptr);
    sendMove(*m_slider, press + QPoint(0, 9));
    QCOMPARE(m_slider->value(), value);
    // The late release is no longer one of a drag.
    sendRelease(*m_slider, centreOf(*m_slider));
    QCOMPARE(QCursor::pos(), centreOf(*m_slider));
}

void TestTextSlider::hidingDuringADragShowsThePointer()
{
    m_slider->clearFocus();
    sendPress(*m_slider, centreOf(*m_slider));
    QVERIFY(QApplication::overrideCursor() != nullptr);
    m_window->hide();
    QVERIFY(QApplication::overrideCursor() == nullptr);
    QVERIFY(!m_slider->isSliderDown());
}

void TestTextSlider::destructionDuringADragShowsThePointer()
{
    sendPress(*m_slider, centreOf(*m_slider));
    QVERIFY(QApplication::overrideCursor() != nullptr);
    delete m_slider;
    QVERIFY(QApplication::overrideCursor() == nullptr);
}

void TestTextSlider::pressAfterALostReleaseHidesThePointerOnce()
{
    sendPress(*m_slider, centreOf(*m_slider));
    sendPress(*m_slider, centreOf(*m_slider));
    sendRelease(*m_slider, centreOf(*m_slider));
    QVERIFY(QApplication::overrideCursor() == nullptr);
}

void TestTextSlider::wheelStepsOnce_data()
{
    QTest::addColumn<QPoint>("delta");
    QTest::addColumn<bool>("inverted");
    QTest::addColumn<int>("value");
    QTest::newRow("up") << QPoint(0, 120) << false << 65;
    QTest::newRow("down") << QPoint(0, -120) << false << 63;
    QTest::newRow("up, inverted") << QPoint(0, 120) << true << 63;
    QTest::newRow("down, inverted") << QPoint(0, -120) << true << 65;
    QTest::newRow("many notches are one step") << QPoint(0, 1200) << false << 65;
    QTest::newRow("a part of a notch is one step") << QPoint(0, -1) << false << 63;
    QTest::newRow("nothing") << QPoint(0, 0) << false << 64;
    QTest::newRow("sideways") << QPoint(120, 0) << false << 64;
}

void TestTextSlider::wheelStepsOnce()
{
    QFETCH(QPoint, delta);
    QFETCH(bool, inverted);
    m_slider->setInvertedControls(inverted);
    m_slider->clearFocus();
    sendWheel(*m_slider, topLeft(), delta);
    QTEST(m_slider->value(), "value");
    QVERIFY(m_slider->hasFocus());
}

void TestTextSlider::wheelOutsideTheSliderOnlyTakesTheFocus()
{
    m_slider->clearFocus();
    sendWheel(*m_slider, topLeft() - QPoint(1, 0), QPoint(0, 120));
    sendWheel(*m_slider, topLeft() + QPoint(0, m_slider->height()), QPoint(0, 120));
    QCOMPARE(m_slider->value(), 64);
    QVERIFY(m_slider->hasFocus());
}

void TestTextSlider::valueIsShownByTheFormula_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<double>("multiplier");
    QTest::addColumn<double>("offset");
    QTest::addColumn<QString>("text");
    QTest::newRow("64 shows 64") << "%.0f" << 1.0 << 0.0 << "64";
    QTest::newRow("a channel counts from 1") << "%.0f" << 1.0 << 1.0 << "65";
    QTest::newRow("multiplier before offset") << "%.2f" << 0.5 << 0.25 << "32.25";
    QTest::newRow("text around") << "%.0f dB" << -1.0 << 0.0 << "-64 dB";
}

void TestTextSlider::valueIsShownByTheFormula()
{
    QFETCH(QString, format);
    QFETCH(double, multiplier);
    QFETCH(double, offset);
    m_slider->setFormat(format);
    m_slider->setMultiplier(multiplier);
    m_slider->setOffset(offset);
    m_slider->setDirectEdit(true);
    static_cast<void>(m_slider->grab());
    // The field for typing begins with the text shown.
    sendMouse(*m_slider, QEvent::MouseButtonDblClick, centreOf(*m_slider), Qt::LeftButton, Qt::LeftButton);
    QTEST(m_slider->lineEdit()->text(), "text");
}

void TestTextSlider::textHasItsColourAndPlace()
{
    const auto colored = [this](const QRect& part) {
        const QImage image = m_slider->grab().toImage();
        const qreal ratio = image.devicePixelRatio();
        for (int y = 0; y < part.height() * ratio; ++y) {
            for (int x = 0; x < part.width() * ratio; ++x) {
                if (image.pixelColor(static_cast<int>(part.x() * ratio) + x, y) == QColor(Qt::red))
                    return true;
            }
        }
        return false;
    };
    const QRect left(0, 0, 36, 15);
    const QRect right(36, 0, 36, 15);
    m_slider->setValue(8);
    QVERIFY(!colored(m_slider->rect()));
    m_slider->setTextColor(Qt::red);
    QVERIFY(colored(left));
    QVERIFY(!colored(right));
    m_slider->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QVERIFY(!colored(left));
    QVERIFY(colored(right));
    QCOMPARE(m_slider->lineEdit()->alignment(), Qt::AlignRight | Qt::AlignVCenter);
}

void TestTextSlider::nothingIsDrawnBehindTheEditField()
{
    const auto ownFace = [this] {
        QImage image(m_slider->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        m_slider->render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
        return image;
    };
    QImage empty = ownFace();
    empty.fill(Qt::transparent);
    QVERIFY(ownFace() != empty);
    m_slider->setDirectEdit(true);
    sendMouse(*m_slider, QEvent::MouseButtonDblClick, centreOf(*m_slider), Qt::LeftButton, Qt::LeftButton);
    QVERIFY(m_slider->lineEdit()->isVisible());
    QCOMPARE(ownFace(), empty);
}

void TestTextSlider::type(const QString& text)
{
    m_slider->setDirectEdit(true);
    sendMouse(*m_slider, QEvent::MouseButtonDblClick, centreOf(*m_slider), Qt::LeftButton, Qt::LeftButton);
    QVERIFY(m_slider->lineEdit()->hasFocus());
    // Replaces the old text, which is selected.
    QTest::keyClicks(m_slider->lineEdit(), text);
}

void TestTextSlider::typedNumberIsSetByTheFormula_data()
{
    QTest::addColumn<double>("multiplier");
    QTest::addColumn<double>("offset");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("value");
    QTest::newRow("plain") << 1.0 << 0.0 << "12" << 12;
    QTest::newRow("offset 1: 64 gives 63") << 1.0 << 1.0 << "64" << 63;
    QTest::newRow("cut toward zero") << 0.5 << 0.0 << "12.3" << 24;
    QTest::newRow("the offset is taken off after the division") << 2.0 << 3.0 << "20" << 7;
    QTest::newRow("above the range") << 1.0 << 0.0 << "200" << 127;
    QTest::newRow("below the range") << 1.0 << 0.0 << "-5" << 0;
    QTest::newRow("the value it has") << 1.0 << 0.0 << "64" << 64;
}

void TestTextSlider::typedNumberIsSetByTheFormula()
{
    QFETCH(double, multiplier);
    QFETCH(double, offset);
    QFETCH(QString, typed);
    m_slider->setMultiplier(multiplier);
    m_slider->setOffset(offset);
    QSignalSpy actions(m_slider, &QAbstractSlider::actionTriggered);
    type(typed);
    QTest::keyClick(m_slider->lineEdit(), Qt::Key_Return);
    QTEST(m_slider->value(), "value");
    QCOMPARE(actions.count(), 1);
    QCOMPARE(actions.at(0).at(0).toInt(), static_cast<int>(QAbstractSlider::SliderNoAction));
    QVERIFY(!m_slider->lineEdit()->isVisible());
    QVERIFY(m_slider->hasFocus());
}

void TestTextSlider::textThatIsNoNumberLeavesTheValueAndClosesTheField()
{
    QSignalSpy actions(m_slider, &QAbstractSlider::actionTriggered);
    type(QStringLiteral("12"));
    m_slider->lineEdit()->setText(QStringLiteral("12 dB"));
    m_slider->acceptEdit();
    QCOMPARE(m_slider->value(), 64);
    QCOMPARE(actions.count(), 0);
    QVERIFY(!m_slider->lineEdit()->isVisible());
    QVERIFY(m_slider->hasFocus());
}

void TestTextSlider::hugeNumberAndZeroMultiplierAreHarmless()
{
    m_slider->lineEdit()->setText(QStringLiteral("1e300"));
    m_slider->acceptEdit();
    QCOMPARE(m_slider->value(), 127);
    m_slider->setMultiplier(0.0);
    m_slider->lineEdit()->setText(QStringLiteral("-1"));
    m_slider->acceptEdit();
    QCOMPARE(m_slider->value(), 0);
    m_slider->setValue(64);
    m_slider->lineEdit()->setText(QStringLiteral("0"));
    m_slider->acceptEdit();
    QCOMPARE(m_slider->value(), 64);
}

void TestTextSlider::escapeAbortsTyping()
{
    QSignalSpy actions(m_slider, &QAbstractSlider::actionTriggered);
    type(QStringLiteral("12"));
    QTest::keyClick(m_slider->lineEdit(), Qt::Key_Escape);
    QCOMPARE(m_slider->value(), 64);
    QCOMPARE(actions.count(), 0);
    QVERIFY(!m_slider->lineEdit()->isVisible());
    QVERIFY(m_slider->hasFocus());
}

void TestTextSlider::acceptAfterAbortChangesNothing()
{
    type(QStringLiteral("12"));
    m_slider->abortEdit();
    m_slider->lineEdit()->setText(QStringLiteral("12"));
    m_slider->acceptEdit();
    QCOMPARE(m_slider->value(), 64);
    // The next edit is a new one.
    type(QStringLiteral("13"));
    QTest::keyClick(m_slider->lineEdit(), Qt::Key_Return);
    QCOMPARE(m_slider->value(), 13);
}

void TestTextSlider::fieldTakesOverTheSlidersLook()
{
    m_slider->setAlignment(Qt::AlignCenter);
    m_slider->setEditMaxLength(2);
    static_cast<void>(m_slider->grab());
    type(QString());
    const CLineEdit* field = m_slider->lineEdit();
    QCOMPARE(field->geometry(), m_slider->rect());
    QCOMPARE(field->alignment(), Qt::AlignCenter);
    QCOMPARE(field->maxLength(), 2);
    QCOMPARE(field->selectedText(), QStringLiteral("64"));
    QTest::keyClicks(m_slider->lineEdit(), QStringLiteral("123"));
    QCOMPARE(field->text(), QStringLiteral("12"));
}

void TestTextSlider::fieldAcceptsWholeNumbersUnlessTheFormulaHasFractions_data()
{
    QTest::addColumn<double>("multiplier");
    QTest::addColumn<double>("offset");
    QTest::addColumn<bool>("whole");
    QTest::newRow("both whole") << 2.0 << -1.0 << true;
    QTest::newRow("fraction in the multiplier") << 0.5 << 1.0 << false;
    QTest::newRow("fraction in the offset") << 1.0 << 0.25 << false;
}

void TestTextSlider::fieldAcceptsWholeNumbersUnlessTheFormulaHasFractions()
{
    QFETCH(double, multiplier);
    QFETCH(double, offset);
    QFETCH(bool, whole);
    m_slider->setMultiplier(multiplier);
    m_slider->setOffset(offset);
    type(QString());
    const QValidator* validator = m_slider->lineEdit()->validator();
    QCOMPARE(qobject_cast<const QIntValidator*>(validator) != nullptr, whole);
    QCOMPARE(qobject_cast<const QDoubleValidator*>(validator) != nullptr, !whole);
}

void TestTextSlider::doubleClickIsIgnored_data()
{
    QTest::addColumn<bool>("directEdit");
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<QPoint>("offset"); // from the top left corner
    QTest::newRow("without direct editing") << false << Qt::LeftButton << QPoint(5, 5);
    QTest::newRow("with another button") << true << Qt::RightButton << QPoint(5, 5);
    QTest::newRow("outside the slider") << true << Qt::LeftButton << QPoint(5, -1);
}

void TestTextSlider::doubleClickIsIgnored()
{
    QFETCH(bool, directEdit);
    QFETCH(Qt::MouseButton, button);
    QFETCH(QPoint, offset);
    m_slider->setDirectEdit(directEdit);
    QCOMPARE(m_slider->directEdit(), directEdit);
    sendMouse(*m_slider, QEvent::MouseButtonDblClick, topLeft() + offset, button, button);
    QVERIFY(m_slider->lineEdit()->isHidden());
}

void TestTextSlider::editReachesTheDevice()
{
    ConnectedMemory connected;
    connected.bind(*m_slider, k_ccNumOfKnob2);
    m_slider->updateMemAPI();
    sendWheel(*m_slider, centreOf(*m_slider), QPoint(0, 120));
    QCOMPARE(connected.memory.getParam(k_ccNumOfKnob2), 11);
    QCOMPARE(connected.device.settings(2).cc, 11);
    QCOMPARE(connected.device.received().size(), 1);
    m_slider->unregisterObserverFromMemAPI();
    m_slider->initialize(nullptr);
}

void TestTextSlider::refusedEditFallsBack()
{
    ConnectedMemory connected;
    connected.bind(*m_slider, k_ccNumOfKnob2);
    m_slider->updateMemAPI();
    connected.device.refuseSend(1);
    sendWheel(*m_slider, centreOf(*m_slider), QPoint(0, 120));
    QCOMPARE(m_slider->value(), 10);
    QCOMPARE(connected.memory.getParam(k_ccNumOfKnob2), 10);
    m_slider->unregisterObserverFromMemAPI();
    m_slider->initialize(nullptr);
}

void TestTextSlider::changeInTheMemoryIsShown()
{
    ConnectedMemory connected;
    connected.bind(*m_slider, k_ccNumOfKnob2);
    connected.memory.setParam(k_ccNumOfKnob2, 99);
    connected.memory.updateKnob(2);
    QCOMPARE(m_slider->value(), 99);
    QCOMPARE(connected.device.received().size(), 0);
    m_slider->unregisterObserverFromMemAPI();
    m_slider->initialize(nullptr);
}

void TestTextSlider::destroyedSliderIsForgottenByTheMemory()
{
    ConnectedMemory connected;
    connected.bind(*m_slider, k_ccNumOfKnob2);
    delete m_slider;
    connected.memory.updateKnob(2);
}

QTEST_MAIN(TestTextSlider)
#include "TestTextSlider.moc"
