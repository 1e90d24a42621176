#include "style/CInfoView.h"

#include "app/common/Constants.h"
#include "app/common/Utilities.h"

#include <QAccessible>
#include <QPainter>
#include <QPropertyAnimation>

CInfoView::CInfoView(QWidget* parent, QWidget* window, QPixmap background, const QPoint& direction)
    : COverlapView(parent, window), m_background(std::move(background)), m_direction(direction)
{
}

void CInfoView::initializeInfo(QString editorName, QString version, QString copyright)
{
    m_editorName = std::move(editorName);
    m_version = std::move(version);
    m_copyright = std::move(copyright);
    setFont(QFont(k_fontGLT8));
    Utilities::adjustFont(this);
    // cppcheck-suppress publicAllocationError ; called once, and the view owns it
    m_animation = new QPropertyAnimation(this, "animVariable", this);
}

QStringList CInfoView::lines() const
{
    return {m_editorName, m_version, m_copyright};
}

int CInfoView::getAnimVariable() const
{
    return m_animVariable;
}

void CInfoView::setAnimVariable(int v)
{
    m_animVariable = v;
    move(m_direction * v);
}

QPropertyAnimation* CInfoView::animation() const
{
    return m_animation;
}

void CInfoView::slide(int from, int to)
{
    m_animation->stop();
    m_animation->setStartValue(from);
    m_animation->setEndValue(to);
    m_animation->start();
}

void CInfoView::slideOut(int distance)
{
    m_slidingOut = true;
    connect(m_animation, SIGNAL(finished()), this, SLOT(closeView()));
    slide(0, distance);
}

bool CInfoView::isSlidingOut() const
{
    return m_slidingOut;
}

void CInfoView::closeView()
{
    emit closed();
    close();
}

void CInfoView::showEvent(QShowEvent* event)
{
    COverlapView::showEvent(event);
    if (!hasFocus())
        return;
    // It took the focus before it was whole, and was told as something without a name.
    QAccessibleEvent told(this, QAccessible::Focus);
    QAccessible::updateAccessibility(&told);
}

void CInfoView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.drawPixmap(QPoint(0, 0), m_background);
    painter.setPen(Qt::white);
    painter.drawText(k_editorNamePos, m_editorName);
    painter.drawText(k_versionPos, m_version);
    painter.drawText(k_copyrightPos, m_copyright);
}
