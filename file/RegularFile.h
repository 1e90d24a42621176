#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// What stands behind a name that a user gives, also through links, is read and replaced only if it is a regular file: a
// FIFO, a device, a socket or a folder is neither waited for nor touched.

/// The bytes of the file. Never waits for anything but the disk, and reads no file of more than sizeLimit bytes.
/// Nothing: not read, for these reasons or any other.
[[nodiscard]] std::optional<QByteArray> readRegularFile(const QString& name, qint64 sizeLimit);

/// The file, behind all links, that a QSaveFile has to be given to save what is meant for this name. It need not exist.
/// Empty: nothing can be saved there.
[[nodiscard]] QString regularFileToReplace(const QString& name);
