#include "CaseParameters.h"

#include <charconv>
#include <sstream>

#include "Random.h"
#include "Streams.h"

namespace weldline::reference {

namespace {

using P = CaseParameters;

constexpr Knob allKnobs[] = {
    {"runs", &P::runs},
    {"rebind", &P::rebind},
    {"extraBindings", &P::extraBindings},
    {"remesh", &P::remesh},
    {"newSettings", &P::newSettings},
    {"mutate", &P::mutate},
    {"processes", &P::processes},
    {"partitions", &P::partitions},
    {"nx", &P::nx},
    {"ny", &P::ny},
    {"nz", &P::nz},
    {"kind", &P::kind},
    {"empty", &P::empty},
    {"emptyAt", &P::emptyAt},
    {"handle", &P::handle},
    {"setters", &P::setters},
    {"moving", &P::moving},
    {"guard", &P::guard},
    {"tails", &P::tails},
    {"nullValues", &P::nullValues},
    {"nullArrays", &P::nullArrays},
    {"poison", &P::poison},
    {"grid", &P::grid},
    {"scramble", &P::scramble},
    {"rank", &P::rank},
    {"nullObjects", &P::nullObjects},
    {"allMax", &P::allMax},
    {"gradSwitch", &P::gradSwitch},
    {"meshFileType", &P::meshFileType},
    {"jitter", &P::jitter},
    {"squash", &P::squash},
    {"outletSides", &P::outletSides},
    {"inletSides", &P::inletSides},
    {"symmetrySides", &P::symmetrySides},
    {"groupMix", &P::groupMix},
    {"renumber", &P::renumber},
    {"fractions", &P::fractions},
    {"flow", &P::flow},
    {"flowScale", &P::flowScale},
    {"slotValues", &P::slotValues},
    {"unreached", &P::unreached},
    {"specials", &P::specials},
    {"zeroVolumes", &P::zeroVolumes},
    {"oddGeometry", &P::oddGeometry},
    {"limitFlow", &P::limitFlow},
    {"cellState", &P::cellState},
    {"mode11", &P::mode11},
    {"rbf", &P::rbf},
    {"control", &P::control},
    {"path", &P::path},
    {"meshPath", &P::meshPath},
    {"debug", &P::debug},
    {"debugBlocked", &P::debugBlocked},
    {"method", &P::method},
    {"gradMethod", &P::gradMethod},
    {"nGrad", &P::nGrad},
    {"smoothBefore", &P::smoothBefore},
    {"smoothAfter", &P::smoothAfter},
    {"boundaryAngle", &P::boundaryAngle},
    {"filterPara", &P::filterPara},
    {"volumeFilter", &P::volumeFilter},
    {"truncate", &P::truncate},
};

// Zero mostly, else a value of the range.
int seldom(Random& random, double probability, int low, int high) {
    return random.chance(probability) ? random.integer(low, high) : 0;
}

void drawMesh(Random& random, CaseParameters& p) {
    p.kind = random.pick({0, 0, 0, 0, 0, 0, 0, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 5, 5, 5, 5, 5});
    const bool many = p.kind == 1 || p.kind == 3;  // Several cells per block of the box.
    p.nx = many ? random.pick({1, 2, 2, 3}) : random.pick({1, 2, 3, 3, 4, 4});
    p.ny = many ? random.pick({1, 1, 2, 2}) : random.pick({1, 2, 2, 3, 3, 4});
    p.nz = many ? random.pick({1, 1, 2}) : random.pick({1, 1, 2, 2, 3});
    p.jitter = random.pick({0, 0, 5, 20, 20, 45});
    p.squash = seldom(random, 0.12, 1, 3);
    if (random.chance(0.45)) {
        p.outletSides = random.pick({1, 3, 3, 12, 15, 48, 48, 60, 60, 63, random.integer(0, 63)});
    }
    p.inletSides = seldom(random, 0.4, 1, 63) & ~p.outletSides;
    p.symmetrySides = seldom(random, 0.4, 1, 63) & ~p.outletSides & ~p.inletSides;
    p.groupMix = seldom(random, 0.2, 5, 100);
    p.partitions = random.chance(0.15) ? random.integer(2, 4) : 1;
    p.renumber = random.integer(0, 1);
    p.fractions = seldom(random, 0.1, 10, 100);
}

void drawValues(Random& random, CaseParameters& p) {
    p.flow = random.pick({0, 0, 0, 0, 0, 6, 6, 6, 1, 1, 1, 2, 3, 4, 5});
    p.flowScale = seldom(random, 0.3, -4, 4);
    p.slotValues = random.pick({0, 0, 0, 1, 2});
    p.unreached = seldom(random, 0.3, 1, 40);
    p.specials = seldom(random, 0.1, 1, 20);
    p.zeroVolumes = seldom(random, 0.12, 1, 40);
    p.oddGeometry = seldom(random, 0.1, 1, 60);
    p.cellState = seldom(random, 0.25, 1, 40);
    p.mode11 = random.chance(0.12) ? 1 : 0;
    p.rbf = random.integer(0, 2);
}

void drawHost(Random& random, CaseParameters& p) {
    p.meshFileType = random.pick({0, 1, 2, 2, 3});
    p.gradSwitch = random.integer(0, 11);
    p.allMax = seldom(random, 0.15, 1, 4);
    p.nullObjects = p.partitions == 1 ? seldom(random, 0.15, 1, 7) : 0;
    p.moving = random.chance(0.3) ? 1 : 0;
    p.scramble = random.chance(0.3) ? 1 : 0;
    p.handle = random.chance(0.15) ? 1 : 0;
    p.rank = p.partitions == 1 ? seldom(random, 0.1, 1, 2) : 0;
    p.setters = random.chance(0.3) ? 1 : 0;
}

void drawControl(Random& random, CaseParameters& p) {
    p.control = random.pick({0, 1, 1, 1, 1, 1, 1, 1, 1, 2, 2, 2, 2, 3, 4});
    p.path = random.chance(0.12) ? random.integer(1, 5) : 0;
    if (p.partitions > 1 && p.path == 1) {
        p.path = 0;  // The master's trace would replace the control file that others still read.
    }
    p.debug = random.chance(0.35) ? 1 : 0;
    p.debugBlocked = p.path == 0 && random.chance(0.04) ? 1 : 0;
    p.method = random.pick({1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 4, 4, 4, 4, 40, 5, 0, -1});
    p.gradMethod = random.pick({3, 3, 3, 3, 3, 3, 2, 2, 1, 4, 4, 0, 5, -1});
    p.nGrad = random.pick({0, 1, 2, 3, 3, 3, 4, 4, 6, 6, -1});
    p.smoothBefore = random.pick({0, 0, 0, 1, 2, -1});
    p.smoothAfter = random.pick({0, 0, 0, 1, 1, 2, -1});
    p.boundaryAngle = random.pick({0, 0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 5, 6, 10});
    p.filterPara = seldom(random, 0.3, 1, 6);
    p.volumeFilter = seldom(random, 0.3, 1, 7);
    p.truncate = random.integer(0, 1);
}

// An ordinary filling in which streams do meet: most random cases are too odd for that.
void makeOrdinary(Random& random, CaseParameters& p) {
    const bool many = p.kind == 1 || p.kind == 3;
    p.nx = many ? random.integer(2, 3) : random.integer(3, 5);
    p.ny = random.integer(1, many ? 2 : 3);
    p.nz = random.integer(1, 2);
    p.jitter = random.pick({5, 20, 45});
    p.squash = p.outletSides = p.unreached = p.specials = p.zeroVolumes = p.oddGeometry = 0;
    p.flow = random.pick({0, 0, 6, 1});
    p.flowScale = random.pick({0, 0, 0, 1});
    p.slotValues = 0;
    p.cellState /= 4;
    p.nGrad = random.pick({1, 2, 3, 3, 4, 6});
    p.boundaryAngle = random.pick({0, 3, 4, 5, 6});
    p.filterPara = 0;
    p.volumeFilter = random.integer(0, 2);
    p.truncate = 1;
}

// Numbers on a coarse grid, and settings that do not blur them.
void makeCoarse(Random& random, P& p) {
    p.grid = 1;
    p.jitter = random.pick({0, 0, 45});
    p.flowScale = 0;
    p.smoothBefore = random.pick({0, 0, 0, 1});
    p.smoothAfter = random.pick({0, 0, 0, 1});
    p.volumeFilter = random.pick({0, 0, 3, 3, 5, 2});
    p.nGrad = random.pick({1, 1, 2, 3});
    if (p.specials > 0) p.specials = random.pick({0, p.specials});
}

// Bindings to other meshes, emptiness, ways of handing arrays out, odd files.
void drawExtras(Random& random, P& p) {
    p.remesh = random.pick({0, 1, 2, 3});
    p.extraBindings = seldom(random, 0.15, 1, 2);
    if (random.chance(0.06)) {
        p.empty = random.integer(1, 6);
        p.emptyAt = random.integer(0, 2);
    }
    if (p.partitions > 1 && random.chance(0.1)) p.empty = 7;
    p.nullValues = seldom(random, 0.08, 1, 15);
    if (p.partitions > 1) p.nullValues &= ~1;  // Every one of them would be the master.
    p.nullArrays = random.chance(0.3) ? 1 : 0;
    p.poison = random.integer(0, 1);
    p.tails = random.integer(0, 1);
    p.guard = seldom(random, 0.08, 1, 2);
    if (p.moving == 1 && random.chance(0.4)) p.moving = 2;
    if (random.chance(0.15)) makeCoarse(random, p);
    p.meshPath = random.integer(0, 9);
    if (random.chance(0.03)) p.path = random.integer(6, 7);
    if (random.chance(0.08)) p.control = 5;
}

}  // namespace

std::span<const Knob> knobs() {
    return allKnobs;
}

CaseParameters drawCase(std::uint64_t seed) {
    Random random(seed, 0);
    CaseParameters p;
    p.seed = seed;
    drawMesh(random, p);
    drawValues(random, p);
    drawHost(random, p);
    drawControl(random, p);
    if (random.chance(0.45)) {
        makeOrdinary(random, p);
    }
    if (random.chance(0.03)) {  // Two cells with one face: gradients exactly opposite.
        p.kind = p.squash = p.smoothAfter = p.groupMix = 0;
        p.nx = 2;
        p.ny = p.nz = 1;
        p.outletSides = 63;
        p.inletSides = p.symmetrySides = 0;
    }
    if (p.kind == 5) {
        p.gradMethod = random.pick({1, 1, 2, 3, 4});
        p.filterPara = random.pick({0, 0, 1, 4, 4});
        p.boundaryAngle = random.pick({0, 0, 0, p.boundaryAngle});
        p.unreached /= 4;
        p.smoothBefore = random.pick({0, 0, 0, 1});
        p.smoothAfter = random.pick({0, 0, 0, 1});
        p.volumeFilter = random.pick({0, 0, 0, 1, 2});
        p.truncate = random.pick({0, 0, 0, 1});
    }
    if (random.chance(0.06)) {
        p.limitFlow = 1;
        p.smoothBefore = 1;
        p.smoothAfter = 0;
    }
    p.runs = random.pick({1, 1, 1, 2, 2, 3});
    p.rebind = p.runs > 1 ? random.integer(0, 3) : 0;
    p.newSettings = random.integer(0, 1);
    p.mutate = random.chance(0.3) ? 1 : 0;
    Random extras(seed, Streams::extras);
    drawExtras(extras, p);
    return p;
}

std::string inWords(const CaseParameters& parameters) {
    const CaseParameters simplest;
    std::ostringstream text;
    text << "seed=" << parameters.seed;
    for (const Knob& knob : knobs()) {
        if (parameters.*knob.field != simplest.*knob.field) {
            text << ' ' << knob.name << '=' << parameters.*knob.field;
        }
    }
    return text.str();
}

std::optional<CaseParameters> parseCase(const std::string& text) {
    CaseParameters parameters;
    std::istringstream words(text);
    std::string word;
    while (words >> word) {
        const std::size_t equals = word.find('=');
        if (equals == std::string::npos) return std::nullopt;
        const std::string name = word.substr(0, equals);
        const char* first = word.data() + equals + 1;
        const char* last = word.data() + word.size();
        std::from_chars_result read{last, std::errc::invalid_argument};
        if (name == "seed") {
            read = std::from_chars(first, last, parameters.seed);
        }
        for (const Knob& knob : knobs()) {
            if (name == knob.name) {
                read = std::from_chars(first, last, parameters.*knob.field);
            }
        }
        if (read.ec != std::errc{} || read.ptr != last) return std::nullopt;
    }
    return parameters;
}

}  // namespace weldline::reference
