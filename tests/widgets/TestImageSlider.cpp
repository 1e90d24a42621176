#include "tests/support/CTestCase.h"
#include "tests/widgets/ActiveWindow.h"
#include "tests/widgets/ColorStrip.h"
#include "tests/widgets/WidgetEvents.h"
#include "widgets/CImageSlider.h"

#include <QMetaProperty>

#include <memory>

namespace
{
constexpr QSize k_sliderSize(60, 15);
} // namespace

class TestImageSlider : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();

    void defaults();
    void propertiesInTheirOrder();

    void frameCountSetsTheRange();
    void frameCountBelow1KeepsThePreviousOne_data();
    void frameCountBelow1KeepsThePreviousOne();
    void eachValueShowsItsFrame_data();
    void eachValueShowsItsFrame();
    void frameIsScaledToTheWidget();
    void noPictureDrawsNothing();

    void dragFollowsRangeAndShift_data();
    void dragFollowsRangeAndShift();
    void pressTakesThePointerToTheCentreAtOnce();
    void pressOutsideTheSliderCountsToo();
    void doubleClickStartsADrag();
    void focusLossEndsTheDragAndALateReleaseMovesThePointerBack();
    void whereThePointerCannotBePlacedItIsLeftAlone();

    void wheelLeavesTheFocus();
    void wheelOutsideTheSliderDoesNothing();

  private:
    [[nodiscard]] QPoint topLeft() const;

    std::unique_ptr<QWidget> m_window;
    CImageSlider* m_slider = nullptr;
};

void TestImageSlider::init()
{
    CTestCase::init();
    m_window = std::make_unique<QWidget>();
    m_window->setGeometry(20, 20, 300, 200);
    m_slider = new CImageSlider(m_window.get());
    m_slider->setGeometry(QRect(QPoint(50, 50), k_sliderSize));
    m_slider->setImage(coloredStrip(k_sliderSize, 1, 4));
    m_slider->setTotalImages(4);
    m_slider->setValue(1);
    QVERIFY(showActive(*m_window));
    m_slider->setFocus();
}

void TestImageSlider::cleanup()
{
    m_window.reset();
    QVERIFY(QApplication::overrideCursor() == nullptr);
}

QPoint TestImageSlider::topLeft() const
{
    return m_slider->mapToGlobal(QPoint(0, 0));
}

void TestImageSlider::defaults()
{
    const CImageSlider slider;
    QVERIFY(slider.getImage().isNull());
    QCOMPARE(slider.getTotalImages(), 1);
    QCOMPARE(slider.controllerID(), 0);
    QCOMPARE(slider.focusPolicy(), Qt::ClickFocus);
}

void TestImageSlider::propertiesInTheirOrder()
{
    const QMetaObject& meta = CImageSlider::staticMetaObject;
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        names.append(QString::fromLatin1(meta.property(i).name()));
    QCOMPARE(names, QStringList({"image", "totalImages", "controllerID"}));
    m_slider->setProperty("totalImages", 6);
    QCOMPARE(m_slider->maximum(), 5);
}

void TestImageSlider::frameCountSetsTheRange()
{
    m_slider->setTotalImages(6);
    QCOMPARE(m_slider->getTotalImages(), 6);
    QCOMPARE(m_slider->minimum(), 0);
    QCOMPARE(m_slider->maximum(), 5);
    m_slider->setTotalImages(1);
    QCOMPARE(m_slider->maximum(), 0);
    QCOMPARE(m_slider->value(), 0);
}

void TestImageSlider::frameCountBelow1KeepsThePreviousOne_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("0") << 0;
    QTest::newRow("negative") << -3;
}

void TestImageSlider::frameCountBelow1KeepsThePreviousOne()
{
    QFETCH(int, count);
    m_slider->setTotalImages(count);
    QCOMPARE(m_slider->getTotalImages(), 4);
    QCOMPARE(m_slider->maximum(), 3);
}

void TestImageSlider::eachValueShowsItsFrame_data()
{
    QTest::addColumn<int>("density");
    QTest::addColumn<int>("value");
    for (int density = 1; density <= 3; ++density) {
        for (int value = 0; value < 4; ++value)
            QTest::addRow("picture for %dx, value %d", density, value) << density << value;
    }
}

void TestImageSlider::eachValueShowsItsFrame()
{
    QFETCH(int, density);
    QFETCH(int, value);
    m_slider->setImage(coloredStrip(k_sliderSize, 1, 4, density));
    m_slider->setValue(value);
    for (const QPoint& corner : {QPoint(1, 1), QPoint(58, 1), QPoint(1, 13), QPoint(58, 13)})
        QCOMPARE(shownColor(*m_slider, corner), frameColor(0, value));
}

void TestImageSlider::frameIsScaledToTheWidget()
{
    m_slider->resize(k_sliderSize * 2);
    for (const QPoint& corner : {QPoint(1, 1), QPoint(118, 1), QPoint(1, 28), QPoint(118, 28)})
        QCOMPARE(shownColor(*m_slider, corner), frameColor(0, 1));
}

void TestImageSlider::noPictureDrawsNothing()
{
    const QColor background = shownColor(*m_window, QPoint(1, 1));
    m_slider->setImage(QPixmap());
    QCOMPARE(shownColor(*m_window, QPoint(60, 55)), background);
}

void TestImageSlider::dragFollowsRangeAndShift_data()
{
    QTest::addColumn<int>("frames");
    QTest::addColumn<bool>("shift");
    QTest::addColumn<int>("pixels"); // moved upwards, one by one
    QTest::addColumn<int>("steps");
    QTest::newRow("4 frames: no step within 8 pixels") << 4 << false << 7 << 0;
    QTest::newRow("4 frames: one step per 8 pixels") << 4 << false << 16 << 2;
    QTest::newRow("4 frames, Shift: no step within 32 pixels") << 4 << true << 31 << 0;
    QTest::newRow("4 frames, Shift: one step per 32 pixels") << 4 << true << 32 << 1;
    QTest::newRow("9 frames: one step per 8 pixels") << 9 << false << 16 << 2;
    QTest::newRow("17 frames: one step per 4 pixels") << 17 << false << 8 << 2;
    QTest::newRow("33 frames: one step per 2 pixels") << 33 << false << 8 << 4;
    QTest::newRow("128 frames: one step per pixel") << 128 << false << 5 << 5;
    QTest::newRow("128 frames, Shift: one step per 4 pixels") << 128 << true << 9 << 2;
    QTest::newRow("1001 frames: ten steps per pixel") << 1001 << false << 3 << 30;
    QTest::newRow("1001 frames, Shift: one step per 4 pixels") << 1001 << true << 4 << 1;
}

void TestImageSlider::dragFollowsRangeAndShift()
{
    QFETCH(int, frames);
    QFETCH(bool, shift);
    QFETCH(int, pixels);
    QFETCH(int, steps);
    const QPoint centre = centreOf(*m_slider);
    m_slider->setTotalImages(frames);
    m_slider->setValue(0);
    sendPress(*m_slider, centre);
    for (int i = 0; i < pixels; ++i)
        sendMove(*m_slider, centre - QPoint(0, 1), shift ? Qt::ShiftModifier : Qt::NoModifier);
    QCOMPARE(m_slider->value(), steps);
    for (int i = 0; i < pixels; ++i)
        sendMove(*m_slider, centre + QPoint(0, 1), shift ? Qt::ShiftModifier : Qt::NoModifier);
    QCOMPARE(m_slider->value(), 0);
    sendRelease(*m_slider, centre);
}

void TestImageSlider::pressTakesThePointerToTheCentreAtOnce()
{
    const QPoint press = topLeft() + QPoint(3, 2);
    QCursor::setPos(press);
    sendPress(*m_slider, press);
    QTRY_COMPARE(QCursor::pos(), centreOf(*m_slider));
    QCOMPARE(QApplication::overrideCursor()->shape(), Qt::BlankCursor);
    QVERIFY(m_slider->isSliderDown());
    sendRelease(*m_slider, centreOf(*m_slider));
}

void TestImageSlider::pressOutsideTheSliderCountsToo()
{
    sendPress(*m_slider, topLeft() - QPoint(5, 5));
    QVERIFY(m_slider->isSliderDown());
    QVERIFY(QApplication::overrideCursor() != nullptr);
    sendRelease(*m_slider, centreOf(*m_slider));
}

void TestImageSlider::doubleClickStartsADrag()
{
    const QPoint centre = centreOf(*m_slider);
    sendMouse(*m_slider, QEvent::MouseButtonDblClick, centre, Qt::LeftButton, Qt::LeftButton);
    sendMove(*m_slider, centre - QPoint(0, 8));
    QCOMPARE(m_slider->value(), 2);
    sendRelease(*m_slider, centre);
}

void TestImageSlider::focusLossEndsTheDragAndALateReleaseMovesThePointerBack()
{
    const QPoint press = topLeft() + QPoint(3, 2);
    QCursor::setPos(press);
    sendPress(*m_slider, press);
    QTRY_COMPARE(QCursor::pos(), centreOf(*m_slider));
    QVERIFY(m_slider->hasFocus());
    m_slider->clearFocus();
    QVERIFY(!m_slider->isSliderDown());
    QVERIFY(QApplication::overrideCursor() == nullptr);
    QCOMPARE(QCursor::pos(), centreOf(*m_slider));
    sendMove(*m_slider, press - QPoint(0, 30));
    QCOMPARE(m_slider->value(), 1);
    sendRelease(*m_slider, centreOf(*m_slider));
    QTRY_COMPARE(QCursor::pos(), press);
}

void TestImageSlider::whereThePointerCannotBePlacedItIsLeftAlone()
{
    m_slider->setPointerWarps(false);
    const QPoint press = topLeft() + QPoint(3, 2);
    QCursor::setPos(press);
    sendPress(*m_slider, press);
    sendMove(*m_slider, press - QPoint(0, 8));
    QCOMPARE(m_slider->value(), 2);
    sendMove(*m_slider, press - QPoint(0, 16));
    QCOMPARE(m_slider->value(), 3);
    sendRelease(*m_slider, press - QPoint(0, 16));
    QCOMPARE(QCursor::pos(), press);
}

void TestImageSlider::wheelLeavesTheFocus()
{
    m_slider->clearFocus();
    sendWheel(*m_slider, topLeft(), QPoint(0, 120));
    QVERIFY(!m_slider->hasFocus());
}

void TestImageSlider::wheelOutsideTheSliderDoesNothing()
{
    sendWheel(*m_slider, topLeft() - QPoint(1, 0), QPoint(0, 120));
    sendWheel(*m_slider, topLeft() + QPoint(0, m_slider->height()), QPoint(0, 120));
    QCOMPARE(m_slider->value(), 1);
}

KTZ_TEST(QApplication, TestImageSlider)
#include "TestImageSlider.moc"
