#pragma once

#include <QByteArray>
#include <QCommandLineParser>
#include <QString>

#include <optional>
#include <vector>

/// The command line of the editor and the demo, read as GNU programs read theirs: options before and behind the file,
/// "--" before a file whose name begins with "-". The toolkit's own options (-style, -platform) may stand among them.
///
/// Needs neither a display nor an application object. Threads: the main thread, before there is another.
class CCommandLine
{
  public:
    /// name     of the program; its messages begin with it.
    /// purpose  what it is, in one sentence for --help.
    CCommandLine(const QString& name, const QString& purpose);

    /// An option --name with a value, of this program alone. Before parse().
    void addOption(const QString& name, const QString& valueName, const QString& description);

    /// argc and argv are main()'s. A status means that the process ends with it: 0 after --help or --version, 1 where
    /// their text could not be written, 2 after one line on standard error that says what is wrong.
    [[nodiscard]] std::optional<int> parse(int argc, char** argv);

    /// Whether an option was given.
    [[nodiscard]] bool isSet(const QString& name) const;

    /// What stands behind an option, byte by byte; empty if it was not given.
    [[nodiscard]] QByteArray valueOf(const QString& name) const;

    /// Whether a settings file was given.
    [[nodiscard]] bool hasFile() const;

    /// What is left for runEditor(): the program, options of the toolkit, the file if there is one. Borrowed from this
    /// object; the toolkit takes its own options out of the list.
    [[nodiscard]] int argc() const;
    [[nodiscard]] char** argv();

  private:
    [[nodiscard]] QString mistake() const;
    void keepForEditor(const QString& program);

    QString m_name;
    QCommandLineParser m_parser;
    std::vector<QByteArray> m_left;
    std::vector<char*> m_argv; ///< points into m_left; null at the end
};
