#include "ZoneEdit/HeaderPresenter.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "ZoneEdit/NoticePresenter.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "ZoneEdit/ZoneTexts.h"
#include "core/FileError.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "edit/History.h"
#include "toolkit/controls/CControlUI.h"
#include "ui/SceneHints.h"
#include "zone/LoadReport.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneOperations.h"

namespace zoneedit {
namespace {

constexpr int kNoticeMs = 4000;

} // namespace

HeaderPresenter::HeaderPresenter(ui::Controls controls, const EditedVideo& video,
                                 zone::ZoneSession& session, NoticePresenter& notice,
                                 std::string videoPath)
    : m_controls(controls), m_video(video), m_session(session), m_bar(notice),
      m_videoPath(std::move(videoPath)),
      m_changes(session.observe([this](const auto& changes) { refresh(changes); })) {}

void HeaderPresenter::showAll() {
    readNames();
    show();
}

void HeaderPresenter::showNotice(std::u16string_view text) {
    if (m_notice != text) {
        m_notice = text;
        show();
    }
    if (!text.empty()) {
        m_timer.start(kNoticeMs);
    }
}

bool HeaderPresenter::timeIsUp(unsigned timer) {
    const bool isUp = m_timer.isUp(timer);
    if (isUp) {
        showNotice({});
    }
    return isUp;
}

void HeaderPresenter::save() {
    const bool wasDamaged = m_session.zones().loadReport().problem != zone::LoadProblem::none;
    m_session.save(m_videoPath);
    m_bar.showCaption({}, false); // one that fails again says so again
    m_notice.clear();
    m_saved.clear();
    if (m_session.zones().lastSaveFailure().empty()) {
        m_saved = ui::savedText() + u" ";
        if (wasDamaged) {
            m_saved += core::tr(kDamagedKept) + u" ";
        }
    }
    show();
}

void HeaderPresenter::refresh(const zone::ZoneSession::History::Changes& changes) {
    if (changes.empty()) {
        return;
    }
    const bool isAboutNames = std::any_of(changes.begin(), changes.end(), [](const auto& change) {
        return change.what != zone::ZoneChange::What::shapes;
    });
    if (isAboutNames) {
        readNames();
    }
    if (isAboutNames || !m_saved.empty() || !m_notice.empty()) {
        m_saved.clear();
        m_notice.clear();
        show();
    }
}

void HeaderPresenter::readNames() {
    std::vector<std::string> names;
    for (int zone = 0; zone < m_session.zones().zoneCount(); ++zone) {
        names.push_back(m_session.zones().getZoneName(zone));
    }
    m_namesHint = zoneNamesHint(names);
}

void HeaderPresenter::show() {
    showLabels(m_notice);
    if (isCut() && !m_notice.empty()) {            // the rest may have room without it
        m_bar.refuse(std::exchange(m_notice, {})); // the same may be said again
        showLabels({});
    }
    const bool wasCut = isCut();
    m_bar.showCaption(wasCut ? m_label->GetText() : std::u16string(),
                      wasCut && m_label->GetName() == kProblemLabel);
    if (wasCut) {
        m_label->SetVisible(false);
    }
}

void HeaderPresenter::showLabels(const std::u16string& notice) {
    std::u16string title = core::displayText(core::fileName(m_videoPath));
    const std::u16string problem = problemText(notice);
    if (toolkit::CControlUI* label = m_controls.find(kProblemLabel)) {
        label->SetText(problem);
        label->SetVisible(!problem.empty());
    } else if (!problem.empty()) {
        title += u"    " + problem;
    }
    m_controls.setText(kVideoLabel, title);
    m_controls.setText(kNoteLabel, notice.empty() ? m_saved + m_namesHint : notice);
    m_controls.setVisible(kNoteLabel, problem.empty());
    if (m_allowHint) {
        m_allowHint(problem.empty() && notice.empty() && m_saved.empty() && m_namesHint.empty());
    }
    m_label = m_controls.find(problem.empty() ? kNoteLabel : kProblemLabel);
}

bool HeaderPresenter::isCut() const {
    return m_label != nullptr && !m_label->toolTipAt({}).empty();
}

std::u16string HeaderPresenter::problemText(const std::u16string& notice) const {
    const std::u16string notSaved = ui::notSavedText(m_session.zones().lastSaveFailure());
    if (!notSaved.empty() && !notice.empty()) {
        return notice + u". " + notSaved;
    }
    if (!notSaved.empty() || !notice.empty()) {
        return notSaved;
    }
    const std::u16string unread =
        loadProblemText(m_session.zones().loadReport(), core::withoutExtension(m_videoPath));
    const bool isUnknown = m_saved.empty() && m_video.lacksLength();
    return unread.empty() && isUnknown ? core::tr(kUnknownLength) : unread;
}

} // namespace zoneedit
