#include "BlockReader.h"

#include <vtkInformation.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkMultiBlockDataSetAlgorithm.h>
#include <vtkNew.h>
#include <vtkStreamingDemandDrivenPipeline.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include "ReadGuard.h"
#include "VtkMessages.h"

namespace weldline {

BlockReader::BlockReader(std::string file, double bytes) : file_(std::move(file)), bytes_(bytes) {}

double BlockReader::sizeOfFile(const std::string& file) {
    std::error_code none;
    const std::uintmax_t bytes = std::filesystem::file_size(file, none);
    return none ? 0.0 : static_cast<double>(bytes);
}

void BlockReader::guarded(const std::function<void()>& step) const {
    const VtkMessages messages;
    const ReadGuard guard(file_, bytes_);
    step();
}

void BlockReader::start() {
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
}

void BlockReader::read(std::optional<double> time, OpenedDataSet& opened) {
    const VtkMessages messages;
    const ReadGuard guard(file_, bytes_);
    if (time) {
        algorithm()->UpdateTimeStep(*time);
    } else {
        algorithm()->Update();
    }
    failOnReaderError(file_, messages);
    collectBlocks(file_, copy(algorithm()->GetOutput()), opened);
}

vtkSmartPointer<vtkMultiBlockDataSet> BlockReader::copy(vtkMultiBlockDataSet* blocks) const {
    auto own = vtkSmartPointer<vtkMultiBlockDataSet>::New();
    own->DeepCopy(blocks);
    return own;
}

}  // namespace weldline
