#pragma once

#include <QApplication>

class CMainWindow;

/// The one main window; null until the editor has shown it, and never cleared.
extern CMainWindow* g_mainWindow;

/// The application object: takes the desktop's requests to open a settings file.
class CApplication : public QApplication
{
    Q_OBJECT

  public:
    CApplication(int& argc, char** argv);

  protected:
    /// A file-open event restores and activates the window and opens the file, or leaves that to the end of the
    /// start-up while it lasts.
    bool event(QEvent* e) override;
};
