#include "file/CFile.h"

#include "app/common/Constants.h"
#include "file/CDocumentGuard.h"
#include "file/RegularFile.h"

#include <QDir>
#include <QDomDocument>
#include <QHash>
#include <QSaveFile>
#include <QStandardPaths>
#include <QStringDecoder>
#include <QTextStream>

namespace
{
constexpr int k_indent = 4;

// The document's text; a null string when the bytes are none in the encoding that they begin with.
QString decoded(const QByteArray& bytes)
{
    const auto encoding = QStringDecoder::encodingForData(bytes, u'<').value_or(QStringDecoder::Utf8);
    QStringDecoder decoder(encoding, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    return decoder.hasError() ? QString() : text;
}

bool writeDocument(const QDomDocument& document, QSaveFile& file)
{
    QTextStream stream(&file);
    document.save(stream, k_indent);
    stream.flush();
    return stream.status() == QTextStream::Ok;
}
} // namespace

CFile::CFile(QWidget* parent, CMemAPI* memory) : m_parent(parent), m_memory(memory) {}

void CFile::initialize()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (!documents.isEmpty() && QDir().mkpath(documents))
        m_currentPath = documents;
}

const QString& CFile::currentPath() const
{
    return m_currentPath;
}

QString CFile::read(const QString& name)
{
    const std::optional<QByteArray> bytes = readRegularFile(name, CDocumentGuard::k_sizeLimit);
    if (!bytes)
        return k_openError;
    // The parser gets the very text that was looked at, whatever encoding the document claims to have.
    const QString text = decoded(*bytes);
    QDomDocument document;
    if (!CDocumentGuard::accepts(text) || !document.setContent(text, true))
        return k_openError;
    if (document.doctype().name() != getDocType())
        return k_openError;
    return parseData(document);
}

QString CFile::write(const QString& name)
{
    const QString target = regularFileToReplace(name);
    QSaveFile file(target);
    if (target.isEmpty() || !file.open(QIODevice::WriteOnly))
        return k_saveError;

    QDomDocument document(getDocType());
    const QString error = createData(&document);
    if (error.isEmpty() && !writeDocument(document, file))
        file.cancelWriting();
    // Only here does the new file, an empty one after an error, take the old one's place.
    const bool saved = file.commit();
    return error.isEmpty() && !saved ? k_saveError : error;
}

QString CFile::setParamToElement(const ParamList& list, QDomDocument* document, QDomElement* parent)
{
    if (document == nullptr || parent == nullptr)
        return k_saveError;
    for (auto it = list.cbegin(); it != list.cend(); ++it) {
        QDomElement element = document->createElement(k_baseTagName + it.key());
        if (it.value().typeId() == QMetaType::QVariantMap) {
            QString error = setParamToElement(it.value().toMap(), document, &element);
            if (!error.isEmpty())
                return error;
        } else {
            element.appendChild(document->createTextNode(it.value().toString()));
        }
        parent->appendChild(element);
    }
    return {};
}

QString CFile::getParamFromElement(const QDomElement& element, QVariant* value)
{
    if (value == nullptr)
        return k_openError;
    const QDomNode first = element.firstChild();
    if (first.isText()) {
        *value = first.toText().data();
        return {};
    }
    if (first.isNull())
        return k_openError;

    QString error;
    ParamList list;
    QHash<QString, QVariant> entries; // by element name: every element of one name has the first one's value
    for (QDomNode child = first; !child.isNull() && error.isEmpty(); child = child.nextSibling()) {
        const QString name = child.nodeName();
        // Reading the first one again for each of its namesakes would double the time at every level.
        if (!entries.contains(name))
            error = getParamFromElement(element.firstChildElement(name), &entries[name]);
        if (error.isEmpty())
            list.insert(QString(name).remove(k_baseTagName, Qt::CaseSensitive), entries.value(name));
    }
    *value = list;
    return error;
}
