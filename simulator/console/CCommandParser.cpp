#include "simulator/console/CCommandParser.h"

#include "simulator/device/PrintableText.h"

#include <QList>
#include <QStringList>

#include <algorithm>
#include <array>
#include <optional>

namespace
{
using Action = DeviceCommand::Action;
using Words = QList<QByteArray>;

constexpr int k_lastKnob = 7;
constexpr int k_lastValue = 127;

constexpr int k_anyArguments = -1; // but at least one

struct Verb
{
    const char* name;
    Action action;
    int arguments;
    const char* usage;
    const char* meaning;
};

constexpr std::array<Verb, 9> k_verbs = {{
    {"turn", Action::Turn, 2, "turn KNOB VALUE", "turns a knob (0 to 7) to a value (0 to 127) and reports it"},
    {"set", Action::Set, 3, "set KNOB SETTING VALUE",
     "sets %1 at the device; it tells them when asked"}, // %1: the settings
    {"send", Action::Send, k_anyArguments, "send BYTE...",
     "sends these bytes as they are, each as two digits: send F8"},
    {"show", Action::Show, 0, "show", "shows what the device holds"},
    {"silent", Action::Silent, 0, "silent", "answers and reports nothing any more"},
    {"answer", Action::Answer, 0, "answer", "ends the silence"},
    {"unplug", Action::Unplug, 0, "unplug", "pulls the cable, for good"},
    {"help", Action::Help, 0, "help", "shows this list"},
    {"quit", Action::Quit, 0, "quit", "ends the device"},
}};

/// "cc, ch (0 to 15), max, min or led (0 to 3)", or the same without the ranges.
QString settingNames(bool withRanges)
{
    QStringList names;
    for (const DeviceSetting& setting : k_deviceSettings) {
        names += QString::fromLatin1(setting.command);
        if (withRanges && setting.last != k_lastValue)
            names.last() += QStringLiteral(" (0 to %1)").arg(setting.last);
    }
    const QString last = names.takeLast();
    return QStringLiteral("%1 or %2").arg(names.join(QStringLiteral(", ")), last);
}

CCommandParser::Result failure(const QString& error)
{
    return {{}, error};
}

std::optional<int> number(const QByteArray& word, int last)
{
    const bool digits = std::all_of(word.begin(), word.end(), [](char c) { return c >= '0' && c <= '9'; });
    bool ok = false;
    const int value = word.toInt(&ok);
    return digits && ok && value <= last ? std::optional(value) : std::nullopt;
}

CCommandParser::Result notANumber(const QByteArray& word, const char* what, int last)
{
    return failure(QStringLiteral("\"%1\" is no %2, which is 0 to %3").arg(printableText(word), what).arg(last));
}

CCommandParser::Result parseTurn(DeviceCommand command, const Words& words)
{
    const std::optional<int> value = number(words.at(2), k_lastValue);
    if (!value)
        return notANumber(words.at(2), "value", k_lastValue);
    command.value = *value;
    return {command, {}};
}

CCommandParser::Result parseSet(DeviceCommand command, const Words& words)
{
    const auto* const found = std::find_if(k_deviceSettings.begin(), k_deviceSettings.end(),
                                           [&](const DeviceSetting& known) { return words.at(2) == known.command; });
    if (found == k_deviceSettings.end())
        return failure(QStringLiteral("\"%1\" is no setting: %2").arg(printableText(words.at(2)), settingNames(false)));
    const std::optional<int> value = number(words.at(3), found->last);
    if (!value)
        return notANumber(words.at(3), found->command, found->last);
    command.setting = found->member;
    command.value = *value;
    return {command, {}};
}

CCommandParser::Result parseSend(DeviceCommand command, const Words& words)
{
    for (const QByteArray& word : words.sliced(1)) {
        const QByteArray byte = QByteArray::fromHex(word);
        if (byte.size() != 1 || byte.toHex() != word.toLower())
            return failure(QStringLiteral("\"%1\" is no byte, which is 00 to FF").arg(printableText(word)));
        command.bytes += byte;
    }
    return {command, {}};
}

CCommandParser::Result parseVerb(const Verb& verb, const Words& words)
{
    const qsizetype arguments = words.size() - 1;
    if (verb.arguments == k_anyArguments ? arguments < 1 : arguments != verb.arguments)
        return failure(QStringLiteral("usage: %1").arg(verb.usage));
    DeviceCommand command{.action = verb.action};
    if (verb.action == Action::Send)
        return parseSend(command, words);
    if (verb.arguments == 0)
        return {command, {}};
    const std::optional<int> knob = number(words.at(1), k_lastKnob);
    if (!knob)
        return notANumber(words.at(1), "knob", k_lastKnob);
    command.knob = *knob;
    return verb.action == Action::Turn ? parseTurn(command, words) : parseSet(command, words);
}
} // namespace

CCommandParser::Result CCommandParser::parse(const QByteArray& line)
{
    const QByteArray text = line.simplified();
    if (text.isEmpty())
        return {};
    const Words words = text.split(' ');
    const auto* const verb =
        std::find_if(k_verbs.begin(), k_verbs.end(), [&](const Verb& known) { return words.first() == known.name; });
    if (verb == k_verbs.end())
        return failure(QStringLiteral("unknown command \"%1\"; help lists them").arg(printableText(words.first())));
    return parseVerb(*verb, words);
}

QString CCommandParser::help()
{
    QString text;
    for (const Verb& verb : k_verbs) {
        const QString meaning = QString::fromLatin1(verb.meaning).replace(QStringLiteral("%1"), settingNames(true));
        text += QStringLiteral("  %1  %2\n").arg(verb.usage, -22).arg(meaning);
    }
    return text;
}
