#include "toolkit/layout/CDialogBuilder.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <tinyxml2.h>

#include "core/Text.h"
#include "core/Texts.h"
#include "core/XmlTags.h"
#include "platform/FontSet.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/layout/ControlFactory.h"
#include "toolkit/layout/IDialogBuilderCallback.h"
#include "toolkit/layout/SizeRanges.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace toolkit {
namespace {

using tinyxml2::XMLAttribute;
using tinyxml2::XMLElement;

constexpr std::size_t kMaxRemarks = 100;
constexpr std::size_t kMaxRanges = 16; ///< of a control
constexpr const char* kRange = "Range";
constexpr const char* kRangeFrom = "from";

std::u16string wide(const char* text) {
    return core::displayText(text != nullptr ? text : "");
}

bool isShownText(std::string_view attribute) {
    return attribute == "text" || attribute == "tooltip" || attribute == "label";
}

/// The attributes of `<Font>`.
const AttributeTable<platform::FontDescription>& fontAttributes() {
    using Font = platform::FontDescription;
    using Text = std::u16string_view;
    static const AttributeTable<Font> attributes{
        {u"family", [](Font& f, Text v) { f.family = core::storedText(v); }},
        {u"size",
         [](Font& f, Text v) { f.pixelSize = std::clamp(parseInt(v).value_or(12), 1, 200); }},
        {u"bold", [](Font& f, Text v) { f.bold = parseBool(v).value_or(false); }},
        {u"italic", [](Font& f, Text v) { f.italic = parseBool(v).value_or(false); }},
    };
    return attributes;
}

} // namespace

struct CDialogBuilder::Document {
    tinyxml2::XMLDocument xml;
};

/// One run through the elements. tinyxml2 refuses elements nested deeper than a hundred, which
/// bounds the recursion.
struct CDialogBuilder::Building {
    CDialogBuilder& builder;
    CPaintManagerUI& manager;
    IDialogBuilderCallback* callback;
    int controls = 0;

    void remark(const XMLElement& element, const std::string& what) {
        if (builder.m_remarks.size() < kMaxRemarks) {
            builder.m_remarks.push_back("line " + std::to_string(element.GetLineNum()) + ": " +
                                        what);
        }
    }

    /// What a control gets for an attribute: texts in the chosen language.
    [[nodiscard]] std::u16string valueFor(const char* name, const char* value) const {
        return isShownText(name) ? core::trLayout(builder.m_area, wide(value)) : wide(value);
    }

    void addFont(const XMLElement& element) {
        platform::FontDescription font;
        for (const XMLAttribute* a = element.FirstAttribute(); a != nullptr; a = a->Next()) {
            if (!fontAttributes().apply(font, wide(a->Name()), wide(a->Value()))) {
                remark(element, std::string("Font has no attribute ") + a->Name());
            }
        }
        if (!manager.look().AddFont(font)) {
            remark(element, "too many fonts");
        }
    }

    void addDefaults(const XMLElement& element) {
        const char* kind = element.Attribute("class");
        if (kind == nullptr) {
            remark(element, "Default without a class");
            return;
        }
        for (const XMLAttribute* a = element.FirstAttribute(); a != nullptr; a = a->Next()) {
            if (std::string_view(a->Name()) != "class" &&
                !manager.look().AddDefault(wide(kind), wide(a->Name()), wide(a->Value()))) {
                remark(element, std::string("too many defaults for ") + kind);
            }
        }
    }

    void setWindowAttributes(CControlUI& root, const XMLElement& element) {
        for (const XMLAttribute* a = element.FirstAttribute(); a != nullptr; a = a->Next()) {
            const std::u16string name = wide(a->Name());
            const std::u16string value = wide(a->Value());
            if (name == u"caption") {
                manager.SetCaption(parseRect(value).value_or(platform::Rect{}));
            } else if (name != u"minsize" && !root.SetAttribute(name, value)) {
                remark(element, std::string("Window has no attribute ") + a->Name());
            }
        }
    }

    std::unique_ptr<CControlUI> makeControl(const XMLElement& element) {
        const std::u16string kind = wide(element.Name());
        std::unique_ptr<CControlUI> control = createControl(kind);
        if (control == nullptr && callback != nullptr) {
            control = callback->CreateControl(kind);
        }
        if (control == nullptr) {
            remark(element, std::string("unknown element ") + element.Name());
            return nullptr;
        }
        manager.look().ApplyDefaults(*control);
        for (const XMLAttribute* a = element.FirstAttribute(); a != nullptr; a = a->Next()) {
            if (!control->SetAttribute(wide(a->Name()), valueFor(a->Name(), a->Value()))) {
                remark(element, std::string(element.Name()) + " has no attribute " + a->Name());
            }
        }
        addRanges(*control, element);
        return control;
    }

    /// What the element or the default of its kind says; null when neither does.
    std::optional<std::u16string> usualValue(const CControlUI& control, const XMLElement& element,
                                             const char* name) {
        if (const char* own = element.Attribute(name)) {
            return valueFor(name, own);
        }
        const auto& defaults = manager.look().GetDefaults(control.GetClass());
        const auto found = std::find_if(defaults.rbegin(), defaults.rend(), [&](const auto& value) {
            return value.first == wide(name);
        });
        return found != defaults.rend() ? std::optional(found->second) : std::nullopt;
    }

    /// Only attributes that the control has outside the range, too, or they would stay for good.
    void addRanges(CControlUI& control, const XMLElement& element) {
        SizeRanges::Values usual;
        std::vector<SizeRanges::Range> ranges;
        for (const XMLElement* e = element.FirstChildElement(kRange); e != nullptr;
             e = e->NextSiblingElement(kRange)) {
            const auto from = parseSize(wide(e->Attribute(kRangeFrom)));
            if (!from) {
                remark(*e, "Range without a size from which it holds");
                continue;
            }
            if (ranges.size() == kMaxRanges) {
                remark(*e, "too many ranges");
                break;
            }
            ranges.push_back({*from, {}});
            for (const XMLAttribute* a = e->FirstAttribute(); a != nullptr; a = a->Next()) {
                const auto value = usualValue(control, element, a->Name());
                if (std::string_view(a->Name()) == kRangeFrom) {
                    continue;
                }
                if (!value) {
                    remark(*e, std::string(element.Name()) + " has no " + a->Name() +
                                   " outside this range");
                    continue;
                }
                usual.emplace_back(wide(a->Name()), *value);
                ranges.back().values.emplace_back(wide(a->Name()), valueFor(a->Name(), a->Value()));
            }
        }
        if (!ranges.empty()) {
            manager.ranges().add(control, std::move(usual), std::move(ranges));
        }
    }

    bool addChildren(CContainerUI& parent, const XMLElement& from) {
        for (const XMLElement* e = from.FirstChildElement(); e != nullptr;
             e = e->NextSiblingElement()) {
            const std::string_view kind = e->Name();
            if (kind == "Font" || kind == "Default" || kind == kRange) {
                continue;
            }
            if (++controls > kMaxControls) {
                builder.m_problem = "too many controls";
                return false;
            }
            std::unique_ptr<CControlUI> control = makeControl(*e);
            if (control == nullptr) {
                continue;
            }
            auto* container = controlCast<CContainerUI>(control.get());
            if (container != nullptr && !addChildren(*container, *e)) {
                return false;
            }
            if (parent.Add(std::move(control)) == nullptr) {
                remark(*e, std::string(e->Name()) + " cannot stand here");
            }
        }
        return true;
    }
};

CDialogBuilder::CDialogBuilder() = default;
CDialogBuilder::~CDialogBuilder() = default;

bool CDialogBuilder::Load(std::span<const std::uint8_t> xml) {
    m_base.reset();
    m_baseFile.clear();
    m_document = std::make_unique<Document>();
    if (!parse(*m_document, xml)) {
        return false;
    }
    if (const char* base = m_document->xml.RootElement()->Attribute("base")) {
        m_baseFile = base;
        return true;
    }
    return readWindow();
}

bool CDialogBuilder::LoadBase(std::span<const std::uint8_t> xml) {
    m_base = std::make_unique<Document>();
    if (!parse(*m_base, xml)) {
        return false;
    }
    if (m_base->xml.RootElement()->Attribute("base") != nullptr) {
        m_problem = "its base has a base itself";
        return false;
    }
    return readWindow();
}

bool CDialogBuilder::parse(Document& document, std::span<const std::uint8_t> xml) {
    m_problem.clear();
    if (xml.size() > kMaxLayoutBytes) {
        m_problem = "too large";
        return false;
    }
    // The data pointer of an empty span may be null, which tinyxml2 does not take.
    const char* text = xml.empty() ? "" : reinterpret_cast<const char*>(xml.data());
    if (!core::areTagsModest({text, xml.size()})) {
        m_problem = "too many attributes";
        return false;
    }
    if (document.xml.Parse(text, xml.size()) != tinyxml2::XML_SUCCESS) {
        m_problem =
            "line " + std::to_string(document.xml.ErrorLineNum()) + ": " + document.xml.ErrorName();
        return false;
    }
    const XMLElement* window = document.xml.RootElement();
    if (window == nullptr || std::string_view(window->Name()) != "Window") {
        m_problem = "no Window element";
        return false;
    }
    return true;
}

const char* CDialogBuilder::windowAttribute(const char* name) const {
    const char* own = m_document->xml.RootElement()->Attribute(name);
    return own == nullptr && m_base != nullptr ? m_base->xml.RootElement()->Attribute(name) : own;
}

bool CDialogBuilder::readWindow() {
    const auto size = parseSize(wide(windowAttribute("size")));
    if (!size || size->width < 1 || size->height < 1 || size->width > kMaxWindowSide ||
        size->height > kMaxWindowSide) {
        m_problem = "Window has no valid size";
        return false;
    }
    m_size = *size;
    m_leastSize = parseSize(wide(windowAttribute("minsize"))).value_or(platform::Size{});
    m_leastSize = {std::clamp(m_leastSize.width, 0, m_size.width),
                   std::clamp(m_leastSize.height, 0, m_size.height)};
    return true;
}

bool CDialogBuilder::Build(CPaintManagerUI& manager, IDialogBuilderCallback* callback,
                           std::string_view file) {
    m_remarks.clear();
    m_area = m_baseFile.empty() ? file : m_baseFile;
    m_area.resize(std::min(m_area.rfind('.'), m_area.size()));
    const XMLElement& window = *(m_base != nullptr ? m_base : m_document)->xml.RootElement();
    Building building{*this, manager, callback};
    for (const XMLElement* e = window.FirstChildElement(); e != nullptr;
         e = e->NextSiblingElement()) {
        const std::string_view kind = e->Name();
        if (kind == "Font") {
            building.addFont(*e);
        } else if (kind == "Default") {
            building.addDefaults(*e);
        }
    }
    auto root = std::make_unique<CContainerUI>();
    building.setWindowAttributes(*root, window);
    if (!building.addChildren(*root, window)) {
        return false;
    }
    manager.AttachRoot(std::move(root));
    return true;
}

} // namespace toolkit
