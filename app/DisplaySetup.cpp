#include "app/DisplaySetup.h"

#include <QtGlobal>

#include <cstdio>
#include <cstdlib>

namespace
{
constexpr qreal k_desktopDotsPerInch = 96;

void exitOnFatalMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
{
    if (type != QtFatalMsg)
        return;
    // The toolkit's text has several lines, the first of which says what is missing.
    const QByteArray firstLine = text.section(u'\n', 0, 0).toLocal8Bit();
    std::fprintf(stderr, "ktz-jx-editor: %s\n", firstLine.constData());
    std::_Exit(EXIT_FAILURE);
}
} // namespace

void DisplaySetup::prepareEnvironment()
{
#ifdef Q_OS_LINUX
    if (!qEnvironmentVariableIsSet("QT_FONT_DPI"))
        qputenv("QT_FONT_DPI", "72");
    if (qEnvironmentVariableIsSet("WAYLAND_DISPLAY") && qEnvironmentVariableIsSet("DISPLAY") &&
        !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb");
#endif
}

QFont DisplaySetup::dialogFont(const QFont& desktopFont, qreal dotsPerInch)
{
    QFont font = desktopFont;
    // A size given in pixels does not depend on the resolution.
    if (desktopFont.pointSizeF() > 0)
        font.setPointSizeF(desktopFont.pointSizeF() * k_desktopDotsPerInch / dotsPerInch);
    return font;
}

DisplaySetup::CFatalMessageGuard::CFatalMessageGuard() : m_previous(qInstallMessageHandler(exitOnFatalMessage)) {}

DisplaySetup::CFatalMessageGuard::~CFatalMessageGuard()
{
    qInstallMessageHandler(m_previous);
}
