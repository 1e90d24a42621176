#include "ctl/EditorBusLibrary.h"

#include <QCoreApplication>
#include <QLibrary>

std::unique_ptr<CEditorBus> connectToEditorByLibrary(CEditorListener& listener, const EditorBusTimes& times)
{
    using Connect = CEditorBus* (*)(CEditorListener&, const EditorBusTimes&);
    const QString file =
        QCoreApplication::applicationDirPath() + QStringLiteral("/../lib/ktz-jx-editor/private/ktz-jxctl-bus");
    const auto connect = reinterpret_cast<Connect>(QLibrary::resolve(file, "connectToEditor"));
    return std::unique_ptr<CEditorBus>(connect != nullptr ? connect(listener, times) : nullptr);
}
