#include "app/common/Utilities.h"

#include "app/common/Constants.h"
#include "app/common/WindowLevel.h"

#include <QFontDatabase>
#include <QGraphicsOpacityEffect>
#include <QResource>
#include <QScreen>
#include <QWidget>
#include <QWindow>

namespace
{
constexpr double k_disabledOpacity = 0.35;

/// Height of a skin font in pixels; 0 for any other family.
int skinFontSize(const QString& family)
{
    if (family == k_fontGLT7Bold)
        return 7;
    if (family == k_fontGLT8)
        return 8;
    if (family == k_fontGLT10Bold)
        return 10;
    return 0;
}

void adjustOwnFont(QWidget* widget)
{
    if (!widget->testAttribute(Qt::WA_SetFont)) {
        const QWidget* parent = widget->parentWidget();
        if (parent != nullptr && parent->testAttribute(Qt::WA_SetFont))
            widget->setFont(parent->font());
        return;
    }

    QFont font = widget->font();
    const int size = skinFontSize(font.family());
    if (size == 0)
        return;
    font.setStyleHint(QFont::AnyStyle, QFont::NoAntialias);
    font.setPixelSize(size);
    widget->setFont(font);
}
} // namespace

bool Utilities::registerSkinFonts()
{
    bool complete = true;
    for (const char* font : {"glt7-bold", "glt8-regular", "glt10-bold"}) {
        // Handed over where it lies in the program, not read into a copy.
        const QResource file(QStringLiteral(":/fonts/morlan-%1.ttf").arg(QLatin1String(font)));
        complete = QFontDatabase::addApplicationFontFromData(file.uncompressedData()) >= 0 && complete;
    }
    return complete;
}

void Utilities::adjustFont(QWidget* widget)
{
    adjustOwnFont(widget);
    const QObjectList children = widget->children();
    for (QObject* child : children) {
        if (child->isWidgetType())
            adjustFont(static_cast<QWidget*>(child));
    }
}

void Utilities::disableVisibly(QWidget* widget)
{
    widget->setEnabled(false);
    auto* faded = new QGraphicsOpacityEffect(widget);
    faded->setOpacity(k_disabledOpacity);
    widget->setGraphicsEffect(faded);
}

void Utilities::beginOnScreenOf(const QWidget* window, QWidget* dialog)
{
    // A native window is made on the screen that its place is on.
    if (window != nullptr)
        dialog->move(window->screen()->geometry().topLeft());
}

void Utilities::standInFrontOf(const QWidget* window, QWidget* dialog)
{
    if (window == nullptr || window->windowHandle() == nullptr)
        return;
    beginOnScreenOf(window, dialog);
    dialog->winId(); // makes the native window, to which the window manager looks
    dialog->setAttribute(Qt::WA_Moved, false);
    dialog->windowHandle()->setTransientParent(window->windowHandle());
}

void Utilities::windowStaysOnTop(QWidget* widget, bool onTop)
{
    QWindow* window = widget != nullptr ? widget->windowHandle() : nullptr;
    if (window != nullptr)
        setWindowLevel(window, onTop);
}
