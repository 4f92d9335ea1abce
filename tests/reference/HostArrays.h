#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#include "CKVR3DFiniteVolumeMesh.h"
#include "CKvr3dGV.h"
#include "PartitionData.h"

namespace weldline::reference {

// Arrays of exactly their length, each in a block of its own, so that the address sanitizer sees
// every access beyond them.
class ArrayStore {
  public:
    template <class T>
    T* place(const std::vector<T>& values) {
        const std::size_t bytes = values.size() * sizeof(T);
        blocks_.push_back({std::make_unique<unsigned char[]>(bytes), bytes});
        if (bytes > 0) {
            std::memcpy(blocks_.back().memory.get(), values.data(), bytes);
        }
        return reinterpret_cast<T*>(blocks_.back().memory.get());
    }

    // Row 0 is null.
    template <class T>
    T** placeRows(const std::vector<std::vector<T>>& rows) {
        auto table = std::make_unique<unsigned char[]>(rows.size() * sizeof(T*));
        T** pointers = reinterpret_cast<T**>(table.get());
        pointers[0] = nullptr;
        for (std::size_t r = 1; r < rows.size(); ++r) {
            pointers[r] = place(rows[r]);
        }
        tables_.push_back(std::move(table));
        return pointers;
    }

    // A checksum of the contents of all arrays.
    std::uint64_t checksum() const;

  private:
    struct Block {
        std::unique_ptr<unsigned char[]> memory;
        std::size_t bytes;
    };

    std::vector<Block> blocks_;
    std::vector<std::unique_ptr<unsigned char[]>> tables_;
};

// The mesh and the global variables of one binding with all their arrays.
struct HostArrays {
    explicit HostArrays(const PartitionData& data);

    // Forgets the pointers and counts of the mesh and the flow variable, as a host may do once
    // they are bound.
    void scramble();

    ArrayStore store;
    CKVR3DFiniteVolumeMesh mesh;
    CKvr3dGV gv;
    float* biInjection = nullptr;
};

}  // namespace weldline::reference
