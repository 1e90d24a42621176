#pragma once

#include <QObject>

class CMainWindow;

/// Opens the file that the desktop asked for once nothing is in the way: neither the start-up nor a question, dialog or
/// menu, which the next question would come to lie over. Of several requests until then the last one counts.
///
/// Threads  GUI thread only.
/// Memory   a child of the window, which goes when it has done its work.
class CRequestedFile : public QObject
{
    Q_OBJECT

  public:
    /// Opens the window's application file, now or as soon as that is possible, unless the window has done so itself.
    static void open(CMainWindow* window);

  private:
    explicit CRequestedFile(CMainWindow* window);
    void lookAgain();

    CMainWindow* m_window;
};
