#pragma once

#include <QList>
#include <QWidget>

class QAction;

/// A view that lies over the main window for a while: the window is locked exactly as long as the view lives. GUI
/// thread only.
class COverlapView : public QWidget
{
    Q_OBJECT

  public:
    /// Locks the window and takes the focus.
    /// window   borrowed, with the slots windowLock() and windowUnlock().
    COverlapView(QWidget* parent, QWidget* window);
    ~COverlapView() override;

    /// A keyboard shortcut of this view, on at first.
    /// key    as in "Ctrl+O".      slot   one of this view's, as SLOT() gives it; null adds nothing.
    void installShortcut(const QString& key, const char* slot);

  public slots:
    void enableShortcut();
    void disableShortcut();

  signals:
    void windowLocked();
    void windowUnlocked();

  private:
    void setShortcutsEnabled(bool enabled);

    QList<QAction*> m_shortcuts; ///< children
};
