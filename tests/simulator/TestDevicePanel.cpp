#include "simulator/device/DeviceMessages.h"
#include "simulator/panel/CDevicePanel.h"
#include "tests/simulator/CRecordingTransport.h"
#include "tests/support/CTestCase.h"

#include <QDial>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

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
    void dialTurnsItsKnobByKey();
    void dialTurnsItsKnobByPointer();
    void dialFollowsTheDeviceWithoutAnotherReport();
    void logShowsBothDirections();
    void logKeepsTheLast500Messages();
    void silenceButtonSilencesAndEndsTheSilence();
    void unplugButtonUnplugsForGood();
    void clockMovesWithRealTime();

  private:
    template <typename Widget> Widget* child(const char* name) const
    {
        return m_panel->findChild<Widget*>(name);
    }

    [[nodiscard]] QStringList messages() const
    {
        return child<QPlainTextEdit>("messages")->toPlainText().split('\n', Qt::SkipEmptyParts);
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
        const auto* const label = child<QLabel>(qPrintable(QStringLiteral("settings%1").arg(knob)));
        QVERIFY(label);
        const KnobSettings settings = m_device->settings(knob);
        QCOMPARE(label->text(), QStringLiteral("Value 0\nCC %1\nChannel 0\nMax 127\nMin 0\nLED %2")
                                    .arg(settings.cc)
                                    .arg(settings.led == 2 ? "concave" : "ascent"));
    }
}

void TestDevicePanel::followsTheDevice()
{
    QVERIFY(m_device->receive(changeParameter(5, {1, 2, 3, 4, 3})));
    QTRY_COMPARE(child<QLabel>("settings5")->text(),
                 QStringLiteral("Value 0\nCC 1\nChannel 2\nMax 3\nMin 4\nLED convex"));
}

void TestDevicePanel::dialTurnsItsKnobByKey()
{
    auto* const dial = child<QDial>("dial3");
    dial->setFocus();
    QTest::keyClick(dial, Qt::Key_Up);
    QCOMPARE(m_device->value(3), 1);
    QTest::keyClick(dial, Qt::Key_End);
    QCOMPARE(m_device->value(3), 127);
    QCOMPARE(m_transport.take(), QList({noticeValue(3, 1), noticeValue(3, 127)}));
    QTRY_VERIFY(child<QLabel>("settings3")->text().startsWith("Value 127\n"));
}

void TestDevicePanel::dialTurnsItsKnobByPointer()
{
    auto* const dial = child<QDial>("dial0");
    QTest::mouseClick(dial, Qt::LeftButton, {}, {dial->width() / 2, 4});
    QVERIFY(qAbs(m_device->value(0) - 64) <= 2);
    QCOMPARE(m_transport.take(), QList{noticeValue(0, m_device->value(0))});
}

void TestDevicePanel::dialFollowsTheDeviceWithoutAnotherReport()
{
    m_device->turn(6, 90);
    QTRY_COMPARE(child<QDial>("dial6")->value(), 90);
    QCOMPARE(m_transport.take(), QList{noticeValue(6, 90)});
}

void TestDevicePanel::logShowsBothDirections()
{
    QVERIFY(m_device->receive(keep()));
    QTRY_COMPARE(messages().size(), 2);
    QVERIFY(messages().at(0).endsWith("received  F0 43 10 3E 18 05 02 01 F7  keep"));
    QVERIFY(messages().at(1).endsWith("sent      F0 43 10 3E 18 05 02 01 F7  keep"));
}

void TestDevicePanel::logKeepsTheLast500Messages()
{
    for (int i = 0; i < 1000; ++i)
        m_device->turn(i % 8, i % 128);
    QTRY_VERIFY(!messages().isEmpty() && messages().last().endsWith(inWords(noticeValue(999 % 8, 999 % 128))));
    QCOMPARE(messages().size(), CDevicePanel::k_messagesShown);
    m_device->turn(1, 2);
    QTRY_VERIFY(messages().last().endsWith(inWords(noticeValue(1, 2))));
    QCOMPARE(messages().size(), CDevicePanel::k_messagesShown);
}

void TestDevicePanel::silenceButtonSilencesAndEndsTheSilence()
{
    auto* const button = child<QPushButton>("silence");
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(m_device->isSilent());
    QVERIFY(button->isChecked());
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(!m_device->isSilent());
}

void TestDevicePanel::unplugButtonUnplugsForGood()
{
    auto* const button = child<QPushButton>("unplug");
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(!m_device->isPlugged());
    QVERIFY(!button->isEnabled());
}

void TestDevicePanel::clockMovesWithRealTime()
{
    const qint64 before = m_device->now();
    QTRY_VERIFY(m_device->now() >= before + 40);
}

KTZ_TEST(QApplication, TestDevicePanel)
#include "TestDevicePanel.moc"
