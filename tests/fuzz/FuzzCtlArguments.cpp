#include "ctl/CCtlArguments.h"
#include "ctl/KnobAddress.h"
#include "tests/fuzz/FuzzTarget.h"

// Input: the arguments of a command line, a line each.

namespace
{
void checkAddresses(const QString& text)
{
    KnobAddress address;
    if (KnobAddresses::parse(text, &address).isEmpty()) {
        require(address.firstKnob <= address.lastKnob && address.lastKnob < k_numOfKnobs, "an address names knobs");
        require(!address.settings.empty(), "an address names settings");
    }
    SettingsTable table;
    const bool isTaken = KnobAddresses::parseAssignment(text, &table).isEmpty();
    require(isTaken != (table == SettingsTable()), "an assignment sets something, or says what is wrong");
    for (const KnobSettingsRow& knob : table) {
        for (std::size_t setting = 0; setting < knob.size(); ++setting)
            require(knob[setting].value_or(0) >= 0 && knob[setting].value_or(0) <= k_settingParams[setting].highest,
                    "every value is in its range");
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QStringList arguments = QString::fromUtf8(bytes).split(u'\n');
    const CCtlArguments::Result result = CCtlArguments::parse(arguments);
    require(result.error.count(u'\n') == 0, "an error is one line");
    const CtlArguments& taken = result.arguments;
    require(!result.error.isEmpty() ||
                (taken.count >= 0 && taken.wait.value_or(std::chrono::milliseconds()).count() >= 0 &&
                 !taken.port.isEmpty()),
            "what was taken can be used");
    for (const CCtlArguments::Command& command : CCtlArguments::commands()) {
        if (result.error.isEmpty() && command.command == taken.command)
            require(taken.operands.size() >= command.least &&
                        (command.most < 0 || taken.operands.size() <= command.most),
                    "a command has its operands");
    }
    for (const QString& argument : arguments)
        checkAddresses(argument);
    return 0;
}
