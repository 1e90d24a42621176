#include "file/CFile.h"

#include "app/common/Constants.h"
#include "file/CDocumentGuard.h"
#include "file/RegularFile.h"

#include <QDir>
#include <QDomDocument>
#include <QFileInfo>
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

// For a file that could not be read.
QString whyUnreadable(const QString& name)
{
    const QFileInfo info(name);
    if (info.isDir())
        return QStringLiteral("is a folder");
    if (!info.exists())
        return QStringLiteral("does not exist");
    if (!info.isFile())
        return QStringLiteral("is no regular file");
    if (!info.isReadable())
        return QStringLiteral("may not be read");
    if (info.size() > CDocumentGuard::k_sizeLimit)
        return QStringLiteral("is larger than any settings file");
    return QStringLiteral("cannot be read");
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

QString CFile::read(const QString& name, ReadingNotes* notes)
{
    ReadingNotes found;
    QString error = readDocument(name, found, notes != nullptr);
    if (notes != nullptr)
        *notes = found;
    return error;
}

QString CFile::readDocument(const QString& name, ReadingNotes& notes, bool isNoteWanted)
{
    const std::optional<QByteArray> bytes = readRegularFile(name, CDocumentGuard::k_sizeLimit);
    if (!bytes) {
        notes.append({0, whyUnreadable(name)});
        return k_openError;
    }
    // The parser gets the very text that was looked at, whatever encoding the document claims to have.
    const QString text = decoded(*bytes);
    QDomDocument document;
    if (bytes->isEmpty()) {
        notes.append({0, QStringLiteral("is empty")});
        return k_openError;
    }
    if (text.isNull()) {
        notes.append({0, QStringLiteral("the bytes are no text in the encoding that they begin with")});
        return k_openError;
    }
    if (const int line = CDocumentGuard::refusedLine(text); line != 0) {
        notes.append({line, QStringLiteral("a tag without an end, or more than a settings file ever holds")});
        return k_openError;
    }
    QString fault;
    int line = 0;
    if (!document.setContent(text, true, &fault, &line)) {
        notes.append({line, QStringLiteral("no XML: ") + fault.remove(u'.')});
        return k_openError;
    }
    if (document.doctype().name() != getDocType()) {
        notes.append({0, QStringLiteral("no settings file: the document type is not ") + getDocType()});
        return k_openError;
    }
    if (isNoteWanted)
        notes += notesOn(document);
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

ReadingNotes CFile::notesOn(const QDomDocument& /*document*/) const
{
    return {};
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
