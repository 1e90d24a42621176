#include "device/DeviceParams.h"

#include <algorithm>

namespace
{
/// The value if it is a number in the setting's range, else the end of the range that is nearer; 0 for no number.
QVariant heldInRange(const QVariant& value, int highest)
{
    bool isNumber = false;
    const int number = value.toString().toInt(&isNumber); // of its own, a variant cuts a large number down
    const int held = std::clamp(number, 0, highest);
    return isNumber && held == number ? value : QString::number(held);
}
/// The keys of one knob.
struct KnobKeys
{
    QString knob;
    QString value;
    std::array<QString, k_numOfSettings> settings;
};

std::array<KnobKeys, k_numOfKnobs> keysOfKnobs()
{
    std::array<KnobKeys, k_numOfKnobs> keys;
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        KnobKeys& own = keys[static_cast<std::size_t>(knob)];
        own.knob = QString::number(knob);
        own.value = QString::number(k_knobValueCategory + knob);
        std::ranges::transform(k_settingCategories, own.settings.begin(),
                               [knob](int category) { return QString::number(category + knob); });
    }
    return keys;
}
} // namespace

QString paramKey(int number)
{
    static const std::array<KnobKeys, k_numOfKnobs> keys = keysOfKnobs();
    const int knob = knobOfParam(number);
    if (!isKnob(knob))
        return QString::number(number);
    const KnobKeys& own = keys[static_cast<std::size_t>(knob)];
    const int category = number - knob;
    if (category == 0)
        return own.knob;
    if (category == k_knobValueCategory)
        return own.value;
    const auto* setting = std::ranges::find(k_settingCategories, category);
    return setting != k_settingCategories.end()
               ? own.settings[static_cast<std::size_t>(setting - k_settingCategories.begin())]
               : QString::number(number);
}

bool isSettingParam(int id)
{
    const int knob = knobOfParam(id);
    return isKnob(knob) && std::ranges::find(k_settingCategories, id - knob) != k_settingCategories.end();
}

ParamList settingsOnly(const ParamList& wholeList)
{
    ParamList kept;
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        const QString knobKey = paramKey(knob);
        const QVariant value = wholeList.value(knobKey);
        if (value.typeId() != QMetaType::QVariantMap)
            continue;
        const ParamList given = value.toMap();
        ParamList settings;
        for (const SettingParam& setting : k_settingParams) {
            const QString idKey = paramKey(setting.category + knob);
            if (given.contains(idKey))
                settings.insert(idKey, heldInRange(given.value(idKey), setting.highest));
        }
        if (!settings.isEmpty())
            kept.insert(knobKey, settings);
    }
    return kept;
}

ParamList completed(const ParamList& list, const ParamList& other)
{
    ParamList whole = list;
    for (auto it = other.cbegin(); it != other.cend(); ++it) {
        if (it.value().typeId() == QMetaType::QVariantMap)
            whole.insert(it.key(), completed(list.value(it.key()).toMap(), it.value().toMap()));
        else if (!list.contains(it.key()))
            whole.insert(it.key(), it.value());
    }
    return whole;
}
