#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "OpenDataSet.h"

// Internal to the reader: data sets that hold several times.
namespace weldline {

// One piece of a data set over its times. Throws InputError.
class TimeReader {
  public:
    virtual ~TimeReader() = default;

    virtual const std::vector<double>& times() const = 0;  // ascending

    // From now on only this cell array is read; grids may then come without points and cells.
    virtual void readOnly(const std::string& field) = 0;

    // Adds what there is at one of the times, or where the data set has no times at all.
    virtual void read(std::optional<double> time, OpenedDataSet& opened) = 0;
};

// Null for a piece of a kind that has one time at most.
std::unique_ptr<TimeReader> openTimes(const PieceList& list, const Piece& piece);

// openPiece by such a reader.
OpenedDataSet openAtTime(TimeReader& reader, const std::string& file, const std::string& time);

// By kind of data set; `processor` is empty or the folder of one process.
std::unique_ptr<TimeReader> openFoamCase(const std::string& file, const std::string& processor);
std::unique_ptr<TimeReader> openCollection(const std::string& file);  // .pvd
std::unique_ptr<TimeReader> openCgns(const std::string& file);
std::unique_ptr<TimeReader> openEnSight(const std::string& file);
std::unique_ptr<TimeReader> openExodus(const std::string& file);
std::unique_ptr<TimeReader> openGmshFile(const std::string& file);

}  // namespace weldline
