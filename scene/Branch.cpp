#include "scene/Branch.h"

#include <algorithm>
#include <new>
#include <string_view>

#include <tinyxml2.h>

#include "core/File.h"
#include "core/Log.h"
#include "scene/SceneXml.h"

namespace scene {

std::shared_ptr<Branch> Branch::create() {
    try {
        return std::make_shared<Branch>();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

std::shared_ptr<Branch> Branch::Load(const tinyxml2::XMLElement& element) {
    std::shared_ptr<Branch> branch = create();
    return branch && branch->loadChildren(element) ? branch : nullptr;
}

bool Branch::loadChildren(const tinyxml2::XMLElement& element) {
    for (const auto* child = element.FirstChildElement(); child;
         child = child->NextSiblingElement()) {
        const std::string_view name = child->Name();
        if (name == "ID") {
            m_id = elementText(*child);
        } else if (name == "Filename") {
            m_filename = elementText(*child);
        } else if (name == "Action") {
            const std::shared_ptr<Action> action = Action::create(*child);
            if (!action) {
                core::Log::get()->Error("Unable to create action");
                return false;
            }
            m_actions.push_back(action);
        } else {
            reportUnknownNode(*child);
        }
    }
    return true;
}

std::shared_ptr<Action> Branch::action(int index) const {
    if (index < 0 || index >= actionCount()) {
        return nullptr;
    }
    return m_actions[static_cast<std::size_t>(index)];
}

void Branch::addAction(const std::shared_ptr<Action>& action) {
    if (action) {
        m_actions.push_back(action);
    }
}

void Branch::removeAction(int index) {
    if (index >= 0 && index < actionCount()) {
        m_actions.erase(m_actions.begin() + index);
    }
}

void Branch::moveAction(int from, int to) {
    const int count = actionCount();
    if (from < 0 || from >= count || to < 0 || to >= count) {
        return;
    }
    const auto first = m_actions.begin();
    if (from < to) {
        std::rotate(first + from, first + from + 1, first + to + 1);
    } else {
        std::rotate(first + to, first + from, first + from + 1);
    }
}

bool Branch::Write(core::File& file) const {
    return writeLines(file, {"\t<Branch>\n", "\t\t<ID>" + m_id + "</ID>\n",
                             "\t\t<Filename>" + m_filename + "</Filename>\n"}) &&
           std::all_of(
               m_actions.begin(), m_actions.end(),
               [&](const std::shared_ptr<Action>& action) { return action->Write(file); }) &&
           file.writeString("\t</Branch>\n");
}

} // namespace scene
