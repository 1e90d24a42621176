#include "app/AccessibleEditor.h"
#include "app/CNotice.h"
#include "style/CAboutView.h"
#include "tests/app/EditorFixture.h"
#include "tests/support/CTestCase.h"
#include "widgets/CLineEdit.h"
#include "widgets/CSpinButton.h"
#include "widgets/accessible/CRingWatch.h"

#include <QAccessible>
#include <QClipboard>
#include <QTestAccessibility>

#include <algorithm>

namespace
{
using Interface = QAccessibleInterface;

/// A started editor, as a screen reader sees it.
struct Reader : EditorFixture
{
    void startActive()
    {
        startWhole();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }

    [[nodiscard]] Interface* whole() const
    {
        return QAccessible::queryAccessibleInterface(window.get());
    }

    /// What has this name below another; null for nothing or for more than one.
    static Interface* child(const Interface* above, const QString& name)
    {
        Interface* found = nullptr;
        for (int i = 0; i < above->childCount(); ++i) {
            Interface* candidate = above->child(i);
            if (candidate->text(QAccessible::Name) != name)
                continue;
            if (found != nullptr)
                return nullptr;
            found = candidate;
        }
        return found;
    }

    [[nodiscard]] Interface* of(int knob, const QString& name) const
    {
        return child(child(whole(), QStringLiteral("Knob %1").arg(knob + 1)), name);
    }

    /// The tree, a line each: two blanks a level, role, name, text of its value.
    [[nodiscard]] QStringList tree() const
    {
        QStringList lines;
        append(lines, whole(), 0);
        return lines;
    }

  private:
    static void append(QStringList& lines, const Interface* node, int level)
    {
        static const QHash<QAccessible::Role, QString> roles{
            {QAccessible::Window, "window"},      {QAccessible::Button, "button"},
            {QAccessible::CheckBox, "check box"}, {QAccessible::Grouping, "group"},
            {QAccessible::Dial, "dial"},          {QAccessible::SpinBox, "field"},
            {QAccessible::MenuBar, "menu bar"},   {QAccessible::MenuItem, "menu item"},
            {QAccessible::PopupMenu, "menu"},     {QAccessible::Dialog, "dialog"},
            {QAccessible::Border, "frame"},       {QAccessible::Separator, "line"}};
        QString line = QString(2 * level, QLatin1Char(' ')) + roles.value(node->role(), QStringLiteral("?")) + ' ' +
                       node->text(QAccessible::Name);
        const QString value = node->text(QAccessible::Value);
        lines.append(value.isEmpty() ? line.trimmed().prepend(QString(2 * level, ' ')) : line + ": " + value);
        for (int i = 0; i < node->childCount(); ++i) {
            Interface* below = node->child(i);
            QVERIFY(below->isValid());
            QCOMPARE(below->parent(), node);
            QCOMPARE(node->indexOfChild(below), i);
            append(lines, below, level + 1);
        }
    }
};
} // namespace

/// What a screen reader is told of the editor, asked inside the process.
class TestAccessibleEditor : public CTestCase
{
    Q_OBJECT

  private slots:
    void initTestCase();
    void cleanupTestCase();
    void tree();
    void ranges_data();
    void ranges();
    void fieldIsSetByItsValue();
    void fieldIsSetByItsText_data();
    void fieldIsSetByItsText();
    void fieldIsSteppedAndFocused();
    void eventsOfPartsAreTheFields();
    void typedTextIsTheFields();
    void ringTellsWhatTheDeviceReports();
    void reportsAreToldAFewTimesASecond();
    void nobodyListens();
    void commandsLeaveANotice_data();
    void commandsLeaveANotice();
    void noticeGoesWithWhoListens();
    void pageIsFocusedAndSelected();
    void buttonsArePressed();
    void onlineMarkIsChecked();
    void aboutViewIsADialog();
    void coveredPagesAreOutOfReach();
};

void TestAccessibleEditor::initTestCase()
{
    QTestAccessibility::initialize();
    AccessibleEditor::install();
}

void TestAccessibleEditor::cleanupTestCase()
{
    QTestAccessibility::cleanup();
}

void TestAccessibleEditor::tree()
{
    Reader reader;
    reader.startActive();
    QStringList expected{"window KTZ-JX Editor",
                         "  button Close",
                         "  button Minimise",
                         "  check box Keep in front",
                         "  frame",
                         "    menu bar",
                         "      menu item File",
                         "        menu",
                         "          menu item Open",
                         "          line",
                         "          menu item Save",
                         "          menu item Save As...",
                         "      menu item Edit",
                         "        menu",
                         "          menu item Copy",
                         "          menu item Paste",
                         "          menu item Revert To Initial State",
                         "          menu item Load Factory Preset",
                         "      menu item Help",
                         "        menu",
                         "          menu item Manual",
                         "          menu item About"};
    const QStringList ccNumbers{"74", "71", "10", "7", "73", "72", "91", "93"};
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        expected += {"  group Knob " + QString::number(knob + 1),
                     "    dial LED ring: 0",
                     knob == 2 ? "    field LED type: concave" : "    field LED type: ascent",
                     "    field CC number: " + ccNumbers[knob],
                     "    field MIDI channel: 1",
                     "    field Maximum: 127",
                     "    field Minimum: 0"};
    }
    expected.append("  check box Online");
    QCOMPARE(reader.tree(), expected);
}

void TestAccessibleEditor::ranges_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("most");
    QTest::newRow("ring") << "LED ring" << 0 << 127;
    QTest::newRow("LED type") << "LED type" << 0 << 3;
    QTest::newRow("CC number") << "CC number" << 0 << 127;
    QTest::newRow("channel, as shown") << "MIDI channel" << 1 << 16;
    QTest::newRow("maximum") << "Maximum" << 0 << 127;
    QTest::newRow("minimum") << "Minimum" << 0 << 127;
}

void TestAccessibleEditor::ranges()
{
    QFETCH(QString, name);
    Reader reader;
    reader.startActive();
    QAccessibleValueInterface* value = reader.of(6, name)->valueInterface();
    QVERIFY(value);
    QTEST(value->minimumValue().toInt(), "least");
    QTEST(value->maximumValue().toInt(), "most");
    QCOMPARE(value->minimumStepSize().toInt(), 1);
}

void TestAccessibleEditor::fieldIsSetByItsValue()
{
    Reader reader;
    reader.plug();
    reader.startActive();
    reader.waitUntilConnected();
    const QHash<QString, int> values{
        {"LED type", 3}, {"CC number", 42}, {"MIDI channel", 16}, {"Maximum", 100}, {"Minimum", 1000}};
    for (auto it = values.begin(); it != values.end(); ++it)
        reader.of(6, it.key())->valueInterface()->setCurrentValue(it.value());
    QCOMPARE(reader.device.settings(6), (KnobSettings{42, 15, 100, 127, 3}));
    QCOMPARE(reader.of(6, "MIDI channel")->valueInterface()->currentValue().toInt(), 16);
}

void TestAccessibleEditor::fieldIsSetByItsText_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("result");
    QTest::newRow("number") << "CC number"
                            << "42"
                            << "42";
    QTest::newRow("beyond the range") << "CC number"
                                      << "200"
                                      << "127";
    QTest::newRow("channel, as shown") << "MIDI channel"
                                       << "10"
                                       << "10";
    QTest::newRow("LED type") << "LED type"
                              << "convex"
                              << "convex";
    QTest::newRow("no number") << "CC number"
                               << "abc"
                               << "91";
    QTest::newRow("nothing") << "CC number"
                             << ""
                             << "91";
    QTest::newRow("no LED type") << "LED type"
                                 << "2"
                                 << "ascent";
}

void TestAccessibleEditor::fieldIsSetByItsText()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(QString, result);
    Reader reader;
    reader.startActive();
    Interface* field = reader.of(6, name);
    const QString before = field->text(QAccessible::Value);
    field->editableTextInterface()->replaceText(0, field->textInterface()->characterCount(), text);
    QCOMPARE(field->text(QAccessible::Value), result);
    QCOMPARE(field->textInterface()->text(0, 100), result);
    field->setText(QAccessible::Value, before);
    QCOMPARE(field->text(QAccessible::Value), before);
}

void TestAccessibleEditor::fieldIsSteppedAndFocused()
{
    Reader reader;
    reader.startActive();
    Interface* field = reader.of(3, "MIDI channel");
    QVERIFY(!field->state().focused);
    QAccessibleActionInterface* actions = field->actionInterface();
    actions->doAction(QAccessibleActionInterface::increaseAction());
    actions->doAction(QAccessibleActionInterface::increaseAction());
    actions->doAction(QAccessibleActionInterface::decreaseAction());
    QCOMPARE(reader.editor(1203)->getValue(), 1);
    QVERIFY(!field->state().focused);
    QVERIFY(field->state().selected);
    actions->doAction(QAccessibleActionInterface::setFocusAction());
    QVERIFY(field->state().focused);
    QVERIFY(reader.slider(1203)->hasFocus());
    QCOMPARE(reader.whole()->focusChild(), field);
    for (const QString& name : actions->actionNames())
        QVERIFY(!actions->localizedActionName(name).isEmpty());
}

// The toolkit tells of nothing here, since nobody listens; so the events are made by hand.
void TestAccessibleEditor::eventsOfPartsAreTheFields()
{
    Reader reader;
    reader.startActive();
    QObject* field = reader.editor(1204);
    QAbstractSlider* slider = reader.slider(1204);
    QObject* line = slider->findChild<CLineEdit*>();
    QObject* arrows = reader.editor(1204)->findChild<CSpinButton*>();
    const auto tell = [](QAccessibleEvent&& event) { AccessibleEditor::tell(&event); };
    QTestAccessibility::clearEvents();

    for (QObject* part : {static_cast<QObject*>(slider), line, arrows})
        tell(QAccessibleEvent(part, QAccessible::Focus));
    slider->setValue(8);
    tell(QAccessibleValueChangeEvent(slider, 8));
    tell(QAccessibleTextInsertEvent(line, 1, QStringLiteral("2")));
    tell(QAccessibleTextRemoveEvent(line, 2, QStringLiteral("3")));
    tell(QAccessibleTextUpdateEvent(line, 3, QStringLiteral("4"), QStringLiteral("5")));
    tell(QAccessibleTextCursorEvent(line, 2));
    tell(QAccessibleTextSelectionEvent(line, 0, 2));
    tell(QAccessibleValueChangeEvent(arrows, 8)); // said already
    tell(QAccessibleEvent(arrows, QAccessible::ObjectShow));
    tell(QAccessibleEvent(reader.page(4), QAccessible::Focus));

    QAccessibleEvent focus(field, QAccessible::Focus);
    QAccessibleValueChangeEvent value(field, 9);
    QAccessibleTextInsertEvent inserted(field, 1, QStringLiteral("2"));
    QAccessibleTextRemoveEvent removed(field, 2, QStringLiteral("3"));
    QAccessibleTextUpdateEvent updated(field, 3, QStringLiteral("4"), QStringLiteral("5"));
    QAccessibleTextCursorEvent caret(field, 2);
    QAccessibleTextSelectionEvent selected(field, 0, 2);
    QAccessibleEvent other(reader.page(4), QAccessible::Focus);
    for (QAccessibleEvent* expected : std::initializer_list<QAccessibleEvent*>{
             &focus, &focus, &focus, &value, &inserted, &removed, &updated, &caret, &selected, &other})
        QVERIFY(QTestAccessibility::verifyEvent(expected));
    QVERIFY(QTestAccessibility::events().isEmpty());
}

void TestAccessibleEditor::typedTextIsTheFields()
{
    Reader reader;
    reader.startActive();
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_1, Qt::Key_2})
        QTest::keyClick(reader.window->windowHandle(), key);
    Interface* field = reader.of(0, "CC number");
    QVERIFY(field->state().focused);
    QCOMPARE(reader.whole()->focusChild(), field);
    QCOMPARE(field->text(QAccessible::Value), QStringLiteral("12"));
    QCOMPARE(field->valueInterface()->currentValue().toInt(), 74);
    QCOMPARE(field->textInterface()->cursorPosition(), 2);
    field->editableTextInterface()->insertText(2, QStringLiteral("0"));
    QTest::keyClick(reader.window->windowHandle(), Qt::Key_Return);
    QCOMPARE(reader.editor(1100)->getValue(), 120);
}

void TestAccessibleEditor::ringTellsWhatTheDeviceReports()
{
    Reader reader;
    reader.plug();
    reader.startActive();
    reader.waitUntilConnected();
    reader.device.turn(2, 40); // concave
    Interface* ring = reader.of(2, "LED ring");
    QTRY_COMPARE(ring->text(QAccessible::Value), QStringLiteral("40"));
    QTRY_COMPARE(ring->text(QAccessible::Description), QStringLiteral("6 of 15 LEDs lit"));
    QVERIFY(ring->state().readOnly);
    QVERIFY(!ring->state().focusable);
    ring->valueInterface()->setCurrentValue(99);
    QCOMPARE(ring->valueInterface()->currentValue().toInt(), 40);
    QVERIFY(!ring->actionInterface());
}

void TestAccessibleEditor::reportsAreToldAFewTimesASecond()
{
    Reader reader;
    reader.plug();
    reader.startActive();
    reader.waitUntilConnected();
    QAccessible::setActive(true);
    QTestAccessibility::clearEvents();
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i <= 1000; ++i) {
        reader.device.turn(2, i % 128);
        QCoreApplication::processEvents();
    }
    QAccessibleValueChangeEvent last(reader.knobLED(2), 1000 % 128);
    QTRY_VERIFY(QTestAccessibility::containsEvent(&last));
    // The first, one every 300 ms, and the last.
    QVERIFY(QTestAccessibility::events().size() <= 2 + timer.elapsed() / 300);
    QAccessible::setActive(false);
}

void TestAccessibleEditor::nobodyListens()
{
    Reader reader;
    reader.plug();
    reader.startActive();
    QVERIFY(reader.window->findChildren<CRingWatch*>().isEmpty());
    QAccessible::setActive(true);
    QCOMPARE(reader.window->findChildren<CRingWatch*>().size(), k_numOfKnobs);
    QAccessible::setActive(false);
    QVERIFY(reader.window->findChildren<CRingWatch*>().isEmpty());
}

void TestAccessibleEditor::commandsLeaveANotice_data()
{
    QTest::addColumn<bool>("isField");
    QTest::addColumn<QString>("control");
    QTest::newRow("knob") << false << "Knob 4";
    QTest::newRow("field") << true << "Knob 4, MIDI channel";
}

void TestAccessibleEditor::commandsLeaveANotice()
{
    QFETCH(bool, isField);
    QFETCH(QString, control);
    Reader reader;
    reader.startActive();
    if (isField)
        reader.editor(1203)->goTo();
    else
        reader.page(3)->goTo();
    QAccessible::setActive(true);
    const auto isTold = [&](void (CMainWindow::*command)(), const QString& did) {
        (reader.window.get()->*command)();
        const Interface* told = Reader::child(reader.whole(), control + did);
        QVERIFY(told);
        QCOMPARE(told->role(), QAccessible::Notification);
        QCOMPARE(told->parent(), reader.whole());
        QCOMPARE(reader.window->findChildren<CNotice*>().size(), 1);
    };
    isTold(&CMainWindow::copy, " copied");
    isTold(&CMainWindow::copy, " copied"); // the same once more
    isTold(&CMainWindow::paste, " pasted");
    QAccessible::setActive(false);
}

void TestAccessibleEditor::noticeGoesWithWhoListens()
{
    Reader reader;
    reader.startActive();
    reader.window->copy();
    QVERIFY(!reader.window->findChild<CNotice*>());
    QAccessible::setActive(true);
    reader.window->copy();
    QVERIFY(reader.window->findChild<CNotice*>());
    QAccessible::setActive(false);
    QVERIFY(!reader.window->findChild<CNotice*>());
}

void TestAccessibleEditor::pageIsFocusedAndSelected()
{
    Reader reader;
    reader.startActive();
    QVERIFY(Reader::child(reader.whole(), "Knob 1")->state().selected);
    Interface* page = Reader::child(reader.whole(), "Knob 4");
    page->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    QVERIFY(page->state().focused);
    QVERIFY(page->state().selected);
    QVERIFY(!Reader::child(reader.whole(), "Knob 1")->state().selected);
    QTest::keyClick(reader.window->windowHandle(), Qt::Key_Tab);
    QVERIFY(!page->state().selected);
    QVERIFY(reader.of(3, "LED type")->state().selected);
}

void TestAccessibleEditor::buttonsArePressed()
{
    Reader reader;
    reader.startActive();
    Interface* pin = Reader::child(reader.whole(), "Keep in front");
    QVERIFY(!pin->state().checked);
    pin->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    QVERIFY(pin->state().checked);
    QVERIFY(reader.window->windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    Reader::child(reader.whole(), "Close")->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_VERIFY(!reader.window->isVisible());
}

void TestAccessibleEditor::onlineMarkIsChecked()
{
    Reader reader;
    reader.times.keepInterval = std::chrono::milliseconds(20);
    reader.plug();
    reader.startActive();
    reader.waitUntilConnected();
    Interface* mark = Reader::child(reader.whole(), "Online");
    QVERIFY(mark->state().checked);
    QVERIFY(mark->state().readOnly);
    reader.window->disconnectDevice();
    QVERIFY(!mark->state().checked);
}

void TestAccessibleEditor::aboutViewIsADialog()
{
    Reader reader;
    reader.startActive();
    reader.window->about();
    Interface* dialog = Reader::child(reader.whole(), k_editorName);
    QVERIFY(dialog);
    QCOMPARE(dialog->role(), QAccessible::Dialog);
    QCOMPARE(dialog->parent(), reader.whole());
    QCOMPARE(dialog->text(QAccessible::Description), k_version + '\n' + k_copyright);
    Interface* close = Reader::child(dialog, "Close");
    QVERIFY(close);
    close->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    const QPointer<CAboutView> about = reader.window->findChild<CAboutView*>();
    auto* animation = about->findChild<QPropertyAnimation*>();
    QTRY_COMPARE(animation->endValue().toInt(), about->height());
    animation->setCurrentTime(animation->totalDuration());
    QTRY_VERIFY(!about);
    QVERIFY(!Reader::child(reader.whole(), k_editorName));
}

void TestAccessibleEditor::coveredPagesAreOutOfReach()
{
    Reader reader;
    reader.startActive();
    Interface* page = Reader::child(reader.whole(), "Knob 4");
    Interface* field = reader.of(3, "CC number");
    const QList<Interface*> behind{page, field, reader.of(3, "LED ring")};
    const auto isOffscreen = [](const Interface* told) { return told->state().offscreen; };
    QVERIFY(std::ranges::none_of(behind, isOffscreen));
    QVERIFY(page->state().focusable && field->state().focusable);

    reader.window->about();
    QVERIFY(std::ranges::all_of(behind, isOffscreen));
    QVERIFY(!page->state().focusable && !field->state().focusable);
    for (Interface* told : {page, field})
        told->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    QVERIFY(reader.window->findChild<CAboutView*>()->hasFocus());
    field->actionInterface()->doAction(QAccessibleActionInterface::increaseAction());
    field->valueInterface()->setCurrentValue(100);
    field->editableTextInterface()->replaceText(0, 3, QStringLiteral("100"));
    QCOMPARE(reader.editor(1103)->getValue(), 7);

    delete reader.window->findChild<CAboutView*>();
    QVERIFY(std::ranges::none_of(behind, isOffscreen));
    field->valueInterface()->setCurrentValue(100);
    QCOMPARE(reader.editor(1103)->getValue(), 100);
}

KTZ_TEST(QApplication, TestAccessibleEditor)
#include "TestAccessibleEditor.moc"
