// The pointer as Windows shows it, after real movements.
#include <utility>

#include <windows.h>

#include "platform/WindowParts.h"
#include "tests/toolkit/ToolkitTest.h"

namespace {

using platform::PointerShape;

class Pointer : public toolkit_test::ToolkitTest {};

} // namespace

TEST_F(Pointer, HasTheShapeOfWhatIsUnderIt) {
    open(
        R"(<Edit name="Edit" pos="10,10,80,20"/><Control name="Link" pos="10,40,80,20" link="true"/>
        <Button name="Go" pos="10,70,80,20" text="Go"/>)");
    for (const auto& [name, cursor] :
         {std::pair(u"Edit", IDC_IBEAM), {u"Link", IDC_HAND}, {u"Go", IDC_ARROW}}) {
        driver().hover(name);
        EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, cursor));
    }
    for (const auto& [shape, cursor] : {std::pair(PointerShape::cross, IDC_CROSS),
                                        {PointerShape::move, IDC_SIZEALL},
                                        {PointerShape::sizeAcross, IDC_SIZEWE},
                                        {PointerShape::sizeDown, IDC_SIZENS},
                                        {PointerShape::notAllowed, IDC_NO}}) {
        driver().native().input().setPointer(shape);
        EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, cursor));
    }
}
