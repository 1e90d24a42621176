#include "ctl/CStopRequest.h"
#include "ctl/CtlStatus.h"
#include "ctl/RunCtl.h"
#include "tests/fuzz/FuzzTarget.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

// Input: the bytes of a file.

namespace
{
/// What check says of the file in JSON, with its status.
QJsonObject checked(const QString& given, const QString& said, int* status)
{
    CStopRequest stop;
    QFile output(said);
    QFile silence(QStringLiteral("/dev/null"));
    require(output.open(QIODevice::ReadWrite | QIODevice::Truncate) && silence.open(QIODevice::WriteOnly),
            "the folder takes files");
    *status =
        runCtl({QStringLiteral("check"), QStringLiteral("--json"), given}, output.handle(), silence.handle(), stop);
    require(output.seek(0), "what was said can be read");
    return QJsonDocument::fromJson(output.readAll()).object()[QStringLiteral("files")][0].toObject();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static int argc = 1;
    static char name[] = "fuzz";
    static char* argv[] = {name, nullptr};
    static const QCoreApplication application(argc, argv);
    static const QTemporaryDir folder;
    const QString given = folder.filePath(QStringLiteral("given.CJX"));
    QFile file(given);
    require(file.open(QIODevice::WriteOnly) &&
                file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size)) == static_cast<qint64>(size),
            "the folder takes files");
    file.close();

    int status = -1;
    const QJsonObject found = checked(given, folder.filePath(QStringLiteral("said.json")), &status);
    require(found.contains(QStringLiteral("usable")), "the answer is JSON");
    const bool isUsable = found[QStringLiteral("usable")].toBool();
    const bool hasNotes = !found[QStringLiteral("notes")].toArray().isEmpty();
    require(isUsable || hasNotes, "a refusal has a reason");
    require(status == int(!isUsable  ? CtlStatus::FileError
                          : hasNotes ? CtlStatus::Different
                                     : CtlStatus::Done),
            "the status says how it is");
    return 0;
}
