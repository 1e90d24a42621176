#include "simulator/console/CCommandParser.h"
#include "simulator/console/CDeviceArguments.h"
#include "simulator/console/CDeviceConsole.h"
#include "simulator/console/CDeviceRunner.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/transports/CPolledTransport.h"
#include "tests/fuzz/CFuzzInput.h"
#include "tests/fuzz/FuzzTarget.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>

// Input: the number of arguments (low three bits), each argument with a 0 behind it, and what is typed.

namespace
{
bool isOneLine(const QString& text)
{
    return std::ranges::all_of(text, [](QChar c) { return c >= u' ' && c <= u'~'; });
}

QStringList takeArguments(CFuzzInput& input)
{
    QStringList arguments;
    for (int count = input.byte() % 8; count > 0; --count) {
        QByteArray argument;
        while (const int byte = input.byte())
            argument += static_cast<char>(byte);
        arguments.append(QString::fromLocal8Bit(argument));
    }
    return arguments;
}

void checkArguments(const QStringList& arguments)
{
    const CDeviceArguments::Result result = CDeviceArguments::parse(arguments);
    const bool isRaw = result.arguments.port == DeviceArguments::Port::Raw;
    require(isOneLine(result.error), "an error of the command line is one printable line");
    if (!result.error.isEmpty()) {
        require(!arguments.isEmpty(), "no arguments are none to complain of");
        return;
    }
    const QByteArray& name = result.arguments.rawName;
    require(isRaw == name.startsWith("hw:"), "a raw device and nothing else has a name");
    require(!isRaw || arguments.join(u' ').contains(QString::fromUtf8(name)), "the name is one that was given");
    require(!isRaw || !result.arguments.panel, "a raw device has no panel");
    require(result.arguments.cables >= 1 && result.arguments.cables <= 3, "there are one to three cables");
}

/// The command as its user would type it, for those that take numbers or bytes.
QByteArray typed(const DeviceCommand& command)
{
    if (command.action == DeviceCommand::Action::Send)
        return "send " + command.bytes.toHex(' ');
    const QByteArray knob = QByteArray::number(command.knob) + ' ';
    if (command.action == DeviceCommand::Action::Turn)
        return "turn " + knob + QByteArray::number(command.value);
    const auto* setting = std::ranges::find(k_deviceSettings, command.setting, &DeviceSetting::member);
    return "set " + knob + setting->command + ' ' + QByteArray::number(command.value);
}

void checkCommand(const QByteArray& line)
{
    const auto [command, error] = CCommandParser::parse(line);
    const bool isTurn = command.action == DeviceCommand::Action::Turn;
    const bool isSet = command.action == DeviceCommand::Action::Set;
    require(isOneLine(error), "an error of a command is one printable line");
    require(error.isEmpty() || command.action == DeviceCommand::Action::Nothing, "a wrong line asks for nothing");
    require(isSet == (command.setting != nullptr), "a setting belongs to set alone");
    require(command.knob >= 0 && command.knob < CSimulatedDevice::k_knobs, "a knob is one of the device's");
    int last = 127;
    if (isSet && command.setting == &KnobSettings::channel)
        last = 15;
    if (isSet && command.setting == &KnobSettings::led)
        last = 3;
    require(command.value >= 0 && command.value <= last, "a value is in its range");
    require(isTurn || isSet || (command.knob == 0 && command.value == 0), "numbers belong to turn and set alone");
    const bool isSend = command.action == DeviceCommand::Action::Send;
    require(isSend == !command.bytes.isEmpty(), "bytes belong to send alone");
    if (!isTurn && !isSet && !isSend)
        return;
    const DeviceCommand again = CCommandParser::parse(typed(command)).command;
    require(again.action == command.action && again.knob == command.knob && again.setting == command.setting &&
                again.value == command.value && again.bytes == command.bytes,
            "a command typed plainly means the same");
}

/// MIDI without anybody at the other end.
class CNoTransport : public CPolledTransport
{
  public:
    [[nodiscard]] QString open(CSimulatedDevice& device) override
    {
        device.plug(*this);
        return {};
    }

    [[nodiscard]] QString description() const override
    {
        return QStringLiteral("nothing");
    }

    [[nodiscard]] std::vector<pollfd> descriptors() const override
    {
        return {};
    }

    [[nodiscard]] bool process() override
    {
        return true;
    }

    void deviceSent(CSimulatedDevice& /*device*/, const QByteArray& packet) override
    {
        sent += packet;
    }

    void deviceUnplugged(CSimulatedDevice& /*device*/) override {}

    QByteArray sent;
};

/// A device that is told things, one way or another.
struct Device
{
    Device()
    {
        static_cast<void>(transport.open(device)); // never fails
    }

    /// What it holds, in words, and everything that it sent.
    [[nodiscard]] QByteArray state()
    {
        return CDeviceConsole(device).execute("show").join('\n').toLatin1() + transport.sent;
    }

    CNoTransport transport; // outlives the device
    CSimulatedDevice device;
};

/// Types the bytes at the whole program but for its MIDI; the result is what it prints.
QByteArray run(Device& told, const QByteArray& bytes)
{
    const int input = memfd_create("typed", MFD_CLOEXEC);
    require(write(input, bytes.constData(), static_cast<std::size_t>(bytes.size())) == bytes.size() &&
                lseek(input, 0, SEEK_SET) == 0,
            "memory takes the bytes");
    char* text = nullptr;
    std::size_t length = 0;
    std::FILE* const output = open_memstream(&text, &length);
    require(CDeviceRunner(told.device, told.transport, input, output, false).run(), "the device runs to its end");
    std::fclose(output);
    close(input);
    const QByteArray printed(text, static_cast<qsizetype>(length));
    std::free(text);
    return printed;
}

/// The same, a line at a time; the result is the number of lines that it answers.
qsizetype tell(Device& told, const QList<QByteArray>& lines)
{
    CDeviceConsole console(told.device);
    qsizetype answered = 0;
    for (const QByteArray& line : lines) {
        if (console.wantsToQuit())
            break;
        answered += console.execute(line).size();
        answered += console.news().size();
    }
    return answered;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CFuzzInput input(data, size);
    checkArguments(takeArguments(input));

    // Shorter than the line that the program takes in pieces.
    const CFuzzInput::Bytes rest = input.bytes(4000);
    const QByteArray bytes(reinterpret_cast<const char*>(rest.data()), static_cast<qsizetype>(rest.size()));
    const QList<QByteArray> lines = bytes.split('\n');
    for (const QByteArray& line : lines)
        checkCommand(line);

    Device typedAt;
    Device told;
    QByteArray printed = run(typedAt, bytes);
    const qsizetype answered = tell(told, lines);
    require(typedAt.state() == told.state(), "typed bytes and lines do the same");
    require(printed.count('\n') == answered, "typed bytes and lines are answered alike");
    require(isOneLine(QString::fromUtf8(printed.replace('\n', ' '))), "all that is printed is printable");
    return 0;
}
