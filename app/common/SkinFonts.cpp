#include "app/common/SkinFonts.h"

#include <QFontDatabase>

bool registerSkinFonts()
{
    bool complete = true;
    for (const char* font : {"glt7-bold", "glt8-regular", "glt10-bold"}) {
        const QString file = QStringLiteral(":/fonts/morlan-%1.ttf").arg(QLatin1String(font));
        complete = QFontDatabase::addApplicationFont(file) >= 0 && complete;
    }
    return complete;
}
