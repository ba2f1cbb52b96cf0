// Following what is in the zone: starts it, shows how far it has come, and keeps what was found as
// a proposal until the author accepts it, which is one step, or discards it. Any other change of
// the zones discards it. Part of the zone editor. UI thread only.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "ZoneEdit/EditedVideo.h"
#include "ZoneEdit/FollowLayer.h"
#include "ZoneEdit/ShapeEditor.h"
#include "edit/Observers.h"
#include "follow/FollowJob.h"
#include "follow/Following.h"
#include "platform/EventLoop.h"
#include "platform/FileSystem.h"
#include "ui/Controls.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

class NoticePresenter;

class FollowPresenter {
public:
    /// What it works with. All outlive it.
    struct Links {
        ui::Controls controls;
        EditedVideo& video;
        zone::ZoneSession& session;
        const ShapeEditor& editor; ///< gives the place, the keys and the range
        NoticePresenter& notice;
        platform::EventLoop& loop;
        platform::FileSystem& files;
        std::string path;                                   ///< of the video
        std::function<void(int frame)> showFrame;           ///< has the window show another frame
        std::function<void(const zone::FrameRange&)> offer; ///< marks what was found; empty: none
        std::function<void()> barChanged;                   ///< its bar came or went
    };
    explicit FollowPresenter(Links links);
    ~FollowPresenter();

    [[nodiscard]] bool canStart() const;
    /// From the frame on show to the other end of the range, forwards or backwards; without a range
    /// to the end of the clip. At most up to the next key of the author's.
    void start();
    [[nodiscard]] bool isRunning() const { return m_job.isRunning(); }
    /// Ends the work; what was found is the proposal.
    void stop();
    [[nodiscard]] bool canAccept() const { return !m_layer->shapes().empty(); }
    /// Stops first.
    void accept();
    /// Also while it is running. False when there was nothing to discard.
    bool discard();

private:
    [[nodiscard]] std::optional<follow::Request> request(const ShapeEditor::Place& place) const;
    void setGoal(follow::Request& request, const ShapeEditor::Place& place) const;
    void showNews(const follow::News& news);
    void finish(const follow::Outcome& outcome);
    void showPanel();
    void showSign(std::u16string_view icon, std::u16string_view tint) const;
    void showFound();
    void propose(FollowLayer::Shapes shapes);
    void close();

    Links m_links;
    std::shared_ptr<FollowLayer> m_layer = std::make_shared<FollowLayer>();
    follow::Request m_request;
    ShapeEditor::Place m_place;
    bool m_isOpen = false;      ///< running or proposed
    bool m_isAccepting = false; ///< as soon as it has stopped
    bool m_isChanging = false;  ///< the zones, by accepting
    edit::Subscription m_changes;
    follow::FollowJob m_job; ///< last: nothing is called once it is gone
};

} // namespace zoneedit
