#pragma once

#include <QStringView>

/// Decides whether a document may be given to the XML parser, which takes minutes and gigabytes for some that are small
/// on disk: deeply nested elements, many attributes, entities that grow when they are put in.
///
/// One pass over the text, in time proportional to its length, without allocating. It sees every tag that a parser sees
/// in a well-formed document, and a parser stops where a document ceases to be well-formed.
class CDocumentGuard
{
  public:
    /// false: an internal DTD subset, which is where entities are declared; more of anything than the limits allow;
    /// a tag or comment without an end.
    [[nodiscard]] static bool accepts(QStringView document);

    /// The line, counted from 1, that the document is refused for; 0 when it is accepted.
    [[nodiscard]] static int refusedLine(QStringView document);

    // A file of ours has 2 KB, 101 tags, 4 levels and 1 attribute.
    static constexpr qint64 k_sizeLimit = qint64{1024} * 1024; ///< bytes of a file; checked by who reads it
    static constexpr int k_tagLimit = 2000;                    ///< tags, comments and instructions
    static constexpr int k_depthLimit = 32;                    ///< elements within elements
    static constexpr int k_attributeLimit = 100;               ///< in the whole document

  private:
    explicit CDocumentGuard(QStringView document);

    [[nodiscard]] bool scan();
    [[nodiscard]] bool scanMarkup();
    [[nodiscard]] bool scanTag();

    /// Moves behind the text if it stands here, or behind its next place. false: it does not; nothing moved.
    [[nodiscard]] bool skip(QStringView text);
    [[nodiscard]] bool skipPast(QStringView text);

    QStringView m_document;
    qsizetype m_position = 0;
    int m_tags = 0;
    int m_depth = 0;
    int m_attributes = 0;
};
