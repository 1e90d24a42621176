#pragma once

#include <QString>
#include <QtGlobal>

/// While it lives, a fatal message of the toolkit goes to standard error as one line and ends the process with status 1
/// instead of aborting it. For the time in which the application object is made, when all that can be fatal is that
/// there is no display or that a part of the toolkit is missing.
///
/// Threads  the main thread, while there is no other. One at a time.
class CFatalMessageGuard
{
  public:
    /// path   of the program as it was started, with or without folders: argv[0], or null. Its name begins the line.
    explicit CFatalMessageGuard(const char* path);
    ~CFatalMessageGuard();
    CFatalMessageGuard(const CFatalMessageGuard&) = delete;
    CFatalMessageGuard& operator=(const CFatalMessageGuard&) = delete;

  private:
    QtMessageHandler m_previous;
};

/// A message handler that drops every diagnostic of the toolkit, for whoever hands it to qInstallMessageHandler(). The
/// editor itself does not: what the toolkit has to say belongs on standard error. Any thread.
void doNotOutputMessage(QtMsgType type, const QMessageLogContext& context, const QString& text);
