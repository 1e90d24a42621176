#include "tests/soak/ProcessResources.h"

#include <QDir>
#include <QFile>
#include <QPixmapCache>

#include <malloc.h>

namespace
{
int entries(const QString& folder)
{
    return static_cast<int>(QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size());
}

qint64 statusFigure(const QByteArray& name)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith(name + ':'))
            return line.mid(name.size() + 1).simplified().split(' ').first().toLongLong();
    }
    return 0;
}
} // namespace

ProcessResources ProcessResources::now()
{
    // What is free already, or kept until the cache has its megabytes, is no leak.
    QPixmapCache::clear();
    malloc_trim(0);
    return {statusFigure("VmRSS"), entries(QStringLiteral("/proc/self/task")),
            entries(QStringLiteral("/proc/self/fd"))};
}
