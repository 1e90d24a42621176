#include "app/SilentMessages.h"

void doNotOutputMessage(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*text*/) {}
