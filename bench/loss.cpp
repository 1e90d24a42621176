// ktz-bench-loss steady MESSAGES PER-SECOND | burst MESSAGES TIMES
//
// The editor with its window open, while another sequencer client reports knob values: evenly, or in bursts during each
// of which the editor is stopped for 300 ms. Prints how many values were sent, how many the sequencer refused, how many
// the device memory told its observers of, and how many of these did not follow the one before.

#include "app/CApplication.h"
#include "app/CMainWindow.h"
#include "app/RunEditor.h"
#include "bench/CKnobSource.h"
#include "device/CMemAPIProxyWrapper.h"
#include "device/DeviceParams.h"

#include <QTimer>
#include <QWidget>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

namespace
{
constexpr std::chrono::milliseconds k_settleTime(500);

/// Counts what the memory reports of one knob, on the delivery thread, before anything could be skipped.
class CKnobCounter : public QWidget, public CMemAPIProxyWrapper
{
  public:
    CKnobCounter(QWidget* parent, int knob) : QWidget(parent)
    {
        setControllerID(k_knobValueCategory + knob);
    }

    ~CKnobCounter() override
    {
        unregisterObserverFromMemAPI();
    }

    void paramChanged() override
    {
        const int value = getKnob();
        if (value != (m_lastValue + 1) % 128)
            ++m_gaps;
        m_lastValue = value;
        ++m_count;
    }

    void updateMemAPI() override {}

    std::atomic<int> m_count = 0;
    std::atomic<int> m_gaps = 0;

  private:
    int m_lastValue = 127; // the stream begins with 0
};

/// Lets the source work once the editor is up, and counts.
class CLossBench : public QObject
{
  public:
    CLossBench(const CKnobSource* source, bool bursts, int messages, int number)
        : m_source(source), m_bursts(bursts), m_messages(messages), m_number(number)
    {
        connect(&m_startTimer, &QTimer::timeout, this, [this] {
            if (g_mainWindow != nullptr && !g_mainWindow->isInitializing())
                start();
        });
        m_startTimer.start(100);
    }

    void print()
    {
        m_thread.join();
        std::printf("%d %d %d %d\n", m_source->sent(), m_refused, m_received, m_gaps);
    }

  private:
    void start()
    {
        m_startTimer.stop();
        m_frame = new QWidget(g_mainWindow);
        for (int knob = 0; knob < k_numOfKnobs; ++knob)
            m_counters[static_cast<std::size_t>(knob)] = new CKnobCounter(m_frame, knob);
        g_mainWindow->initializeSubController(m_frame);
        m_thread = std::thread([this] {
            send();
            std::this_thread::sleep_for(2 * k_settleTime);
            for (const CKnobCounter* counter : m_counters) {
                m_received += counter->m_count;
                m_gaps += counter->m_gaps;
            }
            QMetaObject::invokeMethod(
                qApp, [] { QCoreApplication::exit(0); }, Qt::QueuedConnection);
        });
    }

    void send()
    {
        if (!m_bursts) {
            m_source->send(m_messages, m_number);
            m_refused = m_source->wait();
            return;
        }
        for (int burst = 0; burst < m_number; ++burst) {
            m_source->sendWhileStopped(m_messages);
            m_refused += m_source->wait();
            std::this_thread::sleep_for(k_settleTime);
        }
    }

    const CKnobSource* m_source;
    const bool m_bursts;
    const int m_messages;
    const int m_number;
    QTimer m_startTimer;
    QWidget* m_frame = nullptr;
    std::array<CKnobCounter*, k_numOfKnobs> m_counters{};
    int m_refused = 0;
    int m_received = 0;
    int m_gaps = 0;
    std::thread m_thread;
};
} // namespace

int main(int argc, char** argv)
{
    const std::string mode = argc == 4 ? argv[1] : "";
    const int messages = argc == 4 ? std::atoi(argv[2]) : 0;
    const int number = argc == 4 ? std::atoi(argv[3]) : 0;
    if ((mode != "steady" && mode != "burst") || messages < 1 || number < 1) {
        std::fprintf(stderr, "usage: ktz-bench-loss steady MESSAGES PER-SECOND | burst MESSAGES TIMES\n");
        return 2;
    }
    const CKnobSource source(k_numOfKnobs);
    std::unique_ptr<CLossBench> bench;
    int onlyTheName = 1;
    const int status = runEditor(onlyTheName, argv, [&] {
        bench = std::make_unique<CLossBench>(&source, mode == "burst", messages, number);
        return nullptr;
    });
    bench->print();
    return status;
}
