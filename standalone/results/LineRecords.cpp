#include "LineRecords.h"

#include <algorithm>
#include <cmath>

#include "comm/Messages.h"

namespace weldline {

namespace {

void widen(LineRecord& record, Vec3 low, Vec3 high) {
    record.low = {std::min(record.low.x, low.x), std::min(record.low.y, low.y),
                  std::min(record.low.z, low.z)};
    record.high = {std::max(record.high.x, high.x), std::max(record.high.y, high.y),
                   std::max(record.high.z, high.z)};
}

// A time that is NaN counts for nothing.
void spanTimes(LineRecord& record, double first, double last) {
    if (!std::isnan(first) && !(record.firstTime <= first)) record.firstTime = first;
    if (!std::isnan(last) && !(record.lastTime >= last)) record.lastTime = last;
}

void addRecord(LineRecord& record, const LineRecord& more) {
    record.nodes += more.nodes;
    record.smallestAngle = std::min(record.smallestAngle, more.smallestAngle);
    record.angleSum += more.angleSum;
    widen(record, more.low, more.high);
    record.sum = record.sum + more.sum;
    spanTimes(record, more.firstTime, more.lastTime);
}

}  // namespace

void LineRecords::add(std::int64_t smallestNode, double angle, Vec3 place, double time) {
    const LineRecord node{smallestNode, 1,   std::min(180.0, angle), angle, place, place, place,
                          time,         time};
    const auto [known, isNew] = m_records.try_emplace(smallestNode, node);
    if (!isNew) addRecord(known->second, node);
}

std::vector<LineRecord> LineRecords::all() const {
    std::vector<LineRecord> list;
    list.reserve(m_records.size());
    for (const auto& [smallestNode, record] : m_records) list.push_back(record);
    return list;
}

std::vector<LineRecord> recordsOfAll(Ranks& ranks, const LineRecords& own) {
    std::map<std::int64_t, LineRecord> sums;
    for (const Bytes& message : gatherToFirst(ranks, toBytes(own.all())))
        for (const LineRecord& record : fromBytes<LineRecord>(message)) {
            const auto [known, isNew] = sums.try_emplace(record.smallestNode, record);
            if (!isNew) addRecord(known->second, record);
        }
    std::vector<LineRecord> lines;
    lines.reserve(sums.size());
    for (const auto& [smallestNode, record] : sums) lines.push_back(record);
    std::stable_sort(lines.begin(), lines.end(),
                     [](const LineRecord& a, const LineRecord& b) { return a.nodes > b.nodes; });
    return fromBytes<LineRecord>(broadcast(ranks, toBytes(lines)));
}

WeldLine lineOf(const LineRecord& record) {
    const auto count = static_cast<double>(record.nodes);
    WeldLine line;
    line.nodeCount = record.nodes;
    line.smallestAngle = record.smallestAngle;
    line.meanAngle = record.angleSum / count;
    line.low = record.low;
    line.high = record.high;
    line.centroid = (1.0 / count) * record.sum;
    line.firstTime = record.firstTime;
    line.lastTime = record.lastTime;
    return line;
}

}  // namespace weldline
