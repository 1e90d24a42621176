#include "tests/app/EditorFixture.h"
#include "tests/app/StageFile.h"
#include "tests/support/CFileDialogAnswer.h"
#include "tests/support/CMessageBoxAnswer.h"
#include "tests/support/CTestCase.h"
#include "widgets/CLineEdit.h"
#include "widgets/COnOffButton.h"

#include <QClipboard>
#include <QMenu>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>

namespace
{
constexpr int k_ccOfKnob2 = 1102;
constexpr int k_ccOfKnob3 = 1103;
constexpr int k_channelOfKnob5 = 1205;

/// A started editor with the keyboard, and a hand on its pointer and its keys: every event goes to the window.
struct Hand : EditorFixture
{
    Hand()
    {
        // Losses are noticed at once.
        times.keepInterval = std::chrono::milliseconds(20);
        QGuiApplication::clipboard()->clear();
    }

    void startActive()
    {
        startWhole();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }

    [[nodiscard]] QPoint at(const QWidget* widget) const
    {
        return widget->mapTo(window.get(), widget->rect().center());
    }

    void press(const QWidget* widget, Qt::MouseButton button = Qt::LeftButton) const
    {
        QCursor::setPos(widget->mapToGlobal(widget->rect().center()));
        QTest::mousePress(window->windowHandle(), button, {}, at(widget));
    }

    void release(const QWidget* widget, Qt::MouseButton button = Qt::LeftButton) const
    {
        QTest::mouseRelease(window->windowHandle(), button, {}, at(widget));
    }

    void click(const QWidget* widget) const
    {
        press(widget);
        release(widget);
    }

    /// Right-clicks and closes the menu that opens. The press opens it, the release goes to it.
    void rightClick(const QWidget* widget) const
    {
        bool isOpen = false;
        QTimer::singleShot(0, window.get(), [&] {
            QWidget* menu = QApplication::activePopupWidget();
            isOpen = menu != nullptr;
            if (!isOpen)
                return;
            QTest::mouseRelease(menu->windowHandle(), Qt::RightButton, {}, QPoint(-50, -50));
            QTest::keyClick(menu, Qt::Key_Escape);
        });
        press(widget, Qt::RightButton);
        QVERIFY(isOpen);
    }

    void key(Qt::Key which, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(window->windowHandle(), which, modifiers);
    }

    /// Opens the field of a number and types another.
    void type(int id, const QString& text) const
    {
        QWidget* field = slider(id);
        static_cast<void>(field->grab());
        QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, at(field));
        QVERIFY(field->findChild<CLineEdit*>()->hasFocus());
        for (const QChar character : text)
            QTest::keyClick(window->windowHandle(), static_cast<Qt::Key>(character.unicode()));
    }

    /// The upper or the lower arrow of an editor, in a hurry.
    [[nodiscard]] COnOffButton* arrow(int id, int half = 0) const
    {
        COnOffButton* button = editor(id)->findChildren<COnOffButton*>().value(half);
        button->setAutoRepeatDelay(5);
        button->setAutoRepeatInterval(5);
        return button;
    }
};

/// Watches a held arrow below whatever opens over the window, which it closes then.
class CHeldArrowWatch : public QObject
{
    Q_OBJECT

  public:
    explicit CHeldArrowWatch(Hand& hand) : m_hand(hand)
    {
        startTimer(30); // six repeats
    }

    int m_looks = 0;
    bool m_isDown = true;
    int m_value = 0;
    int m_valueLater = -1;
    qsizetype m_sent = 0;
    qsizetype m_sentLater = -1;

  protected:
    void timerEvent(QTimerEvent*) override
    {
        QWidget* over = QApplication::activePopupWidget();
        if (over == nullptr)
            over = QApplication::activeModalWidget();
        if (over == nullptr)
            return;
        if (m_looks == 2) {
            over->close(); // a loss may be told twice
            return;
        }
        ++m_looks;
        const qsizetype sent = m_hand.device.received().size();
        if (m_looks == 1) {
            m_isDown = m_hand.arrow(k_ccOfKnob2)->isDown();
            m_value = m_hand.editor(k_ccOfKnob2)->getValue();
            m_sent = sent;
            return;
        }
        m_valueLater = m_hand.editor(k_ccOfKnob2)->getValue();
        m_sentLater = sent;
        over->close();
    }

  private:
    Hand& m_hand;
};
} // namespace

/// What a clumsy hand does to the whole window: presses whose release goes elsewhere, and commands in mid-typing.
class TestWindowInput : public CTestCase
{
    Q_OBJECT

  private slots:
    void heldArrowStopsUnderTheWarningOfALostConnection();
    void heldArrowStopsUnderAContextMenu();
    void heldCloseButtonDoesNotCloseAfterAMessageBox();
    void leftClickAfterARightClickSelects();
    void commandFinishesTyping_data();
    void commandFinishesTyping();
    void commandWithAnEmptiedFieldKeepsTheValue();
    void clipboardKeysInAFieldAreTheFields();
    void pasteKeyWorksAfterARightClickOnTheArrows();
    void pasteKeyFollowsTheClipboard();
};

void TestWindowInput::heldArrowStopsUnderTheWarningOfALostConnection()
{
    Hand hand;
    hand.plug();
    hand.startActive();
    hand.waitUntilConnected();
    const int before = hand.editor(k_ccOfKnob2)->getValue();
    CHeldArrowWatch watch(hand);
    hand.press(hand.arrow(k_ccOfKnob2));
    QTRY_VERIFY(hand.editor(k_ccOfKnob2)->getValue() > before + 1);
    hand.device.unplug();
    QTRY_COMPARE(watch.m_looks, 2);
    QVERIFY(!watch.m_isDown);
    QCOMPARE(watch.m_valueLater, watch.m_value);
    QVERIFY(watch.m_value < 127);
}

void TestWindowInput::heldArrowStopsUnderAContextMenu()
{
    Hand hand;
    hand.plug();
    hand.startActive();
    hand.waitUntilConnected();
    const int before = hand.editor(k_ccOfKnob2)->getValue();
    CHeldArrowWatch watch(hand);
    hand.press(hand.arrow(k_ccOfKnob2));
    QTRY_VERIFY(hand.editor(k_ccOfKnob2)->getValue() > before + 1);
    hand.press(hand.arrow(k_ccOfKnob2), Qt::RightButton); // until the menu has closed
    QCOMPARE(watch.m_looks, 2);
    QVERIFY(!watch.m_isDown);
    QCOMPARE(watch.m_valueLater, watch.m_value);
    QVERIFY(watch.m_value < 127);
    // Keep messages go on.
    QVERIFY(watch.m_sentLater - watch.m_sent <= 3);
    QCOMPARE(hand.device.settings(2).cc, watch.m_value);
    hand.release(hand.arrow(k_ccOfKnob2));
    QCOMPARE(hand.editor(k_ccOfKnob2)->getValue(), watch.m_value);
}

void TestWindowInput::heldCloseButtonDoesNotCloseAfterAMessageBox()
{
    Hand hand;
    hand.plug();
    hand.startActive();
    hand.waitUntilConnected();
    auto* button = hand.window->findChild<COnOffButton*>(QStringLiteral("closeWindowBtn"));
    hand.press(button);
    QVERIFY(button->isDown());
    CMessageBoxAnswer answer(QMessageBox::NoButton); // closes the box
    hand.device.unplug();
    QTRY_VERIFY(answer.sawOnly(k_connectionErrorMessage));
    QTRY_VERIFY(QApplication::activeModalWidget() == nullptr);
    QVERIFY(!button->isDown());
    hand.release(button);
    QVERIFY(hand.window->isVisible());
    hand.click(button);
    QVERIFY(!hand.window->isVisible());
}

void TestWindowInput::leftClickAfterARightClickSelects()
{
    Hand hand;
    hand.startActive();
    hand.rightClick(hand.slider(k_ccOfKnob2));
    hand.click(hand.slider(k_channelOfKnob5));
    hand.click(hand.slider(k_ccOfKnob2));
    hand.key(Qt::Key_C, Qt::ControlModifier);
    const QMimeData* copied = QGuiApplication::clipboard()->mimeData();
    QCOMPARE(copied->formats(), QStringList{k_mimeType_CCNum});
    QCOMPARE(copied->data(k_mimeType_CCNum), QByteArray("10"));
}

void TestWindowInput::commandFinishesTyping_data()
{
    QTest::addColumn<std::function<void(Hand&, const QTemporaryDir&)>>("command");
    QTest::addColumn<int>("value"); // of the number afterwards
    using Command = std::function<void(Hand&, const QTemporaryDir&)>;
    QTest::newRow("Save") << Command([](Hand& hand, const QTemporaryDir& folder) {
        hand.key(Qt::Key_S, Qt::ControlModifier);
        QFile file(folder.filePath(QStringLiteral("stage.CJX")));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains("<key1102>42</key1102>"));
    }) << 42;
    QTest::newRow("Save As") << Command([](Hand& hand, const QTemporaryDir& folder) {
        const QString path = folder.filePath(QStringLiteral("other.CJX"));
        CFileDialogAnswer answer({path});
        hand.action(k_saveAsString)->trigger();
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains("<key1102>42</key1102>"));
    }) << 42;
    QTest::newRow("Open") << Command([](Hand& hand, const QTemporaryDir&) {
        CMessageBoxAnswer answer(QMessageBox::Cancel);
        hand.key(Qt::Key_O, Qt::ControlModifier);
        QCOMPARE(answer.boxes().size(), 1); // about the change
    }) << 42;
    QTest::newRow("open request") << Command([](Hand& hand, const QTemporaryDir& folder) {
        CMessageBoxAnswer answer(QMessageBox::No);
        hand.window->setApplicationFilePath(folder.filePath(QStringLiteral("stage.CJX")));
        hand.window->applicationFileOpen();
        QCOMPARE(answer.boxes().size(), 1);
    }) << 22;
    QTest::newRow("Copy") << Command([](Hand& hand, const QTemporaryDir&) {
        hand.action(k_copyString)->trigger();
        QCOMPARE(QGuiApplication::clipboard()->mimeData()->data(k_mimeType_CCNum), QByteArray("42"));
    }) << 42;
    QTest::newRow("Paste") << Command([](Hand& hand, const QTemporaryDir&) {
        auto* mimeData = new QMimeData;
        mimeData->setData(k_mimeType_CCNum, "77");
        QGuiApplication::clipboard()->setMimeData(mimeData);
        hand.action(k_pasteString)->trigger();
        QVERIFY(!hand.slider(k_ccOfKnob2)->findChild<CLineEdit*>()->isVisible());
    }) << 77;
    QTest::newRow("Revert") << Command([](Hand& hand, const QTemporaryDir&) {
        CMessageBoxAnswer answer(QMessageBox::Yes);
        hand.window->revert();
    }) << 10;
    QTest::newRow("Load Factory Preset") << Command([](Hand& hand, const QTemporaryDir&) {
        CMessageBoxAnswer answer(QMessageBox::Yes);
        hand.window->factoryReset();
    }) << 10;
    QTest::newRow("closing the window") << Command([](Hand& hand, const QTemporaryDir&) {
        CMessageBoxAnswer answer(QMessageBox::Cancel);
        QVERIFY(!hand.window->close());
        QCOMPARE(answer.boxes().size(), 1);
    }) << 42;
}

void TestWindowInput::commandFinishesTyping()
{
    QFETCH(std::function<void(Hand&, const QTemporaryDir&)>, command);
    QFETCH(int, value);
    const QTemporaryDir folder;
    Hand hand;
    hand.startActive();
    hand.window->setApplicationFilePath(stageFile(folder));
    hand.window->applicationFileOpen();
    hand.type(k_ccOfKnob2, QStringLiteral("42"));
    command(hand, folder);
    QCOMPARE(hand.editor(k_ccOfKnob2)->getValue(), value);
    QVERIFY(!hand.slider(k_ccOfKnob2)->findChild<CLineEdit*>()->isVisible());
}

void TestWindowInput::commandWithAnEmptiedFieldKeepsTheValue()
{
    Hand hand;
    hand.startActive();
    hand.type(k_ccOfKnob2, QString());
    hand.key(Qt::Key_Delete);
    CMessageBoxAnswer answer(QMessageBox::Cancel);
    QVERIFY(hand.window->close()); // nothing has changed
    QVERIFY(answer.boxes().isEmpty());
    QCOMPARE(hand.editor(k_ccOfKnob2)->getValue(), 10);
}

void TestWindowInput::clipboardKeysInAFieldAreTheFields()
{
    Hand hand;
    hand.startActive();
    hand.type(k_ccOfKnob2, QStringLiteral("42"));
    hand.key(Qt::Key_A, Qt::ControlModifier);
    hand.key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("42"));
    QVERIFY(!QGuiApplication::clipboard()->mimeData()->hasFormat(k_mimeType_CCNum));
    QGuiApplication::clipboard()->setText(QStringLiteral("17"));
    hand.key(Qt::Key_V, Qt::ControlModifier);
    const auto* field = hand.slider(k_ccOfKnob2)->findChild<CLineEdit*>();
    QVERIFY(field->isVisible());
    QCOMPARE(field->text(), QStringLiteral("17"));
    QCOMPARE(hand.editor(k_ccOfKnob2)->getValue(), 10);
}

void TestWindowInput::pasteKeyWorksAfterARightClickOnTheArrows()
{
    Hand hand;
    hand.startActive();
    hand.click(hand.slider(k_ccOfKnob2));
    hand.key(Qt::Key_C, Qt::ControlModifier);
    // It takes no CC number.
    hand.click(hand.slider(k_channelOfKnob5));
    QVERIFY(!hand.action(k_pasteString)->isEnabled());
    hand.rightClick(hand.arrow(k_ccOfKnob3));
    hand.key(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(hand.editor(k_ccOfKnob3)->getValue(), 10);
}

void TestWindowInput::pasteKeyFollowsTheClipboard()
{
    Hand hand;
    hand.startActive();
    hand.click(hand.slider(k_ccOfKnob3));
    QVERIFY(!hand.action(k_pasteString)->isEnabled());
    auto* mimeData = new QMimeData;
    mimeData->setData(k_mimeType_CCNum, "42");
    QGuiApplication::clipboard()->setMimeData(mimeData);
    hand.key(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(hand.editor(k_ccOfKnob3)->getValue(), 42);
}

KTZ_TEST(QApplication, TestWindowInput)
#include "TestWindowInput.moc"
