#include "style/CAboutView.h"

#include "app/common/Constants.h"
#include "app/common/SkinPixmap.h"
#include "app/common/Utilities.h"
#include "widgets/COnOffButton.h"

#include <QPainter>
#include <QPropertyAnimation>

namespace
{
constexpr char k_closeButtonImagePath[] = ":images/ktz_btn_close_info.png";
constexpr QRect k_closeButtonRect{12, 11, 20, 20};

constexpr int k_dropTime = 1000; // milliseconds
} // namespace

CAboutView::CAboutView(QWidget* parent, QWidget* window, QPixmap background) : COverlapView(parent, window)
{
    m_face.background = std::move(background);
}

void CAboutView::initialize(QString editorName, QString version, QString copyright)
{
    m_face.editorName = std::move(editorName);
    m_face.version = std::move(version);
    m_face.copyright = std::move(copyright);
    setFont(QFont(k_fontGLT8));
    Utilities::adjustFont(this);

    m_closeButton = new COnOffButton(this);
    m_closeButton->setGeometry(k_closeButtonRect);
    m_closeButton->setCombinedImage(skinPixmap(k_closeButtonImagePath));
    m_closeButton->setHasDownImage(false);
    connect(m_closeButton, SIGNAL(clicked(bool)), this, SLOT(hideView()));
    installShortcut(QStringLiteral("Esc"), SLOT(hideView()));

    m_dropAnimation = new QPropertyAnimation(this, "animVariable", this);
    m_dropAnimation->setDuration(k_dropTime);
}

void CAboutView::showView()
{
    move(0, -height());
    setVisible(true);
    m_dropAnimation->setStartValue(height());
    m_dropAnimation->setEndValue(0);
    m_dropAnimation->setEasingCurve(QEasingCurve::OutBounce);
    m_dropAnimation->start();
}

void CAboutView::hideView()
{
    if (m_rising)
        return;
    m_rising = true;
    m_dropAnimation->stop();
    m_dropAnimation->setStartValue(0);
    m_dropAnimation->setEndValue(height());
    m_dropAnimation->setEasingCurve(QEasingCurve::InBack);
    connect(m_dropAnimation, SIGNAL(finished()), this, SLOT(closeView()));
    m_dropAnimation->start();
}

int CAboutView::getAnimVariable() const
{
    return m_animVariable;
}

void CAboutView::setAnimVariable(int v)
{
    m_animVariable = v;
    move(0, -v);
}

void CAboutView::closeView()
{
    emit closed();
    close();
}

void CAboutView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    m_face.paintBackground(&painter);
    m_face.paintText(&painter);
}
