#pragma once

#include <chrono>

/// The rhythm of the connection, as the device expects it.
struct ConnectionTimes
{
    std::chrono::milliseconds startInterval{1000}; ///< pause after each start message
    std::chrono::milliseconds keepInterval{2000};  ///< between two keep messages
    std::chrono::milliseconds watchdog{5000};      ///< silence after which the device is lost
    std::chrono::milliseconds requestPause{1000};  ///< between two requests for everything, when reports were lost
};
