#include "file/CFileWrapper.h"

#include "app/common/Constants.h"
#include "device/CMemAPIWrapper.h"

#include <QDomDocument>

namespace
{
/// A setting as the file gives it, and as the reader takes it.
ReadingNotes notesOnSetting(const QDomElement& element, const ParamList& taken)
{
    const QString key = element.tagName().remove(k_baseTagName, Qt::CaseSensitive);
    const int line = element.lineNumber();
    if (!taken.contains(key))
        return {{line, QStringLiteral("<%1> is no setting of this knob and is ignored").arg(element.tagName())}};
    // Every element of one name has the first one's value.
    if (element.parentNode().firstChildElement(element.tagName()) != element)
        return {{line, QStringLiteral("<%1> is here a second time; the first one counts").arg(element.tagName())}};
    const QString value = taken.value(key).toString();
    if (element.text() == value)
        return {};
    return {{line, QStringLiteral("<%1> is \"%2\" and is taken as %3")
                       .arg(element.tagName(), element.text().left(20).simplified(), value)}};
}

/// The first element without contents, which ends the reading; the element itself where none is below it.
QDomElement emptyElementIn(const QDomElement& element)
{
    for (QDomElement e = element.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
        const QDomElement found = emptyElementIn(e);
        if (found != e || !e.hasChildNodes())
            return found;
    }
    return element;
}

ReadingNotes notesOnKnob(const QDomElement& knob, const ParamList& taken)
{
    ReadingNotes notes;
    for (QDomElement e = knob.firstChildElement(); !e.isNull(); e = e.nextSiblingElement())
        notes += notesOnSetting(e, taken);
    for (const SettingParam& setting : k_settingParams) {
        const QString key = QString::number(setting.category +
                                            QString(knob.tagName()).remove(k_baseTagName, Qt::CaseSensitive).toInt());
        if (!taken.contains(key))
            notes.append(
                {knob.lineNumber(),
                 QStringLiteral("<%1> lacks <%2>, which keeps its value").arg(knob.tagName(), k_baseTagName + key)});
    }
    return notes;
}
} // namespace

CFileWrapper::CFileWrapper(QWidget* parent, CMemAPIWrapper* memory) : CFile(parent, memory), m_memory(memory) {}

QString CFileWrapper::parseData(const QDomDocument& document)
{
    const QDomElement root = document.firstChildElement(k_paramTag);
    const QString version = root.attribute(k_attributeVersion);
    return version.toFloat() >= k_fileVersion.toFloat() ? parseControlViewElement(root) : k_openError;
}

ReadingNotes CFileWrapper::notesOn(const QDomDocument& document) const
{
    const QDomElement root = document.firstChildElement(k_paramTag);
    if (root.isNull())
        return {{0, QStringLiteral("there is no <%1>").arg(k_paramTag)}};
    if (root.attribute(k_attributeVersion).toFloat() < k_fileVersion.toFloat())
        return {{root.lineNumber(), QStringLiteral("the version is missing or below %1").arg(k_fileVersion)}};
    const QDomElement view = root.firstChildElement(k_controlViewTag);
    QVariant value;
    if (view.isNull())
        return {{root.lineNumber(), QStringLiteral("there is no <%1>").arg(k_controlViewTag)}};
    if (!getParamFromElement(view, &value).isEmpty())
        return {{emptyElementIn(view).lineNumber(), QStringLiteral("an element holds neither a value nor elements")}};

    const ParamList taken = settingsOnly(value.toMap());
    ReadingNotes notes;
    for (QDomElement knob = view.firstChildElement(); !knob.isNull(); knob = knob.nextSiblingElement()) {
        const QString key = knob.tagName().remove(k_baseTagName, Qt::CaseSensitive);
        if (!taken.contains(key))
            notes.append({knob.lineNumber(), QStringLiteral("<%1> is no knob and is ignored").arg(knob.tagName())});
        else if (view.firstChildElement(knob.tagName()) != knob)
            notes.append({knob.lineNumber(),
                          QStringLiteral("<%1> is here a second time; the first one counts").arg(knob.tagName())});
        else
            notes += notesOnKnob(knob, taken.value(key).toMap());
    }
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        if (const QString key = QString::number(knob); !taken.contains(key))
            notes.append({view.lineNumber(),
                          QStringLiteral("there is no <%1>; the knob keeps its values").arg(k_baseTagName + key)});
    }
    return notes;
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
