#include "widgets/CSpinButton.h"

#include "widgets/COnOffButton.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QWheelEvent>

#include <chrono>

namespace
{
constexpr int k_minimumRow = 0;
constexpr int k_betweenRow = 1;
constexpr int k_upRow = 2;
constexpr int k_downRow = 3;
constexpr int k_maximumRow = 4;
constexpr int k_rows = 5;

constexpr std::chrono::milliseconds k_flashTime{100};
} // namespace

// Two invisible buttons lie over the halves and give presses, repeats and clicks; this widget draws both in one
// picture. Which half is drawn pressed is a state of its own, since a key or the wheel shows a press for a moment where
// no button is down. The end of that moment, like any press and release, brings the drawing back to what the buttons
// say.

CSpinButton::CSpinButton(QWidget* parent) : QAbstractSlider(parent), StripBuffer(this)
{
    setFocusPolicy(Qt::ClickFocus);

    m_flashTimer = new QTimer(this);
    m_flashTimer->setSingleShot(true);
    connect(m_flashTimer, SIGNAL(timeout()), this, SLOT(checkUpdate()));

    m_upButton = createHalf(SLOT(stepUp()));
    m_upShownDown = m_upButton->isDown();
    m_downButton = createHalf(SLOT(stepDown()));
    m_downShownDown = m_downButton->isDown();
    layoutHalves();

    connect(this, SIGNAL(valueChanged(int)), this, SLOT(updateValue()));
    updateValue();
    CSpinButton::sliderChange(SliderValueChange);
}

CSpinButton::~CSpinButton()
{
    unregisterObserverFromMemAPI();
}

COnOffButton* CSpinButton::createHalf(const char* stepSlot)
{
    auto* half = new COnOffButton(this);
    half->setCheckable(false);
    half->setFocusPolicy(Qt::NoFocus);
    half->setAutoRepeat(true);
    connect(half, SIGNAL(pressed()), this, SLOT(checkUpdate()), Qt::DirectConnection);
    connect(half, SIGNAL(released()), this, SLOT(checkUpdate()), Qt::DirectConnection);
    connect(half, SIGNAL(clicked(bool)), this, stepSlot, Qt::DirectConnection);
    return half;
}

QSize CSpinButton::sizeHint() const
{
    return {16, 16};
}

QSize CSpinButton::minimumSizeHint() const
{
    return {0, 0};
}

void CSpinButton::updateMemAPI()
{
    setValue(getParam());
}

void CSpinButton::checkUpdate()
{
    m_flashTimer->stop();
    if (m_upShownDown == m_upButton->isDown() && m_downShownDown == m_downButton->isDown())
        return;
    m_upShownDown = m_upButton->isDown();
    m_downShownDown = m_downButton->isDown();
    updateDoubleBuffer();
}

void CSpinButton::updateValue()
{
    if (!setParam(value()))
        setValue(getParam());
    updateDoubleBuffer();
}

void CSpinButton::stepDown()
{
    triggerAction(invertedControls() ? SliderSingleStepAdd : SliderSingleStepSub);
}

void CSpinButton::stepUp()
{
    triggerAction(invertedControls() ? SliderSingleStepSub : SliderSingleStepAdd);
}

bool CSpinButton::event(QEvent* event)
{
    // A hidden widget learns its size when it is shown, but its children draw their faces when they are polished.
    if (event->type() == QEvent::Polish)
        layoutHalves();
    // The halves have no focus of their own to lose to a popup.
    if (event->type() == QEvent::FocusOut) {
        m_upButton->letGo();
        m_downButton->letGo();
    }
    return !eventDoubleBuffer(event) && QWidget::event(event);
}

// A press gets here only when the half under it is disabled, at a limit: it must not go on to what lies below.
void CSpinButton::mousePressEvent(QMouseEvent* event)
{
    const bool lowerHalf = event->position().toPoint().y() > height() / 2;
    if ((value() >= maximum() && !lowerHalf) || (value() <= minimum() && lowerHalf))
        event->accept();
    else
        QWidget::mousePressEvent(event);
}

void CSpinButton::wheelEvent(QWheelEvent* event)
{
    if (!rect().contains(event->position().toPoint())) {
        event->ignore();
        return;
    }
    const int delta = event->angleDelta().y();
    const bool canGoUp = value() != (invertedControls() ? minimum() : maximum());
    const bool canGoDown = value() != (invertedControls() ? maximum() : minimum());
    if (delta > 0 && canGoUp) {
        flash(true);
        stepUp();
    } else if (delta < 0 && canGoDown) {
        flash(false);
        stepDown();
    }
}

void CSpinButton::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Home:
    case Qt::Key_Left:
    case Qt::Key_Down:
    case Qt::Key_PageDown:
        if (value() > minimum())
            flash(false);
        break;
    case Qt::Key_End:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_PageUp:
        if (value() < maximum())
            flash(true);
        break;
    }
    QAbstractSlider::keyPressEvent(event);
}

void CSpinButton::resizeEvent(QResizeEvent* event)
{
    layoutHalves();
    QWidget::resizeEvent(event);
}

// The base would only repaint from the same buffer; updateValue() has that redrawn.
void CSpinButton::sliderChange(SliderChange change)
{
    if (change != SliderRangeChange && change != SliderValueChange)
        return;
    m_upButton->setEnabled(value() < maximum());
    m_downButton->setEnabled(value() > minimum());
}

int CSpinButton::imageRows() const
{
    return k_rows;
}

int CSpinButton::imageRow() const
{
    // A flash outlives the step to a limit, at which nothing can be pressed any more.
    if (m_downShownDown && value() > minimum())
        return k_downRow;
    if (m_upShownDown && value() < maximum())
        return k_upRow;
    if (value() <= minimum())
        return k_minimumRow;
    return value() >= maximum() ? k_maximumRow : k_betweenRow;
}

void CSpinButton::layoutHalves()
{
    const int half = height() / 2;
    m_upButton->setGeometry(0, 0, width(), half);
    m_downButton->setGeometry(0, half, width(), height() - half);
}

void CSpinButton::flash(bool up)
{
    m_upShownDown = up;
    m_downShownDown = !up;
    updateDoubleBuffer();
    m_flashTimer->start(k_flashTime);
}
