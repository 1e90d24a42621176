#include "midi/alsa/ALSAEndpointName.h"

#include "app/common/Constants.h"

#include <QRegularExpression>

#include <optional>

namespace
{
/// Bytes at which the kernel cuts a port's name.
constexpr qsizetype k_cutLength = 31;

QByteArray deviceName()
{
    return QString(k_jxPortName).toUtf8();
}

QString portNumber(qsizetype number)
{
    return QStringLiteral("Port%1").arg(number);
}

/// Takes one repeat of a name from the front of a text. false: there is none.
bool takeRepeat(const QByteArray& name, QByteArray* text)
{
    if (name.isEmpty() || !text->startsWith(name))
        return false;
    if (text->size() > name.size() && text->at(name.size()) != ' ')
        return false; // a longer word
    *text = text->mid(name.size()).trimmed();
    return true;
}

QByteArray ownText(const QByteArray& client, const QByteArray& port)
{
    QByteArray text = port.trimmed();
    while (takeRepeat(client, &text) || takeRepeat(deviceName(), &text)) {
    }
    return text;
}

std::optional<qsizetype> numberIn(const QByteArray& text)
{
    static const QString word = QStringLiteral("(?:port|midi|input|output|in|out)");
    static const QString gap = QStringLiteral("[\\s_:#-]*");
    static const QString number = QStringLiteral("([0-9]{1,4})");
    // Behind the words, between them, or before them.
    static const QRegularExpression counted(
        QStringLiteral("^(?|(?:%1%2){1,2}%3|%1%2%3%2%1|%3(?:%2%1){1,2})$").arg(word, gap, number),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = counted.match(QString::fromUtf8(text));
    return match.hasMatch() ? std::optional(match.captured(1).toLongLong()) : std::nullopt;
}
} // namespace

bool holdsDeviceName(const QByteArray& name)
{
    return name.contains(deviceName());
}

QStringList deviceEndpointNames(const QByteArray& client, const QByteArrayList& ports,
                                const QList<qsizetype>& direction)
{
    QByteArrayList texts;
    for (const qsizetype place : direction)
        texts.append(ownText(client, ports[place]));
    const auto saysNothing = [&](qsizetype i) {
        return ports[direction[i]].size() == k_cutLength || texts.count(texts[i]) > 1;
    };
    QStringList names(texts.size());
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const std::optional<qsizetype> number = saysNothing(i) ? std::nullopt : numberIn(texts[i]);
        if (number)
            names[i] = portNumber(*number);
    }

    for (qsizetype i = 0; i < texts.size(); ++i) {
        if (!names[i].isEmpty())
            continue;
        const QString counted = portNumber(direction[i] + 1);
        if (saysNothing(i) && !names.contains(counted))
            names[i] = counted;
        else
            names[i] = texts[i].isEmpty() ? QString(k_jxPortName) : QString::fromUtf8(texts[i]);
    }

    const QString editorPort = portNumber(3);
    if (!names.isEmpty() && !names.contains(editorPort))
        names.last() = editorPort;
    return names;
}
