#include "ctl/CEditorSession.h"

#include "app/common/Constants.h"
#include "app/common/EditorBus.h"
#include "ctl/EventWait.h"

#include <utility>

namespace
{
/// bytes   at least as many as a knob has settings.
KnobSettingsRow rowOf(const QByteArray& bytes)
{
    KnobSettingsRow row;
    for (std::size_t setting = 0; setting < row.size(); ++setting)
        row[setting] = static_cast<unsigned char>(bytes[qsizetype(setting)]);
    return row;
}

QByteArray bytesOf(const KnobSettingsRow& row)
{
    QByteArray bytes;
    for (const std::optional<int>& value : row)
        bytes.append(char(value.value_or(EditorBus::k_unchanged)));
    return bytes;
}
} // namespace

CEditorSession::CEditorSession(const Options& options, const CtlTimes& times, CConsole& console,
                               const CStopRequest& stop, EditorBusMaker makeBus)
    : CDeviceAccess(options, times, console, stop), m_makeBus(std::move(makeBus))
{
}

CtlStatus CEditorSession::open(QDeadlineTimer deadline)
{
    m_deadline = deadline;
    if (m_makeBus)
        m_bus = m_makeBus(*this, m_times.editor);
    return m_bus ? askForSettings(QStringLiteral("Read")) : failedAsTaken(k_editorProgramName);
}

SettingsTable CEditorSession::settings() const
{
    return m_held;
}

CtlStatus CEditorSession::readAll()
{
    return askForSettings(QStringLiteral("Ask"));
}

CtlStatus CEditorSession::beginWatch(SettingsTable* held)
{
    forgetNews();
    *held = m_held;
    return ask(QStringLiteral("Watch"));
}

CtlStatus CEditorSession::writeKnob(std::size_t knob, const KnobSettingsRow& given)
{
    while (true) {
        const CtlStatus status = ask(QStringLiteral("Write"), {int(knob), bytesOf(given)});
        if (status == CtlStatus::Done)
            m_held[knob] = overlaid(m_held[knob], given);
        if (m_refusal != EditorBus::k_busyError || m_deadline.hasExpired())
            return status;
        if (const Wait wait = waitUntil([] { return false; }, QDeadlineTimer(m_times.lookPause)); wait != Wait::Expired)
            return failed(wait);
    }
}

CtlStatus CEditorSession::askForSettings(const QString& method)
{
    const CtlStatus status = ask(method);
    if (status != CtlStatus::Done)
        return status;
    if (m_answer.size() != k_numOfKnobs * qsizetype(k_numOfSettings))
        return failed(CtlStatus::NoDevice, QStringLiteral("the editor that is running is another version"));
    for (std::size_t knob = 0; knob < m_held.size(); ++knob)
        m_held[knob] = rowOf(m_answer.sliced(qsizetype(knob) * qsizetype(k_numOfSettings)));
    return CtlStatus::Done;
}

CtlStatus CEditorSession::ask(const QString& method, const QVariantList& edit)
{
    trace(QStringLiteral("= editor, ") + method.toLower() +
          (edit.isEmpty() ? QString() : QStringLiteral(" knob %1").arg(edit.constFirst().toInt() + 1)));
    m_isAnswered = false;
    m_bus->ask(method, edit);
    const auto isAnswered = [this] { return m_isAnswered; };
    // The bus sees to it that an answer comes, if only that there is none.
    if (!edit.isEmpty())
        waitForEvents(isAnswered, QDeadlineTimer(QDeadlineTimer::Forever));
    else if (const Wait wait = waitUntil(isAnswered, QDeadlineTimer(QDeadlineTimer::Forever)); wait != Wait::Met)
        return failed(wait);
    return m_refusal.isEmpty() ? CtlStatus::Done : refused();
}

CtlStatus CEditorSession::refused()
{
    const auto failedBecause = [this](const QString& reason) {
        return failed(CtlStatus::NoDevice, QStringLiteral("\"%1\" is running and %2; --force goes on beside it")
                                               .arg(QLatin1StringView(k_editorProgramName), reason));
    };
    if (m_refusal == EditorBus::k_lostError)
        return failed(Wait::Lost);
    if (m_refusal == EditorBus::k_silentError)
        return failed(CtlStatus::NoAnswer, QStringLiteral("the device does not say what it holds"));
    if (m_refusal == EditorBus::k_busyError)
        return failedBecause(QStringLiteral("waits for its user to answer"));
    if (m_refusal == EditorBus::k_noDeviceError)
        return failedBecause(QStringLiteral("has no connection to the device"));
    if (m_refusal == EditorBus::k_noReplyError)
        return failedBecause(QStringLiteral("does not answer"));
    // No such name, object or method: another session's editor, one that begins or ends, an older one.
    return failedAsTaken(k_editorProgramName);
}

void CEditorSession::answered(const QString& error, const QByteArray& bytes)
{
    m_refusal = error;
    m_answer = bytes;
    m_isAnswered = true;
}

void CEditorSession::turned(int knob, int value)
{
    if (isKnob(knob))
        addNews({.knob = std::size_t(knob), .value = value});
}

void CEditorSession::changed(int knob, const QByteArray& settings)
{
    if (isKnob(knob) && settings.size() == qsizetype(k_numOfSettings))
        addNews({.knob = std::size_t(knob), .settings = rowOf(settings)});
}

void CEditorSession::lost()
{
    setLost();
}
