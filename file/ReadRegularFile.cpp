#include "file/ReadRegularFile.h"

#include <QFile>
#include <QFileInfo>

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
