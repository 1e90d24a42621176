#include "ctl/SettingsText.h"

#include "ctl/CConsole.h"
#include "ctl/SettingNames.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace
{
constexpr int k_columnWidth = 9;

/// Without its line break.
QString row(const QStringList& cells, bool isAligned)
{
    if (!isAligned)
        return cells.join(u'\t');
    QString text;
    for (const QString& cell : cells)
        text += cell.leftJustified(k_columnWidth);
    return text.trimmed();
}

QJsonValue json(std::size_t setting, std::optional<int> value)
{
    return value ? SettingNames::valueJson(setting, *value) : QJsonValue();
}
} // namespace

void SettingsText::printTable(CConsole& console, const SettingsTable& table)
{
    const bool isAligned = console.isTerminal();
    console.printHeading(row(QStringList(QStringLiteral("knob")) + SettingNames::all(), isAligned));
    QString rows;
    for (std::size_t knob = 0; knob < table.size(); ++knob) {
        QStringList cells(QString::number(knob + 1));
        for (std::size_t setting = 0; setting < k_numOfSettings; ++setting)
            cells.append(valueText(setting, table[knob][setting]));
        rows += row(cells, isAligned) + u'\n';
    }
    console.print(rows);
}

QJsonArray SettingsText::toJson(const SettingsTable& table)
{
    QJsonArray knobs;
    for (std::size_t knob = 0; knob < table.size(); ++knob) {
        QJsonObject object{{QStringLiteral("knob"), int(knob) + 1}};
        for (std::size_t setting = 0; setting < k_numOfSettings; ++setting) {
            if (table[knob][setting])
                object.insert(SettingNames::nameOf(setting), json(setting, table[knob][setting]));
        }
        knobs.append(object);
    }
    return knobs;
}

QList<SettingDifference> SettingsText::differences(const SettingsTable& first, const SettingsTable& second)
{
    QList<SettingDifference> found;
    for (std::size_t knob = 0; knob < first.size(); ++knob) {
        for (std::size_t setting = 0; setting < k_numOfSettings; ++setting) {
            if (first[knob][setting] != second[knob][setting])
                found.append({knob, setting, first[knob][setting], second[knob][setting]});
        }
    }
    return found;
}

QString SettingsText::toText(const SettingDifference& difference)
{
    return QStringLiteral("%1.%2: %3, %4")
        .arg(difference.knob + 1)
        .arg(SettingNames::nameOf(difference.setting), valueText(difference.setting, difference.first),
             valueText(difference.setting, difference.second));
}

QJsonArray SettingsText::toJson(const QList<SettingDifference>& differences)
{
    QJsonArray array;
    for (const SettingDifference& difference : differences) {
        array.append(QJsonObject{{QStringLiteral("knob"), int(difference.knob) + 1},
                                 {QStringLiteral("setting"), SettingNames::nameOf(difference.setting)},
                                 {QStringLiteral("first"), json(difference.setting, difference.first)},
                                 {QStringLiteral("second"), json(difference.setting, difference.second)}});
    }
    return array;
}

QString SettingsText::valueText(std::size_t setting, std::optional<int> value)
{
    return value ? SettingNames::valueText(setting, *value) : QStringLiteral("-");
}

QString SettingsText::knobsInWords(const QList<int>& knobs)
{
    QStringList words;
    for (const int knob : knobs)
        words.append(QString::number(knob + 1));
    return words.join(QStringLiteral(", "));
}

QJsonArray SettingsText::knobsToJson(const QList<int>& knobs)
{
    QJsonArray array;
    for (const int knob : knobs)
        array.append(knob + 1);
    return array;
}

QString SettingsText::document(const QJsonObject& object)
{
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Indented));
}

QString SettingsText::line(const QJsonObject& object)
{
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) + u'\n';
}
