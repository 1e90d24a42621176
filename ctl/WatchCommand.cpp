#include "ctl/CConsole.h"
#include "ctl/CSettingsSources.h"
#include "ctl/CStopRequest.h"
#include "ctl/CtlCommands.h"
#include "ctl/SettingNames.h"
#include "ctl/SettingsText.h"

#include <QJsonObject>

namespace
{
using Clock = std::chrono::steady_clock;

/// Turns what the device sends into lines: turns, and settings that changed.
class CNewsWriter
{
  public:
    explicit CNewsWriter(const CtlContext& context) : m_context(context) {}

    /// What the device said before it is watched: no lines, but where the changes begin.
    void learn(const DeviceNews& news)
    {
        const SettingsTable said = tableOf(news.data);
        for (std::size_t knob = 0; knob < said.size(); ++knob) {
            if (news.type == k_changeParamMessage && news.data.contains(QString::number(knob)))
                m_held[knob] = said[knob];
        }
    }

    /// false: enough lines, or nobody reads them.
    [[nodiscard]] bool write(const DeviceNews& news)
    {
        for (auto it = news.data.cbegin(); it != news.data.cend(); ++it) {
            const bool isSettings = news.type == k_changeParamMessage;
            const int knob = it.key().toInt() - (isSettings ? 0 : k_knobValueCategory);
            if (!isKnob(knob))
                continue;
            const bool goesOn =
                isSettings ? writeChange(news, std::size_t(knob)) : writeTurn(news.time, knob, it.value().toInt());
            if (!goesOn)
                return false;
        }
        return true;
    }

  private:
    [[nodiscard]] bool writeTurn(Clock::time_point time, int knob, int value)
    {
        return writeLine(time, QStringLiteral("%1.value=%2").arg(knob + 1).arg(value),
                         {{QStringLiteral("knob"), knob + 1}, {QStringLiteral("value"), value}});
    }

    [[nodiscard]] bool writeChange(const DeviceNews& news, std::size_t knob)
    {
        const KnobSettingsRow now = tableOf(news.data)[knob];
        QStringList words;
        QJsonObject settings;
        for (std::size_t setting = 0; setting < now.size(); ++setting) {
            if (now[setting] == m_held[knob][setting])
                continue;
            words.append(QStringLiteral("%1.%2=%3")
                             .arg(knob + 1)
                             .arg(SettingNames::nameOf(setting), SettingsText::valueText(setting, now[setting])));
            settings.insert(SettingNames::nameOf(setting), SettingNames::valueJson(setting, now[setting].value_or(0)));
        }
        m_held[knob] = now;
        // A report of what is known already is no change.
        return words.isEmpty() ||
               writeLine(news.time, words.join(u' '),
                         {{QStringLiteral("knob"), int(knob) + 1}, {QStringLiteral("settings"), settings}});
    }

    [[nodiscard]] bool writeLine(Clock::time_point time, const QString& text, QJsonObject object)
    {
        const double seconds = std::chrono::duration<double>(time - m_begin).count();
        object.insert(QStringLiteral("time"), seconds);
        const bool isWritten = m_context.console.print(
            m_context.arguments.json ? SettingsText::line(object)
                                     : QStringLiteral("%1  %2\n").arg(seconds, 12, 'f', 3).arg(text));
        return isWritten && ++m_lines != m_context.arguments.count;
    }

    const CtlContext& m_context;
    SettingsTable m_held;
    const Clock::time_point m_begin = Clock::now();
    int m_lines = 0;
};
} // namespace

CtlStatus runWatch(const CtlContext& context)
{
    CSettingsSources sources(context);
    const CtlStatus status = sources.openDevice();
    if (status != CtlStatus::Done)
        return status;
    CDeviceSession& device = sources.device();
    CNewsWriter writer(context);
    // The answer to what was asked.
    const QList<DeviceNews> answer = device.takeNews();
    std::ranges::for_each(answer, [&](const DeviceNews& news) { writer.learn(news); });
    const QDeadlineTimer deadline = context.arguments.watchTime ? QDeadlineTimer(*context.arguments.watchTime)
                                                                : QDeadlineTimer(QDeadlineTimer::Forever);
    const auto writeNews = [&] {
        const QList<DeviceNews> all = device.takeNews();
        return std::ranges::all_of(all, [&](const DeviceNews& news) { return writer.write(news); });
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
