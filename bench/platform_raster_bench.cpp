// The canvas operations of a 33 ms video repaint, with a 1920x1088 picture shown at 1280x720.
// Budget of the whole repaint: 6 ms; of the scaler: 2 ms. And a picture in a window that fills a
// screen, and a map of nodes and curves.
#include <cstdint>
#include <random>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include "platform/Path.h"
#include "platform/raster/RasterCanvas.h"

namespace {

using platform::Bitmap;
using platform::Rect;
using platform::Size;

constexpr Size kPicture{1920, 1088};
constexpr Size kWindow{1280, 856};
constexpr Rect kVideo{0, 36, 1280, 756};

class MemoryFrame final : public platform::FrameBuffer {
public:
    explicit MemoryFrame(Size size) : m_size(size), m_bytes(byteCount(), 77) {}
    [[nodiscard]] Size size() const override { return m_size; }
    [[nodiscard]] std::uint8_t* bits() override { return m_bytes.data(); }
    [[nodiscard]] const std::uint8_t* bits() const override { return m_bytes.data(); }

private:
    Size m_size;
    std::vector<std::uint8_t> m_bytes;
};

class NoText final : public platform::raster::TextPainter {
public:
    void drawText(platform::raster::PixelView /*target*/,
                  const platform::raster::PixelScale& /*scale*/, const Rect& /*clip*/,
                  std::u16string_view /*text*/, const Rect& /*box*/, platform::FontHandle /*font*/,
                  platform::Color /*color*/, platform::TextAlign /*align*/) override {}
};

struct Fixture {
    Bitmap target{kWindow};
    NoText text;
    platform::raster::RasterCanvas canvas{target, text, {0, 0, kWindow.width, kWindow.height}};
};

void scaleVideoPicture(benchmark::State& state) {
    const MemoryFrame frame(kPicture);
    Fixture fixture;
    for (auto _ : state) {
        fixture.canvas.drawFrame(frame, kVideo);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(scaleVideoPicture)->Unit(benchmark::kMillisecond)->Repetitions(5);

/// As in a window that fills a screen.
void scaleVideoPictureSmoothly(benchmark::State& state) {
    const MemoryFrame frame({1920, 1080});
    Bitmap target({1920, 1040});
    NoText text;
    platform::raster::RasterCanvas canvas(target, text, {0, 0, 1920, 1040});
    for (auto _ : state) {
        canvas.drawFrameSmoothly(frame, Rect::at(100, 50, 1500, 844));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(scaleVideoPictureSmoothly)->Unit(benchmark::kMillisecond)->Repetitions(5);

/// A zone of 64 points: outline, centre handle and a marker for each point.
void drawZone(benchmark::State& state) {
    constexpr int kPoints = 64;
    Fixture fixture;
    for (auto _ : state) {
        platform::Point last{100, 100};
        for (int i = 0; i < kPoints; ++i) {
            const platform::Point next{(i * 337) % kWindow.width, (i * 211) % kWindow.height};
            fixture.canvas.drawLine(last, next, platform::rgb(255, 0, 0));
            fixture.canvas.drawEllipse(Rect::at(next.x - 8, next.y - 8, 16, 16),
                                       platform::rgb(250, 0, 0), platform::rgb(255, 255, 255));
            last = next;
        }
        benchmark::ClobberMemory();
    }
}
BENCHMARK(drawZone)->Unit(benchmark::kMillisecond)->Repetitions(5);

/// A skin image laid over the whole window, half of it transparent.
void blendWindowImage(benchmark::State& state) {
    Bitmap image(kWindow);
    for (int y = 0; y < kWindow.height; ++y) {
        for (int x = 0; x < kWindow.width; x += 2) {
            image.row(y)[x] = 0x80402010;
        }
    }
    Fixture fixture;
    const Rect all{0, 0, kWindow.width, kWindow.height};
    for (auto _ : state) {
        fixture.canvas.drawBitmap(image, all, all);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(blendWindowImage)->Unit(benchmark::kMillisecond)->Repetitions(5);

struct MapCurve {
    platform::PointF from;
    platform::PointF to;
};

/// 300 boxes with a still each, and 600 curves with arrow heads between them.
void drawMap(benchmark::State& state) {
    constexpr Size kMap{1600, 900};
    constexpr int kNodes = 300;
    constexpr int kStillWidth = 96;
    Bitmap still({kStillWidth, 54});
    for (int y = 0; y < still.size().height; ++y) {
        for (int x = 0; x < kStillWidth; ++x) {
            still.row(y)[x] =
                platform::rgb(static_cast<unsigned>(x * 2), 99, (x ^ y) % 2 == 0 ? 200 : 40);
        }
    }
    const auto corner = [](std::uint_fast32_t node) {
        return platform::PointF{8.3 + static_cast<double>(node % 20) * 79.4,
                                6.7 + static_cast<double>(node / 20) * 59.6};
    };
    std::mt19937 random(5);
    std::vector<MapCurve> curves;
    for (int i = 0; i < 2 * kNodes; ++i) {
        const platform::PointF from = corner(random() % kNodes);
        const platform::PointF to = corner(random() % kNodes);
        curves.push_back({{from.x + 64, from.y + 20}, {to.x, to.y + 20}});
    }
    Bitmap target(kMap);
    NoText text;
    for (auto _ : state) {
        platform::raster::RasterCanvas canvas(target, text, {0, 0, kMap.width, kMap.height});
        canvas.fillRect({0, 0, kMap.width, kMap.height}, 0xFFF4F5F7);
        for (const auto& [from, to] : curves) {
            platform::Path way;
            platform::Path head;
            way.moveTo(from);
            way.curveTo({from.x + 60, from.y}, {to.x - 60, to.y}, to);
            head.addArrowHead({to.x - 60, to.y}, to, 8, 8);
            canvas.fillPath(way.stroked(1.5), 0xFF4060A0);
            canvas.fillPath(head, 0xFF4060A0);
        }
        for (std::uint_fast32_t node = 0; node < kNodes; ++node) {
            platform::Path box;
            box.addRoundBox(corner(node), 64, 44, 6);
            canvas.fillPath(box, 0xFFFFFFFF);
            canvas.fillPath(box.stroked(1.25), 0xFF303840);
            canvas.drawStill(still, Rect::at(static_cast<int>(corner(node).x) + 4,
                                             static_cast<int>(corner(node).y) + 4, 56, 32));
        }
        benchmark::ClobberMemory();
    }
}
BENCHMARK(drawMap)->Unit(benchmark::kMillisecond)->Repetitions(5);

} // namespace

BENCHMARK_MAIN();
