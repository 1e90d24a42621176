#include "ctl/SettingsTable.h"

SettingsTable factoryTable()
{
    SettingsTable table;
    for (std::size_t knob = 0; knob < table.size(); ++knob)
        std::ranges::copy(k_defaultParamList[knob], table[knob].begin());
    return table;
}

KnobSettingsRow overlaid(const KnobSettingsRow& row, const KnobSettingsRow& given)
{
    KnobSettingsRow both = given;
    for (std::size_t setting = 0; setting < both.size(); ++setting) {
        if (!both[setting])
            both[setting] = row[setting];
    }
    return both;
}

QList<int> knobsThatDiffer(const SettingsTable& given, const SettingsTable& held)
{
    QList<int> knobs;
    for (std::size_t knob = 0; knob < given.size(); ++knob) {
        if (overlaid(held[knob], given[knob]) != held[knob])
            knobs.append(int(knob));
    }
    return knobs;
}

SettingsTable tableOf(const ParamList& list)
{
    SettingsTable table;
    for (std::size_t knob = 0; knob < table.size(); ++knob) {
        const ParamList settings = list.value(QString::number(knob)).toMap();
        for (std::size_t setting = 0; setting < k_numOfSettings; ++setting) {
            const auto value = settings.find(QString::number(paramIdOf(knob, setting)));
            if (value != settings.end())
                table[knob][setting] = value->toInt();
        }
    }
    return table;
}
