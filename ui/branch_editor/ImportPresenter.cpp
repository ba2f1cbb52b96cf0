#include "ui/branch_editor/ImportPresenter.h"

#include <algorithm>
#include <utility>

#include "core/Paths.h"
#include "core/Text.h"
#include "import/ImportQueue.h"
#include "platform/FileSystem.h"
#include "src/TheoraProbe.h"
#include "ui/branch_editor/ControlNames.h"
#include "ui/branch_editor/StripOffer.h"
#include "ui/branch_editor/StripPresenter.h"
#include "ui/branch_editor/VideoAdder.h"
#include "ui/importing/ImportTexts.h"
#include "ui/importing/SceneImports.h"
#include "ui/importing/VideoKinds.h"

namespace ui {

using namespace branch_list;
using imports::ImportItem;
using imports::ImportState;

namespace {

std::string quotedAnd(const std::vector<std::string>& paths) {
    std::string text = "\"" + core::fileName(paths.front()) + "\"";
    if (paths.size() > 1) {
        text += " and " + std::to_string(paths.size() - 1) + " more";
    }
    return text;
}

/// "… is a folder: drop the videos in it."
std::string leftOutText(const std::vector<std::string>& paths, const char* one,
                        const char* several) {
    return paths.empty() ? std::string() : quotedAnd(paths) + (paths.size() == 1 ? one : several);
}

} // namespace

struct ImportPresenter::Dropped {
    std::vector<std::string> theora;
    std::vector<std::string> videos;
    std::vector<std::string> folders;
    std::vector<std::string> others;
};

ImportPresenter::ImportPresenter(Parts parts, std::shared_ptr<SceneImports> imports)
    : m_parts(std::move(parts)), m_imports(std::move(imports)), m_looking(m_parts.loop) {
    if (m_imports != nullptr) {
        m_changes = m_imports->observe([this] { showProgress(); });
        m_ends = m_imports->observeEnds([this](const ImportItem& item) { ended(item); });
        showProgress();
    }
}

ImportPresenter::~ImportPresenter() = default;

bool ImportPresenter::isBusy() const {
    return m_imports != nullptr && m_imports->queue().isBusy();
}

std::vector<std::string> ImportPresenter::remade() const {
    return m_imports != nullptr ? m_imports->clipsBeingRemade() : std::vector<std::string>();
}

void ImportPresenter::showProgress() {
    if (std::vector<std::string> now = remade(); now != m_remade) {
        m_remade = std::move(now);
        m_parts.changed();
    }
    const auto& items = m_imports->items();
    const auto running = std::find_if(items.begin(), items.end(), [](const ImportItem& item) {
        return item.state == ImportState::converting;
    });
    const int id = running != items.end() && !m_imports->isWindowOpen() ? running->id : 0;
    if (id != 0 && id != m_shownId) {
        const auto text = [imports = m_imports, id]() -> std::u16string {
            const ImportItem* item = imports->queue().find(id);
            return item != nullptr && item->state == ImportState::converting &&
                           !imports->isWindowOpen()
                       ? importingText(*item)
                       : std::u16string();
        };
        m_parts.strip.setStanding(
            StripOffer{text, {{kShowImportButton, [this] { m_parts.openWindow(); }}}});
    }
    m_shownId = id;
    m_parts.strip.refreshOffers();
}

void ImportPresenter::ended(const ImportItem& item) {
    if (item.state == ImportState::done) {
        m_parts.changed();
    }
    if (m_imports->isWindowOpen() || item.state == ImportState::cancelled) {
        return;
    }
    const std::u16string text = importEndText(item);
    if (item.state == ImportState::done) {
        m_parts.strip.showNote(text);
        return;
    }
    m_parts.strip.offer(StripOffer{[imports = m_imports, id = item.id, text] {
                                       const ImportItem* now = imports->queue().find(id);
                                       return now != nullptr && now->state == ImportState::failed &&
                                                      !imports->isWindowOpen()
                                                  ? text
                                                  : std::u16string();
                                   },
                                   {{kShowImportButton, [this] { m_parts.openWindow(); }}},
                                   {},
                                   {},
                                   true});
}

void ImportPresenter::import(const std::vector<std::string>& paths) {
    m_imports->add(paths);
    m_parts.openWindow();
}

void ImportPresenter::drop(const std::vector<std::string>& paths) {
    m_dropped.insert(m_dropped.end(), paths.begin(), paths.end());
    if (m_looking.isRunning() || m_imports == nullptr) {
        return;
    }
    const auto dropped = std::make_shared<Dropped>();
    m_looking.start(
        [dropped, taken = std::exchange(m_dropped, {})](jobs::BackgroundJob::Control& control) {
            platform::FileSystem& files = platform::nativeFileSystem();
            for (const std::string& path : taken) {
                const auto info = files.info(path);
                auto& kind = info && info->isFolder                      ? dropped->folders
                             : theora::probeClip(path, files).isPlayable ? dropped->theora
                             : hasVideoName(path)                        ? dropped->videos
                                                                         : dropped->others;
                kind.push_back(path);
                if (control.isCancelled()) {
                    return;
                }
            }
        },
        {},
        [this, dropped](bool isWhole) {
            if (isWhole) {
                takeDropped(*dropped);
            }
            if (!m_dropped.empty()) {
                drop({});
            }
        });
}

void ImportPresenter::takeDropped(const Dropped& dropped) {
    std::string left = leftOutText(dropped.folders, " is a folder: drop the videos in it.",
                                   " are folders: drop the videos in them.");
    const std::string others = leftOutText(dropped.others, " is no video.", " are no videos.");
    left += (left.empty() || others.empty() ? "" : " ") + others;
    m_leftOut = left.empty() ? std::u16string() : core::displayText("Not added: " + left);
    if (!dropped.videos.empty()) {
        import(dropped.videos);
    }
    if (!dropped.theora.empty()) {
        m_parts.adder.add(dropped.theora); // says in the end what was left out, too
    } else {
        m_parts.strip.showNote({}, takeLeftOut());
    }
}

void ImportPresenter::offerImport(const std::u16string& problem,
                                  const std::vector<std::string>& paths) {
    if (m_imports != nullptr && !paths.empty()) {
        m_parts.strip.offer(StripOffer{[problem] { return problem; },
                                       {{kConvertButton, [this, paths] { import(paths); }}},
                                       u"Import",
                                       {},
                                       true,
                                       true});
    }
}

bool ImportPresenter::offerRemedy(const check::Finding& finding) {
    using check::Kind;
    if (m_imports == nullptr || finding.video.empty() ||
        (finding.kind != Kind::slowSeeks && finding.kind != Kind::sheared &&
         finding.kind != Kind::videoUnreadable)) {
        return false;
    }
    const auto text = [this, clip = finding.video,
                       sentence = core::displayText(check::findingText(finding))] {
        const auto running = remade();
        return std::find(running.begin(), running.end(), clip) == running.end() ? sentence
                                                                                : std::u16string();
    };
    const auto convert = [this, clip = finding.video] {
        m_imports->remake(clip);
        if (m_imports->converterState() == SceneImports::ConverterState::missing) {
            m_parts.openWindow();
        }
    };
    m_parts.strip.offer(StripOffer{text, {{kConvertButton, convert}}, u"Convert It", {}, true});
    return true;
}

} // namespace ui
