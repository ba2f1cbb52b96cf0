#include "ui/DuplicateBar.h"

#include <optional>
#include <string_view>
#include <utility>

#include "check/Names.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "core/WholeFile.h"
#include "scene/SceneFolders.h"
#include "scene/SceneSummary.h"
#include "toolkit/controls/CControlUI.h"
#include "ui/SceneHints.h"

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
    m_controls.setText(kLabel, core::tr("Duplicate \"{0}\" as"_tr, scene));
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
        showProblem(
            core::tr("\"{0}\" cannot be duplicated: its Scene.xml is not readable."_tr, m_scene));
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
        return core::tr("A scene of that name would not be in the list."_tr);
    }
    if (check::breaksFile(name)) {
        return core::tr(kUnreadableSceneHint);
    }
    if (check::faultOf(name) == check::NameFault::entity) {
        return core::tr(
            "A scene with such a \"&\" in its name gets another name when it loads."_tr);
    }
    if (check::faultOf(name) || !scene::isGoodFolder(name)) {
        return core::tr("Not every system can have a folder of that name."_tr);
    }
    return m_files.info(folderPath(name)) ? core::tr("There is a folder \"{0}\" already."_tr, name)
                                          : std::u16string();
}

void DuplicateBar::showProgress() {
    m_controls.setText(kLabel,
                       core::tr("Duplicating \"{0}\": {1} %"_tr, m_scene, m_copy.percent()));
}

void DuplicateBar::done(const std::string& name, const std::string& failure) {
    const bool isCancelled = failure == jobs::kCopyCancelled;
    show(!failure.empty() && !isCancelled);
    if (failure.empty()) {
        m_made(name);
        return;
    }
    m_controls.setText(kLabel, core::tr("Duplicate \"{0}\" as"_tr, m_scene));
    if (!isCancelled) {
        showProblem(core::tr("\"{0}\" was not duplicated: {1}."_tr, m_scene, failure));
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
