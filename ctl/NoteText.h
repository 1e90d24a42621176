#pragma once

#include "file/ReadingNotes.h"

/// "FILE:LINE: what", or "FILE: what" where it concerns no line.
[[nodiscard]] inline QString noteText(const QString& file, const ReadingNote& note)
{
    const QString place = note.line > 0 ? QStringLiteral("%1:%2").arg(file).arg(note.line) : file;
    return place + QStringLiteral(": ") + note.text;
}
