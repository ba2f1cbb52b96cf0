#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include <tinyxml2.h>

#include "core/FileError.h"
#include "core/Log.h"
#include "core/Paths.h"
#include "core/Reason.h"
#include "core/ReplacedFiles.h"
#include "core/SafeSave.h"
#include "core/Services.h"
#include "core/Texts.h"
#include "core/WholeFile.h"
#include "platform/FileSystem.h"
#include "scene/Branch.h"
#include "scene/BranchManager.h"
#include "scene/SceneFolders.h"
#include "scene/SceneManager.h"
#include "scene/SceneSummary.h"
#include "scene/SceneXml.h"

namespace scene {
namespace {

constexpr int kSaveLine = 305; // as those in SceneManager.cpp

bool failLoad(const char* reason) {
    core::Log::get()->Error("%s", reason);
    return false;
}

} // namespace

bool SceneManager::Load(const std::string& name) {
    m_loadFailed = !dropBranches();
    if (m_loadFailed) {
        return false;
    }
    if (!name.empty()) {
        m_name = name;
    }
    m_loadFailed = !readFile(core::withSeparator(std::string(kScenesFolder) + "/" + m_name));
    return !m_loadFailed;
}

bool SceneManager::loadFolder(const std::string& folder) {
    m_loadFailed = !dropBranches() || !readFile(folder);
    return !m_loadFailed;
}

bool SceneManager::loadText(std::string_view text) {
    m_loadFailed = !dropBranches() || !readText(text);
    return !m_loadFailed;
}

bool SceneManager::dropBranches() {
    m_branchManager = BranchManager::create();
    m_addedVideos.clear();
    m_saveFailure = {};
    return m_branchManager || failLoad("Unable to create branch manager");
}

bool SceneManager::readFile(const std::string& folder) {
    // From memory: the library does not open files by UTF-8 names on every system.
    const auto text = core::readWholeFile(folder + kSceneFileName, kMaxSceneFileBytes);
    return text ? readText(*text) : failLoad(kSceneNotLoaded);
}

bool SceneManager::readText(std::string_view text) {
    tinyxml2::XMLDocument document;
    const char* problem = nullptr;
    const tinyxml2::XMLElement* const root = parseScene(text, document, problem);
    return root != nullptr ? loadRoot(*root) : failLoad(problem);
}

bool SceneManager::loadRoot(const tinyxml2::XMLElement& root) {
    for (const auto* child = root.FirstChildElement(); child; child = child->NextSiblingElement()) {
        const std::string_view name = child->Name();
        if (name == "Name") {
            m_name = elementText(*child);
        } else if (name == "FirstBranch") {
            m_firstBranch = elementText(*child);
        } else if (name == "Branch") {
            const std::shared_ptr<Branch> branch = Branch::Load(*child);
            if (!branch) {
                return failLoad("Unable to load branch");
            }
            m_branchManager->append(branch);
        } else {
            reportUnknownNode(*child);
        }
    }
    return true;
}

bool SceneManager::Save(const std::string& folder) {
    int error = 0; // both may exist; any other failure shows when the file is opened
    core::services().fileSystem->createFolder(kScenesFolder, error);
    core::services().fileSystem->createFolder(folder, error);
    return saveInto(folder);
}

bool SceneManager::saveInto(const std::string& folder) {
    if (!checkedManager(kSaveLine)) {
        m_saveFailure = {{}, core::reason("there is no scene"_tr)};
        return false; // never replace the scene on the disk by an empty one
    }
    if (m_firstBranch.empty()) {
        m_firstBranch = m_branchManager->branchID(0);
    }
    const std::string path = folder + kSceneFileName;
    core::KeepReplaced kept(m_keeper.get(), {path}, core::ReplacedFiles::Need::wish);
    core::SafeSave save;
    const bool isOpen = save.open(path, "wt");
    FileSink sink(save.file());
    const bool good = isOpen && writeTo(sink) && save.prepare() && kept.isReady() && save.commit();
    if (good) {
        kept.replaced();
    }
    m_saveFailure = save.failure();
    return good;
}

bool SceneManager::writeTo(LineSink& sink) const {
    const std::shared_ptr<Branch> first = m_branchManager->branch(0);
    const std::string& firstID = m_firstBranch.empty() && first ? first->ID() : m_firstBranch;
    return sink.line({"<Scene>"}) && sink.line({"\t<Name>", m_name, "</Name>"}) &&
           sink.line({"\t<FirstBranch>", firstID, "</FirstBranch>"}) &&
           m_branchManager->writeTo(sink) && sink.line({"</Scene>"});
}

std::string SceneManager::fileText() const {
    TextSink sink;
    return m_branchManager && writeTo(sink) ? sink.takeText() : std::string();
}

std::string SceneManager::fileBytes() const {
    const std::string text = fileText();
    std::string bytes;
    bytes.reserve(text.size() + static_cast<std::size_t>(std::ranges::count(text, '\n')));
    std::size_t from = 0;
    for (std::size_t to = text.find('\n'); to != std::string::npos; to = text.find('\n', from)) {
        bytes.append(text, from, to - from).append("\r\n"); // as core::File in text mode
        from = to + 1;
    }
    return bytes.append(text, from);
}

std::string SceneManager::escapedText() const {
    EscapingSink sink;
    return m_branchManager && writeTo(sink) ? sink.takeText() : std::string();
}

bool SceneManager::hasFileText(std::string_view text) const {
    ComparingSink sink(text);
    return (!m_branchManager || writeTo(sink)) && sink.isAtEnd();
}

} // namespace scene
