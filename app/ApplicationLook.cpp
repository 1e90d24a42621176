#include "app/ApplicationLook.h"

#include "app/common/SkinPixmap.h"
#include "app/common/Utilities.h"
#include "style/CJXStyle.h"

#include <QApplication>
#include <QIcon>

namespace
{
// Each size is drawn for itself: the small ones are simpler, not scaled.
QIcon windowIcon()
{
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64})
        icon.addPixmap(skinPixmap(QStringLiteral(":/icon/ktz-jx-editor-%1.png").arg(size), 1.0));
    return icon;
}
} // namespace

void applyApplicationLook()
{
    QApplication::setStyle(new CJXStyle); // the application owns it from here on
    Q_INIT_RESOURCE(common_images);
    // Without a font of the skin its text appears in the desktop's: readable, if not as drawn.
    static_cast<void>(Utilities::registerSkinFonts());
    QApplication::setWindowIcon(windowIcon());
}
