#pragma once

#include <QAccessible>
#include <QObject>
#include <QPointer>

class CMainWindow;
class CNotice;

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

    /// Has a sentence spoken soon, wherever the focus is. The one before goes.
    void say(const QString& sentence);

  private:
    CMainWindow* m_window;
    bool m_isActive = false;
    QPointer<CNotice> m_notice; ///< the window's child
};
