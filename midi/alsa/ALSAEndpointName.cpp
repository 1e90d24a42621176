#include "midi/alsa/ALSAEndpointName.h"

#include <QRegularExpression>

#include <algorithm>

namespace
{
/// Bytes at which the kernel cuts a port's name.
constexpr qsizetype k_cutLength = 31;

QByteArray ownText(const QByteArray& client, QByteArray port)
{
    if (client.isEmpty())
        return port;
    while (port.startsWith(client + ' '))
        port.remove(0, client.size() + 1);
    return port == client ? QByteArray() : port;
}

bool isCountedText(const QByteArray& text)
{
    static const QRegularExpression counted(QStringLiteral("^(MIDI|Port) [0-9]+$"));
    return counted.match(QString::fromUtf8(text)).hasMatch();
}

bool isShared(const QByteArray& client, const QByteArrayList& ports, const QByteArray& text)
{
    const auto hasText = [&](const QByteArray& port) { return ownText(client, port) == text; };
    return std::count_if(ports.begin(), ports.end(), hasText) > 1;
}
} // namespace

QString alsaEndpointName(const QByteArray& client, const QByteArrayList& ports, qsizetype index)
{
    const QByteArray& name = ports[index];
    const QByteArray text = ownText(client, name);
    if (isCountedText(text) || name.size() == k_cutLength || isShared(client, ports, text))
        return QStringLiteral("Port%1").arg(index + 1);
    return QString::fromUtf8(name);
}
