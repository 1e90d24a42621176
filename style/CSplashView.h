#pragma once

#include "style/CInfoView.h"
#include "style/SplashTimes.h"

class QTimer;

/// Covers the window at start-up, with a bar that fills, and slides out to the right when the editor is ready and the
/// minimum time over. Only an editor that never says that it is ready is not waited for any longer than the longest
/// wait: a connection that took long leaves the whole minimum time for what the device then tells.
///
/// Threads  GUI thread only.
/// Owns     its timers, as children.
class CSplashView : public CInfoView
{
    Q_OBJECT

  public:
    /// window   borrowed; locked as long as this view lives.
    CSplashView(QWidget* parent, QWidget* window, QPixmap background, const SplashTimes& times = {});

    /// To be called once, before everything below.
    void initialize(QString editorName, QString version, QString copyright);

    void showView();

    /// Slides out and closes, once the minimum time is over and the editor is ready; before that, and while it slides,
    /// nothing happens. finished() has been emitted on return.
    void hideView();

    /// The bar's width after a time: its whole width after the time in which it fills.
    [[nodiscard]] static int barWidth(int wholeWidth, std::chrono::milliseconds elapsed,
                                      std::chrono::milliseconds fill = SplashTimes().fill);

  public slots:
    void showTimeOver(); ///< a tick more has passed
    void editorReady();
    void closeView() override;
    void timeout(); ///< waits for the editor no longer

  signals:
    void finished(); ///< the editor can be used; the view begins to slide

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QPixmap m_barBackground;
    QPixmap m_bar;
    QTimer* m_showTimer = nullptr;
    QTimer* m_timeoutTimer = nullptr;
    bool m_minimumShowRunning = true;
    bool m_editorIsReady = false;
    std::chrono::milliseconds m_elapsed{0};
    const SplashTimes m_times;
};
