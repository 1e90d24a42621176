#include "app/common/CMessageBox.h"

#include "app/common/CWindowSize.h"
#include "app/common/SkinPixmap.h"
#include "app/common/Utilities.h"

#include <QAbstractButton>
#include <QLabel>
#include <QScreen>

namespace
{
constexpr int k_buttonWidth = 90;

/// Lets the toolkit choose its place, although it was on a screen before.
class CBox : public QMessageBox
{
  public:
    using QMessageBox::QMessageBox;

  protected:
    void showEvent(QShowEvent* event) override
    {
        setAttribute(Qt::WA_Moved, false);
        QMessageBox::showEvent(event);
    }
};

QString skinIconPath(QMessageBox::Icon icon)
{
    switch (icon) {
    case QMessageBox::Question:
        return QStringLiteral(":/images/ktz_box_question.png");
    case QMessageBox::Warning:
        return QStringLiteral(":/images/ktz_box_warning.png");
    default:
        return {};
    }
}

/// Puts the skin's picture in the place of the icon. QMessageBox::setIconPixmap() would take the icon itself away.
void showSkinIcon(const QMessageBox& box)
{
    auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgboxex_icon_label"));
    const QPixmap picture = skinPixmap(skinIconPath(box.icon()));
    if (label != nullptr && !picture.isNull())
        label->setPixmap(picture);
}

/// Makes room for the longest line, up to half of the screen's width: left to itself, the box breaks a long line only
/// to leave one word over.
void keepLinesWhole(const QMessageBox& box)
{
    auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    if (label == nullptr)
        return;
    const int longest = QFontMetrics(label->font()).size(0, box.text()).width();
    label->setMinimumWidth(qMin(longest, box.screen()->availableGeometry().width() / 2));
}
} // namespace

int CMessageBox::showMessageBox(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text,
                                QMessageBox::StandardButtons buttons, QMessageBox::StandardButton defaultButton)
{
    CBox box(icon, title, text, buttons, parent, Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint);
    Utilities::beginOnScreenOf(parent, &box);
    new CWindowSize(&box);
    // A name of a file may look like formatting.
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(defaultButton);
    const QList<QAbstractButton*> allButtons = box.buttons();
    for (QAbstractButton* button : allButtons) {
        button->setFixedWidth(k_buttonWidth);
        button->setIcon({}); // Yes and No say enough
    }
    showSkinIcon(box);
    keepLinesWhole(box);
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
