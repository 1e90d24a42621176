#include "tests/support/CTestEntry.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace
{
constexpr char k_nameVariable[] = "KTZ_TEST";

int tellNames(const char* program)
{
    std::fprintf(stderr, "usage: %s CLASS [ARGUMENT...]\n", program);
    for (const CTestEntry* entry = CTestEntry::first(); entry != nullptr; entry = entry->next())
        std::fprintf(stderr, "    %s\n", entry->name());
    return EXIT_FAILURE;
}
} // namespace

/// Runs the class that the first argument names; it gets the other arguments. The name goes into the environment, so
/// that the program is the same test when the test starts it once more, with whatever arguments.
int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet(k_nameVariable)) {
        if (argc < 2)
            return tellNames(argv[0]);
        qputenv(k_nameVariable, argv[1]);
        argv[1] = argv[0];
        ++argv;
        --argc;
    }
    const std::string name = std::getenv(k_nameVariable);
    for (const CTestEntry* entry = CTestEntry::first(); entry != nullptr; entry = entry->next()) {
        if (entry->name() == name)
            return entry->run(argc, argv);
    }
    return tellNames(argv[0]);
}
