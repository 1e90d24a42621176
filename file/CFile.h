#pragma once

#include "device/DeviceParams.h"
#include "file/ReadingNotes.h"

#include <QString>

class CMemAPI;
class QDomDocument;
class QDomElement;
class QWidget;

/// A settings file on disk: its dialogs, its bytes, and the conversion between a parameter list and XML elements.
///
/// Threads  GUI thread only.
/// Owns     nothing; the parent (of every message box) and the memory are borrowed and may be null.
/// Failure  reading and writing give a message for the user, empty for success; the dialogs show it and give false.
///          A failed write leaves the old file as it was, with one exception; see createData().
/// Reading  takes bounded time and memory whatever the file is: see CDocumentGuard.
class CFile
{
  public:
    CFile(QWidget* parent, CMemAPI* memory);
    virtual ~CFile() = default;
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    /// Starts in the user's documents folder, made if missing; without one the path stays empty.
    void initialize();

    /// The last file opened or saved, or the folder in which the first dialog starts.
    [[nodiscard]] const QString& currentPath() const;

    /// Offers to save unsaved changes. true: the caller may go on, they are saved or given up.
    [[nodiscard]] bool checkSaveFile();

    /// Asks about unsaved changes and for a file, and opens that. false: cancelled, or failed and told so.
    bool openFile();

    /// Opens a file. What it does not give, because it lacks it or has a fault, keeps its value in the memory, whose
    /// observers are told in any case. A failure leaves the changed flag as it was.
    /// false: an empty name, or failed and told so.
    bool openFile(const QString& name);

    /// Saves to the current path, or asks for a name when that is no existing file.
    bool saveFile();

    /// Asks for a name, also before it overwrites, and saves. A name that does not end in the file filter's suffix,
    /// in either case, gets it.
    bool saveAsFile();

    /// notes   when not null, gets why the file was refused, or what of it was not taken as it stands.
    [[nodiscard]] QString read(const QString& name, ReadingNotes* notes = nullptr);
    [[nodiscard]] QString write(const QString& name);

    /// Adds one child element to the parent for each entry; maps become elements within elements.
    [[nodiscard]] static QString setParamToElement(const ParamList& list, QDomDocument* document, QDomElement* parent);

    /// The element's text, or the map of its children; of a faulty element the map up to the fault.
    [[nodiscard]] static QString getParamFromElement(const QDomElement& element, QVariant* value);

    /// Takes over what a document of the right type says.
    [[nodiscard]] virtual QString parseData(const QDomDocument& document) = 0;

    /// What parseData() refuses of a document, ignores or takes otherwise, in the order of its lines.
    [[nodiscard]] virtual ReadingNotes notesOn(const QDomDocument& document) const;

    /// Fills an empty document. A failure leaves an empty file behind, the one case in which the old one is lost.
    [[nodiscard]] virtual QString createData(QDomDocument* document) = 0;

    /// The document type's name, written and required.
    [[nodiscard]] virtual QString getDocType() const = 0;

    /// The dialogs' file filter: a description with one pattern in brackets.
    [[nodiscard]] virtual QString getExtension() const = 0;

  private:
    [[nodiscard]] QString readDocument(const QString& name, ReadingNotes& notes, bool isNoteWanted);

    /// Empty: cancelled.
    [[nodiscard]] QString askForSaveName() const;
    [[nodiscard]] bool writeAndTell(const QString& name);

    QWidget* m_parent;
    QString m_currentPath;
    CMemAPI* m_memory;
};
