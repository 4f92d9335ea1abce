#pragma once

#include <vector>

#include "FaceViews.h"
#include "Rows.h"
#include "SmoothingFaces.h"
#include "Vec3.h"

namespace weldline::core {

// Whether the cells of a face lie so far apart, as in a mesh numbered by chance, that every value
// of a neighbour has to come from memory by itself.
bool isScattered(const SmoothedInnerFaces& faces, int slots);

// The faces that take part once more, for scattered meshes: as rows of terms, one row per slot, so
// that the slots can be worked on in any order. They stand in an order of their own, in which
// neighbours lie close together; a row keeps its terms in the order of the faces, so that every sum
// is added up as before.
class SmoothingRows {
  public:
    SmoothingRows(CKVR3DWeldLine& record, const SmoothingFaces& faces);

    // The components of a gradient set together; at least one pass.
    void smooth(const CellVectors& g, int nPass);

  private:
    // What a face adds to the sum of one of its slots a and b, which are given by their places.
    struct Term {
        int a;
        int b;
        double lambda;  // weight of b
        double area;
    };
    // A boundary-value slot that takes the value of its cell; both are places.
    struct Copy {
        int slot;
        int cell;
    };

    void placeSlots(const Rows<int>& neighbours, int* placeOf);
    void placeTerms(const SmoothingFaces& faces, const int* placeOf);
    void placeCopies(const BoundaryGroup& faces, const int* placeOf);
    template <class Take>
    void visitSums(const Vec3* phi, Take take) const;
    void pass(const Vec3* phi, Vec3* next) const;

    CKVR3DWeldLine& m_record;
    Extent m_extent;
    ArrayOwner m_memory;
    int* m_slotAt;       // slot at each place, 1-based both
    double* m_weights;   // W by place
    Rows<Term> m_terms;  // by place
    std::vector<Copy> m_copies;
    Vec3* m_values;  // by place
    Vec3* m_next;
};

}  // namespace weldline::core
