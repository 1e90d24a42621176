#include "app/LocalFile.h"

#include <QDir>
#include <QTemporaryDir>

#include <filesystem>

namespace
{
constexpr char k_scheme[] = "file://";

std::filesystem::path pathOf(const QByteArray& bytes)
{
    return {bytes.toStdString()};
}

QByteArray bytesOf(const std::filesystem::path& path)
{
    return QByteArray::fromStdString(path.native());
}
} // namespace

QString LocalFile::toUri(const QByteArray& path)
{
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(pathOf(path), error);
    return QString::fromLatin1(k_scheme + (error ? path : bytesOf(absolute)).toPercentEncoding("/"));
}

QByteArray LocalFile::fromUri(const QString& uri)
{
    QByteArray bytes = uri.toUtf8();
    if (!bytes.startsWith(k_scheme))
        return bytes;
    // Between the two slashes and the path there may be this machine's name.
    const qsizetype path = bytes.indexOf('/', qsizetype(sizeof(k_scheme) - 1));
    return path < 0 ? bytes : QByteArray::fromPercentEncoding(bytes.sliced(path));
}

QString LocalFile::toName(const QByteArray& path)
{
    QString name = QString::fromLocal8Bit(path);
    if (name.toLocal8Bit() == path)
        return name;

    static const QTemporaryDir links;
    static int number = 0;
    // Two files may differ in just the bytes that are no text, so that each link has a folder of its own.
    const QDir folder(links.filePath(QString::number(++number)));
    QString link = folder.filePath(QFileInfo(name).fileName());
    std::error_code error;
    if (!folder.mkpath(QStringLiteral(".")))
        return name;
    std::filesystem::create_symlink(std::filesystem::absolute(pathOf(path), error), pathOf(link.toLocal8Bit()), error);
    return error ? name : link;
}
