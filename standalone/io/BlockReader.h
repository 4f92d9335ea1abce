#pragma once

#include <string>
#include <vector>

#include "TimeReader.h"

class vtkMultiBlockDataSetAlgorithm;

namespace weldline {

// What the readers have in common that give blocks and keep all times of a data set in one place.
class BlockReader : public TimeReader {
  public:
    // `bytes` is what there is to read.
    BlockReader(std::string file, double bytes);

    const std::vector<double>& times() const override { return times_; }

    void read(std::optional<double> time, OpenedDataSet& opened) override;

  protected:
    static double sizeOfFile(const std::string& file);

    virtual vtkMultiBlockDataSetAlgorithm* algorithm() = 0;

    // Opens the file and lists its times and arrays.
    void start();

    const std::string& file() const { return file_; }
    double bytes() const { return bytes_; }

  private:
    std::string file_;
    double bytes_;
    std::vector<double> times_;
};

}  // namespace weldline
