#pragma once

#include <functional>
#include <optional>

#include "TestHost.h"

namespace weldline::test {

// Chooses the group of a boundary face from its outward unit normal and its centre; no value leaves
// the face out of the mesh (an open side, for interface faces that the test adds itself).
using GroupOf = std::function<std::optional<Group>(Point normal, Point centre)>;

std::optional<Group> wallEverywhere(Point normal, Point centre);

// A box of nx x ny x nz cubes of edge h with one corner at the origin. x runs quickest, then y,
// then z, for nodes and cells alike. Inner faces come cell by cell towards +x, +y, +z, with area
// vectors pointing to the higher cell and weight 0.5; boundary faces come cell by cell in the order
// -x, +x, -y, +y, -z, +z. The caller finishes the host.
void addBox(TestHost& host, int nx, int ny, int nz, double h,
            const GroupOf& groupOf = wallEverywhere);

// Sets the flow variable of a finished host to a function of position: own cells and halo slots
// take its value at their centre, wall, inlet and symmetry slots the value of their own cell.
void setField(TestHost& host, const std::function<double(Point)>& field);

// Number of the cell in column i, row j, layer k (each from 0) of a box of nx x ny x nz cells.
int boxCell(int nx, int ny, int i, int j, int k);

// Number of the node at the lattice position i, j, k (each from 0) of such a box.
int boxNode(int nx, int ny, int i, int j, int k);

}  // namespace weldline::test
