#include "ui/branch_editor/ClipCard.h"

#include <string_view>

#include "core/Texts.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CPictureUI.h"
#include "ui/FigureTexts.h"
#include "ui/branch_editor/ControlNames.h"

namespace ui {
namespace {

constexpr std::u16string_view kRow = u"RowClip";
constexpr std::u16string_view kImage = u"ImageClip";
constexpr std::u16string_view kLength = u"LabelClipLength";
constexpr std::u16string_view kSize = u"LabelClipSize";
constexpr std::u16string_view kBytes = u"LabelClipBytes";

} // namespace

ClipCard::ClipCard(Controls controls, stills::StillService* stills) : m_controls(controls) {
    if (stills != nullptr) {
        m_client =
            std::make_unique<stills::StillClient>(*stills, [this](const auto&) { showFacts(); });
    }
}

void ClipCard::show(const std::string& path, bool isNew) {
    if (!m_client) {
        return;
    }
    const toolkit::CControlUI* instead = m_controls.find(branch_list::kOwnVideo);
    const bool hasPlace = !path.empty() && (instead == nullptr || !instead->isShown());
    m_controls.setVisible(kRow, hasPlace);
    if (isNew) {
        m_client->want({});
    }
    m_path = path;
    if (!path.empty()) {
        m_client->want({request()});
    }
    showFacts();
}

void ClipCard::hide() {
    m_path.clear();
    m_controls.setVisible(kRow, false);
}

stills::StillRequest ClipCard::request() const {
    return {m_path, kStillBox};
}

void ClipCard::showFacts() {
    if (!m_client) {
        return;
    }
    const stills::StillPtr still = m_path.empty() ? nullptr : m_client->find(request());
    if (auto* image = m_controls.find<toolkit::CPictureUI>(kImage)) {
        image->SetPicture(still ? toolkit::CPictureUI::Picture(still, &still->picture) : nullptr);
    }
    if (still) {
        showTexts(*still);
        return;
    }
    for (const std::u16string_view name : {kLength, kSize, kBytes}) {
        m_controls.setText(name, {});
    }
}

void ClipCard::showTexts(const stills::Still& still) {
    const bool isClip = still.frame != platform::Size{};
    std::u16string length = !still.exists ? core::tr("File missing"_tr)
                            : !isClip     ? core::tr("Cannot be read"_tr)
                                          : lengthText(still.seconds);
    const std::u16string size = isClip ? sizeText(still.frame) : std::u16string();
    const toolkit::CControlUI* place = m_controls.find(kSize);
    const bool hasRoom = place != nullptr && place->isShown();
    if (!hasRoom && isClip) {
        length += (length.empty() ? u"" : u", ") + size;
    }
    m_controls.setText(kLength, length);
    m_controls.setText(kSize, size);
    m_controls.setText(kBytes, still.exists ? bytesText(still.bytes) : std::u16string());
}

} // namespace ui
