#pragma once

#include <vtkDataSet.h>
#include <vtkSmartPointer.h>

#include <optional>
#include <string>
#include <vector>

// Internal to the reader: what VTK made of a file, before any cell is looked at.
namespace weldline {

struct Block {
    std::string name;  // empty where the data set has one block without a name
    vtkSmartPointer<vtkDataSet> grid;
};

struct OpenedDataSet {
    std::string format;
    std::vector<Block> volumes;            // unstructured grids with volume cells
    std::vector<Block> surfaces;           // blocks whose cells are surfaces only
    std::vector<std::string> otherBlocks;  // names of blocks of other kinds
    std::vector<double> times;
    std::optional<double> time;
};

// Opens a data set by its extension and reads the blocks at one time: "latest" or a time value.
// Every grid returned has passed checkGrid. Throws InputError.
OpenedDataSet openDataSet(const std::string& file, const std::string& time);

// The same for one kind of data set; openDataSet has checked that the file exists.
OpenedDataSet openFoamCase(const std::string& file, const std::string& time);
OpenedDataSet openPieces(const std::string& file, const std::string& time);      // .pvtu
OpenedDataSet openMultiBlock(const std::string& file, const std::string& time);  // .vtm

// The grids of a data set that has no other blocks. A grid without cells may lack arrays and is
// left out.
OpenedDataSet openGrids(const std::string& file, const std::string& time, const char* format,
                        const std::vector<Block>& grids);

// Takes over the time that a grid may carry as a field of one value.
void readTimes(vtkDataObject* data, OpenedDataSet& opened);

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

[[noreturn]] void failOnInput(const std::string& file, const std::string& reason);

}  // namespace weldline
