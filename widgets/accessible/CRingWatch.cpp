#include "widgets/accessible/CRingWatch.h"

#include "widgets/CKnobLED.h"

CRingWatch::CRingWatch(CKnobLED* ring) : QObject(ring)
{
    setControllerID(ring->controllerID());
}

CRingWatch::~CRingWatch()
{
    unregisterObserverFromMemAPI();
}

void CRingWatch::updateMemAPI()
{
    emit valueReported(parent());
}
