#pragma once

#include <QAccessible>
#include <QObject>
#include <QPointer>
#include <QWidget>

class CMainWindow;

/// What a window does for those who listen to it, as long as somebody does: watches its rings, and says what a command
/// has done. Before and afterwards nothing is there for it.
///
/// Threads  GUI thread only.
class CListening : public QObject, public QAccessible::ActivationObserver
{
  public:
    /// window   becomes the parent; its pages are there already.
    explicit CListening(CMainWindow* window);
    ~CListening() override;

    void accessibilityActiveChanged(bool isActive) override;

    /// Has a control described by what was done to it, which is spoken where the control has the focus. The description
    /// of the control before goes.
    void say(QWidget* control, const QString& what);

  private:
    CMainWindow* m_window;
    QPointer<QWidget> m_described;
};
