#pragma once

#include "app/common/CMutex.h"

#include <QString>

class CStopRequest;

/// The standard streams of the program without a window: whole lines, written at once.
///
/// Lines     what is not printable in one becomes "?", so that no file and no device writes to a terminal as it likes.
/// Threads   any. A line waits until the stream takes it, or until a stop is requested while it waits.
/// Failure   a stream that took no line takes no more; outputError() says why.
class CConsole
{
  public:
    /// output, errors   descriptors, which stay open.
    /// stop             borrowed; outlives this object.
    CConsole(int output, int errors, const CStopRequest& stop);
    CConsole(const CConsole&) = delete;
    CConsole& operator=(const CConsole&) = delete;

    /// One or more lines, each with its line break, for standard output. false: not written.
    bool print(const QString& lines);
    bool printHeading(const QString& line); ///< without its line break; bold where that is liked

    /// One line, without program name and line break, for standard error.
    void complain(const QString& line);
    void trace(const QString& line); ///< without the program's name before it

    /// Whether a person reads the output, and likes colours.
    [[nodiscard]] bool isTerminal() const;
    [[nodiscard]] bool isColoured() const;

    /// Why the output took no more, and whether that was its reader's wish, who has gone.
    [[nodiscard]] QString outputError() const;
    [[nodiscard]] bool isReaderGone() const;

  private:
    bool writeOutput(const QByteArray& bytes);

    /// 0, or the system's number for what went wrong.
    [[nodiscard]] int write(int descriptor, const QByteArray& bytes) const;

    const int m_output;
    const int m_errors;
    const CStopRequest& m_stop;
    mutable CMutex m_mutex; ///< guards the streams and the status
    int m_outputStatus = 0;
};
