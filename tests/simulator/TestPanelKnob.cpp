#include "simulator/panel/CPanelKnob.h"
#include "tests/support/CTestCase.h"

#include <QAccessible>
#include <QWheelEvent>

#include <memory>

/// One knob of the panel, by pointer, wheel and keys.
class TestPanelKnob : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();
    void dragTurnsAValueAPixel_data();
    void dragTurnsAValueAPixel();
    void clickTurnsNothing();
    void otherButtonTurnsNothing();
    void wheelTurns();
    void keysTurn_data();
    void keysTurn();
    void whatTheDeviceHoldsIsShownSilently();
    void ringFollowsTheLEDType();
    void focusIsMarked();
    void isADialForScreenReaders();

  private:
    [[nodiscard]] QPoint middle() const
    {
        return {m_knob->width() / 2, 43};
    }

    std::unique_ptr<CPanelKnob> m_knob;
    std::unique_ptr<QSignalSpy> m_turns;
};

void TestPanelKnob::init()
{
    CTestCase::init();
    m_knob = std::make_unique<CPanelKnob>(2);
    m_knob->setVisible(true);
    QVERIFY(QTest::qWaitForWindowExposed(m_knob.get()));
    m_knob->hold(64, {10, 0, 127, 0, 2});
    m_turns = std::make_unique<QSignalSpy>(m_knob.get(), &CPanelKnob::valueChanged);
}

void TestPanelKnob::cleanup()
{
    m_turns.reset();
    m_knob.reset();
}

void TestPanelKnob::dragTurnsAValueAPixel_data()
{
    QTest::addColumn<QPoint>("way");
    QTest::addColumn<int>("value");
    QTest::newRow("up") << QPoint(0, -10) << 74;
    QTest::newRow("down") << QPoint(0, 10) << 54;
    QTest::newRow("right") << QPoint(7, 0) << 71;
    QTest::newRow("left") << QPoint(-7, 0) << 57;
    QTest::newRow("up and right") << QPoint(3, -4) << 71;
    QTest::newRow("beyond the upper end") << QPoint(0, -300) << 127;
    QTest::newRow("beyond the lower end") << QPoint(-300, 0) << 0;
}

void TestPanelKnob::dragTurnsAValueAPixel()
{
    QFETCH(const QPoint, way);
    QFETCH(const int, value);
    QTest::mousePress(m_knob.get(), Qt::LeftButton, {}, middle());
    QTest::mouseMove(m_knob.get(), middle() + way);
    QCOMPARE(m_knob->value(), value);
    QTest::mouseRelease(m_knob.get(), Qt::LeftButton, {}, middle() + way);
    QTest::mouseMove(m_knob.get(), middle());
    QCOMPARE(m_knob->value(), value);
    QCOMPARE(m_turns->size(), 1);
}

void TestPanelKnob::clickTurnsNothing()
{
    QTest::mouseClick(m_knob.get(), Qt::LeftButton, {}, {middle().x(), 4});
    QCOMPARE(m_turns->size(), 0);
}

void TestPanelKnob::otherButtonTurnsNothing()
{
    QTest::mousePress(m_knob.get(), Qt::RightButton, {}, middle());
    QTest::mouseMove(m_knob.get(), middle() - QPoint(0, 10));
    QTest::mouseRelease(m_knob.get(), Qt::RightButton, {}, middle());
    QCOMPARE(m_turns->size(), 0);
}

void TestPanelKnob::wheelTurns()
{
    const QPointF at = middle();
    QWheelEvent up(at, m_knob->mapToGlobal(at), {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(m_knob.get(), &up);
    QVERIFY(m_knob->value() > 64);
}

void TestPanelKnob::keysTurn_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("value");
    QTest::newRow("up") << Qt::Key_Up << 65;
    QTest::newRow("right") << Qt::Key_Right << 65;
    QTest::newRow("down") << Qt::Key_Down << 63;
    QTest::newRow("left") << Qt::Key_Left << 63;
    QTest::newRow("page up") << Qt::Key_PageUp << 74;
    QTest::newRow("page down") << Qt::Key_PageDown << 54;
    QTest::newRow("home") << Qt::Key_Home << 0;
    QTest::newRow("end") << Qt::Key_End << 127;
}

void TestPanelKnob::keysTurn()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const int, value);
    QTest::keyClick(m_knob.get(), key);
    QCOMPARE(m_knob->value(), value);
}

void TestPanelKnob::whatTheDeviceHoldsIsShownSilently()
{
    m_knob->hold(90, {1, 2, 3, 4, 3});
    QCOMPARE(m_knob->value(), 90);
    QCOMPARE(m_turns->size(), 0);
    QCOMPARE(m_knob->accessibleDescription(), QStringLiteral("CC 1, channel 3, max 3, min 4, LED convex"));
}

void TestPanelKnob::ringFollowsTheLEDType()
{
    QCOMPARE(m_knob->litLEDs(), 0); // concave, in the middle
    const QImage dark = m_knob->grab().toImage();
    m_knob->hold(64, {10, 0, 127, 0, 3});
    QCOMPARE(m_knob->litLEDs(), 15);
    QVERIFY(m_knob->grab().toImage() != dark);
    m_knob->hold(0, {10, 0, 127, 0, 0});
    QCOMPARE(m_knob->litLEDs(), 0);
}

void TestPanelKnob::focusIsMarked()
{
    m_knob->activateWindow();
    m_knob->setFocus();
    QTRY_VERIFY(m_knob->hasFocus());
    const QImage with = m_knob->grab().toImage();
    m_knob->clearFocus();
    QVERIFY(m_knob->grab().toImage() != with);
}

void TestPanelKnob::isADialForScreenReaders()
{
    QAccessibleInterface* const knob = QAccessible::queryAccessibleInterface(m_knob.get());
    QVERIFY(knob);
    QCOMPARE(knob->role(), QAccessible::Dial);
    QCOMPARE(knob->text(QAccessible::Name), QStringLiteral("Knob 3"));
    QVERIFY(knob->valueInterface());
    QCOMPARE(knob->valueInterface()->currentValue().toInt(), 64);
}

KTZ_TEST(QApplication, TestPanelKnob)
#include "TestPanelKnob.moc"
