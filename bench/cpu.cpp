// ktz-bench-cpu editor|dials
//
// A window with eight knobs, whose values a thread of the same process changes: the editor, fed through the simulated
// system, or the least that a Qt program does, eight QDial fed by queued calls. Prints "ready" when it is shown. Each
// line on standard input, MESSAGES PER-SECOND, has so many values changed, evenly, the knobs in turn; the answer is a
// line with how many were not, always 0. Ends with its input.

#include "app/CApplication.h"
#include "app/CMainWindow.h"
#include "app/RunEditor.h"
#include "device/DeviceParams.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/transports/CSimulatedSystem.h"

#include <QApplication>
#include <QDial>
#include <QTimer>

#include <array>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include <pthread.h>

namespace
{
using Clock = std::chrono::steady_clock;
using ChangeValue = std::function<void(int knob, int value)>;

/// Carries out the orders of standard input, then ends the application.
void feed(const ChangeValue& change)
{
    pthread_setname_np(pthread_self(), "feeder");
    std::puts("ready");
    std::fflush(stdout);
    int messages = 0;
    int perSecond = 0;
    while (std::scanf("%d %d", &messages, &perSecond) == 2 && perSecond > 0) {
        const Clock::time_point start = Clock::now();
        for (int n = 0; n < messages; ++n) {
            std::this_thread::sleep_until(start + std::chrono::nanoseconds(1'000'000'000LL * n / perSecond));
            change(n % k_numOfKnobs, n / k_numOfKnobs % 128);
        }
        std::puts("0");
        std::fflush(stdout);
    }
    QMetaObject::invokeMethod(
        qApp, [] { QCoreApplication::exit(0); }, Qt::QueuedConnection);
}

/// Feeds once the editor is up and its splash has gone.
class CFeeder : public QObject
{
  public:
    explicit CFeeder(ChangeValue change)
    {
        connect(&m_timer, &QTimer::timeout, this, [this, change = std::move(change)] {
            if (g_mainWindow == nullptr || g_mainWindow->isInitializing())
                return;
            m_timer.stop();
            m_thread = std::thread(feed, change);
        });
        m_timer.start(100);
    }

    ~CFeeder() override
    {
        if (m_thread.joinable())
            m_thread.join();
    }

  private:
    QTimer m_timer;
    std::thread m_thread;
};

int runKnobs(int argc, char** argv)
{
    CSimulatedDevice device;
    CSimulatedSystem::instance().plug(device);
    // Past the device's own table and log, which are no part of the editor.
    const ChangeValue report = [&device](int knob, int value) {
        QByteArray message = QByteArray::fromHex("F043103E180502040000F7");
        message[8] = static_cast<char>(knob);
        message[9] = static_cast<char>(value);
        CSimulatedSystem::instance().deviceSent(device, message);
    };
    std::unique_ptr<CFeeder> feeder;
    return runEditor(argc, argv, [&] {
        feeder = std::make_unique<CFeeder>(report);
        return nullptr;
    });
}

int runDials(int argc, char** argv)
{
    QApplication application(argc, argv);
    QWidget window;
    window.resize(446, 680);
    std::array<QDial*, k_numOfKnobs> dials{};
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        auto* dial = new QDial(&window);
        dial->setGeometry(23 + knob % 4 * 100, 58 + knob / 4 * 300, k_knobRect.width(), k_knobRect.height());
        dial->setRange(0, 127);
        dials[static_cast<std::size_t>(knob)] = dial;
    }
    window.show();
    std::thread feeder(feed, [&dials](int knob, int value) {
        QDial* dial = dials[static_cast<std::size_t>(knob)];
        QMetaObject::invokeMethod(
            dial, [dial, value] { dial->setValue(value); }, Qt::QueuedConnection);
    });
    const int status = QApplication::exec();
    feeder.join();
    return status;
}
} // namespace

int main(int argc, char** argv)
{
    const std::string kind = argc == 2 ? argv[1] : "";
    int onlyTheName = 1;
    if (kind == "editor")
        return runKnobs(onlyTheName, argv);
    if (kind == "dials")
        return runDials(onlyTheName, argv);
    std::fprintf(stderr, "usage: ktz-bench-cpu editor|dials\n");
    return 2;
}
