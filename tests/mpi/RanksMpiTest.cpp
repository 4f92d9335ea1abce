// Ranks: 1 2 3 4 8

#include <gtest/gtest.h>

#include "MpiTest.h"
#include "RanksContract.h"

namespace weldline {
namespace {

TEST(MpiRanks, keep_the_contract) {
    const auto ranks = test::mpiSession().world();
    test::checkRanks(*ranks);
}

TEST(MpiRanks, keep_the_contract_when_every_message_goes_in_parts) {
    const auto ranks = test::mpiSession().world(3);
    test::checkRanks(*ranks);
}

}  // namespace
}  // namespace weldline
