#include "toolkit/window/WindowImplBase.h"

#include "core/Log.h"
#include "platform/Event.h"
#include "platform/EventLoop.h"
#include "platform/Geometry.h"
#include "platform/Gui.h"
#include "platform/Window.h"
#include "toolkit/layout/CDialogBuilder.h"
#include "toolkit/skin/Skin.h"
#include "toolkit/skin/WindowLook.h"

namespace toolkit {

WindowImplBase::WindowImplBase(platform::Gui& gui) : CWindowWnd(gui), m_manager(gui) {
    m_manager.AddNotifier(this);
    m_manager.AddMessageFilter(this);
}

WindowImplBase::~WindowImplBase() {
    m_manager.windowDestroyed();
    destroyNative();
}

bool WindowImplBase::readLayout(const Skin& skin, CDialogBuilder& builder) const {
    const auto layout = skin.read(GetSkinFile());
    if (!layout) {
        core::Log::get()->Error("Unable to read layout %s", skin.describe(GetSkinFile()).c_str());
        return false;
    }
    if (!builder.Load(*layout)) {
        return refuse(skin, builder);
    }
    if (builder.baseFile().empty()) {
        return true;
    }
    const auto base = skin.read(builder.baseFile());
    return (base && builder.LoadBase(*base)) || refuse(skin, builder);
}

bool WindowImplBase::refuse(const Skin& skin, const CDialogBuilder& builder) const {
    core::Log::get()->Error("Layout %s is malformed: %s", skin.describe(GetSkinFile()).c_str(),
                            builder.problem().c_str());
    return false;
}

bool WindowImplBase::buildControls(const std::shared_ptr<const Skin>& skin, CDialogBuilder& builder,
                                   const std::u16string& title) {
    m_manager.Init(GetNative());
    m_manager.look().SetSkin(skin);
    m_manager.SetWindowSize(builder.windowSize());
    if (!builder.Build(m_manager, this, GetSkinFile())) {
        return refuse(*skin, builder);
    }
    for (const std::string& remark : builder.remarks()) {
        core::Log::get()->Error("Layout %s: %s", skin->describe(GetSkinFile()).c_str(),
                                remark.c_str());
    }
    if (CControlUI& root = *m_manager.GetRoot(); root.accessibleName().empty()) {
        root.SetAttribute(u"label", title);
    }
    return true;
}

bool WindowImplBase::Create(platform::NativeWindow* owner, const std::u16string& title,
                            std::uint32_t style, std::uint32_t exStyle) {
    const std::shared_ptr<const Skin> skin = Skin::open(GetSkinFolder());
    CDialogBuilder builder;
    if (!readLayout(*skin, builder)) {
        return false;
    }
    platform::WindowOptions options;
    options.className = GetWindowClassName();
    options.title = title;
    options.style = style;
    options.extendedStyle = exStyle;
    options.size = builder.windowSize();
    options.leastSize = m_leastSize = builder.leastSize();
    options.owner = owner;
    if (!createNative(options)) {
        return false;
    }
    const CPaintManagerUI::Busy busy(&m_manager);
    if (!buildControls(skin, builder, title)) {
        m_manager.windowDestroyed();
        destroyNative();
        return false;
    }
    m_manager.UpdateLayout();
    InitWindow();
    controlsReady();
    return true;
}

void WindowImplBase::Close(int code) {
    m_manager.stopInput();
    CWindowWnd::Close(code);
}

bool WindowImplBase::HandleMessage(const platform::Event& event) {
    switch (event.kind) {
    case platform::EventKind::destroyed:
        m_manager.windowDestroyed();
        if (!m_modeless) {
            Gui().loop().postQuit(0);
        }
        return true;
    case platform::EventKind::closeRequest:
        Close();
        return true;
    default:
        return m_manager.MessageHandler(event);
    }
}

std::unique_ptr<CControlUI> WindowImplBase::CreateControl(std::u16string_view /*className*/) {
    return nullptr;
}

void WindowImplBase::paint(platform::Canvas& canvas, const platform::Rect& dirty) {
    m_manager.Paint(canvas, dirty);
}

} // namespace toolkit
