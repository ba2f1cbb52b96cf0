#include "ui/SceneHints.h"

#include <cstddef>

#include "core/FileError.h"
#include "core/Paths.h"
#include "core/Services.h"
#include "core/Text.h"
#include "platform/Clock.h"
#include "scene/SceneFolders.h"

namespace ui {

namespace {

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

/// That only the first of `count` is named.
std::string andMore(std::size_t count) {
    return count > 1 ? " (and " + std::to_string(count - 1) + " more)" : std::string();
}

} // namespace

std::u16string findingHint(const std::optional<check::Finding>& finding) {
    return finding ? core::displayText(check::findingText(*finding)) : std::u16string();
}

std::u16string copyText(const jobs::CopyStatus& status) {
    std::string text = "Copying " + status.name;
    if (status.count > 1) {
        text += " (" + std::to_string(status.number) + " of " + std::to_string(status.count) + ")";
    }
    if (status.totalBytes > 0) {
        const auto percent = static_cast<int>(static_cast<double>(status.copiedBytes) * 100.0 /
                                              static_cast<double>(status.totalBytes));
        text += ": " + std::to_string(percent < 100 ? percent : 100) + " %";
    }
    return core::displayText(text + ". Esc cancels.");
}

std::u16string notSavedText(const core::FileError& error) {
    // Folders would push the reason out of a narrow label.
    const core::FileError shown{core::fileName(error.file), error.reason};
    return error.empty() ? std::u16string() : core::displayText("Not saved: " + shown.text());
}

std::u16string importNote(const jobs::ImportOutcome& outcome) {
    std::string text;
    if (outcome.added == 1) {
        text = "The video is in the list now; choose it for a branch.";
    } else if (outcome.added > 1) {
        text = std::to_string(outcome.added) +
               " videos are in the list now; choose them for branches.";
    }
    if (outcome.listedAlready > 0) {
        text += text.empty() ? "" : " ";
        text += outcome.listedAlready == 1
                    ? "A video of this name was in the list already."
                    : std::to_string(outcome.listedAlready) + " were in the list already.";
    }
    return core::displayText(text);
}

std::u16string importProblem(const jobs::ImportOutcome& outcome) {
    std::string failed;
    if (!outcome.failed.empty()) {
        failed = "Not added: " + outcome.failed.front() + ": " + outcome.failure +
                 andMore(outcome.failed.size());
    }
    std::string faulty;
    if (!outcome.faulty.empty()) {
        faulty = quoted(outcome.faulty.front()) + " cannot be played: " + outcome.fault +
                 andMore(outcome.faulty.size());
    }
    std::string unplayable;
    if (!outcome.notTheora.empty()) {
        const std::size_t others = outcome.notTheora.size() - 1;
        unplayable = quoted(outcome.notTheora.front());
        unplayable += others == 0 ? " is not a Theora video and cannot be played."
                                  : " and " + std::to_string(others) +
                                        " more are not Theora videos and cannot be played.";
    }
    return joinSentences(
        {core::displayText(failed), core::displayText(faulty), core::displayText(unplayable)});
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
    return u"Another branch is named \"" + name + u"\" already.";
}

std::u16string ownVideoText(const std::string& name) {
    return name.empty() ? u"This branch has no video yet."
                        : core::displayText("Its video is " + quoted(name) + ".");
}

std::u16string unlistedHint(std::string_view name) {
    if (scene::canBeListed(name)) {
        return {};
    }
    if (name.find_first_of("/\\") != std::string_view::npos) {
        return u"/ and \\ make folders inside folders; the scene will not be in the list.";
    }
    if (name == "..") {
        return u".. leads out of the scenes folder; the scene will not be in the list.";
    }
    return name == "." ? u". is the scenes folder itself; the scene will not be in the list."
                       : u"Without a name the scene will not be in the list.";
}

std::u16string nothingToEditText(int place) {
    return core::displayText("Edit Zones opens the video of the branch at the same position in the "
                             "list; there is no branch " +
                             std::to_string(place + 1) + " with a video.");
}

std::u16string otherVideoText(const std::string& listed, const std::string& own) {
    std::string text = "Edit Zones opens " + quoted(listed) + " here.";
    if (!own.empty()) {
        text += " This Branch's Zones opens " + quoted(own) + ".";
    }
    return core::displayText(text);
}

std::u16string unreadableVideoText(const std::string& path) {
    return core::displayText("The video " + quoted(core::fileName(path)) +
                             " could not be read: the file is missing or is not a Theora video.");
}

std::u16string savedText() {
    return core::displayText("Saved at " + core::services().clock->localTimeText() + ".");
}

} // namespace ui
