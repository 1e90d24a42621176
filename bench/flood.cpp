// ktz-bench-flood SECONDS
//
// The editor with a simulated device in the same process, whose eight knobs each report 1,000 values a second, while
// real clicks come from the X server every 200 ms. Prints five numbers: the messages a second that the device got rid
// of, the most repaints that any knob had in any one second, the milliseconds from the last message until the last knob
// showed its final value, the milliseconds from a click until the window had taken it (the longest), and how many
// clicks there were. Exit status 1 when a knob never showed its final value or a click was never taken.

#include "app/CApplication.h"
#include "app/CMainWindow.h"
#include "app/RunEditor.h"
#include "device/DeviceParams.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/transports/CSimulatedSystem.h"
#include "widgets/CKnobLED.h"
#include "widgets/KnobLEDStates.h"

#include <QElapsedTimer>
#include <QPaintEvent>
#include <QTimer>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

#include <X11/extensions/XTest.h>

namespace
{
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int k_finalValue = 127;
constexpr int k_valueBefore = 0;
constexpr milliseconds k_clickInterval(200);
constexpr milliseconds k_settleTime(1000);

double inMilliseconds(Clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

/// Turns every knob once a millisecond.
void turnKnobs(CSimulatedDevice* device, int seconds)
{
    const Clock::time_point start = Clock::now();
    const int turns = seconds * 1000;
    for (int turn = 0; turn < turns; ++turn) {
        std::this_thread::sleep_until(start + milliseconds(turn));
        // Every knob runs through all its values, so that the states of its ring change all the time.
        const bool nearlyOver = turn >= turns - 50;
        for (int knob = 0; knob < CSimulatedDevice::k_knobs; ++knob)
            device->turn(knob, nearlyOver ? k_valueBefore : (turn + 16 * knob) % 128);
    }
    for (int knob = 0; knob < CSimulatedDevice::k_knobs; ++knob)
        device->turn(knob, k_finalValue);
}

/// Presses and releases the left button at the pointer's place, as if the mouse had.
class CMouse
{
  public:
    CMouse() : m_display(XOpenDisplay(nullptr)) {}
    ~CMouse()
    {
        XCloseDisplay(m_display);
    }
    CMouse(const CMouse&) = delete;
    CMouse& operator=(const CMouse&) = delete;

    void click(const QPoint& place)
    {
        XTestFakeMotionEvent(m_display, -1, place.x(), place.y(), CurrentTime);
        XTestFakeButtonEvent(m_display, 1, True, CurrentTime);
        XTestFakeButtonEvent(m_display, 1, False, CurrentTime);
        XSync(m_display, False);
    }

  private:
    Display* m_display;
};

/// Watches the editor's knobs while the flood lasts.
class CFloodBench : public QObject
{
  public:
    CFloodBench(CSimulatedDevice* device, int seconds) : m_device(device), m_seconds(seconds)
    {
        // The splash first.
        connect(&m_startTimer, &QTimer::timeout, this, [this] { startWhenReady(); });
        m_startTimer.start(100);
    }

    ~CFloodBench() override
    {
        for (std::thread* thread : {&m_knobTurner, &m_clicker}) {
            if (thread->joinable())
                thread->join();
        }
    }

    [[nodiscard]] int report() const
    {
        std::size_t mostRepaints = 0;
        for (const std::vector<Clock::time_point>& paints : m_paints)
            mostRepaints = std::max(mostRepaints, mostInOneSecond(paints));
        double slowestKnob = 0;
        bool complete = true;
        for (const Clock::time_point& shown : m_finalShown) {
            complete = complete && shown != Clock::time_point();
            slowestKnob = std::max(slowestKnob, inMilliseconds(shown - m_lastMessage.load()));
        }
        const double slowestClick = *std::max_element(m_clicks.begin(), m_clicks.end());
        std::printf("%.0f %zu %.1f %.1f %zu\n", m_rate.load(), mostRepaints, slowestKnob, slowestClick,
                    m_clicks.size());
        return complete && m_clicksMissed == 0 ? 0 : 1;
    }

  protected:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        // What paints the mark that a click puts around the knob leaves its ring out.
        if (event->type() != QEvent::Paint || !static_cast<QPaintEvent*>(event)->region().intersects(k_ledRect))
            return false;
        const auto knob = static_cast<std::size_t>(std::find(m_knobs.begin(), m_knobs.end(), object) - m_knobs.begin());
        const Clock::time_point now = Clock::now();
        m_paints[knob].push_back(now);
        const int ledType = m_device->settings(static_cast<int>(knob)).led;
        const bool isFinal = m_knobs[knob]->getImageIndexByType(ledType) == knobLEDIndex(ledType, k_finalValue);
        if (isFinal && m_finalShown[knob] == Clock::time_point() && m_lastMessage.load() != Clock::time_point())
            m_finalShown[knob] = now;
        return false;
    }

  private:
    void startWhenReady()
    {
        if (g_mainWindow == nullptr || g_mainWindow->isInitializing())
            return;
        m_startTimer.stop();
        QTimer::singleShot(k_settleTime + milliseconds(1000), this, [this] { start(); }); // it slides for a second
    }

    void start()
    {
        const QList<CKnobLED*> knobs = g_mainWindow->findChildren<CKnobLED*>();
        for (CKnobLED* knob : knobs) {
            m_knobs[static_cast<std::size_t>(knob->controllerID() - k_knobValueCategory)] = knob;
            knob->installEventFilter(this);
            connect(
                knob, &CKnobLED::selected, this, [this] { m_clickTaken = true; }, Qt::DirectConnection);
        }
        m_knobTurner = std::thread([this] {
            const Clock::time_point first = Clock::now();
            turnKnobs(m_device, m_seconds);
            m_lastMessage = Clock::now();
            m_rate = 8'000'000.0 * m_seconds / inMilliseconds(m_lastMessage.load() - first);
            m_flooding = false;
        });
        std::array<QPoint, k_numOfKnobs> places;
        std::transform(m_knobs.begin(), m_knobs.end(), places.begin(),
                       [](const CKnobLED* knob) { return knob->mapToGlobal(knob->rect().center()); });
        m_clicker = std::thread([this, places] {
            clickKnobs(places);
            std::this_thread::sleep_for(k_settleTime);
            QMetaObject::invokeMethod(
                qApp, [] { QCoreApplication::exit(0); }, Qt::QueuedConnection);
        });
    }

    void clickKnobs(const std::array<QPoint, k_numOfKnobs>& places)
    {
        CMouse mouse;
        for (std::size_t n = 0; m_flooding; ++n) {
            const Clock::time_point pressed = Clock::now();
            m_clickTaken = false;
            mouse.click(places[n % places.size()]);
            while (!m_clickTaken && Clock::now() - pressed < k_settleTime)
                std::this_thread::sleep_for(std::chrono::microseconds(200));
            m_clicksMissed += m_clickTaken ? 0 : 1;
            m_clicks.push_back(inMilliseconds(Clock::now() - pressed));
            std::this_thread::sleep_until(pressed + k_clickInterval);
        }
    }

    static std::size_t mostInOneSecond(const std::vector<Clock::time_point>& times)
    {
        std::size_t most = 0;
        for (auto first = times.begin(), last = first; last != times.end(); ++last) {
            while (*last - *first >= std::chrono::seconds(1))
                ++first;
            most = std::max(most, static_cast<std::size_t>(last - first) + 1);
        }
        return most;
    }

    CSimulatedDevice* m_device;
    const int m_seconds;
    QTimer m_startTimer;
    std::array<CKnobLED*, k_numOfKnobs> m_knobs{};
    std::array<std::vector<Clock::time_point>, k_numOfKnobs> m_paints;
    std::array<Clock::time_point, k_numOfKnobs> m_finalShown{};
    std::atomic<Clock::time_point> m_lastMessage{};
    std::atomic<double> m_rate = 0;
    std::atomic<bool> m_flooding = true;
    std::atomic<bool> m_clickTaken = false;
    std::vector<double> m_clicks;
    int m_clicksMissed = 0;
    std::thread m_knobTurner;
    std::thread m_clicker;
};
} // namespace

int main(int argc, char** argv)
{
    const int seconds = argc > 1 ? std::atoi(argv[1]) : 0;
    if (seconds < 1) {
        std::fprintf(stderr, "usage: ktz-bench-flood SECONDS\n");
        return 2;
    }
    CSimulatedDevice device;
    CSimulatedSystem::instance().plug(device);
    std::unique_ptr<CFloodBench> bench;
    int onlyTheName = 1;
    const int status = runEditor(onlyTheName, argv, [&device, &bench, seconds] {
        bench = std::make_unique<CFloodBench>(&device, seconds);
        return nullptr;
    });
    return status != 0 ? status : bench->report();
}
