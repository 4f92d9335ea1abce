#include <gtest/gtest.h>

#include "MpiTest.h"

namespace weldline::test {

namespace {

MpiSession* session = nullptr;

}  // namespace

MpiSession& mpiSession() {
    return *session;
}

}  // namespace weldline::test

int main(int argc, char** argv) {
    weldline::MpiSession own(argc, argv);
    weldline::test::session = &own;
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
