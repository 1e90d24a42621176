#include "widgets/CKnobLED.h"

#include "device/CMemAPI.h"
#include "device/DeviceParams.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPropertyAnimation>

#include <algorithm>
#include <chrono>

namespace
{
constexpr std::chrono::milliseconds k_fadeTime{200};

/// What a frame changes: a pixel more all round, since between two ratios the ring's edge lies within a device pixel.
constexpr QRect k_changingRect = k_ledRect + QMargins(1, 1, 1, 1);
} // namespace

// Both states of a fade are always drawn, the lower one whole and the upper one over it as far as alpha goes: a rise
// fades the upper one in, a fall fades it out. So a fade's end needs no other drawing than its course.

CKnobLED::CKnobLED(QWidget* parent)
    : QWidget(parent), m_fadeAnimation(new QPropertyAnimation(this, QByteArrayLiteral("alpha"), this))
{
    m_fadeAnimation->setDuration(static_cast<int>(k_fadeTime.count()));
    m_fadeAnimation->setEasingCurve(QEasingCurve::Linear);
    // The animation steps as often as it likes; the screen shows no more than its frames.
    connect(&m_frameGate, &CFrameGate::frame, this, [this] { update(k_changingRect); });
}

CKnobLED::~CKnobLED()
{
    unregisterObserverFromMemAPI();
}

int CKnobLED::getImageIndexByType(int ledType) const
{
    return knobLEDIndex(ledType, m_knobValue);
}

int CKnobLED::getAlpha() const
{
    return m_alpha;
}

void CKnobLED::setAlpha(int alpha)
{
    m_alpha = alpha;
    m_frameGate.request();
}

void CKnobLED::updateMemAPI()
{
    m_knobValue = getKnob();
    updateLED();
}

void CKnobLED::updateLED()
{
    constexpr int toLEDType = k_ledTypeCategory - k_knobValueCategory;
    const int ledType = memory() != nullptr ? memory()->getParam(controllerID() + toLEDType) : 0;
    const int index = getImageIndexByType(ledType);
    if (index == m_currentIndex)
        return;
    m_previousIndex = m_currentIndex;
    m_currentIndex = index;

    const bool rises = m_currentIndex > m_previousIndex;
    m_fadeAnimation->stop();
    m_fadeAnimation->setStartValue(rises ? k_minOpacity : k_maxOpacity);
    m_fadeAnimation->setEndValue(rises ? k_maxOpacity : k_minOpacity);
    m_fadeAnimation->start();
}

void CKnobLED::mousePressEvent(QMouseEvent* event)
{
    emit selected();
    QWidget::mousePressEvent(event);
}

void CKnobLED::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const auto [low, high] = std::minmax(m_previousIndex, m_currentIndex);
    // The densest screen's, not this one's: pictures are kept for one ratio, and scaled down elsewhere.
    const qreal ratio = qGuiApp->devicePixelRatio();
    painter.drawImage(k_ledRect, knobLEDImage(low, ratio));
    if (m_alpha > 0)
        painter.drawImage(k_ledRect, fadedKnobLEDImage(high, ratio, m_alpha));
}
