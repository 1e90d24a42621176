#include "midi/alsa/CMIDIInput_ALSA.h"

#include "midi/CCircularBuffer.h"
#include "midi/alsa/CPortList_ALSA.h"

#include <cerrno>
#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>

namespace
{
/// To the highest that the thread's policy has, as the delivery thread's is. With ordinary rights there is one for all.
void raisePriority()
{
    int policy = 0;
    sched_param parameters{};
    pthread_getschedparam(pthread_self(), &policy, &parameters);
    parameters.sched_priority = sched_get_priority_max(policy);
    pthread_setschedparam(pthread_self(), policy, &parameters);
}
} // namespace

CMIDIInput_ALSA::CMIDIInput_ALSA() = default;
CMIDIInput_ALSA::~CMIDIInput_ALSA() = default;

int CMIDIInput_ALSA::initialize()
{
    CMIDIInput::initialize();
    ring()->initialize(k_ringCapacity);
    const int status = createClient();
    if (status < 0)
        m_sequencer.reset();
    return status;
}

int CMIDIInput_ALSA::createClient()
{
    int status = m_decoder.initialize();
    if (status < 0)
        return status;
    status = openSequencer(&m_sequencer, SND_SEQ_OPEN_INPUT);
    if (status < 0)
        return status;
    // As large as the queue, so that one read empties it.
    return snd_seq_set_input_buffer_size(m_sequencer.get(), k_queueCells * sizeof(snd_seq_event_t));
}

bool CMIDIInput_ALSA::openPort(int index)
{
    if (!m_sequencer)
        return false;
    if (m_port >= 0)
        return true;

    // Written to by the subscription made here alone: without SUBS_WRITE nobody else can add one.
    m_port = snd_seq_create_simple_port(m_sequencer.get(), "Input port", SND_SEQ_PORT_CAP_WRITE,
                                        SND_SEQ_PORT_TYPE_MIDI_GENERIC | SND_SEQ_PORT_TYPE_APPLICATION);
    if (m_port < 0)
        return false;
    const ALSAPort* source = CPortList_ALSA::sources().at(index);
    if (source == nullptr)
        return false;

    // Before any thread, which would need descriptors too.
    m_stopSignal = eventfd(0, EFD_CLOEXEC);
    if (m_stopSignal < 0)
        return false;

    startDelivery();
    const snd_seq_addr_t address = source->address;
    if (snd_seq_connect_from(m_sequencer.get(), m_port, address.client, address.port) < 0)
        return false;
    if (!startReading())
        return false;
    setConnected(true);
    return true;
}

void CMIDIInput_ALSA::closePort()
{
    stopReading();
    if (m_port >= 0) {
        // Its subscription goes with it. The port is gone for us whatever the sequencer answers.
        snd_seq_delete_simple_port(m_sequencer.get(), m_port);
        m_port = -1;
    }
    stopDelivery();
    setConnected(false);
}

void CMIDIInput_ALSA::readMessageFromBuffer(unsigned char* data, int* size)
{
    readRecord(data, size);
}

bool CMIDIInput_ALSA::startReading()
try {
    m_reader = std::thread([this] {
        raisePriority();
        if (!readEvents()) {
            noteEnd();
            wakeDelivery();
        }
    });
    return true;
} catch (const std::system_error&) {
    return false;
}

void CMIDIInput_ALSA::stopReading()
{
    if (m_reader.joinable()) {
        eventfd_write(m_stopSignal, 1);
        m_reader.join();
    }
    if (m_stopSignal >= 0) {
        close(m_stopSignal);
        m_stopSignal = -1;
    }
}

bool CMIDIInput_ALSA::readEvents()
{
    std::array<pollfd, 2> waiting{};
    snd_seq_poll_descriptors(m_sequencer.get(), waiting.data(), 1, POLLIN);
    waiting[1] = {m_stopSignal, POLLIN, 0};
    int failures = 0;
    while (failures < k_readAttempts) {
        if (poll(waiting.data(), waiting.size(), -1) < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        if (waiting[1].revents != 0)
            return true;
        // Woken without anything to read, the sequencer has failed.
        if ((waiting[0].revents & POLLIN) == 0)
            return false;
        failures = readBatch() ? 0 : failures + 1;
    }
    return false;
}

bool CMIDIInput_ALSA::readBatch()
{
    int status = 0;
    do {
        snd_seq_event_t* event = nullptr;
        status = snd_seq_event_input(m_sequencer.get(), &event);
        if (status >= 0)
            store(*event);
        // Asked only now: an event's bytes lie in the buffer that asking may refill.
    } while (status >= 0 && snd_seq_event_input_pending(m_sequencer.get(), 0) > 0);
    const bool passing = status >= 0 || status == -EAGAIN || status == -EINTR;
    if (!passing)
        noteOverrun(); // an error takes events with it
    wakeDelivery();
    // -ENOSPC: the queue ran over and was emptied. There is no event; the next one is as good as any.
    return passing || status == -ENOSPC;
}

void CMIDIInput_ALSA::store(const snd_seq_event_t& event)
{
    const std::span<const unsigned char> bytes = m_decoder.decode(event);
    // What is longer than a record, or finds the ring full, is dropped whole.
    if (bytes.size() <= k_largestRecord)
        writeRecord(bytes.data(), static_cast<quint16>(bytes.size()));
    else
        noteOverrun();
}
