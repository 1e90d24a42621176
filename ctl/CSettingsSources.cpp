#include "ctl/CSettingsSources.h"

#include "app/common/Constants.h"
#include "ctl/CConsole.h"
#include "ctl/CDeviceMemory.h"
#include "ctl/CDeviceSession.h"
#include "ctl/CEditorSession.h"
#include "ctl/CStopRequest.h"
#include "ctl/EventWait.h"
#include "ctl/NoteText.h"
#include "file/CFileWrapper.h"
#include "midi/MIDIPlatform.h"

using namespace std::chrono_literals;

CSettingsSources::CSettingsSources(const CtlContext& context) : m_context(context) {}

CtlStatus CSettingsSources::read(const QString& source, SettingsTable* table)
{
    if (source == k_factorySource) {
        *table = factoryTable();
        return CtlStatus::Done;
    }
    if (source != k_deviceSource)
        return readFile(source, table);
    const CtlStatus status = openDevice();
    if (status == CtlStatus::Done)
        *table = m_device->settings();
    return status;
}

CtlStatus CSettingsSources::readFile(const QString& name, SettingsTable* table)
{
    CDeviceMemory memory;
    ReadingNotes notes;
    if (!CFileWrapper(nullptr, &memory).read(name, &notes).isEmpty())
        return fail(m_context, CtlStatus::FileError, noteText(name, notes.value(0)));
    if (!m_context.arguments.quiet) {
        for (const ReadingNote& note : notes)
            m_context.console.complain(noteText(name, note));
    }
    *table = tableOf(memory.getParamList());
    return CtlStatus::Done;
}

CtlStatus CSettingsSources::openDevice()
{
    if (m_device)
        return CtlStatus::Done;
    const QDeadlineTimer deadline(m_context.arguments.wait.value_or(0ms), Qt::PreciseTimer);
    while (true) {
        m_device = makeDevice();
        const CtlStatus status = m_device->open(deadline);
        if (status == CtlStatus::Done)
            return status;
        if (status == CtlStatus::Interrupted || deadline.hasExpired())
            return fail(m_context, status, m_device->error());
        m_device.reset(); // whoever waits disturbs nobody
        if (waitForEvents([this] { return m_context.stop.isRequested(); },
                          std::min(QDeadlineTimer(m_context.times.lookPause), deadline)))
            return fail(m_context, CtlStatus::Interrupted, QStringLiteral("interrupted"));
    }
}

std::unique_ptr<CDeviceAccess> CSettingsSources::makeDevice() const
{
    const CtlArguments& arguments = m_context.arguments;
    const CDeviceAccess::Options options{.port = arguments.port, .force = arguments.force, .traces = arguments.verbose};
    // The one port that the editor uses.
    const bool isEditors = !arguments.force && arguments.port == k_jxEditorPortName &&
                           MIDIPlatform::otherPrograms().contains(QLatin1StringView(k_editorProgramName));
    if (isEditors)
        return std::make_unique<CEditorSession>(options, m_context.times, m_context.console, m_context.stop,
                                                m_context.makeBus);
    return std::make_unique<CDeviceSession>(options, m_context.times, m_context.console, m_context.stop);
}

CDeviceAccess& CSettingsSources::device()
{
    return *m_device;
}
