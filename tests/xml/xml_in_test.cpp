// The pull reader: opening files, tag operations, attribute conversions, text, the
// scoped element reader and the forward searches.
#include "vqk/files/out_file.h"
#include "vqk/platform/file_open_read.h"
#include "vqk/xml/xml_in.h"

#include "xml_test_support.h"

#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <cstring>
#include <string>

using vq::CStr;
using vq::CXmlElemIn;
using vq::CXmlIn;
using xml_test::ScratchXml;
using xml_test::thrownText;

namespace {

// A reader positioned on the first tag of `doc`.
struct OnTag {
    explicit OnTag(const std::string& doc) : file(doc), in(file.c_str()) { in.read(); }
    ScratchXml file;
    CXmlIn in;
};

} // namespace

TEST(XmlInOpen, MissingFileFailsQuietlyOrThrowsFromTheConstructor) {
    CXmlIn in;
    EXPECT_FALSE(in.open("/nonexistent/folder/x.xml"));
    EXPECT_FALSE(in.isOpen());
    EXPECT_STREQ(in.fileName().str(), "");
    EXPECT_FALSE(in.open(static_cast<const char*>(nullptr)));
    EXPECT_FALSE(in.open(L""));
    EXPECT_EQ(thrownText([] { CXmlIn x("/nonexistent/folder/x.xml"); }), "File is not open");
    EXPECT_EQ(thrownText([] { CXmlIn x(L"/nonexistent/folder/x.xml"); }), "File is not open");
    EXPECT_EQ(vq::platform::openForReading(nullptr), nullptr);
    // A folder is no document.
    EXPECT_FALSE(in.open(xml_test::scratchFolder().c_str()));
}

TEST(XmlInOpen, ReadingWithoutAStreamThrowsInsteadOfTouchingIt) {
    CXmlIn in;
    EXPECT_EQ(thrownText([&] { in.read(); }), "File is not open");
    EXPECT_EQ(thrownText([&] { in.readHeader(); }), "File is not open");
    EXPECT_EQ(thrownText([&] { in.isNextTag("a"); }), "File is not open");
    EXPECT_EQ(thrownText([&] { in.readEnd("a"); }), "File is not open");
    EXPECT_FALSE(in.read2());
    CStr text("x");
    in.getText(text, false);
    EXPECT_STREQ(text.str(), "");
    char line[8];
    EXPECT_FALSE(in.gets(line, 8));
    EXPECT_EQ(in.getI1(-4), -4);
    EXPECT_FALSE(readElemBeg(in, nullptr));
}

TEST(XmlInOpen, StoresThePathAndReopensCleanly) {
    ScratchXml a("<a/>"), b("<b x='1'/>");
    CXmlIn in(a.c_str());
    EXPECT_EQ(std::string(in.fileName().str()), a.path());
    in.read("a");
    EXPECT_TRUE(in.open(b.c_str()));
    EXPECT_EQ(std::string(in.fileName().str()), b.path());
    in.read("b");
    EXPECT_EQ(in.attrInt("x", 0), 1);
    in.close();
    EXPECT_FALSE(in.isOpen());
    EXPECT_STREQ(in.fileName().str(), "");
    in.close(); // twice is harmless
}

TEST(XmlInOpen, TheLibrarysWritersAndTheReaderHoldEachOtherOff) {
    ScratchXml a("<a x='1'/>");
    vq::COutFile out;
    {
        CXmlIn in(a.c_str());
        EXPECT_FALSE(out.open(a.c_str(), false, false)) << "the writer would empty the file being read";
        in.read("a");
        EXPECT_EQ(in.attrInt("x", 0), 1);
    }
    ASSERT_TRUE(out.open(a.c_str(), true, false));
    CXmlIn in;
    EXPECT_FALSE(in.open(a.c_str())) << "a file being written is not read";
    out.close();
    EXPECT_TRUE(in.open(a.c_str()));
}

TEST(XmlInOpen, WidePathsAreUtf8OnDisk) {
    std::string dir = xml_test::scratchFolder();
    std::string narrow = dir + "/xml_in_\xC3\xA9t\xC3\xA9_" + std::to_string(vq::platform::processId()) + ".xml";
    ASSERT_TRUE(xml_test::writeFile(narrow, "<r/>"));
    vq::CWStr wide(narrow.c_str());
    {
        CXmlIn in(wide.str());
        EXPECT_EQ(std::string(in.fileName().str()), narrow);
        EXPECT_EQ(std::wcscmp(in.filePath(), wide.str()), 0);
        in.read("r");
    }
    std::error_code ec;
    std::filesystem::remove(std::filesystem::u8path(narrow), ec);
}

TEST(XmlInOpen, APathOf260CharactersOrMoreIsOpenedButNotStored) {
    ScratchXml doc("<r/>");
    const std::string& path = doc.path();
    const size_t cut = path.rfind('/');
    ASSERT_NE(cut, std::string::npos);
    if (path.size() > 250)
        GTEST_SKIP() << "scratch folder too long: " << path;
    // The same file, its folder padded with "/." (and one extra '/') to n characters.
    auto padded = [&](size_t n) {
        std::string folder = path.substr(0, cut);
        while (folder.size() + path.size() - cut < n)
            folder += (n - folder.size() - (path.size() - cut)) % 2 ? "/" : "/.";
        return folder + path.substr(cut);
    };
    for (size_t n : {size_t(259), size_t(260), size_t(261), size_t(400)}) {
        std::string p = padded(n);
        ASSERT_EQ(p.size(), n);
        CXmlIn in;
        ASSERT_TRUE(in.open(p.c_str())) << n;
        EXPECT_EQ(std::string(in.fileName().str()), n < 260 ? p : std::string()) << n;
        in.read("r");
    }
}

TEST(XmlInTags, HeaderIsOptionalAndAPushedBackTagComesOnce) {
    {
        ScratchXml doc("<?xml version=\"1.0\" encoding='UTF-8'?>\n<!-- c --><a><b/></a>");
        CXmlIn in(doc.c_str());
        EXPECT_TRUE(in.readHeader());
        EXPECT_TRUE(in.isEmptyElem());
        EXPECT_STREQ(in.attrStr("encoding", ""), "UTF-8");
        in.read("a"); // the comment after the declaration is passed over
    }
    ScratchXml doc("<a><b/><c/></a>");
    CXmlIn in(doc.c_str());
    EXPECT_FALSE(in.readHeader());
    in.read("a");
    EXPECT_TRUE(in.isTagStart());
    EXPECT_TRUE(in.isNextTag("b"));
    EXPECT_TRUE(in.isNextTag("b")); // looking twice reads nothing new
    EXPECT_FALSE(in.isNextTag("c"));
    in.read("b");
    EXPECT_TRUE(in.isEmptyElem());
    CStr next;
    in.getNextTag(next);
    EXPECT_STREQ(next.str(), "c");
    in.read("c");
    in.readEnd("a");
    EXPECT_EQ(in.end(), eXmlTagEnd);
}

TEST(XmlInTags, HeaderTakesOnlyTheExactDeclarationAndPushesBackAnythingElse) {
    struct Case {
        const char* head;
        const char* thrown; // what readHeader throws, or ""
        const char* tag;    // otherwise the tag the next read delivers
    };
    const Case cases[] = {
        {"<?style sheet=\"x\"?>", "", "?style"},
        {"<?xml-model href='m'?>", "", "?xml-model"},
        {"<?xml?>", "", "?xml?"},
        {"<!--c-->", "", "!--c--"},
        {"<!-- two words -->", "XML error: invalid tag attributes", ""},
        {"<!DOCTYPE a>", "XML error: invalid tag attributes", ""},
    };
    for (const Case& c : cases) {
        ScratchXml doc(std::string(c.head) + "\n<a/>");
        CXmlIn in(doc.c_str());
        bool declaration = true;
        EXPECT_EQ(thrownText([&] { declaration = in.readHeader(); }), c.thrown) << c.head;
        if (*c.thrown)
            continue;
        EXPECT_FALSE(declaration) << c.head;
        in.read();
        EXPECT_STREQ(in.tagStr(), c.tag);
        EXPECT_TRUE(in.isEmptyElem()) << c.head;
        in.read("a");
    }
    // Read without readHeader, the same constructs are passed over.
    ScratchXml doc("<!-- two words --><!DOCTYPE a><?pi data?>\n<a/>");
    CXmlIn in(doc.c_str());
    in.read("a");
}

TEST(XmlInTags, AnotherNameThrowsOrFailsWithoutPushingBack) {
    ScratchXml doc("<a><b/><c/><d/></a>");
    CXmlIn in(doc.c_str());
    in.read("a");
    EXPECT_EQ(thrownText([&] { in.read("x"); }), "Unexpected tag");
    EXPECT_TRUE(in.isTag("b"));
    EXPECT_FALSE(in.read2("x")); // <c/> is consumed all the same
    EXPECT_TRUE(in.read2("d"));
    EXPECT_TRUE(in.read2(nullptr));
    EXPECT_TRUE(in.isTagEnd());
    EXPECT_FALSE(in.read2()); // end of file
    EXPECT_EQ(thrownText([&] { in.read(); }), "XML error: unexpected end of file");
}

TEST(XmlInTags, SkippingElementsStopsAtOtherTagsAndAtTheEnclosingEnd) {
    ScratchXml doc("<r><p><p/><q>t</q></p><p x='1'/><p></p><q/><p/></r><z/>");
    CXmlIn in(doc.c_str());
    in.read("r");
    EXPECT_FALSE(in.skipElem("q"));
    EXPECT_TRUE(in.skipElems("p")); // three p elements, the first with nested content
    EXPECT_TRUE(in.isNextTag("q"));
    EXPECT_TRUE(in.skipElems(nullptr)); // q and the last p, not </r>
    EXPECT_TRUE(in.isNextTag("r"));
    EXPECT_TRUE(in.isTagEnd());
    EXPECT_FALSE(in.skipElem("x"));
    // A matching end tag is consumed by skipElem and stays in hand for readEnd.
    EXPECT_TRUE(in.skipElem(nullptr));
    EXPECT_TRUE(in.isTagEnd());
    in.readEnd("r");
    in.read("z");
}

TEST(XmlInTags, AccessorsOverTheTagInHand) {
    OnTag t("<point x=\"1\" label=\"a &amp; b &lt;c&gt;\" id='7'/>");
    CXmlIn& in = t.in;
    EXPECT_STREQ(in.tagStr(), "point");
    ASSERT_EQ(in.nAttr(), 3);
    EXPECT_STREQ(in.attrName(1), "label");
    EXPECT_STREQ(in.attrVal(1), "a & b <c>");
    EXPECT_STREQ(in.attrName(3), "");
    EXPECT_STREQ(in.attrVal(-1), "");
    CStr s;
    in.getAttrName(s, 2);
    EXPECT_STREQ(s.str(), "id");
    in.getAttrValue(s, 2);
    EXPECT_STREQ(s.str(), "7");
    EXPECT_TRUE(in.hasAttr("x"));
    EXPECT_FALSE(in.hasAttr("y"));
    EXPECT_FALSE(in.hasAttr(nullptr));
    char small[5] = "zzzz", fits[6];
    EXPECT_FALSE(in.getTag(small, 5));
    EXPECT_STREQ(small, "");
    EXPECT_TRUE(in.getTag(fits, 6));
    EXPECT_STREQ(fits, "point");
    in.getTag(s);
    EXPECT_STREQ(s.str(), "point");
    in.getTagAsLine(s);
    EXPECT_STREQ(s.str(), "<point x=\"1\" label=\"a & b <c>\" id=\"7\"/>");
    EXPECT_EQ(in.end(), eXmlTagEmpty);
    in.setReady();
    in.read("point");
    EXPECT_EQ(in.nAttr(), 3);
}

TEST(XmlInAttr, FormattedReadKeepsItsSuccessRule) {
    OnTag t("<a n=\"12\" e=\"\" w=\"abc\" h=\"0x10\"/>");
    CXmlIn& in = t.in;
    const char* p = nullptr;
    EXPECT_TRUE(in.attr("w", nullptr, &p));
    EXPECT_STREQ(p, "abc");
    int v = -1;
    EXPECT_TRUE(in.attr("n", "%d", &v));
    EXPECT_EQ(v, 12);
    EXPECT_TRUE(in.attr("h", "%x", &v));
    EXPECT_EQ(v, 16);
    v = -1;
    EXPECT_TRUE(in.attr("e", "%d", &v, true)); // end of input counts as success
    EXPECT_EQ(v, -1);
    EXPECT_FALSE(in.attr("w", "%d", &v));
    EXPECT_FALSE(in.attr("missing", "%d", &v));
    EXPECT_EQ(v, -1);
    EXPECT_EQ(thrownText([&] { in.attr("missing", "%d", &v, true); }), "Missed required attribute");
    EXPECT_EQ(thrownText([&] { in.attr("w", "%d", &v, true); }), "Missed required attribute");
}

TEST(XmlInAttr, ScalarsWithDefaultsAndAlternativeNames) {
    OnTag t("<a n=\"-5\" N=\"6\" Number=\"7\" t=\"true\" f=\"false\" T=\"TRUE\" two=\"2\" "
            "u=\"4000000000\" d=\"2.5e3\" s=\"text\" id=\"18446744073709551615\" junk=\"x1\"/>");
    CXmlIn& in = t.in;
    EXPECT_EQ(in.attrInt("n", 0), -5);
    EXPECT_EQ(in.attrInt("q", 9), 9);
    EXPECT_EQ(in.attrInt("q", "N", 9), 6);
    EXPECT_EQ(in.attrInt("n", "N", 9), -5);
    EXPECT_EQ(in.attrInt("q", "r", "Number", 9), 7);
    EXPECT_EQ(in.attrInt("q", "r", "s2", 9), 9);
    EXPECT_EQ(in.attrInt("junk", 9), 0);
    EXPECT_TRUE(in.attrBool("t", false));
    EXPECT_FALSE(in.attrBool("f", true));
    EXPECT_FALSE(in.attrBool("T", true)); // neither word, and atoi gives 0
    EXPECT_TRUE(in.attrBool("two", false));
    EXPECT_TRUE(in.attrBool("missing", true));
    EXPECT_EQ(in.attrUint("u", 1), 4000000000u);
    EXPECT_EQ(in.attrUint("missing", 1), 1u);
    EXPECT_DOUBLE_EQ(in.attrDec("d", 0), 2500.0);
    EXPECT_FLOAT_EQ(in.attrFloat("d", 0), 2500.0f);
    EXPECT_FLOAT_EQ(in.attrFloat("missing", 1.5f), 1.5f);
    EXPECT_STREQ(in.attrStr("s", "def"), "text");
    EXPECT_STREQ(in.attrStr("missing", "def"), "def");
    EXPECT_EQ(in.attrID1("id", 3), 18446744073709551615ull);
    EXPECT_EQ(in.attrID1("missing", 3), 3ull);
    EXPECT_EQ(in.attrInt(nullptr, 4), 4);
}

TEST(XmlInAttr, TuplesTakeAllComponentsOrTheDefault) {
    OnTag t("<a i2=\"3 -4\" i3=\"1 2 3\" b2=\"0 5\" d2=\"0.5 1e2\" d3=\"1 2 3.25\" "
            "d4=\"1 2 3 4\" short=\"7\" bad=\"1 x 3\"/>");
    CXmlIn& in = t.in;
    int i[3] = {0, 0, 0};
    const int defI[3] = {-1, -2, -3};
    EXPECT_TRUE(in.attrI2("i2", i, defI));
    EXPECT_EQ(i[0], 3);
    EXPECT_EQ(i[1], -4);
    EXPECT_TRUE(in.attrI3("i3", i, defI));
    EXPECT_EQ(i[2], 3);
    EXPECT_FALSE(in.attrI3("short", i, defI));
    EXPECT_EQ(i[0], -1);
    EXPECT_EQ(i[2], -3);
    i[0] = 42;
    EXPECT_FALSE(in.attrI3("bad", i, nullptr)); // no default: left as it was
    EXPECT_EQ(i[0], 42);
    EXPECT_FALSE(in.attrI2("missing", i, i));
    EXPECT_EQ(i[0], 42);
    bool b[2] = {true, false};
    EXPECT_TRUE(in.attrB2("b2", b, nullptr));
    EXPECT_FALSE(b[0]);
    EXPECT_TRUE(b[1]);
    double d[4] = {};
    const double defD[4] = {9, 9, 9, 9};
    EXPECT_TRUE(in.attrD2("d2", d, defD));
    EXPECT_DOUBLE_EQ(d[1], 100);
    EXPECT_TRUE(in.attrD3("d3", d, defD));
    EXPECT_DOUBLE_EQ(d[2], 3.25);
    EXPECT_TRUE(in.attrD4("d4", d, defD));
    EXPECT_DOUBLE_EQ(d[3], 4);
    EXPECT_FALSE(in.attrD4("d3", d, defD));
    EXPECT_DOUBLE_EQ(d[0], 9);
    std::array<double, 2> p2 = in.attrT("d2", std::array<double, 2>{1, 1});
    EXPECT_DOUBLE_EQ(p2[0], 0.5);
    std::array<double, 3> p3 = in.attrT("bad", std::array<double, 3>{1, 2, 3});
    EXPECT_DOUBLE_EQ(p3[1], 2);
}

TEST(XmlInText, TextIsTakenRawAndTrimmedOnRequest) {
    ScratchXml doc("<a>  12 \n</a><b>x &amp; y</b><c> \t </c><d>7 8</d>tail");
    CXmlIn in(doc.c_str());
    CStr text;
    in.read("a");
    in.getText(text, true);
    EXPECT_STREQ(text.str(), "12");
    in.readEnd("a");
    in.read("b");
    in.getText(text);
    EXPECT_STREQ(text.str(), "x &amp; y");
    in.readEnd("b");
    in.read("c");
    in.getText(text, true);
    EXPECT_STREQ(text.str(), "");
    in.readEnd("c");
    in.read("d");
    EXPECT_EQ(in.getI1(0), 7);
    EXPECT_DOUBLE_EQ(in.getD1(0), 8);
    EXPECT_EQ(in.getI1(-1), -1); // "</d>" is no number
    in.readEnd("d");
    in.getText(text, false);
    EXPECT_STREQ(text.str(), "tail");
}

TEST(XmlInText, LongTextsArriveWhole) {
    std::string body;
    for (int k = 0; body.size() < 50000; ++k)
        body += std::to_string(k) + (k % 7 ? " " : "\n");
    ScratchXml doc("<a>\n  " + body + " \n</a>");
    CXmlIn in(doc.c_str());
    in.read("a");
    CStr text;
    in.getText(text, true);
    while (!body.empty() && std::isspace(static_cast<unsigned char>(body.back())))
        body.pop_back();
    ASSERT_EQ(text.length(), int(body.size()));
    EXPECT_EQ(std::string(text.str()), body);
    in.readEnd("a");
}

TEST(XmlInText, NumbersAndLinesFromTheStream) {
    ScratchXml doc("<v>0x1F 010 2.5e1</v>\nline one\nline two");
    CXmlIn in(doc.c_str());
    in.read("v");
    EXPECT_EQ(in.getI1(0), 31); // "%i" takes hexadecimal
    EXPECT_EQ(in.getI1(0), 8);  // ... and octal
    EXPECT_DOUBLE_EQ(in.getD1(0), 25);
    in.readEnd("v");
    char line[64];
    ASSERT_TRUE(in.gets(line, sizeof line));
    EXPECT_STREQ(line, "\n");
    ASSERT_TRUE(in.gets(line, sizeof line));
    EXPECT_STREQ(line, "line one\n");
    ASSERT_TRUE(in.gets(line, 5));
    EXPECT_STREQ(line, "line");
    ASSERT_TRUE(in.gets(line, sizeof line));
    EXPECT_STREQ(line, " two");
    EXPECT_FALSE(in.gets(line, sizeof line));
    EXPECT_FALSE(in.gets(line, 0));
}

TEST(XmlElemIn, ScopesConsumeEndTagsOnlyWhenTheElementHadContent) {
    ScratchXml doc("<list n='3'><item v='1'/><item v='2'><sub/></item><item v='4'></item></list>"
                   "<after/>");
    CXmlIn in(doc.c_str());
    int sum = 0, subs = 0;
    {
        CXmlElemIn list(in, "list");
        EXPECT_EQ(list.state(), eXmlTagStart);
        EXPECT_STREQ(list.name(), "list");
        while (in.isNextTag("item")) {
            CXmlElemIn item(&list, &in, "item");
            sum += in.attrInt("v", 0);
            if (item.state() == eXmlTagStart && in.isNextTag("sub")) {
                CXmlElemIn sub(&item, nullptr, "sub");
                EXPECT_EQ(sub.state(), eXmlTagEmpty);
                EXPECT_EQ(&sub.in(), &in);
                ++subs;
            }
        }
        EXPECT_TRUE(in.isTag("list"));
    }
    EXPECT_EQ(sum, 7);
    EXPECT_EQ(subs, 1);
    in.read("after");
}

TEST(XmlElemIn, AnEndTagClosesTheScopeAndItsParent) {
    ScratchXml doc("<a></a><z/>");
    CXmlIn in(doc.c_str());
    {
        CXmlElemIn a(in, "a");
        {
            CXmlElemIn any(&a, &in, nullptr); // reads </a>
            EXPECT_EQ(any.state(), -1);
            EXPECT_EQ(a.state(), -1);
            CXmlElemIn again(&a, &in, "a"); // compares the tag in hand, reads nothing
            EXPECT_EQ(again.state(), -1);
            EXPECT_EQ(thrownText([&] { CXmlElemIn other(&a, &in, "b"); }), "Unexpected tag");
        }
    } // nothing more consumed
    in.read("z");
}

TEST(XmlElemIn, ACopyTakesOverTheEndTag) {
    ScratchXml doc("<a><b/></a><z/>");
    CXmlIn in(doc.c_str());
    {
        CXmlElemIn a(in, "a");
        in.read("b");
        CXmlElemIn copy(a);
        EXPECT_EQ(copy.state(), eXmlTagStart);
        EXPECT_NE(a.state(), eXmlTagStart);
    }
    in.read("z"); // </a> consumed exactly once
}

TEST(XmlElemIn, WrongTagsThrowAndUnwindWithoutDamage) {
    ScratchXml doc("<a><b><c/></b></a>");
    CXmlIn in(doc.c_str());
    std::string e = thrownText([&] {
        CXmlElemIn a(in, "a");
        CXmlElemIn b(&a, &in, "b");
        CXmlElemIn x(&b, &in, "x");
    });
    EXPECT_EQ(e, "Unexpected tag");
    EXPECT_EQ(thrownText([&] { CXmlElemIn p(nullptr, nullptr, "a"); }), "File is not open");
}

TEST(XmlElemIn, AChildReadsThroughItsParentsReader) {
    ScratchXml one("<a><b/></a>"), two("<c/>");
    CXmlIn in1(one.c_str()), in2(two.c_str());
    {
        CXmlElemIn a(in1, "a");
        CXmlElemIn b(&a, &in2, "b"); // from in1; in2 would have delivered <c/>
        EXPECT_EQ(&b.in(), &in1);
        EXPECT_EQ(b.state(), eXmlTagEmpty);
    }
    in2.read("c");
    EXPECT_EQ(thrownText([&] { in1.read(); }), "XML error: unexpected end of file");
}

TEST(XmlInSearch, ReadElemBegSkipsAndStops) {
    ScratchXml doc("<r><skip><want/></skip><x><want id='1'/></x><stop/><want id='2'/></r>");
    CXmlIn in(doc.c_str());
    in.read("r");
    ASSERT_TRUE(vq::readElemBeg(in, "want", "skip", "stop"));
    EXPECT_EQ(in.attrInt("id", 0), 1); // the one inside skip was never seen
    EXPECT_FALSE(vq::readElemBeg(in, "want", "skip", "stop"));
    in.read("stop"); // pushed back
    EXPECT_TRUE(vq::readElemBeg(in, nullptr));
    EXPECT_EQ(in.attrInt("id", 0), 2);
    EXPECT_FALSE(vq::readElemBeg(in, "want")); // runs into the end of the file
}

TEST(XmlInSearch, EndTagsNeverMatchButCanStopTheSearch) {
    ScratchXml doc("<r><want></want><want id='3'/></r><want id='4'/>");
    CXmlIn in(doc.c_str());
    in.read("r");
    ASSERT_TRUE(vq::readElemBeg(in, "want"));
    EXPECT_TRUE(in.isTagStart());
    ASSERT_TRUE(vq::readElemBeg(in, "want")); // </want> is passed over
    EXPECT_EQ(in.attrInt("id", 0), 3);
    EXPECT_FALSE(vq::readElemBeg(in, "want", nullptr, "r")); // </r> stops it
    in.readEnd("r");
    ASSERT_TRUE(vq::findElem(in, "want", "id", "4"));
}

TEST(XmlInSearch, FindElemMatchesAnAttributeValue) {
    ScratchXml doc("<r><e k='a'/><skip><e k='b'/></skip><e/><e k='b' n='1'/><e k='c' n='2'/></r>");
    {
        CXmlIn in(doc.c_str());
        ASSERT_TRUE(vq::findElem(in, "e", "k", "b", "skip"));
        EXPECT_EQ(in.attrInt("n", 0), 1);
        ASSERT_TRUE(vq::findElem(in, nullptr, "n", nullptr));
        EXPECT_STREQ(in.attrStr("k", ""), "c");
        EXPECT_FALSE(vq::findElem(in, "e", "k", "a"));
    }
    CXmlIn in(doc.c_str());
    ASSERT_TRUE(vq::findElem(in, "e", "k", "b")); // without skipping, the nested one wins
    EXPECT_EQ(in.attrInt("n", 0), 0);
}
