#include "widgets/CTextSlider.h"

#include "widgets/CLineEdit.h"
#include "widgets/NumberText.h"
#include "widgets/PointerWarp.h"

#include <QMouseEvent>
#include <QPainter>
#include <QValidator>

#include <algorithm>
#include <cmath>

CTextSlider::CTextSlider(QWidget* parent) : CTracklessSlider(parent), m_lineEdit(new CLineEdit(this))
{
    m_lineEdit->hide();
    m_editMaxLength = m_lineEdit->maxLength();
    m_editInputMask = m_lineEdit->inputMask();
    connect(m_lineEdit, SIGNAL(accepted()), this, SLOT(acceptEdit()));
    connect(m_lineEdit, SIGNAL(aborted()), this, SLOT(abortEdit()));
}

CTextSlider::~CTextSlider()
{
    unregisterObserverFromMemAPI();
}

Qt::Alignment CTextSlider::alignment() const
{
    return m_alignment;
}

void CTextSlider::setAlignment(Qt::Alignment alignment)
{
    m_alignment = alignment;
    m_lineEdit->setAlignment(alignment);
    updateDoubleBuffer();
}

QString CTextSlider::format() const
{
    return m_format;
}

void CTextSlider::setFormat(const QString& format)
{
    m_format = format;
    updateDoubleBuffer();
}

double CTextSlider::offset() const
{
    return m_offset;
}

void CTextSlider::setOffset(double offset)
{
    m_offset = offset;
    updateDoubleBuffer();
}

double CTextSlider::multiplier() const
{
    return m_multiplier;
}

void CTextSlider::setMultiplier(double multiplier)
{
    m_multiplier = multiplier;
    updateDoubleBuffer();
}

bool CTextSlider::directEdit() const
{
    return m_directEdit;
}

void CTextSlider::setDirectEdit(bool on)
{
    m_directEdit = on;
}

int CTextSlider::editMaxLength() const
{
    return m_editMaxLength;
}

void CTextSlider::setEditMaxLength(int length)
{
    m_editMaxLength = length;
}

QString CTextSlider::editInputMask() const
{
    return m_editInputMask;
}

void CTextSlider::setEditInputMask(const QString& mask)
{
    m_editInputMask = mask;
}

QString CTextSlider::editValidatorRegExp() const
{
    return m_editValidatorRegExp;
}

void CTextSlider::setEditValidatorRegExp(const QString& expression)
{
    m_editValidatorRegExp = expression;
}

QColor CTextSlider::textColor() const
{
    return m_textColor;
}

void CTextSlider::setTextColor(const QColor& color)
{
    m_textColor = color;
    updateDoubleBuffer();
}

CLineEdit* CTextSlider::lineEdit() const
{
    return m_lineEdit;
}

QSize CTextSlider::sizeHint() const
{
    return {64, 16};
}

QSize CTextSlider::minimumSizeHint() const
{
    return {0, 0};
}

void CTextSlider::mousePressEvent(QMouseEvent* event)
{
    if (!drag().isOverSlider(event->position()) || !press(*event))
        return;
    setAttribute(Qt::WA_UnderMouse);
    // The first move places the pointer, not the press.
    if (drag().pressPos() != drag().centre())
        PointerWarp::associateMouseAndMouseCursorPosition(true);
}

void CTextSlider::mouseReleaseEvent(QMouseEvent* event)
{
    if (drag().isActive() && event->button() == Qt::LeftButton)
        drag().warpPointer(drag().pressPos());
    release();
}

void CTextSlider::wheelEvent(QWheelEvent* event)
{
    setFocus();
    CTracklessSlider::wheelEvent(event);
}

void CTextSlider::paintDoubleBuffer(QPainter* painter)
{
    // The field for typing covers everything.
    if (m_lineEdit->isVisible())
        return;
    m_text = numberText(m_format, value() * m_multiplier + m_offset);
    const QPen pen = painter->pen();
    painter->setPen(m_textColor);
    painter->drawText(rect(), static_cast<int>(m_alignment), m_text);
    painter->setPen(pen);
}

void CTextSlider::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (drag().isOverSlider(event->position()) && m_directEdit && event->button() == Qt::LeftButton)
        openEdit();
}

void CTextSlider::type(const QString& text)
{
    if (!m_directEdit)
        return;
    openEdit();
    m_lineEdit->insert(text); // in the place of what is selected
}

void CTextSlider::openEdit()
{
    m_editAborted = false;
    m_lineEdit->setGeometry(rect());
    m_lineEdit->setMaxLength(m_editMaxLength);
    setEditValidator();
    m_lineEdit->setAlignment(m_alignment);
    m_lineEdit->setText(m_text);
    m_lineEdit->selectAll();
    m_lineEdit->show();
    m_lineEdit->setFocus(Qt::OtherFocusReason);
    updateDoubleBuffer();
}

void CTextSlider::setEditValidator()
{
    const auto isWhole = [](double number) { return number == std::trunc(number); };
    std::unique_ptr<QValidator> validator;
    if (isWhole(m_offset) && isWhole(m_multiplier))
        validator = std::make_unique<QIntValidator>();
    else
        validator = std::make_unique<QDoubleValidator>();
    // What it lets through is read as plain digits, whatever the user's language.
    validator->setLocale(QLocale::c());
    m_lineEdit->setValidator(validator.get());
    m_editValidator = std::move(validator);
}

void CTextSlider::acceptEdit()
{
    if (!m_editAborted) {
        bool isNumber = false;
        const double number = m_lineEdit->text().toDouble(&isNumber) / m_multiplier - m_offset;
        if (isNumber && !std::isnan(number)) {
            setValue(static_cast<int>(std::clamp<double>(number, minimum(), maximum())));
            emit actionTriggered(QAbstractSlider::SliderNoAction);
        }
    }
    closeEdit(Qt::MouseFocusReason);
}

void CTextSlider::abortEdit()
{
    m_editAborted = true;
    closeEdit(Qt::OtherFocusReason);
}

void CTextSlider::closeEdit(Qt::FocusReason reason)
{
    // A click that ended the typing has put the focus elsewhere already.
    const QWidget* focus = window()->focusWidget();
    const bool isFocusFree = focus == nullptr || focus == m_lineEdit;
    m_lineEdit->hide();
    if (isFocusFree)
        setFocus(reason);
    updateDoubleBuffer();
}
