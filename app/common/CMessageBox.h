#pragma once

#include <QMessageBox>

/// The one way in which the editor asks the user something or warns: a modal box with buttons of one width.
///
/// Blocks   until the user answers. GUI thread only.
/// Result   the standard button pressed; closing the box gives its escape button. Callers ask for Yes alone, so that
///          everything else counts as a refusal.
class CMessageBox
{
  public:
    /// parent: the window that the box belongs to, or null.
    static int showMessageBox(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text,
                              QMessageBox::StandardButtons buttons, QMessageBox::StandardButton defaultButton);

    static int question(QWidget* parent, const QString& title, const QString& text,
                        QMessageBox::StandardButtons buttons, QMessageBox::StandardButton defaultButton);

    static int warning(QWidget* parent, const QString& title, const QString& text, QMessageBox::StandardButtons buttons,
                       QMessageBox::StandardButton defaultButton);
};
