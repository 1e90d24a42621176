#include "app/common/PointerWarp.h"

#include <QCursor>
#include <QGuiApplication>

#ifdef Q_OS_MACOS
#include <ApplicationServices/ApplicationServices.h>
#endif

bool PointerWarp::isPossibleOn(const QString& platform)
{
    return !platform.startsWith(QLatin1String("wayland"));
}

bool PointerWarp::isPossible()
{
    return isPossibleOn(QGuiApplication::platformName());
}

void PointerWarp::moveTo(const QPoint& position)
{
    QCursor::setPos(position);
    associateMouseAndMouseCursorPosition(true);
}

void PointerWarp::associateMouseAndMouseCursorPosition([[maybe_unused]] bool joined)
{
#ifdef Q_OS_MACOS
    CGAssociateMouseAndMouseCursorPosition(joined);
#endif
}
