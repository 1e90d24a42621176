#pragma once

#include <QFlags>
#include <QStringList>

#include <chrono>
#include <optional>
#include <span>

/// What the program is told on its command line.
struct CtlArguments
{
    enum class Command
    {
        Ports,
        Show,
        Get,
        Set,
        Save,
        Load,
        Copy,
        Reset,
        Diff,
        Check,
        Watch,
        Help,
        Version
    };

    Command command = Command::Help;
    QStringList operands; ///< as many as the command takes
    QString port;
    std::optional<std::chrono::milliseconds> wait;
    std::optional<std::chrono::milliseconds> watchTime;
    int count = 0; ///< of lines to watch; 0 for no end
    bool json = false;
    bool verify = true;
    bool dryRun = false;
    bool force = false;
    bool quiet = false;
    bool verbose = false;
};

/// Reads the command line. Whatever it holds, the result can be used as it stands, or is one line that says what is
/// wrong with it.
class CCtlArguments
{
  public:
    enum class Option
    {
        Json = 1,
        Port = 2,
        Device = 4,   ///< --wait, --force, --verbose
        Writing = 8,  ///< --verify, --no-verify, --dry-run
        Watching = 16 ///< --count, --for
    };
    Q_DECLARE_FLAGS(Options, Option)

    struct Command
    {
        CtlArguments::Command command;
        const char* name;
        const char* operands; ///< in the help
        const char* help;
        int least; ///< operands
        int most;  ///< -1 for any number
        Options options;
    };

    struct Result
    {
        CtlArguments arguments;
        QString error; ///< empty when it was understood; one line
    };

    /// arguments   without the program's name.
    [[nodiscard]] static Result parse(const QStringList& arguments);

    [[nodiscard]] static QString help();
    [[nodiscard]] static std::span<const Command> commands();
};
