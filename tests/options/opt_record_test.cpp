// Option records: the exact "opt" element of each kind, the reading rules, and the
// enumeration and scaling rules.
#include "options_test_support.h"

#include "vqk/xml/xml_in.h"

using opt_test::optBytes;

namespace {

// Reads one "opt" element written in `xml` into `rec`.
void readInto(vq::SOpt& rec, const std::string& xml) {
    const std::string path = opt_test::scratchFolder("read_one") + "/one.xml";
    opt_test::writeFile(path, xml);
    vq::CXmlIn in(path.c_str());
    in.read("opt");
    rec.read_base(in);
}

TEST(OptRecord, WritesEachKindsElementExactly) {
    bool b = true;
    int i = 42, e = 5;
    const int table[] = {10, 20, 30};
    int t = 20;
    double d = 2.5;
    float f = 0.5f;
    vq::T2<int> i2{1, -2};
    vq::T3<int> i3{1, 2, 3};
    vq::T2<double> d2{0.1, 2};
    vq::T3<double> d3{1, 0.5, -3};
    vq::CColor c{1, 2, 3};
    vq::CFont font;
    font.parse("Arial 10 bold");
    vq::CStringSt s("a<b");
    unsigned bits = 0x6;
    vq::TVector<double> vd;
    vd.push_back(0.5);
    vq::TVectorC<vq::CStr> vs;
    vs.emplace_back("x\ry");
    static const char* const labels[] = {"a", "b", "c"};
    vq::SOptEnum en("en", e, {}, false, nullptr, 0, 1);
    en.setLabels(labels, 3);
    const struct {
        const vq::SOpt& rec;
        const char* bytes;
    } cases[] = {
        {vq::SOptBool("b", b), "<opt name=\"b\" val=\"true\" type=\"bool\"/>"},
        {vq::SOptI1("i", i, {}, true), "<opt name=\"i\" val=\"42\" readOnly=\"1\" type=\"i1\"/>"},
        {vq::SOptI1("t", t, {}, false, table, 3), "<opt name=\"t\" val=\"1\" type=\"i1\"/>"},
        {en, "<opt name=\"en\" val=\"1\" values=\"a|b|c\" type=\"enum\"/>"},
        {vq::SOptD1("len", d, vq::SOpt::eArea), "<opt name=\"len\" val=\"2.5\" type=\"d1\" deg=\"2\"/>"},
        {vq::SOptD1("ang", d, vq::SOpt::eAngle), "<opt name=\"ang\" val=\"2.5\" type=\"angle\"/>"},
        {vq::SOptD1("pc", d, vq::SOpt::ePercent), "<opt name=\"pc\" val=\"2.5\" type=\"percent\"/>"},
        {vq::SOptF1("f", f, vq::SOpt::eAngle), "<opt name=\"f\" val=\"0.5\" type=\"fAngle\"/>"},
        {vq::SOptI2("i2", i2), "<opt name=\"i2\" val=\"1 -2\" type=\"i2\"/>"},
        {vq::SOptI3("i3", i3), "<opt name=\"i3\" val=\"1 2 3\" type=\"i3\"/>"},
        {vq::SOptD2("d2", d2), "<opt name=\"d2\" val=\"0.1 2\"/>"},
        {vq::SOptD3("d3", d3), "<opt name=\"d3\" val=\"1 0.5 -3\" type=\"d3\"/>"},
        {vq::SOptColor("c", c), "<opt name=\"c\" val=\"1 2 3\" type=\"color\"/>"},
        {vq::SOptFont("font", font), "<opt name=\"font\" val=\"Arial 10 bold\" type=\"font\"/>"},
        {vq::SOptString("s", s), "<opt name=\"s\" val=\"a&lt;b\" type=\"string\"/>"},
        {vq::SOptBitset("bits", bits, 4), "<opt name=\"bits\" val=\"0110\" type=\"bitset\"/>"},
        {vq::SOptArrT<double>("vd", vd),
         "<opt name=\"vd\" type=\"vectord1\">\n<item>0.5</item>\n</opt>"},
        {vq::SOptArrStr("vs", vs), "<opt name=\"vs\" type=\"vectort\">\n<item>x&#13;y</item>\n</opt>"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(optBytes(c.rec), c.bytes);
    EXPECT_EQ(e, 5) << "the enumeration's variable is restored after its masked write";
}

TEST(OptRecord, LabelAndDescriptionComeFromTheTableText) {
    bool b = false;
    vq::SOptBool split("s", b, vq::SStrId{65100, 0});
    EXPECT_EQ(optBytes(split), "<opt name=\"s\" val=\"false\" label=\"Save report\" description=\"Write a "
                               "report file at the end of every job.\" type=\"bool\"/>");
    vq::SOptBool whole("w", b, vq::SStrId{62407, 0});
    EXPECT_EQ(optBytes(whole), "<opt name=\"w\" val=\"false\" label=\"True\" description=\"True\" type=\"bool\"/>");
}

TEST(OptRecord, ReadingKeepsTheValueOnAnythingMalformed) {
    int i = 7;
    const int table[] = {10, 20, 30};
    int t = 10;
    double d = 1;
    vq::T2<double> d2{0, 0};
    vq::T3<int> i3{1, 1, 1};
    bool b = false;
    vq::CColor c{9, 9, 9};
    vq::CFont font;
    font.parse("Arial 10");
    vq::SOptI1 ri("x", i);
    vq::SOptI1 rt("x", t, {}, false, table, 3);
    vq::SOptD1 rd("x", d);
    vq::SOptD2 rd2("x", d2);
    vq::SOptI3 ri3("x", i3);
    vq::SOptBool rb("x", b);
    vq::SOptColor rc("x", c);
    vq::SOptFont rf("x", font);

    readInto(ri, "<opt name=\"x\"/>");
    readInto(ri, "<opt name=\"x\" val=\"\"/>");
    EXPECT_EQ(i, 7);
    readInto(rt, "<opt name=\"x\" val=\"5\"/>");
    readInto(rt, "<opt name=\"x\" val=\"-1\"/>");
    EXPECT_EQ(t, 10) << "an index outside the table is ignored";
    readInto(rt, "<opt name=\"x\" val=\"2\"/>");
    EXPECT_EQ(t, 30);
    readInto(rd, "<opt name=\"x\" val=\"abc\"/>");
    EXPECT_EQ(d, 1);
    readInto(rd2, "<opt name=\"x\" val=\"1.5 2.75\"/>");
    EXPECT_EQ(d2, (vq::T2<double>{1.5, 2})) << "the second number is read as an integer";
    readInto(ri3, "<opt name=\"x\" val=\"4 5\"/>");
    EXPECT_EQ(i3, (vq::T3<int>{1, 1, 1}));
    readInto(rb, "<opt name=\"x\" val=\"TRUE\"/>");
    EXPECT_FALSE(b);
    readInto(rc, "<opt name=\"x\" val=\"1 2\"/>");
    EXPECT_EQ(c, (vq::CColor{9, 9, 9}));
    readInto(rf, "<opt name=\"x\" val=\"bold\"/>");
    EXPECT_EQ(font.text(), "Arial 10");

    const struct {
        const char* attr;
        bool readOnly;
    } ro[] = {{"readOnly=\"true\"", true}, {"readOnly=\"false\"", false}, {"readOnly=\"2\"", true},
              {"readOnly=\"yes\"", false}, {"", false}};
    for (const auto& r : ro) {
        const bool before = *r.attr ? !r.readOnly : true; // absent: stays as it was
        ri.setReadOnly(before);
        readInto(ri, std::string("<opt name=\"x\" ") + r.attr + "/>");
        EXPECT_EQ(ri.isReadOnly(), *r.attr ? r.readOnly : before) << r.attr;
    }
}

TEST(OptRecord, EnumerationLabelsScalingAndEquality) {
    int v = 0;
    const int table[] = {4, 8, 16};
    static const char* const labels[] = {"small", "medium", "large"};
    vq::SOptEnum plain("p", v);
    plain.setLabels(labels, 3);
    vq::SOptEnum mapped("m", v, {}, false, table, 3);
    mapped.setLabels(labels, 3);
    EXPECT_EQ(plain.valByLabel("medium"), 1);
    EXPECT_EQ(plain.valByLabel("Medium"), 3) << "case-sensitive; no match gives the count";
    EXPECT_EQ(mapped.valByLabel("large"), 16);
    vq::CStr label;
    EXPECT_TRUE(mapped.getLabelByVal(8, label));
    EXPECT_EQ(label, "medium");
    EXPECT_FALSE(mapped.getLabelByVal(5, label));

    double d = 2.0;
    const struct {
        vq::SOpt::EUnitType unit;
        double scaled;
    } scale[] = {{vq::SOpt::eLength, 20}, {vq::SOpt::eArea, 200}, {vq::SOpt::eVolume, 2000},
                 {vq::SOpt::eAngle, 2}, {vq::SOpt::eNone, 2}};
    for (const auto& s : scale)
        EXPECT_EQ(vq::SOptD1("d", d, s.unit).valScaled(10), s.scaled);

    double a = 1.0, b = 1.0 + 1e-15;
    vq::SOptD1 ra("a", a), rb("b", b);
    EXPECT_FALSE(ra.isEqual(rb)) << "no tolerance";
    b = 1.0;
    EXPECT_TRUE(ra.isEqual(rb));
    int i = 1;
    EXPECT_FALSE(ra.isEqual(vq::SOptI1("i", i))) << "different kinds";

    vq::SOptD1Imp own("own", 3.0);
    std::unique_ptr<vq::SOpt> copy(own.createCopy());
    own.setVal(4.0);
    EXPECT_FALSE(copy->isReference());
    EXPECT_EQ(static_cast<vq::SOptD1&>(*copy).val(), 3.0) << "an Imp copy holds its own value";
}

} // namespace
