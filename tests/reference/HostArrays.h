#pragma once

#include <cstdint>
#include <vector>

#include "CKVR3DFiniteVolumeMesh.h"
#include "CKvr3dGV.h"
#include "Memory.h"
#include "PartitionData.h"

namespace weldline::reference {

// Arrays and row tables, each in memory of its own.
class ArrayStore {
  public:
    explicit ArrayStore(Placing placing) : placing_(placing) {}

    // An array whose element 0 means nothing.
    template <class T>
    T* place(const std::vector<T>& values) {
        return keep(values, First::meaningless, placing_);
    }

    // Rows whose element 0 is a count, or means nothing either. There is no row 0.
    template <class T>
    T** placeRows(const std::vector<std::vector<T>>& rows, First first, T poison) {
        std::vector<T*> table(rows.size(), nullptr);
        for (std::size_t r = 1; r < rows.size(); ++r) {
            std::vector<T> row = rows[r];
            if (placing_ == Placing::heapTails) row.insert(row.end(), 1 + r % 4, poison);
            table[r] = keep(row, first, placing_);
        }
        memories_.emplace_back(table, First::meaningless, placing_);
        return static_cast<T**>(memories_.back().address());
    }

    // A checksum of the contents of all arrays.
    std::uint64_t checksum() const;

  private:
    template <class T>
    T* keep(const std::vector<T>& values, First first, Placing placing) {
        memories_.emplace_back(values, first, placing);
        arrays_.push_back(memories_.size() - 1);
        return static_cast<T*>(memories_.back().address());
    }

    Placing placing_;
    std::vector<Memory> memories_;
    std::vector<std::size_t> arrays_;  // those that hold numbers, not addresses
};

// How a host hands its arrays out.
struct HostManner {
    Placing placing = Placing::heap;
    bool nullArrays = false;  // arrays that nobody has a reason to read are null
};

// The mesh and the global variables of one binding with all their arrays.
struct HostArrays {
    HostArrays(const PartitionData& data, const HostManner& manner);

    // Forgets the pointers and counts of the mesh and the flow variable, as a host may do once
    // they are bound.
    void scramble();

    ArrayStore store;
    CKVR3DFiniteVolumeMesh mesh;
    CKvr3dGV gv;
    float* biInjection = nullptr;

  private:
    void placeCells(const PartitionData& data);
    void placeInnerFaces(const PartitionData& data);
    void placeGroups(const PartitionData& data);
    void placeReserved(const PartitionData& data);
    template <class T>
    T* placeUnless(bool unread, const std::vector<T>& values);

    bool nullArrays_;
};

}  // namespace weldline::reference
