#include "ctl/CConsole.h"
#include "ctl/CSettingsSources.h"
#include "ctl/CStopRequest.h"
#include "ctl/CtlCommands.h"
#include "ctl/SettingNames.h"
#include "ctl/SettingsText.h"

#include <QJsonObject>

namespace
{
/// Turns what the device says into lines: turns, and settings that changed.
class CNewsWriter
{
  public:
    /// held   where the changes begin.
    CNewsWriter(const CtlContext& context, const SettingsTable& held) : m_context(context), m_held(held) {}

    /// false: enough lines, or nobody reads them.
    [[nodiscard]] bool write(const KnobNews& news)
    {
        return news.value ? writeTurn(news) : writeChange(news);
    }

  private:
    [[nodiscard]] bool writeTurn(const KnobNews& news)
    {
        const int number = int(news.knob) + 1;
        return writeLine(news.time, QStringLiteral("%1.value=%2").arg(number).arg(*news.value),
                         {{QStringLiteral("knob"), number}, {QStringLiteral("value"), *news.value}});
    }

    [[nodiscard]] bool writeChange(const KnobNews& news)
    {
        const int number = int(news.knob) + 1;
        KnobSettingsRow& held = m_held[news.knob];
        QStringList words;
        QJsonObject settings;
        for (std::size_t setting = 0; setting < held.size(); ++setting) {
            if (news.settings[setting] == held[setting])
                continue;
            const QString name = SettingNames::nameOf(setting);
            words.append(QStringLiteral("%1.%2=%3")
                             .arg(number)
                             .arg(name, SettingsText::valueText(setting, news.settings[setting])));
            settings.insert(name, SettingNames::valueJson(setting, news.settings[setting].value_or(0)));
        }
        held = news.settings;
        // A report of what is known already is no change.
        return words.isEmpty() || writeLine(news.time, words.join(u' '),
                                            {{QStringLiteral("knob"), number}, {QStringLiteral("settings"), settings}});
    }

    [[nodiscard]] bool writeLine(std::chrono::steady_clock::duration time, const QString& text, QJsonObject object)
    {
        const double seconds = std::chrono::duration<double>(time).count();
        object.insert(QStringLiteral("time"), seconds);
        const bool isWritten = m_context.console.print(
            m_context.arguments.json ? SettingsText::line(object)
                                     : QStringLiteral("%1  %2\n").arg(seconds, 12, 'f', 3).arg(text));
        return isWritten && ++m_lines != m_context.arguments.count;
    }

    const CtlContext& m_context;
    SettingsTable m_held;
    int m_lines = 0;
};
} // namespace

CtlStatus runWatch(const CtlContext& context)
{
    CSettingsSources sources(context);
    CtlStatus status = sources.openDevice();
    if (status != CtlStatus::Done)
        return status;
    CDeviceAccess& device = sources.device();
    SettingsTable held;
    if (status = device.beginWatch(&held); status != CtlStatus::Done)
        return fail(context, status, device.error());
    CNewsWriter writer(context, held);
    const QDeadlineTimer deadline = context.arguments.watchTime ? QDeadlineTimer(*context.arguments.watchTime)
                                                                : QDeadlineTimer(QDeadlineTimer::Forever);
    const auto writeNews = [&] {
        const QList<KnobNews> all = device.takeNews();
        return std::ranges::all_of(all, [&](const KnobNews& news) { return writer.write(news); });
    };
    while (device.waitForNews(deadline)) {
        if (!writeNews())
            return CtlStatus::Done;
    }
    static_cast<void>(writeNews()); // what came last
    if (device.lostNews() > 0)
        context.console.complain(QStringLiteral("%1 messages came faster than they were read").arg(device.lostNews()));
    return device.isLost() ? fail(context, CtlStatus::NoAnswer, QStringLiteral("the connection to the device is lost"))
                           : CtlStatus::Done;
}
