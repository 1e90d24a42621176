#include "file/RegularFile.h"

#include <QFile>
#include <QFileInfo>
#include <QUtf8StringView>

#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

std::optional<QByteArray> readRegularFile(const QString& name, qint64 sizeLimit)
{
    // Asked first, since opening a device can already do something; and again below, since the name may mean
    // something else by then. O_NONBLOCK keeps that from making us wait.
    if (!QFileInfo(name).isFile())
        return {};
    const int descriptor = ::open(QFile::encodeName(name).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        return {};
    QFile file;
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) ||
        !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return {};
    }
    QByteArray bytes = file.read(sizeLimit + 1);
    if (file.error() != QFileDevice::NoError || bytes.size() > sizeLimit)
        return {};
    return bytes;
}

QString regularFileToReplace(const QString& name)
{
    // QSaveFile follows links, but as text: it would put a new file beside the one that is meant where a target's name
    // is no text, or leads out of a linked folder by "..", and in the place of a FIFO or of a link that leads in a
    // circle.
    std::filesystem::path path(QFile::encodeName(name).toStdString());
    std::error_code error;
    const std::filesystem::file_type type = std::filesystem::status(path, error).type();
    if (type != std::filesystem::file_type::regular && type != std::filesystem::file_type::not_found)
        return {};
    // The system came to an end of them, so there is one.
    while (std::filesystem::is_symlink(path, error))
        path = path.parent_path() / std::filesystem::read_symlink(path, error);
    return QUtf8StringView(path.c_str()).isValidUtf8() ? QFile::decodeName(path.c_str()) : QString();
}
