#pragma once

#include <QProcess>

/// A start of the editor as a process of its own: this test program again, with a window to be asked and told.
///
///     int main(int argc, char** argv) { if (CEditorProcess::isEditor()) return CEditorProcess::run(argc, argv); ...
class CEditorProcess : public QProcess
{
  public:
    enum class Hold
    {
        Nowhere,
        BeforeTheWindow, ///< once it is known whose editor this is
        AtTheEnd,        ///< when the window has gone
    };

    CEditorProcess(const QString& bus, const QString& file = {}, Hold hold = Hold::Nowhere);
    /// With another environment, or a name of bytes that are no text.
    CEditorProcess(const QProcessEnvironment& environment, const QByteArray& file, const QString& folder = {});
    ~CEditorProcess() override;

    /// The environment of an editor on a bus; without any for an empty address.
    [[nodiscard]] static QProcessEnvironment environmentFor(const QString& bus);

    /// Whether it went on to be an editor: it says so before it makes its window. false: it has ended without.
    [[nodiscard]] bool becameEditor();

    /// Waits for its end. The exit status, -1 if it was none or anything was said before.
    [[nodiscard]] int silentEnd();

    /// Ends what it was told to hold.
    void go();

    /// What the editor says to a command; see EditorCommands in the source. Empty if it has ended.
    [[nodiscard]] QByteArray ask(const QByteArray& command);

    [[nodiscard]] static bool isEditor();
    [[nodiscard]] static int run(int argc, char** argv);

  private:
    [[nodiscard]] QByteArray nextLine();
};
