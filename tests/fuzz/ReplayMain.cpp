// Runs a fuzz target over kept inputs when it is not linked to libFuzzer: all files in the folders
// named on the command line, and an empty input. A folder may be missing: a target may keep no
// input yet. Exit 1 when a file cannot be read; a finding ends the program.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    const std::uint8_t nothing = 0;
    LLVMFuzzerTestOneInput(&nothing, 0);
    std::error_code missing;
    for (int index = 1; index < argc; ++index) {
        for (const auto& input : std::filesystem::directory_iterator(argv[index], missing)) {
            std::fprintf(stderr, "%s\n", input.path().string().c_str()); // last: what crashed
            std::ifstream stream(input.path(), std::ios::binary);
            if (!stream) {
                return 1;
            }
            const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                   bytes.size());
        }
    }
    return 0;
}
