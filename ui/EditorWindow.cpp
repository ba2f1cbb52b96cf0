#include "ui/EditorWindow.h"

namespace ui {

EditorWindow::EditorWindow(const WindowContext& context)
    : WindowImplBase(context.gui), m_context(context) {}

bool EditorWindow::runScreen(std::u16string_view title) {
    if (!Create(nullptr, std::u16string(title), kScreenStyle, kScreenExtendedStyle)) {
        return false;
    }
    runLoop();
    return true;
}

void EditorWindow::runLoop() {
    CenterWindow();
    ShowModal();
    if (m_context.gui.isEnding()) {
        m_context.state.quit = true;
    }
}

toolkit::CControlUI* EditorWindow::findControl(std::u16string_view name) {
    return GetPaintManager().FindControl(name);
}

void EditorWindow::setTextOf(std::u16string_view name, std::u16string_view text) {
    if (toolkit::CControlUI* control = findControl(name)) {
        control->SetText(text);
    }
}

void EditorWindow::setEnabledOf(std::u16string_view name, bool enabled) {
    if (toolkit::CControlUI* control = findControl(name)) {
        control->SetEnabled(enabled);
    }
}

void EditorWindow::setVisibleOf(std::u16string_view name, bool visible) {
    if (toolkit::CControlUI* control = findControl(name)) {
        control->SetVisible(visible);
    }
}

bool EditorWindow::showProblem(std::u16string_view text, std::u16string_view usual) {
    toolkit::CControlUI* problem = findControl(u"LabelProblem");
    if (problem == nullptr) {
        return false;
    }
    problem->SetText(text);
    problem->SetVisible(!text.empty());
    if (!usual.empty()) {
        setVisibleOf(usual, text.empty());
    }
    return true;
}

} // namespace ui
