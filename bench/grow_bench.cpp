// The grow and matte tools over whole pictures, as the bridge runs them.

#include <opencv2/imgproc.hpp>

#include "bench/Frame.h"

namespace ombrelune::bench {
namespace {

/// One seed in the middle of a mask that is full.
MakeEffect GrowFull(KVector2 const& seed)
{
    return Tool("BF_Grow", Setting<int>{"Chan"_id, 3}, Setting<KRange>{"GrwS"_id, {-1.0F, 2.0F}},
                Setting<KVector2>{"See0"_id, seed});
}

/// The exact distances from the same seed by OpenCV: the peer of Grow.
Work OpenCvDistances(Case const& row)
{
    cv::setNumThreads(row.threads);
    int const width = row.picture->Width(), height = row.picture->Height();
    auto mask = std::make_shared<cv::Mat>(height, width, CV_8UC1, cv::Scalar(1));
    mask->at<unsigned char>(height / 2, width / 2) = 0;
    auto out = std::make_shared<cv::Mat>();
    return [=] { cv::distanceTransform(*mask, *out, cv::DIST_L2, cv::DIST_MASK_PRECISE); };
}

bool const tools[] = {
    RatioRows("Tool/Grow",
              [](Case const& row) {
                  auto const x = static_cast<float>(row.picture->Width()),
                             y = static_cast<float>(row.picture->Height());
                  return Frame(GrowFull({x / 2.0F, y / 2.0F}), changed)(row);
              },
              {kDepthFloat}),
    RatioRows("OpenCV/DistanceTransform", OpenCvDistances, {kDepthFloat}),
    RatioRows("Tool/Eat", Frame(Tool("BF_Eat"), changed)),
    RatioRows("Tool/CleanEdges", Frame(Tool("BF_CleanEdges"), changed)),
    RatioRows("Tool/ExtendRows", Frame(Tool("BF_Extend"), changed)),
    RatioRows("Tool/ExtendColumns", Frame(Tool("BF_Extend", Setting<int>{"Dire"_id, 1}), changed)),
    RatioRows("Tool/MatteCleaner", Frame(Tool("BF_MatteCleaner", Setting<float>{"Thr0"_id, 0.2F}), changed)),
};

} // namespace
} // namespace ombrelune::bench
