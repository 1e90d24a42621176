#include "simulator/device/TrafficText.h"

#include "simulator/device/DeviceMessages.h"

namespace
{
constexpr qsizetype k_longestShown = 64;
} // namespace

QString bytesText(const QByteArray& bytes)
{
    QString shown = QString::fromLatin1(bytes.left(k_longestShown).toHex(' ').toUpper());
    if (bytes.size() <= k_longestShown)
        return shown;
    return QStringLiteral("%1 ... %2 bytes").arg(shown).arg(bytes.size());
}

QString trafficText(const Traffic& traffic)
{
    const bool received = traffic.direction == Traffic::Direction::ToDevice;
    return QStringLiteral("%1 %2  %3  %4")
        .arg(static_cast<double>(traffic.time) / 1000.0, 10, 'f', 3)
        .arg(received ? QStringLiteral("received") : QStringLiteral("sent    "), bytesText(traffic.bytes),
             DeviceMessages::inWords(traffic.bytes));
}
