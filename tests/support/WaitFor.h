#pragma once

#include <QDeadlineTimer>
#include <QTest>

#include <algorithm>
#include <chrono>

/// Lets events run until the condition holds, and looks at it every millisecond, since another thread may fulfil it
/// without any event. false if it does not hold in time, or the test has failed already.
template <class Condition> [[nodiscard]] bool waitFor(const Condition& condition, std::chrono::milliseconds time)
{
    const QDeadlineTimer end(time);
    while (!condition()) {
        if (end.hasExpired() || (QTest::runningTest() && QTest::currentTestFailed()))
            return false;
        QTest::qWait(1);
    }
    return true;
}

/// What a thread may have to wait for its turn on a machine that does other work beside the tests. Only a test that
/// fails waits so long.
constexpr std::chrono::milliseconds k_leastPatience{30'000};

// What QTRY_VERIFY, QTRY_COMPARE and the others do before they judge. Qt's own looks only every 50 milliseconds, which
// is most of what a test would wait; and gives up after five seconds.
#undef QTRY_IMPL
#define QTRY_IMPL(expr, timeout)                                                                                       \
    static_cast<void>(                                                                                                 \
        waitFor([&] { return bool(expr); }, std::max(k_leastPatience, std::chrono::milliseconds(timeout))));
