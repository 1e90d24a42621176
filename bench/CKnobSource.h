#pragma once

#include <array>
#include <atomic>
#include <cstdint>

#include <sys/types.h>

/// A process of its own with a sequencer client that looks like the device and reports knob values.
///
/// Stream   message n is about knob n % knobs and says n / knobs % 128.
/// Times    nanoseconds of CLOCK_MONOTONIC.
/// Threads  one; made before the program has a second one, since it forks.
/// Failure  without a sequencer the program ends with a line on standard error.
class CKnobSource
{
  public:
    explicit CKnobSource(int knobs);
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
    Shared* m_shared;
    pid_t m_process = 0;
    std::array<int, 2> m_orders{};
    std::array<int, 2> m_answers{};
};
