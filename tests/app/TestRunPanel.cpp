#include "app/common/Constants.h"
#include "app/demo/RunPanel.h"
#include "midi/CMIDIPortWrapper.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/device/CTrafficFile.h"
#include "simulator/device/DeviceMessages.h"
#include "simulator/transports/CPolledTransport.h"
#include "simulator/transports/DevicePort.h"
#include "tests/simulator/COtherClient.h"
#include "tests/support/CMessageBoxAnswer.h"
#include "tests/support/CTestCase.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>

#include <cerrno>

using namespace DeviceMessages;

/// The panel by itself, from its start to its end, on a sequencer in the process.
class TestRunPanel : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void editorFindsTheDeviceAndIsAnswered();
    void knobsTurnAndSwitchAreHeard();
    void pulledCableTakesThePortAwayUntilItIsInAgain();
    void cableThatCannotBePutInStaysOutAndSaysWhy();
    void everyMessageIsInTheLog();
    void portThatCannotBeOpenedIsAFailure();

  private:
    /// Runs the panel and, once it is on the screen, what a user does; the panel is closed then. The result is the
    /// panel's status.
    int run(const std::function<void(QWidget& panel)>& use, const QString& log = {});

    std::unique_ptr<CSimulatedDevice> m_device;
};

namespace
{
QWidget* shownPanel()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto panel = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
        return window->isVisible() && window->windowTitle() == "KTZ-JX device";
    });
    return panel == windows.end() ? nullptr : *panel;
}

QAbstractButton* button(const QWidget& panel, const char* name)
{
    return panel.findChild<QAbstractButton*>(name);
}

/// The editor's port among the system's, -1 for none.
int editorPort()
{
    CMIDIPortWrapper directory;
    directory.createOutputPortList();
    return directory.getOutputPortByName(k_jxEditorPortName);
}
} // namespace

void TestRunPanel::init()
{
    CTestCase::init();
    FakeALSA::reset();
    m_device = std::make_unique<CSimulatedDevice>();
}

int TestRunPanel::run(const std::function<void(QWidget& panel)>& use, const QString& log)
{
    CTrafficFile file(*m_device);
    if (!log.isEmpty() && !file.open(log))
        return -1;
    const auto makePort = [&, used = false]() mutable {
        if (!std::exchange(used, true)) {
            QTimer::singleShot(0, [&use] {
                QTRY_VERIFY(shownPanel() != nullptr);
                QVERIFY(QTest::qWaitForWindowExposed(shownPanel()));
                use(*shownPanel());
                shownPanel()->close();
            });
        }
        return createDevicePort(3);
    };
    QByteArray name("ktz-jx-device");
    std::array<char*, 2> arguments{name.data(), nullptr};
    return runPanel(1, arguments.data(), makePort, *m_device, file);
}

void TestRunPanel::editorFindsTheDeviceAndIsAnswered()
{
    const int status = run([](QWidget& panel) {
        QVERIFY(editorPort() >= 0);
        const COtherClient editor(FakeALSA::newestOpenClient(), k_editorPort);
        editor.send(requestAll());
        QTRY_COMPARE(editor.received().size(), 2 * CSimulatedDevice::k_knobs);
        QTRY_VERIFY(panel.findChild<QLabel*>("display")->text().startsWith("Received: Request for all settings"));
        QTRY_COMPARE(panel.findChild<QTableView*>("messages")->model()->rowCount(), 1 + 2 * CSimulatedDevice::k_knobs);
    });
    QCOMPARE(status, 0);
    QCOMPARE(FakeALSA::newestOpenClient(), -1);
}

void TestRunPanel::knobsTurnAndSwitchAreHeard()
{
    const int status = run([](QWidget& panel) {
        const COtherClient editor(FakeALSA::newestOpenClient(), k_editorPort);
        QTest::keyClick(panel.findChild<QWidget*>("dial3"), Qt::Key_End);
        QCOMPARE(editor.received(), QByteArrayList{noticeValue(3, 127)});
        QTest::mouseClick(button(panel, "silence"), Qt::LeftButton);
        editor.send(start());
        QTRY_VERIFY(panel.findChild<QLabel*>("display")->text().startsWith("Received: Start"));
        QCOMPARE(editor.received().size(), 1);
    });
    QCOMPARE(status, 0);
}

void TestRunPanel::pulledCableTakesThePortAwayUntilItIsInAgain()
{
    const int status = run([this](QWidget& panel) {
        QAbstractButton* const cable = button(panel, "cable");
        m_device->turn(0, 99);
        QTest::keyClick(cable, Qt::Key_Space);
        QTRY_VERIFY(!cable->isChecked());
        QCOMPARE(editorPort(), -1);
        QCOMPARE(FakeALSA::newestOpenClient(), -1);

        QTest::keyClick(cable, Qt::Key_Space);
        QTRY_VERIFY(cable->isChecked());
        QVERIFY(editorPort() >= 0);
        QVERIFY(!button(panel, "restart")->isVisible()); // nobody here can start an editor
        const COtherClient editor(FakeALSA::newestOpenClient(), k_editorPort);
        editor.send(start());
        QTRY_COMPARE(editor.received(), QByteArrayList{start()});
        QCOMPARE(m_device->value(0), 99);
    });
    QCOMPARE(status, 0);
}

void TestRunPanel::cableThatCannotBePutInStaysOutAndSaysWhy()
{
    const int status = run([this](QWidget& panel) {
        QAbstractButton* const cable = button(panel, "cable");
        QTest::mouseClick(cable, Qt::LeftButton);
        QVERIFY(!m_device->isPlugged());
        FakeALSA::failNext("snd_seq_open", -EAGAIN);
        const CMessageBoxAnswer answer(QMessageBox::Ok);
        QTest::mouseClick(cable, Qt::LeftButton);
        QCOMPARE(answer.boxes().size(), 1);
        QCOMPARE(answer.boxes().constFirst().text,
                 QStringLiteral("The cable cannot be put in: cannot open the ALSA sequencer: Resource temporarily "
                                "unavailable"));
        QVERIFY(!cable->isChecked());
        QTest::mouseClick(cable, Qt::LeftButton);
        QVERIFY(cable->isChecked());
    });
    QCOMPARE(status, 0);
}

void TestRunPanel::everyMessageIsInTheLog()
{
    const QTemporaryDir folder;
    const QString log = folder.filePath("messages");
    const int status = run([this](QWidget&) { m_device->turn(0, 1); }, log);
    QCOMPARE(status, 0);
    QFile file(log);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("sent      F0 43 10 3E 18 05 02 04 00 01 F7"));
}

void TestRunPanel::portThatCannotBeOpenedIsAFailure()
{
    FakeALSA::failNext("snd_seq_open", -ENODEV);
    QCOMPARE(run([](QWidget&) { QFAIL("there is no panel"); }), 1);
    QVERIFY(!m_device->isPlugged());
}

KTZ_TEST_MAIN(TestRunPanel)(int argc, char** argv)
{
    TestRunPanel test; // each run of the panel has an application object of its own
    return QTest::qExec(&test, argc, argv);
}
#include "TestRunPanel.moc"
