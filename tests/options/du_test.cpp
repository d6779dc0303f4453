#include "vqk/options/du_array.h"
#include "vqk/options/du_bool.h"
#include "vqk/options/du_enum.h"
#include "vqk/options/du_list.h"
#include "vqk/options/du_look.h"
#include "vqk/options/du_number.h"
#include "vqk/options/du_string_id.h"
#include "vqk/options/du_text.h"
#include "vqk/options/du_time.h"
#include "vqk/options/du_triple.h"

#include "support/test_files.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>

namespace {

const vq::SStrId kId{70001, 0};

std::string shown(du::CBase& u) { return u.string().str(); }

// Each test sets the process-wide switch it relies on and leaves it off.
struct TrailZero {
    explicit TrailZero(bool on) { du::CBase::setTruncTrailZero(on); }
    ~TrailZero() { du::CBase::setTruncTrailZero(false); }
};

} // namespace

TEST(DuNumber, DisplayFactorScalesTextBothWays) {
    TrailZero on(true);
    du::T1<double> d(kId, 1.0, true, 0, 0.0, 10.0);
    d.setK(25.4);
    EXPECT_EQ(shown(d), "25.4");
    ASSERT_TRUE(d.setValueByString("50.8"));
    EXPECT_DOUBLE_EQ(d.val(), 2.0);
    EXPECT_TRUE(d.isChanged());
    EXPECT_TRUE(d.setValueByString("1000")); // the range is reported, not enforced

    du::T1<int> i(kId, 3, true, 0, 0, 5);
    i.setK(2.0);
    EXPECT_EQ(shown(i), "6");
    ASSERT_TRUE(i.setValueByString("7"));
    EXPECT_EQ(i.val(), 3); // integer division

    i.setVal(123456789);
    i.setK(1.0);
    EXPECT_EQ(shown(i), "1.2345679e+08"); // "%.8g" even for integers
    du::CBase::setTruncTrailZero(false);
    EXPECT_EQ(shown(i), "123456789");
    d.setVal(1.23456789);
    d.setK(1.0);
    EXPECT_EQ(shown(d), "1.23457"); // a default stream's six digits
}

TEST(DuNumber, TextThatIsNoNumberKeepsValueAndFlags) {
    for (const char* bad : {"abc", "", " ", "x1", "99999999999", (const char*)nullptr}) {
        du::T1<int> i(kId, 4, true, 0, 0, 9);
        i.setUndefined(true);
        EXPECT_FALSE(i.setValueByString(bad)) << (bad ? bad : "null");
        EXPECT_EQ(i.val(), 4);
        EXPECT_FALSE(i.isChanged());
        EXPECT_TRUE(i.isUndefined());
    }
    du::T1<double> d(kId, 1.5, true, 0, 0, 9);
    EXPECT_FALSE(d.setValueByString("1e999"));
}

TEST(DuNumber, UnitTypeShowsUnitsBesideTheNumber) {
    du::CUnitType u(kId, 2.5, "mm", true);
    ASSERT_TRUE(u.setValueByStringSt(vq::CStringSt("4.5")));
    EXPECT_EQ(shown(u), "4.5 (mm)");
    EXPECT_STREQ(u.value().str(), "4.5");
}

TEST(DuStringId, StateBitsShowTheirWordsFromBitThreeToFourteen) {
    const struct {
        int bits;
        const char* text;
    } cases[] = {
        {1 << 3 | 1 << 14, " Hidden Error"},
        {7 | 1 << 15 | 1 << 30, ""},
        {1 << 10 | 1 << 11 | 1 << 13, " Read-only Suppressed Converted"},
        {1 << 4 | 1 << 12, " Selected Unsupported"},
    };
    for (auto& c : cases) {
        du::CState s(kId, c.bits);
        EXPECT_EQ(shown(s), c.text) << c.bits;
    }
    du::CStrId id(kId, 62407);
    EXPECT_EQ(shown(id), "True");
    EXPECT_TRUE(id.setValueByInt(62408));
    EXPECT_EQ(shown(id), "False");
    EXPECT_EQ(id.valInt(), 62408);
    EXPECT_FALSE(id.isChanged());
}

TEST(DuBool, OnlyTheTrueWordsMakeItTrueAndSettingNeverFails) {
    const struct {
        const char* text;
        bool value;
    } cases[] = {{"True", true}, {"true", false}, {"TRUE", false}, {"False", false},
                 {"1", false},   {"", false},     {nullptr, false}};
    for (auto& c : cases) {
        du::CBool b(kId, !c.value, true, false);
        EXPECT_TRUE(b.setValueByString(c.text));
        EXPECT_EQ(b.val(), c.value) << (c.text ? c.text : "null");
        EXPECT_TRUE(b.isChanged());
        EXPECT_EQ(shown(b), c.value ? "True" : "False");
    }
}

TEST(DuLook, BadFontTextFallsBackToTheDefaultFont) {
    vq::CFont mine{"Courier New", 9, true, true};
    du::CFont f(kId, mine, true);
    EXPECT_EQ(shown(f), "Courier New 9 bold italic");
    EXPECT_FALSE(f.setValueByString("tiny"));
    EXPECT_EQ(f.val(), vq::defaultFont());
    EXPECT_TRUE(f.isChanged());
}

TEST(DuLook, ColourKeepsItsValueOnBadTextYetMarksChanged) {
    const struct {
        const char* text;
        bool ok;
        vq::CColor value;
    } cases[] = {{"1 2 3", true, {1, 2, 3}},
                 {"\t255\n0 7 and more", true, {255, 0, 7}},
                 {"1 2", false, {9, 9, 9}},
                 {"1 256 3", false, {9, 9, 9}}};
    for (auto& c : cases) {
        du::CColor u(kId, vq::CColor{9, 9, 9}, true);
        u.setUndefined(true);
        EXPECT_EQ(u.setValueByString(c.text), c.ok) << c.text;
        EXPECT_EQ(u.colorRGB(), c.value);
        EXPECT_TRUE(u.isChanged());
        EXPECT_FALSE(u.isUndefined());
    }
}

TEST(DuTime, LocalTimeInTheRuntimeFormOrADash) {
    std::time_t t = 86400 * 365;
    char expected[256];
    std::strftime(expected, sizeof expected, "%c", std::localtime(&t));
    du::CTime u(kId, vq::int64(t)), never(kId, vq::int64(1) << 62);
    EXPECT_EQ(shown(u), expected);
    EXPECT_EQ(shown(never), "-");
}

TEST(DuTriple, ThreeNumbersScaledByKOrNothingSet) {
    du::D3 p(kId, vq::T3<double>{1, 2, 0.125}, true, 0);
    p.setK(2.0);
    EXPECT_EQ(shown(p), "2 4 0.25");
    ASSERT_TRUE(p.setValueByString("10 20 1e9"));
    EXPECT_FALSE(p.setValueByString("1 2"));
    EXPECT_EQ(p.val(), (vq::T3<double>{5, 10, 5e8}));
}

namespace {

const int kStates[] = {61720, 61720, 61722, 61919}; // Hidden; Hidden, Locked, Error

vq::TVectorC<vq::CStr> texts(std::initializer_list<const char*> list) {
    vq::TVectorC<vq::CStr> v;
    for (const char* t : list)
        v.push_back(t);
    return v;
}

} // namespace

TEST(DuKinds, TypeCodeAndQueriesOfEveryKind) {
    // Flags: F float, B bool, C colour, O font, E enumeration, P path.
    const struct {
        std::shared_ptr<du::CBase> unit;
        const char* type;
        const char* flags;
        int valInt;
        int size;
    } kinds[] = {
        {std::make_shared<du::T1<int>>(kId, 5, true, 0, 0, 9), "S", "", -1, 1},
        {std::make_shared<du::T1<double>>(kId, 5.0, true, 0, 0, 9), "D1", "F", -1, 1},
        {std::make_shared<du::CUnitType>(kId, 1.0, "mm", true), "D1", "F", -1, 1},
        {std::make_shared<du::CStrId>(kId, 62407), "S", "", 62407, 1},
        {std::make_shared<du::CState>(kId, 8), "S", "", -1, 1},
        {std::make_shared<du::CBool>(kId, true, true, false), "B", "B", 1, 1},
        {std::make_shared<du::CStr>(kId, "x", true), "S", "", -1, 1},
        {std::make_shared<du::CPath>(kId, "x"), "S", "P", -1, 1},
        {std::make_shared<du::CFont>(kId, vq::defaultFont(), true), "F", "O", -1, 1},
        {std::make_shared<du::CColor>(kId, vq::CColor{}, true), "C", "C", -1, 1},
        {std::make_shared<du::CTime>(kId, 0), "S", "", -1, 1},
        {std::make_shared<du::T3<double>>(kId, vq::T3<double>{}, true, 0), "S", "", -1, 1},
        {std::make_shared<du::D3>(kId, vq::T3<double>{}, true, 0), "D3", "", -1, 1},
        {std::make_shared<du::T3<int>>(kId, vq::T3<int>{}, true, 0), "S", "", -1, 1},
        {std::make_shared<du::CEnum>(1, kStates, 4, true), "E", "E", 61720, 4},
        {std::make_shared<du::CEnumStr>(1, texts({"a", "b"}), true), "E", "E", -1, 2},
    };
    for (auto& k : kinds) {
        du::CBase& u = *k.unit;
        std::string flags = std::string(u.isFloat() ? "F" : "") + (u.isBool() ? "B" : "") +
                            (u.isColor() ? "C" : "") + (u.isFont() ? "O" : "") +
                            (u.isEnum() ? "E" : "") + (u.isPath() ? "P" : "");
        EXPECT_STREQ(u.typeStr(), k.type) << k.type << k.flags;
        EXPECT_EQ(flags, k.flags) << k.type;
        EXPECT_EQ(u.valInt(), k.valInt) << k.type << k.flags;
        EXPECT_EQ(u.size(), k.size) << k.type << k.flags;
        EXPECT_FALSE(u.isArray() || u.isSlider());
    }
}

TEST(DuEnum, ChoicesAreMatchedFromTheLastToTheFirst) {
    du::CEnum e(1, kStates, 4, true);
    EXPECT_STREQ(e.string().str(), "Hidden");
    EXPECT_STREQ(e.string(3).str(), "Error");
    EXPECT_STREQ(e.string(4).str(), "");
    EXPECT_STREQ(e.du::CBaseAr::string().str(), "4    items");

    EXPECT_FALSE(e.setValue(4));
    EXPECT_FALSE(e.setValueByString("Selected"));
    EXPECT_FALSE(e.isChanged());
    EXPECT_TRUE(e.setValue(61919));
    EXPECT_TRUE(e.setValueByString("Locked"));
    EXPECT_EQ(e.valInt(), 61722);
    e.setChanged(false);
    EXPECT_TRUE(e.setValueByInt(4)); // unchecked by design
    EXPECT_EQ(e.valInt(), 4);
    EXPECT_FALSE(e.isChanged());
    EXPECT_FALSE(e.setValueByString(1, "Error")); // items are not set one by one

    // Two ids without a text both read as "": the later one is taken.
    const int unnamed[] = {61720, 5, 6};
    du::CEnum u(1, unnamed, 3, true);
    EXPECT_TRUE(u.setValueByString(""));
    EXPECT_EQ(u.valInt(), 6);

    du::CEnum empty(1, nullptr, 0, true);
    EXPECT_STREQ(empty.string().str(), "");
}

TEST(DuEnum, TextChoicesMatchExactlyAndCopiesAreDeep) {
    du::CEnumStr e(1, texts({"mm", "mm", "inch", "Inch"}), true);
    EXPECT_STREQ(e.string().str(), "mm");
    EXPECT_FALSE(e.setValueByString("INCH"));
    EXPECT_TRUE(e.setValueByStringSt(vq::CStringSt("Inch")));

    du::CEnumStr copy(e);
    EXPECT_TRUE(copy.setValueByString("mm"));
    EXPECT_STREQ(e.string().str(), "Inch");

    du::CEnum a(1, kStates, 4, true), b(2, kStates, 2, false);
    b = a;
    EXPECT_TRUE(a.setValue(61919));
    EXPECT_STREQ(b.string().str(), "Hidden");
    EXPECT_EQ(b.size(), 4);
}

TEST(DuList, OwnsItsUnitsAndFindsThemByNameOrIndex) {
    du::CUnitList list;
    EXPECT_EQ(list.add(nullptr), nullptr);
    list.add(du::createI1(vq::SStrId{62407, 0}, 3, true));
    list.add(du::CStr::create(vq::SStrId{}, "part", true))->setName("file");
    list.add(du::createBool(kId, true, true));
    EXPECT_EQ(list.find("True"), list[0]); // the name id's text
    EXPECT_EQ(list.find(62407), list[0]);
    EXPECT_EQ(list.indexOf("file"), 1);
    EXPECT_EQ(list.find("nothing"), nullptr);
    EXPECT_EQ(list[3], nullptr);
    EXPECT_EQ(list[0]->getHigherLimit(), du::kNoLimit); // factories give the full range
    du::CUnitList moved(std::move(list));
    moved = du::CUnitList(); // the sanitizer checks every unit is released
    EXPECT_EQ(moved.size(), 0);
}

TEST(DuNames, NameTextWinsElseTheTableTextSplitsAtTheFirstLineBreak) {
    const std::string dir = test_files::freshFolder("du_names");
    if (FILE* f = std::fopen((dir + "/orv_string_repair.csv").c_str(), "wb")) {
        std::fputs("5;\"Tolerance\nThe default tolerance\nof the model\"\n6;Plain\n", f);
        std::fclose(f);
    }
    vq::setStringTableFolder(dir.c_str());
    du::CStr u(vq::SStrId{5, 1}, "", true);
    EXPECT_STREQ(u.nameStr().str(), "Tolerance");
    EXPECT_STREQ(u.descrStr().str(), "The default tolerance\nof the model");
    u.setName(vq::SStrId{6, 1});
    EXPECT_STREQ(u.nameStr().str(), "Plain");
    EXPECT_STREQ(u.descrStr().str(), "Plain");
    u.setName("Own");
    EXPECT_STREQ(u.nameStr().str(), "Own");
    EXPECT_STREQ(u.descrStr().str(), "Own");
    vq::setStringTableFolder(nullptr);
}
