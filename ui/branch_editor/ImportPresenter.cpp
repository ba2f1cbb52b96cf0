#include "ui/branch_editor/ImportPresenter.h"

#include <algorithm>
#include <new>
#include <utility>

#include "core/Paths.h"
#include "core/Text.h"
#include "core/Texts.h"
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

std::u16string quotedAnd(const std::vector<std::string>& paths) {
    const std::string first = core::fileName(paths.front());
    return paths.size() == 1
               ? core::tr("QuotedName|\"{0}\""_tr, first)
               : core::tr("QuotedAndMore|\"{1}\" and {0} more|\"{1}\" and {0} more"_trn,
                          paths.size() - 1, first);
}

/// '"Videos" and 2 more are folders'; empty for no paths.
std::u16string leftOutText(const std::vector<std::string>& paths, core::Text one,
                           core::Text several) {
    return paths.empty() ? std::u16string()
                         : core::tr(paths.size() == 1 ? one : several, quotedAnd(paths));
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
    try {
        m_dropped.insert(m_dropped.end(), paths.begin(), paths.end());
        if (!m_looking.isRunning() && m_imports != nullptr) {
            lookAtDropped();
        }
    } catch (const std::bad_alloc&) {
        sayTooLittleMemory();
    }
}

void ImportPresenter::lookAtDropped() {
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
            } else {
                sayTooLittleMemory();
            }
            if (!m_dropped.empty()) {
                drop({});
            }
        });
}

/// What is still to be said of an earlier drop stays.
void ImportPresenter::sayTooLittleMemory() {
    m_parts.strip.showNote(
        {}, core::tr("LeftOut|Not added: {0}"_tr, core::tr("there is not enough memory."_tr)));
}

void ImportPresenter::takeDropped(const Dropped& dropped) {
    std::u16string left = leftOutText(dropped.folders, "{0} is a folder: drop the videos in it."_tr,
                                      "{0} are folders: drop the videos in them."_tr);
    const std::u16string others =
        leftOutText(dropped.others, "{0} is not a video."_tr, "{0} are not videos."_tr);
    left += (left.empty() || others.empty() ? u"" : u" ") + others;
    m_leftOut = left.empty() ? std::u16string() : core::tr("LeftOut|Not added: {0}"_tr, left);
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
                                       core::tr("ImportInstead|Import"_tr),
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
    m_parts.strip.offer({.text = text,
                         .answers = {{kConvertButton, convert}},
                         .fix = core::tr("Convert It"_tr),
                         .isFault = true,
                         .isRemedy = true});
    return true;
}

} // namespace ui
