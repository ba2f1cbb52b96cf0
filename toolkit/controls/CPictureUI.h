// A picture of the program's own, as large as fits, its sides in proportion; without one, its icon.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/Accessible.h"
#include "platform/Bitmap.h"
#include "toolkit/controls/CControlUI.h"

namespace toolkit {

class CPictureUI : public CControlUI {
public:
    using Picture = std::shared_ptr<const platform::Bitmap>;

    [[nodiscard]] std::u16string GetClass() const override { return u"Picture"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;

    /// Null for none.
    void SetPicture(Picture picture);
    [[nodiscard]] const Picture& GetPicture() const { return m_picture; }

    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::picture;
    }

protected:
    void paintText(platform::Canvas& canvas) override;

private:
    Picture m_picture;
};

} // namespace toolkit
