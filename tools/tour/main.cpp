// A guided tour of the editor: plays one editing pass with real mouse and keyboard events on the
// program's own windows and saves a picture of each screen.
//
// Usage: quorvel-tour OUT        in a folder with UI/, Translations.ini and Scenes/
//
// Works on a copy of that folder's contents in OUT/work, which is replaced. Exit code 0 when the
// whole pass succeeded, 1 when it did not, 2 on bad usage.
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <utility>

#include "app/Program.h"
#include "core/Log.h"
#include "platform/Desktop.h"
#include "platform/EventLoop.h"
#include "platform/FileDialog.h"
#include "platform/FontSet.h"
#include "platform/Gui.h"
#include "platform/Sound.h"
#include "platform/Window.h"
#include "tools/tour/EditingPass.h"
#include "tools/tour/Script.h"

namespace {

namespace fs = std::filesystem;

/// The window system with a script that plays during its lifetime.
class PlayedGui final : public platform::Gui {
public:
    PlayedGui(std::unique_ptr<platform::Gui> real, tour::Script& script)
        : m_real(std::move(real)), m_script(script) {
        m_script.play(*m_real);
    }
    ~PlayedGui() override { m_script.stop(); }
    PlayedGui(const PlayedGui&) = delete;
    PlayedGui& operator=(const PlayedGui&) = delete;

    platform::WindowHost& windows() override { return m_real->windows(); }
    platform::EventLoop& loop() override { return m_real->loop(); }
    platform::FontSet& fonts() override { return m_real->fonts(); }
    platform::FileDialog& fileDialog() override { return m_real->fileDialog(); }
    platform::Desktop& desktop() override { return m_real->desktop(); }
    platform::ComponentLibrary& components() override { return m_real->components(); }
    platform::SoundSystem& sound() override { return m_real->sound(); }
    bool isEnding() const override { return m_real->isEnding() || !m_script.problem().empty(); }

private:
    std::unique_ptr<platform::Gui> m_real;
    tour::Script& m_script;
};

void copyProduct(const fs::path& to) {
    fs::remove_all(to);
    fs::create_directories(to);
    for (const char* part : {"UI", "Translations.ini", "Scenes"}) {
        fs::copy(part, to / part, fs::copy_options::recursive);
    }
}

int playTour(const fs::path& out) {
    copyProduct(out / "work");
    fs::current_path(out / "work");
    core::Log::get();
    std::string problem;
    int exitCode = 0;
    {
        tour::Script script(out.string() + "/");
        tour::writeEditingPass(script);
        exitCode = app::runProgram("", [&script]() -> std::unique_ptr<platform::Gui> {
            auto gui = platform::createGui();
            return gui ? std::make_unique<PlayedGui>(std::move(gui), script) : nullptr;
        });
        problem = script.problem();
        if (problem.empty() && !script.isFinished()) {
            problem = "the program ended before the tour";
        }
    }
    core::Log::release();
    if (!problem.empty()) {
        std::cerr << "quorvel-tour: " << problem << '\n';
    }
    return problem.empty() && exitCode == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: quorvel-tour OUT\n";
        return 2;
    }
    try {
        return playTour(fs::absolute(argv[1]));
    } catch (const std::exception& exception) {
        std::cerr << "quorvel-tour: " << exception.what() << '\n';
        return 1;
    }
}
