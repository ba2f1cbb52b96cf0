#include "tools/tour/EditingPass.h"

#include <chrono>
#include <string>
#include <string_view>

#include "platform/Event.h"
#include "platform/Geometry.h"
#include "tools/tour/Script.h"

namespace tour {

namespace {

using namespace std::chrono_literals;
using platform::Key;

constexpr const char16_t* kOpenScene = u"OpenSceneWindow";
constexpr const char16_t* kNewScene = u"NewSceneWindow";
constexpr const char16_t* kBranches = u"QuorvelWindow";
constexpr const char16_t* kZones = u"ZoneEditWindow";
constexpr const char16_t* kQuestion = u"ConfirmationWindow";
constexpr auto kGlance = 150ms;

void look(Script& script, const char16_t* window, const std::string& name) {
    script.wait(kGlance);
    script.on(window, [&script, name] { script.picture(name); });
}

void click(Script& script, const char16_t* window, std::u16string_view control) {
    script.on(window, [&script, control] { script.click(control); });
    script.wait(kGlance);
}

void pick(Script& script, const char16_t* window, std::u16string_view combo, int item) {
    click(script, window, combo);
    script.on(window, [&script, item] { script.pickItem(item); });
    script.wait(kGlance);
}

void pickInRow(Script& script, int row, std::u16string_view combo, int item) {
    script.on(kBranches, [&script, row, combo] { script.clickInRow(row, combo); });
    script.wait(kGlance);
    script.on(kBranches, [&script, item] { script.pickItem(item); });
    script.wait(kGlance);
}

void typeText(Script& script, const char16_t* window, std::u16string_view edit,
              const std::u16string& text) {
    click(script, window, edit);
    script.on(window, [&script, text] {
        platform::Modifiers control;
        control.control = true;
        script.press(Key::a, control);
        script.press(Key::del);
        script.type(text);
    });
    script.wait(kGlance);
}

void nameText(Script& script, const char16_t* window, std::u16string_view edit,
              const std::u16string& text) {
    typeText(script, window, edit, text);
    script.on(window, [&script] { script.press(Key::enter); });
    script.wait(kGlance);
}

void openAScene(Script& script) {
    look(script, kOpenScene, "1-open-scene");
    click(script, kOpenScene, u"ButtonNewScene");
    typeText(script, kNewScene, u"EditSceneName", u"Ladder Inspection");
    look(script, kNewScene, "2-new-scene");
    click(script, kNewScene, u"ButtonBack");
    click(script, kOpenScene, u"ButtonLoadScene");
}

void editBranches(Script& script) {
    // The program's own tour, which the first start brings.
    script.on(kBranches, [&script] { script.press(Key::escape); });
    look(script, kBranches, "3-branches");
    click(script, kBranches, u"ButtonAddBranch");
    nameText(script, kBranches, u"EditBranchName", u"Check the corridor");
    pick(script, kBranches, u"ComboVideoName", 0);
    click(script, kBranches, u"ButtonAddAction");
    click(script, kBranches, u"ButtonAddAction");
    pickInRow(script, 0, u"ComboConditions", 2);
    pickInRow(script, 0, u"ComboParameter", 0);
    pickInRow(script, 0, u"ComboBranches", 0);
    pickInRow(script, 1, u"ComboBranches", 1);
    script.on(kBranches, [&script] { script.clickInRow(0, u"CheckImmediate"); });
    look(script, kBranches, "4-branch-with-actions");
    script.on(kBranches, [&script] { script.clickInRow(1, u"ComboConditions"); });
    look(script, kBranches, "5-branch-open-list");
    script.on(kBranches, [&script] { script.press(Key::escape); });
    script.wait(kGlance);
    click(script, kBranches, u"ButtonEditZones");
}

void drawAZone(Script& script) {
    // Give the background decoder time for the frame.
    script.wait(kGlance);
    look(script, kZones, "6-zone-editor");
    click(script, kZones, u"ButtonAddZone");
    nameText(script, kZones, u"EditZone", u"Way out");
    click(script, kZones, u"OptionAddMultiPoint");
    for (const platform::Point at :
         {platform::Point{480, 260}, {720, 250}, {760, 480}, {500, 500}}) {
        script.on(kZones, [&script, at] { script.clickAt(at); });
        script.wait(kGlance);
    }
    click(script, kZones, u"OptionMovePoint");
    click(script, kZones, u"ButtonNext10");
    script.on(kZones, [&script] { script.press(Key::right); });
    script.wait(kGlance);
    script.on(kZones, [&script] { script.drag({{720, 250}, {740, 240}, {780, 230}}); });
    look(script, kZones, "7-zone-drawn");
    click(script, kZones, u"ButtonSave");
    click(script, kZones, u"ButtonClose");
    look(script, kQuestion, "8-question");
    click(script, kQuestion, u"ButtonYes");
}

} // namespace

void writeEditingPass(Script& script) {
    openAScene(script);
    editBranches(script);
    drawAZone(script);
    look(script, kBranches, "9-branches-again");
    click(script, kBranches, u"ButtonSave");
    click(script, kBranches, u"ButtonExit");
    script.on(kQuestion, [&script] { script.click(u"ButtonYes"); });
}

} // namespace tour
