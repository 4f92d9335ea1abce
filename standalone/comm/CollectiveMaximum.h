#pragma once

#include "CKVRCom.h"
#include "Ranks.h"

namespace weldline {

// The library's maximum over all processes, taken over the ranks of a run.
class CollectiveMaximum final : public CKVRCom {
  public:
    explicit CollectiveMaximum(Ranks& ranks) : m_ranks(ranks) {}
    int AllMax(int& value) override {
        return static_cast<int>(m_ranks.maximum(std::int64_t{value}));
    }

  private:
    Ranks& m_ranks;
};

}  // namespace weldline
