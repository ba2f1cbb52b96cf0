// Mouse and keys of an edit.
#include <string>

#include "platform/Accessible.h"
#include "platform/Event.h"
#include "platform/Gui.h"
#include "platform/Window.h"
#include "toolkit/controls/CEditUI.h"
#include "toolkit/controls/CLabelUI.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/text/EditModel.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Notification.h"

namespace toolkit {

using platform::Key;

bool CEditUI::DoEvent(const TEventUI& event) {
    switch (event.Type) {
    case EventType::keyDown:
        return onKey(event.native);
    case EventType::textInput:
        m_preedit.clear();
        if (!m_readOnly && m_model.insert(event.native.text)) {
            changed();
        } else {
            caretMoved();
        }
        return true;
    case EventType::textPreedit:
        m_preedit = m_readOnly ? std::u16string() : event.native.text;
        caretMoved();
        return true;
    case EventType::setFocus:
        Invalidate();
        tellInputMethod();
        return true;
    case EventType::killFocus:
        m_preedit.clear();
        m_dragging = false;
        m_scroll = 0;
        Invalidate();
        m_takenText = m_model.text();
        notify(kKillFocus);
        return true;
    default:
        return onMouse(event) || CLabelUI::DoEvent(event);
    }
}

void CEditUI::forgetInput() {
    m_preedit.clear();
    m_dragging = m_hot = false;
    m_scroll = 0;
    Invalidate();
}

bool CEditUI::onMouse(const TEventUI& event) {
    switch (event.Type) {
    case EventType::buttonDown:
        m_dragging = true;
        m_model.setCaret(positionAt(event.native.position), event.native.modifiers.shift);
        break;
    case EventType::doubleClick:
        m_model.selectWordAt(positionAt(event.native.position));
        break;
    case EventType::mouseMove:
        if (!m_dragging) {
            return true;
        }
        m_model.setCaret(positionAt(event.native.position), true);
        break;
    case EventType::buttonUp:
    case EventType::captureLost:
        m_dragging = false;
        return true;
    case EventType::mouseEnter:
    case EventType::mouseLeave:
        m_hot = event.Type == EventType::mouseEnter;
        Invalidate();
        return true;
    default:
        return false;
    }
    caretMoved();
    return true;
}

bool CEditUI::onKey(const platform::Event& event) {
    const bool word = event.modifiers.control;
    const bool extend = event.modifiers.shift;
    if (event.modifiers.alt) {
        return false;
    }
    switch (event.key) {
    case Key::left:
        m_model.moveLeft(word, extend);
        break;
    case Key::right:
        m_model.moveRight(word, extend);
        break;
    case Key::home:
        m_model.moveHome(extend);
        break;
    case Key::end:
        m_model.moveEnd(extend);
        break;
    case Key::enter:
        if (!event.repeat) {
            GetManager()->SetFocus(nullptr);
        }
        return true;
    default:
        return onEditingKey(event);
    }
    caretMoved();
    return true;
}

bool CEditUI::claimsKey(const platform::Event& event) const {
    // Control with Alt is AltGr, which types.
    const bool control = event.modifiers.control && !event.modifiers.alt;
    const bool taken = m_model.text() == m_takenText;
    switch (event.key) {
    case Key::enter:
    case Key::escape:
    case Key::tab:
    case Key::pageUp:
    case Key::pageDown:
        return false;
    case Key::left:
    case Key::right:
    case Key::home:
    case Key::end:
    case Key::backspace:
    case Key::del:
    case Key::insert:
    case Key::a:
    case Key::c:
    case Key::v:
    case Key::x:
        return true;
    case Key::y:
        return !control || !taken || m_model.canRedo();
    case Key::z:
        return !control || !taken || (event.modifiers.shift && m_model.canRedo());
    default:
        return !control && !platform::isFunctionKey(event.key);
    }
}

bool CEditUI::onEditingKey(const platform::Event& event) {
    bool text = false;
    switch (event.key) {
    case Key::backspace:
        text = !m_readOnly && m_model.eraseBack(event.modifiers.control);
        break;
    case Key::del:
        if (event.modifiers.shift) {
            copySelection();
            text = !m_readOnly && m_model.eraseSelection();
        } else {
            text = !m_readOnly && m_model.eraseForward(event.modifiers.control);
        }
        break;
    case Key::insert:
        if (event.modifiers.control) {
            copySelection();
        } else if (event.modifiers.shift && !m_readOnly) {
            text = m_model.insert(GetManager()->Gui().windows().clipboardText());
        }
        break;
    default:
        return event.modifiers.control ? onShortcut(event) : event.key == Key::space;
    }
    if (text) {
        changed();
    } else {
        caretMoved();
    }
    return true;
}

bool CEditUI::onShortcut(const platform::Event& event) {
    bool text = false;
    switch (event.key) {
    case Key::a:
        m_model.selectAll();
        break;
    case Key::c:
        copySelection();
        break;
    case Key::x:
        copySelection();
        text = !m_readOnly && m_model.eraseSelection();
        break;
    case Key::v:
        text = !m_readOnly && m_model.insert(GetManager()->Gui().windows().clipboardText());
        break;
    case Key::z:
        text = !m_readOnly && (event.modifiers.shift ? m_model.redo() : m_model.undo());
        break;
    case Key::y:
        text = !m_readOnly && m_model.redo();
        break;
    default:
        return false;
    }
    if (text) {
        changed();
    } else {
        caretMoved();
    }
    return true;
}

void CEditUI::accessibleSetValue(const std::u16string& text) {
    const CPaintManagerUI::Busy busy(GetManager());
    if (m_readOnly || !IsEnabled() || GetManager() == nullptr) {
        return;
    }
    m_model.selectAll();
    if (text.empty() ? m_model.eraseSelection() : m_model.insert(text)) {
        changed();
    }
}

void CEditUI::copySelection() {
    if (m_model.hasSelection()) {
        GetManager()->Gui().windows().setClipboardText(std::u16string(m_model.selectedText()));
    }
}

void CEditUI::changed() {
    caretMoved();
    accessibleChanged(platform::AccessibleChange::value);
    notify(kTextChanged);
}

} // namespace toolkit
