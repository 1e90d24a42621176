#include "widgets/COnOffButton.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointingDevice>

namespace
{
constexpr int k_offRow = 0;
constexpr int k_onRow = 1;
constexpr int k_pressedRow = 2;

bool isArrow(int key)
{
    return key == Qt::Key_Left || key == Qt::Key_Up || key == Qt::Key_Right || key == Qt::Key_Down;
}
} // namespace

COnOffButton::COnOffButton(QWidget* parent)
    : QPushButton(parent), StripBuffer(this), m_lastDown(isDown()), m_lastChecked(isChecked())
{
    setFocusPolicy(Qt::ClickFocus);
    connect(this, SIGNAL(pressed()), this, SLOT(checkUpdate()), Qt::DirectConnection);
    connect(this, SIGNAL(released()), this, SLOT(checkUpdate()), Qt::DirectConnection);
    connect(this, SIGNAL(toggled(bool)), this, SLOT(checkUpdate()), Qt::DirectConnection);
}

COnOffButton::~COnOffButton()
{
    unregisterObserverFromMemAPI();
}

COnOffButton::TOnOffStateTrigger COnOffButton::offStateTrigger() const
{
    return m_offStateTrigger;
}

void COnOffButton::setOffStateTrigger(TOnOffStateTrigger trigger)
{
    m_offStateTrigger = trigger;
}

COnOffButton::TOnOffStateTrigger COnOffButton::onStateTrigger() const
{
    return m_onStateTrigger;
}

void COnOffButton::setOnStateTrigger(TOnOffStateTrigger trigger)
{
    m_onStateTrigger = trigger;
}

int COnOffButton::onValue() const
{
    return m_onValue;
}

void COnOffButton::setOnValue(int value)
{
    m_onValue = value;
    if (isChecked())
        writeParam(value);
}

int COnOffButton::offValue() const
{
    return m_offValue;
}

void COnOffButton::setOffValue(int value)
{
    m_offValue = value;
    if (!isChecked())
        writeParam(value);
}

bool COnOffButton::hasDownImage() const
{
    return m_hasDownImage;
}

void COnOffButton::setHasDownImage(bool has)
{
    m_hasDownImage = has;
    updateDoubleBuffer();
}

void COnOffButton::updateMemAPI()
{
    if (!isCheckable())
        return;
    const int value = getParam();
    if (value == m_onValue && !isChecked())
        setChecked(true);
    else if (value == m_offValue && isChecked())
        setChecked(false);
}

void COnOffButton::checkUpdate()
{
    if (isDown() == m_lastDown && isChecked() == m_lastChecked)
        return;
    m_lastDown = isDown();
    m_lastChecked = isChecked();
    writeParam(isChecked() ? m_onValue : m_offValue);
    updateDoubleBuffer();
}

void COnOffButton::letGo()
{
    const bool wasDown = isDown();
    // As if it came outside the button: this alone makes Qt forget the press and stop the repeats, without a click.
    const QPointF outside(-1, -1);
    // From a pointer of its own: all events of one share their place, and the press that takes the focus is under way.
    const QPointingDevice device;
    QMouseEvent release(QEvent::MouseButtonRelease, outside, mapToGlobal(outside), Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier, &device);
    mouseReleaseEvent(&release);
    if (wasDown)
        emit released();
}

bool COnOffButton::losesItsRelease(const QEvent& event) const
{
    switch (event.type()) {
    case QEvent::WindowBlocked: // by a message box
    case QEvent::Hide:
    case QEvent::FocusOut: // to a popup or another window
        return true;
    case QEvent::EnabledChange:
        return !isEnabled();
    case QEvent::Timer: // a repeat is due
        return m_heldByPointer && (QApplication::activePopupWidget() != nullptr ||
                                   !QGuiApplication::mouseButtons().testFlag(Qt::LeftButton));
    default:
        return false;
    }
}

bool COnOffButton::event(QEvent* event)
{
    if (losesItsRelease(*event))
        letGo();
    return !eventDoubleBuffer(event) && QWidget::event(event);
}

void COnOffButton::mousePressEvent(QMouseEvent* event)
{
    if (isCheckable() && event->button() == Qt::LeftButton) {
        if (m_onStateTrigger == buttonPush && !isChecked())
            click();
        if (m_offStateTrigger == buttonPush && isChecked())
            click();
    }
    QAbstractButton::mousePressEvent(event);
    m_heldByPointer = isDown();
}

void COnOffButton::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_heldByPointer = false;
    QPushButton::mouseReleaseEvent(event);
}

void COnOffButton::keyPressEvent(QKeyEvent* event)
{
    if (!isArrow(event->key()))
        QPushButton::keyPressEvent(event);
}

void COnOffButton::keyReleaseEvent(QKeyEvent* event)
{
    if (!isArrow(event->key()))
        QAbstractButton::keyReleaseEvent(event);
}

int COnOffButton::imageRows() const
{
    return m_hasDownImage ? 3 : 2;
}

int COnOffButton::imageRow() const
{
    if (m_hasDownImage && isDown())
        return k_pressedRow;
    return isChecked() || isDown() ? k_onRow : k_offRow;
}

void COnOffButton::writeParam(int value)
{
    if (value != getParam() && !setParam(value))
        updateMemAPI();
}
