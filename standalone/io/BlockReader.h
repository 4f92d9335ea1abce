#pragma once

#include <functional>
#include <string>
#include <vector>

#include "TimeReader.h"

class vtkMultiBlockDataSet;
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

    // A copy of what was read that lasts: the reader fills the same grids at the next time.
    virtual vtkSmartPointer<vtkMultiBlockDataSet> copy(vtkMultiBlockDataSet* blocks) const;

    // Opens the file and lists its times and arrays.
    void start();

    // A step in which a library looks into the file.
    void guarded(const std::function<void()>& step) const;

    // What VTK's reader answers that looks into the file.
    template <class Reader>
    bool canRead(Reader& reader) const {
        bool answer = false;
        guarded([&] { answer = reader.CanReadFile(file_.c_str()) != 0; });
        return answer;
    }

    const std::string& file() const { return file_; }

  private:
    std::string file_;
    double bytes_;
    std::vector<double> times_;
};

}  // namespace weldline
