// ktz-bench-throughput MESSAGES
//
// How many notice-value messages a second one thread decodes, how many come through the ring and the delivery thread
// and are decoded there, and how many two threads hand over that do nothing else: a lock for each message, and a
// condition that is waited for. Prints the three rates, and how many messages of the ring were lost or came in another
// order. Exit status 1 when there was such a message.

#include "device/CMessageManagerWrapper.h"
#include "midi/CCircularBuffer.h"
#include "midi/CMIDIInput.h"
#include "midi/CMIDITransportObserver.h"

#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <thread>
#include <vector>

namespace
{
using Message = std::array<unsigned char, 11>;

/// The n-th message of an endless stream: the knobs in turn, each of which climbs by one and starts again.
Message message(int n)
{
    return {0xF0,
            0x43,
            0x10,
            0x3E,
            0x18,
            0x05,
            0x02,
            0x04,
            static_cast<unsigned char>(n % k_numOfKnobs),
            static_cast<unsigned char>(n / k_numOfKnobs % 128),
            0xF7};
}

/// A writer that is faster than the decoder waits here, where a system would wait for the cable.
void waitForReader()
{
    std::this_thread::sleep_for(std::chrono::microseconds(100));
}

/// Decodes each record and compares it with what should have come.
class CDecoder : public CMIDITransportObserver
{
  public:
    bool messageReceived(const unsigned char* data, int size) override
    {
        int type = 0;
        ParamList values;
        const bool parsed = m_codec.parseMessageForMac(data, size, &type, &values);
        const int next = m_count.load(std::memory_order_relaxed);
        const Message expected = message(next);
        const QString key = QString::number(k_knobValueCategory + expected[8]);
        if (!parsed || values.value(key, -1).toInt() != expected[9])
            ++m_wrong;
        m_count.store(next + 1, std::memory_order_release);
        return parsed;
    }

    std::atomic<int> m_count = 0;
    std::atomic<int> m_wrong = 0;

  private:
    CMessageManagerWrapper m_codec;
};

/// An input port that its own program fills.
class CInput : public CMIDIInput
{
  public:
    bool openPort(int /*index*/) override
    {
        ring()->initialize(k_ringCapacity);
        startDelivery();
        return true;
    }

    void closePort() override
    {
        stopDelivery();
    }

    void readMessageFromBuffer(unsigned char* data, int* size) override
    {
        readRecord(data, size);
    }

    void receive(const Message& bytes)
    {
        while (!writeRecord(bytes.data(), quint16{sizeof(Message)}))
            waitForReader();
        wakeDelivery();
    }
};

using Clock = std::chrono::steady_clock;

double rate(int messages, Clock::time_point start)
{
    return messages / std::chrono::duration<double>(Clock::now() - start).count();
}

double oneThread(int messages)
{
    CDecoder decoder;
    const Clock::time_point start = Clock::now();
    for (int n = 0; n < messages; ++n) {
        const Message bytes = message(n);
        decoder.messageReceived(bytes.data(), int{sizeof(Message)});
    }
    return rate(messages, start);
}

/// What a ring and a delivery thread cannot do without: messages of one size in a plain array.
class CBareRing
{
  public:
    void receive(const Message& bytes)
    {
        while (!write(bytes))
            waitForReader();
        m_filled.notify_one();
    }

    Message take()
    {
        std::unique_lock lock(m_mutex);
        m_filled.wait(lock, [this] { return m_read < m_written; });
        return m_messages[m_read++ % m_messages.size()];
    }

  private:
    bool write(const Message& bytes)
    {
        const std::scoped_lock lock(m_mutex);
        if (m_written - m_read == m_messages.size())
            return false;
        m_messages[m_written++ % m_messages.size()] = bytes;
        return true;
    }

    std::vector<Message> m_messages = std::vector<Message>(300'000); ///< as many as the ring has room for
    std::size_t m_written = 0;
    std::size_t m_read = 0;
    std::mutex m_mutex;
    std::condition_variable m_filled;
};

double throughBareRing(int messages)
{
    CDecoder decoder;
    CBareRing ring;
    const Clock::time_point start = Clock::now();
    std::thread reader([&] {
        for (int n = 0; n < messages; ++n) {
            const Message bytes = ring.take();
            decoder.messageReceived(bytes.data(), int{sizeof(Message)});
        }
    });
    for (int n = 0; n < messages; ++n)
        ring.receive(message(n));
    reader.join();
    return rate(messages, start);
}

double throughRing(int messages, int* lost, int* wrong)
{
    CDecoder decoder;
    CInput input;
    input.initialize();
    input.registerObserver(&decoder);
    static_cast<void>(input.openPort(0)); // cannot fail
    const Clock::time_point start = Clock::now();
    for (int n = 0; n < messages; ++n)
        input.receive(message(n));
    const Clock::time_point patience = Clock::now() + std::chrono::seconds(30);
    while (decoder.m_count.load(std::memory_order_acquire) < messages && Clock::now() < patience)
        std::this_thread::yield();
    const double result = rate(messages, start);
    input.closePort();
    *lost = messages - decoder.m_count;
    *wrong = decoder.m_wrong;
    return result;
}
} // namespace

int main(int argc, char** argv)
{
    const int messages = argc > 1 ? std::atoi(argv[1]) : 0;
    if (messages < 1) {
        std::fprintf(stderr, "usage: ktz-bench-throughput MESSAGES\n");
        return 2;
    }
    const double alone = oneThread(messages);
    int lost = 0;
    int wrong = 0;
    const double ring = throughRing(messages, &lost, &wrong);
    std::printf("%.0f %.0f %.0f %d %d\n", alone, ring, throughBareRing(messages), lost, wrong);
    return lost == 0 && wrong == 0 ? 0 : 1;
}
