#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

#include <chrono>

class QWidget;

/// Keeps a window laid out for the size that it has, whatever the toolkit has been told in between: the fixed one,
/// minimum and maximum alike, or else that of its native window.
///
/// Where screens differ in their ratio, the toolkit may take the pixels of one for those of another. An X server's news
/// of a size may arrive when the window is on another screen already; and of a window that a window manager is putting
/// into its frame the toolkit may be told a place that it had for a moment only. The window is then laid out in half or
/// twice its size. Who answers such news with a size sends the window to that place for good, so an answer waits until
/// there has been no news for k_settling.
/// A desktop that insists, as one that tiles its windows does, has its way: of what follows a correction within
/// k_patience nothing is corrected.
///
/// GUI thread only. A child of the window, which ends it.
class CWindowSize : public QObject
{
    Q_OBJECT

  public:
    static constexpr std::chrono::milliseconds k_settling{100};
    static constexpr std::chrono::milliseconds k_patience{500};

    explicit CWindowSize(QWidget* window, std::chrono::milliseconds settling = k_settling);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void restore();

    QWidget* m_window;
    QTimer m_settling;         ///< runs from the last news on
    QDeadlineTimer m_patience; ///< over at first
};
