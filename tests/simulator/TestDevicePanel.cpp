#include "simulator/device/DeviceMessages.h"
#include "simulator/panel/CDevicePanel.h"
#include "simulator/panel/CMessageModel.h"
#include "simulator/panel/CPanelKnob.h"
#include "simulator/panel/PanelLook.h"
#include "simulator/panel/PanelText.h"
#include "tests/simulator/CRecordingTransport.h"
#include "tests/support/CTestCase.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QTableView>

#include <memory>

using namespace DeviceMessages;

class TestDevicePanel : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();
    void showsWhatEveryKnobHolds();
    void followsTheDevice();
    void knobIsTurnedByKey();
    void knobIsTurnedByDrag();
    void knobFollowsTheDeviceWithoutAnotherReport();
    void displaySaysWhatWasHeardAndSaid();
    void tableShowsBothDirections();
    void reportOfNoKnobIsShownAsItIs();
    void keepsUpWithAFlood();
    void switchSilencesAndEndsTheSilence();
    void cableIsPulledAndPutInByClickAndByKey();
    void cableIsPulledAndPutInByDrag();
    void cableStaysOutWhereNobodyPlugsItIn();
    void cableFollowsTheDevice();
    void editorIsRestartedOnceTheCableIsInAgain();
    void nobodyIsOfferedARestartThatTheOwnerCannotDo();
    void everyControlHasANameAndIsReachedByTab();
    void switchAndCableAreCheckBoxesForScreenReaders();
    void darkDesktopLeavesThePlateLight();
    void clockMovesWithRealTime();

  private:
    template <typename Widget> Widget* child(const char* name) const
    {
        return m_panel->findChild<Widget*>(name);
    }

    [[nodiscard]] CPanelKnob* panelKnob(int knob) const
    {
        return child<CPanelKnob>(qPrintable(QStringLiteral("dial%1").arg(knob)));
    }

    CRecordingTransport m_transport;
    std::unique_ptr<CSimulatedDevice> m_device;
    std::unique_ptr<CDevicePanel> m_panel;
};

void TestDevicePanel::init()
{
    CTestCase::init();
    m_device = std::make_unique<CSimulatedDevice>();
    m_device->plug(m_transport);
    m_panel = std::make_unique<CDevicePanel>(*m_device);
    connect(m_panel.get(), &CDevicePanel::cablePulled, this, [this] { m_device->unplug(); });
    connect(m_panel.get(), &CDevicePanel::cablePutIn, this, [this] { m_device->plug(m_transport); });
    m_panel->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_panel.get()));
}

void TestDevicePanel::cleanup()
{
    m_panel.reset();
    m_device.reset();
    static_cast<void>(m_transport.take());
}

void TestDevicePanel::showsWhatEveryKnobHolds()
{
    for (int knob = 0; knob < CSimulatedDevice::k_knobs; ++knob) {
        QCOMPARE(panelKnob(knob)->accessibleName(), QStringLiteral("Knob %1").arg(knob + 1));
        QCOMPARE(panelKnob(knob)->accessibleDescription(), PanelText::settings(m_device->settings(knob)));
    }
}

void TestDevicePanel::followsTheDevice()
{
    QVERIFY(m_device->receive(changeParameter(5, {1, 2, 3, 4, 3})));
    QTRY_COMPARE(panelKnob(5)->accessibleDescription(), QStringLiteral("CC 1, channel 3, max 3, min 4, LED convex"));
}

void TestDevicePanel::knobIsTurnedByKey()
{
    QTest::keyClick(panelKnob(3), Qt::Key_Up);
    QCOMPARE(m_device->value(3), 1);
    QTest::keyClick(panelKnob(3), Qt::Key_End);
    QCOMPARE(m_device->value(3), 127);
    QCOMPARE(m_transport.take(), QList({noticeValue(3, 1), noticeValue(3, 127)}));
}

void TestDevicePanel::knobIsTurnedByDrag()
{
    QTest::mousePress(panelKnob(0), Qt::LeftButton, {}, {50, 40});
    QTest::mouseMove(panelKnob(0), {50, 30});
    QTest::mouseRelease(panelKnob(0), Qt::LeftButton, {}, {50, 30});
    QCOMPARE(m_device->value(0), 10);
    QCOMPARE(m_transport.take(), QList{noticeValue(0, 10)});
}

void TestDevicePanel::knobFollowsTheDeviceWithoutAnotherReport()
{
    m_device->turn(6, 90);
    QTRY_COMPARE(panelKnob(6)->value(), 90);
    QCOMPARE(m_transport.take(), QList{noticeValue(6, 90)});
}

void TestDevicePanel::displaySaysWhatWasHeardAndSaid()
{
    const auto* const display = child<QLabel>("display");
    QVERIFY(m_device->receive(requestAll()));
    m_device->turn(2, 64);
    QVERIFY(m_device->receive(keep())); // is not shown
    QTRY_COMPARE(display->text(),
                 QStringLiteral("Received: Request for all settings\nSent: Knob 3: CC 10, channel 1, value 64"));
}

void TestDevicePanel::tableShowsBothDirections()
{
    const auto* const table = child<QTableView>("messages");
    QVERIFY(m_device->receive(requestAll()));
    QTRY_COMPARE(table->model()->rowCount(), 1 + 2 * CSimulatedDevice::k_knobs);
    const auto text = [table](int row, int column) { return table->model()->index(row, column).data().toString(); };
    QCOMPARE(text(0, CMessageModel::Direction), QStringLiteral("received"));
    QCOMPARE(text(0, CMessageModel::Meaning), QStringLiteral("Request for all settings"));
    QCOMPARE(text(2, CMessageModel::Direction), QStringLiteral("sent"));
    QCOMPARE(text(2, CMessageModel::Meaning), QStringLiteral("Knob 1: value 0"));
    QCOMPARE(text(2, CMessageModel::Bytes), QStringLiteral("F0 43 10 3E 18 05 02 04 00 00 F7"));
}

void TestDevicePanel::reportOfNoKnobIsShownAsItIs()
{
    m_device->send(noticeValue(100, 1));
    QTRY_VERIFY(child<QLabel>("display")->text().endsWith("Sent: Knob 101: value 1"));
}

void TestDevicePanel::keepsUpWithAFlood()
{
    constexpr int k_turns = 8000;
    for (int turn = 0; turn < k_turns; ++turn)
        m_device->turn(turn % 8, turn % 128);
    const QAbstractItemModel& shown = *child<QTableView>("messages")->model();
    const QString last = PanelText::meaning(noticeValue((k_turns - 1) % 8, (k_turns - 1) % 128));
    QTRY_COMPARE(shown.index(shown.rowCount() - 1, CMessageModel::Meaning).data().toString(), last);
    QCOMPARE(shown.rowCount(), CMessageModel::k_limit);
}

void TestDevicePanel::switchSilencesAndEndsTheSilence()
{
    auto* const silence = child<QAbstractButton>("silence");
    QTest::mouseClick(silence, Qt::LeftButton);
    QVERIFY(m_device->isSilent());
    QVERIFY(silence->isChecked());
    QTest::keyClick(silence, Qt::Key_Space);
    QVERIFY(!m_device->isSilent());
}

void TestDevicePanel::cableIsPulledAndPutInByClickAndByKey()
{
    auto* const cable = child<QAbstractButton>("cable");
    QVERIFY(cable->isChecked());
    QTest::mouseClick(cable, Qt::LeftButton);
    QVERIFY(!m_device->isPlugged());
    QVERIFY(!cable->isChecked());
    QTest::keyClick(cable, Qt::Key_Space);
    QVERIFY(m_device->isPlugged());
    QVERIFY(cable->isChecked());
}

void TestDevicePanel::cableIsPulledAndPutInByDrag()
{
    auto* const cable = child<QAbstractButton>("cable");
    const QPoint plug(45, 13);
    const auto drag = [&](int pixels) {
        QTest::mousePress(cable, Qt::LeftButton, {}, plug);
        QTest::mouseMove(cable, plug + QPoint(pixels, 0));
        QTest::mouseRelease(cable, Qt::LeftButton, {}, plug + QPoint(pixels, 0));
    };
    drag(12); // not far enough: it slips back
    QVERIFY(m_device->isPlugged());
    drag(30);
    QVERIFY(!m_device->isPlugged());
    drag(-30);
    QVERIFY(m_device->isPlugged());
}

void TestDevicePanel::cableStaysOutWhereNobodyPlugsItIn()
{
    disconnect(m_panel.get(), &CDevicePanel::cablePutIn, nullptr, nullptr);
    auto* const cable = child<QAbstractButton>("cable");
    QTest::mouseClick(cable, Qt::LeftButton);
    QTest::mouseClick(cable, Qt::LeftButton);
    QVERIFY(!m_device->isPlugged());
    QVERIFY(!cable->isChecked());
}

void TestDevicePanel::cableFollowsTheDevice()
{
    m_device->unplug();
    QTRY_VERIFY(!child<QAbstractButton>("cable")->isChecked());
}

void TestDevicePanel::editorIsRestartedOnceTheCableIsInAgain()
{
    auto* const restart = child<QAbstractButton>("restart");
    auto* const cable = child<QAbstractButton>("cable");
    m_panel->offerEditorRestart();
    QVERIFY(!restart->isVisible());
    QTest::mouseClick(cable, Qt::LeftButton);
    QVERIFY(!restart->isVisible());
    QTest::mouseClick(cable, Qt::LeftButton);
    QVERIFY(restart->isVisible());
    QSignalSpy wanted(m_panel.get(), &CDevicePanel::editorRestartWanted);
    QTest::mouseClick(restart, Qt::LeftButton);
    QCOMPARE(wanted.size(), 1);
}

void TestDevicePanel::nobodyIsOfferedARestartThatTheOwnerCannotDo()
{
    auto* const cable = child<QAbstractButton>("cable");
    QTest::mouseClick(cable, Qt::LeftButton);
    QTest::mouseClick(cable, Qt::LeftButton);
    QVERIFY(m_device->isPlugged());
    QVERIFY(!child<QAbstractButton>("restart")->isVisible());
}

void TestDevicePanel::everyControlHasANameAndIsReachedByTab()
{
    const auto name = [](QWidget* widget) {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    };
    m_panel->activateWindow();
    child<QAbstractButton>("silence")->setFocus();
    QTRY_VERIFY(child<QAbstractButton>("silence")->hasFocus());
    QStringList names{name(QApplication::focusWidget())};
    do {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        names += name(QApplication::focusWidget());
    } while (names.last() != names.first() && names.size() < 20);
    QCOMPARE(names, QStringList({"Answers nothing", "Cable", "Knob 1", "Knob 2", "Knob 3", "Knob 4", "Knob 5", "Knob 6",
                                 "Knob 7", "Knob 8", "Filter", "Copy", "Save As...", "Messages", "Answers nothing"}));
}

void TestDevicePanel::switchAndCableAreCheckBoxesForScreenReaders()
{
    for (const char* const control : {"silence", "cable"}) {
        auto* const button = child<QAbstractButton>(control);
        QAccessibleInterface* const shown = QAccessible::queryAccessibleInterface(button);
        QCOMPARE(shown->role(), QAccessible::CheckBox);
        QCOMPARE(bool(shown->state().checked), button->isChecked());
        QVERIFY(!shown->text(QAccessible::Description).isEmpty());
    }
}

void TestDevicePanel::darkDesktopLeavesThePlateLight()
{
    const QPalette desktop = QApplication::palette();
    QApplication::setPalette(QPalette(Qt::black));
    const CDevicePanel panel(*m_device);
    QApplication::setPalette(desktop);
    for (const char* const name : {"restart", "copy", "save"}) {
        const QPalette palette = panel.findChild<QAbstractButton*>(name)->palette();
        QCOMPARE(palette.color(QPalette::Button), QColor(PanelLook::plate));
        QCOMPARE(palette.color(QPalette::ButtonText), QColor(PanelLook::graphite));
    }
}

void TestDevicePanel::clockMovesWithRealTime()
{
    const qint64 before = m_device->now();
    QTRY_VERIFY(m_device->now() >= before + 40);
}

KTZ_TEST(QApplication, TestDevicePanel)
#include "TestDevicePanel.moc"
