#pragma once

#include "device/CMemAPIProxy.h"

#include <QLineEdit>

#include <memory>

class QMenu;
class QRegularExpressionValidator;

/// The text field used where a value is typed in place: an edit starts with the focus and ends accepted or aborted.
///
/// An aborted edit has its old text back. The text is not bound to a parameter. No key travels on to the parent.
/// GUI thread only.
class CLineEdit : public QLineEdit, public CMemAPIProxy
{
    Q_OBJECT
    Q_PROPERTY(QString validatorRegExp READ validatorRegExp WRITE setValidatorRegExp)
    Q_PROPERTY(bool endTrim READ endTrim WRITE setEndTrim)
    Q_PROPERTY(int controllerID READ controllerID WRITE setControllerID)

  public:
    explicit CLineEdit(QWidget* parent = nullptr);
    ~CLineEdit() override;

    /// The expression that the whole text has to match, case-sensitive; empty for any text.
    /// Replaces any other validator.
    [[nodiscard]] QString validatorRegExp() const;
    void setValidatorRegExp(const QString& expression);

    /// Whether accepting removes blanks and tabs from the end of the text.
    [[nodiscard]] bool endTrim() const;
    void setEndTrim(bool trim);

    /// The context menu for the present state. A child of the field; the caller deletes it.
    [[nodiscard]] QMenu* createStandardContextMenuForCLineEdit();

    void updateMemAPI() override;

  public slots:
    /// Each does nothing when no edit is in progress.
    void accept();
    void abort();
    void updateText();

  signals:
    void started();
    void accepted();
    void aborted();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    QString m_validatorRegExp;
    bool m_endTrim = false;
    std::unique_ptr<QRegularExpressionValidator> m_validator;
    bool m_editing = false;
    QString m_textAtStart;
};
