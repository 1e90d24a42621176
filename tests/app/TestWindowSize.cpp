#include "app/common/CWindowSize.h"
#include "tests/support/CTestCase.h"

#include <QSignalSpy>
#include <QTimer>
#include <QWidget>
#include <QWindow>

/// What the desktop tells of a window's size, as the toolkit takes it in.
class TestWindowSize : public CTestCase
{
    Q_OBJECT

  private slots:
    void halfTheSizeIsUndone();
    void sizeThatVariesIsTheNativeWindows();
    void layoutForAnotherSizeIsUndone();
    void newsThatIsPutRightIsNotAnswered();
    void desktopThatInsistsHasItsWay();
};

namespace
{
constexpr QSize k_size(200, 100);

class CResizeEater : public QObject
{
  public:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        return event->type() == QEvent::Resize || QObject::eventFilter(watched, event);
    }
};

void show(QWidget& window)
{
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(window.size(), k_size);
}
} // namespace

void TestWindowSize::halfTheSizeIsUndone()
{
    QWidget window;
    window.setFixedSize(k_size);
    new CWindowSize(&window);
    show(window);
    QSignalSpy widths(window.windowHandle(), &QWindow::widthChanged);
    window.windowHandle()->resize(k_size / 2);
    QTRY_COMPARE(widths.size(), 2);
    QCOMPARE(widths.first().first().toInt(), k_size.width() / 2);
    QTRY_COMPARE(window.size(), k_size);
    QCOMPARE(window.windowHandle()->size(), k_size);
}

void TestWindowSize::sizeThatVariesIsTheNativeWindows()
{
    QWidget window;
    window.resize(k_size);
    new CWindowSize(&window, std::chrono::milliseconds(0));
    show(window);
    window.windowHandle()->resize(k_size / 2);
    QTRY_COMPARE(window.size(), k_size / 2);
    QTest::qWait(50);
    QCOMPARE(window.size(), k_size / 2);
}

// A way to another screen and back, of whose second half the toolkit does not tell the layout.
void TestWindowSize::layoutForAnotherSizeIsUndone()
{
    QWidget window;
    window.resize(k_size);
    new CWindowSize(&window, std::chrono::seconds(1));
    show(window);
    window.windowHandle()->resize(k_size * 2);
    QTRY_COMPARE(window.size(), k_size * 2);
    CResizeEater eater;
    window.windowHandle()->installEventFilter(&eater);
    window.windowHandle()->resize(k_size);
    QTRY_COMPARE(window.windowHandle()->size(), k_size);
    QCOMPARE(window.size(), k_size * 2);
    QTRY_COMPARE(window.size(), k_size);
    QCOMPARE(window.windowHandle()->size(), k_size);
}

void TestWindowSize::newsThatIsPutRightIsNotAnswered()
{
    QWidget window;
    window.setFixedSize(k_size);
    new CWindowSize(&window, std::chrono::hours(1));
    show(window);
    QSignalSpy widths(window.windowHandle(), &QWindow::widthChanged);
    for (const QSize told : {k_size / 2, k_size}) {
        window.windowHandle()->resize(told);
        QTRY_COMPARE(window.size(), told);
        QTest::qWait(50);
    }
    QCOMPARE(widths.size(), 2);
}

void TestWindowSize::desktopThatInsistsHasItsWay()
{
    QWidget window;
    window.setFixedSize(k_size);
    new CWindowSize(&window);
    show(window);
    int resizes = 0;
    QWindow* desktops = window.windowHandle();
    connect(desktops, &QWindow::widthChanged, &window, [&](int width) {
        ++resizes;
        if (width == k_size.width())
            QTimer::singleShot(0, &window, [desktops] { desktops->resize(k_size / 2); });
    });
    desktops->resize(k_size / 2);
    QTRY_COMPARE(resizes, 3); // told, corrected, told again
    QTest::qWait(2 * CWindowSize::k_settling.count());
    QCOMPARE(resizes, 3);
    QCOMPARE(window.size(), k_size / 2);
}

KTZ_TEST(QApplication, TestWindowSize)
#include "TestWindowSize.moc"
