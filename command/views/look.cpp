#include "command/views/look.h"

#include <charconv>

#include "command/errors.h"
#include "command/views/comparison.h"
#include "command/views/edge_marks.h"
#include "kernel/pixels/image_view.h"

namespace nevrel {
namespace {

/// Columns and rows from the top left pixel, from "X,Y".
Offset ParsePlace(const std::string& text) {
    Offset place{};
    const char* const end = text.data() + text.size();
    const auto [comma, error] = std::from_chars(text.data(), end, place.dx);
    if (error == std::errc{} && comma != end && *comma == ',') {
        const auto [last, wrong] = std::from_chars(comma + 1, end, place.dy);
        if (wrong == std::errc{} && last == end && place.dx >= 0 && place.dy >= 0) return place;
    }
    throw UsageError("--at: '" + text + "' is not X,Y, the place of a pixel, as in 640,360");
}

Area Spot(const Look& look, const Canvas& before, const Canvas& after, const PicturePaths& paths) {
    if (!look.spot) return BusiestSpot(before, after);
    const Offset place = ParsePlace(*look.spot);
    if (place.dx < before.width() && place.dy < before.height())
        return SpotAround(place.dx, place.dy, before);
    throw PictureError(paths.input, "has " + std::to_string(before.width()) + " x " +
                                        std::to_string(before.height()) + " pixels, and none at " +
                                        *look.spot);
}

std::filesystem::path Place(const std::filesystem::path& file) {
    std::error_code error;
    return std::filesystem::weakly_canonical(std::filesystem::absolute(file, error), error);
}

void RequireOther(const std::filesystem::path& view, const std::filesystem::path& file,
                  const std::string& option) {
    std::error_code error;
    if (Place(view) != Place(file) && !std::filesystem::equivalent(view, file, error)) return;
    throw UsageError(option + ": " + view.string() + " is taken; choose another file");
}

void RequireView(const std::filesystem::path& view, const PicturePaths& paths,
                 const std::string& option) {
    if (view.empty()) return;
    static_cast<void>(FormatForPath(view));
    RequireOther(view, paths.input, option);
    RequireOther(view, paths.output, option);
}

}  // namespace

void Look::draw(const host_kit::Instance& instance, const RenderedPart& rendered, const Part& part,
                const PicturePaths& paths) const {
    if (!isWanted()) return;
    const Canvas before = Show(rendered.before(), part);
    if (!comparison.empty()) {
        const Canvas after = Show(rendered.after(), part);
        WriteView(DrawComparison(before, after, Spot(*this, before, after, paths)), comparison);
    }
    if (!edges.empty())
        WriteView(DrawEdges(before, FindEdgeMarks(rendered.before(), instance)), edges);
}

void RequireUsable(const Look& look, const PictureList& pictures) try {
    if (look.spot) static_cast<void>(ParsePlace(*look.spot));
    if (look.spot && look.comparison.empty()) throw UsageError("--at: is for --compare");
    if (!look.isWanted()) return;
    if (pictures.size() > 1)
        throw UsageError("--compare and --edges: are for one picture; nevrel report shows several");
    RequireView(look.comparison, pictures[0], "--compare");
    RequireView(look.edges, pictures[0], "--edges");
    if (!look.edges.empty()) RequireOther(look.edges, look.comparison, "--edges");
} catch (const PictureError& error) {
    throw UsageError(error.what());
}

}  // namespace nevrel
