#include "widgets/CSlideEditor.h"

#include "app/common/SkinPixmap.h"
#include "widgets/CLineEdit.h"
#include "widgets/CSpinButton.h"
#include "widgets/CTextSlider.h"

#include <QKeyEvent>
#include <QPalette>

#include <utility>

namespace
{
constexpr int k_marginY = 10; ///< of the editor above and below the slider
constexpr int k_marginX = 6;  ///< right of it

bool isDigitTyped(const QKeyEvent& event)
{
    constexpr Qt::KeyboardModifiers commands = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    const QString text = event.text();
    return text.size() == 1 && text.front() >= u'0' && text.front() <= u'9' && !(event.modifiers() & commands);
}
} // namespace

CSlideEditor::CSlideEditor(QWidget* parent) : QWidget(parent) {}

CSlideEditor::~CSlideEditor()
{
    unregisterObserverFromMemAPI();
}

void CSlideEditor::initialize(QAbstractSlider* slider, const QRect& rect, bool spinOverlaps)
{
    setGeometry(rect.x(), rect.y() - k_marginY, rect.width() + k_marginX, rect.height() + 2 * k_marginY);
    const QPixmap spinPicture = skinPixmap(k_spinImage);
    const int spinWidth = spinPicture.deviceIndependentSize().toSize().width();

    if (slider != nullptr) {
        m_slider = slider;
        m_slider->setParent(this);
        m_slider->setGeometry(0, k_marginY, rect.width() - (spinOverlaps ? 0 : spinWidth), rect.height());
        connectPart(m_slider);
    }

    m_spinButton = new CSpinButton(this);
    m_spinButton->setGeometry(width() - (spinWidth + k_marginX), 0, spinWidth + k_marginX, height());
    m_spinButton->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_spinButton->setCombinedImage(spinPicture);
    if (m_slider != nullptr) {
        m_spinButton->setRange(m_slider->minimum(), m_slider->maximum());
        m_spinButton->setValue(m_slider->value());
    }
    m_spinButton->updateDoubleBuffer();
    m_spinButton->raise();
    connectPart(m_spinButton);
}

void CSlideEditor::connectPart(QAbstractSlider* part)
{
    // Before the selection, which is the last word: to take the focus ends what is typed elsewhere, and that selects
    // too.
    connect(part, &QAbstractSlider::actionTriggered, this, &CSlideEditor::takeFocus);
    connect(part, SIGNAL(sliderPressed()), this, SLOT(editorSelect()));
    connect(part, SIGNAL(actionTriggered(int)), this, SLOT(editorSelect()));
    connect(part, SIGNAL(valueChanged(int)), this, SLOT(valueChange(int)));
}

void CSlideEditor::moveSlider(int x, int y)
{
    move(x, y - k_marginY);
}

void CSlideEditor::setSliderTextColor(const QColor& color)
{
    auto* textSlider = qobject_cast<CTextSlider*>(m_slider);
    if (textSlider == nullptr)
        return;
    textSlider->setTextColor(color);
    QPalette palette = textSlider->lineEdit()->palette();
    palette.setColor(QPalette::Text, color);
    textSlider->lineEdit()->setPalette(palette);
}

void CSlideEditor::focusOnSlider()
{
    if (m_slider != nullptr && isVisible())
        m_slider->setFocus();
}

void CSlideEditor::goTo()
{
    // First the focus, whose way ends what is typed elsewhere, and that selects too.
    focusOnSlider();
    editorSelect();
}

QAbstractSlider* CSlideEditor::slider() const
{
    return m_slider;
}

int CSlideEditor::getValue() const
{
    return m_slider != nullptr ? m_slider->value() : 0;
}

void CSlideEditor::setValue(int value)
{
    if (m_slider != nullptr)
        m_slider->setValue(value);
}

void CSlideEditor::updateMemAPI()
{
    const int held = getParam();
    m_reloaded = held;
    setValue(held);
    const bool isShownAlready = std::exchange(m_reloaded, std::nullopt).has_value();
    if (m_slider == nullptr || !isShownAlready || getValue() == held)
        return;
    if (!setParam(getValue()))
        setValue(getParam());
    emit valueChanged(getValue());
}

// Whoever is changed, by the wheel too, takes the keys from then on. Only the end of typing leaves them where they are.
void CSlideEditor::takeFocus(int action)
{
    if (action != QAbstractSlider::SliderNoAction && !isAncestorOf(window()->focusWidget()))
        focusOnSlider();
}

void CSlideEditor::keyPressEvent(QKeyEvent* event)
{
    auto* textSlider = qobject_cast<CTextSlider*>(m_slider);
    if (textSlider != nullptr && isDigitTyped(*event))
        textSlider->type(event->text());
    else
        QWidget::keyPressEvent(event);
}

void CSlideEditor::editorSelect()
{
    emit selected(this);
}

void CSlideEditor::valueChange(int value)
{
    if (m_slider == nullptr || m_spinButton == nullptr)
        return;
    // The second part's echo ends here.
    if (m_slider->value() == m_spinButton->value())
        return;
    // What came from the memory must not go back: by now, the device may have reported more.
    const bool isReloaded = std::exchange(m_reloaded, std::nullopt) == value;
    if (!isReloaded && !setParam(value))
        value = getParam();
    m_slider->setValue(value);
    m_spinButton->setValue(value);
    emit valueChanged(value);
}
