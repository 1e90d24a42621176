#include "style/CSplashView.h"

#include "app/common/Constants.h"
#include "app/common/SkinPixmap.h"
#include "app/common/Utilities.h"

#include <QPainter>
#include <QPropertyAnimation>
#include <QTimer>

namespace
{
constexpr char k_bgProgressBarImagePath[] = ":images/ktz_back_status_bar.png";
constexpr char k_progressBarImagePath[] = ":images/ktz_status_bar.png";
constexpr QPoint k_bgProgressBarPos{116, 395};
constexpr QPoint k_progressBarPos{122, 402};
} // namespace

CSplashView::CSplashView(QWidget* parent, QWidget* window, QPixmap background, const SplashTimes& times)
    : COverlapView(parent, window), m_times(times)
{
    m_face.background = std::move(background);
}

void CSplashView::initialize(QString editorName, QString version, QString copyright)
{
    m_face.editorName = std::move(editorName);
    m_face.version = std::move(version);
    m_face.copyright = std::move(copyright);
    setFont(QFont(k_fontGLT8));
    Utilities::adjustFont(this);

    m_barBackground = skinPixmap(k_bgProgressBarImagePath);
    m_bar = skinPixmap(k_progressBarImagePath);

    m_showTimer = new QTimer(this);
    m_showTimer->setInterval(m_times.tick);
    connect(m_showTimer, SIGNAL(timeout()), this, SLOT(showTimeOver()));
    m_timeoutTimer = new QTimer(this);
    m_timeoutTimer->setInterval(m_times.longestWait);
    m_timeoutTimer->setSingleShot(true);
    connect(m_timeoutTimer, SIGNAL(timeout()), this, SLOT(timeout()));

    m_slideAnimation = new QPropertyAnimation(this, "animVariable", this);
    m_slideAnimation->setDuration(static_cast<int>(m_times.slide.count()));
    m_slideAnimation->setEasingCurve(QEasingCurve::OutInBack);
    connect(m_slideAnimation, SIGNAL(finished()), this, SLOT(closeView()));
}

void CSplashView::showView()
{
    setVisible(true);
    m_showTimer->start();
    m_timeoutTimer->start();
}

void CSplashView::hideView()
{
    if (m_minimumShowRunning || !m_editorIsReady || m_slideAnimation->state() == QAbstractAnimation::Running)
        return;
    m_timeoutTimer->stop();
    emit finished();
    m_slideAnimation->setStartValue(0);
    m_slideAnimation->setEndValue(width());
    m_slideAnimation->start();
}

int CSplashView::getAnimVariable() const
{
    return m_animVariable;
}

void CSplashView::setAnimVariable(int v)
{
    m_animVariable = v;
    move(v, 0);
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
    emit closed();
    close();
}

void CSplashView::timeout()
{
    m_showTimer->stop();
    m_timeoutTimer->stop();
    m_minimumShowRunning = false;
    m_editorIsReady = true;
    hideView();
}

void CSplashView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    m_face.paintBackground(&painter);
    painter.drawPixmap(k_bgProgressBarPos, m_barBackground);

    const QSize bar = m_bar.deviceIndependentSize().toSize();
    painter.save();
    painter.setClipRect(QRect(k_progressBarPos, QSize(barWidth(bar.width(), m_elapsed, m_times.fill), bar.height())));
    painter.drawPixmap(k_progressBarPos, m_bar);
    painter.restore();

    m_face.paintText(&painter);
}
