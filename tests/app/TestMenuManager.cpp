#include "app/CMenuManager.h"
#include "tests/app/EditorFixture.h"
#include "tests/support/CTestCase.h"

#include <QMenu>

class TestMenuManager : public CTestCase
{
    Q_OBJECT

  private slots:
    void barSitsInItsFrame();
    void menusInOrder();
    void items_data();
    void items();
    void fontOfBarAndMenus();
    void unknownIdIsIgnored();
    void itemsByNumber_data();
    void itemsByNumber();
    void wholeBarIsDisabled();
    void withoutAParentNothingIsBuilt();
};

void TestMenuManager::barSitsInItsFrame()
{
    EditorFixture fixture;
    fixture.start();
    const QWidget* frame = fixture.menuBar()->parentWidget();
    QVERIFY(frame->inherits("QFrame"));
    QCOMPARE(frame->parentWidget(), fixture.window.get());
    QCOMPARE(frame->geometry(), QRect(100, 18, 110, 21));
    QCOMPARE(fixture.menuBar()->geometry(), QRect(0, 0, 110, 21));
    QVERIFY(!fixture.menuBar()->isNativeMenuBar());
}

void TestMenuManager::menusInOrder()
{
    EditorFixture fixture;
    fixture.start();
    QStringList titles;
    const QList<QAction*> menus = fixture.menuBar()->actions();
    for (const QAction* menu : menus)
        titles.append(menu->text());
    QCOMPARE(titles, (QStringList{QStringLiteral("&File"), QStringLiteral("&Edit"), QStringLiteral("&Help")}));
}

void TestMenuManager::items_data()
{
    QTest::addColumn<int>("menu");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shortcut");
    QTest::newRow("Open") << 0 << 0 << "&Open"
                          << "Ctrl+O";
    QTest::newRow("separator") << 0 << 1 << ""
                               << "";
    QTest::newRow("Save") << 0 << 2 << "&Save"
                          << "Ctrl+S";
    QTest::newRow("Save As") << 0 << 3 << "Save &As..."
                             << "";
    QTest::newRow("Copy") << 1 << 0 << "&Copy"
                          << "Ctrl+C";
    QTest::newRow("Paste") << 1 << 1 << "&Paste"
                           << "Ctrl+V";
    QTest::newRow("Revert") << 1 << 2 << "&Revert To Initial State"
                            << "";
    QTest::newRow("Load Factory Preset") << 1 << 3 << "&Load Factory Preset"
                                         << "";
    QTest::newRow("Manual") << 2 << 0 << "&Manual"
                            << "F1";
    QTest::newRow("About") << 2 << 1 << "&About"
                           << "";
}

void TestMenuManager::items()
{
    QFETCH(int, menu);
    QFETCH(int, position);
    QFETCH(QString, text);
    QFETCH(QString, shortcut);
    EditorFixture fixture;
    fixture.start();
    const QAction* item = fixture.menuBar()->actions()[menu]->menu()->actions().value(position);
    QVERIFY(item != nullptr);
    QCOMPARE(item->text(), text);
    QCOMPARE(item->shortcut().toString(), shortcut);
    QCOMPARE(item->isSeparator(), text.isEmpty());
}

void TestMenuManager::fontOfBarAndMenus()
{
    EditorFixture fixture;
    fixture.start();
    QList<const QWidget*> widgets{fixture.menuBar()};
    const QList<QAction*> menus = fixture.menuBar()->actions();
    for (const QAction* menu : menus)
        widgets.append(menu->menu());
    for (const QWidget* widget : widgets) {
        QCOMPARE(widget->font().family(), QStringLiteral("Morlan GLT7 Bold"));
        QCOMPARE(widget->font().pixelSize(), 7);
        QCOMPARE(widget->font().styleStrategy(), QFont::NoAntialias);
    }
}

void TestMenuManager::unknownIdIsIgnored()
{
    CMenuManager unbuilt;
    for (const int id : {-1, 0, 1, 2, 3, 4})
        unbuilt.setMenuItemEnabledByID(id, false);
    unbuilt.setMenuBarEnabled(false);

    EditorFixture fixture;
    fixture.start();
    CMenuManager manager;
    manager.initialize(fixture.window.get());
    manager.setMenuItemEnabledByID(4, false);
    manager.setMenuItemEnabledByID(-1, false);
    const QList<QAction*> menus = fixture.window->findChildren<QMenuBar*>().last()->actions();
    for (const QAction* menu : menus) {
        const QList<QAction*> items = menu->menu()->actions();
        for (const QAction* item : items)
            QVERIFY(item->isEnabled());
    }
}

void TestMenuManager::itemsByNumber_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("Copy") << 0;
    QTest::newRow("Paste") << 1;
    QTest::newRow("Revert") << 2;
    QTest::newRow("Load Factory Preset") << 3;
}

void TestMenuManager::itemsByNumber()
{
    QFETCH(int, id);
    EditorFixture fixture;
    fixture.start();
    CMenuManager manager;
    manager.initialize(fixture.window.get());
    const QMenu* edit = fixture.window->findChildren<QMenuBar*>().last()->actions()[1]->menu();
    QVERIFY(id < edit->actions().size());
    manager.setMenuItemEnabledByID(id, false);
    for (int item = 0; item < edit->actions().size(); ++item)
        QCOMPARE(edit->actions()[item]->isEnabled(), item != id);
    manager.setMenuItemEnabledByID(id, true);
    QVERIFY(edit->actions()[id]->isEnabled());
}

void TestMenuManager::wholeBarIsDisabled()
{
    EditorFixture fixture;
    fixture.startWhole();
    QVERIFY(fixture.menuBar()->isEnabled());
    CMenuManager manager;
    manager.initialize(fixture.window.get());
    const QMenuBar* bar = fixture.window->findChildren<QMenuBar*>().last();
    manager.setMenuBarEnabled(false);
    QVERIFY(!bar->isEnabled());
    manager.setMenuBarEnabled(true);
    QVERIFY(bar->isEnabled());
}

void TestMenuManager::withoutAParentNothingIsBuilt()
{
    CMenuManager manager;
    manager.initialize(nullptr);
    manager.setMenuBarEnabled(true);
    QVERIFY(manager.findChildren<QMenuBar*>().isEmpty());
}

KTZ_TEST(QApplication, TestMenuManager)
#include "TestMenuManager.moc"
