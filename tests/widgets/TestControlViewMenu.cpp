#include "tests/widgets/CControlViewTest.h"
#include "widgets/CKnobLED.h"
#include "widgets/COnOffButton.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMimeData>
#include <QPointer>
#include <QTimer>

#include <functional>

/// The context menu of a page's controls.
class TestControlViewMenu : public CControlViewTest
{
    Q_OBJECT

  private slots:
    void init();

    void rightClickSelectsAndOffersCopyAndPaste_data();
    void rightClickSelectsAndOffersCopyAndPaste();
    void rightClickTellsTheWindowOfTheSelection_data();
    void rightClickTellsTheWindowOfTheSelection();
    void menuCommandsGoThroughTheParent();
    void rightClickOutsideTheControlFallsThrough();
    void hiddenPageLeavesContextMenusAlone();
    void otherEventsPassTheFilter();
    void reportFromTheDeviceClosesTheMenu();
    void pageCanGoWhileItsMenuIsOpen();

  private:
    /// Right-clicks at the widget and calls look while the menu is open, which it closes afterwards.
    void rightClick(QWidget* widget, const std::function<void(QMenu*)>& look);

    int m_menusSeen = 0;
};

void TestControlViewMenu::init()
{
    CControlViewTest::init();
    m_menusSeen = 0;
}

void TestControlViewMenu::rightClick(QWidget* widget, const std::function<void(QMenu*)>& look)
{
    const QPoint local = widget->rect().center();
    const QPoint global = widget->mapToGlobal(local);
    QCursor::setPos(global);
    QTimer watch;
    watch.setInterval(5);
    connect(&watch, &QTimer::timeout, this, [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu == nullptr)
            return;
        watch.stop();
        ++m_menusSeen;
        look(menu);
        if (QApplication::activePopupWidget() != nullptr)
            menu->close();
    });
    watch.start();
    QContextMenuEvent event(QContextMenuEvent::Mouse, local, global);
    QApplication::sendEvent(widget, &event);
}

void TestControlViewMenu::rightClickSelectsAndOffersCopyAndPaste_data()
{
    QTest::addColumn<int>("control");
    QTest::addColumn<bool>("canPaste");
    for (int control = 0; control <= 5; ++control) {
        QTest::addRow("control %d, its format on the clipboard", control) << control << true;
        QTest::addRow("control %d, another format on the clipboard", control) << control << false;
    }
}

void TestControlViewMenu::rightClickSelectsAndOffersCopyAndPaste()
{
    QFETCH(int, control);
    QFETCH(bool, canPaste);
    fillClipboard(canPaste ? mimeTypeOf(control) : QStringLiteral("text/plain"), QByteArray("1"));
    if (canPaste && control == 0)
        m_page5->copy(); // a knob's mark counts only if it is this process's own
    QSignalSpy selections(m_page2, &CControlView::selected);
    QWidget* target =
        control == 0 ? static_cast<QWidget*>(m_page2->findChild<CKnobLED*>()) : sliderOf(m_page2, control);
    rightClick(target, [&](QMenu* menu) {
        QCOMPARE(menu->parentWidget(), m_page2);
        QCOMPARE(menu->pos(), QCursor::pos());
        QCOMPARE(menu->font().family(), k_fontGLT7Bold);
        QCOMPARE(menu->font().pixelSize(), 7);
        const QList<QAction*> actions = menu->actions();
        QCOMPARE(actions.size(), 2);
        QCOMPARE(actions[0]->text(), QStringLiteral("&Copy"));
        QCOMPARE(actions[0]->shortcut(), QKeySequence(QStringLiteral("Ctrl+C")));
        QVERIFY(actions[0]->isEnabled());
        QCOMPARE(actions[1]->text(), QStringLiteral("&Paste"));
        QCOMPARE(actions[1]->shortcut(), QKeySequence(QStringLiteral("Ctrl+V")));
        QCOMPARE(actions[1]->isEnabled(), canPaste);
    });
    QCOMPARE(m_menusSeen, 1);
    QCOMPARE(selections.count(), 1);
    QVERIFY(m_page2->findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly).isEmpty());
    m_page2->copy();
    QVERIFY(QGuiApplication::clipboard()->mimeData()->hasFormat(mimeTypeOf(control)));
}

void TestControlViewMenu::rightClickTellsTheWindowOfTheSelection_data()
{
    QTest::addColumn<int>("control");
    for (int control = 0; control <= 5; ++control)
        QTest::addRow("control %d", control) << control;
}

void TestControlViewMenu::rightClickTellsTheWindowOfTheSelection()
{
    QFETCH(int, control);
    // On the arrows, whose press selects nothing.
    QWidget* target = control == 0 ? static_cast<QWidget*>(m_page2->findChild<CKnobLED*>())
                                   : editorOf(m_page2, control)->findChild<COnOffButton*>();
    QStringList order;
    connect(m_page2, &CControlView::selected, this, [&] { order.append(QStringLiteral("page")); });
    const int updates = m_window->m_menuUpdates;
    rightClick(target, [&](QMenu*) {
        QCOMPARE(order, QStringList{"page"});
        QCOMPARE(m_window->m_menuUpdates, updates + 1);
    });
    QCOMPARE(m_menusSeen, 1);
}

void TestControlViewMenu::menuCommandsGoThroughTheParent()
{
    fillClipboard(k_mimeType_CCNum, QByteArray("1"));
    rightClick(sliderOf(m_page2, k_ccNum), [](QMenu* menu) { menu->actions().at(0)->trigger(); });
    QCOMPARE(m_window->m_copies, 1);
    QCOMPARE(m_window->m_pastes, 0);
    rightClick(sliderOf(m_page2, k_ccNum), [](QMenu* menu) { menu->actions().at(1)->trigger(); });
    QCOMPARE(m_window->m_copies, 1);
    QCOMPARE(m_window->m_pastes, 1);
}

void TestControlViewMenu::rightClickOutsideTheControlFallsThrough()
{
    CSlideEditor* editor = editorOf(m_page2, k_ccNum);
    QSignalSpy selections(m_page2, &CControlView::selected);
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(-1, 5), editor->mapToGlobal(QPoint(-1, 5)));
    QVERIFY(!m_page2->eventFilter(editor, &event));
    QCOMPARE(selections.count(), 0);
    QVERIFY(QApplication::activePopupWidget() == nullptr);
}

void TestControlViewMenu::hiddenPageLeavesContextMenusAlone()
{
    CSlideEditor* editor = editorOf(m_page2, k_ccNum);
    m_page2->hide();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), editor->mapToGlobal(QPoint(5, 5)));
    QVERIFY(!m_page2->eventFilter(editor, &event));
}

void TestControlViewMenu::otherEventsPassTheFilter()
{
    CSlideEditor* editor = editorOf(m_page2, k_ccNum);
    QEvent event(QEvent::ToolTip);
    QVERIFY(!m_page2->eventFilter(editor, &event));
    QObject noWidget;
    QContextMenuEvent menuEvent(QContextMenuEvent::Mouse, QPoint(5, 5), editor->mapToGlobal(QPoint(5, 5)));
    QVERIFY(!m_page2->eventFilter(&noWidget, &menuEvent));
}

void TestControlViewMenu::reportFromTheDeviceClosesTheMenu()
{
    rightClick(sliderOf(m_page2, k_ccNum), [this](QMenu* menu) {
        const QPointer<QMenu> open = menu;
        m_connected->device.turn(2, 64);
        QTRY_VERIFY(open.isNull() || !open->isVisible());
    });
    QCOMPARE(m_menusSeen, 1);
}

void TestControlViewMenu::pageCanGoWhileItsMenuIsOpen()
{
    rightClick(m_page2->findChild<CKnobLED*>(), [this](QMenu*) { delete m_page2; });
    QCOMPARE(m_menusSeen, 1);
    QVERIFY(QApplication::activePopupWidget() == nullptr);
}

KTZ_TEST(QApplication, TestControlViewMenu)
#include "TestControlViewMenu.moc"
