#include "widgets/NumberText.h"

#include <QRegularExpression>

QString numberText(const QString& format, double number)
{
    static const QRegularExpression oneConversion(
        QStringLiteral(R"(\A(?:[^%]|%%)*%[-+ #0]*\d{0,3}(?:\.\d{0,3})?[aAeEfFgG](?:[^%]|%%)*\z)"));
    const QString safeFormat = oneConversion.match(format).hasMatch() ? format : QStringLiteral("%.0f");
    return QString::asprintf(safeFormat.toLocal8Bit().constData(), number);
}
