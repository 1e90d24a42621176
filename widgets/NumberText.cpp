#include "widgets/NumberText.h"

#include <QRegularExpression>

namespace
{
constexpr const char* k_plainFormat = "%.0f";
}

QString numberText(const QString& format, double number)
{
    // What nearly every field shows. Regular expressions cost half a megabyte from their first use on.
    if (format == QLatin1String(k_plainFormat))
        return QString::asprintf(k_plainFormat, number);
    static const QRegularExpression oneConversion(
        QStringLiteral(R"(\A(?:[^%]|%%)*%[-+ #0]*\d{0,3}(?:\.\d{0,3})?[aAeEfFgG](?:[^%]|%%)*\z)"));
    const bool safe = oneConversion.match(format).hasMatch();
    return QString::asprintf(safe ? format.toLocal8Bit().constData() : k_plainFormat, number);
}
