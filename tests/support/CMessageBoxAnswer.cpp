#include "tests/support/CMessageBoxAnswer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPushButton>
#include <QTest>

#include <algorithm>

CMessageBoxAnswer::CMessageBoxAnswer(QMessageBox::StandardButton answer) : m_answer(answer)
{
    startTimer(5);
}

const QList<CMessageBoxAnswer::Box>& CMessageBoxAnswer::boxes() const
{
    return m_boxes;
}

void CMessageBoxAnswer::forgetBoxes()
{
    m_boxes.clear();
}

bool CMessageBoxAnswer::sawOnly(const QString& text) const
{
    const auto says = [&text](const Box& box) { return box.text == text; };
    return !m_boxes.isEmpty() && std::all_of(m_boxes.begin(), m_boxes.end(), says);
}

void CMessageBoxAnswer::setAnswer(QMessageBox::StandardButton answer)
{
    m_answer = answer;
}

void CMessageBoxAnswer::timerEvent(QTimerEvent* /*e*/)
{
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr || !box->isVisible())
        return;
    Box seen{box->windowTitle(),    box->text(), box->icon(),        box->standardButtons(),
             QMessageBox::NoButton, {},          box->parentWidget()};
    seen.defaultButton = box->standardButton(box->defaultButton());
    const QList<QAbstractButton*> buttons = box->buttons();
    for (const QAbstractButton* button : buttons)
        seen.buttonWidths.append(button->width());
    m_boxes.append(seen);
    if (QAbstractButton* button = box->button(m_answer))
        QTest::mouseClick(button, Qt::LeftButton);
    else
        box->close();
}
