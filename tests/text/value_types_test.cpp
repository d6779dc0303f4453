#include "vqk/text/color.h"
#include "vqk/text/font.h"
#include "vqk/text/string_list.h"
#include "vqk/text/vector_c.h"

#include <gtest/gtest.h>

#include <string>

TEST(CColorText, ReadsExactlyThreeByteValues) {
    const struct {
        const char* text;
        bool ok;
        vq::CColor c;
    } cases[] = {
        {"255 128 0", true, {255, 128, 0}},
        {" \t0  0\n255 ", true, {0, 0, 255}},
        {"256 0 0", false, {}},
        {"-1 0 0", false, {}},
        {"1 2", false, {}},
        {"1 2 3 4", false, {}},
        {"1 2 3x", false, {}},
        {"99999999999999999999 0 0", false, {}},
        {"", false, {}},
        {nullptr, false, {}},
    };
    for (auto& t : cases) {
        vq::CColor c{7, 8, 9};
        EXPECT_EQ(c.parse(t.text), t.ok) << (t.text ? t.text : "null");
        EXPECT_EQ(c, (t.ok ? t.c : vq::CColor{7, 8, 9})) << (t.text ? t.text : "null");
    }
    vq::CColor c{1, 20, 255}, back;
    EXPECT_STREQ(c.text().str(), "1 20 255");
    ASSERT_TRUE(back.parse(c.text().str()));
    EXPECT_EQ(back, c);
    EXPECT_EQ(c.toInt(), 0xff1401);
    EXPECT_EQ(vq::CColor::fromInt(c.toInt()), c);
}

TEST(CFontText, FaceSizeAndStyleWordsRoundTrip) {
    const struct {
        const char* text;
        const char* face;
        int size;
        bool bold, italic;
        const char* shown;
    } good[] = {
        {"Arial 10", "Arial", 10, false, false, "Arial 10"},
        {"  Courier New   9 bold ", "Courier New", 9, true, false, "Courier New 9 bold"},
        {"Arial 10 ITALIC Bold", "Arial", 10, true, true, "Arial 10 bold italic"},
        {"Code 128 12", "Code 128", 12, false, false, "Code 128 12"},
        {"X 999 italic", "X", 999, false, true, "X 999 italic"},
    };
    for (auto& t : good) {
        vq::CFont f;
        ASSERT_TRUE(f.parse(t.text)) << t.text;
        EXPECT_EQ(f, (vq::CFont{t.face, t.size, t.bold, t.italic})) << t.text;
        EXPECT_STREQ(f.text().str(), t.shown);
    }
    const char* bad[] = {"", "Arial", "10", "Arial 0", "Arial 1000", "Arial -3", "Arial 10 bold bold",
                         "Arial 10 heavy", "Arial10", "bold", nullptr};
    for (const char* t : bad) {
        vq::CFont f{"Keep", 8, true, false};
        EXPECT_FALSE(f.parse(t)) << (t ? t : "null");
        EXPECT_EQ(f, (vq::CFont{"Keep", 8, true, false}));
    }
}

namespace {

// Counts live objects so that the array's construction and destruction can be checked.
struct SCounted {
    static int live;
    std::string v;
    SCounted(const char* s = "") : v(s) { ++live; }
    SCounted(const SCounted& o) : v(o.v) { ++live; }
    SCounted(SCounted&& o) noexcept : v(std::move(o.v)) { ++live; }
    SCounted& operator=(const SCounted&) = default;
    SCounted& operator=(SCounted&&) = default;
    ~SCounted() { --live; }
    bool operator==(const SCounted& o) const { return v == o.v; }
};
int SCounted::live = 0;

} // namespace

TEST(TVectorC, GrowsOnTheSharedRuleAndKeepsEveryElementAlive) {
    {
        vq::TVectorC<SCounted> a;
        uint32_t expected = 0;
        for (int i = 0; i < 3000; ++i) {
            uint32_t c = a.capacity();
            a.push_back(std::to_string(i).c_str());
            expected = a.size() > c ? vq::grownCapacity(c, a.size()) : expected;
            ASSERT_EQ(a.capacity(), expected);
        }
        EXPECT_EQ(SCounted::live, 3000);
        a.push_back(a[0]); // an element of the array itself while it grows
        a.erase(1);
        EXPECT_EQ(a[1].v, "2");
        EXPECT_EQ(a.back().v, "0");
        vq::TVectorC<SCounted> b(a);
        EXPECT_TRUE(b == a);
        b[5].v = "x";
        EXPECT_TRUE(b != a); // deep copy
        a = std::move(b);
        EXPECT_EQ(a[5].v, "x");
        a.resize(10);
        b.resize(2);
        EXPECT_EQ(SCounted::live, 12);
        uint32_t cap = a.capacity();
        a.clear();
        EXPECT_EQ(a.capacity(), cap);
    }
    EXPECT_EQ(SCounted::live, 0);
}

TEST(CStringSt, FirstTextIsTheValueAndMissingTextsAreEmpty) {
    vq::CStringSt st;
    EXPECT_STREQ(st.first(), "");
    st.add("12.5");
    st.add(nullptr);
    st.add() = "mm";
    EXPECT_STREQ(st.first(), "12.5");
    EXPECT_STREQ(st.text(1), "");
    EXPECT_STREQ(st.text(2), "mm");
    EXPECT_STREQ(st.text(3), "");
    EXPECT_STREQ(st.text(-1), "");
}
