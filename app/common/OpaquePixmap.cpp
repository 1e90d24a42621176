#include "app/common/OpaquePixmap.h"

QPixmap opaquePixmap(const QImage& picture)
{
    return QPixmap::fromImage(picture.convertToFormat(QImage::Format_RGB888), Qt::NoFormatConversion);
}
