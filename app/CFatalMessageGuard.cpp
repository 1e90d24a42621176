#include "app/CFatalMessageGuard.h"

#include <QFileInfo>

#include <cstdio>
#include <cstdlib>

namespace
{
constexpr char k_editor[] = "ktz-jx-editor";

// A message handler gets nothing of its owner's.
QByteArray& program()
{
    static QByteArray name = k_editor;
    return name;
}
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
    std::fprintf(stderr, "%s: %s\n", program().constData(), reason.toLocal8Bit().constData());
    std::_Exit(EXIT_FAILURE);
}
} // namespace

CFatalMessageGuard::CFatalMessageGuard(const char* path)
{
    program() = QFileInfo(QString::fromLocal8Bit(path)).fileName().toLocal8Bit();
    if (program().isEmpty())
        program() = k_editor;
    s_displayIsMissing = false;
    m_previous = qInstallMessageHandler(exitOnFatalMessage);
}

CFatalMessageGuard::~CFatalMessageGuard()
{
    qInstallMessageHandler(m_previous);
}

void doNotOutputMessage(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*text*/) {}
