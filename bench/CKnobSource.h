#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <sys/types.h>

/// How a device looks to other sequencer clients, and its report of a knob's value.
struct KnobReport
{
    std::string clientName;
    std::vector<unsigned char> message;
    std::size_t knobAt;  ///< place of the knob's number in the message
    std::size_t valueAt; ///< place of its value
};

/// A process of its own with a sequencer client that looks like the device and reports knob values.
///
/// Stream   message n is about knob n % knobs and says n / knobs % 128.
/// Times    nanoseconds of CLOCK_MONOTONIC.
/// Threads  one; made before the program has a second one, since it forks.
/// Failure  without a sequencer the program ends with a line on standard error.
class CKnobSource
{
  public:
    explicit CKnobSource(int knobs, KnobReport report = editorsDevice());
    ~CKnobSource();
    CKnobSource(const CKnobSource&) = delete;
    CKnobSource& operator=(const CKnobSource&) = delete;

    /// Sends so many messages, evenly, and returns at once. At 0 a second they go out as fast as can be.
    void send(int messages, int perSecond) const;

    /// Stops this process, sends so many messages, and lets it go on 300 ms after the stop. Returns at once; the stop
    /// comes soon after.
    void sendWhileStopped(int messages) const;

    /// Waits for the end of what send() or sendWhileStopped() began. The result is how many messages the sequencer
    /// refused.
    [[nodiscard]] int wait() const;

    /// Messages sent so far, and when the one at a place in the stream left; the last k_remembered are known.
    [[nodiscard]] int sent() const;
    [[nodiscard]] std::int64_t timeOf(int message) const;

    [[nodiscard]] static std::int64_t now();

    /// The KTZ-JX; and a synthesizer that reports its volume, as its only knob.
    [[nodiscard]] static KnobReport editorsDevice();
    [[nodiscard]] static KnobReport synthesizer();

    static constexpr int k_remembered = 1 << 16;

  private:
    struct Order
    {
        int messages;
        int perSecond;
        bool stopReceiver;
    };

    struct Shared
    {
        std::atomic<int> sent = 0;
        std::array<std::atomic<std::int64_t>, k_remembered> times{};
    };

    void give(const Order& order) const;
    [[noreturn]] void serve();
    [[nodiscard]] int carryOut(const Order& order);

    const int m_knobs;
    KnobReport m_report;
    Shared* m_shared;
    pid_t m_process = 0;
    std::array<int, 2> m_orders{};
    std::array<int, 2> m_answers{};
};
