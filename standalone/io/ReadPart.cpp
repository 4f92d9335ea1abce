#include <algorithm>
#include <array>
#include <limits>
#include <numeric>

#include "DataSet.h"
#include "DeriveFillTime.h"
#include "FieldArray.h"
#include "GridCells.h"
#include "GridCheck.h"
#include "OpenDataSet.h"
#include "PartPatches.h"
#include "PointDirectory.h"
#include "PointJoin.h"
#include "ReadNotes.h"
#include "VtkMessages.h"
#include "base/Errors.h"
#include "comm/Agreement.h"
#include "comm/Messages.h"
#include "comm/Packing.h"
#include "partition/SpreadMesh.h"

namespace weldline {
namespace {

// Rank 0 looks, so that all ranks go by the same list.
PieceList shareList(Ranks& ranks, const std::string& file) {
    PieceList list = together(ranks, [&] {
        return ranks.rank() == 0 ? listPieces(file) : PieceList{file, "", {}};
    });
    Packer packer;
    packer.put(list.format).put(list.pieces.size());
    for (const Piece& piece : list.pieces) {
        packer.put(piece.kind).put(piece.file).put(piece.name).put(piece.bytes);
    }
    const Bytes message = broadcast(ranks, packer.take());
    Unpacker unpacker(message);
    unpacker.get(list.format);
    list.pieces.resize(unpacker.get<std::size_t>());
    for (Piece& piece : list.pieces) {
        unpacker.get(piece.kind);
        unpacker.get(piece.file);
        unpacker.get(piece.name);
        unpacker.get(piece.bytes);
    }
    return list;
}

OpenedDataSet openOwn(const PieceList& list, const Ranks& ranks, const std::string& time,
                      std::vector<OwnPiece>& own) {
    const std::vector<int> reader = dealPieces(list.pieces, ranks.size());
    OpenedDataSet opened;
    for (std::size_t i = 0; i < list.pieces.size(); ++i) {
        if (reader[i] == ranks.rank()) {
            const std::size_t before = opened.volumes.size();
            append(opened, openPiece(list, list.pieces[i], time));
            own.push_back({i, opened.volumes.size() - before});
        }
    }
    return opened;
}

std::optional<double> timeOfAll(Ranks& ranks, const std::string& file, const OpenedDataSet& opened,
                                const std::string& request) {
    std::vector<double> times;
    for (const Bytes& message : gatherToAll(ranks, toBytes(opened.pieceTimes))) {
        const std::vector<double> more = fromBytes<double>(message);
        times.insert(times.end(), more.begin(), more.end());
    }
    return together(ranks, [&] { return commonTime(file, times, request); });
}

void checkBlocks(Ranks& ranks, const std::string& file, const OpenedDataSet& opened) {
    std::int64_t volumeCells = 0;
    std::int64_t cells = 0;
    std::int64_t points = 0;
    for (const Block& block : opened.volumes) {
        volumeCells += countVolumeCells(block.grid);
        cells += block.grid->GetNumberOfCells();
        points += block.grid->GetNumberOfPoints();
    }
    for (const Block& block : opened.surfaces) {
        cells += block.grid->GetNumberOfCells();
    }
    volumeCells = ranks.sum(volumeCells);
    const std::int64_t allCells = ranks.sum(cells);
    agreeOnFailure(ranks, [&] {
        if (volumeCells == 0) {
            failOnInput(file, allCells > 0 ? "the data set holds only surfaces or lines; a mesh of "
                                             "volume cells is needed"
                                           : "the data set holds no cells; a mesh of volume cells "
                                             "is needed");
        }
        if (std::max(cells, points) > std::numeric_limits<int>::max()) {
            failOnInput(file, "the mesh is larger than 32-bit cell and point numbers allow" +
                                  std::string(ranks.size() > 1 ? " in one process" : ""));
        }
    });
}

std::vector<vtkDataSet*> gridsOf(const std::vector<Block>& blocks) {
    std::vector<vtkDataSet*> grids;
    grids.reserve(blocks.size());
    for (const Block& block : blocks) {
        grids.push_back(block.grid);
    }
    return grids;
}

// The fill time, then the further arrays.
std::vector<std::string> findFields(Ranks& ranks, const std::string& file,
                                    const OpenedDataSet& opened, const ReadOptions& options) {
    const GridArrays arrays = arraysOfAll(ranks, arraysOf(gridsOf(opened.volumes)));
    return together(ranks, [&] {
        std::vector<std::string> fields{findField(file, arrays, options)};
        for (const std::string& name : options.cellArrays) {
            ReadOptions further;
            further.field = name;
            further.fieldGiven = true;
            fields.push_back(findField(file, arrays, further));
        }
        for (const std::string& name : options.carried) {
            checkCarried(file, arrays, name);
            fields.push_back(name);
        }
        for (const std::string& name : options.pointArrays) {
            checkPointField(file, arrays, name);
        }
        return fields;
    });
}

// Per block the numbers of its points in the mesh.
std::vector<std::vector<int>> collectPoints(const std::vector<Block>& blocks,
                                            std::vector<Vec3>& points) {
    std::vector<int> starts{0};
    for (const Block& block : blocks) {
        appendPoints(block.grid, points);
        starts.push_back(static_cast<int>(points.size()));
    }
    std::vector<int> joined(points.size());
    if (blocks.size() > 1) {
        joined = joinPieces(points, starts);
    } else {
        std::iota(joined.begin(), joined.end(), 0);
    }
    std::vector<std::vector<int>> maps;
    for (std::size_t b = 0; b < blocks.size(); ++b) {
        maps.emplace_back(joined.begin() + starts[b], joined.begin() + starts[b + 1]);
    }
    return maps;
}

// Takes the cells out of the grids, which are given back one by one.
void collectCells(std::vector<Block>& blocks, const std::vector<std::string>& fields,
                  const std::vector<std::string>& pointFields, CellCollector& collector,
                  DataPart& data) {
    MeshPart& part = data.part;
    const auto pointMaps = collectPoints(blocks, part.mesh.points);
    part.cellFields.resize(fields.size());
    data.pointFields.assign(pointFields.size(), std::vector<double>(part.mesh.points.size()));
    for (std::size_t b = 0; b < blocks.size(); ++b) {
        const std::vector<long long> taken = collector.append(blocks[b].grid, pointMaps[b]);
        for (std::size_t f = 0; f < fields.size(); ++f) {
            appendField(blocks[b].grid, fields[f], taken, part.cellFields[f]);
        }
        for (std::size_t f = 0; f < pointFields.size(); ++f) {
            const std::vector<double> values = pointValues(blocks[b].grid, pointFields[f]);
            for (std::size_t p = 0; p < values.size(); ++p) {
                data.pointFields[f][static_cast<std::size_t>(pointMaps[b][p])] = values[p];
            }
        }
        if (data.notes.run.empty()) {
            data.notes = notesOf(blocks[b].grid);
        }
        blocks[b].grid = nullptr;
    }
}

// Numbers are kept only where cells were left out.
void dropPlainNumbers(std::vector<std::int64_t>& fileNumbers) {
    const auto cells = static_cast<std::int64_t>(fileNumbers.size());
    if (cells > 0 && fileNumbers.back() == cells - 1) {
        fileNumbers = {};
    }
}

void numberCells(Ranks& ranks, DataPart& data) {
    const auto own = static_cast<std::int64_t>(data.part.mesh.cellCount());
    data.cells = ranks.sum(own);
    data.part.cellNumber.resize(static_cast<std::size_t>(own));
    std::iota(data.part.cellNumber.begin(), data.part.cellNumber.end(), sumBefore(ranks, own));
}

std::vector<bool> usedPoints(const CellMesh& mesh) {
    std::vector<bool> used(mesh.points.size(), false);
    for (const int node : mesh.cellNodes.entries) {
        used[static_cast<std::size_t>(node)] = true;
    }
    return used;
}

// Puts the points that belong to this rank in the order of their numbers.
void renumberPoints(const PointDirectory& directory, DataPart& data) {
    MeshPart& part = data.part;
    const std::vector<std::int64_t>& numbers = directory.numbers();
    std::vector<int> order;
    for (std::size_t p = 0; p < numbers.size(); ++p) {
        if (directory.belongs()[p]) {
            order.push_back(static_cast<int>(p));
        }
    }
    std::sort(order.begin(), order.end(), [&](int a, int b) {
        return numbers[static_cast<std::size_t>(a)] < numbers[static_cast<std::size_t>(b)];
    });
    std::vector<int> place(numbers.size(), -1);
    std::vector<Vec3> points;
    for (const int p : order) {
        const auto old = static_cast<std::size_t>(p);
        place[old] = static_cast<int>(points.size());
        points.push_back(part.mesh.points[old]);
        part.nodeNumber.push_back(numbers[old]);
    }
    part.mesh.points = std::move(points);
    for (std::vector<double>& field : data.pointFields) {
        std::vector<double> values;
        values.reserve(order.size());
        for (const int p : order) {
            values.push_back(field[static_cast<std::size_t>(p)]);
        }
        field = std::move(values);
    }
    for (Rows* rows : {&part.mesh.cellNodes, &part.mesh.polygons}) {
        for (int& node : rows->entries) {
            node = place[static_cast<std::size_t>(node)];
        }
    }
}

// What is wrong with cells and faces is told without the file's name, which the user wants, too.
template <class Step>
void namingFile(const std::string& file, Step step) {
    try {
        step();
    } catch (const InputError& error) {
        throw InputError(file + ": " + error.what());
    }
}

}  // namespace

DataPart readPart(Ranks& ranks, const std::string& file, const ReadOptions& options) {
    const VtkMessages silence;  // also of what VTK would say while memory ends
    const PieceList list = shareList(ranks, file);
    std::vector<OwnPiece> own;
    OpenedDataSet opened = together(ranks, [&] { return openOwn(list, ranks, options.time, own); });

    DataPart data;
    data.time = timeOfAll(ranks, file, opened, options.time);
    checkBlocks(ranks, file, opened);
    data.series = deriveFillTime(ranks, list, own, opened, data.time, options);
    const std::vector<std::string> fields = findFields(ranks, file, opened, options);
    data.fieldName = fields.front();

    std::int64_t gridCells = 0;
    for (const Block& block : opened.volumes) {
        gridCells += block.grid->GetNumberOfCells();
    }
    CellCollector collector(file, data.part.mesh, sumBefore(ranks, gridCells));
    agreeOnFailure(
        ranks, [&] { collectCells(opened.volumes, fields, options.pointArrays, collector, data); });
    dropPlainNumbers(data.part.mesh.fileNumbers);
    numberCells(ranks, data);

    const PatchSources sources{list.isCase(),          opened.surfaces,
                               opened.remarks,         collector.numberedFaces(),
                               collector.patchNames(), collector.leftOut()};
    PatchFaces faces;
    {
        const PointDirectory directory(ranks, data.part.mesh.points, usedPoints(data.part.mesh));
        data.nodes = directory.total();
        faces = collectPatches(ranks, directory, sources, data);
        renumberPoints(directory, data);
    }
    namingFile(file, [&] {
        deliverPatchFaces(ranks, faces, data.part);
        spreadMesh(ranks, data.part);
    });
    for (Vec3& point : data.part.mesh.points) {
        point = options.scale * point;
    }
    return data;
}

}  // namespace weldline
