#include "app/common/CMessageBox.h"

#include <QAbstractButton>

namespace
{
constexpr int k_buttonWidth = 90;
}

int CMessageBox::showMessageBox(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text,
                                QMessageBox::StandardButtons buttons, QMessageBox::StandardButton defaultButton)
{
    QMessageBox box(icon, title, text, buttons, parent, Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint);
    box.setDefaultButton(defaultButton);
    const QList<QAbstractButton*> allButtons = box.buttons();
    for (QAbstractButton* button : allButtons)
        button->setFixedWidth(k_buttonWidth);
    return box.exec();
}

int CMessageBox::question(QWidget* parent, const QString& title, const QString& text,
                          QMessageBox::StandardButtons buttons, QMessageBox::StandardButton defaultButton)
{
    return showMessageBox(parent, QMessageBox::Question, title, text, buttons, defaultButton);
}

int CMessageBox::warning(QWidget* parent, const QString& title, const QString& text,
                         QMessageBox::StandardButtons buttons, QMessageBox::StandardButton defaultButton)
{
    return showMessageBox(parent, QMessageBox::Warning, title, text, buttons, defaultButton);
}
