#include "follow/Following.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <ranges>

#include "follow/FrameFeed.h"
#include "src/LumaReader.h"
#include "src/TheoraException.h"
#include "track/BothEnds.h"
#include "track/Geometry.h"
#include "track/Picture.h"

namespace follow {
namespace {

/// One way through the frames.
struct Way {
    std::vector<track::Polygon> shapes;
    double leastMatch = 1;
    track::Sight sight = track::Sight::kept;
    bool isUnreadable = false;
};

class Work {
public:
    Work(const Request& request, theora::LumaReader& reader, const std::function<bool()>& isStopped,
         const std::function<void(const News&)>& report)
        : m_request(request), m_reader(reader), m_isStopped(isStopped), m_report(report),
          m_scaleX(static_cast<double>(reader.size().width) / request.display.width),
          m_scaleY(static_cast<double>(reader.size().height) / request.display.height) {
        m_news.all = request.count() * (request.pointsBeyond.empty() ? 1 : 2);
    }

    Outcome run() {
        const int count = m_request.count();
        const int step = m_request.step();
        const Way there = go(m_request.frame, m_request.points, step, count);
        Way back;
        if (!m_request.pointsBeyond.empty() && !m_isStopped()) {
            back = go(m_request.last + step, m_request.pointsBeyond, -step, count);
        }
        Outcome outcome;
        const auto joined = track::joinBothEnds(there.shapes, back.shapes, count);
        const auto gap = std::ranges::find_if(joined, [](const auto& shape) { return !shape; });
        for (auto shape = joined.begin(); shape != gap; ++shape) {
            outcome.shapes.push_back(fromVideo(**shape));
        }
        for (auto shape = joined.rbegin(); gap != joined.end() && *shape; ++shape) {
            outcome.shapesBeyond.push_back(fromVideo(**shape));
        }
        outcome.leastMatch = std::min(there.leastMatch, back.leastMatch);
        if (gap != joined.end() && !m_isStopped()) {
            outcome.lostAt = m_request.frame + step * (static_cast<int>(outcome.shapes.size()) + 1);
            outcome.isUnreadable = there.isUnreadable;
            outcome.sight = there.sight;
        }
        return outcome;
    }

private:
    static std::size_t size(int count) { return static_cast<std::size_t>(count); }

    Way go(int from, const Points& points, int step, int count) {
        Way way;
        FrameFeed feed(m_reader, step < 0);
        const track::GreyView first = feed.frame(from);
        if (first.pixels == nullptr) {
            way.isUnreadable = !m_isStopped();
            return way;
        }
        track::Follower follower(first, toVideo(points));
        std::vector<double> matches;
        std::size_t certain = 0; // shapes up to the last that is not doubtful
        for (int i = 1; i <= count && !m_isStopped(); ++i) {
            const track::GreyView picture = feed.frame(from + i * step);
            if (picture.pixels == nullptr) {
                way.isUnreadable = !m_isStopped();
                break;
            }
            const track::Step found = follower.follow(picture);
            way.sight = found.sight;
            if (found.sight != track::Sight::kept) {
                break;
            }
            way.shapes.push_back(found.shape);
            matches.push_back(found.match);
            certain = found.isDoubtful ? certain : way.shapes.size();
            tell(from + i * step, found);
        }
        way.isUnreadable = way.isUnreadable && certain == way.shapes.size();
        way.shapes.resize(certain);
        matches.resize(certain);
        for (const double match : matches) {
            way.leastMatch = std::min(way.leastMatch, match);
        }
        return way;
    }

    void tell(int frame, const track::Step& found) {
        m_news.frame = frame;
        m_news.points = fromVideo(found.shape);
        m_news.match = found.match;
        ++m_news.done;
        m_report(m_news);
    }

    /// Points are at the middle of pixels.
    [[nodiscard]] track::Polygon toVideo(const Points& points) const {
        track::Polygon polygon;
        for (const platform::Point& p : points) {
            polygon.push_back({(p.x + 0.5) * m_scaleX - 0.5, (p.y + 0.5) * m_scaleY - 0.5});
        }
        return polygon;
    }
    [[nodiscard]] Points fromVideo(const track::Polygon& polygon) const {
        const auto inside = [](double value, int most) {
            return static_cast<int>(std::lround(std::clamp<double>(value, 0, most)));
        };
        Points points;
        for (const track::Point& p : polygon) {
            points.push_back({inside((p.x + 0.5) / m_scaleX - 0.5, m_request.display.width - 1),
                              inside((p.y + 0.5) / m_scaleY - 0.5, m_request.display.height - 1)});
        }
        return points;
    }

    const Request& m_request;
    theora::LumaReader& m_reader;
    const std::function<bool()>& m_isStopped;
    const std::function<void(const News&)>& m_report;
    double m_scaleX;
    double m_scaleY;
    News m_news;
};

} // namespace

Outcome nothingRead(const Request& request) {
    Outcome outcome;
    outcome.lostAt = request.frame + request.step();
    outcome.isUnreadable = true;
    return outcome;
}

Outcome followZone(const Request& request, platform::FileSystem& files,
                   const std::function<bool()>& isStopped,
                   const std::function<void(const News&)>& report) {
    try {
        theora::LumaReader reader(request.path, files, isStopped);
        return Work(request, reader, isStopped, report).run();
    } catch (const theora::TheoraGenericException&) {
        return isStopped() ? Outcome() : nothingRead(request);
    }
}

} // namespace follow
