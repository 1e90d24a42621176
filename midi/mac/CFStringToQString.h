#pragma once

#include <QString>

#include <CoreFoundation/CoreFoundation.h>

/// The string's MacRoman bytes as text; each byte above 127 comes out as the Latin-1 character of its number.
///
/// string   borrowed; null gives a null string.
/// Empty, not null: the string has no such bytes, or more than 255 of them and no direct pointer to them.
[[nodiscard]] QString CFStringToQString(CFStringRef string);
