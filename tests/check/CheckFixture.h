// Scenes and facts for the tests of checks, from short texts, and findings as lines.
#pragma once

#include <cstddef>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "check/Facts.h"
#include "check/Finding.h"
#include "scene/Action.h"
#include "scene/Branch.h"
#include "scene/SceneManager.h"

namespace check_tests {

/// "_" stands for a blank, "-" for no text at all.
inline std::string nameFrom(std::string text) {
    for (char& c : text) {
        c = c == '_' ? ' ' : c;
    }
    return text == "-" ? std::string() : text;
}

/// "A a.ogv D>B KL>A | B -": branch A with a video, a Default to B and a Keypress "L" to A, and
/// branch B without a video. D, K, Z and R are the types; the first branch plays first.
inline std::shared_ptr<scene::SceneManager> sceneFrom(const std::string& text) {
    const auto scene = scene::SceneManager::create();
    std::istringstream words(text);
    std::string word;
    bool isName = true;
    for (std::shared_ptr<scene::Branch> branch; words >> word;) {
        const std::size_t arrow = word.find('>');
        if (isName) {
            scene->AddBranch();
            const int last = scene->branchCount() - 1;
            scene->renameBranch(last, nameFrom(word));
            words >> word;
            scene->setBranchFilename(last, nameFrom(word));
            isName = false;
        } else if (word == "|") {
            isName = true;
        } else {
            const auto action = scene::Action::create();
            action->SetType(static_cast<int>(std::string_view("DKZR").find(word[0])));
            action->SetParameter(nameFrom(word.substr(1, arrow - 1)));
            action->SetBranchID(nameFrom(word.substr(arrow + 1)));
            scene->addAction(scene->branchCount() - 1, action);
        }
    }
    return scene;
}

/// Of a video of 16 by 16 pixels and 50 frames.
inline check::VideoFacts goodVideo(std::vector<check::ZoneFacts> zones = {}) {
    return {.state = check::VideoFacts::State::good,
            .width = 16,
            .frameCount = 50,
            .hasZoneFiles = !zones.empty(),
            .zones = std::move(zones)};
}
inline check::ZoneFacts goodZone(const std::string& name) {
    return {.name = name, .hasShapes = true, .storedFrames = 50, .activeFrames = 50};
}

/// "error missing-target A 2: An action of ...": where, and the sentence.
inline std::string lineOf(const check::Finding& finding, const scene::SceneManager& scene) {
    std::ostringstream line;
    line << check::severityName(finding.severity) << ' ' << check::kindName(finding.kind);
    if (finding.branch >= 0) {
        line << ' ' << scene.branchID(finding.branch);
    }
    if (finding.action >= 0) {
        line << ' ' << finding.action + 1;
    }
    for (const std::string& name : {finding.video, finding.zone}) {
        line << (name.empty() ? "" : " ") << name;
    }
    if (finding.frames) {
        line << ' ' << finding.frames->first << '-' << finding.frames->last;
    }
    line << ": " << check::findingText(finding);
    return line.str();
}

} // namespace check_tests
