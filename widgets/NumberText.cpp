#include "widgets/NumberText.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <string>
#include <string_view>

namespace
{
constexpr std::string_view k_flags = "-+ #0";
constexpr std::string_view k_digits = "0123456789";
constexpr std::string_view k_lengths = "lL";
constexpr std::string_view k_conversions = "aAeEfFgG";
constexpr std::size_t k_mostDigits = 3; ///< of a width or a precision: no text is longer than a thousand characters

/// Takes from the front of the text what is among the characters.
std::string_view take(std::string_view& text, std::string_view among)
{
    const std::string_view taken = text.substr(0, std::min(text.find_first_not_of(among), text.size()));
    text.remove_prefix(taken.size());
    return taken;
}

/// Takes one conversion, from behind its '%', and gives it without its length: nothing else than a double is passed.
/// Empty if it is none of a double.
std::string takeConversion(std::string_view& text)
{
    std::string conversion = "%";
    conversion += take(text, k_flags);
    const std::string_view width = take(text, k_digits);
    conversion += width;
    std::string_view precision;
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        precision = take(text, k_digits);
        conversion.append(".").append(precision);
    }
    const bool isOneLength = take(text, k_lengths).size() <= 1;
    if (!isOneLength || width.size() > k_mostDigits || precision.size() > k_mostDigits || text.empty() ||
        k_conversions.find(text.front()) == std::string_view::npos)
        return {};
    conversion += text.front();
    text.remove_prefix(1);
    return conversion;
}

/// The number by one conversion.
QByteArray converted(const char* conversion, double number)
{
    QByteArray text(std::snprintf(nullptr, 0, conversion, number), '\0');
    std::snprintf(text.data(), static_cast<std::size_t>(text.size()) + 1, conversion, number);
    // NOLINTNEXTLINE(concurrency-mt-unsafe): nobody changes the locale once the application object is made
    return text.replace(std::localeconv()->decimal_point, ".");
}

QString plainText(double number)
{
    return QString::fromLatin1(converted("%.0f", number));
}
} // namespace

QString numberText(const QString& format, double number)
{
    const QByteArray bytes = format.toLocal8Bit();
    std::string_view rest(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    QByteArray text;
    bool isConverted = false;
    while (!rest.empty()) {
        const std::size_t percent = std::min(rest.find('%'), rest.size());
        text.append(rest.data(), static_cast<qsizetype>(percent));
        rest.remove_prefix(percent);
        if (rest.empty())
            break;
        rest.remove_prefix(1);
        if (rest.starts_with('%')) {
            text += '%';
            rest.remove_prefix(1);
            continue;
        }
        const std::string conversion = takeConversion(rest);
        if (conversion.empty() || isConverted)
            return plainText(number);
        text += converted(conversion.c_str(), number);
        isConverted = true;
    }
    return QString::fromLocal8Bit(text);
}
