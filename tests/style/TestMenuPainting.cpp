#include "style/CJXStyle.h"
#include "style/StyleColors.h"
#include "style/StyleImages.h"
#include "tests/style/CStyleCanvas.h"
#include "tests/support/CTestCase.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QStyleOption>

namespace
{
/// CJXStyle that shows no mnemonics.
class CPlainTextStyle : public CJXStyle
{
  public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* w, QStyleHintReturn* data) const override
    {
        return hint == SH_UnderlineShortcut ? 0 : CJXStyle::styleHint(hint, option, w, data);
    }
};

QIcon redIcon()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    QIcon icon;
    for (const auto mode : {QIcon::Normal, QIcon::Disabled})
        icon.addPixmap(pixmap, mode);
    return icon;
}

QStyleOptionMenuItem menuItemOption(QStyle::State state)
{
    QStyleOptionMenuItem item;
    item.rect = QRect(0, 0, 120, 18);
    item.state = state;
    item.font = CStyleCanvas::crispFont(10);
    item.text = QStringLiteral("Revert");
    return item;
}

CStyleCanvas drawItem(const QStyleOptionMenuItem& item, QStyle::ControlElement element = QStyle::CE_MenuItem)
{
    QMenu menu;
    CStyleCanvas canvas(item.rect.size());
    canvas.draw([&](QPainter* painter) {
        painter->setFont(item.font);
        QApplication::style()->drawControl(element, &item, painter, &menu);
    });
    return canvas;
}
} // namespace

class TestMenuPainting : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();

    void menuBarItem_data();
    void menuBarItem();
    void menuBarItemShowsItsIconInsteadOfText();
    void menuBarItemMnemonicFollowsTheStyleHint();
    void menuBarEmptyAreaIsWhite();

    void menuItem_data();
    void menuItem();
    void checkIndicator_data();
    void checkIndicator();
    void disabledCheckedItemShowsRadioCheckImageInDisabledTextColor();
    void itemThatCannotBeCheckedHasNoIndicator();
    void iconStandsInPlaceOfTheIndicator();
    void menuItemMnemonicFollowsTheStyleHint();
    void defaultItemIsBold();
    void labelAndShortcutKeepApart_data();
    void labelAndShortcutKeepApart();
    void subMenuArrow_data();
    void subMenuArrow();
    void itemUnderThePointerIsSelectedAndSunkenWhilePressed();
    void separator_data();
    void separator();
    void separatorTooNarrowForItsTextHasNoLine();
};

void TestMenuPainting::init()
{
    CTestCase::init();
    QApplication::setStyle(QStringLiteral("Fusion")); // what the application had before
    QApplication::setStyle(new CJXStyle);
}

void TestMenuPainting::menuBarItem_data()
{
    QTest::addColumn<QStyle::State>("state");
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QColor>("text");
    const QStyle::State enabled = QStyle::State_Enabled;
    const QStyle::State selected = QStyle::State_Selected;
    QTest::newRow("enabled") << enabled << colorMenuBarEnableBackgorund << colorMenuBarEnableText;
    QTest::newRow("selected") << (enabled | selected) << colorMenuBarSelectBackground << colorMenuBarSelectText;
    QTest::newRow("disabled") << QStyle::State(QStyle::State_None) << colorMenuBarDisableBackgorund
                              << colorMenuBarDisableText;
    QTest::newRow("disabled, selected") << selected << colorMenuBarDisableBackgorund << colorMenuBarDisableText;
}

void TestMenuPainting::menuBarItem()
{
    QFETCH(QStyle::State, state);
    QFETCH(QColor, background);
    QFETCH(QColor, text);
    const CStyleCanvas canvas = drawItem(menuItemOption(state), QStyle::CE_MenuBarItem);
    QCOMPARE(canvas.colors(), (QSet<QRgb>{background.rgb(), text.rgb()}));
    QVERIFY(!canvas.smoothsText());

    const QRect ink = canvas.bounds(text, canvas.image().rect());
    QVERIFY(qAbs(ink.left() - (canvas.image().width() - 1 - ink.right())) <= 2);
    QVERIFY(qAbs(ink.center().y() - canvas.image().rect().center().y()) <= 2);
}

void TestMenuPainting::menuBarItemShowsItsIconInsteadOfText()
{
    for (const auto state : {QStyle::State_Enabled, QStyle::State_None}) {
        QStyleOptionMenuItem item = menuItemOption(state);
        item.icon = redIcon();
        const CStyleCanvas canvas = drawItem(item, QStyle::CE_MenuBarItem);
        QCOMPARE(canvas.bounds(Qt::red, canvas.image().rect()), QRect(52, 1, 16, 16));
        QCOMPARE(canvas.colors(), (QSet<QRgb>{QColor(Qt::red).rgb(), QColor(Qt::white).rgb()}));
    }
}

void TestMenuPainting::menuBarItemMnemonicFollowsTheStyleHint()
{
    QStyleOptionMenuItem item = menuItemOption(QStyle::State_Enabled);
    const QImage plain = drawItem(item, QStyle::CE_MenuBarItem).image();
    item.text.prepend(QLatin1Char('&'));
    QVERIFY(drawItem(item, QStyle::CE_MenuBarItem).image() != plain);
    QApplication::setStyle(new CPlainTextStyle);
    QCOMPARE(drawItem(item, QStyle::CE_MenuBarItem).image(), plain);
}

void TestMenuPainting::menuBarEmptyAreaIsWhite()
{
    QMenuBar bar;
    CStyleCanvas canvas({40, 20});
    canvas.draw([&](QPainter* painter) {
        QStyleOptionMenuItem option;
        option.rect = QRect(0, 0, 40, 20);
        QApplication::style()->drawControl(QStyle::CE_MenuBarEmptyArea, &option, painter, &bar);
    });
    QCOMPARE(canvas.colors(), QSet<QRgb>{qRgb(255, 255, 255)});
}

void TestMenuPainting::menuItem_data()
{
    QTest::addColumn<QStyle::State>("state");
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QColor>("text");
    const QStyle::State enabled = QStyle::State_Enabled;
    const QStyle::State selected = QStyle::State_Selected;
    const QStyle::State sunken = QStyle::State_Sunken;
    const auto row = [](const char* name, QStyle::State state, const QColor& background, const QColor& text) {
        QTest::newRow(name) << state << background << text;
    };
    row("enabled", enabled, colorMenuEnableBackground, colorMenuEnableText);
    row("selected", enabled | selected, colorMenuSelectBackground, colorMenuSelectText);
    row("sunken", enabled | sunken, colorMenuSunkenBackground, colorMenuSunkenText);
    row("selected and sunken", enabled | selected | sunken, colorMenuSunkenBackground, colorMenuSunkenText);
    row("disabled", QStyle::State_None, colorMenuDisableBackground, colorMenuDisableText);
    row("disabled, selected", selected, colorMenuSelectBackground, colorMenuDisableText);
    row("disabled, sunken", sunken, colorMenuSunkenBackground, colorMenuDisableText);
}

void TestMenuPainting::menuItem()
{
    QFETCH(QStyle::State, state);
    QFETCH(QColor, background);
    QFETCH(QColor, text);
    const CStyleCanvas canvas = drawItem(menuItemOption(state));
    QCOMPARE(canvas.colors(), (QSet<QRgb>{background.rgb(), text.rgb()}));
    QVERIFY(!canvas.smoothsText());
}

void TestMenuPainting::checkIndicator_data()
{
    QTest::addColumn<QStyle::State>("state");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<ImageData>("picture");
    const QStyle::State enabled = QStyle::State_Enabled;
    const QStyle::State sunken = QStyle::State_Sunken;
    const auto row = [](const char* name, QStyle::State state, bool checked, ImageData picture) {
        QTest::newRow(name) << state << checked << Qt::LeftToRight << picture;
    };
    row("unchecked", enabled, false, radio_image);
    row("checked", enabled, true, radio_check_image);
    row("unchecked, pressed", enabled | sunken, false, radio_check_image);
    row("checked, pressed", enabled | sunken, true, radio_check_image);
    row("unchecked, pressed, disabled", sunken, false, radio_image);
    row("unchecked, disabled", QStyle::State_None, false, radio_image);
    QTest::newRow("checked, right to left") << enabled << true << Qt::RightToLeft << ImageData(radio_check_image);
}

void TestMenuPainting::checkIndicator()
{
    QFETCH(QStyle::State, state);
    QFETCH(bool, checked);
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(ImageData, picture);
    QStyleOptionMenuItem item = menuItemOption(state);
    item.rect.setHeight(17);
    item.checkType = QStyleOptionMenuItem::NonExclusive;
    item.checked = checked;
    item.direction = direction;
    const int x = direction == Qt::LeftToRight ? 5 : item.rect.width() - 10;
    QCOMPARE(drawItem(item).image().copy(x, 6, 5, 5), QImage(picture).convertToFormat(QImage::Format_RGB32));
}

void TestMenuPainting::disabledCheckedItemShowsRadioCheckImageInDisabledTextColor()
{
    QStyleOptionMenuItem item = menuItemOption(QStyle::State_None);
    item.checkType = QStyleOptionMenuItem::Exclusive;
    item.checked = true;
    const CStyleCanvas canvas = drawItem(item);
    QCOMPARE(canvas.at(7, 8), QColor(0, 204, 0));
    const QRect label(12, 0, 108, 18);
    QCOMPARE(canvas.colors(label), (QSet<QRgb>{colorMenuDisableBackground.rgb(), colorMenuDisableText.rgb()}));
}

void TestMenuPainting::itemThatCannotBeCheckedHasNoIndicator()
{
    QStyleOptionMenuItem item = menuItemOption(QStyle::State_Enabled);
    item.checked = true;
    const CStyleCanvas canvas = drawItem(item);
    QCOMPARE(canvas.colors(QRect(0, 0, 12, 18)), QSet<QRgb>{colorMenuEnableBackground.rgb()});
}

void TestMenuPainting::iconStandsInPlaceOfTheIndicator()
{
    QStyleOptionMenuItem item = menuItemOption(QStyle::State_Enabled);
    item.checkType = QStyleOptionMenuItem::NonExclusive;
    item.checked = true;
    item.icon = redIcon();
    item.maxIconWidth = 20;
    const CStyleCanvas canvas = drawItem(item);
    QCOMPARE(canvas.bounds(Qt::red, canvas.image().rect()), QRect(5, 1, 16, 16));
    QVERIFY(canvas.bounds(colorMenuEnableText, canvas.image().rect()).left() > 20);
    QCOMPARE(canvas.bounds(QColor(0, 204, 0), canvas.image().rect()), QRect());
}

void TestMenuPainting::menuItemMnemonicFollowsTheStyleHint()
{
    QStyleOptionMenuItem item = menuItemOption(QStyle::State_Enabled);
    const QImage plain = drawItem(item).image();
    item.text.prepend(QLatin1Char('&'));
    QVERIFY(drawItem(item).image() != plain);
    QApplication::setStyle(new CPlainTextStyle);
    QCOMPARE(drawItem(item).image(), plain);
}

void TestMenuPainting::defaultItemIsBold()
{
    QStyleOptionMenuItem item = menuItemOption(QStyle::State_Enabled);
    const QImage plain = drawItem(item).image();
    item.menuItemType = QStyleOptionMenuItem::DefaultItem;
    const QImage bold = drawItem(item).image();
    item.font.setBold(true);
    item.menuItemType = QStyleOptionMenuItem::Normal;
    QVERIFY(bold != plain);
    QCOMPARE(bold, drawItem(item).image());
}

void TestMenuPainting::labelAndShortcutKeepApart_data()
{
    QTest::addColumn<int>("pixelSize");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    for (const int size : {7, 8, 10, 13}) {
        QTest::addRow("%d pixels", size) << size << Qt::LeftToRight;
        QTest::addRow("%d pixels, right to left", size) << size << Qt::RightToLeft;
    }
}

void TestMenuPainting::labelAndShortcutKeepApart() // in a menu as wide as it wants to be
{
    QFETCH(int, pixelSize);
    QFETCH(Qt::LayoutDirection, direction);
    QMenu menu;
    menu.setFont(CStyleCanvas::crispFont(pixelSize));
    menu.setLayoutDirection(direction);
    QAction* label = menu.addAction(QStringLiteral("Revert To Initial State"));
    QAction* shortcut = menu.addAction(QStringLiteral("\tCtrl+V"));
    QAction* both = menu.addAction(QStringLiteral("Revert To Initial State\tCtrl+V"));
    label->setCheckable(true);
    menu.resize(menu.sizeHint());

    CStyleCanvas canvas(menu.size());
    canvas.draw([&menu](QPainter* painter) { menu.render(painter); });
    const QRect check(direction == Qt::LeftToRight ? 0 : menu.width() - 12, 0, 12, menu.height());
    const QRect wholeRow = menu.actionGeometry(label);
    const QRect textRow =
        direction == Qt::LeftToRight ? wholeRow.adjusted(12, 0, 0, 0) : wholeRow.adjusted(0, 0, -12, 0);
    const QRect labelInk = canvas.bounds(colorMenuEnableText, textRow);
    const QRect shortcutInk = canvas.bounds(colorMenuEnableText, menu.actionGeometry(shortcut));
    const QRect bothInk = canvas.bounds(colorMenuEnableText, menu.actionGeometry(both));

    QVERIFY(!labelInk.isEmpty() && !shortcutInk.isEmpty());
    QVERIFY(!check.intersects(labelInk));
    if (direction == Qt::LeftToRight)
        QVERIFY(labelInk.right() + pixelSize < shortcutInk.left() && shortcutInk.right() < wholeRow.right());
    else
        QVERIFY(shortcutInk.right() + pixelSize < labelInk.left() && shortcutInk.left() > wholeRow.left());
    QCOMPARE(bothInk.left(), qMin(labelInk.left(), shortcutInk.left()));
    QCOMPARE(bothInk.right(), qMax(labelInk.right(), shortcutInk.right()));
    for (QAction* action : {label, shortcut, both}) { // nothing is cut off at the top or the bottom
        const QRect row = menu.actionGeometry(action);
        const QRect ink = canvas.bounds(colorMenuEnableText, action == label ? textRow : row);
        QVERIFY(ink.top() > row.top() && ink.bottom() < row.bottom());
    }
}

void TestMenuPainting::subMenuArrow_data()
{
    QTest::addColumn<QStyle::State>("state");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<QColor>("color");
    const QStyle::State enabled = QStyle::State_Enabled;
    const QStyle::State selected = QStyle::State_Selected;
    QTest::newRow("enabled") << enabled << Qt::LeftToRight << colorMenuEnableText;
    QTest::newRow("selected") << (enabled | selected) << Qt::LeftToRight << colorMenuSelectText;
    QTest::newRow("disabled") << QStyle::State(QStyle::State_None) << Qt::LeftToRight << colorMenuDisableText;
    QTest::newRow("right to left") << enabled << Qt::RightToLeft << colorMenuEnableText;
}

void TestMenuPainting::subMenuArrow()
{
    QFETCH(QStyle::State, state);
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(QColor, color);
    QStyleOptionMenuItem item = menuItemOption(state);
    item.text.clear();
    item.direction = direction;
    item.menuItemType = QStyleOptionMenuItem::SubMenu;
    const CStyleCanvas canvas = drawItem(item);
    const QRect arrow = canvas.bounds(color, canvas.image().rect());
    const QRect end = QStyle::visualRect(direction, item.rect, QRect(100, 0, 20, 18));
    QVERIFY(!arrow.isEmpty() && end.contains(arrow));
    const bool pointsRight = direction == Qt::LeftToRight;
    const int tip = pointsRight ? arrow.right() : arrow.left();
    const int base = pointsRight ? arrow.left() : arrow.right();
    QCOMPARE(canvas.bounds(color, QRect(tip, 0, 1, 18)).height(), 1);
    QCOMPARE(canvas.bounds(color, QRect(base, 0, 1, 18)).height(), arrow.height());
    QVERIFY(arrow.height() >= 5);
}

void TestMenuPainting::itemUnderThePointerIsSelectedAndSunkenWhilePressed()
{
    QMenu menu;
    menu.setFont(CStyleCanvas::crispFont(10));
    QAction* action = menu.addAction(QStringLiteral("Revert"));
    menu.addAction(QStringLiteral("Reset"));
    menu.popup(QPoint(50, 50));
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    const QRect row = menu.actionGeometry(action);
    const auto colors = [&] {
        CStyleCanvas canvas(menu.size());
        canvas.draw([&menu](QPainter* painter) { menu.render(painter); });
        return canvas.colors(row);
    };
    QCOMPARE(colors(), (QSet<QRgb>{colorMenuEnableBackground.rgb(), colorMenuEnableText.rgb()}));
    QTest::mouseMove(&menu, row.center() - QPoint(1, 0));
    QTest::mouseMove(&menu, row.center());
    QTRY_COMPARE(colors(), (QSet<QRgb>{colorMenuSelectBackground.rgb(), colorMenuSelectText.rgb()}));
    QTest::mousePress(&menu, Qt::LeftButton, {}, row.center());
    QCOMPARE(colors(), (QSet<QRgb>{colorMenuSunkenBackground.rgb(), colorMenuSunkenText.rgb()}));
    QTest::mouseRelease(&menu, Qt::LeftButton, {}, row.center());
}

void TestMenuPainting::separator_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("plain") << QString() << Qt::LeftToRight;
    QTest::newRow("plain, right to left") << QString() << Qt::RightToLeft;
    QTest::newRow("text") << QStringLiteral("Knob") << Qt::LeftToRight;
    QTest::newRow("text, right to left") << QStringLiteral("Knob") << Qt::RightToLeft;
}

void TestMenuPainting::separator()
{
    QFETCH(QString, text);
    QFETCH(Qt::LayoutDirection, direction);
    QStyleOptionMenuItem item = menuItemOption(QStyle::State_Enabled | QStyle::State_Selected);
    item.rect = QRect(0, 0, 120, 15);
    item.text = text;
    item.direction = direction;
    item.menuItemType = QStyleOptionMenuItem::Separator;
    const CStyleCanvas canvas = drawItem(item);
    QCOMPARE(canvas.colors(), (QSet<QRgb>{colorMenuEnableBackground.rgb(), colorMenuEnableText.rgb()}));

    const int gap = text.isEmpty() ? 0 : QFontMetrics(item.font).horizontalAdvance(text) + 5;
    const QRect logicalLine(5 + gap, 7, 110 - gap, 1);
    const QRect line = QStyle::visualRect(direction, item.rect, logicalLine);
    const QRect lineRegion = QStyle::visualRect(direction, item.rect, QRect(5 + gap, 0, 115 - gap, 15));
    QCOMPARE(canvas.bounds(colorMenuEnableText, lineRegion), line);
    QCOMPARE(canvas.colors(line), QSet<QRgb>{colorMenuEnableText.rgb()});

    const QRect textRegion = QStyle::visualRect(direction, item.rect, QRect(0, 0, 5 + gap, 15));
    const QRect ink = canvas.bounds(colorMenuEnableText, textRegion);
    QCOMPARE(ink.isEmpty(), text.isEmpty());
    QVERIFY(ink.isEmpty() || QStyle::visualRect(direction, item.rect, QRect(5, 0, gap - 5, 15)).contains(ink));
}

void TestMenuPainting::separatorTooNarrowForItsTextHasNoLine()
{
    QStyleOptionMenuItem item = menuItemOption(QStyle::State_Enabled);
    item.rect = QRect(0, 0, 14, 15);
    item.text.clear();
    item.menuItemType = QStyleOptionMenuItem::Separator;
    QCOMPARE(drawItem(item).bounds(colorMenuEnableText, item.rect), QRect(5, 7, 4, 1));
    item.rect.setWidth(10);
    QCOMPARE(drawItem(item).colors(), QSet<QRgb>{colorMenuEnableBackground.rgb()});
}

KTZ_TEST(QApplication, TestMenuPainting)
#include "TestMenuPainting.moc"
