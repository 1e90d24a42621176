#pragma once

#include <chrono>

/// How long the session bus is waited for, and the editor behind it.
struct EditorBusTimes
{
    std::chrono::milliseconds bus{200}; ///< for the bus's first word
    std::chrono::milliseconds answer{5000};
};
