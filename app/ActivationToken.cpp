#include "app/ActivationToken.h"

#include "app/XServer.h"

#include <QApplication>
#include <QRegularExpression>
#include <QWidget>
#include <QWindow>

namespace
{
constexpr char k_activationVariable[] = "XDG_ACTIVATION_TOKEN";
constexpr char k_startupVariable[] = "DESKTOP_STARTUP_ID";
constexpr QLatin1StringView k_activationKey("activation-token");
constexpr QLatin1StringView k_startupKey("desktop-startup-id");

/// The X server's time at which the user asked, in its milliseconds; 0, now, where the desktop did not tell.
quint32 timeOf(const QString& startupId)
{
    static const QRegularExpression pattern(QStringLiteral("_TIME(\\d+)$"));
    return pattern.match(startupId).captured(1).toUInt();
}
} // namespace

ActivationToken ActivationToken::fromEnvironment()
{
    return {qEnvironmentVariable(k_activationVariable), qEnvironmentVariable(k_startupVariable)};
}

void ActivationToken::clearEnvironment()
{
    qunsetenv(k_activationVariable);
    qunsetenv(k_startupVariable);
}

ActivationToken ActivationToken::fromPlatformData(const QVariantMap& data)
{
    return {data.value(k_activationKey).toString(), data.value(k_startupKey).toString()};
}

QVariantMap ActivationToken::toPlatformData() const
{
    QVariantMap data;
    if (!activation.isEmpty())
        data.insert(k_activationKey, activation);
    if (!startupId.isEmpty())
        data.insert(k_startupKey, startupId);
    return data;
}

bool ActivationToken::isEmpty() const
{
    return activation.isEmpty() && startupId.isEmpty();
}

void ActivationToken::bringToFront(QWidget& window) const
{
    if (window.isMinimized())
        window.showNormal();
    QWidget* box = QApplication::activeModalWidget();
    QWidget& front = box != nullptr ? *box : window;
    // Here the toolkit's Wayland side looks for it when it asks for the focus.
    const QString& token = activation.isEmpty() ? startupId : activation;
    if (!token.isEmpty())
        qputenv(k_activationVariable, token.toUtf8());
    front.activateWindow();
    qunsetenv(k_activationVariable);
    if (front.windowHandle() != nullptr)
        XServer::giveFocus(*front.windowHandle(), timeOf(startupId));
}
