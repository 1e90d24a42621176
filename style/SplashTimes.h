#pragma once

#include <chrono>

/// The rhythm of the splash.
struct SplashTimes
{
    std::chrono::milliseconds tick{17};          ///< by which its clock moves
    std::chrono::milliseconds fill{1700};        ///< until the bar is full
    std::chrono::milliseconds minimumShow{2000}; ///< in ticks: while the editor blocks, none passes
    std::chrono::milliseconds longestWait{5000}; ///< for an editor that never says that it is ready
    std::chrono::milliseconds slide{1000};
};
