#include "TimeReader.h"

namespace weldline {

std::unique_ptr<TimeReader> openTimes(const PieceList& list, const Piece& piece) {
    switch (piece.kind) {
        case Piece::Kind::Case:
            return openFoamCase(list.file, piece.name);
        case Piece::Kind::Collection:
            return openCollection(piece.file);
        case Piece::Kind::Cgns:
            return openCgns(piece.file);
        case Piece::Kind::EnSight:
            return openEnSight(piece.file);
        case Piece::Kind::Exodus:
            return openExodus(piece.file);
        case Piece::Kind::Gmsh:
            return openGmshFile(piece.file);
        default:
            return nullptr;
    }
}

OpenedDataSet openAtTime(TimeReader& reader, const std::string& file, const std::string& time) {
    OpenedDataSet opened;
    const std::optional<double> chosen = chooseTime(file, reader.times(), time);
    reader.read(chosen, opened);
    opened.times = reader.times();
    opened.pieceTimes.clear();
    if (chosen) {
        opened.pieceTimes = {*chosen};
    }
    return opened;
}

}  // namespace weldline
