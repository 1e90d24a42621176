#include "ctl/SettingNames.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace
{
/// The fewest letters to put in, take out or change that make one text the other.
int distance(const QString& from, const QString& to)
{
    std::vector<int> row(std::size_t(to.size()) + 1);
    std::iota(row.begin(), row.end(), 0);
    for (qsizetype i = 0; i < from.size(); ++i) {
        int diagonal = row[0];
        row[0] = int(i) + 1;
        for (std::size_t j = 1; j < row.size(); ++j) {
            const int changed = diagonal + (from[i] == to[qsizetype(j) - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, changed});
        }
    }
    return row.back();
}

/// The number that a text of digits alone says; large ones say the largest.
std::optional<int> number(const QString& text)
{
    if (text.isEmpty() || !std::ranges::all_of(text, [](QChar c) { return c >= u'0' && c <= u'9'; }))
        return {};
    bool fits = false;
    const int value = text.toInt(&fits);
    return fits ? value : std::numeric_limits<int>::max();
}
} // namespace

QString SettingNames::nameOf(std::size_t setting)
{
    return QString::fromLatin1(k_settingNames[setting].name);
}

QString SettingNames::valueText(std::size_t setting, int value)
{
    const SettingName& name = k_settingNames[setting];
    if (value >= 0 && std::size_t(value) < name.valueNames.size())
        return QString::fromLatin1(name.valueNames[std::size_t(value)]);
    return QString::number(value + name.first);
}

QJsonValue SettingNames::valueJson(std::size_t setting, int value)
{
    const SettingName& name = k_settingNames[setting];
    return name.valueNames.empty() ? QJsonValue(value + name.first) : QJsonValue(valueText(setting, value));
}

std::optional<int> SettingNames::valueOf(std::size_t setting, const QString& text)
{
    const SettingName& name = k_settingNames[setting];
    const auto named =
        std::ranges::find_if(name.valueNames, [&](const char* value) { return text == QLatin1StringView(value); });
    if (named != name.valueNames.end())
        return int(named - name.valueNames.begin());
    const std::optional<int> given = number(text);
    if (!given || *given < name.first || *given > k_settingParams[setting].highest + name.first)
        return {};
    return *given - name.first;
}

QString SettingNames::valuesInWords(std::size_t setting)
{
    const SettingName& name = k_settingNames[setting];
    QString words = QStringLiteral("%1 to %2").arg(name.first).arg(k_settingParams[setting].highest + name.first);
    for (const char* value : name.valueNames)
        words += QStringLiteral(", ") + QLatin1StringView(value);
    return words;
}

QStringList SettingNames::all()
{
    QStringList names;
    for (const SettingName& setting : k_settingNames)
        names.append(QString::fromLatin1(setting.name));
    return names;
}

QString nearName(const QString& typed, const QStringList& names)
{
    constexpr qsizetype k_longest = 20; // beyond it nothing is near, and the comparison would take its time
    if (typed.isEmpty() || typed.size() > k_longest)
        return {};
    QString nearest;
    int least = std::numeric_limits<int>::max();
    for (const QString& name : names) {
        const int steps = name.startsWith(typed, Qt::CaseInsensitive) ? 1 : distance(typed.toLower(), name);
        if (steps < least) {
            least = steps;
            nearest = name;
        }
    }
    return least <= 2 && least < typed.size() + 1 ? nearest : QString();
}

QString nearNameQuestion(const QString& typed, const QStringList& names)
{
    const QString name = nearName(typed, names);
    return name.isEmpty() ? QString() : QStringLiteral("; did you mean \"%1\"?").arg(name);
}
