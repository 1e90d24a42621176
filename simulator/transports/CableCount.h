#pragma once

#include <QString>

#include <optional>

inline constexpr int k_mostCables = 3; ///< of a device on the sequencer, as the hardware has them

/// The number of cables that a user gives, one digit of 1 to k_mostCables; nothing for any other text.
[[nodiscard]] inline std::optional<int> cableCount(const QString& text)
{
    const int cables = text.size() == 1 ? text[0].unicode() - u'0' : 0;
    return cables >= 1 && cables <= k_mostCables ? std::optional(cables) : std::nullopt;
}
