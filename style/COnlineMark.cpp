#include "style/COnlineMark.h"

#include "app/common/SkinPixmap.h"

#include <QAccessible>
#include <QPainter>
#include <QPropertyAnimation>

#include <chrono>

namespace
{
constexpr char k_onlineImagePath[] = ":/images/ktz_led_online.png";
constexpr int k_showMarkMaskValue = 255;
constexpr int k_hideMarkMaskValue = 0;

constexpr std::chrono::milliseconds k_fadeTime{1000};
} // namespace

COnlineMark::COnlineMark(QWidget* parent) : QWidget(parent), m_alpha(k_showMarkMaskValue) {}

void COnlineMark::initialize()
{
    // cppcheck-suppress publicAllocationError ; called once, and the mark owns it
    m_fadeAnimation = new QPropertyAnimation(this, "alpha", this);
    m_fadeAnimation->setDuration(static_cast<int>(k_fadeTime.count()));
    m_fadeAnimation->setEasingCurve(QEasingCurve::InQuad);

    // Two frames, one above the other, of which the lower is the lit one; rows in device pixels.
    const QPixmap frames = skinPixmap(k_onlineImagePath);
    const int upper = frames.height() / 2;
    m_led = frames.copy(0, upper, frames.width(), frames.height() - upper);
    resize(m_led.deviceIndependentSize().toSize());
    update();
}

int COnlineMark::getAlpha() const
{
    return m_alpha;
}

void COnlineMark::setAlpha(int alpha)
{
    m_alpha = alpha;
    update();
}

bool COnlineMark::isOn() const
{
    return m_isOn;
}

void COnlineMark::turnOn()
{
    fade(k_showMarkMaskValue, k_hideMarkMaskValue);
}

void COnlineMark::turnOff()
{
    fade(k_hideMarkMaskValue, k_showMarkMaskValue);
}

void COnlineMark::fade(int from, int to)
{
    if (m_fadeAnimation == nullptr)
        return;
    m_fadeAnimation->stop();
    m_fadeAnimation->setStartValue(from);
    m_fadeAnimation->setEndValue(to);
    m_fadeAnimation->start();

    m_isOn = to == k_hideMarkMaskValue;
    if (!QAccessible::isActive())
        return;
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
}

void COnlineMark::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.drawPixmap(rect(), m_led);
    painter.fillRect(rect(), QColor(255, 255, 255, m_alpha));
}
