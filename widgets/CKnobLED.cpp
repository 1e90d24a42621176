#include "widgets/CKnobLED.h"

#include "app/common/SkinPixmap.h"
#include "device/CMemAPI.h"
#include "device/DeviceParams.h"
#include "widgets/FadedImage.h"
#include "widgets/ImageStrip.h"
#include "widgets/KnobLEDIndex.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPixmapCache>
#include <QPropertyAnimation>

#include <algorithm>

namespace
{
constexpr int k_fadeTime = 200; // ms

/// One state of the ring, cut out of the strip and shared by all knobs.
QPixmap ledFrame(int index, qreal ratio)
{
    const QString key = QStringLiteral("%1 %2 %3").arg(k_knobPath).arg(index).arg(ratio);
    QPixmap frame;
    if (!QPixmapCache::find(key, &frame)) {
        const QPixmap strip = largeSkinPixmap(k_knobPath, ratio);
        frame = strip.copy(ImageStrip(strip, 1, k_numOfLEDStates).source(0, index).toRect());
        QPixmapCache::insert(key, frame);
    }
    return frame;
}
} // namespace

CKnobLED::CKnobLED(QWidget* parent)
    : QWidget(parent), m_fadeAnimation(new QPropertyAnimation(this, QByteArrayLiteral("alpha"), this))
{
    m_fadeAnimation->setDuration(k_fadeTime);
    m_fadeAnimation->setEasingCurve(QEasingCurve::Linear);
    connect(&m_frameGate, &CFrameGate::frame, this, qOverload<>(&QWidget::update));
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
    const qreal ratio = qGuiApp->devicePixelRatio();
    painter.drawPixmap(k_ledRect, ledFrame(low, ratio));
    painter.drawImage(k_ledRect,
                      fadedImage(ledFrame(high, ratio).toImage().convertToFormat(QImage::Format_ARGB32), m_alpha));
}
