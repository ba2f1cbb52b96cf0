#include "check/Finding.h"

namespace check {
namespace {

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

/// Arguments: the name and, if it is in an action, the branch's name.
std::string unreadableNameText(const Finding& finding) {
    std::string place;
    if (finding.action >= 0) { // its row may show nothing if the branch or zone is gone
        place = " in an action of " + quoted(finding.arguments.at(1));
    }
    return "The name " + quoted(finding.arguments.at(0)) + place +
           " holds a \"<\": a scene saved with it will not load again.";
}

} // namespace

std::string_view kindName(Kind kind) {
    switch (kind) {
    case Kind::unreadableName:
        return "unreadable-name";
    }
    return {};
}

std::string findingText(const Finding& finding) {
    switch (finding.kind) {
    case Kind::unreadableName:
        return unreadableNameText(finding);
    }
    return {};
}

} // namespace check
