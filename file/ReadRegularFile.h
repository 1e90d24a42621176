#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The bytes of a regular file, also through links.
///
/// Never waits for anything but the disk: a FIFO, a device, a socket or a folder is not read, nor is a file of more
/// than sizeLimit bytes. Nothing: not read, for these reasons or any other.
[[nodiscard]] std::optional<QByteArray> readRegularFile(const QString& name, qint64 sizeLimit);
