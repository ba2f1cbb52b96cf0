#include "check/Names.h"

#include <algorithm>
#include <cstddef>
#include <memory>

#include "core/Text.h"
#include "scene/Action.h"
#include "scene/Branch.h"
#include "scene/BranchManager.h"
#include "scene/SceneManager.h"

namespace check {
namespace {

bool isDigit(char c, bool hexadecimal) {
    return (c >= '0' && c <= '9') ||
           (hexadecimal && ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')));
}

/// Whether `text`, from just behind a "&" on, makes it an entity that readers replace.
bool formsEntity(std::string_view text) {
    for (const std::string_view name : {"lt;", "gt;", "amp;", "quot;", "apos;"}) {
        if (text.starts_with(name)) {
            return true;
        }
    }
    if (!text.starts_with('#')) {
        return false;
    }
    const bool hexadecimal = text.starts_with("#x");
    text.remove_prefix(hexadecimal ? 2 : 1);
    const auto end =
        std::find_if_not(text.begin(), text.end(), [&](char c) { return isDigit(c, hexadecimal); });
    return end != text.end() && *end == ';';
}

bool holdsEntity(std::string_view text) {
    for (std::size_t at = text.find('&'); at != std::string_view::npos; at = text.find('&', at)) {
        if (formsEntity(text.substr(++at))) {
            return true;
        }
    }
    return false;
}

bool isBlank(char16_t c) {
    return c == u' ' || c == u'\t' || c == u'\u00A0';
}

std::optional<Finding> unreadable(const std::string& name, int branch, int action) {
    const std::optional<NameFault> fault = faultOf(name);
    if (!fault) {
        return std::nullopt;
    }
    Finding found = finding(Kind::unreadableName, {name}, static_cast<int>(*fault));
    found.branch = branch;
    found.action = action;
    return found;
}

std::optional<Finding> checkBranch(const scene::Branch& branch, int number) {
    for (const std::string* text : {&branch.ID(), &branch.Filename()}) {
        if (auto found = unreadable(*text, number, -1)) {
            return found;
        }
    }
    for (int action = 0; action < branch.actionCount(); ++action) {
        const scene::Action* checked = branch.peekAction(action);
        for (const std::string* text : {&checked->Parameter(), &checked->BranchID()}) {
            if (auto found = unreadable(*text, number, action)) {
                return found;
            }
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<NameFault> faultOf(std::string_view name) {
    const auto isSuspect = [](char c) { return c == '<' || c == '&' || core::isControl(c); };
    if (std::none_of(name.begin(), name.end(), isSuspect)) {
        return std::nullopt; // as nearly all of the thousands in a scene
    }
    if (name.find('<') != std::string_view::npos) {
        return NameFault::lessThan;
    }
    if (holdsEntity(name)) {
        return NameFault::entity;
    }
    return std::any_of(name.begin(), name.end(), core::isControl)
               ? std::optional(NameFault::control)
               : std::nullopt;
}

bool breaksFile(std::string_view text) {
    return text.find('<') != std::string_view::npos;
}

std::string foldedName(std::string_view name) {
    std::string folded;
    if (core::validUtf8(name) != name) { // replacing bytes would make different names alike
        for (const char c : name) {
            if (c != ' ' && c != '\t') {
                folded += c;
            }
        }
        return core::lowerCase(folded);
    }
    std::u16string wide = core::foldCase(core::displayText(name));
    std::erase_if(wide, isBlank);
    return core::storedText(wide);
}

std::optional<Finding> firstUnreadableName(const scene::SceneManager& scene) {
    for (const std::string* text : {&scene.Name(), &scene.FirstBranch()}) {
        if (auto found = unreadable(*text, -1, -1)) {
            return found;
        }
    }
    const scene::BranchManager* branches = scene.branches();
    for (int branch = 0; branches != nullptr && branch < branches->branchCount(); ++branch) {
        if (auto found = checkBranch(*branches->branch(branch), branch)) {
            return found;
        }
    }
    return std::nullopt;
}

bool hasUnreadableName(const scene::SceneManager& scene, int branch) {
    const scene::BranchManager* branches = scene.branches();
    const auto checked = branches != nullptr ? branches->branch(branch) : nullptr;
    return checked && checkBranch(*checked, branch);
}

} // namespace check
