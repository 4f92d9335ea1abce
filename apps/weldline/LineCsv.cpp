#include "LineCsv.h"

#include <fmt/format.h>

#include <cmath>

#include "results/LineDetails.h"

namespace weldline {

namespace {

std::string number(double value) {
    return std::isfinite(value) ? fmt::format(",{}", value) : ",";
}

std::string vector(Vec3 v) {
    return number(v.x) + number(v.y) + number(v.z);
}

// Text with signs of the format in it stands in quotes, its quotes twice.
std::string text(const std::string& value) {
    if (value.find_first_of(",\"\r\n") == std::string::npos) return "," + value;
    std::string quoted = ",\"";
    for (const char sign : value) {
        if (sign == '"') quoted += '"';
        quoted += sign;
    }
    return quoted + '"';
}

std::string columns(const WeldLines& lines) {
    std::string names =
        "id,class,nodes,length,branch_length,skin_length,smallest_angle,mean_angle,first_time,"
        "last_time,low_x,low_y,low_z,high_x,high_y,high_z,centroid_x,centroid_y,centroid_z,patch,"
        "patch_distance";
    if (!lines.lines.empty())
        for (const CarriedValue& value : lines.lines.front().carried)
            names += text(value.name + "_smallest") + text(value.name + "_mean") +
                     text(value.name + "_largest");
    return names + "\n";
}

}  // namespace

std::string lineCsv(const WeldLines& lines) {
    std::string csv = columns(lines);
    for (const WeldLine& line : lines.lines) {
        csv += fmt::format("{},{},{}", line.id, nameOf(line.kind), line.nodeCount);
        csv += number(line.length) + number(line.branchLength) + number(line.skinLength);
        csv += number(line.smallestAngle) + number(line.meanAngle);
        csv += number(line.firstTime) + number(line.lastTime);
        csv += vector(line.low) + vector(line.high) + vector(line.centroid);
        csv += text(line.patch) + (line.patch.empty() ? "," : number(line.patchDistance));
        for (const CarriedValue& value : line.carried)
            csv += number(value.smallest) + number(value.mean) + number(value.largest);
        csv += "\n";
    }
    return csv;
}

}  // namespace weldline
