#include "app/linux/CDesktopInterface.h"

#include "app/LocalFile.h"

#include <QDBusError>

void CDesktopInterface::refuse()
{
    m_refusing = true;
}

void CDesktopInterface::Activate(const QVariantMap& platformData)
{
    request({}, platformData);
}

void CDesktopInterface::Open(const QStringList& uris, const QVariantMap& platformData)
{
    request(uris.isEmpty() ? QByteArray() : LocalFile::fromUri(uris.last()), platformData);
}

void CDesktopInterface::ActivateAction(const QString& /*name*/, const QVariantList& /*parameter*/,
                                       const QVariantMap& platformData)
{
    request({}, platformData);
}

void CDesktopInterface::request(const QByteArray& path, const QVariantMap& platformData)
{
    if (m_refusing)
        sendErrorReply(QDBusError::Failed, QStringLiteral("The editor is closing."));
    else
        emit requested(path, ActivationToken::fromPlatformData(platformData));
}
