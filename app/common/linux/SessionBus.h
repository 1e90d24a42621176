#pragma once

#include <QString>

#include <chrono>

/// The session's message bus, looked at before anything waits for it: the bus library itself waits up to 25 seconds for
/// a bus that does not answer. Any thread.
namespace SessionBus
{
/// The address of the session's bus, if that says something to a client's first word within the limit; else empty.
///
/// Looks where the bus library looks, at sockets of this machine only, and starts no bus where there is none.
/// Blocks for the limit at the most, even where connecting blocks.
[[nodiscard]] QString answeringAddress(std::chrono::milliseconds limit);
} // namespace SessionBus
