#include "widgets/CLineEdit.h"

#include "app/common/Constants.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPointer>
#include <QRegularExpressionValidator>
#include <QWindow>

namespace
{
constexpr QColor k_selectionColor{55, 55, 55}; ///< as of a selected menu item

bool isReturn(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

// While the field's own menu is open, the field lends its focus and the edit goes on.
bool isForOwnMenu(const QFocusEvent& event, const QWidget* field)
{
    const QWidget* popup = QApplication::activePopupWidget();
    return event.reason() == Qt::PopupFocusReason && popup != nullptr && popup->parentWidget() == field;
}
} // namespace

CLineEdit::CLineEdit(QWidget* parent) : QLineEdit(parent)
{
    // It lies on the skin, which is light whatever the user's desktop is.
    QPalette colours = palette();
    colours.setColor(QPalette::Text, k_defaultTextColor);
    colours.setColor(QPalette::Highlight, k_selectionColor);
    colours.setColor(QPalette::HighlightedText, Qt::white);
    setPalette(colours);
    setFocusPolicy(Qt::ClickFocus);
    setFrame(false);
    connect(this, SIGNAL(editingFinished()), this, SLOT(accept()));
    connect(this, SIGNAL(returnPressed()), this, SLOT(accept()));
    connect(this, SIGNAL(textChanged(QString)), this, SLOT(updateText()));
}

CLineEdit::~CLineEdit()
{
    unregisterObserverFromMemAPI();
}

QString CLineEdit::validatorRegExp() const
{
    return m_validatorRegExp;
}

void CLineEdit::setValidatorRegExp(const QString& expression)
{
    m_validatorRegExp = expression;
    m_validator.reset();
    if (!expression.isEmpty())
        m_validator = std::make_unique<QRegularExpressionValidator>(QRegularExpression(expression));
    setValidator(m_validator.get());
}

bool CLineEdit::endTrim() const
{
    return m_endTrim;
}

void CLineEdit::setEndTrim(bool trim)
{
    m_endTrim = trim;
}

QMenu* CLineEdit::createStandardContextMenuForCLineEdit()
{
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("qt_edit_menu"));
    const auto add = [this, menu](const char* label, QKeySequence::StandardKey key, bool enabled, const char* slot) {
        const QString shortcut = QKeySequence(key).toString(QKeySequence::NativeText);
        QAction* action = menu->addAction(QLineEdit::tr(label) + QLatin1Char('\t') + shortcut, this, slot);
        action->setEnabled(enabled);
    };
    const bool canCopy = hasSelectedText() && echoMode() == QLineEdit::Normal;
    if (!isReadOnly()) {
        add("&Undo", QKeySequence::Undo, isUndoAvailable(), SLOT(undo()));
        add("&Redo", QKeySequence::Redo, isRedoAvailable(), SLOT(redo()));
        menu->addSeparator();
        add("Cu&t", QKeySequence::Cut, canCopy, SLOT(cut()));
    }
    add("&Copy", QKeySequence::Copy, canCopy, SLOT(copy()));
    if (!isReadOnly())
        add("&Paste", QKeySequence::Paste, !QApplication::clipboard()->text().isEmpty(), SLOT(paste()));
    menu->addSeparator();
    add("Select All", QKeySequence::SelectAll, !text().isEmpty() && selectedText() != text(), SLOT(selectAll()));
    return menu;
}

void CLineEdit::updateMemAPI() {}

void CLineEdit::accept()
{
    if (!m_editing)
        return;
    m_editing = false;
    static const QRegularExpression blanksAtEnd(QStringLiteral("[ \t]+$"));
    if (m_endTrim)
        setText(text().remove(blanksAtEnd));
    clearFocus();
    emit accepted();
}

void CLineEdit::abort()
{
    if (!m_editing)
        return;
    m_editing = false;
    clearFocus();
    setText(m_textAtStart);
    emit aborted();
}

void CLineEdit::updateText() {}

void CLineEdit::keyPressEvent(QKeyEvent* event)
{
    const QPointer<CLineEdit> field = this;
    if (event->key() == Qt::Key_Escape)
        abort();
    else
        QLineEdit::keyPressEvent(event);
    // Qt holds an edit open whose text the validator does not accept, such as none at all.
    if (!field.isNull() && isReturn(event->key()))
        abort();
    event->accept();
}

void CLineEdit::focusInEvent(QFocusEvent* event)
{
    if (!m_editing) {
        m_editing = true;
        m_textAtStart = text();
        emit started();
    }
    QLineEdit::focusInEvent(event);
}

void CLineEdit::focusOutEvent(QFocusEvent* event)
{
    const bool lendsFocus = isForOwnMenu(*event, this);
    if (!lendsFocus && !hasAcceptableInput())
        abort();
    QLineEdit::focusOutEvent(event);
    // Qt reports the end of an edit only if the text was changed, but the edit ends with the focus in any case.
    if (!lendsFocus)
        accept();
}

void CLineEdit::contextMenuEvent(QContextMenuEvent* event)
{
    if (window()->windowHandle() == nullptr) {
        QLineEdit::contextMenuEvent(event);
        return;
    }
    // The field may be destroyed, and the menu with it, while the menu is open.
    const QPointer<QMenu> menu = createStandardContextMenuForCLineEdit();
    QFont font(k_fontGLT7Bold);
    font.setPixelSize(7); // a point is a pixel in the skin
    menu->setFont(font);
    menu->exec(event->globalPos());
    delete menu;
}
