#include "style/CJXStyle.h"
#include "style/StyleColors.h"
#include "tests/style/CRecordingStyle.h"
#include "tests/support/CTestCase.h"

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTableView>
#include <QTreeWidget>

#include <functional>
#include <memory>

using WidgetPtr = std::shared_ptr<QWidget>;
using Operation = std::function<void(QStyle&, QWidget*)>;
Q_DECLARE_METATYPE(WidgetPtr)
Q_DECLARE_METATYPE(Operation)

namespace
{
template <class Widget> WidgetPtr make(const char* objectName = "")
{
    const auto widget = std::make_shared<Widget>();
    widget->setObjectName(QLatin1String(objectName));
    return widget;
}

const char* const k_popupTree = "CPopupTreeWidget";
const char* const k_popupList = "CPopupListWidget";
} // namespace

class TestJXStyle : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();

    void colorTable_data();
    void colorTable();
    void isCustomStyle_data();
    void isCustomStyle();

    void treeViewWithAnotherNameKeepsThePlatformLook();
    void widgetOperationIsForwardedUnlessTheWidgetIsCustom_data();
    void widgetOperationIsForwardedUnlessTheWidgetIsCustom();
    void operationWithoutWidgetIsForwardedAlways_data();
    void operationWithoutWidgetIsForwardedAlways();
    void customWidgetsContentsAreThoseOfTheWindowsStyle();
    void everyDialogGetsTheSameIcons();

    void ownsThePreviousStyle();
    void previousStyleOutlivesTheSwitch();
    void paletteGroup_data();
    void paletteGroup();
    void popupViewsGetThePaletteAndOtherWidgetsKeepTheirs_data();
    void popupViewsGetThePaletteAndOtherWidgetsKeepTheirs();
    void lineEditWithAFrameShowsItsGround();

    void pixelMetric_data();
    void pixelMetric();
    void otherPixelMetricsAreThoseOfTheWindowsStyle();
    void menuOfTheSkinHasNoMargin();
    void showDecorationSelected_data();
    void showDecorationSelected();

    void textInAFileDialogsLineEditIsReadable();

  private:
    CRecordingStyle* m_previous = nullptr; ///< owned by m_style
    CJXStyle* m_style = nullptr;           ///< owned by the application
};

void TestJXStyle::init()
{
    CTestCase::init();
    m_previous = new CRecordingStyle;
    QApplication::setStyle(m_previous);
    m_style = new CJXStyle;
    QApplication::setStyle(m_style);
    m_previous->calls().clear();
}

void TestJXStyle::colorTable_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QRgb>("rgb");
    const auto row = [](const char* name, const QColor& color, QRgb rgb) { QTest::newRow(name) << color << rgb; };
    row("colorPaletteBase", colorPaletteBase, 0xffcccccc);
    row("colorPaletteText", colorPaletteText, 0xff373737);
    row("colorPaletteHighlight", colorPaletteHighlight, 0xff373737);
    row("colorPaletteHighlightedText", colorPaletteHighlightedText, 0xffffffff);
    row("colorPaletteFrame", colorPaletteFrame, 0xffffffff);
    row("colorScrollBarBackground", colorScrollBarBackground, 0xff373737);
    row("colorScrollBarForeground", colorScrollBarForeground, 0xff8a8989);
    row("colorListViewLine", colorListViewLine, 0xff999999);
    row("colorMenuBarEnableBackgorund", colorMenuBarEnableBackgorund, 0xffffffff);
    row("colorMenuBarEnableText", colorMenuBarEnableText, 0xff000000);
    row("colorMenuBarDisableBackgorund", colorMenuBarDisableBackgorund, 0xffffffff);
    row("colorMenuBarDisableText", colorMenuBarDisableText, 0xff666666);
    row("colorMenuBarSelectBackground", colorMenuBarSelectBackground, 0xffffffff);
    row("colorMenuBarSelectText", colorMenuBarSelectText, 0xff00e9f1);
    row("colorMenuEnableBackground", colorMenuEnableBackground, 0xffcccccc);
    row("colorMenuEnableText", colorMenuEnableText, 0xff373737);
    row("colorMenuDisableBackground", colorMenuDisableBackground, 0xffcccccc);
    row("colorMenuDisableText", colorMenuDisableText, 0xff999999);
    row("colorMenuSunkenBackground", colorMenuSunkenBackground, 0xff373737);
    row("colorMenuSunkenText", colorMenuSunkenText, 0xff00cc00);
    row("colorMenuSelectBackground", colorMenuSelectBackground, 0xff373737);
    row("colorMenuSelectText", colorMenuSelectText, 0xffffffff);
}

void TestJXStyle::colorTable()
{
    QFETCH(QColor, color);
    QFETCH(QRgb, rgb);
    QCOMPARE(color.rgba(), rgb);
}

void TestJXStyle::isCustomStyle_data()
{
    QTest::addColumn<WidgetPtr>("widget");
    QTest::addColumn<bool>("custom");
    QTest::newRow("null") << WidgetPtr() << false;
    QTest::newRow("menu bar") << make<QMenuBar>() << true;
    QTest::newRow("menu") << make<QMenu>() << true;
    QTest::newRow("scroll bar") << make<QScrollBar>() << true;
    QTest::newRow("line edit") << make<QLineEdit>() << true;
    QTest::newRow("popup tree") << make<QTreeWidget>(k_popupTree) << true;
    QTest::newRow("popup list") << make<QListWidget>(k_popupList) << true;
    QTest::newRow("tree named as the list") << make<QTreeWidget>(k_popupList) << false;
    QTest::newRow("list named as the tree") << make<QListWidget>(k_popupTree) << false;
    QTest::newRow("unnamed tree") << make<QTreeWidget>() << false;
    QTest::newRow("list with another name") << make<QListWidget>("CPopupListWidget2") << false;
    QTest::newRow("table named as the tree") << make<QTableView>(k_popupTree) << false;
    QTest::newRow("button") << make<QPushButton>() << false;
    QTest::newRow("combo box") << make<QComboBox>() << false;
    QTest::newRow("slider") << make<QSlider>() << false;
    QTest::newRow("plain widget") << make<QWidget>() << false;
}

void TestJXStyle::isCustomStyle()
{
    QFETCH(WidgetPtr, widget);
    QFETCH(bool, custom);
    QCOMPARE(m_style->isCustomStyle(widget.get()), custom);
}

void TestJXStyle::treeViewWithAnotherNameKeepsThePlatformLook()
{
    QTreeWidget tree;
    tree.setObjectName(QStringLiteral("AnotherTree"));
    QTreeWidgetItem parent(&tree, {QStringLiteral("parent")});
    new QTreeWidgetItem(&parent, {QStringLiteral("child")});
    parent.setExpanded(true);
    tree.setCurrentItem(&parent);
    tree.resize(120, 80);
    const QImage ours = tree.grab().toImage();

    const std::unique_ptr<QStyle> platform(QStyleFactory::create(QStringLiteral("Fusion")));
    tree.setStyle(platform.get());
    QCOMPARE(ours, tree.grab().toImage());
    tree.setStyle(nullptr);

    tree.setObjectName(QLatin1String(k_popupTree));
    m_style->polish(&tree);
    QVERIFY(tree.grab().toImage() != ours);
}

void TestJXStyle::widgetOperationIsForwardedUnlessTheWidgetIsCustom_data()
{
    QTest::addColumn<Operation>("operation");
    const auto row = [](const char* name, const Operation& operation) { QTest::newRow(name) << operation; };
    row("drawPrimitive", [](QStyle& style, QWidget* w) {
        QImage image(10, 10, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        QStyleOption option;
        style.drawPrimitive(QStyle::PE_Frame, &option, &painter, w);
    });
    row("drawControl", [](QStyle& style, QWidget* w) {
        QImage image(10, 10, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        QStyleOptionMenuItem option;
        style.drawControl(QStyle::CE_MenuEmptyArea, &option, &painter, w);
    });
    row("drawComplexControl", [](QStyle& style, QWidget* w) {
        QImage image(10, 10, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        QStyleOptionSlider option;
        style.drawComplexControl(QStyle::CC_ScrollBar, &option, &painter, w);
    });
    row("subElementRect", [](QStyle& style, QWidget* w) {
        QStyleOptionFrame option;
        option.rect = QRect(0, 0, 50, 20);
        QVERIFY(style.subElementRect(QStyle::SE_FrameContents, &option, w).isValid());
    });
    row("subControlRect", [](QStyle& style, QWidget* w) {
        QStyleOptionSlider option;
        option.orientation = Qt::Vertical;
        option.rect = QRect(0, 0, 16, 100);
        QVERIFY(style.subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, w).isValid());
    });
    row("hitTestComplexControl", [](QStyle& style, QWidget* w) {
        QStyleOptionSlider option;
        QCOMPARE(style.hitTestComplexControl(QStyle::CC_ScrollBar, &option, QPoint(-9, -9), w), QStyle::SC_None);
    });
    row("sizeFromContents", [](QStyle& style, QWidget* w) {
        QStyleOptionFrame option;
        QVERIFY(style.sizeFromContents(QStyle::CT_LineEdit, &option, QSize(50, 10), w).isValid());
    });
    row("pixelMetric",
        [](QStyle& style, QWidget* w) { QVERIFY(style.pixelMetric(QStyle::PM_SmallIconSize, nullptr, w) > 0); });
    row("styleHint",
        [](QStyle& style, QWidget* w) { QVERIFY(style.styleHint(QStyle::SH_Menu_MouseTracking, nullptr, w) > 0); });
    row("layoutSpacing", [](QStyle& style, QWidget* w) {
        QVERIFY(style.layoutSpacing(QSizePolicy::Label, QSizePolicy::Label, Qt::Horizontal, nullptr, w) >= -1);
    });
    row("standardPixmap", [](QStyle& style, QWidget* w) {
        QVERIFY(!style.standardPixmap(QStyle::SP_MessageBoxWarning, nullptr, w).isNull());
    });
    row("standardIcon", [](QStyle& style, QWidget* w) {
        QVERIFY(!style.standardIcon(QStyle::SP_MessageBoxWarning, nullptr, w).isNull());
    });
    row("polish(QWidget*)", [](QStyle& style, QWidget* w) { style.polish(w); });
    row("unpolish(QWidget*)", [](QStyle& style, QWidget* w) { style.unpolish(w); });
}

void TestJXStyle::widgetOperationIsForwardedUnlessTheWidgetIsCustom()
{
    QFETCH(Operation, operation);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    QPushButton button;
    QMenuBar menuBar;
    QMenu menu;
    QScrollBar scrollBar;
    QLineEdit lineEdit;
    m_previous->calls().clear();

    operation(*m_style, &button);
    QVERIFY(m_previous->calls().contains(name));
    for (QWidget* custom : {static_cast<QWidget*>(&menuBar), static_cast<QWidget*>(&menu),
                            static_cast<QWidget*>(&scrollBar), static_cast<QWidget*>(&lineEdit)}) {
        m_previous->calls().clear();
        operation(*m_style, custom);
        QVERIFY2(!m_previous->calls().contains(name), custom->metaObject()->className());
    }
}

void TestJXStyle::operationWithoutWidgetIsForwardedAlways_data()
{
    QTest::addColumn<Operation>("operation");
    const auto row = [](const char* name, const Operation& operation) { QTest::newRow(name) << operation; };
    row("pixelMetric", [](QStyle& style, QWidget*) { QVERIFY(style.pixelMetric(QStyle::PM_SmallIconSize) > 0); });
    row("styleHint", [](QStyle& style, QWidget*) { QVERIFY(style.styleHint(QStyle::SH_Menu_MouseTracking) > 0); });
    row("generatedIconPixmap", [](QStyle& style, QWidget*) {
        const QStyleOption option;
        QCOMPARE(style.generatedIconPixmap(QIcon::Normal, QPixmap(4, 4), &option).size(), QSize(4, 4));
    });
    row("itemPixmapRect", [](QStyle& style, QWidget*) {
        QCOMPARE(style.itemPixmapRect(QRect(0, 0, 10, 10), Qt::AlignCenter, QPixmap(4, 4)), QRect(3, 3, 4, 4));
    });
    row("itemTextRect", [](QStyle& style, QWidget* w) {
        QVERIFY(style.itemTextRect(w->fontMetrics(), QRect(0, 0, 99, 99), 0, true, QStringLiteral("x")).isValid());
    });
    row("drawItemPixmap", [](QStyle& style, QWidget*) {
        QImage image(9, 9, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        style.drawItemPixmap(&painter, image.rect(), Qt::AlignCenter, QPixmap(4, 4));
    });
    row("drawItemText", [](QStyle& style, QWidget* w) {
        QImage image(9, 9, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        style.drawItemText(&painter, image.rect(), 0, w->palette(), true, QStringLiteral("x"));
    });
    row("standardPalette", [](QStyle& style, QWidget*) { QVERIFY(style.standardPalette().resolveMask() != 0); });
    row("polish(QApplication*)", [](QStyle& style, QWidget*) { style.polish(qApp); });
    row("unpolish(QApplication*)", [](QStyle& style, QWidget*) { style.unpolish(qApp); });
    row("polish(QPalette&)", [](QStyle& style, QWidget*) {
        QPalette palette;
        style.polish(palette);
    });
}

void TestJXStyle::operationWithoutWidgetIsForwardedAlways()
{
    QFETCH(Operation, operation);
    QMenu menu;
    m_previous->calls().clear();
    operation(*m_style, &menu);
    QCOMPARE(m_previous->calls().value(0), QString::fromLatin1(QTest::currentDataTag()));
}

void TestJXStyle::customWidgetsContentsAreThoseOfTheWindowsStyle()
{
    const std::unique_ptr<QStyle> windows(QStyleFactory::create(QStringLiteral("Windows")));
    QMenu menu;
    QStyleOptionMenuItem item;
    item.initFrom(&menu);
    item.text = QStringLiteral("Copy\tCtrl+C");
    QCOMPARE(m_style->sizeFromContents(QStyle::CT_MenuItem, &item, QSize(50, 12), &menu),
             windows->sizeFromContents(QStyle::CT_MenuItem, &item, QSize(50, 12), &menu));
    QCOMPARE(m_style->standardPixmap(QStyle::SP_TitleBarMenuButton, nullptr, &menu).toImage(),
             windows->standardPixmap(QStyle::SP_TitleBarMenuButton, nullptr, &menu).toImage());
}

void TestJXStyle::everyDialogGetsTheSameIcons()
{
    // One made anew would leave the names of its pictures in Qt's cache for good.
    QPushButton button;
    QPushButton sameButtonLater;
    const QIcon icon = m_style->standardIcon(QStyle::SP_DialogOkButton, nullptr, &button);
    QVERIFY(!icon.isNull());
    QCOMPARE(m_style->standardIcon(QStyle::SP_DialogOkButton, nullptr, &sameButtonLater).cacheKey(), icon.cacheKey());
    QVERIFY(m_style->standardIcon(QStyle::SP_DialogCancelButton, nullptr, &button).cacheKey() != icon.cacheKey());
}

void TestJXStyle::ownsThePreviousStyle()
{
    QPointer<QStyle> previous(m_previous);
    QCOMPARE(m_previous->parent(), m_style);
    QApplication::setStyle(QStringLiteral("Fusion")); // the application deletes ours
    QVERIFY(previous.isNull());
}

void TestJXStyle::previousStyleOutlivesTheSwitch()
{
    QPointer<QStyle> outer(m_style);
    auto* inner = new CJXStyle;
    QApplication::setStyle(inner);
    QVERIFY(!outer.isNull());
    QCOMPARE(outer->parent(), inner);
    QCOMPARE(QApplication::style(), inner);
}

void TestJXStyle::paletteGroup_data()
{
    QTest::addColumn<QPalette::ColorRole>("role");
    QTest::addColumn<QColor>("color");
    const auto row = [](const char* name, QPalette::ColorRole role, const QColor& color) {
        QTest::newRow(name) << role << color;
    };
    row("Window", QPalette::Window, colorPaletteBase);
    row("Base", QPalette::Base, colorPaletteBase);
    row("AlternateBase", QPalette::AlternateBase, colorPaletteBase);
    row("Button", QPalette::Button, colorPaletteBase);
    row("WindowText", QPalette::WindowText, colorPaletteText);
    row("Text", QPalette::Text, colorPaletteText);
    row("ButtonText", QPalette::ButtonText, colorPaletteText);
    row("BrightText", QPalette::BrightText, colorPaletteHighlightedText);
    row("HighlightedText", QPalette::HighlightedText, colorPaletteHighlightedText);
    row("Light", QPalette::Light, colorPaletteFrame);
    row("Midlight", QPalette::Midlight, colorPaletteFrame);
    row("Dark", QPalette::Dark, colorPaletteFrame);
    row("Mid", QPalette::Mid, colorPaletteFrame);
    row("Shadow", QPalette::Shadow, colorPaletteFrame);
    row("Highlight", QPalette::Highlight, colorPaletteHighlight);
    row("Link", QPalette::Link, colorPaletteHighlight);
    row("LinkVisited", QPalette::LinkVisited, colorPaletteHighlight);
}

void TestJXStyle::paletteGroup()
{
    QFETCH(QPalette::ColorRole, role);
    QFETCH(QColor, color);
    const QColor foreign(1, 2, 3);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QPalette palette(foreign);
        palette.setColor(QPalette::All, role, foreign);
        m_style->setStandardPaletteColorGroup(&palette, group);
        QCOMPARE(palette.brush(group, role), QBrush(color, Qt::SolidPattern));
        for (const auto other : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            QVERIFY(other == group || palette.color(other, role) == foreign);
    }

    QListWidget list;
    list.setObjectName(QLatin1String(k_popupList));
    m_style->polish(&list);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        QCOMPARE(list.palette().color(group, role), color);
}

void TestJXStyle::popupViewsGetThePaletteAndOtherWidgetsKeepTheirs_data()
{
    QTest::addColumn<WidgetPtr>("widget");
    QTest::addColumn<bool>("ours");
    QTest::newRow("popup tree") << make<QTreeWidget>(k_popupTree) << true;
    QTest::newRow("popup list") << make<QListWidget>(k_popupList) << true;
    QTest::newRow("menu") << make<QMenu>() << false;
    QTest::newRow("menu bar") << make<QMenuBar>() << false;
    QTest::newRow("scroll bar") << make<QScrollBar>() << false;
    QTest::newRow("line edit") << make<QLineEdit>() << false;
    QTest::newRow("label") << make<QLabel>() << false;
}

void TestJXStyle::popupViewsGetThePaletteAndOtherWidgetsKeepTheirs()
{
    QFETCH(WidgetPtr, widget);
    QFETCH(bool, ours);
    const QPalette before = widget->palette();
    m_style->polish(widget.get());
    QCOMPARE(widget->palette() != before, ours);
    QCOMPARE(widget->testAttribute(Qt::WA_SetPalette), ours);
    m_style->unpolish(widget.get());
}

void TestJXStyle::lineEditWithAFrameShowsItsGround()
{
    QLineEdit framed;
    QLineEdit frameless;
    frameless.setFrame(false);
    m_style->polish(&framed);
    m_style->polish(&frameless);
    QVERIFY(framed.autoFillBackground());
    QVERIFY(!frameless.autoFillBackground());
    m_style->unpolish(&framed);
    QVERIFY(!framed.autoFillBackground());
}

void TestJXStyle::pixelMetric_data()
{
    QTest::addColumn<QStyle::PixelMetric>("metric");
    QTest::addColumn<int>("value");
    QTest::newRow("PM_ScrollBarExtent") << QStyle::PM_ScrollBarExtent << 16;
    QTest::newRow("PM_ScrollBarSliderMin") << QStyle::PM_ScrollBarSliderMin << 10;
    QTest::newRow("PM_DefaultFrameWidth") << QStyle::PM_DefaultFrameWidth << 1;
    QTest::newRow("PM_MenuBarPanelWidth") << QStyle::PM_MenuBarPanelWidth << 0;
}

void TestJXStyle::pixelMetric()
{
    QFETCH(QStyle::PixelMetric, metric);
    QFETCH(int, value);
    QScrollBar bar;
    QMenu menu;
    QPushButton button;
    QCOMPARE(m_style->pixelMetric(metric, nullptr, &bar), value);
    QCOMPARE(m_style->pixelMetric(metric, nullptr, &menu), value);
    QCOMPARE(m_style->pixelMetric(metric, nullptr, &button), m_previous->pixelMetric(metric, nullptr, &button));
}

void TestJXStyle::otherPixelMetricsAreThoseOfTheWindowsStyle()
{
    const std::unique_ptr<QStyle> windows(QStyleFactory::create(QStringLiteral("Windows")));
    QMenu menu;
    for (const auto metric : {QStyle::PM_MenuHMargin, QStyle::PM_MenuVMargin, QStyle::PM_MenuScrollerHeight,
                              QStyle::PM_MenuBarItemSpacing, QStyle::PM_TextCursorWidth, QStyle::PM_SmallIconSize})
        QCOMPARE(m_style->pixelMetric(metric, nullptr, &menu), windows->pixelMetric(metric, nullptr, &menu));
}

void TestJXStyle::menuOfTheSkinHasNoMargin()
{
    QMenu menu;
    QStyleOption option;
    option.initFrom(&menu);
    QCOMPARE(m_style->pixelMetric(QStyle::PM_MenuHMargin, &option, &menu), 0);
    QCOMPARE(m_style->pixelMetric(QStyle::PM_MenuVMargin, &option, &menu), 0);
}

void TestJXStyle::showDecorationSelected_data()
{
    QTest::addColumn<WidgetPtr>("widget");
    QTest::addColumn<int>("value");
    const std::unique_ptr<QStyle> windows(QStyleFactory::create(QStringLiteral("Windows")));
    QTest::newRow("popup tree") << make<QTreeWidget>(k_popupTree) << 0;
    QTest::newRow("popup list") << make<QListWidget>(k_popupList) << 1;
    QTest::newRow("menu") << make<QMenu>() << windows->styleHint(QStyle::SH_ItemView_ShowDecorationSelected);
}

void TestJXStyle::showDecorationSelected()
{
    QFETCH(WidgetPtr, widget);
    QFETCH(int, value);
    QCOMPARE(m_style->styleHint(QStyle::SH_ItemView_ShowDecorationSelected, nullptr, widget.get()), value);
}

void TestJXStyle::textInAFileDialogsLineEditIsReadable()
{
    QFileDialog dialog;
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    auto* edit = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    QVERIFY(edit != nullptr);
    const QImage empty = dialog.grab(edit->geometry()).toImage();
    edit->setText(QStringLiteral("settings.CJX"));
    const QImage filled = dialog.grab(edit->geometry()).toImage();
    QVERIFY(filled != empty);
    const int background = qGray(filled.pixel(filled.width() - 2, 2));
    int darkest = 255;
    for (int x = 0; x < filled.width(); ++x)
        for (int y = 0; y < filled.height(); ++y)
            darkest = qMin(darkest, qGray(filled.pixel(x, y)));
    QVERIFY(background - darkest > 128);
}

KTZ_TEST(QApplication, TestJXStyle)
#include "TestJXStyle.moc"
