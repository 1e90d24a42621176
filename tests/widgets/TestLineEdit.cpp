#include "app/common/Constants.h"
#include "tests/support/CTestCase.h"
#include "tests/support/MemoryRig.h"
#include "tests/widgets/ActiveWindow.h"
#include "widgets/CLineEdit.h"

#include <QClipboard>
#include <QMenu>
#include <QTimer>
#include <QValidator>

#include <memory>

namespace
{
/// Counts the keys that its child lets through.
class CKeyCounter : public QWidget
{
    Q_OBJECT

  public:
    int m_keys = 0;

  protected:
    void keyPressEvent(QKeyEvent*) override
    {
        ++m_keys;
    }
};

/// A field in an active window, with another widget for the focus to go to, and a record of the field's signals.
class Form
{
  public:
    Form()
    {
        m_window.resize(200, 100);
        m_edit.setGeometry(10, 10, 100, 20);
        m_other.setFocusPolicy(Qt::StrongFocus);
        const auto record = [this](const char* name) {
            return [this, name] { m_signals.append(QLatin1String(name)); };
        };
        QObject::connect(&m_edit, &CLineEdit::started, record("started"));
        QObject::connect(&m_edit, &CLineEdit::accepted, record("accepted"));
        QObject::connect(&m_edit, &CLineEdit::aborted, record("aborted"));
    }

    [[nodiscard]] bool show()
    {
        return showActive(m_window);
    }

    void start(const QString& text)
    {
        m_edit.setText(text);
        m_edit.setFocus();
    }

    CKeyCounter m_window;
    QStringList m_signals;
    QWidget m_other{&m_window};
    CLineEdit m_edit{&m_window};
};

struct MenuEntry
{
    QString text;
    bool enabled;
};

QList<MenuEntry> entriesOf(const QMenu& menu)
{
    QList<MenuEntry> entries;
    for (const QAction* action : menu.actions())
        entries.append({action->isSeparator() ? QStringLiteral("-") : action->text(), action->isEnabled()});
    return entries;
}

QString labelled(const char* label, QKeySequence::StandardKey key)
{
    return QLatin1String(label) + QLatin1Char('\t') + QKeySequence(key).toString(QKeySequence::NativeText);
}
} // namespace

class TestLineEdit : public CTestCase
{
    Q_OBJECT

  private slots:
    void startsWithTheDefaults();
    void coloursAreTheSkinsOnADarkDesktop();
    void propertiesAreInOrder();
    void focusStartsAnEditOnce();
    void returnAccepts();
    void escapeRestoresTheTextAndAbortsOnly();
    void endTrimRemovesBlanksAndTabsFromTheEnd_data();
    void endTrimRemovesBlanksAndTabsFromTheEnd();
    void focusLossEndsTheEdit_data();
    void focusLossEndsTheEdit();
    void untouchedFieldAcceptsEachTime();
    void windowChangeEndsTheEdit();
    void acceptAndAbortNeedAnEdit();
    void noKeyTravelsToTheParent_data();
    void noKeyTravelsToTheParent();
    void validatorMatchesTheWholeText_data();
    void validatorMatchesTheWholeText();
    void emptyExpressionRemovesTheValidator();
    void memoryDoesNotChangeTheText();
    void destroyedFieldIsForgottenByTheMemory();
    void returnEndsAnEditThatTheValidatorDoesNotAccept_data();
    void returnEndsAnEditThatTheValidatorDoesNotAccept();
    void ownMenuLeavesAnEmptiedFieldOpen_data();
    void ownMenuLeavesAnEmptiedFieldOpen();
    void menuHasTheEntriesOfTheState_data();
    void menuHasTheEntriesOfTheState();
    void menuEntriesActOnTheField();
    void contextMenuOpensInTheEditorsFontAndKeepsTheEdit();
    void otherPopupEndsTheEdit();
    void unshownFieldLeavesTheMenuToQt();
    void fieldMayGoWhileItsMenuIsOpen();
    void changeInTheMemoryClosesTheMenu();
};

void TestLineEdit::startsWithTheDefaults()
{
    const CLineEdit edit(nullptr);
    QCOMPARE(edit.focusPolicy(), Qt::ClickFocus);
    QVERIFY(!edit.hasFrame());
    QVERIFY(edit.validatorRegExp().isEmpty());
    QVERIFY(edit.validator() == nullptr);
    QVERIFY(!edit.endTrim());
    QCOMPARE(edit.controllerID(), 0);
}

void TestLineEdit::coloursAreTheSkinsOnADarkDesktop()
{
    const QPalette desktop = QApplication::palette();
    QPalette dark = desktop;
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::Highlight, QPalette::HighlightedText})
        dark.setColor(role, Qt::lightGray);
    QApplication::setPalette(dark);
    CLineEdit edit(nullptr);
    edit.ensurePolished();
    const QPalette colours = edit.palette();
    QApplication::setPalette(desktop);
    QCOMPARE(colours.color(QPalette::Text), QColor(Qt::black));
    QCOMPARE(colours.color(QPalette::Highlight), QColor(55, 55, 55));
    QCOMPARE(colours.color(QPalette::HighlightedText), QColor(Qt::white));
}

void TestLineEdit::propertiesAreInOrder()
{
    const QMetaObject& meta = CLineEdit::staticMetaObject;
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        names.append(QLatin1String(meta.property(i).name()));
    QCOMPARE(names, QStringList({"validatorRegExp", "endTrim", "controllerID"}));

    CLineEdit edit(nullptr);
    QVERIFY(edit.setProperty("validatorRegExp", "[a-z]+"));
    QCOMPARE(edit.validatorRegExp(), QStringLiteral("[a-z]+"));
    QVERIFY(edit.setProperty("endTrim", true));
    QVERIFY(edit.endTrim());
    QVERIFY(edit.setProperty("controllerID", 1101));
    QCOMPARE(edit.controllerID(), 1101);
}

void TestLineEdit::focusStartsAnEditOnce()
{
    Form form;
    QVERIFY(form.show());
    form.start(QStringLiteral("1"));
    QCOMPARE(form.m_signals, QStringList({"started"}));
    QFocusEvent again(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(&form.m_edit, &again);
    QCOMPARE(form.m_signals, QStringList({"started"}));
}

void TestLineEdit::returnAccepts()
{
    Form form;
    QVERIFY(form.show());
    form.start(QStringLiteral("1"));
    QTest::keyClicks(&form.m_edit, QStringLiteral("2"));
    QTest::keyClick(&form.m_edit, Qt::Key_Return);
    QCOMPARE(form.m_signals, QStringList({"started", "accepted"}));
    QCOMPARE(form.m_edit.text(), QStringLiteral("12"));
    QVERIFY(!form.m_edit.hasFocus());

    form.m_edit.setFocus();
    QTest::keyClick(&form.m_edit, Qt::Key_Enter);
    QCOMPARE(form.m_signals, QStringList({"started", "accepted", "started", "accepted"}));
}

void TestLineEdit::escapeRestoresTheTextAndAbortsOnly()
{
    Form form;
    QVERIFY(form.show());
    form.start(QStringLiteral("1"));
    QTest::keyClicks(&form.m_edit, QStringLiteral("2"));
    QTest::keyClick(&form.m_edit, Qt::Key_Escape);
    QCOMPARE(form.m_edit.text(), QStringLiteral("1"));
    QVERIFY(!form.m_edit.hasFocus());
    QCOMPARE(form.m_signals, QStringList({"started", "aborted"}));
    QTest::keyClick(&form.m_edit, Qt::Key_Return);
    QCOMPARE(form.m_signals, QStringList({"started", "aborted"}));
}

void TestLineEdit::endTrimRemovesBlanksAndTabsFromTheEnd_data()
{
    QTest::addColumn<bool>("endTrim");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("accepted");
    QTest::newRow("a blank and a tab") << true << "12 \t"
                                       << "12";
    QTest::newRow("leading blanks stay") << true << "  12 "
                                         << "  12";
    QTest::newRow("inner blanks stay") << true << "1 2"
                                       << "1 2";
    QTest::newRow("only blanks") << true << " \t "
                                 << "";
    QTest::newRow("nothing to remove") << true << "12"
                                       << "12";
    QTest::newRow("off") << false << "12 \t"
                         << "12 \t";
}

void TestLineEdit::endTrimRemovesBlanksAndTabsFromTheEnd()
{
    QFETCH(bool, endTrim);
    QFETCH(QString, text);
    Form form;
    QVERIFY(form.show());
    form.m_edit.setEndTrim(endTrim);
    form.start(text);
    QTest::keyClick(&form.m_edit, Qt::Key_Return);
    QTEST(form.m_edit.text(), "accepted");
    QCOMPARE(form.m_signals, QStringList({"started", "accepted"}));
}

void TestLineEdit::focusLossEndsTheEdit_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("signal");
    QTest::newRow("acceptable text") << "2"
                                     << "12"
                                     << "accepted";
    QTest::newRow("unchanged text") << ""
                                    << "1"
                                    << "accepted";
    QTest::newRow("unacceptable text is replaced by the old one") << "23"
                                                                  << "1"
                                                                  << "aborted";
}

void TestLineEdit::focusLossEndsTheEdit()
{
    QFETCH(QString, typed);
    QFETCH(QString, signal);
    Form form;
    QVERIFY(form.show());
    form.m_edit.setValidatorRegExp(QStringLiteral("1|12|1234"));
    form.start(QStringLiteral("1"));
    QTest::keyClicks(&form.m_edit, typed);
    form.m_other.setFocus();
    QTEST(form.m_edit.text(), "text");
    QCOMPARE(form.m_signals, QStringList({"started", signal}));
    QVERIFY(form.m_other.hasFocus());
}

void TestLineEdit::untouchedFieldAcceptsEachTime()
{
    Form form;
    QVERIFY(form.show());
    form.m_edit.setFocus();
    form.m_other.setFocus();
    QCOMPARE(form.m_signals, QStringList({"started", "accepted"}));
    form.m_edit.setFocus();
    form.m_other.setFocus();
    QCOMPARE(form.m_signals, QStringList({"started", "accepted", "started", "accepted"}));
}

void TestLineEdit::windowChangeEndsTheEdit()
{
    Form form;
    QVERIFY(form.show());
    form.start(QStringLiteral("1"));
    QFocusEvent out(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(&form.m_edit, &out);
    QCOMPARE(form.m_signals, QStringList({"started", "accepted"}));
}

void TestLineEdit::acceptAndAbortNeedAnEdit()
{
    Form form;
    form.m_edit.setText(QStringLiteral("1 "));
    form.m_edit.setEndTrim(true);
    form.m_edit.accept();
    form.m_edit.abort();
    QVERIFY(form.m_signals.isEmpty());
    QCOMPARE(form.m_edit.text(), QStringLiteral("1 "));
}

void TestLineEdit::noKeyTravelsToTheParent_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("escape") << Qt::Key_Escape;
    QTest::newRow("return") << Qt::Key_Return;
    QTest::newRow("a letter") << Qt::Key_A;
    QTest::newRow("up, which a line does not use") << Qt::Key_Up;
    QTest::newRow("a function key") << Qt::Key_F5;
}

void TestLineEdit::noKeyTravelsToTheParent()
{
    QFETCH(Qt::Key, key);
    Form form;
    QVERIFY(form.show());
    form.start(QStringLiteral("1"));
    QTest::keyPress(&form.m_edit, key);
    QCOMPARE(form.m_window.m_keys, 0);
}

void TestLineEdit::validatorMatchesTheWholeText_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("acceptable");
    QTest::newRow("match") << "[0-9]+"
                           << "12" << true;
    QTest::newRow("match at the start only") << "[0-9]+"
                                             << "12a" << false;
    QTest::newRow("match at the end only") << "[0-9]+"
                                           << "a12" << false;
    QTest::newRow("every branch is whole") << "1|12"
                                           << "12" << true;
    QTest::newRow("unfinished") << "[0-9]{3}"
                                << "12" << false;
    QTest::newRow("case counts") << "[a-z]+"
                                 << "AB" << false;
    QTest::newRow("no expression, any text") << ""
                                             << "a b" << true;
}

void TestLineEdit::validatorMatchesTheWholeText()
{
    QFETCH(QString, expression);
    QFETCH(QString, text);
    CLineEdit edit(nullptr);
    edit.setValidatorRegExp(expression);
    edit.setText(text);
    QTEST(edit.hasAcceptableInput(), "acceptable");
}

void TestLineEdit::emptyExpressionRemovesTheValidator()
{
    CLineEdit edit(nullptr);
    edit.setValidatorRegExp(QStringLiteral("[0-9]+"));
    const QPointer<const QValidator> first = edit.validator();
    edit.setValidatorRegExp(QStringLiteral("[a-z]+"));
    QVERIFY(first.isNull());
    const QPointer<const QValidator> second = edit.validator();
    QVERIFY(!second.isNull());
    edit.setValidatorRegExp(QString());
    QVERIFY(second.isNull());
    QVERIFY(edit.validator() == nullptr);
}

void TestLineEdit::memoryDoesNotChangeTheText()
{
    MemoryRig memory;
    CLineEdit edit(nullptr);
    edit.setText(QStringLiteral("1"));
    memory.bind(edit);
    memory.change(64);
    QCOMPARE(edit.text(), QStringLiteral("1"));
    edit.setText(QStringLiteral("2"));
    QCOMPARE(memory.value(), 64);
}

void TestLineEdit::destroyedFieldIsForgottenByTheMemory()
{
    MemoryRig memory;
    auto field = std::make_unique<CLineEdit>(nullptr);
    memory.bind(*field);
    field.reset();
    memory.change(64);
    QCOMPARE(memory.value(), 64);
}

void TestLineEdit::returnEndsAnEditThatTheValidatorDoesNotAccept_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("typed");
    QTest::newRow("Return, nothing") << Qt::Key_Return << "";
    QTest::newRow("Enter, nothing") << Qt::Key_Enter << "";
    QTest::newRow("Return, a sign alone") << Qt::Key_Return << "-";
}

void TestLineEdit::returnEndsAnEditThatTheValidatorDoesNotAccept()
{
    QFETCH(Qt::Key, key);
    QFETCH(QString, typed);
    QIntValidator validator;
    Form form;
    form.m_edit.setValidator(&validator);
    QVERIFY(form.show());
    form.start(QStringLiteral("12"));
    form.m_edit.selectAll();
    QTest::keyClick(&form.m_edit, Qt::Key_Delete);
    QTest::keyClicks(&form.m_edit, typed);
    QTest::keyClick(&form.m_edit, key);
    QCOMPARE(form.m_signals, QStringList({"started", "aborted"}));
    QCOMPARE(form.m_edit.text(), QStringLiteral("12"));
    QVERIFY(!form.m_edit.hasFocus());
    QCOMPARE(form.m_window.m_keys, 0);
}

void TestLineEdit::ownMenuLeavesAnEmptiedFieldOpen_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("text");
    QTest::newRow("Undo") << "&Undo"
                          << "12";
    QTest::newRow("Paste") << "&Paste"
                           << "34";
    QTest::newRow("none") << ""
                          << "";
}

void TestLineEdit::ownMenuLeavesAnEmptiedFieldOpen()
{
    QFETCH(QString, command);
    QIntValidator validator;
    Form form;
    form.m_edit.setValidator(&validator);
    QVERIFY(form.show());
    form.start(QStringLiteral("12"));
    form.m_edit.selectAll();
    QTest::keyClick(&form.m_edit, Qt::Key_Delete);
    QApplication::clipboard()->setText(QStringLiteral("34"));
    bool seen = false;
    QTimer::singleShot(0, &form.m_edit, [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu == nullptr)
            return;
        seen = true;
        for (QAction* action : menu->actions()) {
            if (!command.isEmpty() && action->text().startsWith(command)) {
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
                return;
            }
        }
        QTest::keyClick(menu, Qt::Key_Escape);
    });
    // The press opens the menu, the release goes to it.
    const QPoint at = form.m_edit.geometry().center();
    QTest::mousePress(form.m_window.windowHandle(), Qt::RightButton, {}, at);
    QTest::mouseRelease(form.m_window.windowHandle(), Qt::RightButton, {}, at);
    QVERIFY(seen);
    QCOMPARE(form.m_signals, QStringList({"started"}));
    QVERIFY(form.m_edit.hasFocus());
    QTEST(form.m_edit.text(), "text");
}

void TestLineEdit::menuHasTheEntriesOfTheState_data()
{
    QTest::addColumn<bool>("readOnly");
    QTest::addColumn<QLineEdit::EchoMode>("echo");
    QTest::addColumn<bool>("undone");
    QTest::addColumn<int>("selected");
    QTest::addColumn<QString>("clipboard");
    QTest::addColumn<QString>("enabled");
    constexpr auto normal = QLineEdit::Normal;
    QTest::newRow("fresh text") << false << normal << false << 0 << ""
                                << "undo all";
    QTest::newRow("undone") << false << normal << true << 0 << ""
                            << "redo";
    QTest::newRow("some selected") << false << normal << false << 1 << ""
                                   << "undo cut copy all";
    QTest::newRow("all selected") << false << normal << false << 2 << ""
                                  << "undo cut copy";
    QTest::newRow("text on the clipboard") << false << normal << false << 0 << "x"
                                           << "undo paste all";
    QTest::newRow("password, all selected") << false << QLineEdit::Password << false << 2 << ""
                                            << "undo";
    QTest::newRow("read-only") << true << normal << false << 0 << "x"
                               << "all";
    QTest::newRow("read-only, some selected") << true << normal << false << 1 << "x"
                                              << "copy all";
}

void TestLineEdit::menuHasTheEntriesOfTheState()
{
    QFETCH(bool, readOnly);
    QFETCH(QLineEdit::EchoMode, echo);
    QFETCH(bool, undone);
    QFETCH(int, selected);
    QFETCH(QString, clipboard);
    QFETCH(QString, enabled);
    CLineEdit edit(nullptr);
    edit.insert(QStringLiteral("12"));
    if (undone)
        edit.undo();
    edit.setSelection(0, selected);
    edit.setEchoMode(echo);
    edit.setReadOnly(readOnly);
    QApplication::clipboard()->setText(clipboard);

    const std::unique_ptr<QMenu> menu(edit.createStandardContextMenuForCLineEdit());
    QCOMPARE(menu->objectName(), QStringLiteral("qt_edit_menu"));
    const QStringList on = enabled.split(QLatin1Char(' '));
    QList<MenuEntry> expected;
    if (!readOnly) {
        expected.append({labelled("&Undo", QKeySequence::Undo), on.contains("undo")});
        expected.append({labelled("&Redo", QKeySequence::Redo), on.contains("redo")});
        expected.append({QStringLiteral("-"), true});
        expected.append({labelled("Cu&t", QKeySequence::Cut), on.contains("cut")});
    }
    expected.append({labelled("&Copy", QKeySequence::Copy), on.contains("copy")});
    if (!readOnly)
        expected.append({labelled("&Paste", QKeySequence::Paste), on.contains("paste")});
    expected.append({QStringLiteral("-"), true});
    expected.append({labelled("Select All", QKeySequence::SelectAll), on.contains("all")});

    const QList<MenuEntry> shown = entriesOf(*menu);
    QCOMPARE(shown.size(), expected.size());
    for (int i = 0; i < shown.size(); ++i) {
        QCOMPARE(shown[i].text, expected[i].text);
        QVERIFY2(shown[i].enabled == expected[i].enabled, qPrintable(shown[i].text));
    }
}

void TestLineEdit::menuEntriesActOnTheField()
{
    CLineEdit edit(nullptr);
    edit.insert(QStringLiteral("12"));
    const auto trigger = [&edit](const char* label) {
        const std::unique_ptr<QMenu> menu(edit.createStandardContextMenuForCLineEdit());
        for (QAction* action : menu->actions()) {
            if (action->text().startsWith(QLatin1String(label)))
                action->trigger();
        }
    };
    trigger("Select All");
    QCOMPARE(edit.selectedText(), QStringLiteral("12"));
    trigger("&Copy");
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("12"));
    edit.end(false);
    trigger("&Paste");
    QCOMPARE(edit.text(), QStringLiteral("1212"));
    trigger("&Undo");
    QCOMPARE(edit.text(), QStringLiteral("12"));
    trigger("&Redo");
    QCOMPARE(edit.text(), QStringLiteral("1212"));
    edit.selectAll();
    trigger("Cu&t");
    QCOMPARE(edit.text(), QString());
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("1212"));
}

void TestLineEdit::contextMenuOpensInTheEditorsFontAndKeepsTheEdit()
{
    Form form;
    QVERIFY(form.show());
    form.start(QStringLiteral("1"));
    const QPoint at = form.m_edit.mapToGlobal(QPoint(5, 5));
    bool seen = false;
    QFont font;
    QPoint position;
    QTimer::singleShot(0, &form.m_edit, [&] {
        if (QWidget* menu = QApplication::activePopupWidget()) {
            seen = menu->objectName() == QLatin1String("qt_edit_menu");
            font = menu->font();
            position = menu->pos();
            QTest::keyClick(menu, Qt::Key_Escape);
        }
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), at);
    QApplication::sendEvent(&form.m_edit, &event);
    QVERIFY(seen);
    QCOMPARE(font.family(), k_fontGLT7Bold);
    QCOMPARE(font.pixelSize(), 7);
    QCOMPARE(position, at);
    QVERIFY(form.m_edit.findChildren<QMenu*>().isEmpty());
    QCOMPARE(form.m_signals, QStringList({"started"}));
}

void TestLineEdit::otherPopupEndsTheEdit()
{
    Form form;
    QVERIFY(form.show());
    form.start(QStringLiteral("1"));
    QMenu menu(&form.m_window);
    menu.addAction(QStringLiteral("x"));
    menu.popup(form.m_window.mapToGlobal(QPoint(50, 50)));
    QCOMPARE(form.m_signals, QStringList({"started", "accepted"}));
}

void TestLineEdit::unshownFieldLeavesTheMenuToQt()
{
    CLineEdit edit(nullptr);
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(5, 5));
    QApplication::sendEvent(&edit, &event);
    const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QVERIFY(menu != nullptr);
    QVERIFY(menu->font().family() != k_fontGLT7Bold);
    QApplication::activePopupWidget()->close();
}

void TestLineEdit::fieldMayGoWhileItsMenuIsOpen()
{
    QWidget window;
    auto* edit = new CLineEdit(&window);
    QVERIFY(showActive(window));
    QTimer::singleShot(0, &window, [edit] { delete edit; });
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), edit->mapToGlobal(QPoint(5, 5)));
    const QPointer<CLineEdit> field = edit;
    QApplication::sendEvent(edit, &event);
    QVERIFY(field.isNull());
    QVERIFY(QApplication::activePopupWidget() == nullptr);
}

void TestLineEdit::changeInTheMemoryClosesTheMenu()
{
    MemoryRig memory;
    Form form;
    QVERIFY(form.show());
    memory.bind(form.m_edit);
    bool wasOpen = false;
    QTimer::singleShot(0, &form.m_edit, [&] {
        wasOpen = QApplication::activePopupWidget() != nullptr;
        memory.change(64);
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), form.m_edit.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&form.m_edit, &event);
    QVERIFY(wasOpen);
    QVERIFY(QApplication::activePopupWidget() == nullptr);
}

KTZ_TEST(QApplication, TestLineEdit)
#include "TestLineEdit.moc"
