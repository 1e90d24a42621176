#include "tests/support/CTestCase.h"
#include "tests/widgets/ColorStrip.h"
#include "widgets/DoubleBuffer.h"

#include <QScreen>
#include <QWidget>

#include <cmath>

namespace
{
/// Draws a blue left half and a red right half, and records how it was asked to.
class CHalves : public QWidget, public DoubleBuffer
{
    Q_OBJECT

  public:
    explicit CHalves(QWidget* parent = nullptr) : QWidget(parent), DoubleBuffer(this) {}

    int m_drawn = 0;
    QSize m_pixmapSize;
    qreal m_pixmapRatio = 0;
    QFont m_font;
    QPen m_pen;
    QBrush m_background;
    QPainter::RenderHints m_hints;
    qreal m_screenRatio = 0; ///< of a made-up screen; 0 for the real one
    bool m_transparent = false;
    int m_showEvents = 0;
    int m_paintEvents = 0;
    int m_updateRequests = 0;

  protected:
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::UpdateRequest)
            ++m_updateRequests;
        return !eventDoubleBuffer(event) && QWidget::event(event);
    }

    void showEvent(QShowEvent* event) override
    {
        ++m_showEvents;
        QWidget::showEvent(event);
    }

    void paintEvent(QPaintEvent* event) override
    {
        ++m_paintEvents;
        QWidget::paintEvent(event);
    }

    int metric(PaintDeviceMetric metric) const override
    {
        if (m_screenRatio > 0 && metric == PdmDevicePixelRatio)
            return static_cast<int>(m_screenRatio);
        if (m_screenRatio > 0 && metric == PdmDevicePixelRatioScaled)
            return static_cast<int>(m_screenRatio * devicePixelRatioFScale());
        return QWidget::metric(metric);
    }

    void paintDoubleBuffer(QPainter* painter) override
    {
        ++m_drawn;
        const auto* pixmap = static_cast<QPixmap*>(painter->device());
        m_pixmapSize = pixmap->size();
        m_pixmapRatio = pixmap->devicePixelRatio();
        m_font = painter->font();
        m_pen = painter->pen();
        m_background = painter->background();
        m_hints = painter->renderHints();
        if (m_transparent)
            return;
        painter->fillRect(0, 0, width() / 2, height(), Qt::blue);
        painter->fillRect(width() / 2, 0, width() - width() / 2, height(), Qt::red);
    }
};

QSize deviceSize(const QSize& size, qreal ratio)
{
    return {static_cast<int>(std::ceil(size.width() * ratio)), static_cast<int>(std::ceil(size.height() * ratio))};
}
} // namespace

class TestDoubleBuffer : public CTestCase
{
    Q_OBJECT

  private slots:
    void updateBeforePolishNeitherSetsDirtyNorPaints();
    void showIsPassedOnPolishAndPaintAreConsumed();
    void otherEventsAreLeftAlone();
    void faceIsDrawnOncePerChange();
    void repaintDrawsAtOnce();
    void resizeRebuildsUnasked();
    void screenChangeRebuildsUnasked();
    void pixmapCoversEveryDevicePixel_data();
    void pixmapCoversEveryDevicePixel();
    void emptyWidgetDrawsNothing();
    void painterStartsAsTheWidgetWithoutSmoothText();
    void backgroundIsTransparent();
    void faceThatHidesAllIsShownAsItIsDrawn();
    void uncoveredPartIsPaintedInPlace();
};

void TestDoubleBuffer::updateBeforePolishNeitherSetsDirtyNorPaints()
{
    CHalves widget;
    widget.updateDoubleBufferPixmap();
    QCOMPARE(widget.m_drawn, 1);
    widget.updateDoubleBuffer();
    widget.repaintDoubleBuffer();
    widget.updateDoubleBufferPixmap();
    QCoreApplication::processEvents();
    QCOMPARE(widget.m_drawn, 1);
    QCOMPARE(widget.m_updateRequests, 0);

    widget.ensurePolished();
    widget.updateDoubleBuffer();
    widget.updateDoubleBufferPixmap();
    QCOMPARE(widget.m_drawn, 2);
}

void TestDoubleBuffer::showIsPassedOnPolishAndPaintAreConsumed()
{
    CHalves widget;
    QObject& object = widget;
    QEvent polish(QEvent::Polish);
    QVERIFY(!object.event(&polish));
    QCOMPARE(widget.m_drawn, 1);

    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QCOMPARE(widget.m_showEvents, 1);
    QCOMPARE(widget.m_paintEvents, 0);
    QVERIFY(!widget.testAttribute(Qt::WA_WState_Polished));
}

void TestDoubleBuffer::otherEventsAreLeftAlone()
{
    CHalves widget;
    for (const QEvent::Type type : {QEvent::Hide, QEvent::Resize, QEvent::MouseButtonPress, QEvent::EnabledChange}) {
        QEvent event(type);
        QVERIFY(!widget.eventDoubleBuffer(&event));
    }
    QCOMPARE(widget.m_drawn, 0);
}

void TestDoubleBuffer::faceIsDrawnOncePerChange()
{
    CHalves widget;
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QCOMPARE(widget.m_drawn, 1);
    for (int i = 0; i < 3; ++i)
        widget.repaint();
    QCOMPARE(widget.m_drawn, 1);
    for (int i = 0; i < 3; ++i)
        widget.updateDoubleBuffer();
    QCOMPARE(widget.m_drawn, 1);
    QTRY_COMPARE(widget.m_drawn, 2);
    widget.repaint();
    QCOMPARE(widget.m_drawn, 2);
}

void TestDoubleBuffer::repaintDrawsAtOnce()
{
    CHalves widget;
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    widget.repaintDoubleBuffer();
    QCOMPARE(widget.m_drawn, 2);
}

void TestDoubleBuffer::resizeRebuildsUnasked()
{
    CHalves widget;
    widget.resize(40, 30);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    widget.resize(61, 33);
    QTRY_COMPARE(widget.m_pixmapSize, deviceSize(QSize(61, 33), widget.devicePixelRatioF()));
}

void TestDoubleBuffer::screenChangeRebuildsUnasked()
{
    CHalves widget;
    widget.resize(40, 30);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    const int drawn = widget.m_drawn;
    widget.m_screenRatio = widget.devicePixelRatioF() + 1;
    widget.repaint();
    QCOMPARE(widget.m_drawn, drawn + 1);
    QCOMPARE(widget.m_pixmapRatio, widget.m_screenRatio);
    QCOMPARE(widget.m_pixmapSize, deviceSize(QSize(40, 30), widget.m_screenRatio));
    widget.repaint();
    QCOMPARE(widget.m_drawn, drawn + 1);
}

void TestDoubleBuffer::pixmapCoversEveryDevicePixel_data() // a widget of 41 x 30
{
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<QSize>("pixels");
    QTest::newRow("1") << 1.0 << QSize(41, 30);
    QTest::newRow("1.25, a part of a pixel at the right and bottom") << 1.25 << QSize(52, 38);
    QTest::newRow("1.5, half a pixel at the right") << 1.5 << QSize(62, 45);
    QTest::newRow("2") << 2.0 << QSize(82, 60);
    QTest::newRow("3") << 3.0 << QSize(123, 90);
}

void TestDoubleBuffer::pixmapCoversEveryDevicePixel()
{
    QFETCH(qreal, ratio);
    CHalves widget;
    widget.resize(41, 30);
    widget.m_screenRatio = ratio;
    widget.updateDoubleBufferPixmap();
    QTEST(widget.m_pixmapSize, "pixels");
    QCOMPARE(widget.m_pixmapRatio, ratio);
}

void TestDoubleBuffer::emptyWidgetDrawsNothing()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
    CHalves widget;
    widget.resize(0, 0);
    widget.ensurePolished();
    widget.updateDoubleBuffer();
    widget.updateDoubleBufferPixmap();
    QCOMPARE(widget.m_drawn, 0);
    widget.resize(4, 4);
    widget.updateDoubleBufferPixmap();
    QCOMPARE(widget.m_drawn, 1);
}

void TestDoubleBuffer::painterStartsAsTheWidgetWithoutSmoothText()
{
    CHalves widget;
    QPalette palette;
    palette.setColor(QPalette::WindowText, Qt::green);
    palette.setColor(QPalette::Window, Qt::yellow);
    widget.setPalette(palette);
    QFont font = widget.font();
    font.setPixelSize(21);
    font.setBold(true);
    widget.setFont(font);
    widget.updateDoubleBufferPixmap();
    QCOMPARE(widget.m_font.pixelSize(), 21);
    QVERIFY(widget.m_font.bold());
    QCOMPARE(widget.m_pen.color(), QColor(Qt::green));
    QCOMPARE(widget.m_background.color(), QColor(Qt::yellow));
    QVERIFY(!widget.m_hints.testFlag(QPainter::TextAntialiasing));
}

void TestDoubleBuffer::backgroundIsTransparent()
{
    QWidget parent;
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::green);
    parent.setPalette(palette);
    CHalves widget(&parent);
    widget.m_transparent = true;
    QCOMPARE(shownColor(parent, QPoint(5, 5)), QColor(Qt::green));
    QCOMPARE(widget.m_drawn, 1);
}

void TestDoubleBuffer::faceThatHidesAllIsShownAsItIsDrawn()
{
    CHalves widget;
    widget.setAttribute(Qt::WA_OpaquePaintEvent);
    widget.resize(21, 9); // rows that do not end on a whole word
    widget.m_screenRatio = 2;
    const QImage shown = widget.grab().toImage();
    QCOMPARE(shown.size(), QSize(42, 18));
    for (const int y : {0, 7, 17}) {
        QCOMPARE(shown.pixelColor(0, y), QColor(Qt::blue));
        QCOMPARE(shown.pixelColor(19, y), QColor(Qt::blue));
        QCOMPARE(shown.pixelColor(20, y), QColor(Qt::red));
        QCOMPARE(shown.pixelColor(41, y), QColor(Qt::red));
    }
    QCOMPARE(widget.m_drawn, 1);
}

void TestDoubleBuffer::uncoveredPartIsPaintedInPlace()
{
    CHalves widget;
    widget.setWindowFlags(Qt::FramelessWindowHint);
    widget.setGeometry(50, 50, 40, 30);
    QWidget cover(&widget);
    cover.setAutoFillBackground(true);
    cover.setPalette(QPalette(Qt::green));
    cover.setGeometry(15, 10, 10, 10);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    const auto onScreen = [&widget](int x, int y) {
        const QImage image = widget.screen()->grabWindow(widget.winId()).toImage();
        const qreal ratio = widget.devicePixelRatioF();
        return image.pixelColor(static_cast<int>((x + 0.5) * ratio), static_cast<int>((y + 0.5) * ratio));
    };
    QTRY_COMPARE(onScreen(17, 15), QColor(Qt::green));
    cover.hide();
    QTRY_COMPARE(onScreen(17, 15), QColor(Qt::blue));
    QCOMPARE(onScreen(23, 15), QColor(Qt::red));
    QCOMPARE(onScreen(5, 15), QColor(Qt::blue));
    QCOMPARE(onScreen(35, 15), QColor(Qt::red));
    QCOMPARE(widget.m_drawn, 1);
}

KTZ_TEST(QApplication, TestDoubleBuffer)
#include "TestDoubleBuffer.moc"
