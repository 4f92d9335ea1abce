#pragma once

#include <array>
#include <map>
#include <string>
#include <vector>

namespace weldline::test {

// A .vtu result as it lies in the file.
struct ResultFile {
    std::vector<double> coordinates;  // x, y, z of point 0, 1, ...
    std::vector<long long> cellNodes;
    std::vector<double> angle;
    std::vector<int> weldLine;
    std::vector<float> fillTime;
};
ResultFile readResultFile(const std::string& file);

// Results at points, by their place.
struct PointResult {
    double angle = 0.0;
    int weldLine = 0;
};
using PointResults = std::map<std::array<double, 3>, PointResult>;

// Points that several pieces have must hold the same in each.
void addPoints(const ResultFile& file, PointResults& points);

}  // namespace weldline::test
