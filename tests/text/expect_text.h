#pragma once
// A call's result and the text it left behind, checked together.
#define EXPECT_GIVES(call, result, buf, text) \
    do {                                      \
        EXPECT_EQ(call, result);              \
        EXPECT_STREQ(buf, text);              \
    } while (0)
