#include "midi/mac/CFStringToQString.h"

#include <array>

QString CFStringToQString(CFStringRef string)
{
    if (string == nullptr)
        return QString();
    if (const char* direct = CFStringGetCStringPtr(string, kCFStringEncodingMacRoman))
        return QString::fromLatin1(direct);
    std::array<char, 256> copy{};
    if (CFStringGetCString(string, copy.data(), copy.size(), kCFStringEncodingMacRoman))
        return QString::fromLatin1(copy.data());
    return QLatin1String("");
}
