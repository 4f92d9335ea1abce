#pragma once

#include "TestHost.h"

namespace weldline::test {

// A change of the mesh and the values of a finished host that the calculation answers exactly.
struct Transformation {
    Point mirror{1.0, 1.0, 1.0};  // -1: the axis is mirrored
    double length = 1.0;          // areas follow with its square, volumes with its cube
    double time = 1.0;            // factor of the flow variable
    Point shift{0.0, 0.0, 0.0};   // after the scaling
};

// Applies it in place: numbers of cells, faces and nodes and the order of all lists stay.
void transform(TestHost& host, const Transformation& change);

// Exchanges the x and the y axis.
void exchangeXAndY(TestHost& host);

// Turns every inner face round: its two cells change places, and so does the weight.
void turnInnerFaces(TestHost& host);

// Numbers the inner faces from the last to the first. Of the cells' lists of faces nothing is
// renumbered: for method 1, which does not read them.
void reverseInnerFaces(TestHost& host);

}  // namespace weldline::test
