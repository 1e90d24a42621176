#include "device/DeviceParams.h"

#include <algorithm>

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
        for (const int category : k_settingCategories) {
            const QString idKey = QString::number(category + knob);
            if (given.contains(idKey))
                settings.insert(idKey, given.value(idKey));
        }
        kept.insert(knobKey, settings);
    }
    return kept;
}
