// The test program's entry: started with a peer argument it plays the DDE
// partner in a second process; otherwise it runs the tests.

#include <gtest/gtest.h>

#include "peer.h"

int main(int argc, char** argv) {
    int code = 0;
    if (linktest::RunPeer(argc, argv, &code)) return code;
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
