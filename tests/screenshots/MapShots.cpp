#include "tests/screenshots/MapShots.h"

#include <memory>

#include "platform/Event.h"
#include "platform/Geometry.h"
#include "scene/SceneSession.h"
#include "tests/screenshots/Shots.h"
#include "tests/support/gui/WindowDriver.h"
#include "ui/BranchList.h"

namespace screenshots {

namespace {

/// With a choice that leads back, one that leads nowhere and a branch that nothing leads to.
void grow(scene::SceneSession& session) {
    for (const char* name : {"Help a colleague", "Stairs A", "Stairs B", "Assembly point",
                             "Headcount", "Someone is missing", "Debriefing"}) {
        session.addBranch();
        session.renameBranch(session.branchCount() - 1, name);
        session.setVideo(session.branchCount() - 1, session.video(session.branchCount() % 4));
    }
    session.setVideo(session.branchCount() - 1, {});
    constexpr struct {
        int branch;
        int type;
        const char* parameter;
        const char* target;
    } kMore[] = {{1, 1, "H", "Help a colleague"},
                 {2, 0, "", "Stairs A"},
                 {3, 1, "S", "Stairs B"},
                 {4, 1, "A", "Assembly point"},
                 {5, 0, "", "Stairs A"},
                 {6, 0, "", "Assembly point"},
                 {6, 1, "R", "Take the lift"},
                 {7, 3, "", "Assembly point"},
                 {7, 3, "", "Someone is missing"},
                 {8, 0, "", "Headcount"},
                 {9, 1, "M", "Someone is missing"},
                 {10, 1, "B", "Stairs B"},
                 {11, 0, "", "Headcount"}};
    for (const auto& more : kMore) {
        session.addAction(more.branch);
        const int action = session.actionCount(more.branch) - 1;
        session.setType(more.branch, action, more.type);
        session.setParameter(more.branch, action, more.parameter);
        session.setTarget(more.branch, action, more.target);
    }
}

} // namespace

void takeMap(Photographer& photographer) {
    photographer.loadDemo();
    grow(photographer.session());
    photographer.makeStills();
    const auto window = photographer.opened<ui::BranchList>();
    const test::WindowDriver driver(*window);
    driver.native().setGeometry(platform::Rect::at(0, 0, 1600, 900));
    settle(*window);
    photographer.shoot("Map", *window);
    driver.click(u"ButtonMapIn");
    driver.click(u"ButtonMapIn");
    driver.native().setGeometry(platform::Rect::at(0, 0, 884, 672));
    settle(*window);
    driver.press(platform::Key::m, {.control = true});
    settle(*window);
    photographer.shoot("Map@884x672", *window);
}

} // namespace screenshots
