#include "app/CopiedSettings.h"

#include "app/common/Constants.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>

void CopiedSettings::removeFromClipboard()
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    const QMimeData* held = clipboard->mimeData();
    if (held == nullptr) // as some platforms give it for an empty one
        return;
    const QStringList formats = held->formats();
    if (std::ranges::any_of(formats, [](const QString& format) {
            return format == k_mimeType_Knob || format == k_mimeType_CCNum || format == k_mimeType_MIDICh ||
                   format == k_mimeType_Max || format == k_mimeType_Min || format == k_mimeType_LEDType;
        }))
        clipboard->clear();
}
