#include "scene/Branch.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include <tinyxml2.h>

#include "core/Log.h"
#include "core/MakeOrNull.h"
#include "scene/MoveEntry.h"
#include "scene/SceneXml.h"

namespace scene {

std::shared_ptr<Branch> Branch::create() {
    return core::makeOrNull<Branch>();
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

std::shared_ptr<const Action> Branch::action(int index) const {
    return hasAction(index) ? m_actions[static_cast<std::size_t>(index)] : nullptr;
}

std::shared_ptr<Action> Branch::action(int index) {
    return hasAction(index) ? m_actions[static_cast<std::size_t>(index)] : nullptr;
}

const Action* Branch::peekAction(int index) const {
    return hasAction(index) ? m_actions[static_cast<std::size_t>(index)].get() : nullptr;
}

void Branch::addAction(const std::shared_ptr<Action>& action) {
    insertAction(actionCount(), action);
}

void Branch::insertAction(int index, const std::shared_ptr<Action>& action) {
    if (action && index >= 0 && index <= actionCount()) {
        m_actions.insert(m_actions.begin() + index, action);
    }
}

void Branch::removeAction(int index) {
    if (index >= 0 && index < actionCount()) {
        m_actions.erase(m_actions.begin() + index);
    }
}

void Branch::moveAction(int from, int to) {
    moveEntry(m_actions, from, to);
}

bool Branch::Write(core::File& file) const {
    FileSink sink(file);
    return writeTo(sink);
}

bool Branch::writeTo(LineSink& sink) const {
    return sink.line({"\t<Branch>"}) && sink.line({"\t\t<ID>", m_id, "</ID>"}) &&
           sink.line({"\t\t<Filename>", m_filename, "</Filename>"}) &&
           std::all_of(m_actions.begin(), m_actions.end(),
                       [&](const auto& action) { return action->writeTo(sink); }) &&
           sink.line({"\t</Branch>"});
}

} // namespace scene
