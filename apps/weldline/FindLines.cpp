#include "FindLines.h"

#include "comm/Agreement.h"

namespace weldline {

FoundLines findLines(const RankPart& part, const LineSources& sources, const LineOptions& options) {
    FoundLines found;
    Ranks& ranks = part.ranks;
    found.lines =
        findWeldLines(part, sources.mesh, sources.angles, sources.fillTime, options.limit);
    found.mesh = cutOutLines(part, sources.mesh, found.lines, sources.angles, sources.directions);
    found.shapes = together(ranks, [&] { return shapesOf(found.mesh); });
    addShapes(ranks, found.shapes, options.weldLimit, found.lines);
    addNearestPatches(sources.patches, found.lines);
    for (const CarriedField& field : sources.carried)
        addCarried(ranks, sources.mesh, sources.fillTime, field.name, field.values, found.lines);
    found.dropped = dropNoise(options.filter, found.lines);
    return found;
}

}  // namespace weldline
