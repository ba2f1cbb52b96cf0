#include "ui/SceneHints.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "core/FileError.h"
#include "core/Paths.h"
#include "core/Reason.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "scene/SceneFolders.h"
#include "ui/TimeTexts.h"

namespace ui {

namespace {

/// `text`, and that it is true of more than the first of `count`.
std::u16string andMore(const std::u16string& text, std::size_t count) {
    return count > 1
               ? core::tr("AndMore|{1} (and {0} more)|{1} (and {0} more)"_trn, count - 1, text)
               : text;
}

/// What is said of a clip that cannot be played, as theora::probeClip has it.
constexpr std::array kRefusals{
    "Error parsing Theora stream headers."_tr,
    "Error parsing vorbis stream headers"_tr,
    "invalid theora stream"_tr,
    "End of file found prematurely"_tr,
    "Can't open video file"_tr,
    "Can't read video file"_tr,
    "out of memory"_tr,
};

std::u16string refusalText(const std::string& reason) {
    const auto* const known =
        std::find_if(kRefusals.begin(), kRefusals.end(),
                     [&](const core::Text& text) { return text.source == reason; });
    return known != kRefusals.end() ? core::tr(*known) : core::displayText(reason);
}

} // namespace

std::u16string findingHint(const std::optional<check::Finding>& finding) {
    return finding ? core::displayText(check::findingText(*finding)) : std::u16string();
}

std::u16string copyText(const jobs::CopyStatus& status) {
    const bool isOne = status.count <= 1;
    if (status.totalBytes == 0) {
        return isOne ? core::tr("Copying {0}. Esc cancels."_tr, status.name)
                     : core::tr("Copying {0} ({1} of {2}). Esc cancels."_tr, status.name,
                                status.number, status.count);
    }
    const int percent =
        std::min(100, static_cast<int>(static_cast<double>(status.copiedBytes) * 100.0 /
                                       static_cast<double>(status.totalBytes)));
    return isOne ? core::tr("CopyingPercent|Copying {0}: {1} %. Esc cancels."_tr, status.name,
                            percent)
                 : core::tr("CopyingOfPercent|Copying {0} ({1} of {2}): {3} %. Esc cancels."_tr,
                            status.name, status.number, status.count, percent);
}

std::u16string notSavedText(const core::FileError& error) {
    // Folders would push the reason out of a narrow label.
    const core::FileError shown{core::fileName(error.file), core::trReason(error.reason)};
    return error.empty() ? std::u16string()
                         : core::tr("NotSavedWhy|Not saved: {0}"_tr, shown.text());
}

std::u16string importNote(const jobs::ImportOutcome& outcome) {
    std::u16string text;
    if (outcome.added > 0) {
        text = core::tr("The video is in the list now; choose it for a branch.|"
                        "{0} videos are in the list now; choose them for branches."_trn,
                        static_cast<std::size_t>(outcome.added));
    }
    if (outcome.listedAlready > 0) {
        text += text.empty() ? u"" : u" ";
        text += core::tr("A video of this name was in the list already.|"
                         "{0} were in the list already."_trn,
                         static_cast<std::size_t>(outcome.listedAlready));
    }
    return text;
}

std::u16string importProblem(const jobs::ImportOutcome& outcome) {
    std::u16string failed;
    if (!outcome.failed.empty()) {
        failed =
            andMore(core::tr("Not added: {0}: {1}"_tr, outcome.failed.front(), outcome.failure),
                    outcome.failed.size());
    }
    std::u16string faulty;
    if (!outcome.faulty.empty()) {
        faulty = andMore(core::tr("\"{0}\" cannot be played: {1}"_tr, outcome.faulty.front(),
                                  refusalText(outcome.fault)),
                         outcome.faulty.size());
    }
    std::u16string unplayable;
    if (!outcome.notTheora.empty()) {
        const std::size_t others = outcome.notTheora.size() - 1;
        const std::string& name = outcome.notTheora.front();
        unplayable =
            others == 0
                ? core::tr("\"{0}\" is not a Theora video and cannot be played."_tr, name)
                : core::tr(
                      "AndMoreNotTheora|\"{1}\" and {0} more are not Theora videos and cannot be "
                      "played.|\"{1}\" and {0} more are not Theora videos and cannot be played."_trn,
                      others, name);
    }
    return joinSentences({failed, faulty, unplayable});
}

std::u16string joinSentences(const std::vector<std::u16string>& sentences) {
    std::u16string text;
    for (const std::u16string& sentence : sentences) {
        if (!sentence.empty() && !text.empty()) {
            text += text.back() == u'.' ? u" " : u". ";
        }
        text += sentence;
    }
    return text;
}

std::u16string takenNameText(const std::u16string& name) {
    return core::tr("Another branch is named \"{0}\" already."_tr, name);
}

std::u16string ownVideoText(const std::string& name) {
    return name.empty() ? core::tr("This branch has no video yet."_tr)
                        : core::tr("Its video is \"{0}\"."_tr, name);
}

std::u16string unlistedHint(std::string_view name) {
    if (scene::canBeListed(name)) {
        return {};
    }
    if (name.find_first_of("/\\") != std::string_view::npos) {
        return core::tr(
            "/ and \\ make folders inside folders; the scene will not be in the list."_tr);
    }
    if (name == "..") {
        return core::tr(".. leads out of the scenes folder; the scene will not be in the list."_tr);
    }
    return name == "."
               ? core::tr(". is the scenes folder itself; the scene will not be in the list."_tr)
               : core::tr("Without a name the scene will not be in the list."_tr);
}

std::u16string nothingToEditText(int place) {
    return core::tr("Edit Zones opens the video of the branch at the same position in the "
                    "list; there is no branch {0} with a video."_tr,
                    place + 1);
}

std::u16string otherVideoText(const std::string& listed, const std::string& own) {
    const std::u16string text = core::tr("Edit Zones opens \"{0}\" here."_tr, listed);
    return own.empty() ? text
                       : text + u" " + core::tr("This Branch's Zones opens \"{0}\"."_tr, own);
}

std::u16string unreadableVideoText(const std::string& path) {
    return core::tr("The video \"{0}\" could not be read: the file is missing or is not a Theora "
                    "video."_tr,
                    core::fileName(path));
}

std::u16string savedText() {
    return core::tr("Saved at {0}."_tr, nowText());
}

} // namespace ui
