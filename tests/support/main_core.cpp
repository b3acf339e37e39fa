#include "support/IsolatedHome.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    static const test::IsolatedHome home;
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
