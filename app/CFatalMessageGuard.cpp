#include "app/CFatalMessageGuard.h"

#include <QFileInfo>
#include <QString>

#include <cstdio>
#include <cstdlib>

namespace
{
// A message handler gets nothing of its owner's.
QByteArray s_program;
bool s_displayIsMissing = false;

/// Whether a platform says with this that its display server does not answer.
bool isAboutTheDisplay(const QString& text)
{
    return text.startsWith(QLatin1String("could not connect to display")) ||
           text.startsWith(QLatin1String("Failed to create wl_display"));
}

void exitOnFatalMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
{
    if (type != QtFatalMsg) {
        s_displayIsMissing = s_displayIsMissing || isAboutTheDisplay(text);
        return;
    }
    // The toolkit takes a missing display for a broken installation. Its text has several lines, the first of which
    // says what is wrong.
    const QString reason = s_displayIsMissing ? QStringLiteral("there is no display") : text.section(u'\n', 0, 0);
    std::fprintf(stderr, "%s: %s\n", s_program.constData(), reason.toLocal8Bit().constData());
    std::_Exit(EXIT_FAILURE);
}
} // namespace

CFatalMessageGuard::CFatalMessageGuard(const char* program)
{
    s_program = QFileInfo(QString::fromLocal8Bit(program)).fileName().toLocal8Bit();
    if (s_program.isEmpty())
        s_program = "ktz-jx-editor";
    s_displayIsMissing = false;
    m_previous = qInstallMessageHandler(exitOnFatalMessage);
}

CFatalMessageGuard::~CFatalMessageGuard()
{
    qInstallMessageHandler(m_previous);
}
