#include "widgets/PointerWarp.h"

#include "app/common/WindowSystem.h"

#include <QCursor>

#ifdef Q_OS_MACOS
#include <ApplicationServices/ApplicationServices.h>
#endif

bool PointerWarp::isPossible()
{
    return WindowSystem::current().letsProgramsPlace();
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
