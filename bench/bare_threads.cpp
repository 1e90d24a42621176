#include "bench/CPlainRing.h"

#include <QApplication>
#include <QTimer>

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <poll.h>
#include <stop_token>
#include <thread>
#include <utility>
#include <vector>

#include <alsa/asoundlib.h>

/// The editor's threads, without what the editor does on them. One sends a keep message every two seconds, one reads
/// the sequencer, one takes over what was read, and the window's own hears of each message: it starts its watchdog
/// anew, or has a plain ring repainted. No editor of this structure needs less processor time.
namespace
{
using Message = std::vector<unsigned char>;

constexpr std::array<unsigned char, 9> k_keep{0xF0, 0x43, 0x10, 0x3E, 0x18, 0x05, 0x02, 0x01, 0xF7};
constexpr std::size_t k_typeAt = 7;
constexpr std::size_t k_knobAt = 8;
constexpr unsigned char k_value = 4;
constexpr int k_knobs = 8;

class CWindow : public QWidget
{
  public:
    CWindow()
    {
        resize(446, 680);
        for (int knob = 0; knob < k_knobs; ++knob) {
            m_rings[static_cast<std::size_t>(knob)] = new CPlainRing(this);
            m_rings[static_cast<std::size_t>(knob)]->move(45 + 103 * (knob % 4), 80 + 295 * (knob / 4));
        }
        m_watchdog.start(std::chrono::seconds(5));
    }

    void take(const Message& message)
    {
        if (message[k_typeAt] == k_value)
            m_rings[message[k_knobAt] % k_knobs]->change();
        else
            m_watchdog.start();
    }

  private:
    std::array<CPlainRing*, k_knobs> m_rings{};
    QTimer m_watchdog;
};

/// What the reader hands over.
class CQueue
{
  public:
    void put(Message message)
    {
        {
            const std::scoped_lock lock(m_mutex);
            m_messages.push_back(std::move(message));
        }
        m_filled.notify_one();
    }

    /// Waits until there is something, or until it is told to stop.
    std::vector<Message> takeAll(const std::stop_token& stop)
    {
        std::unique_lock lock(m_mutex);
        m_filled.wait(lock, stop, [this] { return !m_messages.empty(); });
        return std::exchange(m_messages, {});
    }

  private:
    std::mutex m_mutex;
    std::condition_variable_any m_filled;
    std::vector<Message> m_messages;
};

void sendKeeps(const std::stop_token& stop, snd_seq_t* sequencer, int port)
{
    std::mutex mutex;
    std::condition_variable_any never;
    std::unique_lock lock(mutex);
    while (!stop.stop_requested()) {
        snd_seq_event_t event;
        snd_seq_ev_clear(&event);
        snd_seq_ev_set_source(&event, static_cast<unsigned char>(port));
        snd_seq_ev_set_subs(&event);
        snd_seq_ev_set_direct(&event);
        snd_seq_ev_set_sysex(&event, k_keep.size(), const_cast<unsigned char*>(k_keep.data()));
        snd_seq_event_output_direct(sequencer, &event);
        never.wait_for(lock, stop, std::chrono::seconds(2), [] { return false; });
    }
}

void readAll(const std::stop_token& stop, snd_seq_t* sequencer, CQueue* queue)
{
    pollfd waiting{};
    snd_seq_poll_descriptors(sequencer, &waiting, 1, POLLIN);
    while (!stop.stop_requested()) {
        if (poll(&waiting, 1, 10'000) <= 0)
            continue;
        snd_seq_event_t* event = nullptr;
        while (snd_seq_event_input(sequencer, &event) >= 0) {
            const auto* bytes = static_cast<const unsigned char*>(event->data.ext.ptr);
            if (event->type == SND_SEQ_EVENT_SYSEX && event->data.ext.len > k_knobAt)
                queue->put(Message(bytes, bytes + event->data.ext.len));
        }
    }
}

void handOver(const std::stop_token& stop, CQueue* queue, CWindow* window)
{
    while (!stop.stop_requested()) {
        for (Message& message : queue->takeAll(stop)) {
            QMetaObject::invokeMethod(
                window, [window, message = std::move(message)] { window->take(message); }, Qt::QueuedConnection);
        }
    }
}

snd_seq_t* openSequencer(int streams)
{
    snd_seq_t* sequencer = nullptr;
    return snd_seq_open(&sequencer, "default", streams, SND_SEQ_NONBLOCK) < 0 ? nullptr : sequencer;
}
} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    snd_seq_t* input = openSequencer(SND_SEQ_OPEN_INPUT);
    snd_seq_t* output = openSequencer(SND_SEQ_OPEN_OUTPUT);
    snd_seq_addr_t device{};
    if (input == nullptr || output == nullptr || snd_seq_parse_address(output, &device, "Trellwick KTZ-JX:2") < 0) {
        std::fputs("ktz-bench-threads: no device\n", stderr);
        return 1;
    }
    const int in = snd_seq_create_simple_port(input, "in", SND_SEQ_PORT_CAP_WRITE, SND_SEQ_PORT_TYPE_APPLICATION);
    const int out = snd_seq_create_simple_port(output, "out", SND_SEQ_PORT_CAP_READ, SND_SEQ_PORT_TYPE_APPLICATION);
    static_cast<void>(snd_seq_connect_to(output, out, device.client, device.port)); // a mere source takes nothing
    if (snd_seq_connect_from(input, in, device.client, device.port) < 0) {
        std::fputs("ktz-bench-threads: the device refuses\n", stderr);
        return 1;
    }

    CWindow window;
    window.show();
    CQueue queue;
    const std::jthread keeper([=](const std::stop_token& stop) { sendKeeps(stop, output, out); });
    const std::jthread reader([&, input](const std::stop_token& stop) { readAll(stop, input, &queue); });
    const std::jthread delivery([&](const std::stop_token& stop) { handOver(stop, &queue, &window); });
    return QApplication::exec();
}
