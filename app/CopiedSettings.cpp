#include "app/CopiedSettings.h"

#include "app/XServer.h"
#include "app/common/Constants.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>
#include <array>

namespace
{
constexpr std::array k_formats{&k_mimeType_Knob, &k_mimeType_CCNum, &k_mimeType_MIDICh,
                               &k_mimeType_Max,  &k_mimeType_Min,   &k_mimeType_LEDType};
} // namespace

void CopiedSettings::removeFromClipboard()
{
    if (!XServer::isClipboardHeld())
        return;
    QClipboard* clipboard = QGuiApplication::clipboard();
    const QMimeData* held = clipboard->mimeData();
    const auto isHeld = [held](const QString* format) { return held->hasFormat(*format); };
    // Null is an empty one on some platforms.
    if (held != nullptr && std::ranges::any_of(k_formats, isHeld))
        clipboard->clear();
}
