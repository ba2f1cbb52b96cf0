// Runs a fuzz target over kept inputs when it is not linked to libFuzzer: all files in the folders
// named on the command line, each as it is and in damaged copies, the same ones in every run, and
// an empty input. A folder may be missing: a target may keep no input yet. Exit 1 when a file
// cannot be read; a finding ends the program.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <system_error>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr unsigned kDamagedCopies = 120;

void feed(const Bytes& bytes) {
    const std::uint8_t nothing = 0;
    LLVMFuzzerTestOneInput(bytes.empty() ? &nothing : bytes.data(), bytes.size());
}

/// Up to four bytes changed, every third copy cut as well.
Bytes damaged(Bytes bytes, unsigned copy) {
    std::mt19937 random(copy);
    if (copy % 3 == 0) {
        bytes.resize(random() % (bytes.size() + 1));
    }
    for (auto changes = 1 + random() % 4; changes > 0 && !bytes.empty(); --changes) {
        bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random());
    }
    return bytes;
}

} // namespace

int main(int argc, char** argv) {
    feed({});
    std::error_code missing;
    for (int index = 1; index < argc; ++index) {
        for (const auto& input : std::filesystem::directory_iterator(argv[index], missing)) {
            std::fprintf(stderr, "%s\n", input.path().string().c_str()); // last: what crashed
            std::ifstream stream(input.path(), std::ios::binary);
            if (!stream) {
                return 1;
            }
            const Bytes bytes{std::istreambuf_iterator<char>(stream), {}};
            feed(bytes);
            for (unsigned copy = 0; copy < kDamagedCopies; ++copy) {
                feed(damaged(bytes, copy));
            }
        }
    }
    return 0;
}
