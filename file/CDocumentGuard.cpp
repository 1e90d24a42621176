#include "file/CDocumentGuard.h"

#include <algorithm>

bool CDocumentGuard::accepts(QStringView document)
{
    return refusedLine(document) == 0;
}

int CDocumentGuard::refusedLine(QStringView document)
{
    CDocumentGuard guard(document);
    if (guard.scan())
        return 0;
    // It stopped behind the tag's beginning, or at the document's end.
    const qsizetype tag = document.first(guard.m_position).lastIndexOf(u'<');
    return int(document.first(std::max<qsizetype>(tag, 0)).count(u'\n')) + 1;
}

CDocumentGuard::CDocumentGuard(QStringView document) : m_document(document) {}

bool CDocumentGuard::scan()
{
    while (skipPast(u"<")) {
        if (++m_tags > k_tagLimit || !scanMarkup())
            return false;
    }
    return true;
}

bool CDocumentGuard::scanMarkup()
{
    if (skip(u"!--"))
        return skipPast(u"-->");
    if (skip(u"![CDATA["))
        return skipPast(u"]]>");
    if (skip(u"?"))
        return skipPast(u"?>");
    if (skip(u"/")) {
        --m_depth;
        return skipPast(u">");
    }
    const bool isDeclaration = skip(u"!");
    if (!scanTag())
        return false;
    const bool isEmpty = m_document.at(m_position - 2) == u'/';
    if (!isDeclaration && !isEmpty)
        ++m_depth;
    return m_depth <= k_depthLimit;
}

bool CDocumentGuard::scanTag()
{
    QChar quote;
    for (; m_position < m_document.size(); ++m_position) {
        const QChar c = m_document.at(m_position);
        if (!quote.isNull()) {
            if (c == quote)
                quote = QChar();
        } else if (c == u'"' || c == u'\'') {
            quote = c;
        } else if (c == u'[' || (c == u'=' && ++m_attributes > k_attributeLimit)) {
            return false;
        } else if (c == u'>') {
            ++m_position;
            return true;
        }
    }
    return false;
}

bool CDocumentGuard::skip(QStringView text)
{
    if (!m_document.sliced(m_position).startsWith(text))
        return false;
    m_position += text.size();
    return true;
}

bool CDocumentGuard::skipPast(QStringView text)
{
    const qsizetype found = m_document.indexOf(text, m_position);
    if (found < 0)
        return false;
    m_position = found + text.size();
    return true;
}
