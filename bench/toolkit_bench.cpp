// The toolkit's own time, without a window system: building a window from its layout (budget with
// the system's part: 150 ms until it is on the screen), an action list of 200 rows with three
// combos of 1000 items each (budget: 100 ms), and one layout pass of it.
#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include <benchmark/benchmark.h>

#include "platform/raster/RasterCanvas.h"
#include "tests/support/gui/FakeGui.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/layout/CHorizontalLayoutUI.h"
#include "toolkit/skin/ImageCache.h"
#include "toolkit/window/WindowImplBase.h"

namespace {

constexpr int kRows = 200;
constexpr int kItems = 1000;

class BenchWindow final : public toolkit::WindowImplBase {
public:
    using WindowImplBase::WindowImplBase;
    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"Bench"; }
    [[nodiscard]] std::string GetSkinFolder() const override {
        return std::string(QUORVEL_SOURCE_DIR) + "/data/UI/";
    }
    [[nodiscard]] std::string GetSkinFile() const override { return "BranchList.xml"; }
};

void addRows(toolkit::CListUI& list, const std::shared_ptr<const toolkit::CComboUI::Texts>& texts) {
    for (int i = 0; i < kRows; ++i) {
        auto row = std::make_unique<toolkit::CListContainerElementUI>();
        row->SetFixedHeight(33);
        auto item = std::make_unique<toolkit::CHorizontalLayoutUI>();
        for (int c = 0; c < 3; ++c) {
            auto combo = std::make_unique<toolkit::CComboUI>();
            combo->SetAttribute(u"normalimage", u"file='ComboNormal.png' corner='5,4,28,4'");
            combo->SetFixedWidth(200);
            combo->SetItemTexts(texts);
            combo->SelectItem(combo->FindItemText((*texts)[static_cast<std::size_t>(i)]));
            item->Add(std::move(combo));
        }
        item->Add(std::make_unique<toolkit::COptionUI>());
        row->Add(std::move(item));
        list.Add(std::move(row));
    }
}

void paint(BenchWindow& window) {
    platform::Bitmap picture({884, 672});
    test::NoText text;
    platform::raster::RasterCanvas canvas(picture, text, {0, 0, 884, 672});
    static_cast<test::FakeWindow*>(window.GetNative())->events().onPaint(canvas, {0, 0, 884, 672});
}

void buildWindow(benchmark::State& state) {
    test::FakeGui gui;
    for (auto _ : state) {
        toolkit::ImageCache::get().clear(); // as at program start
        BenchWindow window(gui);
        if (!window.Create(nullptr, u"", 0, 0)) {
            state.SkipWithError("no layout");
            return;
        }
        paint(window);
    }
}
BENCHMARK(buildWindow)->Unit(benchmark::kMillisecond)->Repetitions(5);

void buildActionRows(benchmark::State& state) {
    test::FakeGui gui;
    auto texts = std::make_shared<toolkit::CComboUI::Texts>();
    for (char16_t i = 0; i < kItems; ++i) {
        texts->push_back(u"Zone " + std::u16string(1, static_cast<char16_t>(u'A' + i)));
    }
    BenchWindow window(gui);
    if (!window.Create(nullptr, u"", 0, 0)) {
        state.SkipWithError("no layout");
        return;
    }
    auto& list = *window.FindControl<toolkit::CListUI>(u"BranchList");
    for (auto _ : state) {
        list.RemoveAll();
        addRows(list, texts);
        paint(window);
    }
}
BENCHMARK(buildActionRows)->Unit(benchmark::kMillisecond)->Repetitions(5);

void layOutActionRows(benchmark::State& state) {
    test::FakeGui gui;
    const auto texts = std::make_shared<toolkit::CComboUI::Texts>(kItems, std::u16string(u"Zone"));
    BenchWindow window(gui);
    if (!window.Create(nullptr, u"", 0, 0)) {
        state.SkipWithError("no layout");
        return;
    }
    addRows(*window.FindControl<toolkit::CListUI>(u"BranchList"), texts);
    for (auto _ : state) {
        window.GetPaintManager().NeedUpdate();
        window.GetPaintManager().UpdateLayout();
    }
}
BENCHMARK(layOutActionRows)->Unit(benchmark::kMillisecond)->Repetitions(5);

} // namespace

BENCHMARK_MAIN();
