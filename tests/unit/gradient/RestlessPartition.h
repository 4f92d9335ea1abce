#pragma once

#include <algorithm>
#include <list>
#include <memory>
#include <vector>

#include "CPartitionFace_DLL.h"

namespace weldline::test {

// A partition object that answers every question with a fresh array and spoils the array that it
// gave to the same question before, and whose number of faces may drop after the first question:
// what a caller has kept from an earlier face is wrong.
class RestlessPartition : public CPartitionFace_DLL {
  public:
    explicit RestlessPartition(CPartitionFace_DLL& origin)
        : m_origin(origin), m_faces(origin.NParInterFace()), laterFaces(m_faces) {}

    int NParInterFace() override { return m_asked++ == 0 ? m_faces : laterFaces; }
    int* ijParCV() override { return fresh(m_origin.ijParCV(), m_cell, 0); }
    int* ijPar() override { return fresh(m_origin.ijPar(), m_halo, 0); }
    double* ijParSx() override { return fresh(m_origin.ijParSx(), m_real[0], 1e77); }
    double* ijParSy() override { return fresh(m_origin.ijParSy(), m_real[1], 1e77); }
    double* ijParSz() override { return fresh(m_origin.ijParSz(), m_real[2], 1e77); }
    double* ijParxc() override { return fresh(m_origin.ijParxc(), m_real[3], 1e77); }
    double* ijParyc() override { return fresh(m_origin.ijParyc(), m_real[4], 1e77); }
    double* ijParzc() override { return fresh(m_origin.ijParzc(), m_real[5], 1e77); }
    double* ParInterFace_Lamda() override {
        return fresh(m_origin.ParInterFace_Lamda(), m_real[6], 1e77);
    }

  private:
    // Spoilt arrays stay readable, as their reader may still hold them.
    template <class Value>
    Value* fresh(const Value* values, std::list<std::vector<Value>>& given, Value spoilt) {
        if (!given.empty()) std::fill(given.back().begin(), given.back().end(), spoilt);
        given.emplace_back(values, values + m_faces + 1);
        return given.back().data();
    }

    CPartitionFace_DLL& m_origin;
    int m_faces;
    int m_asked = 0;
    std::list<std::vector<int>> m_cell, m_halo;
    std::list<std::vector<double>> m_real[7];

  public:
    int laterFaces;  // answer of NParInterFace() after the first question
};

}  // namespace weldline::test
