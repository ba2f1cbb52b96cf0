#include "toolkit/controls/MenuPopup.h"

#include <utility>

#include "platform/Event.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/input/FocusKeeper.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/PopupPlacement.h"

namespace toolkit {

using platform::EventKind;
using platform::Key;
using platform::Point;

MenuPopup& MenuPopup::of(CPaintManagerUI& manager) {
    return manager.popupOf<MenuPopup>();
}

bool MenuPopup::openAt(const platform::Rect& anchor, CControlUI& owner,
                       const std::vector<MenuEntry>& entries) {
    close();
    auto* root = controlCast<CContainerUI>(m_manager.GetRoot());
    if (entries.empty() || root == nullptr || !m_manager.takesInput()) {
        return false;
    }
    const CPaintManagerUI::Busy busy(&m_manager);
    m_manager.focusKeeper().takeText();
    m_before = m_manager.GetFocus();
    m_beforeLife = m_before != nullptr ? m_before->accessibleLife() : std::weak_ptr<const void>();
    m_menu = controlCast<CMenuUI>(root->Add(std::make_unique<CMenuUI>(
        m_manager.look(), entries, [this](const auto& action) { run(action); })));
    m_life = m_menu->accessibleLife();
    m_menu->SetLabel(owner.accessibleName());
    m_owner = &owner;
    const platform::Size window = m_manager.GetWindowSize();
    m_menu->SetPlace(placeMenu(anchor, m_menu->EstimateSize(window), window));
    m_manager.UpdateLayout();
    m_manager.SetFocus(m_menu);
    if (m_manager.focusKeeper().isKeyboardUse()) {
        m_menu->useKey(Key::home);
    }
    owner.Invalidate();
    return true;
}

void MenuPopup::close() {
    CControlUI* owner = std::exchange(m_owner, nullptr);
    CMenuUI* menu = this->menu();
    m_menu = nullptr;
    if (owner == nullptr) {
        return;
    }
    const CPaintManagerUI::Busy busy(&m_manager);
    owner->Invalidate();
    if (menu == nullptr || menu->GetManager() != &m_manager) {
        return;
    }
    if (m_manager.takesInput() && m_manager.GetFocus() != nullptr &&
        m_manager.GetFocus()->isInside(menu)) {
        m_manager.SetFocus(m_beforeLife.expired() ? nullptr : m_before);
    }
    if (auto* parent = controlCast<CContainerUI>(menu->GetParent())) {
        parent->RemoveAt(parent->GetItemIndex(menu));
    }
}

bool MenuPopup::key(const TEventUI& event) {
    CMenuUI* menu = this->menu();
    const platform::Event& native = event.native;
    if (menu == nullptr || native.kind == EventKind::textInput) {
        if (menu != nullptr) {
            menu->typed(native.text);
        }
        return true;
    }
    const bool isHeld = native.repeat && (native.key == Key::enter || native.key == Key::space);
    if (native.kind != EventKind::keyDown || isHeld || menu->useKey(native.key)) {
        return true; // a held key may have opened the menu
    }
    if (native.key == Key::escape || isMenuKey(native)) {
        close();
    } else if (native.key == Key::tab) {
        close();
        m_manager.focusKeeper().setKeyboardUse(true);
        m_manager.focusKeeper().move(native.modifiers.shift);
    } else if (native.key == Key::f4 && native.modifiers.alt) {
        close();
        return false; // it asks the window to close
    }
    return true; // all other keys belong to the open menu
}

bool MenuPopup::holds(const CControlUI* control) const {
    return control != nullptr && menu() != nullptr && control->isInside(menu());
}

Point MenuPopup::toWindow(Point screen) const {
    const Point origin = m_manager.toScreen({0, 0});
    return {screen.x - origin.x, screen.y - origin.y};
}

void MenuPopup::dragOver(Point screen) {
    CControlUI* hit =
        menu() != nullptr ? menu()->controlAt(toWindow(screen), Meeting::mouse) : nullptr;
    if (hit != nullptr && hit->CanTakeFocus()) {
        m_manager.SetFocus(hit);
    }
}

void MenuPopup::dropAt(Point screen) {
    if (CMenuUI* menu = this->menu()) {
        menu->runAt(toWindow(screen));
    }
}

void MenuPopup::run(const std::function<void()>& action) {
    const std::function<void()> kept = action; // the row goes with the menu
    close();
    kept();
}

} // namespace toolkit
