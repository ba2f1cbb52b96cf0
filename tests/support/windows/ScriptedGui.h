// The real window system with two parts that a test plays: the file dialog and the components.
#pragma once

#include "platform/Gui.h"

#include <functional>
#include <optional>
#include <vector>

namespace test {

/// Answers as told, and notes what was asked.
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

    std::optional<platform::OpenFilesResult> answer; ///< empty: cancelled
    std::function<void()> whileOpen;
    std::vector<platform::OpenFilesRequest> requests;
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

class ScriptedGui final : public platform::Gui {
public:
    /// `real` outlives it.
    explicit ScriptedGui(platform::Gui& real) : m_real(real) {}

    platform::WindowHost& windows() override { return m_real.windows(); }
    platform::EventLoop& loop() override { return m_real.loop(); }
    platform::FontSet& fonts() override { return m_real.fonts(); }
    platform::FileDialog& fileDialog() override { return dialog; }
    platform::ComponentLibrary& components() override { return library; }
    bool isEnding() const override { return m_real.isEnding(); }

    ScriptedFileDialog dialog;
    CountedComponents library;

private:
    platform::Gui& m_real;
};

} // namespace test
