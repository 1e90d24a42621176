#include "bench/CKnobSource.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <new>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include <alsa/asoundlib.h>

namespace
{
constexpr std::int64_t k_second = 1'000'000'000;
constexpr std::int64_t k_stopTime = 300'000'000;

snd_seq_t* g_sequencer = nullptr; // the source's process alone has one
int g_port = -1;

void sleepUntil(std::int64_t time)
{
    const timespec moment{time / k_second, time % k_second};
    clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &moment, nullptr);
}

/// The device's three cables, of which the third carries the stream. Nothing can be sent to them, so that nobody waits
/// for an answer.
bool openClient(const std::string& clientName)
{
    if (snd_seq_open(&g_sequencer, "default", SND_SEQ_OPEN_OUTPUT, 0) < 0 ||
        snd_seq_set_client_name(g_sequencer, clientName.c_str()) < 0)
        return false;
    for (int cable = 1; cable <= 3; ++cable) {
        const std::string name = clientName + " MIDI " + std::to_string(cable);
        g_port =
            snd_seq_create_simple_port(g_sequencer, name.c_str(), SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ,
                                       SND_SEQ_PORT_TYPE_MIDI_GENERIC | SND_SEQ_PORT_TYPE_HARDWARE);
    }
    return g_port >= 0;
}

bool output(const std::vector<unsigned char>& message)
{
    snd_seq_event_t event;
    snd_seq_ev_clear(&event);
    snd_seq_ev_set_source(&event, static_cast<unsigned char>(g_port));
    snd_seq_ev_set_subs(&event);
    snd_seq_ev_set_direct(&event);
    snd_seq_ev_set_sysex(&event, static_cast<unsigned int>(message.size()), const_cast<unsigned char*>(message.data()));
    return snd_seq_event_output_direct(g_sequencer, &event) >= 0;
}
} // namespace

KnobReport CKnobSource::editorsDevice()
{
    return {"Trellwick KTZ-JX", {0xF0, 0x43, 0x10, 0x3E, 0x18, 0x05, 0x02, 0x04, 0, 0, 0xF7}, 8, 9};
}

KnobReport CKnobSource::synthesizer()
{
    return {"Synthesizer", {0xF0, 0x43, 0x10, 0x4C, 0, 0, 0x04, 0, 0xF7}, 5, 7};
}

CKnobSource::CKnobSource(int knobs, KnobReport report) : m_knobs(knobs), m_report(std::move(report))
{
    void* memory = mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    int ready = 0;
    if (memory == MAP_FAILED || pipe(m_orders.data()) != 0 || pipe(m_answers.data()) != 0)
        std::abort();
    m_shared = new (memory) Shared;
    m_process = fork();
    if (m_process == 0)
        serve();
    close(m_orders[0]);
    close(m_answers[1]);
    if (read(m_answers[0], &ready, sizeof ready) != sizeof ready) {
        std::fprintf(stderr, "no ALSA sequencer\n");
        std::exit(2);
    }
}

CKnobSource::~CKnobSource()
{
    close(m_orders[1]); // the source ends with its orders
    waitpid(m_process, nullptr, 0);
    close(m_answers[0]);
    munmap(m_shared, sizeof(Shared));
}

void CKnobSource::send(int messages, int perSecond) const
{
    give({messages, perSecond, false});
}

void CKnobSource::sendWhileStopped(int messages) const
{
    give({messages, 0, true});
}

void CKnobSource::give(const Order& order) const
{
    if (write(m_orders[1], &order, sizeof order) != sizeof order)
        std::abort();
}

int CKnobSource::wait() const
{
    int refused = 0;
    if (read(m_answers[0], &refused, sizeof refused) != sizeof refused)
        std::abort();
    return refused;
}

int CKnobSource::sent() const
{
    return m_shared->sent;
}

std::int64_t CKnobSource::timeOf(int message) const
{
    return m_shared->times[static_cast<std::size_t>(message % k_remembered)];
}

std::int64_t CKnobSource::now()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * k_second + time.tv_nsec;
}

void CKnobSource::serve()
{
    close(m_orders[1]);
    close(m_answers[0]);
    if (!openClient(m_report.clientName))
        _exit(1);
    int answer = 0;
    Order order{};
    while (write(m_answers[1], &answer, sizeof answer) == sizeof answer &&
           read(m_orders[0], &order, sizeof order) == sizeof order)
        answer = carryOut(order);
    _exit(0);
}

int CKnobSource::carryOut(const Order& order)
{
    const std::int64_t start = now();
    int refused = 0;
    if (order.stopReceiver)
        kill(getppid(), SIGSTOP);
    for (int i = 0; i < order.messages; ++i) {
        if (order.perSecond > 0)
            sleepUntil(start + k_second * i / order.perSecond);
        const int n = m_shared->sent;
        m_shared->times[static_cast<std::size_t>(n % k_remembered)] = now();
        m_report.message[m_report.knobAt] = static_cast<unsigned char>(n % m_knobs);
        m_report.message[m_report.valueAt] = static_cast<unsigned char>(n / m_knobs % 128);
        refused += output(m_report.message) ? 0 : 1;
        m_shared->sent = n + 1;
    }
    if (order.stopReceiver) {
        sleepUntil(start + k_stopTime);
        kill(getppid(), SIGCONT);
    }
    return refused;
}
