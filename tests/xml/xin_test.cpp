// Tests of the XML tokenizer: tag reading, the attribute grammar, entity decoding, the
// end-tag and skip rules, typed attribute reads and the reads from the stream.
#include "vqk/xml/xin.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace {

const char* const kEof = "XML error: unexpected end of file";
const char* const kBadTag = "XML error: invalid tag";
const char* const kBadAttrs = "XML error: invalid tag attributes";
const char* const kBadEnd = "XML error: invalid tag end";

// A tokenizer over a document held in a temporary stream.
class XinOverText {
public:
    explicit XinOverText(const std::string& text) : m_file(std::tmpfile()) {
        std::fwrite(text.data(), 1, text.size(), m_file);
        std::rewind(m_file);
        x.init(m_file);
    }
    ~XinOverText() { std::fclose(m_file); }
    XinOverText(const XinOverText&) = delete;
    XinOverText& operator=(const XinOverText&) = delete;

    // Reads one tag, which must succeed.
    ApXin& next() {
        const char* err = x._readBeg();
        EXPECT_EQ(err, nullptr) << err;
        return x;
    }
    // The error of reading one tag ("" on success).
    std::string error() {
        const char* err = x._readBeg();
        return err ? err : "";
    }
    std::string attrs() const {
        std::string s;
        for (const ApXin::SAttr& a : x.m_attrs)
            s += std::string(a.name) + "=[" + a.value + "]";
        return s;
    }

    ApXin x;

private:
    FILE* m_file;
};

} // namespace

TEST(XinTags, KindsNamesAndSkippedConstructs) {
    XinOverText d("<?xml version=\"1.0\"?>\n<!DOCTYPE r>\n<!-- note -->text<r>\n<?pi x?><a/><b >t</b><c\t/></r>");
    EXPECT_TRUE(d.next().isTag("r"));
    EXPECT_TRUE(d.x.isTagStart());
    EXPECT_TRUE(d.next().isTag("a"));
    EXPECT_TRUE(d.x.isEmptyElem());
    EXPECT_TRUE(d.next().isTag("b"));
    EXPECT_EQ(d.x.tagType(), eXmlTagStart);
    EXPECT_TRUE(d.next().isTag("b"));
    EXPECT_TRUE(d.x.isTagEnd());
    EXPECT_TRUE(d.next().isTag("c"));
    EXPECT_TRUE(d.x.isEmptyElem());
    EXPECT_TRUE(d.next().isTag("r"));
    EXPECT_TRUE(d.x.isTagEnd());
    EXPECT_EQ(d.error(), kEof);
    EXPECT_FALSE(d.x.isTag(nullptr));

    // The name runs to the first blank, control byte or '/', whatever else it holds.
    XinOverText odd("<x=1.y><p\x01q=\"1\"/>");
    EXPECT_STREQ(odd.next().tag(), "x=1.y");
    EXPECT_STREQ(odd.next().tag(), "p");
    EXPECT_EQ(odd.x.attrI1("q", 0), 1);
}

// The declaration itself is the reader's test; here, what only header mode accepts.
TEST(XinTags, QuestionMarkClosesOnlyInHeaderMode) {
    // A '?' closes a tag only in header mode, and nothing may follow it.
    XinOverText q("<r a=\"1\"?>");
    EXPECT_EQ(q.error(), kBadAttrs);
    XinOverText after("<?xml v=\"1\"? ?>");
    EXPECT_STREQ(after.x._readBegHeader(1), kBadAttrs);
}

TEST(XinAttributes, GrammarThatIsAccepted) {
    XinOverText d("<a one='x\"y' two=\"it's\" p:three = \"3\"four=\"\" Z9=\"z\" _u=\"u\"\n\tfive\n=\n'5'/>");
    d.next();
    EXPECT_EQ(d.attrs(), "one=[x\"y]two=[it's]p:three=[3]four=[]Z9=[z]_u=[u]five=[5]");
    EXPECT_TRUE(d.x.isEmptyElem());
    EXPECT_STREQ(d.x.tag(), "a");
    EXPECT_EQ(d.x.nAttrs(), 7);
    EXPECT_TRUE(d.x.isAttrName(2, "p:three"));
    EXPECT_FALSE(d.x.isAttrName(7, "five"));
    EXPECT_FALSE(d.x.isAttrName(-1, "one"));
    // The first of two attributes with one name wins.
    XinOverText twice("<a k=\"1\" k=\"2\">");
    EXPECT_EQ(twice.next().attrI1("k", 0), 1);
    // Nothing asks a name to be there: an '=' right away makes a nameless attribute.
    XinOverText nameless("<a =\"1\">");
    EXPECT_EQ(nameless.next().attrI1("", 0), 1);
    // Names are made of bytes from 'A' up, digits and colons: UTF-8 letters belong.
    XinOverText utf8("<a \xc3\xa9t\xc3\xa9=\"1\">");
    EXPECT_EQ(utf8.next().attrI1("\xc3\xa9t\xc3\xa9", 0), 1);
}

TEST(XinEntities, OnlyTheFourAreDecoded) {
    XinOverText d("<a v=\"&lt;word&gt;\" w=\"&amp;lt; &quot;q&quot; &apos; &#60; &#x3c; &am\" x=\"&\" y=\"&amp\"/>");
    d.next();
    EXPECT_STREQ(d.x.attrS1("v", nullptr), "<word>");
    EXPECT_STREQ(d.x.attrS1("w", nullptr), "&lt; \"q\" &apos; &#60; &#x3c; &am");
    EXPECT_STREQ(d.x.attrS1("x", nullptr), "&");
    EXPECT_STREQ(d.x.attrS1("y", nullptr), "&amp");

    // A tag refused half-way leaves the values cut so far undecoded.
    XinOverText bad("<a v=\"&lt;\" w/>");
    EXPECT_EQ(bad.error(), kBadAttrs);
    ASSERT_EQ(bad.x.nAttrs(), 1);
    EXPECT_STREQ(bad.x.m_attrs[0].value, "&lt;");
}

TEST(XinEnd, TheTagInHandMayNameTheEnd) {
    // The name given lives in the tag buffer, which the next reads overwrite and grow.
    XinOverText d("<a><!--" + std::string(5000, '-') + "--></a><i/><i n=\"2\">" + std::string(3000, ' ') +
                  "4 5</i>");
    d.next();
    EXPECT_EQ(d.x._readEnd(d.x.tag()), nullptr);
    d.next();
    vq::TVector<int> v;
    EXPECT_EQ(apXmlReadI1Ex(d.x, d.x.tag(), v), nullptr);
    EXPECT_EQ(v.size(), 2u);
}

TEST(XinSkip, NestingCountsOnlyBareTags) {
    XinOverText d("<a><a><b/></a><c>x</c></a><next/>");
    d.next();
    EXPECT_EQ(d.x._skip(), nullptr);
    EXPECT_TRUE(d.x.isTagEnd());
    EXPECT_STREQ(d.x.tag(), "a");
    EXPECT_EQ(d.x.nAttrs(), 0);
    EXPECT_TRUE(d.next().isTag("next"));

    // A start tag with attributes or blanks does not count; its end tag still does, so
    // the skip ends there.
    for (const char* inner : {"<a x=\"1\">", "<a >", "<a/>"}) {
        XinOverText e(std::string("<a k=\"v\">") + inner + "</a></a><after/>");
        e.next();
        EXPECT_EQ(e.x._skip(), nullptr) << inner;
        ApXin& x = e.next();
        EXPECT_TRUE(x.isTag("a") && x.isTagEnd()) << inner;
        EXPECT_TRUE(e.next().isTag("after")) << inner;
    }
}

TEST(XinSkip, DoesNothingOutsideAStartTagAndReportsErrors) {
    XinOverText d("<a/><b></b><c><c></c>");
    d.next();
    EXPECT_EQ(d.x._skip(), nullptr);
    EXPECT_TRUE(d.next().isTag("b")); // nothing was consumed
    d.next();
    EXPECT_EQ(d.x._skip(), nullptr); // an end tag in hand
    EXPECT_TRUE(d.next().isTag("c"));
    EXPECT_STREQ(d.x._skip(), kEof);
    EXPECT_TRUE(d.x.isTag("c"));

    XinOverText open("<a><b");
    open.next();
    EXPECT_STREQ(open.x._skip(), kBadTag);

    // A construct's text ends at a zero byte: "<a\0x>" is a bare "<a>" and counts.
    XinOverText zero(std::string("<a><a\0x></a></a><after/>", 24));
    zero.next();
    EXPECT_EQ(zero.x._skip(), nullptr);
    EXPECT_TRUE(zero.next().isTag("after"));
}

TEST(XinSkip, KeepsTheNameWhileTheBufferGrows) {
    std::string doc = "<element k=\"v\">";
    for (int i = 0; i < 50; ++i)
        doc += "<x v=\"" + std::string(200, char('a' + i % 26)) + "\"/>";
    doc += "<comment " + std::string(5000, 'c') + "></element><tail/>";
    XinOverText d(doc);
    d.next();
    EXPECT_EQ(d.x._skip(), nullptr);
    EXPECT_STREQ(d.x.tag(), "element");
    EXPECT_TRUE(d.next().isTag("tail"));

    // Names around the size of the first buffer, whose end may meet the buffer's end.
    for (size_t n = 1015; n < 1035; ++n) {
        std::string name(n, 'n');
        XinOverText e("<" + name + "><x/></" + name + "><tail/>");
        e.next();
        EXPECT_EQ(e.x._skip(), nullptr) << n;
        EXPECT_EQ(e.x.tag(), name);
        EXPECT_TRUE(e.next().isTag("tail")) << n;
    }
}

TEST(XinTypedAttributes, ConversionsAndDefaults) {
    XinOverText d("<a i=\" 42x\" neg=\"-7\" b0=\"0\" b2=\"2\" bt=\"true\" d=\"2.5e3\" id=\"18446744073709551615\" "
                  "e=\"\" t=\"1 2 3\" t2=\"1 2\" s=\"&lt;\"/>");
    ApXin& x = d.next();
    EXPECT_EQ(ApXin_int(x, "i", 9), 42);
    EXPECT_EQ(ApXin_int(x, "neg", 9), -7);
    EXPECT_EQ(ApXin_int(x, "missing", 9), 9);
    EXPECT_EQ(ApXin_int(x, "e", 9), 0);
    EXPECT_FALSE(ApXin_bool(x, "b0", true));
    EXPECT_TRUE(ApXin_bool(x, "b2", false));
    EXPECT_FALSE(ApXin_bool(x, "bt", true)); // not a number: atoi gives 0
    EXPECT_TRUE(ApXin_bool(x, "missing", true));
    EXPECT_DOUBLE_EQ(ApXin_dec(x, "d", 0), 2500.0);
    EXPECT_DOUBLE_EQ(ApXin_dec(x, "missing", 1.5), 1.5);
    EXPECT_EQ(ApXin_ID1(x, "id", 1), 18446744073709551615ull);
    EXPECT_EQ(ApXin_ID1(x, "e", 5), 0u);
    EXPECT_EQ(ApXin_ID1(x, "missing", 5), 5u);
    EXPECT_STREQ(ApXin_str(x, "s", nullptr), "<");
    EXPECT_STREQ(ApXin_str(x, "missing", "dflt"), "dflt");

    int v[3] = {7, 8, 9};
    const int def[3] = {-1, -2, -3};
    ApXin_attrI3(x, "t", v, def);
    EXPECT_EQ(v[0] * 100 + v[1] * 10 + v[2], 123);
    ApXin_attrI3(x, "t2", v, def); // only two convert
    EXPECT_EQ(v[2], -3);
    EXPECT_EQ(v[0], -1);
    int keep[3] = {4, 5, 6};
    ApXin_attrI3(x, "missing", keep, keep);
    EXPECT_EQ(keep[0] + keep[1] + keep[2], 15);

    float f = 0;
    EXPECT_EQ(ApXin_attr(x, "d", "%f", &f), 1);
    EXPECT_FLOAT_EQ(f, 2500.0f);
    EXPECT_EQ(ApXin_attr(x, "missing", "%f", &f), 0);
}

TEST(XinTypedAttributes, SmallFirstLetter) {
    XinOverText d("<a Name=\"n\" Value=\"1\"/><b Other=\"2\" x=\"3\"/>");
    ApXin& x = d.next();
    EXPECT_EQ(x.findAttr("name"), nullptr);
    x.setSmallFirstLetterAttrName(true);
    EXPECT_STREQ(x.m_attrs[0].name, "name");
    EXPECT_STREQ(x.attrS1("Name", nullptr), "n"); // the given name is lowered as well
    EXPECT_STREQ(x.attrS1("name", nullptr), "n");
    EXPECT_TRUE(x.isAttrName(1, "Value"));
    EXPECT_FALSE(x.isAttrName(1, "VAlue")); // only the first letter is lowered
    d.next();
    EXPECT_STREQ(x.m_attrs[0].name, "other");
    EXPECT_EQ(x.attrI1("Other", 0), 2);
    EXPECT_EQ(x.attrI1("X", 0), 3);
    x.setSmallFirstLetterAttrName(false);
    EXPECT_EQ(x.findAttr("Other"), nullptr);

    // The lowering alone leaves the comparison exact.
    XinOverText e("<a Name=\"n\"/>");
    e.next().makeSmallFirstLetterAttrName();
    EXPECT_FALSE(e.x.m_smallFirstLetter);
    EXPECT_EQ(e.x.findAttr("Name"), nullptr);
    EXPECT_STREQ(e.x.attrS1("name", nullptr), "n");
}

TEST(XinStreamReads, ValuesFollowingTheTag) {
    XinOverText d("<p n=\"3\"> 1 -2 3 </p><d>0.5 1e2</d><id>18446744073709551615 7</id><s> word 12</s><short>4 x</short>");
    ApXin& x = d.next();
    int i[4] = {0, 0, 0, 99};
    EXPECT_EQ(ApXin_I1(x, i, 0), 0);
    EXPECT_EQ(ApXin_I1(x, i, -3), 0);
    EXPECT_EQ(ApXin_I1(x, i, 3), 3);
    EXPECT_EQ(i[0] + i[1] + i[2], 2);
    EXPECT_EQ(i[3], 99);
    EXPECT_EQ(x._readEnd("p"), nullptr);
    d.next();
    double v[2] = {};
    EXPECT_EQ(ApXin_D1(x, v, 2), 2);
    EXPECT_DOUBLE_EQ(v[0] + v[1], 100.5);
    EXPECT_EQ(x._readEnd("d"), nullptr);
    d.next();
    vq::uint64 ids[2] = {};
    EXPECT_EQ(ApXin_ID1Ar(x, ids, 2), 2);
    EXPECT_EQ(ids[0], 18446744073709551615ull);
    EXPECT_EQ(ids[1], 7u);
    EXPECT_EQ(x._readEnd("id"), nullptr);
    d.next();
    char word[8] = {};
    int n = 0;
    EXPECT_EQ(x.scanf("%7s %d", word, &n), 2);
    EXPECT_STREQ(word, "word");
    EXPECT_EQ(n, 12);
    EXPECT_EQ(x._readEnd("s"), nullptr);
    d.next();
    // Every value is attempted: one that does not convert keeps its old content, and
    // the end of the text does not stop the reading before the end of the stream.
    i[0] = i[1] = i[2] = 99;
    EXPECT_EQ(ApXin_I1(x, i, 3), 1);
    EXPECT_EQ(i[0], 4);
    EXPECT_EQ(i[1] + i[2], 198);
    XinOverText gap("<p>1 - 2</p>5");
    gap.next();
    EXPECT_EQ(ApXin_I1(gap.x, i, 3), 2);
    EXPECT_EQ(i[0] * 100 + i[2], 102);
    EXPECT_EQ(i[1], 99);
    EXPECT_EQ(gap.x._readEnd("p"), nullptr);
    EXPECT_EQ(ApXin_I1(gap.x, i, 3), 1); // the 5, then the end of the stream
    EXPECT_EQ(i[0], 5);
}

TEST(XinArrays, CountsItemsAndEndTag) {
    XinOverText d("<i n=\"3\">1 2 3</i><i N=\"2\">4 5</i><i Number=\"1\">6</i><i>7</i><i n=\"2\"/>"
                  "<t n=\"2\">1 2 3 4 5 6</t><v n=\"1\">0.5 -1 2e1</v><i n=\"5\">1 2</i>"
                  "<i n=\"3\">1 - 2</i><t n=\"2\">1 2 3 4</t><i n=\"1\">1</j><i n=\"1\">1</i>");
    vq::TVector<int> ints;
    auto text = [&ints]() {
        std::string s;
        for (int v : ints)
            s += std::to_string(v) + ",";
        return s;
    };
    ASSERT_EQ(apXmlReadI1Ex(d.x, "i", ints), nullptr);
    EXPECT_EQ(text(), "1,2,3,");
    ASSERT_EQ(apXmlReadI1Ex(d.x, "i", ints), nullptr);
    EXPECT_EQ(text(), "4,5,");
    ASSERT_EQ(apXmlReadI1Ex(d.x, "i", ints), nullptr);
    EXPECT_EQ(text(), "6,");
    ASSERT_EQ(apXmlReadI1Ex(d.x, "i", ints), nullptr); // no count: no items
    EXPECT_TRUE(ints.empty());
    ints.push_back(9);
    ASSERT_EQ(apXmlReadI1Ex(d.x, "i", ints), nullptr); // an empty element has zero items
    EXPECT_EQ(text(), "0,0,");

    vq::TVector<std::array<int, 3>> triples;
    ASSERT_EQ(apXmlReadI3Ex(d.x, "t", triples), nullptr);
    ASSERT_EQ(triples.size(), 2u);
    EXPECT_EQ(triples[1][2], 6);
    EXPECT_EQ(triples[0][1], 2);
    vq::TVector<std::array<double, 3>> points;
    ASSERT_EQ(apXmlReadD3Ex(d.x, "v", points), nullptr);
    ASSERT_EQ(points.size(), 1u);
    EXPECT_DOUBLE_EQ(points[0][0] + points[0][1] + points[0][2], 19.5);

    ASSERT_EQ(apXmlReadI1Ex(d.x, "i", ints), nullptr); // the text runs short
    EXPECT_EQ(text(), "1,2,0,0,0,");
    ASSERT_EQ(apXmlReadI1Ex(d.x, "i", ints), nullptr); // a value that does not convert keeps its place
    EXPECT_EQ(text(), "1,0,2,");
    ASSERT_EQ(apXmlReadI3Ex(d.x, "t", triples), nullptr); // the second item half read
    ASSERT_EQ(triples.size(), 2u);
    EXPECT_EQ(triples[1][0] * 100 + triples[1][1] * 10 + triples[1][2], 400);
    EXPECT_STREQ(apXmlReadI1Ex(d.x, "i", ints), kBadEnd);
    EXPECT_STREQ(apXmlReadI1Ex(d.x, "i", ints), nullptr);
    EXPECT_STREQ(apXmlReadI1Ex(d.x, "i", ints), kEof);
}

TEST(XinArrays, LargeCountsAreBelievedOnlyWhenTheStreamCouldHoldThem) {
    const int n = 70000; // beyond the count that is always believed
    const std::string tag = "<i n=\"" + std::to_string(n) + "\">1 2</i>";
    // Followed by enough bytes for the count, the vector takes the count.
    XinOverText room(tag + "<!--" + std::string(2 * n, '-') + "-->");
    vq::TVector<int> ints;
    ASSERT_EQ(apXmlReadI1Ex(room.x, "i", ints), nullptr);
    ASSERT_EQ(ints.size(), uint32_t(n));
    EXPECT_EQ(ints[1] * 10 + ints[n - 1], 20);

    // Without them the count lies: only the items read are kept, nothing is reserved.
    XinOverText tight(tag + std::string(100, ' '));
    ASSERT_EQ(apXmlReadI1Ex(tight.x, "i", ints), nullptr);
    EXPECT_EQ(ints.size(), 2u);
    XinOverText huge("<t n=\"2000000000\">1 2 3 4 5 6 7</t>");
    vq::TVector<std::array<double, 3>> points;
    ASSERT_EQ(apXmlReadD3Ex(huge.x, "t", points), nullptr);
    EXPECT_EQ(points.size(), 2u);
    EXPECT_LT(points.capacity(), 1000000u);

    // A full array of that size reads as any other.
    std::string full = "<i n=\"" + std::to_string(n) + "\">";
    for (int i = 0; i < n; ++i)
        full += std::to_string(i % 10) + " ";
    XinOverText whole(full + "</i>");
    ASSERT_EQ(apXmlReadI1Ex(whole.x, "i", ints), nullptr);
    ASSERT_EQ(ints.size(), uint32_t(n));
    EXPECT_EQ(ints[n - 1], (n - 1) % 10);
}

TEST(XinBuffers, LongTagsAndNoGrowthOnceWarm) {
    std::string big = "<big";
    for (int i = 0; i < 300; ++i)
        big += " a" + std::to_string(i) + "=\"" + std::to_string(i * 7) + "\"";
    big += "/>";
    std::string doc = big;
    for (int i = 0; i < 100; ++i)
        doc += "<row k=\"" + std::to_string(i) + "\" v=\"x\"/>";
    doc += big;
    XinOverText d(doc);
    ApXin& x = d.next();
    ASSERT_EQ(x.nAttrs(), 300);
    EXPECT_EQ(x.attrI1("a299", 0), 299 * 7);
    EXPECT_STREQ(x.m_attrs[150].name, "a150");
    const char* buffer = x.m_buf.data();
    const ApXin::SAttr* attrs = x.m_attrs.data();
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(d.next().attrI1("k", -1), i);
    EXPECT_EQ(d.next().attrI1("a123", 0), 123 * 7);
    EXPECT_EQ(x.m_buf.data(), buffer);
    EXPECT_EQ(x.m_attrs.data(), attrs);
}

TEST(XinBuffers, ZeroBytesAndUnboundStream) {
    std::string doc("<a\0b x=\"1\"><c v=\"1\0\"/><d/>", 26);
    XinOverText d(doc);
    d.next();
    EXPECT_STREQ(d.x.tag(), "a"); // the construct's text ends at the zero byte
    EXPECT_EQ(d.x.nAttrs(), 0);
    EXPECT_EQ(d.error(), kBadAttrs); // the value's closing quote lies beyond the zero byte
    EXPECT_TRUE(d.next().isTag("d"));

    ApXin unbound;
    EXPECT_STREQ(unbound._readBeg(), kEof);
    EXPECT_STREQ(unbound._readEnd("a"), kEof);
    int i = 0;
    EXPECT_EQ(unbound.scanf("%d", &i), EOF);
    EXPECT_EQ(unbound.readI1(&i, 1), 0);
}
