// Stands for ffmpeg and ffprobe in tests: takes their arguments, and "converts" a file that is an
// Ogg Theora clip of two frames already by copying it. The file's name says what goes wrong:
//   notes  has no picture
//   stops  ends with 3 and a message
//   hangs  comes to 46 percent and never ends
//   floods writes to both pipes without end
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr const char* kFacts = R"(streams.stream.0.index=0
streams.stream.0.codec_name="h264"
streams.stream.0.codec_type="video"
streams.stream.0.width=64
streams.stream.0.height=48
streams.stream.0.avg_frame_rate="25/1"
streams.stream.0.r_frame_rate="25/1"
streams.stream.0.duration="0.080000"
format.format_name="mov"
format.duration="0.080000"
)";

int probe(const std::vector<std::string>& arguments, const std::string& source) {
    const bool wantsPackets =
        std::find(arguments.begin(), arguments.end(), "-show_entries") != arguments.end();
    if (wantsPackets) {
        std::cout << "0.0,0.04,K_\n0.04,0.04,__\n";
    } else if (source.find("notes") == std::string::npos) {
        std::cout << kFacts;
    }
    return 0;
}

int convert(const std::string& source, const std::string& target) {
    if (source.find("stops") != std::string::npos) {
        std::cerr << "out of order\n";
        return 3;
    }
    std::cout << "frame=1\nout_time_us=36800\nprogress=continue\n" << std::flush;
    while (source.find("hangs") != std::string::npos) {
        std::this_thread::sleep_for(std::chrono::hours(1));
    }
    const std::string block(1U << 16U, 'x');
    while (source.find("floods") != std::string::npos) {
        std::cout << block;
        std::cerr << block;
    }
    std::filesystem::copy_file(source, target, std::filesystem::copy_options::overwrite_existing);
    std::cout << "frame=2\nout_time_us=80000\nprogress=end\n";
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto input = std::find(arguments.begin(), arguments.end(), "-i");
    if (input == arguments.end() || input + 1 == arguments.end()) {
        return 2;
    }
    const std::string kPrefix = "file:";
    const std::string source = (input + 1)->substr(kPrefix.size());
    if (std::find(arguments.begin(), arguments.end(), "-progress") == arguments.end()) {
        return probe(arguments, source);
    }
    return convert(source, arguments.back().substr(kPrefix.size()));
}
