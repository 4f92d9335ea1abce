#pragma once

#include <memory>
#include <vector>

#include "Memory.h"

namespace weldline::reference {

// How an accessor answers.
struct ArrayManner {
    Placing placing = Placing::heap;
    int moving = 0;  // 0: always the same address; 1: two places in turn, the other one poisoned;
                     // 2: another place at each call, the former one is gone
    bool null = false;
};

// An array behind an accessor of the partition object. Only what was handed out last is good.
template <class T>
class PartitionArray {
  public:
    void set(const std::vector<T>& values, T poison, const ArrayManner& manner) {
        good_ = values;
        poison_.assign(values.size(), poison);
        manner_ = manner;
        turn_ = 0;
        copies_[0] = fresh();
        copies_[1] = manner.moving == 1 ? fresh() : nullptr;
    }

    T* access() {
        if (manner_.null) return nullptr;
        if (manner_.moving == 1) {
            copies_[turn_]->fill(poison_);
            turn_ = 1 - turn_;
            copies_[turn_]->fill(good_);
        }
        if (manner_.moving == 2) {
            std::unique_ptr<Memory> next = fresh();
            copies_[0]->fill(poison_);
            copies_[0] = std::move(next);
        }
        return static_cast<T*>(copies_[turn_]->address());
    }

    std::vector<T>& values() { return good_; }
    void refresh() { copies_[turn_]->fill(good_); }

  private:
    std::unique_ptr<Memory> fresh() const {
        return std::make_unique<Memory>(good_, First::meaningless, manner_.placing);
    }

    std::vector<T> good_;
    std::vector<T> poison_;
    ArrayManner manner_;
    std::unique_ptr<Memory> copies_[2];
    int turn_ = 0;
};

}  // namespace weldline::reference
