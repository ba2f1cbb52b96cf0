// Stands in for the converter and its probe. What it does is the name of the file that it is given:
// "hangs.mp4" hangs, "floods.mp4" prints without end, "babbles.mp4" too but slowly; see the tables.
// Any other file "converts" to the clip that lies beside it as "good.ogv".
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

namespace {

using Arguments = std::vector<std::string>;

constexpr const char* kFacts = "streams.stream.0.index=0\n"
                               "streams.stream.0.codec_name=\"h264\"\n"
                               "streams.stream.0.codec_type=\"video\"\n"
                               "streams.stream.0.width=64\n"
                               "streams.stream.0.height=48\n"
                               "streams.stream.0.r_frame_rate=\"25/1\"\n"
                               "streams.stream.0.avg_frame_rate=\"25/1\"\n"
                               "streams.stream.0.duration=\"0.4\"\n"
                               "format.format_name=\"mov,mp4\"\n";

[[noreturn]] void hang() {
    for (;;) {
        std::this_thread::sleep_for(std::chrono::hours(1));
    }
}

[[noreturn]] void flood(std::ostream& stream, const std::string& line) {
    std::string text;
    while (text.size() < 65536) {
        text += line;
    }
    for (;;) {
        stream << text;
    }
}

/// Always busy, and never too much.
[[noreturn]] void babble() {
    for (;;) {
        std::cout << "nonsense " << std::flush;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

int fail(const std::string& message, int code) {
    std::cerr << message << std::endl;
    return code;
}

std::string behind(const Arguments& arguments, const std::string& option) {
    for (std::size_t i = 0; i + 1 < arguments.size(); ++i) {
        if (arguments[i] == option) {
            return arguments[i + 1];
        }
    }
    return {};
}

std::string path(const std::string& url) {
    return url.substr(url.find(':') + 1);
}

int convert(const std::string& source, const std::string& target, const char* clip) {
    std::ifstream good(source.substr(0, source.find_last_of("/\\") + 1) + clip, std::ios::binary);
    std::ofstream out(target, std::ios::binary);
    out << good.rdbuf();
    std::cout << "frame=10\nout_time_us=400000\ntotal_size=1000\nprogress=end\n";
    return 0;
}

int probe(const std::string& name) {
    if (name == "probe hangs") {
        hang();
    }
    if (name == "probe floods") {
        flood(std::cout, "streams.stream.0.tags.x=\"y\"\n");
    }
    if (name == "probe nonsense") {
        std::cout << std::string(100000, '\xFF') << "\nstreams.stream.0.width=-1=\"\n\0";
        return 0;
    }
    if (name == "probe fails") {
        return fail("Invalid data found when processing input", 1);
    }
    std::cout << kFacts;
    return 0;
}

int run(const std::string& name, const std::string& source, const std::string& target) {
    std::cout << "frame=5\nout_time_us=200000\ntotal_size=500\nprogress=continue\n" << std::flush;
    std::ofstream(target, std::ios::binary) << "half a clip";
    if (name == "hangs") {
        hang();
    }
    if (name == "floods") {
        flood(std::cout, "nonsense ");
    }
    if (name == "babbles") {
        babble();
    }
    if (name == "complains") {
        flood(std::cerr, "error\n");
    }
    if (name == "grows") {
        flood(std::cout, "total_size=99999999999\n");
    }
    if (name == "dies") {
        std::cout << std::flush;
        std::_Exit(9);
    }
    if (name == "disk full") {
        return fail("av_interleaved_write_frame(): No space left on device", 1);
    }
    if (name == "damaged") {
        return fail("corrupt input packet in stream 0", 1);
    }
    if (name == "vanishes") {
        std::remove(source.c_str());
        return fail("Input/output error", 1);
    }
    if (name == "nothing") {
        return 0;
    }
    return convert(source, target, name == "short" ? "short.ogv" : "good.ogv");
}

/// Of what a conversion has made.
int listPackets(const std::string& clip) {
    std::string start(4, '\0');
    std::ifstream(clip, std::ios::binary).read(start.data(), 4);
    for (int frame = 0; frame < (start == "OggS" ? 10 : 0); ++frame) {
        std::cout << frame * 0.04 << ",0.04,__\n";
    }
    return 0;
}

} // namespace

int main(int count, char** values) {
    const Arguments arguments(values, values + count);
    const std::string source = path(behind(arguments, "-i"));
    const std::size_t start = source.find_last_of("/\\") + 1;
    const std::string name = source.substr(start, source.rfind('.') - start);
    const auto has = [&](const char* option) {
        return std::find(arguments.begin(), arguments.end(), option) != arguments.end();
    };
    return has("-show_streams")   ? probe(name)
           : has("-show_entries") ? listPackets(source)
                                  : run(name, source, path(arguments.back()));
}
