#include "tests/soak/ProcessResources.h"

#include <QDir>
#include <QFile>
#include <QPixmapCache>

#include <algorithm>

#include <malloc.h>

namespace
{
const QString k_tasks = QStringLiteral("/proc/self/task");

QStringList entries(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
}

/// Whether Qt converts large pictures on this thread.
bool isPooled(const QString& task)
{
    QFile name(k_tasks + QLatin1Char('/') + task + QStringLiteral("/comm"));
    return name.open(QIODevice::ReadOnly) && name.readAll().startsWith("Thread (pooled)");
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
    const QStringList tasks = entries(k_tasks);
    // Each of the pool's threads has one descriptor by which it is woken.
    const qsizetype pooled = std::ranges::count_if(tasks, isPooled);
    const qsizetype descriptors = entries(QStringLiteral("/proc/self/fd")).size();
    return {statusFigure("VmRSS"), static_cast<int>(tasks.size() - pooled), static_cast<int>(descriptors - pooled)};
}
