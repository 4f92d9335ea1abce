// Data sets that VTK reads as blocks, with all their times in one place.
#include <vtkDataArraySelection.h>
#include <vtkExodusIIReader.h>
#include <vtkGenericEnSightReader.h>
#include <vtkInformation.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkMultiBlockDataSetAlgorithm.h>
#include <vtkNew.h>
#include <vtkStreamingDemandDrivenPipeline.h>

#include <algorithm>
#include <filesystem>

#include "ReadGuard.h"
#include "TimeReader.h"
#include "VtkMessages.h"

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

class BlockReader : public TimeReader {
  public:
    BlockReader(const std::string& file, double bytes) : file_(file), bytes_(bytes) {}

    const std::vector<double>& times() const override { return times_; }

    void read(std::optional<double> time, OpenedDataSet& opened) override {
        const VtkMessages messages;
        const ReadGuard guard(file_, bytes_);
        if (time) {
            algorithm()->UpdateTimeStep(*time);
        } else {
            algorithm()->Update();
        }
        failOnReaderError(file_, messages);
        // The reader fills the same grids at the next time.
        vtkNew<vtkMultiBlockDataSet> blocks;
        blocks->DeepCopy(algorithm()->GetOutputDataObject(0));
        collectBlocks(file_, blocks, opened);
    }

  protected:
    virtual vtkMultiBlockDataSetAlgorithm* algorithm() = 0;

    // Opens the file and lists its times; `chooseArrays` then says what is read.
    template <class Choice>
    void start(Choice chooseArrays) {
        const VtkMessages messages;
        const ReadGuard guard(file_, bytes_);
        algorithm()->UpdateInformation();
        failOnReaderError(file_, messages);
        vtkInformation* info = algorithm()->GetOutputInformation(0);
        vtkInformationDoubleVectorKey* key = vtkStreamingDemandDrivenPipeline::TIME_STEPS();
        if (info->Has(key) != 0) {
            times_.assign(info->Get(key), info->Get(key) + info->Length(key));
        }
        std::sort(times_.begin(), times_.end());
        chooseArrays();
    }

  private:
    std::string file_;
    double bytes_;
    std::vector<double> times_;
};

class EnSightReader : public BlockReader {
  public:
    explicit EnSightReader(const std::string& file) : BlockReader(file, sizeOfFolder(file)) {
        reader_->SetCaseFileName(file.c_str());
        start([] {});
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
        if (reader_->CanReadFile(file.c_str()) == 0) {
            failOnInput(file, "the file holds no Exodus mesh");
        }
        reader_->SetFileName(file.c_str());
        start([&] {
            reader_->SetAllArrayStatus(vtkExodusIIReader::ELEM_BLOCK, 1);
            reader_->SetAllArrayStatus(vtkExodusIIReader::NODAL, 1);
            for (int s = 0; s < reader_->GetNumberOfSideSetArrays(); ++s) {
                reader_->SetSideSetArrayStatus(reader_->GetSideSetArrayName(s), 1);
            }
        });
    }

    void readOnly(const std::string& field) override {
        reader_->SetAllArrayStatus(vtkExodusIIReader::ELEM_BLOCK, 0);
        reader_->SetAllArrayStatus(vtkExodusIIReader::NODAL, 0);
        reader_->SetElementResultArrayStatus(field.c_str(), 1);
    }

  private:
    static double sizeOfFile(const std::string& file) {
        std::error_code none;
        const std::uintmax_t bytes = fs::file_size(file, none);
        return none ? 0.0 : static_cast<double>(bytes);
    }

    vtkMultiBlockDataSetAlgorithm* algorithm() override { return reader_; }

    vtkNew<vtkExodusIIReader> reader_;
};

}  // namespace

std::unique_ptr<TimeReader> openEnSight(const std::string& file) {
    return std::make_unique<EnSightReader>(file);
}

std::unique_ptr<TimeReader> openExodus(const std::string& file) {
    return std::make_unique<ExodusReader>(file);
}

}  // namespace weldline
