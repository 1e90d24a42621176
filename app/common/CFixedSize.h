#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

#include <chrono>

class QWidget;

/// Keeps a window of fixed size, minimum and maximum alike, at that size whatever it is told from outside.
///
/// An X server's news of the size that a window had on one screen may arrive when it is on another of a different ratio
/// already. The toolkit then takes the pixels of the one for those of the other, lays the window out in half or twice
/// its size, and hears nothing that would correct it.
/// Or it hears more: of a window that a window manager puts into its frame the toolkit may be told the place that it
/// had for a moment, on another screen, and then its own. Who answers the first with a size sends it to that place for
/// good. So an answer waits until there has been no news for k_settling. A desktop that insists, as one that tiles its
/// windows does, has its way: of what follows a correction within k_patience nothing is corrected.
///
/// GUI thread only. A child of the window, which ends it.
class CFixedSize : public QObject
{
    Q_OBJECT

  public:
    static constexpr std::chrono::milliseconds k_settling{100};
    static constexpr std::chrono::milliseconds k_patience{500};

    explicit CFixedSize(QWidget* window, std::chrono::milliseconds settling = k_settling);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void restore();

    QWidget* m_window;
    QTimer m_settling;         ///< runs from the last news on
    QDeadlineTimer m_patience; ///< over at first
};
