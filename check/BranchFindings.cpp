#include "check/BranchFindings.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <utility>

#include "scene/Action.h"
#include "scene/Branch.h"

namespace check {
namespace {

using Reach = BranchSituation::Reach;
using Reference = BranchSituation::Reference;
using scene::Action;

class Builder {
public:
    Builder(const BranchContent& branch, const BranchSituation& situation, const NameTable& names)
        : m_branch(branch), m_situation(situation), m_names(names),
          m_name(names[branch.name].text) {}

    std::vector<Finding> build() {
        aboutName();
        aboutWays();
        for (int action = 0; action < static_cast<int>(m_branch.actions.size()); ++action) {
            aboutReferences(action);
            aboutOrder(action);
        }
        std::stable_sort(m_found.begin(), m_found.end(), [](const auto& one, const auto& next) {
            return std::tie(one.action, one.video) < std::tie(next.action, next.video);
        });
        return std::move(m_found);
    }

private:
    void add(Kind kind, std::vector<std::string> arguments, int variant = 0, int action = -1) {
        m_found.push_back(finding(kind, std::move(arguments), variant));
        m_found.back().action = action;
    }

    void aboutName() {
        const NameTable::Entry& own = m_names[m_branch.name];
        if (own.fault && m_situation.isFirstOfName) {
            add(Kind::unreadableName, {m_name}, static_cast<int>(*own.fault));
        }
        if (m_situation.isSecondOfName) {
            add(Kind::duplicateBranch, {m_name});
        }
        if (m_situation.similarName >= 0) {
            add(Kind::similarNames, {m_names[m_situation.similarName].text, m_name});
        }
    }

    void aboutWays() {
        if (m_names[m_branch.video].text.empty()) {
            add(Kind::noVideo, {m_name});
        }
        if (m_situation.reach != Reach::reached) {
            add(Kind::unreached, {m_name}, m_situation.reach == Reach::byNoAction ? 0 : 1);
        }
        if (m_branch.actions.empty()) {
            add(Kind::noWayOut, {m_name});
            m_found.back().severity = m_situation.isOnlyEnd ? Severity::note : Severity::warning;
        } else if (!has(Action::kDefaultAction) && !has(Action::kRandomAction)) {
            add(Kind::waits, {m_name});
        }
    }

    void aboutReferences(int number) {
        const auto index = static_cast<std::size_t>(number);
        const BranchContent::Action& action = m_branch.actions[index];
        const NameTable::Entry& target = m_names[action.target];
        const NameTable::Entry& parameter = m_names[action.parameter];
        const bool isZone = action.type == Action::kZoneAction;
        const Reference zone = m_situation.zones[index];
        // A name that is a branch's or a zone's is reported there.
        if (m_situation.targets[index] == Reference::missing) {
            if (target.fault) {
                add(Kind::unreadableName, {target.text}, static_cast<int>(*target.fault), number);
            } else if (target.text.empty()) {
                add(Kind::missingTarget, {m_name}, 1, number);
            } else {
                add(Kind::missingTarget, {m_name, target.text}, 0, number);
            }
        }
        if (parameter.fault && (!isZone || zone != Reference::good)) {
            add(Kind::unreadableName, {parameter.text}, static_cast<int>(*parameter.fault), number);
        } else if (isZone && parameter.text.empty()) {
            add(Kind::zoneMissing, {m_name}, 1, number);
        } else if (isZone && zone == Reference::missing) {
            add(Kind::zoneMissing, {m_name, parameter.text}, 0, number);
            m_found.back().video = m_names[m_branch.video].text;
            m_found.back().zone = parameter.text;
        }
    }

    void aboutOrder(int number) {
        const BranchContent::Action& action = m_branch.actions[static_cast<std::size_t>(number)];
        const bool isDefault = action.type == Action::kDefaultAction;
        const std::string& parameter = m_names[action.parameter].text;
        if (action.type == Action::kRandomAction ||
            (!isDefault && parameter.empty())) { // without a key or zone it has nothing to repeat
            return;
        }
        std::vector<int>& alike = m_alike[{action.type, isDefault ? -1 : action.parameter}];
        alike.push_back(number);
        if (isDefault && has(Action::kRandomAction)) {
            if (alike.size() == 1) {
                add(Kind::neverFires, {m_name}, 0, number);
            }
        } else if (action.type == Action::kZoneAction) {
            if (alike.size() > 1) {
                add(Kind::neverFires,
                    {std::to_string(number + 1), m_name, std::to_string(alike.front() + 1)}, 1,
                    number);
            }
        } else if (alike.size() == 2 && isDefault) {
            add(Kind::defaultTwice, {m_name}, 0, number);
        } else if (alike.size() == 2) {
            add(Kind::keyTwice, {m_name, parameter}, 0, number);
        }
    }

    [[nodiscard]] bool has(int type) const {
        return std::any_of(m_branch.actions.begin(), m_branch.actions.end(),
                           [&](const BranchContent::Action& one) { return one.type == type; });
    }

    const BranchContent& m_branch;
    const BranchSituation& m_situation;
    const NameTable& m_names;
    const std::string& m_name;
    std::vector<Finding> m_found;
    std::map<std::pair<int, int>, std::vector<int>> m_alike; ///< actions of one type and parameter
};

} // namespace

BranchContent contentOf(const scene::Branch& branch, NameTable& names) {
    BranchContent content{names.numberOf(branch.ID()), names.numberOf(branch.Filename()), {}};
    content.actions.reserve(static_cast<std::size_t>(branch.actionCount()));
    for (int number = 0; number < branch.actionCount(); ++number) {
        const std::shared_ptr<const Action> action = branch.action(number);
        content.actions.push_back({action->Type(), names.numberOf(action->Parameter()),
                                   names.numberOf(action->BranchID())});
    }
    return content;
}

std::vector<Finding> findingsOf(const BranchContent& branch, const BranchSituation& situation,
                                const NameTable& names) {
    return Builder(branch, situation, names).build();
}

} // namespace check
