#include "tests/support/gui/FakeGui.h"

#include <utility>

namespace test {
namespace {

constexpr int kCharacterWidth = 6;

} // namespace

FakeWindow::~FakeWindow() {
    platform::Event last;
    last.kind = platform::EventKind::destroyed;
    m_events.onEvent(last);
}

std::unique_ptr<platform::NativeWindow>
FakeGui::createWindow(const platform::WindowOptions& options, platform::WindowEvents& events) {
    return std::make_unique<FakeWindow>(options, events);
}

void FakeGui::post(std::function<void()> task) {
    const std::lock_guard lock(m_mutex);
    m_tasks.push_back(std::move(task));
}

void FakeGui::runTasks() {
    std::vector<std::function<void()>> tasks;
    {
        const std::lock_guard lock(m_mutex);
        tasks.swap(m_tasks);
    }
    for (const auto& task : tasks) {
        task();
    }
}

platform::Size FakeGui::measure(std::u16string_view text, platform::FontHandle font) const {
    return {static_cast<int>(text.size()) * kCharacterWidth, lineHeight(font)};
}

std::vector<int> FakeGui::caretPositions(std::u16string_view text,
                                         platform::FontHandle /*font*/) const {
    std::vector<int> positions;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        const bool inside = i > 0 && i < text.size() && (text[i] & 0xFC00) == 0xDC00 &&
                            (text[i - 1] & 0xFC00) == 0xD800;
        positions.push_back(inside ? positions.back() : static_cast<int>(i) * kCharacterWidth);
    }
    return positions;
}

} // namespace test
