#pragma once

/// What a command ends with, and the program after it. Scripts know these numbers.
enum class CtlStatus
{
    Done = 0,
    Different = 1,    ///< two sources differ; a file is not taken as it stands
    WrongUse = 2,     ///< of the command line
    NoDevice = 3,     ///< or another program has it
    NoAnswer = 4,     ///< or it was lost
    NotHeld = 5,      ///< the device holds something else than was sent
    FileError = 6,    ///< a file, or the output, cannot be read or written
    Interrupted = 128 ///< the program adds the signal's number
};
