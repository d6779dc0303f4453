#include "vqk/text/str.h"
#include "vqk/text/format.h"

#include <gtest/gtest.h>

TEST(CTStr, EmptyStringIsNeverNull) {
    vq::CStr s;
    ASSERT_NE(s.str(), nullptr);
    EXPECT_STREQ(s.str(), "");
    EXPECT_EQ(s.length(), 0);
    EXPECT_TRUE(s.empty());
}
