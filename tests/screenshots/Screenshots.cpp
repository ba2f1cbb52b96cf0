// Pictures of every window for the documents.
//
//   screenshots FOLDER [plain|sizes|dark]
//
// Runs in a folder with UI/, Translations.ini and the demo scenes, as the editor does. "plain"
// leaves out all texts, which each system draws in its own way: the rest is the same to the pixel.
// "sizes" shows the windows in every size and at 200 % instead, on a screen of 3840 x 2160; "dark"
// shows them dark.

#include <exception>
#include <filesystem>
#include <iostream>
#include <string_view>
#include <vector>

#include "core/Log.h"
#include "platform/Window.h"
#include "tests/screenshots/BranchEditorShots.h"
#include "tests/screenshots/MapShots.h"
#include "tests/screenshots/Photographer.h"
#include "tests/screenshots/SizeShots.h"
#include "tests/screenshots/StartShots.h"
#include "tests/screenshots/ZoneEditorShots.h"
#include "tests/support/gui/TestGui.h"

namespace screenshots {

namespace {

void takeAll(Photographer& photographer) {
    if (!photographer.isPlain()) {
        photographer.startStills();
    }
    takeStart(photographer, u"Ladder Inspection");
    takeBranchEditor(photographer);
    if (!photographer.isPlain()) { // it has pictures of clips
        takeMap(photographer);
        photographer.loadDemo();
        takeTourStep(photographer);
        takePreview(photographer);
    }
    takeEmptyStates(photographer);
    takeZoneEditor(photographer, "ZoneEdit");
    if (!photographer.isPlain()) {
        takeFollowedZone(photographer);
        takeWideZoneEditor(photographer);
    }
    photographer.useLowScreen();
    takeZoneEditor(photographer, "ZoneEditSmall");
}

int run(const std::vector<std::string_view>& arguments) {
    const std::string_view mode = arguments.size() == 2 ? arguments[1] : std::string_view();
    if (arguments.empty() ||
        (arguments.size() > 1 && mode != "plain" && mode != "sizes" && mode != "dark")) {
        std::cerr << "usage: screenshots FOLDER [plain|sizes|dark]\n";
        return 2;
    }
    Photographer photographer(std::filesystem::absolute(arguments.front()), mode == "plain");
    if (mode == "dark") {
        photographer.gui().windows().setAppearance(platform::Appearance::dark);
    }
    if (mode == "sizes") {
        takeSizes(photographer);
    } else {
        takeAll(photographer);
    }
    return photographer.isGood() ? 0 : 1;
}

} // namespace

} // namespace screenshots

int main(int argc, char** argv) {
    try {
        const int code = screenshots::run({argv + 1, argv + argc});
        test::endGui();
        core::Log::release();
        return code;
    } catch (const std::exception& error) {
        std::cerr << "screenshots: " << error.what() << "\n";
        return 1;
    }
}
