// ktz-bench-latency bare|delivery|memory|queued|painted|window|fading MESSAGES
//
// Receives notice-value messages of another sequencer client, 1,000 a second, and prints the median, the middle half's
// bounds and the 99th of a hundred of the times, in microseconds, that they took from that client's call to the points
// below. The first messages are not counted: with them a program loads what it needs at its first use, which the editor
// has done before anybody turns a knob, because it asks the device for everything.
//
//   bare       a loop of poll() and snd_seq_event_input(), the least that any program does,
//   delivery   the observer's call on the delivery thread,
//   memory     the call of a parameter's observer there, with the message decoded and stored,
//   queued     a queued call to the GUI thread from such a bare loop: the least that any Qt program does,
//   painted    the same, while a widget of a ring's size draws two pictures 60 times a second,
//   window     the end of a shown knob's update on the GUI thread, where it asks for repaints; none is needed here,
//   fading     the same, while the knob's ring follows the values and is repainted 60 times a second.
//
// Exit status 1 when a message did not come.

#include "bench/CKnobSource.h"
#include "bench/CPlainRing.h"

#include "app/common/Constants.h"
#include "device/CMemAPIObserver.h"
#include "device/CMemAPIWrapper.h"
#include "midi/CMIDIInput.h"
#include "midi/CMIDIPortWrapper.h"
#include "midi/CMIDITransportObserver.h"
#include "midi/MIDIPlatform.h"
#include "widgets/CKnobLED.h"

#include <QApplication>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <poll.h>
#include <string>
#include <thread>
#include <vector>

#include <alsa/asoundlib.h>

namespace
{
constexpr int k_perSecond = 1000;
constexpr int k_knobId = k_knobValueCategory;
constexpr int k_noLEDType = 4; // with it a ring looks the same at every value
constexpr int k_firstMessages = 128;

/// The times that the messages took. A value that a later one replaced before it was read counts with the later one.
class CTimes
{
  public:
    explicit CTimes(const CKnobSource* source) : m_source(source) {}

    void take(int value)
    {
        const std::int64_t now = CKnobSource::now();
        const int first = static_cast<int>(m_microseconds.size());
        // 128 new ones at once are none: a value that was read before.
        const int count = ((value + 1 - first) % 128 + 128) % 128;
        for (int n = first; n < first + count; ++n)
            m_microseconds.push_back(static_cast<double>(now - m_source->timeOf(n)) / 1000);
    }

    [[nodiscard]] int print(int expected)
    {
        const bool isComplete = static_cast<int>(m_microseconds.size()) == expected;
        m_microseconds.erase(m_microseconds.begin(),
                             m_microseconds.begin() +
                                 std::min(std::ssize(m_microseconds), std::ptrdiff_t{k_firstMessages}));
        const int count = static_cast<int>(m_microseconds.size());
        std::sort(m_microseconds.begin(), m_microseconds.end());
        const auto quantile = [this, count](double part) {
            return count > 0 ? m_microseconds[static_cast<std::size_t>(part * (count - 1))] : 0;
        };
        std::printf("%.1f %.1f %.1f %.1f\n", quantile(0.5), quantile(0.25), quantile(0.75), quantile(0.99));
        return isComplete ? 0 : 1;
    }

  private:
    const CKnobSource* m_source;
    std::vector<double> m_microseconds;
};

/// Has the messages sent once the receiver is ready, and waits until they must have arrived.
void sendAll(const CKnobSource& source, int messages)
{
    source.send(messages, k_perSecond);
    static_cast<void>(source.wait()); // a message that was refused does not arrive, which is noticed
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
}

/// Hands the value of each message over to take.
void receiveBare(const CKnobSource& source, int messages, const std::function<void(int)>& take)
{
    snd_seq_t* sequencer = nullptr;
    if (snd_seq_open(&sequencer, "default", SND_SEQ_OPEN_INPUT, SND_SEQ_NONBLOCK) < 0)
        return;
    snd_seq_set_client_pool_input(sequencer, 2000);
    const int port = snd_seq_create_simple_port(sequencer, "in", SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_WRITE,
                                                SND_SEQ_PORT_TYPE_APPLICATION);
    snd_seq_addr_t sender{};
    if (snd_seq_parse_address(sequencer, &sender, "Trellwick KTZ-JX:2") == 0)
        snd_seq_connect_from(sequencer, port, sender.client, sender.port);

    source.send(messages, k_perSecond);
    pollfd waiting{};
    snd_seq_poll_descriptors(sequencer, &waiting, 1, POLLIN);
    for (int left = messages; left > 0 && poll(&waiting, 1, 2000) > 0;) {
        snd_seq_event_t* event = nullptr;
        while (snd_seq_event_input(sequencer, &event) >= 0) {
            if (event->type != SND_SEQ_EVENT_SYSEX)
                continue;
            take(static_cast<const unsigned char*>(event->data.ext.ptr)[9]);
            --left;
        }
    }
    snd_seq_close(sequencer);
}

void receiveOnDeliveryThread(const CKnobSource& source, int messages, CTimes* times)
{
    struct Observer : CMIDITransportObserver
    {
        explicit Observer(CTimes* all) : m_times(all) {}
        bool messageReceived(const unsigned char* data, int /*size*/) override
        {
            m_times->take(data[9]);
            return true;
        }
        CTimes* m_times;
    } observer(times);

    CMIDIPortWrapper ports;
    ports.createInputPortList();
    const std::unique_ptr<CMIDIInput> input = MIDIPlatform::createInput();
    input->initialize();
    input->registerObserver(&observer);
    if (input->openPort(ports.getInputPortByName(k_jxEditorPortName)))
        sendAll(source, messages);
    input->closePort();
}

void receiveInMemory(const CKnobSource& source, int messages, CTimes* times)
{
    struct Observer : CMemAPIObserver
    {
        Observer(CTimes* all, CMemAPIWrapper* memory) : m_times(all), m_memory(memory) {}
        void paramChanged() override
        {
            m_times->take(m_memory->getKnob(k_knobId));
        }
        CTimes* m_times;
        CMemAPIWrapper* m_memory;
    };

    CMemAPIWrapper memory;
    Observer observer(times, &memory);
    memory.initialize();
    memory.registerObserver(k_knobId, &observer);
    sendAll(source, messages);
}

/// A knob that notes when it has taken a value and asked for the repaint that this needs.
class CTimedKnob : public CKnobLED
{
  public:
    CTimedKnob(QWidget* parent, CTimes* times) : CKnobLED(parent), m_times(times) {}

    void updateMemAPI() override
    {
        CKnobLED::updateMemAPI();
        m_times->take(getKnob());
    }

  private:
    CTimes* m_times;
};

/// Runs the event loop of an application with a window while work runs on a thread of its own.
void runWindow(QApplication* application, QWidget* window, const std::function<void()>& work)
{
    window->resize(446, 680);
    window->show();
    std::thread worker;
    QTimer::singleShot(500, application, [&] {
        worker = std::thread([&] {
            work();
            QMetaObject::invokeMethod(application, &QApplication::quit, Qt::QueuedConnection);
        });
    });
    QApplication::exec();
    worker.join();
}

void receiveQueued(const CKnobSource& source, int messages, CTimes* times, bool paints)
{
    int argc = 1;
    std::string name = "ktz-bench-latency";
    std::array<char*, 2> argv{name.data(), nullptr};
    QApplication application(argc, argv.data());
    QWidget window;
    CPlainRing ring(&window);
    ring.move(45, 80);
    const auto take = [&](int value) {
        times->take(value);
        if (paints)
            ring.change();
    };
    runWindow(&application, &window, [&] {
        receiveBare(source, messages, [&](int value) {
            QMetaObject::invokeMethod(
                &window, [&take, value] { take(value); }, Qt::QueuedConnection);
        });
    });
}

void receiveInWindow(const CKnobSource& source, int messages, CTimes* times, int ledType)
{
    int argc = 1;
    std::string name = "ktz-bench-latency";
    std::array<char*, 2> argv{name.data(), nullptr};
    QApplication application(argc, argv.data());
    CMemAPIWrapper memory;
    QWidget window;
    auto* knob = new CTimedKnob(&window, times);
    knob->setGeometry(23, 58, 87, 87);
    knob->setControllerID(k_knobId);
    memory.initialize();
    memory.setParam(k_ledTypeCategory, ledType);
    knob->initialize(&memory);

    runWindow(&application, &window, [&] { sendAll(source, messages); });
    knob->unregisterObserverFromMemAPI();
    knob->initialize(nullptr);
}
} // namespace

int main(int argc, char** argv)
{
    const std::string mode = argc == 3 ? argv[1] : "";
    const int messages = argc == 3 ? std::atoi(argv[2]) : 0;
    std::function<void(const CKnobSource&, int, CTimes*)> receive;
    if (mode == "bare")
        receive = [](const CKnobSource& source, int count, CTimes* times) {
            receiveBare(source, count, [times](int value) { times->take(value); });
        };
    else if (mode == "queued")
        receive = [](auto&&... all) { receiveQueued(all..., false); };
    else if (mode == "painted")
        receive = [](auto&&... all) { receiveQueued(all..., true); };
    else if (mode == "delivery")
        receive = receiveOnDeliveryThread;
    else if (mode == "memory")
        receive = receiveInMemory;
    else if (mode == "window")
        receive = [](auto&&... all) { receiveInWindow(all..., k_noLEDType); };
    else if (mode == "fading")
        receive = [](auto&&... all) { receiveInWindow(all..., k_ledAscent); };
    if (!receive || messages <= k_firstMessages) {
        std::fprintf(stderr, "usage: ktz-bench-latency bare|delivery|memory|queued|painted|window|fading MESSAGES\n");
        return 2;
    }
    const CKnobSource source(1);
    CTimes times(&source);
    receive(source, messages, &times);
    return times.print(messages);
}
