// One rule of a branch that chooses the branch to play next. A Branch owns an ordered list of them;
// the branch editor edits them in place. Main thread only.
#pragma once

#include <memory>
#include <string>

namespace core {
class File;
}
namespace tinyxml2 {
class XMLElement;
}

namespace scene {

class LineSink;

class Action {
public:
    static constexpr int kDefaultAction = 0;
    static constexpr int kKeypressAction = 1;
    static constexpr int kZoneAction = 2;
    static constexpr int kRandomAction = 3;

    /// The name of a type number in the scene file; "DefaultAction" for a number out of range.
    [[nodiscard]] static std::string typeName(int type);
    /// The number of a type name; 0 for an unknown one. Case counts.
    [[nodiscard]] static int typeNumber(const std::string& name);

    /// Empty only when there is no memory.
    [[nodiscard]] static std::shared_ptr<Action> create();
    [[nodiscard]] static std::shared_ptr<Action> create(const tinyxml2::XMLElement& element);

    [[nodiscard]] int Type() const { return m_type; }
    void SetType(int type) { m_type = type; }
    /// The key or the zone's name; empty when the type needs none.
    [[nodiscard]] const std::string& Parameter() const { return m_parameter; }
    void SetParameter(const std::string& parameter) { m_parameter = parameter; }
    /// The ID of the branch to go to.
    [[nodiscard]] const std::string& BranchID() const { return m_branchID; }
    void SetBranchID(const std::string& id) { m_branchID = id; }
    [[nodiscard]] bool Immediate() const { return m_immediate; }
    void SetImmediate(bool immediate) { m_immediate = immediate; }

    /// Writes the "Action" element, texts unescaped. False at the first write that fails.
    [[nodiscard]] bool Write(core::File& file) const;
    /// Takes what the element's children hold; an unknown child is logged and skipped. Always true.
    bool Load(const tinyxml2::XMLElement& element);
    /// What Write writes; false as soon as the sink says so.
    [[nodiscard]] bool writeTo(LineSink& sink) const;

    friend bool operator==(const Action&, const Action&) = default;

private:
    int m_type = kDefaultAction;
    std::string m_parameter;
    std::string m_branchID;
    bool m_immediate = false;
};

} // namespace scene
