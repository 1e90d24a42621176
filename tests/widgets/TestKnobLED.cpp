#include "app/common/SkinPixmap.h"
#include "tests/support/CPaintCounter.h"
#include "tests/support/CTestCase.h"
#include "tests/support/MemoryRig.h"
#include "tests/widgets/WidgetEvents.h"
#include "widgets/CKnobLED.h"
#include "widgets/KnobLEDStates.h"

#include <QElapsedTimer>
#include <QMetaProperty>
#include <QPainter>
#include <QPropertyAnimation>
#include <QtMath>

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

namespace
{
constexpr int k_shownKnob = 0;
constexpr int k_valueID = k_knobValueCategory + k_shownKnob;
constexpr int k_ledTypeID = k_ledTypeCategory + k_shownKnob;

/// One frame of the ring's strip.
QPixmap frameOf(int index)
{
    const QPixmap strip = skinPixmap(k_knobPath);
    const int height = strip.height() / 6;
    return strip.copy(0, index * height, strip.width(), height);
}

/// What the widget has to look like: the lower frame with the upper one over it, its alpha scaled pixel by pixel.
QImage expectedFace(const CKnobLED& knob, const QColor& background, int low, int high, int alpha)
{
    const qreal ratio = knob.devicePixelRatioF();
    QImage highFrame = frameOf(high).toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < highFrame.height(); ++y) {
        for (int x = 0; x < highFrame.width(); ++x) {
            const QRgb pixel = highFrame.pixel(x, y);
            const int scaled = static_cast<int>(qAlpha(pixel) * (alpha / 255.0));
            highFrame.setPixel(x, y, qRgba(qRed(pixel), qGreen(pixel), qBlue(pixel), scaled));
        }
    }
    QImage face((QSizeF(knob.size()) * ratio).toSize(), QImage::Format_RGB32);
    face.setDevicePixelRatio(ratio);
    face.fill(background);
    QPainter painter(&face);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(QRect(22, 22, 43, 43), frameOf(low));
    painter.drawImage(QRect(22, 22, 43, 43), highFrame);
    return face;
}

/// The widget as it paints itself, into a picture like the expected one: blending rounds by the format drawn on.
QImage paintedFace(CKnobLED& knob)
{
    QImage face((QSizeF(knob.size()) * knob.devicePixelRatioF()).toSize(), QImage::Format_RGB32);
    face.setDevicePixelRatio(knob.devicePixelRatioF());
    knob.render(&face);
    return face;
}

void fillBackground(CKnobLED& knob, const QColor& color)
{
    QPalette palette = knob.palette();
    palette.setColor(QPalette::Window, color);
    knob.setPalette(palette);
    knob.setAutoFillBackground(true);
}
} // namespace

class TestKnobLED : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();

    void constants();
    void propertiesInTheirOrder();
    void fadeTakes200MillisecondsEvenly();
    void startsWithStateZeroAndNoFade();

    void valueAndTypeChooseTheState_data();
    void valueAndTypeChooseTheState();
    void knobWithoutAMemoryTakesTypeZero();
    void reportedValueReachesTheLED();
    void typeChangeAloneFadesWithTheStoredValue();
    void typeChangeWithinOneStateDoesNotFade();
    void unchangedStateDoesNotFade();

    void riseFadesTheUpperFrameIn();
    void fallFadesTheUpperFrameOut();
    void changeDuringAFadeStartsAnew();
    void fadeEndsByItself_data();
    void fadeEndsByItself();
    void faceIsTheLowFrameUnderTheFadedHighOne_data();
    void faceIsTheLowFrameUnderTheFadedHighOne();
    void everyStateIsExactAtEveryAlpha_data();
    void everyStateIsExactAtEveryAlpha();
    void imagesAreKeptOnceAsTheyAreDrawn();

    void everyPressSelectsAndGoesOnToTheParent_data();
    void everyPressSelectsAndGoesOnToTheParent();
    void fadePaintsTheRingAlone();
    void floodRepaintsAtMost60TimesASecond();
    void noTimerRunsAtRest();
    void destroyedKnobIsForgottenByTheMemory();

  private:
    void setValue(int value);
    void setType(int ledType);

    std::unique_ptr<MemoryRig> m_connected;
    std::unique_ptr<QWidget> m_window;
    CKnobLED* m_knob = nullptr;
    QPropertyAnimation* m_fade = nullptr;
};

void TestKnobLED::init()
{
    CTestCase::init();
    m_connected = std::make_unique<MemoryRig>();
    m_connected->setFactorySettings();
    m_connected->connect();
    m_window = std::make_unique<QWidget>();
    m_window->resize(400, 300);
    m_knob = new CKnobLED(m_window.get());
    m_knob->setGeometry(k_knobRect);
    m_fade = m_knob->findChild<QPropertyAnimation*>();
    QVERIFY(m_fade != nullptr);
    m_connected->bind(*m_knob, k_valueID);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void TestKnobLED::cleanup()
{
    m_window.reset();
    m_connected.reset();
}

/// As the memory does when the device reports a value.
void TestKnobLED::setValue(int value)
{
    m_connected->memory.setKnob(k_valueID, value);
    m_connected->memory.notifyParamChabgedById(k_valueID);
}

void TestKnobLED::setType(int ledType)
{
    m_connected->memory.setParam(k_ledTypeID, ledType);
    m_knob->updateLED();
}

void TestKnobLED::constants()
{
    QCOMPARE(k_knobPath, QStringLiteral(":images/ktz_jx_knob.png"));
    QCOMPARE(k_ledRect, QRect(22, 22, 43, 43));
    QCOMPARE(k_minOpacity, QVariant(0));
    QCOMPARE(k_minOpacity.metaType(), QMetaType(QMetaType::Int));
    QCOMPARE(k_maxOpacity, QVariant(255.0));
    QCOMPARE(k_maxOpacity.metaType(), QMetaType(QMetaType::Double));
}

void TestKnobLED::propertiesInTheirOrder()
{
    const QMetaObject& meta = CKnobLED::staticMetaObject;
    QCOMPARE(meta.property(meta.propertyOffset()).name(), "alpha");
    m_knob->setProperty("alpha", 77);
    QCOMPARE(m_knob->getAlpha(), 77);
    QCOMPARE(m_knob->property("controllerID").toInt(), k_valueID);
}

void TestKnobLED::fadeTakes200MillisecondsEvenly()
{
    QCOMPARE(m_fade->duration(), 200);
    QCOMPARE(m_fade->easingCurve().type(), QEasingCurve::Linear);
    QCOMPARE(m_fade->targetObject(), m_knob);
    QCOMPARE(m_fade->propertyName(), QByteArray("alpha"));
}

void TestKnobLED::startsWithStateZeroAndNoFade()
{
    QCOMPARE(m_knob->getAlpha(), 0);
    QCOMPARE(m_knob->getImageIndexByType(k_ledAscent), 0);
    QCOMPARE(m_fade->state(), QAbstractAnimation::Stopped);
}

void TestKnobLED::valueAndTypeChooseTheState_data()
{
    QTest::addColumn<int>("ledType");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("state");
    QTest::newRow("0, ascent") << 0 << 0 << 0;
    QTest::newRow("94, ascent: the last of its state") << 0 << 94 << 3;
    QTest::newRow("95, ascent: the first of its state") << 0 << 95 << 4;
    QTest::newRow("127, ascent") << 0 << 127 << 5;
    QTest::newRow("64, descent") << 1 << 64 << 2;
    QTest::newRow("64, concave") << 2 << 64 << 0;
    QTest::newRow("64, convex") << 3 << 64 << 5;
    QTest::newRow("type below") << -1 << 127 << 0;
    QTest::newRow("type above") << 4 << 127 << 0;
    QTest::newRow("value above") << 0 << 128 << 0;
    QTest::newRow("value below") << 0 << -1 << 0;
}

void TestKnobLED::valueAndTypeChooseTheState()
{
    QFETCH(int, ledType);
    QFETCH(int, value);
    setValue(value);
    QTEST(m_knob->getImageIndexByType(ledType), "state");
}

void TestKnobLED::knobWithoutAMemoryTakesTypeZero()
{
    setType(k_ledConvex);
    setValue(127);
    m_knob->unregisterObserverFromMemAPI();
    m_knob->initialize(nullptr);
    m_connected.reset();
    m_knob->updateLED();
    // Ascent, 127.
    QVERIFY(m_fade->state() == QAbstractAnimation::Running);
    QCOMPARE(m_fade->endValue().toInt(), 255);
    m_knob->updateMemAPI();
    QCOMPARE(m_knob->getImageIndexByType(k_ledAscent), 0);
}

void TestKnobLED::reportedValueReachesTheLED()
{
    m_connected->device.turn(k_shownKnob, 100);
    QTRY_COMPARE(m_knob->getImageIndexByType(k_ledAscent), 4);
    QTRY_COMPARE(m_knob->getAlpha(), 255);
}

void TestKnobLED::typeChangeAloneFadesWithTheStoredValue()
{
    setType(k_ledConvex);
    setValue(0);
    QCOMPARE(m_fade->state(), QAbstractAnimation::Stopped);
    setType(k_ledConcave);
    QCOMPARE(m_fade->state(), QAbstractAnimation::Running);
    QCOMPARE(m_fade->endValue().toInt(), 255);
}

void TestKnobLED::typeChangeWithinOneStateDoesNotFade()
{
    setValue(0);
    setType(k_ledConvex);
    QCOMPARE(m_fade->state(), QAbstractAnimation::Stopped);
}

void TestKnobLED::unchangedStateDoesNotFade()
{
    setValue(1);
    QTRY_COMPARE(m_fade->state(), QAbstractAnimation::Stopped);
    setValue(32);
    QCOMPARE(m_fade->state(), QAbstractAnimation::Stopped);
    QCOMPARE(m_knob->getAlpha(), 255);
}

void TestKnobLED::riseFadesTheUpperFrameIn()
{
    setValue(127);
    m_fade->pause();
    const std::array<std::pair<int, int>, 4> course{{{0, 0}, {40, 51}, {100, 127}, {160, 204}}};
    for (const auto& [time, alpha] : course) {
        m_fade->setCurrentTime(time);
        QCOMPARE(m_knob->getAlpha(), alpha);
    }
    m_fade->resume();
    QTRY_COMPARE(m_knob->getAlpha(), 255);
}

void TestKnobLED::fallFadesTheUpperFrameOut()
{
    setValue(127);
    QTRY_COMPARE(m_fade->state(), QAbstractAnimation::Stopped);
    setValue(0);
    QCOMPARE(m_knob->getAlpha(), 255);
    m_fade->pause();
    m_fade->setCurrentTime(40);
    QCOMPARE(m_knob->getAlpha(), 204);
    m_fade->resume();
    QTRY_COMPARE(m_knob->getAlpha(), 0);
}

void TestKnobLED::changeDuringAFadeStartsAnew()
{
    setValue(64);
    m_fade->pause();
    m_fade->setCurrentTime(100);
    setValue(127);
    QVERIFY(m_knob->getAlpha() < 127);
    QCOMPARE(m_fade->state(), QAbstractAnimation::Running);
    m_fade->pause();
    m_fade->setCurrentTime(100);
    setValue(0);
    QVERIFY(m_knob->getAlpha() > 128);
    QTRY_COMPARE(m_knob->getAlpha(), 0);
}

void TestKnobLED::fadeEndsByItself_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<int>("alpha");
    QTest::newRow("a rise ends with the upper frame fully shown") << 33 << 64 << 255;
    QTest::newRow("a fall ends with the lower frame alone") << 64 << 33 << 0;
}

void TestKnobLED::fadeEndsByItself()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(int, alpha);
    setValue(from);
    QTRY_COMPARE(m_fade->state(), QAbstractAnimation::Stopped);
    setValue(to);
    QTRY_COMPARE(m_fade->state(), QAbstractAnimation::Stopped);
    QCOMPARE(m_knob->getAlpha(), alpha);
}

void TestKnobLED::faceIsTheLowFrameUnderTheFadedHighOne_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<int>("low");
    QTest::addColumn<int>("high");
    QTest::addColumn<int>("alpha");
    QTest::newRow("rise from 2 to 3, begins") << 33 << 64 << 2 << 3 << 0;
    QTest::newRow("rise from 2 to 3, under way") << 33 << 64 << 2 << 3 << 100;
    QTest::newRow("rise from 2 to 3, over") << 33 << 64 << 2 << 3 << 255;
    QTest::newRow("fall from 3 to 2, under way") << 64 << 33 << 2 << 3 << 100;
    QTest::newRow("jump from 0 to 5") << 0 << 127 << 0 << 5 << 200;
    QTest::newRow("start-up: one frame twice") << 0 << 0 << 0 << 0 << 128;
}

void TestKnobLED::faceIsTheLowFrameUnderTheFadedHighOne()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(int, low);
    QFETCH(int, high);
    QFETCH(int, alpha);
    QVERIFY(!skinPixmap(k_knobPath).isNull());
    fillBackground(*m_knob, Qt::darkGreen);
    setValue(from);
    setValue(to);
    m_fade->stop();
    m_knob->setAlpha(alpha);
    QCOMPARE(paintedFace(*m_knob), expectedFace(*m_knob, Qt::darkGreen, low, high, alpha));
}

void TestKnobLED::everyStateIsExactAtEveryAlpha_data()
{
    QTest::addColumn<int>("state");
    for (int state = 0; state < k_numOfLEDStates; ++state)
        QTest::addRow("%d", state) << state;
}

void TestKnobLED::everyStateIsExactAtEveryAlpha()
{
    QFETCH(int, state);
    const int below = std::max(state - 1, 0);
    fillBackground(*m_knob, QColor(12, 100, 40));
    setValue(k_minAscentDescendParam.at(static_cast<std::size_t>(below)));
    setValue(k_minAscentDescendParam.at(static_cast<std::size_t>(state)));
    m_fade->stop();
    for (int alpha = 0; alpha <= 255; ++alpha) {
        m_knob->setAlpha(alpha);
        const QImage expected = expectedFace(*m_knob, QColor(12, 100, 40), below, state, alpha);
        QVERIFY2(paintedFace(*m_knob) == expected, qPrintable(QStringLiteral("alpha %1").arg(alpha)));
    }
}

void TestKnobLED::imagesAreKeptOnceAsTheyAreDrawn()
{
    const qreal ratio = m_knob->devicePixelRatioF();
    const int density = qCeil(ratio);
    qsizetype bytes = 0;
    for (int state = 0; state < k_numOfLEDStates; ++state) {
        const QImage image = knobLEDImage(state, ratio);
        QCOMPARE(image.format(), QImage::Format_ARGB32_Premultiplied);
        QCOMPARE(image.deviceIndependentSize(), QSizeF(43, 43));
        QCOMPARE(knobLEDImage(state, ratio).cacheKey(), image.cacheKey());
        bytes += image.sizeInBytes();
    }
    QCOMPARE(bytes, qsizetype(44376) * density * density);
    // Another screen's take their place.
    const QImage first = knobLEDImage(0, ratio);
    QCOMPARE(knobLEDImage(0, ratio + 1.0).devicePixelRatio(), qreal(std::min(density + 1, 3)));
    QVERIFY(knobLEDImage(0, ratio).cacheKey() != first.cacheKey());
}

void TestKnobLED::everyPressSelectsAndGoesOnToTheParent_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::newRow("left") << Qt::LeftButton;
    QTest::newRow("right") << Qt::RightButton;
    QTest::newRow("middle") << Qt::MiddleButton;
}

void TestKnobLED::everyPressSelectsAndGoesOnToTheParent()
{
    QFETCH(Qt::MouseButton, button);
    QSignalSpy selections(m_knob, &CKnobLED::selected);
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5), m_knob->mapToGlobal(QPointF(5, 5)), button, button,
                      Qt::NoModifier);
    QApplication::sendEvent(m_knob, &press);
    QCOMPARE(selections.count(), 1);
    QVERIFY(!press.isAccepted());
}

void TestKnobLED::fadePaintsTheRingAlone()
{
    CPaintCounter counter;
    QCoreApplication::processEvents();
    m_knob->installEventFilter(&counter);
    setValue(127);
    QTRY_COMPARE(m_fade->state(), QAbstractAnimation::Stopped);
    QTRY_VERIFY(!m_knob->findChild<CFrameGate*>()->isPending());
    QCoreApplication::processEvents();
    QVERIFY(counter.painted.contains(k_ledRect.center()));
    QCOMPARE(counter.painted.boundingRect(), k_ledRect.adjusted(-1, -1, 1, 1));
}

void TestKnobLED::floodRepaintsAtMost60TimesASecond()
{
    CPaintCounter counter;
    std::vector<std::unique_ptr<CKnobLED>> knobs;
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        auto led = std::make_unique<CKnobLED>(m_window.get());
        led->setGeometry(87 * (knob % 4), 87 + 87 * (knob / 4), 87, 87);
        m_connected->bind(*led, k_knobValueCategory + knob);
        led->show();
        knobs.push_back(std::move(led));
    }
    QCoreApplication::processEvents();
    for (const auto& knob : knobs)
        knob->installEventFilter(&counter);

    QElapsedTimer time;
    time.start();
    for (int value = 0; time.elapsed() < 400; ++value) {
        for (int knob = 0; knob < k_numOfKnobs; ++knob) {
            m_connected->memory.setKnob(k_knobValueCategory + knob, value % 128);
            m_connected->memory.notifyParamChabgedById(k_knobValueCategory + knob);
        }
        QCoreApplication::processEvents();
    }
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        m_connected->memory.setKnob(k_knobValueCategory + knob, 127);
        m_connected->memory.notifyParamChabgedById(k_knobValueCategory + knob);
    }
    for (const auto& knob : knobs) {
        QCOMPARE(knob->getImageIndexByType(k_ledAscent), 5);
        QTRY_COMPARE(knob->findChild<QPropertyAnimation*>()->state(), QAbstractAnimation::Stopped);
        QTRY_VERIFY(!knob->findChild<CFrameGate*>()->isPending());
    }
    // The time may begin and end within a frame, and begin with a window's first paint.
    const auto mostPaints = time.elapsed() / CFrameGate::k_interval.count() + 3;
    for (const auto& [knob, paints] : counter.paints) {
        QVERIFY(paints > 2);
        QVERIFY2(paints <= mostPaints, qPrintable(QString::number(paints)));
    }
}

void TestKnobLED::noTimerRunsAtRest()
{
    const auto runningTimers = [this] {
        const QList<QTimer*> timers = m_knob->findChildren<QTimer*>();
        return std::count_if(timers.begin(), timers.end(), [](const QTimer* timer) { return timer->isActive(); });
    };
    QTRY_COMPARE(runningTimers(), 0);
    setValue(127);
    QTRY_COMPARE(m_fade->state(), QAbstractAnimation::Stopped);
    QTRY_COMPARE(runningTimers(), 0);
    setValue(126);
    setValue(127);
    QTRY_COMPARE(m_fade->state(), QAbstractAnimation::Stopped);
    QTRY_COMPARE(runningTimers(), 0);
}

void TestKnobLED::destroyedKnobIsForgottenByTheMemory()
{
    delete m_knob;
    m_connected->memory.notifyParamChabgedById(k_valueID);
}

KTZ_TEST(QApplication, TestKnobLED)
#include "TestKnobLED.moc"
