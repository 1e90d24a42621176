#pragma once

#include <QByteArray>
#include <QString>

/// Names of files as the system has them: bytes, which need not be text in any encoding.
namespace LocalFile
{
/// "file:///..." for a path, made absolute in the current folder; every byte that is not plain comes as "%" and hex.
[[nodiscard]] QString toUri(const QByteArray& path);

/// The path that a URI names; of one that names no file, the URI itself, so that opening it fails and is told.
[[nodiscard]] QByteArray fromUri(const QString& uri);

/// A name by which the toolkit, whose names are text, can open the file. Where the path is no text that is a link to
/// it, in a folder that goes with the process. GUI thread only.
[[nodiscard]] QString toName(const QByteArray& path);
} // namespace LocalFile
