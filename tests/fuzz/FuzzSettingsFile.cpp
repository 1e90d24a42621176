#include "app/common/Constants.h"
#include "file/CDocumentGuard.h"
#include "file/CFileWrapper.h"
#include "tests/file/SettingsFixture.h"
#include "tests/fuzz/FuzzTarget.h"

#include <QDomDocument>

// Input: the bytes of a file.

namespace
{
/// What a parsed document is made of.
struct Census
{
    int nodes = 0;
    int depth = 0; ///< of elements that hold something
    int attributes = 0;

    void count(const QDomNode& parent, int level)
    {
        for (QDomNode node = parent.firstChild(); !node.isNull(); node = node.nextSibling()) {
            nodes += node.isText() && !node.isCDATASection() ? 0 : 1;
            attributes += static_cast<int>(node.attributes().size());
            depth = std::max(depth, node.isElement() && node.hasChildNodes() ? level + 1 : 0);
            count(node, level + 1);
        }
    }
};

/// What the guard lets through is small in every respect once it is parsed.
void checkGuard(const QByteArray& bytes)
{
    const QString text = QString::fromUtf8(bytes);
    QDomDocument document;
    if (!CDocumentGuard::accepts(text) || !document.setContent(text, true))
        return;
    Census census;
    census.count(document, 0);
    require(census.nodes <= CDocumentGuard::k_tagLimit, "the guard sees every tag");
    require(census.depth <= CDocumentGuard::k_depthLimit, "the guard sees how deep elements are nested");
    require(census.attributes <= CDocumentGuard::k_attributeLimit, "the guard sees every attribute");
    require(document.doctype().internalSubset().isEmpty() && document.doctype().entities().isEmpty(),
            "the guard sees an internal subset");
}

/// The settings of one memory, none at first, and the files that they come from and go to.
class CSettings
{
  public:
    CSettings()
    {
        m_memory.initialize();
    }

    /// false: the file was refused.
    bool read(const QString& name)
    {
        const QString error = m_file.read(name);
        require(error.isEmpty() || error == k_openError, "a file is read, or refused in the words for that");
        require(settingsOnly(list()) == list(), "nothing but settings enters the memory");
        for (int knob = 0; knob < k_numOfKnobs; ++knob) {
            for (const SettingParam& setting : k_settingParams) {
                const int value = m_memory.getParam(setting.category + knob);
                require(value >= 0 && value <= setting.highest, "every setting is in its range");
            }
        }
        return error.isEmpty();
    }

    void write(const QString& name)
    {
        require(m_file.write(name).isEmpty(), "what is in the memory can be written");
    }

    void copyOntoOthers(int knob)
    {
        m_memory.copyParamListFromKnobValueList(knob);
        for (int other = 0; other < k_numOfKnobs; ++other)
            m_memory.pasteParamListToKnobValueList(other);
    }

    [[nodiscard]] ParamList list() const
    {
        return m_memory.getParamList();
    }

  private:
    CMemAPIWrapper m_memory;
    CFileWrapper m_file{nullptr, &m_memory};
};

void make(const QString& name, const QByteArray& bytes)
{
    QFile file(name);
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "the folder takes files");
}

void checkSaving(CSettings& settings, const QString& name)
{
    settings.write(name);
    const ParamList saved = settingsOnly(asText(settings.list()));
    CSettings again;
    require(again.read(name) != saved.isEmpty(), "what was saved can be opened, unless there was nothing to save");
    require(again.list() == saved, "what was saved comes back");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const QTemporaryDir folder;
    const QString given = folder.filePath(QStringLiteral("given.CJX"));
    const QString saved = folder.filePath(QStringLiteral("saved.CJX"));
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    checkGuard(bytes);

    make(given, bytes);
    CSettings settings;
    settings.read(given); // a refused file may leave its first settings behind, which are as good as any
    checkSaving(settings, saved);
    settings.copyOntoOthers(0);
    checkSaving(settings, saved);
    return 0;
}
