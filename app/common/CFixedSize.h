#pragma once

#include <QObject>

class QWidget;

/// Keeps a window of fixed size, minimum and maximum alike, at that size whatever it is told from outside.
///
/// An X server's news of the size that a window had on one screen may arrive when it is on another of a different ratio
/// already. The toolkit then takes the pixels of the one for those of the other, lays the window out in half or twice
/// its size, and hears nothing that would correct it.
///
/// GUI thread only. A child of the window, which ends it.
class CFixedSize : public QObject
{
    Q_OBJECT

  public:
    explicit CFixedSize(QWidget* window);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void restore();

    QWidget* m_window;
};
