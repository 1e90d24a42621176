#pragma once

// The part of CoreFoundation that midi/mac uses, under its names and with its type widths, answered by CFakeCoreMIDI.

#include <cstdint>

using UInt8 = std::uint8_t;
using UInt16 = std::uint16_t;
using UInt32 = std::uint32_t;
using SInt32 = std::int32_t;
using UInt64 = std::uint64_t;
using Byte = UInt8;
using Boolean = unsigned char;
using OSStatus = SInt32;
using ItemCount = unsigned long;

using CFIndex = long;
using CFTypeRef = const void*;
using CFStringRef = const struct FakeString*;
using CFStringEncoding = UInt32;

inline constexpr OSStatus noErr = 0;
inline constexpr CFStringEncoding kCFStringEncodingMacRoman = 0;

#define CFSTR(text) fakeConstantString(text)

extern "C" {
CFStringRef fakeConstantString(const char* text);

void CFRelease(CFTypeRef object);
const char* CFStringGetCStringPtr(CFStringRef string, CFStringEncoding encoding);
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize, CFStringEncoding encoding);
}
