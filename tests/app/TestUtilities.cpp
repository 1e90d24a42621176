#include "app/common/Constants.h"
#include "app/common/Utilities.h"
#include "tests/support/CTestCase.h"

#include <QApplication>
#include <QFontInfo>
#include <QWidget>
#include <QWindow>

class TestUtilities : public CTestCase
{
    Q_OBJECT

  private slots:
    void initTestCase();

    void skinFontsGetTheirSizes_data();
    void skinFontsGetTheirSizes();
    void otherFontKeepsItsAntialiasing();
    void childWithoutAFontGetsItsParentsExplicitly();
    void parentIsAdjustedBeforeItsChildren();
    void widgetWithoutAnyExplicitFontIsLeftAlone();
    void childrenThatAreNoWidgetsAreSkipped();
    void windowGoesInFrontAndBack();
    void windowWithoutANativeWindowIsLeftAlone();
    void disabledWidgetIsSeenToBe();
};

void TestUtilities::initTestCase()
{
    Q_INIT_RESOURCE(common_images);
    QVERIFY(Utilities::registerSkinFonts());
}

void TestUtilities::skinFontsGetTheirSizes_data()
{
    QTest::addColumn<QString>("family");
    QTest::addColumn<int>("size");
    QTest::newRow("7") << k_fontGLT7Bold << 7;
    QTest::newRow("8") << k_fontGLT8 << 8;
    QTest::newRow("10") << k_fontGLT10Bold << 10;
}

void TestUtilities::skinFontsGetTheirSizes()
{
    QFETCH(QString, family);
    QFETCH(int, size);
    QWidget widget;
    widget.setFont(QFont(family, 33));
    Utilities::adjustFont(&widget);
    QCOMPARE(widget.font().family(), family);
    QCOMPARE(widget.font().pixelSize(), size);
    QCOMPARE(widget.font().styleStrategy(), QFont::NoAntialias);
    QCOMPARE(widget.font().styleHint(), QFont::AnyStyle);
    QCOMPARE(QFontInfo(widget.font()).family(), family);
}

void TestUtilities::otherFontKeepsItsAntialiasing()
{
    QWidget widget;
    widget.setFont(QFont(QStringLiteral("Sans"), 33));
    const QFont before = widget.font();
    Utilities::adjustFont(&widget);
    QCOMPARE(widget.font(), before);
    QVERIFY(widget.font().styleStrategy() != QFont::NoAntialias);
}

void TestUtilities::childWithoutAFontGetsItsParentsExplicitly()
{
    const QFont before = QApplication::font();
    QWidget parent;
    auto* child = new QWidget(&parent);
    parent.setFont(QFont(k_fontGLT8));
    Utilities::adjustFont(&parent);
    QVERIFY(child->testAttribute(Qt::WA_SetFont));
    QApplication::setFont(QFont(QStringLiteral("Sans"), 33));
    QCOMPARE(child->font().family(), k_fontGLT8);
    QCOMPARE(child->font().pixelSize(), 8);
    QApplication::setFont(before);
}

void TestUtilities::parentIsAdjustedBeforeItsChildren()
{
    QWidget top;
    auto* middle = new QWidget(&top);
    auto* leaf = new QWidget(middle);
    top.setFont(QFont(k_fontGLT10Bold, 40));
    Utilities::adjustFont(&top);
    QCOMPARE(leaf->font().pixelSize(), 10);
    QCOMPARE(leaf->font().styleStrategy(), QFont::NoAntialias);
}

void TestUtilities::widgetWithoutAnyExplicitFontIsLeftAlone()
{
    QWidget parent;
    auto* child = new QWidget(&parent);
    Utilities::adjustFont(&parent);
    QVERIFY(!parent.testAttribute(Qt::WA_SetFont));
    QVERIFY(!child->testAttribute(Qt::WA_SetFont));
}

void TestUtilities::childrenThatAreNoWidgetsAreSkipped()
{
    QWidget parent;
    new QObject(&parent);
    parent.setFont(QFont(k_fontGLT7Bold));
    Utilities::adjustFont(&parent);
    QCOMPARE(parent.font().pixelSize(), 7);
}

void TestUtilities::windowGoesInFrontAndBack()
{
    QWidget window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const WId native = window.winId();
    Utilities::windowStaysOnTop(&window, true);
    QVERIFY(window.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    QVERIFY(window.isVisible());
    QCOMPARE(window.winId(), native); // neither hidden nor created anew
    Utilities::windowStaysOnTop(&window, false);
    QVERIFY(!window.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
}

void TestUtilities::windowWithoutANativeWindowIsLeftAlone()
{
    Utilities::windowStaysOnTop(nullptr, true);
    QWidget widget;
    Utilities::windowStaysOnTop(&widget, true);
    QVERIFY(!widget.windowHandle());
}

void TestUtilities::disabledWidgetIsSeenToBe()
{
    QWidget window;
    auto* pin = new QWidget(&window);
    pin->resize(20, 20);
    window.setStyleSheet(QStringLiteral("QWidget { background: white } QWidget QWidget { background: black }"));
    window.show();
    QCOMPARE(window.grab().toImage().pixelColor(10, 10), QColor(Qt::black));
    Utilities::disableVisibly(pin);
    QVERIFY(!pin->isEnabled());
    const QColor faded = window.grab().toImage().pixelColor(10, 10);
    QVERIFY2(faded.lightness() > 100 && faded.lightness() < 220, qPrintable(faded.name()));
}

KTZ_TEST(QApplication, TestUtilities)
#include "TestUtilities.moc"
