#pragma once

class CKVR3DWeldLine;

namespace weldline::core {

// What all methods do last: the truncation, then 180 degrees at every node of an own cell whose
// state is 1 or more, or -1. On purpose: in this order, so that those nodes are never truncated
// back.
void finishMeetingAngles(CKVR3DWeldLine& record);

}  // namespace weldline::core
