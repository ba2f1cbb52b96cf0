// A window system without a screen, for headless code and fuzzing: windows are never shown,
// characters are six pixels wide, and events are delivered by the test.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Clock.h"
#include "platform/Gui.h"
#include "platform/SilentSound.h"
#include "platform/Sound.h"
#include "platform/raster/TextPainter.h"

namespace test {

/// Filled with kUnwritten at first.
class FakeFrameBuffer final : public platform::FrameBuffer {
public:
    static constexpr std::uint8_t kUnwritten = 0xEE;

    explicit FakeFrameBuffer(platform::Size size)
        : m_size(size), m_bytes(byteCount(), kUnwritten) {}
    [[nodiscard]] platform::Size size() const override { return m_size; }
    [[nodiscard]] std::uint8_t* bits() override { return m_bytes.data(); }
    [[nodiscard]] const std::uint8_t* bits() const override { return m_bytes.data(); }

private:
    platform::Size m_size;
    std::vector<std::uint8_t> m_bytes;
};

class FakeWindow final : public platform::NativeWindow,
                         private platform::WindowPicture,
                         private platform::WindowInput,
                         private platform::WindowTimers,
                         private platform::WindowAccessibility {
public:
    FakeWindow(const platform::WindowOptions& options, platform::WindowEvents& events)
        : m_events(events),
          m_geometry(platform::Rect::at(100, 100, options.size.width, options.size.height)) {}
    ~FakeWindow() override {
        platform::Event last;
        last.kind = platform::EventKind::destroyed;
        m_events.onEvent(last);
    }

    [[nodiscard]] platform::WindowEvents& events() const { return m_events; }
    /// How often an immediate repaint was requested.
    [[nodiscard]] int repaints() const { return m_repaints; }
    /// Interval of the last timer started; 0 without one.
    [[nodiscard]] int timerMs() const { return m_timerMs; }
    /// Areas invalidated since the last call.
    [[nodiscard]] std::vector<platform::Rect> takeDirty() { return std::exchange(m_dirty, {}); }

    void show(bool /*visible*/) override {}
    void center() override {}
    void setGeometry(const platform::Rect& screenRect) override { m_geometry = screenRect; }
    [[nodiscard]] platform::Rect geometry() const override { return m_geometry; }
    [[nodiscard]] platform::Rect workArea(platform::Point /*point*/) const override { return {}; }
    [[nodiscard]] double scale() const override { return 1; }
    void setState(platform::WindowState /*state*/) override {}
    [[nodiscard]] platform::WindowState state() const override { return {}; }
    [[nodiscard]] platform::Rect normalGeometry() const override { return m_geometry; }
    void setTitle(const std::u16string& /*title*/) override {}
    void setEnabled(bool /*enabled*/) override {}
    void activate() override {}
    void setTakesFiles(bool /*takes*/) override {}
    void close() override {}
    platform::WindowPicture& picture() override { return *this; }
    platform::WindowInput& input() override { return *this; }
    platform::WindowTimers& timers() override { return *this; }
    platform::WindowAccessibility& accessibility() override { return *this; }

private:
    void invalidate(const platform::Rect& dirty) override { m_dirty.push_back(dirty); }
    void repaintNow() override { ++m_repaints; }
    [[nodiscard]] platform::Bitmap snapshot() override { return {}; }
    void setCapture() override {}
    void releaseCapture() override {}
    void setPointer(platform::PointerShape /*shape*/) override {}
    bool start(unsigned /*id*/, int intervalMs) override {
        m_timerMs = intervalMs;
        return true;
    }
    bool stop(unsigned /*id*/) override { return true; }
    void beginMove() override {}
    void setTextInput(bool /*enabled*/, const platform::Rect& /*caret*/) override {}
    [[nodiscard]] platform::FrameBufferResult createFrameBuffer(platform::Size size) override {
        platform::FrameBufferResult result;
        result.buffer = std::make_unique<FakeFrameBuffer>(size);
        return result;
    }
    void changed(platform::Accessible& /*node*/, platform::AccessibleChange /*change*/) override {}

    platform::WindowEvents& m_events;
    platform::Rect m_geometry;
    std::vector<platform::Rect> m_dirty;
    int m_timerMs = 0;
    int m_repaints = 0;
};

class FakeGui final : public platform::Gui,
                      private platform::WindowHost,
                      private platform::EventLoop,
                      private platform::FontSet,
                      private platform::FileDialog,
                      private platform::Desktop,
                      private platform::ComponentLibrary {
public:
    platform::WindowHost& windows() override { return *this; }
    platform::EventLoop& loop() override { return *this; }
    platform::FontSet& fonts() override { return *this; }
    platform::FileDialog& fileDialog() override { return *this; }
    platform::Desktop& desktop() override { return *this; }
    platform::ComponentLibrary& components() override { return *this; }
    platform::SoundSystem& sound() override { return m_sound; }
    [[nodiscard]] bool isEnding() const override { return false; }
    /// So many posts find no memory.
    std::atomic<int> refusedTasks = 0;
    /// Runs the posted tasks; nothing else does.
    void runTasks() {
        std::vector<std::function<void()>> tasks;
        {
            const std::lock_guard lock(m_mutex);
            tasks.swap(m_tasks);
        }
        for (const auto& task : tasks) {
            task();
        }
    }

private:
    static constexpr int kCharacterWidth = 6;

    std::unique_ptr<platform::NativeWindow> createWindow(const platform::WindowOptions& options,
                                                         platform::WindowEvents& events) override {
        return std::make_unique<FakeWindow>(options, events);
    }
    void setZoom(double /*zoom*/) override {}
    [[nodiscard]] double zoom() const override { return 1; }
    void setAppearance(platform::Appearance /*appearance*/) override {}
    [[nodiscard]] bool isDark() const override { return false; }
    [[nodiscard]] int primaryScreenHeight() const override { return 1080; }
    [[nodiscard]] platform::Rect workArea(platform::Point /*point*/) const override {
        return {0, 0, 1920, 1080};
    }
    [[nodiscard]] std::u16string clipboardText() const override { return m_clipboard; }
    void setClipboardText(const std::u16string& text) override { m_clipboard = text; }
    [[nodiscard]] std::u16string foldedCase(std::u16string_view text) const override {
        return std::u16string(text);
    }

    int run() override { return 0; }
    void postQuit(int /*code*/) override {}
    void processEvents(bool /*wait*/) override {}
    void post(std::function<void()> task) override {
        const std::lock_guard lock(m_mutex);
        if (refusedTasks > 0) {
            --refusedTasks;
            throw std::bad_alloc();
        }
        m_tasks.push_back(std::move(task));
    }

    platform::FontHandle open(const platform::FontDescription& /*description*/) override {
        return 0;
    }
    [[nodiscard]] int lineHeight(platform::FontHandle /*font*/) const override { return 12; }
    [[nodiscard]] platform::Size measure(std::u16string_view text,
                                         platform::FontHandle font) const override {
        return {static_cast<int>(text.size()) * kCharacterWidth, lineHeight(font)};
    }
    [[nodiscard]] std::vector<int> caretPositions(std::u16string_view text,
                                                  platform::FontHandle /*font*/) const override {
        std::vector<int> positions;
        for (std::size_t i = 0; i <= text.size(); ++i) {
            const bool inside = i > 0 && i < text.size() && (text[i] & 0xFC00) == 0xDC00 &&
                                (text[i - 1] & 0xFC00) == 0xD800;
            positions.push_back(inside ? positions.back() : static_cast<int>(i) * kCharacterWidth);
        }
        return positions;
    }

    bool openFile(const std::string& /*path*/) override { return false; }
    void showError(const std::string& /*title*/, const std::string& /*text*/) override {}
    std::optional<platform::OpenFilesResult>
    openFiles(const platform::OpenFilesRequest& /*request*/) override {
        return std::nullopt;
    }
    std::optional<std::string> chooseFolder(const platform::FolderRequest& /*request*/) override {
        return std::nullopt;
    }
    bool initialize(std::uint32_t& /*errorCode*/) override { return true; }
    void uninitialize() override {}

    platform::SilentSound m_sound{platform::nativeClock()};
    std::u16string m_clipboard;
    std::mutex m_mutex; ///< any thread may post
    std::vector<std::function<void()>> m_tasks;
};

/// Draws no text.
class NoText final : public platform::raster::TextPainter {
public:
    void drawText(platform::raster::PixelView /*target*/,
                  const platform::raster::PixelScale& /*scale*/, const platform::Rect& /*clip*/,
                  std::u16string_view /*text*/, const platform::Rect& /*box*/,
                  platform::FontHandle /*font*/, platform::Color /*color*/,
                  platform::TextAlign /*align*/) override {}
};

} // namespace test
