#pragma once

#include <QString>
#include <QStringList>

/// The operation manual: a PDF document in one folder a language.
namespace Manual
{
/// The folders that may hold manuals: beside the program, then under the prefix that it was installed to.
[[nodiscard]] QStringList folders();

/// The path of the manual in this language (its English name), or else in English, or else an empty string.
[[nodiscard]] QString find(const QString& language, const QStringList& folders);

/// Opens the manual in the system's language with the desktop's viewer. false: not found, or nothing opens it.
[[nodiscard]] bool open();
} // namespace Manual
