// The toolkit's own time, without a window system: building a window from its layout (budget with
// the system's part: 150 ms until it is on the screen), and lists of 20 and of 10,000 rows with
// three combos of 1000 items each, which are to cost the same.
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include <benchmark/benchmark.h>

#include "platform/Event.h"
#include "platform/Geometry.h"
#include "platform/raster/RasterCanvas.h"
#include "tests/support/gui/FakeGui.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/layout/CHorizontalLayoutUI.h"
#include "toolkit/skin/ImageCache.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/WindowImplBase.h"

namespace {

constexpr int kItems = 1000;

class BenchWindow final : public toolkit::WindowImplBase {
public:
    using WindowImplBase::WindowImplBase;
    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"Bench"; }
    [[nodiscard]] std::string GetSkinFolder() const override { return QUORVEL_DATA_FOLDER "/UI/"; }
    [[nodiscard]] std::string GetSkinFile() const override { return "BranchList.xml"; }
};

std::unique_ptr<toolkit::CControlUI>
makeRow(int number, const std::shared_ptr<const toolkit::CComboUI::Texts>& texts) {
    auto row = std::make_unique<toolkit::CListContainerElementUI>();
    auto item = std::make_unique<toolkit::CHorizontalLayoutUI>();
    for (int c = 0; c < 3; ++c) {
        auto combo = std::make_unique<toolkit::CComboUI>();
        combo->SetAttribute(u"normalimage", u"file='ComboNormal.png' corner='5,4,28,4'");
        combo->SetFixedWidth(200);
        combo->SetItemTexts(texts);
        combo->SelectItem(number % kItems);
        item->Add(std::move(combo));
    }
    item->Add(std::make_unique<toolkit::COptionUI>());
    row->Add(std::move(item));
    return row;
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

/// A window whose list has as many rows as the benchmark's argument says.
class LongList {
public:
    explicit LongList(benchmark::State& state)
        : m_texts(std::make_shared<toolkit::CComboUI::Texts>(kItems, u"Zone")), m_window(m_gui),
          m_count(static_cast<int>(state.range(0))) {
        if (m_window.Create(nullptr, u"", 0, 0)) {
            m_list = m_window.FindControl<toolkit::CListUI>(u"BranchList");
            fill();
            paint(m_window);
        } else {
            state.SkipWithError("no layout");
        }
    }

    void fill() {
        m_list->SetRows(m_count, {.make = [this](int row) { return makeRow(row, m_texts); },
                                  .height = 33,
                                  .takesFocus = true});
    }
    toolkit::CListUI& list() { return *m_list; }
    BenchWindow& window() { return m_window; }
    toolkit::CPaintManagerUI& manager() { return m_window.GetPaintManager(); }
    [[nodiscard]] int count() const { return m_count; }

    /// `act` and what it leads to, until the window is painted again.
    void measure(benchmark::State& state, const std::function<void(int round)>& act) {
        int round = 0;
        for (auto _ : state) {
            act(round++);
            paint(m_window);
        }
    }

private:
    test::FakeGui m_gui;
    std::shared_ptr<const toolkit::CComboUI::Texts> m_texts;
    BenchWindow m_window;
    toolkit::CListUI* m_list = nullptr;
    int m_count;
};

void rowsOpen(benchmark::State& state) {
    LongList rows(state);
    rows.measure(state, [&](int) { rows.fill(); });
}

void rowsScroll(benchmark::State& state) {
    LongList rows(state);
    rows.measure(state, [&](int round) {
        platform::Event wheel;
        wheel.kind = platform::EventKind::mouseWheel;
        wheel.position = {400, 400};
        wheel.wheelDelta = round / 8 % 2 == 0 ? -120 : 120;
        rows.manager().MessageHandler(wheel);
    });
}

void rowsRepaint(benchmark::State& state) {
    LongList rows(state);
    rows.measure(state, [](int) {});
}

void rowsSelect(benchmark::State& state) {
    LongList rows(state);
    rows.measure(state, [&](int round) { rows.list().pick(round % rows.count(), true); });
}

void rowsAddAndRemove(benchmark::State& state) {
    LongList rows(state);
    rows.measure(state, [&](int) {
        rows.list().AnnounceAt(rows.count() / 2);
        rows.list().RemoveAt(rows.count() / 2);
    });
}

/// The pointer, the Tab key and a search by name; nothing is painted.
void rowsVisit(benchmark::State& state) {
    LongList rows(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(rows.manager().FindControl(platform::Point{400, 400}));
        benchmark::DoNotOptimize(rows.manager().FindControl(u"LabelStatus"));
        benchmark::DoNotOptimize(rows.manager().focusKeeper().move(false));
        rows.manager().SetFocus(&rows.list());
    }
}

#define QUORVEL_ROWS(name) BENCHMARK(name)->Arg(20)->Arg(10'000)->Unit(benchmark::kMicrosecond)
QUORVEL_ROWS(rowsOpen);
QUORVEL_ROWS(rowsScroll);
QUORVEL_ROWS(rowsRepaint);
QUORVEL_ROWS(rowsSelect);
QUORVEL_ROWS(rowsAddAndRemove);
QUORVEL_ROWS(rowsVisit);

} // namespace

BENCHMARK_MAIN();
