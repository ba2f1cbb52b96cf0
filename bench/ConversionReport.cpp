#include "bench/ConversionReport.h"

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "bench/ReportTable.h"
#include "bench/Samples.h"

#ifdef QUORVEL_HAVE_LIBYUV
#include <libyuv.h>
#endif

namespace bench {
namespace {

constexpr int kRounds = 31;

using theora::ColorPath;

struct NoiseFrame {
    std::vector<std::uint8_t> y, u, v, rgb;
    theora::TheoraPicture picture; ///< of y, u and v

    explicit NoiseFrame(FrameSize size) {
        const auto pixels =
            static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
        y.resize(pixels);
        u.resize(pixels / 4);
        v.resize(pixels / 4);
        rgb.resize(pixels * 3);
        std::mt19937 random(1);
        for (auto* plane : {&y, &u, &v}) {
            for (auto& sample : *plane) {
                sample = static_cast<std::uint8_t>(random());
            }
        }
        const int w = size.width;
        const int h = size.height;
        picture.planes = {{{y.data(), w, w, h},
                           {u.data(), w / 2, w / 2, h / 2},
                           {v.data(), w / 2, w / 2, h / 2}}};
    }

    void convert(ColorPath path) {
        theora::convertPicture(picture, theora::TheoraOutputMode::TH_RGB, rgb.data(),
                               picture.planes[0].width, picture.planes[0].height, path);
    }
};

template <typename Work>
double timeOf(Work&& work) {
    const auto start = Clock::now();
    work();
    return millisecondsSince(start);
}

} // namespace

double conversionTime(FrameSize size, ColorPath path) {
    NoiseFrame frame(size);
    Samples time;
    for (int i = 0; i < kRounds; ++i) {
        time.add(timeOf([&] { frame.convert(path); }));
    }
    return time.median();
}

void reportConversion(FrameSize size) {
    NoiseFrame frame(size);
    Samples fast;
    Samples portable;
    Samples peer;
    for (int i = 0; i < kRounds;
         ++i) { // in turns: if the machine slows down, it affects all of them
        fast.add(timeOf([&] { frame.convert(ColorPath::fastest); }));
        portable.add(timeOf([&] { frame.convert(ColorPath::portable); }));
#ifdef QUORVEL_HAVE_LIBYUV
        const int w = size.width;
        peer.add(timeOf([&] {
            libyuv::I420ToRAW(frame.y.data(), w, frame.u.data(), w / 2, frame.v.data(), w / 2,
                              frame.rgb.data(), w * 3, w, size.height);
        }));
#endif
    }
    const std::string plain = number(portable.median(), "ms");
    if (peer.count() == 0) {
        row("conversion to RGB", number(fast.median(), "ms; without AVX2 ") + plain,
            "no libyuv here", "<= 2.1 x libyuv");
        return;
    }
    row("conversion to RGB",
        number(fast.median(), "ms, ") + number(fast.median() / peer.median(), "x; without AVX2 ") +
            plain + ", " + number(portable.median() / peer.median(), "x"),
        number(peer.median(), "ms (libyuv)"), "<= 2.1 x; without AVX2 <= 4.5 x");
}

} // namespace bench
