#include "app/CopiedSettings.h"

#include "app/XServer.h"
#include "widgets/CControlView.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

void CopiedSettings::removeFromClipboard()
{
    if (!XServer::isClipboardHeld())
        return;
    QClipboard* clipboard = QGuiApplication::clipboard();
    const QMimeData* held = clipboard->mimeData();
    // Null is an empty one on some platforms.
    if (held != nullptr && CControlView::isCopied(*held))
        clipboard->clear();
}
