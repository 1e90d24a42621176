#include "style/CAboutView.h"

#include "app/common/SkinPixmap.h"
#include "widgets/COnOffButton.h"

#include <QPropertyAnimation>

#include <chrono>

namespace
{
constexpr char k_closeButtonImagePath[] = ":images/ktz_btn_close_info.png";
constexpr QRect k_closeButtonRect{12, 11, 20, 20};

constexpr QPoint k_upwards{0, -1};
constexpr std::chrono::milliseconds k_dropTime{1000};
} // namespace

CAboutView::CAboutView(QWidget* parent, QWidget* window, QPixmap background)
    : CInfoView(parent, window, std::move(background), k_upwards)
{
}

void CAboutView::initialize(QString editorName, QString version, QString copyright)
{
    initializeInfo(std::move(editorName), std::move(version), std::move(copyright));
    animation()->setDuration(static_cast<int>(k_dropTime.count()));

    auto* closeButton = new COnOffButton(this);
    closeButton->setGeometry(k_closeButtonRect);
    closeButton->setAccessibleName(QStringLiteral("Close"));
    closeButton->setCombinedImage(skinPixmap(k_closeButtonImagePath));
    closeButton->setHasDownImage(false);
    connect(closeButton, SIGNAL(clicked(bool)), this, SLOT(hideView()));
    installShortcut(QStringLiteral("Esc"), SLOT(hideView()));
}

void CAboutView::showView()
{
    move(0, -height());
    setVisible(true);
    animation()->setEasingCurve(QEasingCurve::OutBounce);
    slide(height(), 0);
}

void CAboutView::hideView()
{
    if (isSlidingOut())
        return;
    animation()->stop();
    animation()->setEasingCurve(QEasingCurve::InBack);
    slideOut(height());
}
