#include "file/CFileWrapper.h"

#include "app/common/Constants.h"
#include "device/CMemAPIWrapper.h"

#include <QDomDocument>

CFileWrapper::CFileWrapper(QWidget* parent, CMemAPIWrapper* memory) : CFile(parent, memory), m_memory(memory) {}

QString CFileWrapper::parseData(const QDomDocument& document)
{
    const QDomElement root = document.firstChildElement(k_paramTag);
    const QString version = root.attribute(k_attributeVersion);
    return version.toFloat() >= k_fileVersion.toFloat() ? parseControlViewElement(root) : k_openError;
}

QString CFileWrapper::createData(QDomDocument* document)
{
    if (document == nullptr)
        return k_saveError;
    QDomElement root = document->createElement(k_paramTag);
    root.setAttribute(k_attributeVersion, k_fileVersion);
    QString error = addControlViewElementToDoc(document, &root);
    document->appendChild(root);
    return error;
}

QString CFileWrapper::getDocType() const
{
    return k_docType;
}

QString CFileWrapper::getExtension() const
{
    return k_extension;
}

QString CFileWrapper::addControlViewElementToDoc(QDomDocument* document, QDomElement* parent) const
{
    if (document == nullptr || parent == nullptr || m_memory == nullptr)
        return k_saveError;
    QDomElement controlView = document->createElement(k_controlViewTag);
    // A knob that has no settings would be an empty element, with which the file could not be read again.
    QString error = setParamToElement(settingsOnly(m_memory->getParamList()), document, &controlView);
    parent->appendChild(controlView);
    return error;
}

QString CFileWrapper::parseControlViewElement(const QDomElement& root) const
{
    if (m_memory == nullptr)
        return k_openError;
    QVariant value;
    QString error = getParamFromElement(root.firstChildElement(k_controlViewTag), &value);
    // A key that is no setting would shift every list that is moved by position, and a value out of its range would be
    // sent to the device, cut to a byte that can even end the message.
    m_memory->setParamList(settingsOnly(value.toMap()));
    return error;
}
