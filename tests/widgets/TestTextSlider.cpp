#include "tests/widgets/CTextSliderTest.h"
#include "tests/widgets/WidgetEvents.h"
#include "widgets/CLineEdit.h"

#include <QMetaProperty>

class TestTextSlider : public CTextSliderTest
{
    Q_OBJECT

  private slots:
    void defaults();
    void propertiesInTheirOrder();

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
    void focusLossEndsTheDragWithoutMovingThePointer();

    void wheelTakesTheFocus();
    void wheelOutsideTheSliderOnlyTakesTheFocus();

    void textHasItsColourAndPlace();
};

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

void TestTextSlider::wheelTakesTheFocus()
{
    m_slider->clearFocus();
    sendWheel(*m_slider, topLeft(), QPoint(0, 120));
    QCOMPARE(m_slider->value(), 65);
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

KTZ_TEST(QApplication, TestTextSlider)
#include "TestTextSlider.moc"
