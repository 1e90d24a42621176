#pragma once

#include "app/ActivationToken.h"

#include <QApplication>

class CMainWindow;

/// The one main window; null until the editor has shown it, and never cleared.
extern CMainWindow* g_mainWindow;

/// The application object: takes the desktop's requests to open a settings file. GUI thread only.
class CApplication : public QApplication
{
    Q_OBJECT

  public:
    CApplication(int& argc, char** argv);

    /// Restores and activates the window. Opens the file, if the path is not empty, or leaves that to the end of the
    /// start-up or of what the window asks just now. Needs the window to be shown.
    static void handleRequest(const QString& path, const ActivationToken& token);

  protected:
    /// A file-open event is such a request.
    bool event(QEvent* e) override;
};
