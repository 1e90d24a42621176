#pragma once

// The part of CoreFoundation that midi/mac uses, with the types that a Mac's compiler sees.

using UInt8 = unsigned char;
using UInt16 = unsigned short;
using UInt32 = unsigned int;
using SInt32 = int;
using UInt64 = unsigned long long;
using Byte = UInt8;
using Boolean = unsigned char;
using OSStatus = SInt32;
using ItemCount = unsigned long;

using CFIndex = long;
using CFTypeRef = const void*;
using CFStringRef = const struct __CFString*;
using CFStringEncoding = UInt32;

enum
{
    noErr = 0
};
enum : CFStringEncoding
{
    kCFStringEncodingMacRoman = 0
};

#define CFSTR(text) (reinterpret_cast<CFStringRef>(__builtin___CFStringMakeConstantString(text)))

extern "C" {
void CFRelease(CFTypeRef object);
const char* CFStringGetCStringPtr(CFStringRef string, CFStringEncoding encoding);
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize, CFStringEncoding encoding);
}
