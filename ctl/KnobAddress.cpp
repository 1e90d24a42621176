#include "ctl/KnobAddress.h"

#include "ctl/SettingNames.h"

#include <algorithm>
#include <numeric>

namespace
{
/// The knob, counted from 0; nothing for any other text than "1" to "8".
std::optional<std::size_t> knobOf(QStringView text)
{
    if (text.size() != 1 || text[0] < u'1' || text[0] > QChar(u'0' + k_numOfKnobs))
        return {};
    return std::size_t(text[0].unicode() - u'1');
}

KnobAddresses::Error parseKnobs(const QString& text, KnobAddress* address)
{
    if (text == QStringLiteral("all")) {
        address->firstKnob = 0;
        address->lastKnob = k_numOfKnobs - 1;
        return {};
    }
    const qsizetype dash = text.indexOf(u'-');
    const auto first = knobOf(QStringView(text).first(dash < 0 ? text.size() : dash));
    const auto last = dash < 0 ? first : knobOf(QStringView(text).sliced(dash + 1));
    if (!first || !last || *first > *last)
        return QStringLiteral("\"%1\" is no knob: 1 to %2, such as 3, 1-4 or all").arg(text).arg(k_numOfKnobs);
    address->firstKnob = *first;
    address->lastKnob = *last;
    return {};
}
} // namespace

KnobAddresses::Error KnobAddresses::parse(const QString& text, KnobAddress* address)
{
    const qsizetype dot = text.indexOf(u'.');
    address->isWholeKnob = dot < 0;
    if (Error error = parseKnobs(text.first(dot < 0 ? text.size() : dot), address); !error.isEmpty())
        return error;
    address->settings.resize(k_numOfSettings);
    std::iota(address->settings.begin(), address->settings.end(), 0);
    if (dot < 0)
        return {};
    const QStringList names = SettingNames::all();
    const QString name = text.sliced(dot + 1);
    const qsizetype setting = names.indexOf(name);
    if (setting < 0) {
        return QStringLiteral("\"%1\" is no setting: %2").arg(name, names.join(QStringLiteral(", "))) +
               nearNameQuestion(name, names);
    }
    address->settings = {std::size_t(setting)};
    return {};
}

KnobAddresses::Error KnobAddresses::parseAssignment(const QString& text, SettingsTable* table)
{
    const qsizetype equals = text.indexOf(u'=');
    if (equals < 0)
        return QStringLiteral("\"%1\" sets nothing: KNOB.SETTING=VALUE, such as 3.cc=10").arg(text);
    KnobAddress address;
    if (Error error = parse(text.first(equals), &address); !error.isEmpty())
        return error;
    if (address.isWholeKnob)
        return QStringLiteral("\"%1\" names no setting: KNOB.SETTING=VALUE, such as 3.cc=10").arg(text);
    const std::size_t setting = address.settings.front();
    const QString value = text.sliced(equals + 1);
    const std::optional<int> number = SettingNames::valueOf(setting, value);
    if (!number) {
        QStringList names;
        for (const char* name : k_settingNames[setting].valueNames)
            names.append(QString::fromLatin1(name));
        return QStringLiteral("\"%1\" is no value of %2: %3")
                   .arg(value, SettingNames::nameOf(setting), SettingNames::valuesInWords(setting)) +
               nearNameQuestion(value, names);
    }
    for (std::size_t knob = address.firstKnob; knob <= address.lastKnob; ++knob)
        (*table)[knob][setting] = number;
    return {};
}
