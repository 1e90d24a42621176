#pragma once

#include "file/CFile.h"

class CMemAPIWrapper;

/// The KTZ-JX's settings file: every knob's settings below <parameters version="1.0"><controlview>.
class CFileWrapper : public CFile
{
  public:
    CFileWrapper(QWidget* parent, CMemAPIWrapper* memory);

    /// Reads version 1.0 and every later one.
    [[nodiscard]] QString parseData(const QDomDocument& document) override;
    [[nodiscard]] ReadingNotes notesOn(const QDomDocument& document) const override;
    [[nodiscard]] QString createData(QDomDocument* document) override;
    [[nodiscard]] QString getDocType() const override;
    [[nodiscard]] QString getExtension() const override;

    [[nodiscard]] QString addControlViewElementToDoc(QDomDocument* document, QDomElement* parent) const;

    /// Replaces the memory's settings by what could be read, also when that is not all; values stay text.
    [[nodiscard]] QString parseControlViewElement(const QDomElement& root) const;

  private:
    CMemAPIWrapper* m_memory;
};
