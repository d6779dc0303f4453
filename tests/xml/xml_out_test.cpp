// The writer's output byte for byte: element layout, raw content and comments,
// indentation, inserted files, every attribute form and escaping. libxml2 judges
// well-formedness wherever the output is meant to be XML.
#include "xml_test_support.h"

#include "support/xml_referee.h"

#include "vqk/xml/xml_escape.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <clocale>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

using xml_test::CCapture;

// One writing scenario: what it writes into a fresh capture and the exact bytes.
struct Scenario {
    const char* name;
    void (*write)(CCapture&);
    std::string bytes;
    bool wellFormed;
};

void checkScenarios(const std::vector<Scenario>& all) {
    for (const Scenario& s : all) {
        SCOPED_TRACE(s.name);
        CCapture c;
        s.write(c);
        std::string got = c.bytes();
        EXPECT_EQ(got, s.bytes);
        EXPECT_EQ(bool(parseXml(got)), s.wellFormed) << got;
    }
}

TEST(XmlOutLayout, ElementsTextAndIndentation) {
    checkScenarios({
        {"empty elements are never indented, nothing written early",
         [](CCapture& c) {
             c.out.setIndent("\t");
             vq::CXmlOutElem root(c.out, "root");
             EXPECT_EQ(c.bytes(), "");
             vq::CXmlOutElem a(c.out, "a");
             vq::CXmlOutElem b(c.out, "b");
         },
         "<root>\n\t<a>\n<b/>\n\t</a>\n</root>\n", true},
        {"attributes only close on their line",
         [](CCapture& c) {
             c.out.setIndent("  ");
             vq::CXmlOutElem root(c.out, "r");
             c.out.attrInt("v", 1);
             {
                 vq::CXmlOutElem a(c.out, "a");
                 c.out.attrStr("n", "x");
                 vq::CXmlOutElem b(c.out, "b");
                 c.out.attrBool("ok", true);
             }
             vq::CXmlOutElem d(c.out, "d");
             c.out.attrI2("p", 1, 2);
         },
         "<r v=\"1\">\n  <a n=\"x\">\n    <b ok=\"1\"/>\n  </a>\n  <d p=\"1 2\"/>\n</r>\n", true},
        {"raw tags write no line breaks",
         [](CCapture& c) {
             c.out.setIndent("  ");
             c.out.setRawTags(true);
             EXPECT_TRUE(c.out.isRawTags());
             vq::CXmlOutElem root(c.out, "r");
             {
                 vq::CXmlOutElem a(c.out, "a");
                 c.out.attrInt("i", 3);
             }
             { vq::CXmlOutElem e(c.out, "e"); }
             c.out.text("t", "%s", "x");
         },
         "<r>  <a i=\"3\"/><e/>  <t>x</t></r>", true},
        {"text elements stay on one line",
         [](CCapture& c) {
             c.out.setIndent("\t");
             vq::CXmlOutElem root(c.out, "root");
             vq::CXmlOutElem mid(c.out, "mid");
             c.out.text("a", "%i", 5);
             c.out.text("b", "%s&amp;", "q");
         },
         "<root>\n\t<mid>\n\t\t<a>5</a>\n\t\t<b>q&amp;</b>\n\t</mid>\n</root>\n", true},
        {"a text body closes right after the text; a child after text keeps the end on its line",
         [](CCapture& c) {
             c.out.setIndent("  ");
             vq::CXmlOutElem root(c.out, "r");
             {
                 vq::CXmlOutElem a(c.out, "a");
                 c.out.attrInt("k", 1);
                 c.out << "v=" << 2 << " " << 0.5;
             }
             vq::CXmlOutElem m(c.out, "m");
             c.out << "t";
             vq::CXmlOutElem k(c.out, "k");
             c.out.attrInt("z", 0);
         },
         "<r>\n  <a k=\"1\">v=2 0.5</a>\n  <m>t    <k z=\"0\"/>\n</m>\n</r>\n", true},
        {"CDATA content is not indented; depths inside are complements",
         [](CCapture& c) {
             c.out.setIndent("  ");
             vq::CXmlOutElem root(c.out, "r");
             vq::CXmlOutElem s(c.out, "script", "//");
             EXPECT_EQ(s.depth(), 1);
             vq::CXmlOutElem in(c.out, "in");
             EXPECT_EQ(in.depth(), -2);
             vq::CXmlOutElem deeper(c.out, "deeper");
             EXPECT_EQ(deeper.depth(), -3);
             c.out.attrInt("x", 1);
         },
         "<r>\n  <script><![CDATA[//<in>\n<deeper x=\"1\"/>\n</in>\n]]></script>\n</r>\n", true},
        {"null names and texts are empty",
         [](CCapture& c) {
             vq::CXmlOutElem r(c.out, nullptr, nullptr);
             c.out.attr(nullptr, "%i", 1);
             c.out.attrStr(nullptr, static_cast<const char*>(nullptr));
             c.out.attr(nullptr, nullptr);
             c.out.text(nullptr, nullptr);
             c.out(nullptr);
             c.out.write(nullptr, 3);
             c.out.comment(nullptr);
             EXPECT_FALSE(c.out.insertXml(static_cast<const char*>(nullptr)));
         },
         "< =\"1\" =\"\" >\n<></>\n<!--  -->\n</>\n", false},
        {"an element outliving its stream stays silent",
         [](CCapture& c) {
             auto* e = new vq::CXmlOutElem(c.out, "old");
             c.out.attrInt("a", 1);
             c.out.close();
             EXPECT_EQ(c.out.current(), nullptr);
             delete e;
         },
         "<old a=\"1\"", false},
        {"keeper opens only with a writer",
         [](CCapture& c) {
             vq::CXmlOutElemKeeper none(nullptr, "x");
             EXPECT_EQ(none.elem(), nullptr);
             vq::CXmlOutElemKeeper k(&c.out, "kept");
             ASSERT_NE(k.elem(), nullptr);
             EXPECT_EQ(c.out.current(), k.elem());
             c.out.attrInt("n", 4);
         },
         "<kept n=\"4\"/>\n", true},
    });
}

TEST(XmlOutLayout, RawContentCommentsAndIndentStrings) {
    checkScenarios({
        {"raw text before the root goes out as it is",
         [](CCapture& c) {
             c.out("<?xml-stylesheet type=\"text/xsl\" href=\"%s\"?>\n", "s.xsl");
             vq::CXmlOutElem r(c.out, "r");
         },
         "<?xml-stylesheet type=\"text/xsl\" href=\"s.xsl\"?>\n<r/>\n", true},
        {"raw text opens the body once",
         [](CCapture& c) {
             c.out.setIndent("  ");
             vq::CXmlOutElem r(c.out, "r");
             c.out("a%i", 1);
             c.out("b");
             c.out << static_cast<const char*>(nullptr) << -3 << 1e-20;
         },
         "<r>a1b-31e-20</r>\n", true},
        {"raw text after attributes and inside CDATA",
         [](CCapture& c) {
             {
                 vq::CXmlOutElem r(c.out, "r");
                 c.out.attrInt("n", 2);
                 c.out("x<y");
             }
             vq::CXmlOutElem s(c.out, "s", "begin:");
             c.out("a<b");
         },
         "<r n=\"2\">x<y</r>\n<s><![CDATA[begin:a<b]]></s>\n", false},
        {"write copies bytes unchanged",
         [](CCapture& c) {
             vq::CXmlOutElem r(c.out, "r");
             c.out.write("a%sb\0c", 6);
             c.out.write("ignored", -1);
             c.out.write(nullptr, 4);
         },
         std::string("<r>a%sb\0c</r>\n", 14), false},
        // The indentation of a's depth comes before a's '>'; a then closes unindented.
        {"comment under an open start tag",
         [](CCapture& c) {
             c.out.setIndent("  ");
             vq::CXmlOutElem r(c.out, "r");
             vq::CXmlOutElem a(c.out, "a");
             c.out.attrInt("k", 1);
             c.out.comment("note");
         },
         "<r>\n  <a k=\"1\"  ><!-- note -->\n</a>\n</r>\n", true},
        {"comments between children, text not escaped",
         [](CCapture& c) {
             c.out.setIndent("\t");
             vq::CXmlOutElem r(c.out, "r");
             { vq::CXmlOutElem a(c.out, "a"); }
             c.out.comment(nullptr);
             c.out.comment("x -- y");
         },
         "<r>\n<a/>\n<!--  -->\n<!-- x -- y -->\n</r>\n", false},
        {"indent counts: absolute, current depth, depth plus",
         [](CCapture& c) {
             c.out.indent(3); // no indent string: nothing, not even the body
             c.out.setIndent("-");
             EXPECT_STREQ(c.out.indentString(), "-");
             vq::CXmlOutElem r(c.out, "r");
             vq::CXmlOutElem a(c.out, "a");
             c.out.indent(2);
             c.out.indent(0);
             c.out.indent(-2);
         },
         "<r>\n-<a>------</a>\n</r>\n", true},
        // "%%" prints one '%'; an incomplete conversion stays; the string is read each time.
        {"without an indent string, indenting writes nothing, not even the body",
         [](CCapture& c) {
             vq::CXmlOutElem e(c.out, "e");
             c.out.indent(2);
         },
         "<e/>\n", true},
        {"the indent string is a format, read anew each time",
         [](CCapture& c) {
             static char unit[8];
             std::strcpy(unit, "%%.");
             c.out.setIndent(unit);
             vq::CXmlOutElem r(c.out, "r");
             {
                 vq::CXmlOutElem a(c.out, "a");
                 c.out.attrInt("k", 1);
             }
             std::strcpy(unit, "%x");
             {
                 vq::CXmlOutElem b(c.out, "b");
                 c.out.attrInt("k", 2);
             }
             std::strcpy(unit, "");
             c.out.indent(std::numeric_limits<int>::min());
             c.out.indent(std::numeric_limits<int>::max());
         },
         "<r>\n%.<a k=\"1\"/>\n%x<b k=\"2\"/>\n</r>\n", true},
    });
}

TEST(XmlOutLayout, ScopesOutOfOrderAndOnAClosedWriter) {
    {
        CCapture c;
        vq::CXmlOutElem root(c.out, "r", "");
        vq::CXmlOutElem in(c.out, "in");
        EXPECT_EQ(root.depth(), 0);
        EXPECT_EQ(in.depth(), -1);
        EXPECT_EQ(in.parent(), &root);
        EXPECT_EQ(c.out.current(), &in);
    }
    {
        // a is not current: its end tag takes b's depth and its parent becomes current.
        CCapture c;
        c.out.setIndent("-");
        vq::CXmlOutElem root(c.out, "r");
        auto* a = new vq::CXmlOutElem(c.out, "a");
        auto* b = new vq::CXmlOutElem(c.out, "b");
        c.out.text("t", "1");
        delete a;
        EXPECT_EQ(c.out.current(), &root);
        EXPECT_EQ(c.bytes(), "<r>\n-<a>\n--<b>\n---<t>1</t>\n--</a>\n");
        c.out.close();
        delete b;
    }
    vq::CXmlOut closed;
    EXPECT_FALSE(closed.isOpen());
    {
        vq::CXmlOutElem e(closed, "e");
        EXPECT_EQ(closed.current(), nullptr);
        closed.attrInt("a", 1);
        closed.text("t", "x");
        closed("raw");
        closed.comment("c");
        closed.write("abc", 3);
    }
    EXPECT_EQ(closed.current(), nullptr);
}

TEST(XmlOutLayout, NamesLongerThanAnyBufferKeepTheirPlace) {
    std::string name(40000, 'n'), cdata(30000, 'c');
    name[0] = 'N';
    CCapture c;
    c.out.setIndent("  ");
    {
        vq::CXmlOutElem r(c.out, "r");
        {
            vq::CXmlOutElem big(c.out, name.c_str());
            c.out.attrInt(name.c_str(), 1);
            c.out.attr(name.c_str(), nullptr);
        }
        { vq::CXmlOutElem lone(c.out, name.c_str()); }
        vq::CXmlOutElem s(c.out, "s", cdata.c_str());
        c.out << "x";
    }
    EXPECT_EQ(c.bytes(), "<r>\n  <" + name + " " + name + "=\"1\" " + name + "/>\n<" + name + "/>\n  <s><![CDATA[" +
                             cdata + "x]]></s>\n</r>\n");
}

class XmlOutInsert : public ::testing::Test {
protected:
    std::string put(const char* name, const std::string& bytes) {
        xml_test::writeFile(m_dir + "/" + name, bytes);
        return m_dir + "/" + name;
    }
    std::string m_dir = xml_test::tempDir("insert");
};

TEST_F(XmlOutInsert, SkipsPrologJoinsCrLfAndKeepsPercentSigns) {
    std::string path = put("part.xml", "<?xml version=\"1.0\"?>\r\n<!-- c -->\r\n<!DOCTYPE p>\r\n"
                                       "<p a=\"1\">\r\n  <q/>\r\n</p>\r\n\r");
    CCapture c;
    c.out.setIndent("  ");
    {
        vq::CXmlOutElem r(c.out, "r");
        EXPECT_TRUE(c.out.insertXml(path.c_str()));
    }
    EXPECT_EQ(c.bytes(), "<r><p a=\"1\">\n  <q/>\n</p>\n\r</r>\n");
    EXPECT_TRUE(parseXml(c.bytes()));

    put("pct\xC3\xA9.xml", "<p>50% of 100%% %s</p>");
    std::wstring wpath(m_dir.begin(), m_dir.end());
    CCapture w;
    EXPECT_TRUE(w.out.insertXml((wpath + L"/pct\u00e9.xml").c_str()));
    EXPECT_EQ(w.bytes(), "<p>50% of 100% %s</p>");
}

TEST_F(XmlOutInsert, FilesWithoutAnElementAreRefused) {
    CCapture c;
    vq::CXmlOutElem r(c.out, "r");
    EXPECT_FALSE(c.out.insertXml(put("empty.xml", "").c_str()));
    EXPECT_FALSE(c.out.insertXml(put("prolog.xml", "<?xml version=\"1.0\"?><!-- only -->").c_str()));
    EXPECT_FALSE(c.out.insertXml(put("trailing.xml", "text <").c_str()));
    EXPECT_FALSE(c.out.insertXml((m_dir + "/missing.xml").c_str()));
    EXPECT_FALSE(c.out.insertXml(static_cast<const char*>(nullptr)));
    EXPECT_FALSE(c.out.insertXml(static_cast<const wchar_t*>(nullptr)));
    EXPECT_EQ(c.bytes(), ""); // r stays untouched
    EXPECT_TRUE(c.out.insertXml(put("junk.xml", "\x01\x02<!x<?y<z/>").c_str()));
    EXPECT_EQ(c.bytes(), "<r><z/>");
}

// The bytes one attribute call writes on a fresh element "e".
template <class F> std::string oneAttr(F write) {
    CCapture c;
    {
        vq::CXmlOutElem e(c.out, "e");
        write(c.out);
    }
    return c.bytes();
}

std::string printfG15(double v) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.15g", v);
    return buf;
}

TEST(XmlOutAttr, EveryFormByteForByte) {
    struct Form {
        void (*write)(vq::CXmlOut&);
        std::string value; // between the quotes, or the whole tag when it has no '"'
    };
    const std::vector<Form> forms = {
        {[](vq::CXmlOut& o) { o.attrBool("v", true); }, "1"},
        {[](vq::CXmlOut& o) { o.attrInt("v", std::numeric_limits<int>::min()); }, "-2147483648"},
        {[](vq::CXmlOut& o) { o.attrI1("v", 0); }, "0"},
        {[](vq::CXmlOut& o) { o.attrUint("v", 4294967295u); }, "4294967295"},
        {[](vq::CXmlOut& o) { o.attrID1("v", 18446744073709551615ull); }, "18446744073709551615"},
        {[](vq::CXmlOut& o) { o.attrI2("v", -1, 2); }, "-1 2"},
        {[](vq::CXmlOut& o) { o.attrB2("v", true, false); }, "1 0"},
        {[](vq::CXmlOut& o) { o.attrI3("v", 7, -8, 2147483647); }, "7 -8 2147483647"},
        // Tiny doubles flush to 0 only in groups.
        {[](vq::CXmlOut& o) { o.attrD3("v", 1e-17, 2, -0.5); }, "0 2 -0.5"},
        {[](vq::CXmlOut& o) { o.attrD1("v", 1e-17); }, printfG15(1e-17)},
        {[](vq::CXmlOut& o) { o.attrDec("v", 0.1 + 0.2); }, "0.3"},
        {[](vq::CXmlOut& o) { o.attrD2("v", -DBL_EPSILON / 2, DBL_EPSILON); }, "0 " + printfG15(DBL_EPSILON)},
        {[](vq::CXmlOut& o) { o.attrD4("v", 1, -0.0, 1e300, 0.25); }, "1 0 1e+300 0.25"},
        {[](vq::CXmlOut& o) { const double p[2] = {3.5, 1e-20}; o.attrT("v", p); }, "3.5 0"},
        {[](vq::CXmlOut& o) { const double p[3] = {1.0 / 3, 2e-16, 100}; o.attrT("v", p); },
         "0.333333333333333 0 100"},
        // Trimmed fixed triples: 13 digits before the point plus 16 make 29: fits; one more not.
        {[](vq::CXmlOut& o) { o.attrDec3("v", 1.5, 2, 0); }, "1.5 2 0"},
        {[](vq::CXmlOut& o) { o.attrDec3("v", 0.1 + 0.2, -1e-17, 100); }, "0.3 0 100"},
        {[](vq::CXmlOut& o) { o.attrDec3("v", 1e12, 1e13, -1e12); }, "1000000000000 #INF #INF"},
        {[](vq::CXmlOut& o) { o.attrDec3("v", -3e-15, 1e-15, HUGE_VAL); }, "-0.000000000000003 0.000000000000001 inf"},
        {[](vq::CXmlOut& o) { o.attrStr("v", static_cast<const char*>(nullptr)); }, ""},
        {[](vq::CXmlOut& o) { o.attrStr("v", vq::CStr("a<b")); }, "a&lt;b"},
        {[](vq::CXmlOut& o) { o.attrStr("v", static_cast<const wchar_t*>(nullptr)); }, ""},
        {[](vq::CXmlOut& o) { o.attrStr("v", L"w&\"x\""); }, "w&amp;&quot;x&quot;"},
        {[](vq::CXmlOut& o) { o.attrStr("v", vq::CWStr(L"wide")); }, "wide"},
        {[](vq::CXmlOut& o) { o.attr("v", "%s-%03i-%.2f", "x", 7, 0.125); }, "x-007-0.12"},
        // Markup and quotes escaped, control bytes dropped, high bytes kept.
        {[](vq::CXmlOut& o) { o.attrStr("v", "<a & \"b\"\t'c'\x01>\n\r"); }, "&lt;a &amp; &quot;b&quot;\t'c'&gt;\n\r"},
        {[](vq::CXmlOut& o) { o.attr("v", "%s%c", "\xC3\xA9\x7F", 0x1F); }, "\xC3\xA9\x7F"},
    };
    for (size_t i = 0; i < forms.size(); ++i) {
        SCOPED_TRACE(i);
        std::string got = oneAttr(forms[i].write);
        EXPECT_EQ(got, "<e v=\"" + forms[i].value + "\"/>\n");
        EXPECT_TRUE(parseXml(got)) << got;
    }
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attr("checked", nullptr); }), "<e checked/>\n");
    // libxml2 reads an escaped value back, normalising literal tabs and line breaks.
    auto doc = parseXml(oneAttr(forms[forms.size() - 2].write));
    ASSERT_TRUE(doc);
    EXPECT_EQ(doc->str("/*/@v"), "<a & \"b\" 'c'>  ");
}

TEST(XmlOutAttr, SmallFirstLetterNamesAndLongValues) {
    CCapture c;
    c.out.setSmallFirstLetterAttrName(true);
    EXPECT_TRUE(c.out.isSmallFirstLetterAttrName());
    {
        vq::CXmlOutElem e(c.out, "e");
        c.out.attrInt("Name", 1);
        c.out.attrInt("X", 2);
        c.out.attrStr("aB", "s");
        c.out.attr("Bare", nullptr);
    }
    EXPECT_EQ(c.bytes(), "<e name=\"1\" x=\"2\" aB=\"s\" Bare/>\n");
    for (size_t len : {1022u, 1023u, 1024u, 5000u}) {
        std::string v(len, 'x');
        v[len / 2] = '&';
        std::string expected = "<e v=\"" + v + "\"/>\n";
        expected.replace(6 + len / 2, 1, "&amp;");
        EXPECT_EQ(oneAttr([&](vq::CXmlOut& o) { o.attr("v", "%s", v.c_str()); }), expected) << len;
        EXPECT_EQ(oneAttr([&](vq::CXmlOut& o) { o.attrStr("v", v.c_str()); }), expected) << len;
    }
}

TEST(XmlOutAttr, TypedNumbersMatchPrintf) {
    std::mt19937_64 rng(12345);
    std::uniform_real_distribution<double> mant(-10, 10);
    std::uniform_int_distribution<int> exps(-320, 308);
    std::vector<double> values = {0.0,  -0.0,    1.0,     -1.0,     0.1,      1e15,      1e16,         123456789012345.6,
                                  1e-5, 1e-4,    DBL_MAX, DBL_MIN,  4.9e-324, HUGE_VAL,  -HUGE_VAL,    std::nan(""),
                                  -std::nan("")};
    for (int i = 0; i < 2000; ++i)
        values.push_back(mant(rng) * std::pow(10.0, exps(rng)));
    for (double v : values) {
        // MinGW's printf drops a NaN's sign; the writer spells it as glibc does everywhere.
        const std::string expected = VQK_TARGET_WINDOWS && std::isnan(v) ? (std::signbit(v) ? "-nan" : "nan") : printfG15(v);
        EXPECT_EQ(oneAttr([&](vq::CXmlOut& o) { o.attrD1("v", v); }), "<e v=\"" + expected + "\"/>\n") << v;
    }
}

TEST(XmlOutAttr, WideTextFollowsTheLocale) {
    std::string saved = std::setlocale(LC_CTYPE, nullptr);
    if (!std::setlocale(LC_CTYPE, "C.UTF-8"))
        GTEST_SKIP() << "no C.UTF-8 locale";
    std::string utf8 = oneAttr([](vq::CXmlOut& o) { o.attrStr("s", L"\u00e9<"); });
    std::setlocale(LC_CTYPE, "C");
    std::string plain = oneAttr([](vq::CXmlOut& o) { o.attrStr("s", L"\u00e9<"); });
    std::setlocale(LC_CTYPE, saved.c_str());
    EXPECT_EQ(utf8, "<e s=\"\xC3\xA9&lt;\"/>\n");
    EXPECT_EQ(plain, "<e s=\"\"/>\n"); // not convertible: empty rather than half-written
}

// Builds a locale whose decimal point is a comma and makes it the numeric locale.
bool useCommaDecimalPoint() {
    if (VQK_TARGET_WINDOWS)
        return std::setlocale(LC_NUMERIC, "German_Germany.1252") && printfG15(0.5) == "0,5";
    std::string dir = xml_test::tempDir("locale");
    xml_test::writeFile(dir + "/comma", "LC_NUMERIC\ndecimal_point \"<U002C>\"\nthousands_sep \"\"\n"
                                        "grouping -1\nEND LC_NUMERIC\n");
    std::string cmd = "localedef -c -i '" + dir + "/comma' -f UTF-8 '" + dir + "/comma.UTF-8' >/dev/null 2>&1";
    if (std::system(cmd.c_str()) == -1)
        return false;
    vq::platform::setEnv("LOCPATH", dir.c_str());
    bool ok = std::setlocale(LC_NUMERIC, "comma.UTF-8") != nullptr;
    vq::platform::setEnv("LOCPATH", nullptr);
    return ok && printfG15(0.5) == "0,5";
}

TEST(XmlOutAttr, DoublesFollowTheDecimalPointOfTheLocale) {
    if (!useCommaDecimalPoint()) {
        std::setlocale(LC_NUMERIC, "C");
        GTEST_SKIP() << "no way to build a locale with a decimal comma";
    }
    std::string d1 = oneAttr([](vq::CXmlOut& o) { o.attrD1("v", -1234.5); });
    std::string d3 = oneAttr([](vq::CXmlOut& o) { o.attrD3("v", 1e-17, 2.25, 1e300); });
    std::string dec3 = oneAttr([](vq::CXmlOut& o) { o.attrDec3("v", 1.5, 2, -0.125); });
    std::setlocale(LC_NUMERIC, "C");
    EXPECT_EQ(d1, "<e v=\"-1234,5\"/>\n");
    EXPECT_EQ(d3, "<e v=\"0 2,25 1e+300\"/>\n");
    EXPECT_EQ(dec3, "<e v=\"1,5 2 -0,125\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrD1("v", -1234.5); }), "<e v=\"-1234.5\"/>\n");
}

TEST(XmlOutAttr, WritersOnSeveralThreadsKeepTheirValues) {
    constexpr int kThreads = 4, kElems = 2000;
    std::vector<std::string> got(kThreads);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([t, &got] {
            CCapture c;
            {
                vq::CXmlOutElem r(c.out, "r");
                for (int i = 0; i < kElems; ++i) {
                    vq::CXmlOutElem e(c.out, "e");
                    c.out.attr("g", "%d-%s", t, "x&y");
                    c.out.attrD1("d", i + 0.5);
                    c.out.attrStr("s", "<t>");
                }
            }
            got[size_t(t)] = c.bytes();
        });
    for (auto& th : threads)
        th.join();
    for (int t = 0; t < kThreads; ++t) {
        std::string expected = "<r>\n";
        for (int i = 0; i < kElems; ++i)
            expected += "<e g=\"" + std::to_string(t) + "-x&amp;y\" d=\"" + std::to_string(i) + ".5\" s=\"&lt;t&gt;\"/>\n";
        EXPECT_EQ(got[size_t(t)], expected + "</r>\n") << t;
    }
}

TEST(XmlOutEscape, EscapeAndUnescape) {
    vq::CStr out("old");
    vq::escapeXmlStr(out, "a\"b&c'd<e>f\tg\nh\ri\x01j\x1Fk\xC3\xA9");
    EXPECT_STREQ(out.str(), "a&quot;b&amp;c&apos;d&lt;e&gt;f\tg\nh\rijk\xC3\xA9");
    vq::escapeXmlStr(out, nullptr);
    EXPECT_STREQ(out.str(), "");
    vq::escapeXmlStr(out, "\x02\x03");
    EXPECT_TRUE(out.empty());
    // Only the five named entities are known.
    vq::unescapeXmlStr(out, "&amp;lt; &quot;&apos;&gt;&lt; &#65; & &AMP; &am");
    EXPECT_STREQ(out.str(), "&lt; \"'>< &#65; & &AMP; &am");
    vq::unescapeXmlStr(out, nullptr);
    EXPECT_STREQ(out.str(), "");
    vq::unescapeXmlStr(out, "&");
    EXPECT_STREQ(out.str(), "&");
    // Round trip, and libxml2 reads the escaped text as element content back unchanged.
    for (const char* t : {"", "x", "<<&&>>", "'\"'", "a&amp;b", "tab\tend", "\xE2\x82\xAC 5 < 6"}) {
        vq::CStr esc, back;
        vq::escapeXmlStr(esc, t);
        vq::unescapeXmlStr(back, esc.str());
        EXPECT_STREQ(back.str(), t);
        auto parsed = parseXml(std::string("<t>") + esc.str() + "</t>");
        ASSERT_TRUE(parsed) << t;
        EXPECT_EQ(parsed->str("/*"), t);
    }
}

} // namespace
