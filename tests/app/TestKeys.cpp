#include "tests/app/EditorFixture.h"
#include "tests/support/CPaintCounter.h"
#include "tests/support/CTestCase.h"
#include "widgets/CFrameGate.h"
#include "widgets/CLineEdit.h"
#include "widgets/COnOffButton.h"
#include "widgets/CSpinButton.h"

#include <QClipboard>
#include <QFile>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPropertyAnimation>
#include <QTemporaryDir>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <functional>

namespace
{
constexpr QColor k_markColor{102, 102, 102};

/// A started editor that has the keyboard. Every key goes to the window, as from the system.
struct Keyboard : EditorFixture
{
    Keyboard()
    {
        QGuiApplication::clipboard()->clear();
    }

    void startActive()
    {
        startWhole();
        activate();
    }

    /// As the window manager does that a display of a test has not, after a dialog too.
    void activate() const
    {
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }

    void press(QKeyCombination keys) const
    {
        QTest::keyClick(window->windowHandle(), keys.key(), keys.keyboardModifiers());
    }

    void press(const std::initializer_list<QKeyCombination>& several) const
    {
        for (const QKeyCombination keys : several)
            press(keys);
    }

    void type(const QByteArray& text) const
    {
        for (const char character : text)
            QTest::keyClick(window->windowHandle(), character);
    }

    /// A field's parameter id, a page's knob, or a button's id.
    [[nodiscard]] int focused() const
    {
        for (const QWidget* widget = window->focusWidget(); widget != nullptr; widget = widget->parentWidget()) {
            if (const auto* field = qobject_cast<const CSlideEditor*>(widget))
                return field->controllerID();
            if (const auto* button = qobject_cast<const COnOffButton*>(widget))
                return button->controllerID();
            for (int knob = 0; knob < k_numOfKnobs; ++knob) {
                if (widget == page(knob))
                    return knob;
            }
        }
        return -1;
    }

    /// What Copy puts on the clipboard.
    [[nodiscard]] QStringList copied() const
    {
        press(Qt::CTRL | Qt::Key_C);
        return QGuiApplication::clipboard()->mimeData()->formats();
    }

    /// Where the mark of what is selected on a page is, in global coordinates.
    [[nodiscard]] QRect markOnScreen(int knob) const
    {
        const QRect mark = page(knob)->markRect();
        return {page(knob)->mapToGlobal(mark.topLeft()), mark.size()};
    }

    /// The knobs on whose pages a mark is seen, as it is painted.
    [[nodiscard]] QList<int> marked() const
    {
        return pagesWith([](const QRect& mark) { return mark.topLeft() + QPoint(3, 0); });
    }

    /// Those whose mark is closed to a frame.
    [[nodiscard]] QList<int> framed() const
    {
        return pagesWith([](const QRect& mark) { return QPoint(mark.center().x(), mark.bottom()); });
    }

    [[nodiscard]] bool isTyping() const
    {
        const QList<CLineEdit*> fields = window->findChildren<CLineEdit*>();
        return std::ranges::any_of(fields, &QWidget::isVisible);
    }

  private:
    [[nodiscard]] QList<int> pagesWith(QPoint (*place)(const QRect&)) const
    {
        QList<int> knobs;
        const QImage picture = window->grab().toImage();
        for (int knob = 0; knob < k_numOfKnobs; ++knob) {
            const QPoint point = page(knob)->mapTo(window.get(), place(page(knob)->markRect()));
            if (picture.pixelColor(point * picture.devicePixelRatio()) == k_markColor)
                knobs.append(knob);
        }
        return knobs;
    }
};

/// Types into the dialogs that open, one after the other: each gets the keys of its turn once it has the keyboard.
class CDialogKeys : public QObject
{
    Q_OBJECT

  public:
    using Keys = std::function<void(QWindow*)>;

    explicit CDialogKeys(const QList<Keys>& turns) : m_turns(turns)
    {
        startTimer(5);
    }

    [[nodiscard]] qsizetype turnsLeft() const
    {
        return m_turns.size();
    }

    static Keys text(const QString& text)
    {
        return [text](QWindow* dialog) {
            for (const QChar character : text)
                QTest::keyClick(dialog, character.toLatin1());
            QTest::keyClick(dialog, Qt::Key_Return);
        };
    }

    static Keys alt(Qt::Key key)
    {
        return [key](QWindow* dialog) { QTest::keyClick(dialog, key, Qt::AltModifier); };
    }

  protected:
    void timerEvent(QTimerEvent*) override
    {
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog == nullptr || dialog == m_last || !dialog->isActiveWindow() || m_turns.isEmpty())
            return;
        m_last = dialog;
        m_turns.takeFirst()(dialog->windowHandle());
    }

  private:
    QList<Keys> m_turns;
    QPointer<QWidget> m_last;
};

/// Closes the menu that opens, and tells of which menu it was.
QMenu* takeMenu()
{
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu != nullptr)
        menu->close();
    return menu;
}
} // namespace

/// The editor without any pointer.
class TestKeys : public CTestCase
{
    Q_OBJECT

  private slots:
    void tabGoesInReadingOrder();
    void tabSelectsTheField();
    void tabGoesOnFromTheSelectedControl();
    void tabEndsTyping();
    void nothingBehindAViewGetsTheKeys();
    void viewGivesTheKeysBack();
    void hiddenWindowHasNowhereToGo();
    void pagesByNumber();
    void windowFollowsTheKeysOntoTheScreen();
    void pointerLeavesTheWindowWhereItIs();
    void digitsBeginTyping_data();
    void digitsBeginTyping();
    void digitsElsewhereDoNothing();
    void escapeKeepsTheValue();
    void arrowKeysChangeTheField();
    void wheelBringsTheKeys();
    void windowByKeys();
    void pinByKey();
    void spacePressesTheButtons();
    void menusByKeys_data();
    void menusByKeys();
    void contextMenuByKey_data();
    void contextMenuByKey();
    void oneMarkIsSeen();
    void anotherStepPaintsNoRing();
    void clickedMarkPaintsNoRing();
    void buttonWithTheFocusIsMarked();
    void wholeSession();

  private:
    static void watchRings(const Keyboard& keyboard, CPaintCounter* counter);
};

void TestKeys::tabGoesInReadingOrder()
{
    Keyboard keyboard;
    keyboard.startActive();
    QList<int> expected;
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        for (const int category : {k_ledTypeCategory, k_ccNumCategory, k_midiChCategory, k_maxCategory, k_minCategory})
            expected.append(category + knob);
    }
    expected.append({100, 101, 102});

    QList<int> forwards;
    for (qsizetype i = 0; i < expected.size(); ++i) {
        keyboard.press(Qt::Key_Tab);
        forwards.append(keyboard.focused());
    }
    QCOMPARE(forwards, expected);
    keyboard.press(Qt::Key_Tab);
    QCOMPARE(keyboard.focused(), expected.first());

    QList<int> backwards;
    for (qsizetype i = 0; i < expected.size(); ++i) {
        keyboard.press(Qt::SHIFT | Qt::Key_Backtab);
        backwards.prepend(keyboard.focused());
    }
    QCOMPARE(backwards, expected);
}

void TestKeys::tabSelectsTheField()
{
    Keyboard keyboard;
    keyboard.startActive();
    keyboard.press({Qt::CTRL | Qt::Key_4, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab});
    QCOMPARE(keyboard.copied(), QStringList{k_mimeType_MIDICh});
    QVERIFY(keyboard.action(k_pasteString)->isEnabled());
    keyboard.press(Qt::Key_Tab);
    QVERIFY(!keyboard.action(k_pasteString)->isEnabled()); // a maximum takes no channel
}

void TestKeys::tabGoesOnFromTheSelectedControl()
{
    Keyboard keyboard;
    keyboard.startActive();
    emit keyboard.knobLED(5)->selected();
    keyboard.press(Qt::Key_Tab);
    QCOMPARE(keyboard.focused(), 1505);
    keyboard.window->setFocus();
    emit keyboard.editor(1203)->selected(keyboard.editor(1203));
    keyboard.press(Qt::SHIFT | Qt::Key_Backtab);
    QCOMPARE(keyboard.focused(), 1103);
}

void TestKeys::tabEndsTyping()
{
    Keyboard keyboard;
    keyboard.startActive();
    keyboard.press({Qt::CTRL | Qt::Key_3, Qt::Key_Tab, Qt::Key_Tab});
    keyboard.type("42");
    QVERIFY(keyboard.isTyping());
    keyboard.press(Qt::Key_Tab);
    QVERIFY(!keyboard.isTyping());
    QCOMPARE(keyboard.editor(1102)->getValue(), 42);
    QCOMPARE(keyboard.focused(), 1202);
    QCOMPARE(keyboard.copied(), QStringList{k_mimeType_MIDICh});
    keyboard.type("7");
    keyboard.press(Qt::CTRL | Qt::Key_1);
    QCOMPARE(keyboard.editor(1202)->getValue(), 6);
    QCOMPARE(keyboard.copied(), QStringList{k_mimeType_Knob});
}

void TestKeys::nothingBehindAViewGetsTheKeys()
{
    Keyboard keyboard;
    keyboard.startActive();
    keyboard.press({Qt::CTRL | Qt::Key_2, Qt::Key_Tab});
    keyboard.window->about();
    for (const QKeyCombination keys : {QKeyCombination(Qt::Key_Tab), QKeyCombination(Qt::Key_Backtab),
                                       Qt::CTRL | Qt::Key_5, QKeyCombination(Qt::Key_F10), Qt::SHIFT | Qt::Key_F10}) {
        keyboard.press(keys);
        QCOMPARE(keyboard.focused(), -1);
        QCOMPARE(takeMenu(), nullptr);
        // Not looked for in the picture, over which the view comes down.
        for (int knob = 0; knob < k_numOfKnobs; ++knob)
            QCOMPARE(keyboard.page(knob)->isMarked(), knob == 1);
    }
}

void TestKeys::viewGivesTheKeysBack()
{
    Keyboard keyboard;
    keyboard.startActive();
    keyboard.press({Qt::CTRL | Qt::Key_2, Qt::Key_Tab});
    keyboard.window->about();
    QCOMPARE(keyboard.focused(), -1);
    keyboard.window->findChild<CInfoView*>()->closeView();
    QTRY_COMPARE(keyboard.focused(), 1501);
}

void TestKeys::hiddenWindowHasNowhereToGo()
{
    Keyboard keyboard;
    keyboard.startActive();
    keyboard.window->hide();
    QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
    QApplication::sendEvent(keyboard.window.get(), &tab);
    QCOMPARE(keyboard.focused(), -1);
}

void TestKeys::pagesByNumber()
{
    Keyboard keyboard;
    keyboard.startActive();
    for (int knob = k_numOfKnobs - 1; knob >= 0; --knob) {
        keyboard.press(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + knob));
        QCOMPARE(keyboard.focused(), knob);
        QCOMPARE(keyboard.marked(), QList<int>{knob});
        QCOMPARE(keyboard.copied(), QStringList{k_mimeType_Knob});
        keyboard.press(Qt::Key_Tab);
        QCOMPARE(keyboard.focused(), 1500 + knob);
    }
}

void TestKeys::windowFollowsTheKeysOntoTheScreen()
{
    Keyboard keyboard;
    keyboard.startActive();
    const QRect screen = keyboard.window->screen()->availableGeometry();
    const auto isSeen = [&](int knob) { return screen.contains(keyboard.markOnScreen(knob)); };

    keyboard.window->move(screen.left() + 100, screen.bottom() - 200);
    keyboard.press(Qt::CTRL | Qt::Key_4);
    QVERIFY(isSeen(3));
    keyboard.press(Qt::SHIFT | Qt::Key_Backtab); // the lowest field of the page before
    QVERIFY(isSeen(2));
    keyboard.press(Qt::CTRL | Qt::Key_8);
    QVERIFY(isSeen(7));
    for (int field = 0; field < 5; ++field)
        keyboard.press(Qt::Key_Tab);
    QCOMPARE(keyboard.focused(), k_minCategory + 7);
    QCOMPARE(keyboard.markOnScreen(7).bottom(), screen.bottom());

    // As on a screen that is lower than the window: its top is above.
    keyboard.window->move(screen.left() - 300, screen.top() - 400);
    keyboard.press(Qt::Key_Tab); // the first button
    const QWidget* button = keyboard.window->focusWidget();
    QVERIFY(screen.contains(QRect(button->mapToGlobal(QPoint()), button->size())));
    const QPoint place = keyboard.window->pos();
    keyboard.press(Qt::CTRL | Qt::Key_1);
    QCOMPARE(keyboard.window->pos(), place); // seen already
    QVERIFY(isSeen(0));
}

void TestKeys::pointerLeavesTheWindowWhereItIs()
{
    Keyboard keyboard;
    keyboard.startActive();
    const QRect screen = keyboard.window->screen()->availableGeometry();
    const QRect knob = keyboard.markOnScreen(7).translated(-keyboard.window->pos());
    const QPoint place(screen.left() + 100, screen.bottom() - knob.center().y());
    keyboard.window->move(place);
    QTest::mouseClick(keyboard.window->windowHandle(), Qt::LeftButton, {}, knob.center() - QPoint(0, 20));
    QVERIFY(keyboard.page(7)->isMarked());
    QCOMPARE(keyboard.window->pos(), place);
}

void TestKeys::digitsBeginTyping_data()
{
    QTest::addColumn<bool>("onArrows");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("in the field") << false << Qt::KeyboardModifiers();
    QTest::newRow("on the arrows") << true << Qt::KeyboardModifiers();
    QTest::newRow("on the keypad") << false << Qt::KeyboardModifiers(Qt::KeypadModifier);
}

void TestKeys::digitsBeginTyping()
{
    QFETCH(bool, onArrows);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    Keyboard keyboard;
    keyboard.startActive();
    keyboard.press({Qt::CTRL | Qt::Key_6, Qt::Key_Tab, Qt::Key_Tab});
    if (onArrows)
        keyboard.editor(1105)->findChild<CSpinButton*>()->setFocus();
    QTest::keyClick(keyboard.window->windowHandle(), Qt::Key_9, modifiers);
    QVERIFY(keyboard.isTyping());
    QTest::keyClick(keyboard.window->windowHandle(), Qt::Key_8, modifiers);
    QCOMPARE(keyboard.slider(1105)->findChild<CLineEdit*>()->text(), QStringLiteral("98"));
    QCOMPARE(keyboard.editor(1105)->getValue(), 72); // not before the end
    keyboard.press(Qt::Key_Return);
    QCOMPARE(keyboard.editor(1105)->getValue(), 98);
    QVERIFY(!keyboard.isTyping());
    QCOMPARE(keyboard.focused(), 1105);
}

void TestKeys::digitsElsewhereDoNothing()
{
    Keyboard keyboard;
    keyboard.startActive();
    keyboard.press(Qt::Key_Tab);
    QCOMPARE(keyboard.focused(), 1500);
    keyboard.type("1"); // a picture is not typed
    keyboard.press(Qt::Key_Tab);
    keyboard.press(Qt::ALT | Qt::Key_1);
    keyboard.type("a-");
    keyboard.press(Qt::CTRL | Qt::Key_1);
    keyboard.type("1");
    QVERIFY(!keyboard.isTyping());
    QCOMPARE(keyboard.shown(0), (KnobSettings{74, 0, 127, 0, 0}));
}

void TestKeys::escapeKeepsTheValue()
{
    Keyboard keyboard;
    keyboard.startActive();
    keyboard.press({Qt::Key_Tab, Qt::Key_Tab});
    keyboard.type("5");
    keyboard.press(Qt::Key_Escape);
    QVERIFY(!keyboard.isTyping());
    QCOMPARE(keyboard.focused(), 1100);
    QCOMPARE(keyboard.editor(1100)->getValue(), 74);
}

void TestKeys::arrowKeysChangeTheField()
{
    Keyboard keyboard;
    keyboard.startActive();
    keyboard.press({Qt::Key_Tab, Qt::Key_Up, Qt::Key_Right, Qt::Key_Tab, Qt::Key_Down, Qt::Key_Tab, Qt::Key_End});
    QCOMPARE(keyboard.shown(0), (KnobSettings{73, 15, 127, 0, 2}));
}

void TestKeys::wheelBringsTheKeys()
{
    Keyboard keyboard;
    keyboard.startActive();
    keyboard.press({Qt::Key_Tab, Qt::Key_Tab});
    keyboard.type("5");
    QWidget* field = keyboard.slider(1503);
    const QPointF middle = field->rect().center();
    QCursor::setPos(field->mapToGlobal(middle.toPoint()));
    QWheelEvent up(middle, field->mapToGlobal(middle), {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(field, &up);
    QCOMPARE(keyboard.editor(1503)->getValue(), 1);
    QCOMPARE(keyboard.focused(), 1503);
    QCOMPARE(keyboard.editor(1100)->getValue(), 5);
    QCOMPARE(keyboard.framed(), QList<int>{3});
    QCOMPARE(keyboard.copied(), QStringList{k_mimeType_LEDType});
}

void TestKeys::windowByKeys()
{
    Keyboard keyboard;
    keyboard.startActive();
    keyboard.press(Qt::CTRL | Qt::Key_M);
    QVERIFY(keyboard.window->isMinimized());
    keyboard.press(Qt::CTRL | Qt::Key_Q);
    QVERIFY(!keyboard.window->isVisible());
}

void TestKeys::pinByKey()
{
    Keyboard keyboard;
    keyboard.startActive();
    const auto* pin = keyboard.window->findChild<COnOffButton*>(QStringLiteral("holdWindowInFrontBtn"));
    keyboard.press(Qt::CTRL | Qt::Key_T);
    QVERIFY(pin->isChecked());
    QVERIFY(keyboard.window->windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    keyboard.press(Qt::CTRL | Qt::Key_T);
    QVERIFY(!pin->isChecked());
}

void TestKeys::spacePressesTheButtons()
{
    Keyboard keyboard;
    keyboard.startActive();
    keyboard.press({Qt::CTRL | Qt::Key_1, Qt::Key_Backtab, Qt::Key_Space});
    QVERIFY(keyboard.window->findChild<COnOffButton*>(QStringLiteral("holdWindowInFrontBtn"))->isChecked());
    keyboard.press({Qt::Key_Space, Qt::Key_Backtab, Qt::Key_Space});
    QVERIFY(keyboard.window->isMinimized());
    keyboard.window->showNormal();
    keyboard.press({Qt::Key_Backtab, Qt::Key_Space});
    QVERIFY(!keyboard.window->isVisible());
}

void TestKeys::menusByKeys_data()
{
    QTest::addColumn<QKeyCombination>("keys");
    QTest::addColumn<QString>("title");
    QTest::newRow("Alt+F") << (Qt::ALT | Qt::Key_F) << k_fileMenuString;
    QTest::newRow("Alt+E") << (Qt::ALT | Qt::Key_E) << k_editMenuString;
    QTest::newRow("Alt+H") << (Qt::ALT | Qt::Key_H) << k_helpMenuString;
    QTest::newRow("F10") << QKeyCombination(Qt::Key_F10) << k_fileMenuString;
}

void TestKeys::menusByKeys()
{
    QFETCH(QKeyCombination, keys);
    QFETCH(QString, title);
    Keyboard keyboard;
    keyboard.startActive();
    keyboard.press({Qt::Key_Tab, Qt::Key_Tab});
    keyboard.press(keys);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QVERIFY(menu);
    QCOMPARE(menu->title(), title);
    QCOMPARE(menu->activeAction(), menu->actions().first());
    // The keys go back to the field.
    keyboard.press({Qt::Key_Escape, Qt::Key_Escape});
    QVERIFY(QApplication::activePopupWidget() == nullptr);
    QCOMPARE(keyboard.focused(), 1100);
}

void TestKeys::contextMenuByKey_data()
{
    QTest::addColumn<QList<QKeyCombination>>("before");
    QTest::addColumn<QString>("format"); // that its Copy makes
    QTest::newRow("knob at the start") << QList<QKeyCombination>() << k_mimeType_Knob;
    QTest::newRow("knob of a page") << QList<QKeyCombination>{Qt::CTRL | Qt::Key_8} << k_mimeType_Knob;
    QTest::newRow("field") << QList<QKeyCombination>{Qt::CTRL | Qt::Key_8, Qt::Key_Tab} << k_mimeType_LEDType;
    QTest::newRow("button: what is selected") << QList<QKeyCombination>{Qt::Key_Backtab} << k_mimeType_Knob;
}

void TestKeys::contextMenuByKey()
{
    QFETCH(QList<QKeyCombination>, before);
    QFETCH(QString, format);
    Keyboard keyboard;
    keyboard.startActive();
    for (const QKeyCombination keys : before)
        keyboard.press(keys);
    QPoint place;
    // The press returns only when the menu has closed.
    QTimer poll;
    connect(&poll, &QTimer::timeout, &poll, [&] {
        QWidget* menu = QApplication::activePopupWidget();
        if (menu == nullptr)
            return;
        place = keyboard.window->mapFromGlobal(menu->pos());
        QTest::keyClick(menu, Qt::Key_C);
    });
    poll.start(5);
    keyboard.press(Qt::SHIFT | Qt::Key_F10);
    QCOMPARE(QGuiApplication::clipboard()->mimeData()->formats(), QStringList{format});
    const CControlView* page = keyboard.page(keyboard.marked().value(0));
    QVERIFY(page->markRect().translated(page->pos()).contains(place));
}

void TestKeys::oneMarkIsSeen()
{
    Keyboard keyboard;
    keyboard.startActive();
    // Copy acts on the first knob until something is selected, and no key does anything to it.
    QCOMPARE(keyboard.marked(), QList<int>{0});
    QVERIFY(keyboard.framed().isEmpty());
    QTest::mouseClick(keyboard.knobLED(4), Qt::LeftButton);
    QCOMPARE(keyboard.marked(), QList<int>{4});
    QVERIFY(keyboard.framed().isEmpty());
    for (const int id : {1104, 1304, 1201}) {
        QTest::mouseClick(keyboard.window->windowHandle(), Qt::LeftButton, {},
                          keyboard.slider(id)->mapTo(keyboard.window.get(), QPoint(20, 5)));
        QCOMPARE(keyboard.marked(), QList<int>{id % 100});
        QCOMPARE(keyboard.framed(), QList<int>{id % 100});
    }
    // A click on nothing takes the keys away, but Copy still acts on the field.
    QTest::mouseClick(keyboard.window->windowHandle(), Qt::LeftButton, {}, QPoint(300, 30));
    QCOMPARE(keyboard.marked(), QList<int>{1});
    QVERIFY(keyboard.framed().isEmpty());
    QCOMPARE(keyboard.copied(), QStringList{k_mimeType_MIDICh});
}

/// Watches the rings, once those that light up at the start have come to rest.
void TestKeys::watchRings(const Keyboard& keyboard, CPaintCounter* counter)
{
    QTRY_VERIFY(std::ranges::none_of(keyboard.window->findChildren<QPropertyAnimation*>(),
                                     [](const auto* fade) { return fade->state() == QAbstractAnimation::Running; }));
    QTest::qWait(2 * CFrameGate::k_interval.count()); // the last frame may have to wait
    for (int knob = 0; knob < k_numOfKnobs; ++knob)
        keyboard.knobLED(knob)->installEventFilter(counter);
}

void TestKeys::anotherStepPaintsNoRing()
{
    Keyboard keyboard;
    keyboard.startActive();
    keyboard.slider(1104)->setFocus();
    keyboard.press(Qt::Key_Up);
    CPaintCounter counter;
    watchRings(keyboard, &counter);
    const int before = keyboard.slider(1104)->value();
    for (int i = 0; i < 10; ++i) {
        keyboard.press(Qt::Key_Up);
        QCoreApplication::processEvents();
    }
    QCOMPARE(keyboard.slider(1104)->value(), before + 10);
    QVERIFY(counter.paints.empty());
    // What is counted does come: the LED type is drawn by the ring.
    keyboard.slider(1504)->setFocus();
    keyboard.press(Qt::Key_Up);
    QTRY_VERIFY(!counter.paints.empty());
}

void TestKeys::clickedMarkPaintsNoRing()
{
    Keyboard keyboard;
    keyboard.startActive();
    CPaintCounter counter;
    watchRings(keyboard, &counter);
    for (const int knob : {1, 7, 0}) {
        const QPoint ring = keyboard.markOnScreen(knob).center() - keyboard.window->pos();
        QTest::mouseClick(keyboard.window->windowHandle(), Qt::LeftButton, {}, ring);
        QCoreApplication::processEvents();
        QVERIFY(keyboard.page(knob)->isMarked());
    }
    QVERIFY(!counter.painted.isEmpty());
    QVERIFY(!counter.painted.intersects(k_ledRect));
}

void TestKeys::buttonWithTheFocusIsMarked()
{
    Keyboard keyboard;
    keyboard.startActive();
    const auto isMarked = [&](int x) {
        const QImage picture = keyboard.window->grab().toImage();
        return picture.pixelColor(QPoint(x, 13) * picture.devicePixelRatio()) == k_markColor;
    };
    QVERIFY(!isMarked(72));
    keyboard.press(Qt::Key_Backtab);
    QVERIFY(isMarked(72));
    QVERIFY(!isMarked(48));
    keyboard.press(Qt::Key_Backtab);
    QVERIFY(!isMarked(72));
    QVERIFY(isMarked(48));
    QCOMPARE(keyboard.marked(), QList<int>{0}); // what Copy acts on
}

void TestKeys::wholeSession()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("keys.CJX"));
    Keyboard keyboard;
    keyboard.plug();
    keyboard.startActive();
    keyboard.waitUntilConnected();
    const KnobSettings factory = keyboard.device.settings(1);
    const KnobSettings factoryOf7 = keyboard.device.settings(6);

    keyboard.press({Qt::CTRL | Qt::Key_7, Qt::Key_Tab, Qt::Key_Up, Qt::Key_Tab});
    keyboard.type("42");
    keyboard.press({Qt::Key_Return, Qt::Key_Tab});
    keyboard.type("9");
    keyboard.press(Qt::Key_Tab);
    keyboard.type("100");
    keyboard.press(Qt::Key_Tab);
    keyboard.press(Qt::Key_PageUp);
    const KnobSettings edited{42, 8, 100, 10, 1};
    QCOMPARE(keyboard.device.settings(6), edited);

    keyboard.press({Qt::CTRL | Qt::Key_7, Qt::CTRL | Qt::Key_C, Qt::CTRL | Qt::Key_2, Qt::CTRL | Qt::Key_V});
    QCOMPARE(keyboard.device.settings(1), edited);

    {
        CDialogKeys dialogs({CDialogKeys::text(path)});
        keyboard.press(Qt::CTRL | Qt::Key_S);
        QCOMPARE(dialogs.turnsLeft(), 0);
        QVERIFY(QFile::exists(path));
    }
    keyboard.activate();
    keyboard.press({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Home});
    QCOMPARE(keyboard.device.settings(1).cc, 0);
    {
        CDialogKeys dialogs({CDialogKeys::alt(Qt::Key_N), CDialogKeys::text(path)});
        keyboard.press(Qt::CTRL | Qt::Key_O);
        QCOMPARE(dialogs.turnsLeft(), 0);
        QCOMPARE(keyboard.device.settings(1), edited);
    }
    keyboard.activate();
    {
        CDialogKeys dialogs({CDialogKeys::alt(Qt::Key_Y)});
        keyboard.press({Qt::ALT | Qt::Key_E, Qt::Key_R});
        QCOMPARE(dialogs.turnsLeft(), 0);
        QCOMPARE(keyboard.device.settings(1), factory);
        QCOMPARE(keyboard.device.settings(6), factoryOf7);
    }
    keyboard.activate();
    keyboard.press({Qt::ALT | Qt::Key_H, Qt::Key_A});
    const QPointer<CInfoView> about = keyboard.window->findChild<CInfoView*>();
    QVERIFY(about);
    keyboard.press(Qt::Key_Escape);
    auto* animation = about->findChild<QPropertyAnimation*>();
    animation->setCurrentTime(animation->totalDuration());
    QTRY_VERIFY(!about);
    {
        CDialogKeys dialogs({CDialogKeys::alt(Qt::Key_N)});
        keyboard.press(Qt::CTRL | Qt::Key_Q);
        QCOMPARE(dialogs.turnsLeft(), 0);
        QVERIFY(!keyboard.window->isVisible());
    }
    QVERIFY(keyboard.agrees());
}

KTZ_TEST(QApplication, TestKeys)
#include "TestKeys.moc"
