#include "ctl/CSettingsSources.h"

#include "ctl/CConsole.h"
#include "ctl/NoteText.h"
#include "file/CFileWrapper.h"

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
        *table = m_session->settings();
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
    if (m_session)
        return CtlStatus::Done;
    const CtlArguments& arguments = m_context.arguments;
    const CDeviceSession::Options options{.port = arguments.port,
                                          .wait = arguments.wait,
                                          .force = arguments.force,
                                          .holdsBack = arguments.dryRun,
                                          .traces = arguments.verbose};
    m_session = std::make_unique<CDeviceSession>(options, m_context.times, m_context.console, m_context.stop);
    const CtlStatus status = m_session->open();
    return status == CtlStatus::Done ? status : fail(m_context, status, m_session->error());
}

CDeviceSession& CSettingsSources::device()
{
    return *m_session;
}
