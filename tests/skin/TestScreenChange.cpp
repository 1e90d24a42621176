#include "tests/skin/CSkinScenes.h"
#include "tests/skin/PictureDifference.h"
#include "tests/support/CTestCase.h"

#include <QScreen>

namespace
{
QScreen* screenOf(int ratio)
{
    const auto screens = QGuiApplication::screens();
    for (QScreen* screen : screens) {
        if (qRound(screen->devicePixelRatio()) == ratio)
            return screen;
    }
    return nullptr;
}
} // namespace

/// The window on two screens, side by side, of the ratios 1 and 2: such screens as no X server has.
class TestScreenChange : public CTestCase
{
    Q_OBJECT

  private slots:
    void windowIsDrawnForTheScreenItIsOn_data();
    void windowIsDrawnForTheScreenItIsOn();
};

void TestScreenChange::windowIsDrawnForTheScreenItIsOn_data()
{
    QTest::addColumn<QList<int>>("ratios");
    QTest::newRow("to the dense one and back") << QList<int>{1, 2, 1};
    QTest::newRow("from the dense one and back") << QList<int>{2, 1, 2};
}

void TestScreenChange::windowIsDrawnForTheScreenItIsOn()
{
    QFETCH(QList<int>, ratios);
    CSkinScenes editor;
    CMainWindow& window = editor.startOnline();
    for (const int ratio : ratios) {
        window.setScreen(screenOf(ratio));
        QCOMPARE(window.devicePixelRatioF(), ratio);
        const QImage expected(QStringLiteral(KTZ_REFERENCES "/online@%1x.png").arg(ratio));
        const PictureDifference difference(editor.picture(), expected);
        QVERIFY2(difference.isSmall(), qPrintable(QStringLiteral("ratio %1: %2 pixels differ, %3 may")
                                                      .arg(ratio)
                                                      .arg(difference.pixels)
                                                      .arg(difference.allowed)));
    }
}

KTZ_TEST_MAIN(TestScreenChange)(int argc, char** argv)
{
    CSkinScenes::prepareProcess();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" KTZ_TWO_SCREENS);
    QApplication application(argc, argv);
    TestScreenChange test;
    return QTest::qExec(&test, argc, argv);
}
#include "TestScreenChange.moc"
