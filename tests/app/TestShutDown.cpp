#include "tests/app/EditorFixture.h"
#include "tests/support/CMessageBoxAnswer.h"
#include "tests/support/CTestCase.h"

#include <QLineEdit>
#include <QMenu>

#include <filesystem>
#include <fstream>
#include <thread>

namespace
{
const QString k_end = QStringLiteral("f043103e18050202f7");

/// Threads of this process; one that was joined is still among them for a moment. Those on which Qt converts large
/// pictures come and go as it likes, and do not count.
std::ptrdiff_t threadCount()
{
    const std::filesystem::directory_iterator tasks("/proc/self/task");
    return std::count_if(begin(tasks), end(tasks), [](const std::filesystem::directory_entry& task) {
        std::string name;
        std::getline(std::ifstream(task.path() / "comm"), name);
        return name != "Thread (pooled)";
    });
}
} // namespace

/// The window closed in every state: no crash, no thread left, an end message exactly when the device had answered.
class TestShutDown : public CTestCase
{
    Q_OBJECT

  private slots:
    void initTestCase();

    void duringTheSplashClosesAtOnce();
    void cancelledSaveKeepsTheWindowOpen();
    void savePromptAnsweredNoCloses();
    void unchangedSettingsCloseWithoutAQuestion();
    void connectedSendsTheEndMessage();
    void betweenStartAndTheFirstKeepReply();
    void afterALossSendsNoEndMessage();
    void withoutADevice();
    void withAMenuOpen();
    void withAContextMenuOpen();
    void withAMessageBoxOpen();
    void withATypedEditOpen();
    void withADragUnderWay();
    void withTheAboutViewOpen();
    void whileTheDeviceReports();
};

void TestShutDown::initTestCase()
{
    // The toolkit's own helper threads come with the first window and stay.
    EditorFixture fixture;
    fixture.startWhole();
}

void TestShutDown::duringTheSplashClosesAtOnce()
{
    EditorFixture fixture;
    fixture.plug();
    const std::ptrdiff_t threads = threadCount();
    CMainWindow& window = fixture.start();
    fixture.editor(1103)->setValue(99); // unsaved, and yet no question
    QVERIFY(window.close());
    fixture.window.reset();
    QTRY_VERIFY(threadCount() <= threads);
}

void TestShutDown::cancelledSaveKeepsTheWindowOpen()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    fixture.editor(1103)->setValue(99);
    CMessageBoxAnswer answer(QMessageBox::Cancel);
    QVERIFY(!window.close());
    QVERIFY(window.isVisible());
    QCOMPARE(answer.boxes().size(), 1);
    QCOMPARE(answer.boxes().first().text, k_checkSave);
    QCOMPARE(answer.boxes().first().buttons, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
}

void TestShutDown::savePromptAnsweredNoCloses()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    fixture.editor(1103)->setValue(99);
    CMessageBoxAnswer answer(QMessageBox::No);
    QVERIFY(window.close());
    QCOMPARE(answer.boxes().size(), 1);
}

void TestShutDown::unchangedSettingsCloseWithoutAQuestion()
{
    EditorFixture fixture;
    fixture.plug();
    CMainWindow& window = fixture.startWhole();
    CMessageBoxAnswer answer(QMessageBox::Cancel);
    QVERIFY(window.close());
    QVERIFY(answer.boxes().isEmpty());
}

void TestShutDown::connectedSendsTheEndMessage()
{
    EditorFixture fixture;
    fixture.plug();
    const std::ptrdiff_t threads = threadCount();
    CMainWindow& window = fixture.startWhole();
    fixture.waitUntilConnected();
    QVERIFY(window.close());
    fixture.window.reset();
    QCOMPARE(fixture.sent().last(), k_end);
    QCOMPARE(fixture.sent().count(k_end), 1);
    QTRY_VERIFY(threadCount() <= threads);
}

void TestShutDown::betweenStartAndTheFirstKeepReply()
{
    EditorFixture fixture;
    fixture.plug();
    fixture.device.dropKeeps(CSimulatedDevice::k_always);
    const std::ptrdiff_t threads = threadCount();
    fixture.startWhole();
    fixture.window.reset();
    QVERIFY(!fixture.sent().contains(k_end));
    QTRY_VERIFY(threadCount() <= threads);
}

void TestShutDown::afterALossSendsNoEndMessage()
{
    EditorFixture fixture;
    fixture.plug();
    const std::ptrdiff_t threads = threadCount();
    fixture.startWhole();
    fixture.waitUntilConnected();
    {
        CMessageBoxAnswer answer(QMessageBox::Ok);
        fixture.device.refuseSend(1, 1);
        QTRY_VERIFY(!answer.boxes().isEmpty());
    }
    fixture.window.reset();
    QVERIFY(!fixture.sent().contains(k_end));
    QTRY_VERIFY(threadCount() <= threads);
}

void TestShutDown::withoutADevice()
{
    EditorFixture fixture;
    const std::ptrdiff_t threads = threadCount();
    fixture.startWhole();
    fixture.window.reset();
    QVERIFY(fixture.sent().isEmpty());
    QTRY_VERIFY(threadCount() <= threads);
}

void TestShutDown::withAMenuOpen()
{
    EditorFixture fixture;
    fixture.plug();
    fixture.startWhole();
    fixture.waitUntilConnected();
    fixture.menuBar()->actions()[1]->menu()->popup(QPoint(20, 20));
    QTRY_VERIFY(QApplication::activePopupWidget());
    fixture.window.reset();
    QVERIFY(!QApplication::activePopupWidget());
    QCOMPARE(fixture.sent().last(), k_end);
}

void TestShutDown::withAContextMenuOpen()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    // The menu runs a loop of its own, in which the window is closed.
    QTimer::singleShot(0, &window, [&] {
        QVERIFY(QApplication::activePopupWidget());
        window.close();
        QApplication::activePopupWidget()->close();
    });
    fixture.page(3)->showContextMenu(window.mapToGlobal(QPoint(100, 100)));
    QVERIFY(!window.isVisible());
    fixture.window.reset();
}

void TestShutDown::withAMessageBoxOpen()
{
    EditorFixture fixture;
    fixture.plug();
    CMainWindow& window = fixture.startWhole();
    fixture.waitUntilConnected();
    QTimer::singleShot(50, &window, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box);
        window.close();
        box->close();
    });
    window.revert();
    QVERIFY(!window.isVisible());
    fixture.window.reset();
    QCOMPARE(fixture.sent().last(), k_end);
}

void TestShutDown::withATypedEditOpen()
{
    EditorFixture fixture;
    fixture.plug();
    fixture.startWhole();
    fixture.waitUntilConnected();
    QTest::mouseDClick(fixture.slider(1102), Qt::LeftButton);
    auto* field = fixture.slider(1102)->findChild<QLineEdit*>();
    QVERIFY(field->isVisible());
    QTest::keyClicks(field, QStringLiteral("33"));
    fixture.window.reset();
    // What was not accepted is not sent.
    QCOMPARE(fixture.device.settings(2).cc, 10);
    QCOMPARE(fixture.sent().last(), k_end);
}

void TestShutDown::withADragUnderWay()
{
    EditorFixture fixture;
    fixture.startWhole();
    QTest::mousePress(fixture.slider(1102), Qt::LeftButton);
    QVERIFY(QApplication::overrideCursor());
    fixture.window.reset();
    QVERIFY(!QApplication::overrideCursor());
}

void TestShutDown::withTheAboutViewOpen()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    window.about();
    QVERIFY(window.close());
    fixture.window.reset();
}

void TestShutDown::whileTheDeviceReports()
{
    EditorFixture fixture;
    fixture.plug();
    fixture.startWhole();
    fixture.waitUntilConnected();
    std::atomic<bool> stop = false;
    std::thread hand([&] {
        for (int value = 0; !stop; value = (value + 1) % 128) {
            fixture.device.turn(value % 8, value);
            // Without a pause a thread that sends for this one too, as the keep thread may, would never be done.
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
    });
    QTest::qWait(20);
    fixture.window.reset();
    stop = true;
    hand.join();
    QCoreApplication::processEvents();
    QCOMPARE(fixture.sent().last(), k_end);
}

KTZ_TEST(QApplication, TestShutDown)
#include "TestShutDown.moc"
