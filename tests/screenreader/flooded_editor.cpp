// flooded_editor
//
// The editor with a device inside the process. Prints "ready" once it can be used. Each line on standard input, a
// number of turns, has the knobs turned in turn, 1,000 times a second in all; the answer is a line of three numbers, in
// milliseconds: how long after the last turn the window showed the device's values, and the processor time meanwhile,
// of the GUI thread and of the whole process without the thread that turns. Ends with its input.

#include "app/CApplication.h"
#include "app/CMainWindow.h"
#include "app/RunEditor.h"
#include "device/DeviceParams.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/transports/CSimulatedSystem.h"
#include "widgets/CControlView.h"
#include "widgets/CKnobLED.h"
#include "widgets/KnobLEDStates.h"

#include <QCoreApplication>

#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <thread>

namespace
{
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr std::chrono::milliseconds k_turnInterval{1};
constexpr int k_values = 128;
constexpr int k_apart = 9; // the values of two neighbours

/// Calls on the GUI thread, and waits for the result.
template <class Call> auto inWindow(const Call& call)
{
    decltype(call()) result{};
    QMetaObject::invokeMethod(
        qApp, [&] { result = call(); }, Qt::BlockingQueuedConnection);
    return result;
}

Milliseconds used(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

Milliseconds usedByWindow()
{
    return inWindow([] { return used(CLOCK_THREAD_CPUTIME_ID); });
}

Milliseconds usedByOthers()
{
    return used(CLOCK_PROCESS_CPUTIME_ID) - used(CLOCK_THREAD_CPUTIME_ID);
}

bool isReady()
{
    return g_mainWindow != nullptr && !g_mainWindow->isInitializing();
}

/// Whether each ring shows the device's value.
bool isUpToDate(const CSimulatedDevice& device)
{
    const QList<CControlView*> pages = g_mainWindow->findChildren<CControlView*>();
    for (const CControlView* page : pages) {
        const int type = device.settings(page->knob()).led;
        const int shown = page->findChild<CKnobLED*>()->getImageIndexByType(type);
        if (shown != knobLEDIndex(type, device.value(page->knob())))
            return false;
    }
    return true;
}

void turn(CSimulatedDevice& device, int turns)
{
    const Milliseconds windowBefore = usedByWindow();
    const Milliseconds othersBefore = usedByOthers();
    Clock::time_point next = Clock::now();
    for (int i = 0; i < turns; ++i, next += k_turnInterval) {
        std::this_thread::sleep_until(next);
        const int knob = i % k_numOfKnobs;
        device.turn(knob, (i / k_numOfKnobs + knob * k_apart) % k_values);
    }
    const Clock::time_point end = Clock::now();
    while (!inWindow([&] { return isUpToDate(device); }))
        std::this_thread::sleep_for(k_turnInterval);
    const Milliseconds late = Clock::now() - end;
    const Milliseconds window = usedByWindow() - windowBefore;
    std::printf("%.1f %.1f %.1f\n", late.count(), window.count(), (usedByOthers() - othersBefore).count());
    std::fflush(stdout);
}

void carryOut(CSimulatedDevice& device)
{
    while (!inWindow(isReady))
        std::this_thread::sleep_for(k_turnInterval);
    std::puts("ready");
    std::fflush(stdout);
    int turns = 0;
    while (std::scanf("%d", &turns) == 1)
        turn(device, turns);
    QMetaObject::invokeMethod(
        qApp, [] { QCoreApplication::exit(); }, Qt::QueuedConnection);
}
} // namespace

int main(int argc, char** argv)
{
    CSimulatedDevice device;
    CSimulatedSystem::instance().plug(device);
    std::thread orders;
    const int status = runEditor(argc, argv, [&] {
        orders = std::thread(carryOut, std::ref(device));
        return nullptr;
    });
    orders.join();
    return status;
}
