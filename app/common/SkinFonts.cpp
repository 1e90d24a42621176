#include "app/common/SkinFonts.h"

#include <QFontDatabase>
#include <QResource>

bool registerSkinFonts()
{
    bool complete = true;
    for (const char* font : {"glt7-bold", "glt8-regular", "glt10-bold"}) {
        // Handed over where it lies in the program, not read into a copy.
        const QResource file(QStringLiteral(":/fonts/morlan-%1.ttf").arg(QLatin1String(font)));
        complete = QFontDatabase::addApplicationFontFromData(file.uncompressedData()) >= 0 && complete;
    }
    return complete;
}
