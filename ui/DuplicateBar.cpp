#include "ui/DuplicateBar.h"

#include <optional>
#include <string_view>
#include <utility>

#include "check/Names.h"
#include "core/Text.h"
#include "core/WholeFile.h"
#include "scene/SceneFolders.h"
#include "scene/SceneSummary.h"
#include "toolkit/controls/CControlUI.h"

namespace ui {
namespace {

constexpr std::u16string_view kPanel = u"PanelDuplicate";
constexpr std::u16string_view kLabel = u"LabelDuplicate";
constexpr std::u16string_view kName = u"EditDuplicateName";
constexpr std::u16string_view kMake = u"ButtonMakeDuplicate";
constexpr std::u16string_view kHint = u"LabelHint";

std::string folderPath(const std::string& scene) {
    return scene::scenesFolderPath() + scene;
}

std::u16string quoted(const std::string& name) {
    return core::displayText("\"" + name + "\"");
}

} // namespace

DuplicateBar::DuplicateBar(Controls controls, platform::EventLoop& loop,
                           platform::FileSystem& files,
                           std::function<void(const std::string&)> made,
                           std::function<void()> changed)
    : m_controls(controls), m_files(files), m_made(std::move(made)), m_changed(std::move(changed)),
      m_copy(loop, files) {}

bool DuplicateBar::isShown() const {
    const toolkit::CControlUI* panel = m_controls.find(kPanel);
    return panel != nullptr && panel->isShown();
}

void DuplicateBar::ask(const std::string& scene) {
    if (scene.empty() || isCopying()) {
        return;
    }
    m_scene = scene;
    std::string name;
    for (int number = 2; name.empty() || m_files.info(folderPath(name)); ++number) {
        name = scene + " " + std::to_string(number);
    }
    m_controls.setText(kLabel, u"Duplicate " + quoted(scene) + u" as");
    m_controls.setText(kName, core::displayText(name));
    showProblem({});
    show(true);
    m_controls.startTyping(kName);
}

void DuplicateBar::show(bool shown) {
    m_controls.setVisible(kPanel, shown);
    for (const std::u16string_view name : {kName, kMake}) {
        m_controls.setEnabled(name, !isCopying());
    }
    m_changed();
}

void DuplicateBar::make() {
    const toolkit::CControlUI* edit = m_controls.find(kName);
    if (edit == nullptr || !isShown() || isCopying()) {
        return;
    }
    const std::string name = core::storedText(edit->GetText());
    if (const std::u16string objection = objectionTo(name); !objection.empty()) {
        showProblem(objection);
        return;
    }
    const auto text = core::readWholeFile(folderPath(m_scene) + "/" + scene::kSceneFileName,
                                          scene::kMaxSceneFileBytes);
    const auto renamed = text ? scene::renamedScene(*text, name) : std::nullopt;
    if (!renamed) {
        showProblem(quoted(m_scene) + u" cannot be duplicated: its Scene.xml is not readable.");
        return;
    }
    showProblem({});
    m_copy.start(
        folderPath(m_scene), folderPath(name), {scene::kSceneFileName, *renamed},
        [this] { showProgress(); },
        [this, name](const std::string& failure) { done(name, failure); });
    showProgress();
    show(true);
}

std::u16string DuplicateBar::objectionTo(const std::string& name) const {
    if (!scene::canBeListed(name)) {
        return u"A scene of that name would not be in the list.";
    }
    if (check::breaksFile(name)) {
        return u"A scene with \"<\" in its name will not load again.";
    }
    if (check::faultOf(name) == check::NameFault::entity) {
        return u"A scene with such a \"&\" in its name gets another name when it loads.";
    }
    if (check::faultOf(name) || !scene::isGoodFolder(name)) {
        return u"Not every system can have a folder of that name.";
    }
    return m_files.info(folderPath(name)) ? u"There is a folder " + quoted(name) + u" already."
                                          : std::u16string();
}

void DuplicateBar::showProgress() {
    m_controls.setText(kLabel, u"Duplicating " + quoted(m_scene) + u": " +
                                   core::displayText(std::to_string(m_copy.percent())) + u" %");
}

void DuplicateBar::done(const std::string& name, const std::string& failure) {
    const bool isCancelled = failure == jobs::kCopyCancelled;
    show(!failure.empty() && !isCancelled);
    if (failure.empty()) {
        m_made(name);
        return;
    }
    m_controls.setText(kLabel, u"Duplicate " + quoted(m_scene) + u" as");
    if (!isCancelled) {
        showProblem(quoted(m_scene) + u" was not duplicated: " + core::displayText(failure) + u".");
    }
}

void DuplicateBar::hide() {
    if (isCopying()) {
        m_copy.cancel();
        return;
    }
    showProblem({});
    show(false);
}

void DuplicateBar::showProblem(const std::u16string& text) const {
    m_controls.showProblem(text, kHint);
}

} // namespace ui
