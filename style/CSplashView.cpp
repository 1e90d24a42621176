#include "style/CSplashView.h"

#include "app/common/SkinPixmap.h"

#include <QPainter>
#include <QPropertyAnimation>
#include <QTimer>

namespace
{
constexpr char k_bgProgressBarImagePath[] = ":images/ktz_back_status_bar.png";
constexpr char k_progressBarImagePath[] = ":images/ktz_status_bar.png";
constexpr QPoint k_bgProgressBarPos{116, 395};
constexpr QPoint k_progressBarPos{122, 402};

constexpr QPoint k_rightwards{1, 0};
} // namespace

CSplashView::CSplashView(QWidget* parent, QWidget* window, QPixmap background, const SplashTimes& times)
    : CInfoView(parent, window, std::move(background), k_rightwards), m_times(times)
{
}

void CSplashView::initialize(QString editorName, QString version, QString copyright)
{
    initializeInfo(std::move(editorName), std::move(version), std::move(copyright));
    animation()->setDuration(static_cast<int>(m_times.slide.count()));
    animation()->setEasingCurve(QEasingCurve::OutInBack);

    m_barBackground = skinPixmap(k_bgProgressBarImagePath);
    m_bar = skinPixmap(k_progressBarImagePath);

    m_showTimer = new QTimer(this);
    m_showTimer->setInterval(m_times.tick);
    connect(m_showTimer, SIGNAL(timeout()), this, SLOT(showTimeOver()));
    m_timeoutTimer = new QTimer(this);
    m_timeoutTimer->setInterval(m_times.longestWait);
    m_timeoutTimer->setSingleShot(true);
    connect(m_timeoutTimer, SIGNAL(timeout()), this, SLOT(timeout()));
}

void CSplashView::showView()
{
    setVisible(true);
    m_showTimer->start();
    m_timeoutTimer->start();
}

void CSplashView::hideView()
{
    if (m_minimumShowRunning || !m_editorIsReady || isSlidingOut())
        return;
    m_timeoutTimer->stop();
    emit finished();
    slideOut(width());
}

int CSplashView::barWidth(int wholeWidth, std::chrono::milliseconds elapsed, std::chrono::milliseconds fill)
{
    return qMin(wholeWidth, int(wholeWidth * (double(elapsed.count()) / double(fill.count()))));
}

void CSplashView::showTimeOver()
{
    m_elapsed += m_times.tick;
    if (m_elapsed <= m_times.fill)
        update(QRect(k_progressBarPos, m_bar.deviceIndependentSize().toSize()));
    if (m_elapsed < m_times.minimumShow)
        return;
    m_minimumShowRunning = false;
    m_showTimer->stop();
    hideView();
}

void CSplashView::editorReady()
{
    m_editorIsReady = true;
    // It may have run out while the editor connected, and would cut the minimum time short.
    m_timeoutTimer->stop();
    hideView();
}

void CSplashView::closeView()
{
    m_showTimer->stop();
    m_timeoutTimer->stop();
    CInfoView::closeView();
}

void CSplashView::timeout()
{
    m_showTimer->stop();
    m_timeoutTimer->stop();
    m_minimumShowRunning = false;
    m_editorIsReady = true;
    hideView();
}

void CSplashView::paintEvent(QPaintEvent* event)
{
    CInfoView::paintEvent(event);
    QPainter painter(this);
    painter.drawPixmap(k_bgProgressBarPos, m_barBackground);

    const QSize bar = m_bar.deviceIndependentSize().toSize();
    painter.setClipRect(QRect(k_progressBarPos, QSize(barWidth(bar.width(), m_elapsed, m_times.fill), bar.height())));
    painter.drawPixmap(k_progressBarPos, m_bar);
}
