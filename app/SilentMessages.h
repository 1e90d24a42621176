#pragma once

#include <QString>
#include <QtGlobal>

/// A message handler that drops every diagnostic of the toolkit. Not installed: a developer who needs silence, for
/// instance while recording the screen, hands it to qInstallMessageHandler().
void doNotOutputMessage(QtMsgType type, const QMessageLogContext& context, const QString& text);
