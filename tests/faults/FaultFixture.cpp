#include "tests/faults/FaultFixture.h"

#include "connection/CConnectionMonitor.h"
#include "simulator/device/DeviceMessages.h"

void FaultFixture::startConnected()
{
    if (!device.isPlugged())
        plug();
    startWhole();
    waitUntilConnected();
    forgetSent();
}

void FaultFixture::startEdited()
{
    for (int knob = 0; knob < k_numOfKnobs; ++knob)
        device.setSettings(knob, {50 + knob, 15 - knob, 90 + knob, knob, k_ledDescend});
    times.keepInterval = std::chrono::hours(1);
    startConnected();
    for (int knob = 0; knob < k_numOfKnobs; ++knob)
        editor(k_minCategory + knob)->setValue(40 + knob);
    QVERIFY(agrees());
    forgetSent();
}

void FaultFixture::sendKeep() const
{
    window->findChild<CConnectionMonitor*>()->sendKeepMessage();
}

QStringList FaultFixture::commands()
{
    QStringList messages = sent();
    messages.removeAll(k_keep);
    return messages;
}

bool FaultFixture::isMarkLit() const
{
    constexpr int k_transparent = 0;
    const auto* fade = window->findChild<COnlineMark*>()->findChild<QPropertyAnimation*>();
    return fade->endValue().isValid() && fade->endValue().toInt() == k_transparent;
}

void FaultFixture::waitForReports()
{
    device.turn(0, device.value(0) == 0 ? 127 : 0);
    const auto isShown = [this] {
        const int led = device.settings(0).led;
        return knobLED(0)->getImageIndexByType(led) == knobLEDIndex(led, device.value(0));
    };
    constexpr int k_patience = 60'000; // milliseconds, behind a flood on a slow machine
    QTRY_VERIFY_WITH_TIMEOUT(isShown(), k_patience);
}

void FaultFixture::verifyLost() const
{
    QVERIFY(!isMarkLit());
    QVERIFY(!action(k_revrtString)->isEnabled());
    QVERIFY(!action(k_resetString)->isEnabled());
    QVERIFY(menuBar()->isEnabled());
}

KnobSettings FaultFixture::stageSettings(int knob)
{
    return {20 + knob, knob, 100 + knob, 10 + knob, 3};
}

QString changeText(int knob, const KnobSettings& settings)
{
    return QString::fromLatin1(DeviceMessages::changeParameter(knob, settings).toHex());
}
