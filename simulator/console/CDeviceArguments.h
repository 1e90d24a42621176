#pragma once

#include <QStringList>

/// The command line of the command-line device.
struct DeviceArguments
{
    enum class Port
    {
        Alsa,
        Raw
    };

    Port port = Port::Alsa;
    QByteArray rawName; ///< of Raw, such as "hw:0,0,2"
    int cables = 3;     ///< of Alsa
    bool panel = false; ///< with Alsa alone
    bool keepRunning = false;
    bool help = false;
    bool version = false;
};

/// Reads them. Whatever they hold, the result can be used as it stands, or is one line that says what is wrong.
class CDeviceArguments
{
  public:
    struct Result
    {
        DeviceArguments arguments;
        QString error; ///< empty when they were understood; printable, without a line break
    };

    /// arguments   without the program's name.
    [[nodiscard]] static Result parse(const QStringList& arguments);

    /// What the program does and takes, for the user. There has to be an application object.
    [[nodiscard]] static QString help();
};
