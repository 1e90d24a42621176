#pragma once

#include <QList>
#include <QString>

/// What a reader of a settings file found, for people.
struct ReadingNote
{
    int line = 0; ///< counted from 1; 0 where it concerns no line
    QString text; ///< lower case, without a full stop
};
using ReadingNotes = QList<ReadingNote>;
