#include "scene/Action.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include <tinyxml2.h>

#include "core/MakeOrNull.h"
#include "core/Text.h"
#include "scene/SceneXml.h"

namespace scene {
namespace {

constexpr std::array<const char*, 4> kTypeNames{"DefaultAction", "KeypressAction", "ZoneAction",
                                                "RandomAction"};

const char* typeText(int type) {
    const bool known = type >= 0 && static_cast<std::size_t>(type) < kTypeNames.size();
    return kTypeNames[known ? static_cast<std::size_t>(type) : 0];
}

} // namespace

std::string Action::typeName(int type) {
    return typeText(type);
}

int Action::typeNumber(const std::string& name) {
    const auto found = std::find(kTypeNames.begin(), kTypeNames.end(), name);
    return found == kTypeNames.end() ? kDefaultAction
                                     : static_cast<int>(found - kTypeNames.begin());
}

std::shared_ptr<Action> Action::create() {
    return core::makeOrNull<Action>();
}

std::shared_ptr<Action> Action::create(const tinyxml2::XMLElement& element) {
    std::shared_ptr<Action> action = create();
    return action && action->Load(element) ? action : nullptr;
}

bool Action::Write(core::File& file) const {
    FileSink sink(file);
    return writeTo(sink);
}

bool Action::writeTo(LineSink& sink) const {
    return sink.line({"\t\t<Action>"}) &&
           sink.line({"\t\t\t<Type>", typeText(m_type), "</Type>"}) &&
           (m_parameter.empty() || sink.line({"\t\t\t<Parameter>", m_parameter, "</Parameter>"})) &&
           (!m_immediate || sink.line({"\t\t\t<Immediate>true</Immediate>"})) &&
           sink.line({"\t\t\t<BranchID>", m_branchID, "</BranchID>"}) &&
           sink.line({"\t\t</Action>"});
}

bool Action::Load(const tinyxml2::XMLElement& element) {
    std::string type;
    for (const auto* child = element.FirstChildElement(); child;
         child = child->NextSiblingElement()) {
        const std::string_view name = child->Name();
        const std::string text = elementText(*child);
        if (name == "Type") {
            type = text;
        } else if (name == "Parameter") {
            m_parameter = text;
        } else if (name == "Immediate") {
            m_immediate = text.empty() ? m_immediate : core::toBool(text);
        } else if (name == "BranchID") {
            m_branchID = text;
        } else {
            reportUnknownNode(*child);
        }
    }
    m_type = typeNumber(type);
    return true;
}

} // namespace scene
