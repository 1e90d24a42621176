#include "tests/fuzz/FuzzTarget.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace
{
void replay(const std::filesystem::path& path)
{
    std::fprintf(stderr, "%s\n", path.c_str()); // before it runs: a failure ends the process
    std::ifstream file(path, std::ios::binary);
    require(file.is_open(), "every file of the corpus can be read");
    const std::vector<char> bytes(std::istreambuf_iterator<char>(file), {});
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}
} // namespace

// Runs a fuzz target once over every file of the folders that are given, without any fuzzer.
int main(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::directory_iterator folder(argv[i]);
        require(folder != std::filesystem::directory_iterator(), "no corpus is empty");
        for (const auto& file : folder)
            replay(file.path());
    }
    return argc > 1 ? EXIT_SUCCESS : EXIT_FAILURE;
}
