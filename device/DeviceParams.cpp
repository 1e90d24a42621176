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
} // namespace

bool isSettingParam(int id)
{
    const int knob = knobOfParam(id);
    return isKnob(knob) && std::ranges::find(k_settingCategories, id - knob) != k_settingCategories.end();
}

ParamList settingsOnly(const ParamList& wholeList)
{
    ParamList kept;
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        const QString knobKey = QString::number(knob);
        const QVariant value = wholeList.value(knobKey);
        if (value.typeId() != QMetaType::QVariantMap)
            continue;
        const ParamList given = value.toMap();
        ParamList settings;
        for (const SettingParam& setting : k_settingParams) {
            const QString idKey = QString::number(setting.category + knob);
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
