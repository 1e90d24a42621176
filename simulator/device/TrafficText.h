#pragma once

#include "simulator/device/CTrafficLog.h"

#include <QString>

/// In hexadecimal, such as "F0 43 10"; beyond the first 64 bytes they are only counted.
[[nodiscard]] QString bytesText(const QByteArray& bytes);

/// One line for one message: time in seconds, direction as the device sees it, bytes in hexadecimal, and words, such
/// as "     12.345 received  F0 43 10 3E 18 05 02 01 F7  keep". Bytes beyond the first 64 are only counted.
[[nodiscard]] QString trafficText(const Traffic& traffic);
