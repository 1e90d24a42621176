#pragma once

#include "connection/ConnectionTimes.h"
#include "ctl/EditorBusTimes.h"

/// How long the program without a window waits for what.
struct CtlTimes
{
    ConnectionTimes connection = {}; ///< of which startInterval is how long a start message may go unanswered
    std::chrono::milliseconds startPause{1000};  ///< that the device gets after each, though its answer comes earlier
    std::chrono::milliseconds answer{1000};      ///< for all settings, before they are asked for again
    std::chrono::milliseconds values{50};        ///< for the knobs' positions, which follow the settings
    std::chrono::milliseconds lookPause{100};    ///< between two looks for a device that is not there yet
    std::chrono::milliseconds meetingPause{300}; ///< at most, before a program that met its like looks again
    EditorBusTimes editor = {};
};

/// How often the device is asked, before it is said not to answer.
inline constexpr int k_startAttempts = 3;
inline constexpr int k_requestAttempts = 3;

/// How often the device is taken, before it is left to another program that takes it at the same time.
inline constexpr int k_openAttempts = 5;
