#include "CutRun.h"

#include <algorithm>

#include "CCommunication.h"
#include "CKVR3DWeldLine.h"
#include "bind/Analysis.h"
#include "comm/Agreement.h"
#include "comm/CollectiveMaximum.h"
#include "comm/ThreadRanks.h"
#include "partition/SplitMesh.h"

namespace weldline::test {

namespace {

// The calculator itself, whose gradients the public class does not show.
std::vector<RankOutcome::Cell> cellsAfterRun(HostModel& model, const RankPart& part) {
    CKVR3DWeldLine calculator;
    CollectiveMaximum collective(part.ranks);
    const auto exchange = part.ranks.haloExchange(part.interface.links);
    calculator.setPartitionInterface(&model.partitionFaces());
    calculator.setKVRCom(exchange.get(), &collective);
    calculator.setMeshFileType(model.options().meshFileType);
    calculator.setFlowData(&model.globalVariables(), &model.mesh());
    calculator.calWeldLine();
    std::vector<RankOutcome::Cell> cells;
    for (int c = 1; c <= model.mesh().m_nCV; ++c)
        cells.push_back({calculator.m_pVariable[c], calculator.m_pGradX[c], calculator.m_pGradY[c],
                         calculator.m_pGradZ[c], calculator.m_pGrad2X[c], calculator.m_pGrad2Y[c],
                         calculator.m_pGrad2Z[c],
                         static_cast<double>(calculator.m_pZeroGradFlag[c])});
    return cells;
}

}  // namespace

RankOutcome runPart(Ranks& ranks, const MeshPart& part, const std::string& controlFile) {
    FvMesh mesh = together(ranks, [&] { return buildFvMesh(part.mesh); });
    const MeshInterface interface = joinParts(ranks, part, mesh);
    const BoundaryGroups groups =
        together(ranks, [&] { return groupBoundaryFaces(mesh, part.patches, {}); });
    const RankPart own{ranks, interface, part.nodeNumber};
    const std::vector<float> fillTime(part.cellFields[0].begin(), part.cellFields[0].end());
    HostOptions options;
    options.controlFile = controlFile;
    HostModel model(mesh, groups, fillTime, options, own);

    RankOutcome outcome;
    outcome.cellNumber = part.cellNumber;
    outcome.nodeNumber = part.nodeNumber;
    outcome.angles = runWeldLine(model, own);
    outcome.cells = cellsAfterRun(model, own);
    outcome.haloCells = interface.halo.size();
    outcome.cellSlots = static_cast<std::size_t>(model.mesh().m_nCV_Total);
    return outcome;
}

std::vector<RankOutcome> runCut(const MeshPart& whole, const std::vector<int>& partOfCell,
                                int ranks, const std::string& controlFile) {
    MeshSplitter splitter(whole, partOfCell, ranks);
    std::vector<MeshPart> parts;
    for (int r = 0; r < ranks; ++r) parts.push_back(splitter.part(r));
    std::vector<RankOutcome> outcomes(parts.size());
    runAsThreads(ranks, [&](Ranks& own) {
        const auto r = static_cast<std::size_t>(own.rank());
        outcomes[r] = runPart(own, parts[r], controlFile);
    });
    return outcomes;
}

WholeOutcome assemble(const std::vector<RankOutcome>& outcomes) {
    WholeOutcome whole;
    const auto place = [](auto& list, std::int64_t number, const auto& value) {
        const auto n = static_cast<std::size_t>(number);
        if (n >= list.size()) list.resize(n + 1);
        list[n] = value;
    };
    for (const RankOutcome& own : outcomes) {
        for (std::size_t c = 0; c < own.cells.size(); ++c)
            place(whole.cells, own.cellNumber[c], own.cells[c]);
        for (std::size_t n = 0; n < own.angles.size(); ++n)
            place(whole.angles, own.nodeNumber[n], own.angles[n]);
    }
    return whole;
}

}  // namespace weldline::test
