#include "ctl/CConsole.h"
#include "ctl/CDeviceMemory.h"
#include "ctl/CtlCommands.h"
#include "ctl/NoteText.h"
#include "ctl/SettingsText.h"
#include "file/CFileWrapper.h"

#include <QJsonObject>

namespace
{
/// A file as the editor would take it.
struct CheckedFile
{
    QString name;
    bool isUsable = false;
    ReadingNotes notes;
    SettingsTable table;
};

CheckedFile checked(const QString& name)
{
    CheckedFile file;
    file.name = name;
    CDeviceMemory memory;
    file.isUsable = CFileWrapper(nullptr, &memory).read(name, &file.notes).isEmpty();
    if (file.isUsable)
        file.table = tableOf(memory.getParamList());
    return file;
}

void print(const CtlContext& context, const CheckedFile& file)
{
    QString lines;
    for (const ReadingNote& note : file.notes)
        lines += noteText(file.name, note) + u'\n';
    if (!context.arguments.quiet) {
        lines += file.name + (!file.isUsable         ? QStringLiteral(": the editor refuses it\n")
                              : file.notes.isEmpty() ? QStringLiteral(": good\n")
                                                     : QStringLiteral(": the editor makes this of it\n"));
    }
    context.console.print(lines);
    if (file.isUsable && !file.notes.isEmpty() && !context.arguments.quiet)
        SettingsText::printTable(context.console, file.table);
}

QJsonObject toJson(const CheckedFile& file)
{
    QJsonArray notes;
    for (const ReadingNote& note : file.notes)
        notes.append(QJsonObject{{QStringLiteral("line"), note.line}, {QStringLiteral("text"), note.text}});
    QJsonObject object{{QStringLiteral("file"), file.name},
                       {QStringLiteral("usable"), file.isUsable},
                       {QStringLiteral("notes"), notes}};
    if (file.isUsable)
        object.insert(QStringLiteral("knobs"), SettingsText::toJson(file.table));
    return object;
}
} // namespace

CtlStatus runCheck(const CtlContext& context)
{
    CtlStatus status = CtlStatus::Done;
    QJsonArray files;
    bool isRefused = false;
    for (const QString& name : context.arguments.operands) {
        const CheckedFile file = checked(name);
        isRefused = isRefused || !file.isUsable;
        if (!file.notes.isEmpty())
            status = CtlStatus::Different;
        if (context.arguments.json)
            files.append(toJson(file));
        else
            print(context, file);
    }
    if (context.arguments.json)
        context.console.print(SettingsText::document({{QStringLiteral("files"), files}}));
    return isRefused ? fail(context, CtlStatus::FileError, QStringLiteral("the editor refuses a file")) : status;
}
