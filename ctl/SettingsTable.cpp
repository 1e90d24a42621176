#include "ctl/SettingsTable.h"

SettingsTable factoryTable()
{
    SettingsTable table;
    for (std::size_t knob = 0; knob < table.size(); ++knob)
        std::ranges::copy(k_defaultParamList[knob], table[knob].begin());
    return table;
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
