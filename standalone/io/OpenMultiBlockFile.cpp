// Data sets that VTK reads as blocks, with all their times in one place.
#include <vtkCGNSReader.h>
#include <vtkCompositeDataIterator.h>
#include <vtkDataArraySelection.h>
#include <vtkExodusIIReader.h>
#include <vtkGenericEnSightReader.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkRemoveUnusedPoints.h>
#include <vtkUnstructuredGrid.h>

#include <filesystem>

#include "BlockReader.h"
#include "CgnsSurfaces.h"
#include "GridCheck.h"
#include "ReadGuard.h"

namespace weldline {
namespace {

namespace fs = std::filesystem;

// Of all files beside it: an EnSight case is spread over many.
double sizeOfFolder(const std::string& file) {
    double size = 0.0;
    std::error_code none;
    for (fs::directory_iterator at(fs::absolute(file).parent_path(), none), end; !none && at != end;
         at.increment(none)) {
        std::error_code noFile;
        const std::uintmax_t bytes = fs::file_size(at->path(), noFile);
        size += noFile ? 0.0 : static_cast<double>(bytes);
    }
    return size;
}

class EnSightReader : public BlockReader {
  public:
    explicit EnSightReader(const std::string& file) : BlockReader(file, sizeOfFolder(file)) {
        reader_->SetCaseFileName(file.c_str());
        start();
    }

    void readOnly(const std::string& field) override {
        reader_->GetPointDataArraySelection()->DisableAllArrays();
        reader_->GetCellDataArraySelection()->DisableAllArrays();
        reader_->SetCellArrayStatus(field.c_str(), 1);
    }

  private:
    vtkMultiBlockDataSetAlgorithm* algorithm() override { return reader_; }

    vtkNew<vtkGenericEnSightReader> reader_;
};

class ExodusReader : public BlockReader {
  public:
    explicit ExodusReader(const std::string& file) : BlockReader(file, sizeOfFile(file)) {
        if (!canRead(*reader_.Get())) {
            failOnInput(file, "the file holds no Exodus mesh, or a damaged one");
        }
        reader_->SetFileName(file.c_str());
        reader_->SetSqueezePoints(false);
        start();
        reader_->SetAllArrayStatus(vtkExodusIIReader::ELEM_BLOCK, 1);
        reader_->SetAllArrayStatus(vtkExodusIIReader::NODAL, 1);
        for (int s = 0; s < reader_->GetNumberOfSideSetArrays(); ++s) {
            reader_->SetSideSetArrayStatus(reader_->GetSideSetArrayName(s), 1);
        }
    }

    void readOnly(const std::string& field) override {
        reader_->SetAllArrayStatus(vtkExodusIIReader::ELEM_BLOCK, 0);
        reader_->SetAllArrayStatus(vtkExodusIIReader::NODAL, 0);
        reader_->SetElementResultArrayStatus(field.c_str(), 1);
    }

  private:
    vtkMultiBlockDataSetAlgorithm* algorithm() override { return reader_; }

    // Every block comes with the points of all blocks, because the reader can leave out the others
    // only where it makes float values of all coordinates.
    vtkSmartPointer<vtkMultiBlockDataSet> copy(vtkMultiBlockDataSet* blocks) const override {
        auto own = vtkSmartPointer<vtkMultiBlockDataSet>::New();
        own->CopyStructure(blocks);
        const auto at = vtkSmartPointer<vtkCompositeDataIterator>::Take(blocks->NewIterator());
        for (at->InitTraversal(); at->IsDoneWithTraversal() == 0; at->GoToNextItem()) {
            own->SetDataSet(at, withUsedPoints(at->GetCurrentDataObject()));
        }
        return own;
    }

    vtkSmartPointer<vtkDataObject> withUsedPoints(vtkDataObject* block) const {
        auto grid = vtkSmartPointer<vtkDataObject>::Take(block->NewInstance());
        auto* unstructured = vtkUnstructuredGrid::SafeDownCast(block);
        // On purpose not for polyhedra: the filter renumbers the counts among their corners, too.
        if (unstructured == nullptr || unstructured->GetFaces() != nullptr) {
            grid->DeepCopy(block);
            return grid;
        }
        checkGrid(file(), unstructured);
        vtkNew<vtkRemoveUnusedPoints> filter;
        filter->SetInputData(unstructured);
        filter->GenerateOriginalPointIdsOff();
        filter->Update();
        grid->DeepCopy(filter->GetOutput());
        return grid;
    }

    vtkNew<vtkExodusIIReader> reader_;
};

// The reader's own patches are left out for those of addCgnsSurfaces.
class CgnsReader : public BlockReader {
  public:
    explicit CgnsReader(const std::string& file) : BlockReader(file, sizeOfFile(file)) {
        const bool isCgns = canRead(*reader_.Get());
        ReadGuard::silenceExit();
        if (!isCgns) {
            failOnInput(file, "the file holds no CGNS data set, or a damaged one");
        }
        reader_->SetFileName(file.c_str());
        reader_->SetDoublePrecisionMesh(1);
        start();
        reader_->EnableAllBases();
        reader_->EnableAllPointArrays();
        reader_->EnableAllCellArrays();
    }

    void readOnly(const std::string& field) override {
        reader_->DisableAllPointArrays();
        reader_->DisableAllCellArrays();
        reader_->SetCellArrayStatus(field.c_str(), 1);
        isFieldOnly_ = true;
    }

    void read(std::optional<double> time, OpenedDataSet& opened) override {
        BlockReader::read(time, opened);
        if (!isFieldOnly_) {
            guarded([&] { addCgnsSurfaces(file(), opened); });
        }
    }

  private:
    vtkMultiBlockDataSetAlgorithm* algorithm() override { return reader_; }

    vtkNew<vtkCGNSReader> reader_;
    bool isFieldOnly_ = false;
};

}  // namespace

std::unique_ptr<TimeReader> openEnSight(const std::string& file) {
    return std::make_unique<EnSightReader>(file);
}

std::unique_ptr<TimeReader> openExodus(const std::string& file) {
    return std::make_unique<ExodusReader>(file);
}

std::unique_ptr<TimeReader> openCgns(const std::string& file) {
    return std::make_unique<CgnsReader>(file);
}

}  // namespace weldline
