#include "app/XWindowActivation.h"

void XWindowActivation::ask(const QWindow& /*window*/, quint32 /*time*/) {}
