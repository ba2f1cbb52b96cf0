// One rule of a branch that chooses the branch to play next. A Branch owns an ordered list of them.
// One thread at a time: the main thread, or the one that reads a scene.
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

    /// The name of a type number in the scene file; "DefaultAction" if out of range.
    [[nodiscard]] static std::string typeName(int type);
    /// The number of a type name; 0 if unknown. Case-sensitive.
    [[nodiscard]] static int typeNumber(const std::string& name);

    /// Empty only when out of memory.
    [[nodiscard]] static std::shared_ptr<Action> create();
    [[nodiscard]] static std::shared_ptr<Action> create(const tinyxml2::XMLElement& element);

    [[nodiscard]] int Type() const { return m_type; }
    void SetType(int type) { m_type = type; }
    /// The key or the zone's name; empty if the type needs none.
    [[nodiscard]] const std::string& Parameter() const { return m_parameter; }
    void SetParameter(const std::string& parameter) { m_parameter = parameter; }
    /// The ID of the branch to go to.
    [[nodiscard]] const std::string& BranchID() const { return m_branchID; }
    void SetBranchID(const std::string& id) { m_branchID = id; }
    [[nodiscard]] bool Immediate() const { return m_immediate; }
    void SetImmediate(bool immediate) { m_immediate = immediate; }

    /// Writes the "Action" element without escaping texts. Stops with false at the first failed
    /// write.
    [[nodiscard]] bool Write(core::File& file) const;
    /// Reads the element's children; unknown ones are logged and skipped. Always true.
    bool Load(const tinyxml2::XMLElement& element);
    /// The same lines as Write; stops with false when the sink does.
    [[nodiscard]] bool writeTo(LineSink& sink) const;

    friend bool operator==(const Action&, const Action&) = default;

private:
    int m_type = kDefaultAction;
    std::string m_parameter;
    std::string m_branchID;
    bool m_immediate = false;
};

} // namespace scene
