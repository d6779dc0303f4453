// Attribute forms: exact bytes of every typed form, escaping of values, the typed
// number formatting against printf, long values and names.
#include "xml_out_capture.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

using xml_out_test::CCapture;
using xml_out_test::parseXml;
using xml_out_test::propOf;

// The bytes one attribute call writes on a fresh element "e"; libxml2 must accept
// them unless the call writes a bare name.
template <class F> std::string oneAttr(F write, bool wellFormed = true) {
    CCapture c;
    {
        vq::CXmlOutElem e(c.out, "e");
        write(c.out);
    }
    std::string s = c.bytes();
    EXPECT_EQ(bool(parseXml(s)), wellFormed) << s;
    return s;
}

std::string printfG15(double v) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.15g", v);
    return buf;
}

TEST(XmlOutAttrForms, IntegersAndBools) {
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrBool("b", true); }), "<e b=\"1\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrBool("b", false); }), "<e b=\"0\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrInt("i", std::numeric_limits<int>::min()); }),
              "<e i=\"-2147483648\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrI1("i", 0); }), "<e i=\"0\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrUint("u", 4294967295u); }), "<e u=\"4294967295\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrID1("id", 18446744073709551615ull); }),
              "<e id=\"18446744073709551615\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrI2("p", -1, 2); }), "<e p=\"-1 2\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrB2("p", true, false); }), "<e p=\"1 0\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrI3("p", 7, -8, 2147483647); }),
              "<e p=\"7 -8 2147483647\"/>\n");
}

TEST(XmlOutAttrForms, DoublesFlushOnlyInGroups) {
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrD3("v", 1e-17, 2, -0.5); }), "<e v=\"0 2 -0.5\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrD1("v", 1e-17); }), "<e v=\"" + printfG15(1e-17) + "\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrDec("v", 0.1 + 0.2); }), "<e v=\"0.3\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrD2("v", -DBL_EPSILON / 2, DBL_EPSILON); }),
              "<e v=\"0 " + printfG15(DBL_EPSILON) + "\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrD4("v", 1, -0.0, 1e300, 0.25); }), "<e v=\"1 0 1e+300 0.25\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) {
                  const double p[2] = {3.5, 1e-20};
                  o.attrT("v", p);
              }),
              "<e v=\"3.5 0\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) {
                  const double p[3] = {1.0 / 3, 2e-16, 100};
                  o.attrT("v", p);
              }),
              "<e v=\"0.333333333333333 0 100\"/>\n");
}

TEST(XmlOutAttrForms, TrimmedFixedTriples) {
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrDec3("v", 1.5, 2, 0); }), "<e v=\"1.5 2 0\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrDec3("v", 0.1 + 0.2, -1e-17, 100); }), "<e v=\"0.3 0 100\"/>\n");
    // 13 digits before the point plus 16 make 29 characters: fits; one more does not.
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrDec3("v", 1e12, 1e13, -1e12); }),
              "<e v=\"1000000000000 #INF #INF\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrDec3("v", -3e-15, 1e-15, HUGE_VAL); }),
              "<e v=\"-0.000000000000003 0.000000000000001 inf\"/>\n");
}

TEST(XmlOutAttrForms, StringsNullAndEmpty) {
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrStr("s", static_cast<const char*>(nullptr)); }), "<e s=\"\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrStr("s", vq::CStr()); }), "<e s=\"\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrStr("s", vq::CStr("a<b")); }), "<e s=\"a&lt;b\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrStr("s", static_cast<const wchar_t*>(nullptr)); }),
              "<e s=\"\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrStr("s", L"w&\"x\""); }), "<e s=\"w&amp;&quot;x&quot;\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrStr("s", vq::CWStr(L"wide")); }), "<e s=\"wide\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrStr("s", vq::CWStr()); }), "<e s=\"\"/>\n");
}

TEST(XmlOutAttrForms, GeneralFormAndBareName) {
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attr("f", "%s-%03i-%.2f", "x", 7, 0.125); }),
              "<e f=\"x-007-0.12\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attr("checked", nullptr); }, false), "<e checked/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attr("empty", "%s", ""); }), "<e empty=\"\"/>\n");
}

TEST(XmlOutAttrEscaping, MarkupQuotesAndControlBytes) {
    std::string got = oneAttr([](vq::CXmlOut& o) { o.attrStr("v", "<a & \"b\"\t'c'\x01>\n\r"); });
    EXPECT_EQ(got, "<e v=\"&lt;a &amp; &quot;b&quot;\t'c'&gt;\n\r\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attr("v", "%s%c", "\xC3\xA9\x7F", 0x1F); }),
              "<e v=\"\xC3\xA9\x7F\"/>\n");
    // libxml2 reads the value back as written minus the dropped byte; it normalises the
    // literal tab and line breaks to blanks as any conforming parser does.
    auto doc = parseXml(got);
    ASSERT_TRUE(doc);
    EXPECT_EQ(propOf(xmlDocGetRootElement(doc.get()), "v"), "<a & \"b\" 'c'>  ");
}

TEST(XmlOutAttrEscaping, SmallFirstLetterNames) {
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
}

TEST(XmlOutAttrEscaping, LongValuesTakeTheSlowPathIntact) {
    for (size_t len : {1022u, 1023u, 1024u, 5000u}) {
        std::string v(len, 'x');
        v[len / 2] = '&';
        std::string expected = v;
        expected.replace(len / 2, 1, "&amp;");
        EXPECT_EQ(oneAttr([&](vq::CXmlOut& o) { o.attr("v", "%s", v.c_str()); }), "<e v=\"" + expected + "\"/>\n")
            << len;
        EXPECT_EQ(oneAttr([&](vq::CXmlOut& o) { o.attrStr("v", v.c_str()); }), "<e v=\"" + expected + "\"/>\n")
            << len;
    }
}

TEST(XmlOutAttrNumbers, TypedFormsMatchPrintf) {
    std::mt19937_64 rng(12345);
    std::uniform_real_distribution<double> mant(-10, 10);
    std::uniform_int_distribution<int> exps(-320, 308);
    std::vector<double> values = {0.0,     -0.0,   1.0,     -1.0,   0.1,      1e15,  1e16,   123456789012345.6,
                                  1e-5,    1e-4,   DBL_MAX, DBL_MIN, 4.9e-324, HUGE_VAL, -HUGE_VAL,
                                  std::nan(""), -std::nan("")};
    for (int i = 0; i < 2000; ++i)
        values.push_back(mant(rng) * std::pow(10.0, exps(rng)));
    for (double v : values) {
        CCapture c;
        {
            vq::CXmlOutElem e(c.out, "e");
            c.out.attrD1("t", v);
            c.out.attr("p", "%.15g", v);
        }
        std::string s = c.bytes();
        size_t t = s.find("t=\""), p = s.find("p=\"");
        ASSERT_NE(p, std::string::npos);
        EXPECT_EQ(s.substr(t + 3, s.find('"', t + 3) - t - 3), s.substr(p + 3, s.find('"', p + 3) - p - 3)) << v;
    }
    std::uniform_int_distribution<long long> ints(std::numeric_limits<long long>::min(),
                                                  std::numeric_limits<long long>::max());
    for (int i = 0; i < 500; ++i) {
        long long x = ints(rng);
        int iv = int(x);
        unsigned uv = unsigned(x);
        vq::uint64 id = vq::uint64(x);
        char expect[128];
        std::snprintf(expect, sizeof expect, "<e i=\"%i\" u=\"%u\" d=\"%llu\"/>\n", iv, uv, id);
        EXPECT_EQ(oneAttr([&](vq::CXmlOut& o) {
                      o.attrInt("i", iv);
                      o.attrUint("u", uv);
                      o.attrID1("d", id);
                  }),
                  expect);
    }
}

TEST(XmlOutAttrForms, WideTextFollowsTheLocale) {
    std::string saved = std::setlocale(LC_CTYPE, nullptr);
    if (!std::setlocale(LC_CTYPE, "C.UTF-8"))
        GTEST_SKIP() << "no C.UTF-8 locale";
    std::string utf8 = oneAttr([](vq::CXmlOut& o) { o.attrStr("s", L"\u00e9<"); });
    std::setlocale(LC_CTYPE, "C");
    std::string plain = oneAttr([](vq::CXmlOut& o) { o.attrStr("s", L"\u00e9<"); });
    std::setlocale(LC_CTYPE, saved.c_str());
    EXPECT_EQ(utf8, "<e s=\"\xC3\xA9&lt;\"/>\n");
    // The C locale cannot convert it: the value stays empty rather than half-written.
    EXPECT_EQ(plain, "<e s=\"\"/>\n");
}

// Builds a locale whose decimal point is a comma under the test folder and makes it
// the numeric locale; false when the system cannot.
bool useCommaDecimalPoint() {
    std::string dir = xml_out_test::tempDir("locale");
    xml_out_test::writeFile(dir + "/comma", "LC_NUMERIC\ndecimal_point \"<U002C>\"\nthousands_sep \"\"\n"
                                            "grouping -1\nEND LC_NUMERIC\n");
    std::string cmd = "localedef -c -i '" + dir + "/comma' -f UTF-8 '" + dir + "/comma.UTF-8' >/dev/null 2>&1";
    if (std::system(cmd.c_str()) == -1)
        return false;
    setenv("LOCPATH", dir.c_str(), 1);
    bool ok = std::setlocale(LC_NUMERIC, "comma.UTF-8") != nullptr;
    unsetenv("LOCPATH");
    return ok && printfG15(0.5) == "0,5";
}

TEST(XmlOutAttrNumbers, DoublesFollowTheDecimalPointOfTheLocale) {
    if (!useCommaDecimalPoint()) {
        std::setlocale(LC_NUMERIC, "C");
        GTEST_SKIP() << "no way to build a locale with a decimal comma";
    }
    std::string d1 = oneAttr([](vq::CXmlOut& o) { o.attrD1("v", -1234.5); });
    std::string d3 = oneAttr([](vq::CXmlOut& o) { o.attrD3("v", 1e-17, 2.25, 1e300); });
    std::string d4 = oneAttr([](vq::CXmlOut& o) { o.attrD4("v", 0.5, 1, 2, 1.0 / 3); });
    std::string dec3 = oneAttr([](vq::CXmlOut& o) { o.attrDec3("v", 1.5, 2, -0.125); });
    std::string i2 = oneAttr([](vq::CXmlOut& o) { o.attrI2("v", -1, 2); });
    std::setlocale(LC_NUMERIC, "C");
    EXPECT_EQ(d1, "<e v=\"-1234,5\"/>\n");
    EXPECT_EQ(d3, "<e v=\"0 2,25 1e+300\"/>\n");
    EXPECT_EQ(d4, "<e v=\"0,5 1 2 0,333333333333333\"/>\n");
    EXPECT_EQ(dec3, "<e v=\"1,5 2 -0,125\"/>\n");
    EXPECT_EQ(i2, "<e v=\"-1 2\"/>\n");
    EXPECT_EQ(oneAttr([](vq::CXmlOut& o) { o.attrD1("v", -1234.5); }), "<e v=\"-1234.5\"/>\n");
}

TEST(XmlOutAttrNumbers, WritersOnSeveralThreadsKeepTheirValues) {
    constexpr int kThreads = 4, kElems = 2000;
    std::vector<std::string> got(kThreads);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
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
    }
    for (auto& th : threads)
        th.join();
    for (int t = 0; t < kThreads; ++t) {
        std::string expected = "<r>\n";
        for (int i = 0; i < kElems; ++i)
            expected += "<e g=\"" + std::to_string(t) + "-x&amp;y\" d=\"" + std::to_string(i) +
                        ".5\" s=\"&lt;t&gt;\"/>\n";
        expected += "</r>\n";
        EXPECT_EQ(got[size_t(t)], expected) << t;
    }
}

} // namespace
