#include "simulator/console/PanelProgram.h"

#include <QCoreApplication>
#include <QFile>

#include <unistd.h>

#include <cerrno>
#include <system_error>

QString becomePanel(const char* program, int cables)
{
    const QString name = QStringLiteral("ktz-jx-demo");
    const QByteArray path = QFile::encodeName(QCoreApplication::applicationDirPath() + u'/' + name);
    const QByteArray number = QByteArray::number(cables);
    execl(path.constData(), program, "--device", number.constData(), nullptr);
    const std::string reason = std::generic_category().message(errno);
    return QStringLiteral("--panel needs %1 beside this program: %2").arg(name, QString::fromStdString(reason));
}
