#include "bench/FollowingPeer.h"

#ifdef QUORVEL_HAVE_OPENCV
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <opencv2/calib3d.hpp>
#include <opencv2/imgproc.hpp>
#include <opencv2/video/tracking.hpp>

namespace bench {
namespace {

cv::Mat asMat(const track::GreyView& view) {
    const cv::Mat wrapped(view.height, view.width, CV_8UC1, const_cast<std::uint8_t*>(view.pixels),
                          static_cast<std::size_t>(view.rowBytes));
    return wrapped; // only read
}

cv::Mat maskOf(const cv::Mat& picture, const track::Polygon& polygon) {
    std::vector<cv::Point> corners;
    for (const track::Point& p : polygon) {
        corners.emplace_back(static_cast<int>(std::lround(p.x)),
                             static_cast<int>(std::lround(p.y)));
    }
    cv::Mat mask(picture.size(), CV_8UC1, cv::Scalar(0));
    cv::fillPoly(mask, std::vector<std::vector<cv::Point>>{corners}, cv::Scalar(255));
    return mask;
}

} // namespace

bool hasPeer() {
    return true;
}

track::Polygon followByPeer(const track::GreyView& before, const track::GreyView& now,
                            const track::Polygon& polygon) {
    cv::setNumThreads(1);
    const cv::Mat from = asMat(before);
    const cv::Mat to = asMat(now);
    std::vector<cv::Point2f> corners;
    cv::goodFeaturesToTrack(from, corners, 80, 0.01, 6, maskOf(from, polygon));
    if (corners.size() < 4) {
        return {};
    }
    const cv::Size window(15, 15);
    std::vector<cv::Point2f> found;
    std::vector<cv::Point2f> back;
    std::vector<std::uint8_t> isFound;
    std::vector<std::uint8_t> isBack;
    std::vector<float> errors;
    cv::calcOpticalFlowPyrLK(from, to, corners, found, isFound, errors, window, 3);
    cv::calcOpticalFlowPyrLK(to, from, found, back, isBack, errors, window, 3);
    std::vector<cv::Point2f> good;
    std::vector<cv::Point2f> goodTo;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        if (isFound[i] != 0 && isBack[i] != 0 && cv::norm(back[i] - corners[i]) < 0.7) {
            good.push_back(corners[i]);
            goodTo.push_back(found[i]);
        }
    }
    if (good.size() < 4) {
        return {};
    }
    const cv::Mat motion =
        cv::estimateAffinePartial2D(good, goodTo, cv::noArray(), cv::RANSAC, 1.5);
    if (motion.empty()) {
        return {};
    }
    const auto m = [&](int row, int column) { return motion.at<double>(row, column); };
    return warped({{m(0, 0), m(0, 1), m(0, 2), m(1, 0), m(1, 1), m(1, 2), 0, 0, 1}}, polygon);
}

} // namespace bench
#else
namespace bench {

bool hasPeer() {
    return false;
}

track::Polygon followByPeer(const track::GreyView& /*before*/, const track::GreyView& /*now*/,
                            const track::Polygon& /*polygon*/) {
    return {};
}

} // namespace bench
#endif
