// The real window system, except for parts that the test controls: the screen's height, the file
// dialog, the desktop and the components.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Clock.h"
#include "platform/Gui.h"
#include "platform/SilentSound.h"
#include "platform/Sound.h"

namespace test {

/// Records the requests and returns a preset answer.
class ScriptedFileDialog final : public platform::FileDialog {
public:
    std::optional<platform::OpenFilesResult>
    openFiles(const platform::OpenFilesRequest& request) override {
        requests.push_back(request);
        if (whileOpen) {
            whileOpen();
        }
        return answer;
    }

    std::optional<std::string> chooseFolder(const platform::FolderRequest& /*request*/) override {
        return folder;
    }

    std::optional<platform::OpenFilesResult> answer; ///< empty: cancelled
    std::optional<std::string> folder;               ///< empty: cancelled
    std::function<void()> whileOpen;
    std::vector<platform::OpenFilesRequest> requests;
};

/// Records what it should open and show.
class ScriptedDesktop final : public platform::Desktop {
public:
    bool openFile(const std::string& path) override {
        opened.push_back(path);
        return opens;
    }
    void showError(const std::string& title, const std::string& text) override {
        errors.push_back(title + ": " + text);
    }

    bool opens = true;
    std::vector<std::string> opened;
    std::vector<std::string> errors;
};

class CountedComponents final : public platform::ComponentLibrary {
public:
    bool initialize(std::uint32_t& errorCode) override {
        errorCode = 0x8007000E;
        uses += fails ? 0 : 1;
        return !fails;
    }
    void uninitialize() override { --uses; }

    bool fails = false;
    int uses = 0;
};

/// The real windows on a screen with a different height.
class ScriptedHost final : public platform::WindowHost {
public:
    explicit ScriptedHost(platform::Gui& real) : m_real(real) {}

    std::unique_ptr<platform::NativeWindow> createWindow(const platform::WindowOptions& options,
                                                         platform::WindowEvents& events) override {
        return fails ? nullptr : m_real.windows().createWindow(options, events);
    }
    void setZoom(double zoom) override { m_real.windows().setZoom(zoom); }
    double zoom() const override { return m_real.windows().zoom(); }
    void setAppearance(platform::Appearance appearance) override {
        m_real.windows().setAppearance(appearance);
    }
    bool isDark() const override { return m_real.windows().isDark(); }
    int primaryScreenHeight() const override {
        return screenHeight.value_or(m_real.windows().primaryScreenHeight());
    }
    platform::Rect workArea(platform::Point point) const override {
        return m_real.windows().workArea(point);
    }
    std::u16string clipboardText() const override { return m_real.windows().clipboardText(); }
    void setClipboardText(const std::u16string& text) override {
        m_real.windows().setClipboardText(text);
    }
    std::u16string foldedCase(std::u16string_view text) const override {
        return m_real.windows().foldedCase(text);
    }

    std::optional<int> screenHeight;
    bool fails = false;

private:
    platform::Gui& m_real;
};

class ScriptedGui final : public platform::Gui {
public:
    /// `real` outlives it.
    explicit ScriptedGui(platform::Gui& real) : host(real), m_real(real) {}

    platform::WindowHost& windows() override { return host; }
    platform::EventLoop& loop() override { return m_real.loop(); }
    platform::FontSet& fonts() override { return m_real.fonts(); }
    platform::FileDialog& fileDialog() override { return dialog; }
    platform::Desktop& desktop() override { return userDesktop; }
    platform::ComponentLibrary& components() override { return library; }
    platform::SoundSystem& sound() override { return *soundSystem; }
    bool isEnding() const override { return m_real.isEnding() || (ends && ends()); }

    ScriptedHost host;
    ScriptedFileDialog dialog;
    ScriptedDesktop userDesktop;
    CountedComponents library;
    platform::SilentSound silence{platform::nativeClock()};
    platform::SoundSystem* soundSystem = &silence; ///< not owned
    std::function<bool()> ends;                    ///< true: the system asks the program to end

private:
    platform::Gui& m_real;
};

} // namespace test
