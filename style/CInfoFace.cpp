#include "style/CInfoFace.h"

#include "app/common/Constants.h"

#include <QPainter>

void CInfoFace::paintBackground(QPainter* painter) const
{
    painter->drawPixmap(QPoint(0, 0), background);
}

void CInfoFace::paintText(QPainter* painter) const
{
    painter->setPen(Qt::white);
    painter->drawText(k_editorNamePos, editorName);
    painter->drawText(k_versionPos, version);
    painter->drawText(k_copyrightPos, copyright);
}
