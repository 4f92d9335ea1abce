#pragma once

#include <vtkDataSet.h>
#include <vtkSmartPointer.h>

#include <optional>
#include <string>
#include <vector>

#include "PieceList.h"

// Internal to the reader: what VTK made of a file, before any cell is looked at.
namespace weldline {

struct Block {
    std::string name;  // empty where the data set has one block without a name
    vtkSmartPointer<vtkDataSet> grid;
};

// What pieces of a data set hold.
struct OpenedDataSet {
    std::vector<Block> volumes;        // unstructured grids with volume cells
    std::vector<Block> surfaces;       // blocks whose cells are surfaces only
    std::vector<std::string> remarks;  // sentences on what is left out
    std::vector<double> times;         // of the first piece that has any
    std::vector<double> pieceTimes;    // of every piece that has times the one that was read
};

// Reads one piece at one time: "latest" or a time value. Every grid has passed checkGrid. Throws
// InputError.
OpenedDataSet openPiece(const PieceList& list, const Piece& piece, const std::string& time);

// Adds what a later piece holds.
void append(OpenedDataSet& opened, OpenedDataSet more);

// The time that all pieces were read at, from what openPiece tells about each that has times; fits
// the request. Throws InputError and UsageError.
std::optional<double> commonTime(const std::string& file, const std::vector<double>& pieceTimes,
                                 const std::string& request);

// openPiece for a file of a multi-block data set.
OpenedDataSet openBlock(const Piece& piece);

// Checks a block and puts it among the volumes, the surfaces or the others.
void addBlock(const std::string& file, const std::string& name, vtkDataObject* data,
              OpenedDataSet& opened);

// The time value among `times` that a user asked for; nothing where the data set has no times.
std::optional<double> chooseTime(const std::string& file, const std::vector<double>& times,
                                 const std::string& request);

// Adds the leaves of a multi-block data set.
void collectBlocks(const std::string& file, vtkDataObject* tree, OpenedDataSet& opened);

// Throws InputError when a file does not exist or cannot be opened.
void checkReadable(const std::string& file);

// In lower case, with the dot.
std::string lowerExtension(const std::string& file);

class VtkMessages;
void failOnReaderError(const std::string& file, const VtkMessages& messages);

// The sentence on a block of another kind.
std::string otherBlock(const std::string& name);

[[noreturn]] void failOnInput(const std::string& file, const std::string& reason);

}  // namespace weldline
