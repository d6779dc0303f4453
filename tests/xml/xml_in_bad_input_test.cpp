// The reader on malformed input: every broken document ends in one of the reader's
// messages as an exception, never in a crash, a hang or a leak, and the reader stays
// usable afterwards.
#include "vqk/xml/xml_in.h"

#include "xml_test_support.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

using vq::CStr;
using vq::CXmlElemIn;
using vq::CXmlIn;
using xml_test::ScratchXml;
using xml_test::thrownText;

namespace {

const char* const kEof = "XML error: unexpected end of file";
const char* const kTag = "XML error: invalid tag";
const char* const kAttrs = "XML error: invalid tag attributes";
const char* const kTagEnd = "XML error: invalid tag end";
const char* const kUnexpected = "Unexpected tag";

bool isReaderMessage(const std::string& m) {
    static const std::set<std::string> all = {kEof, kTag, kAttrs, kTagEnd, kUnexpected,
                                              "Missed required attribute", "File is not open"};
    return all.count(m) != 0;
}

// Reads tag by tag, checking that every end tag closes the element that is open.
void strictWalk(CXmlIn& in) {
    in.readHeader();
    std::vector<std::string> open;
    do {
        in.read();
        if (in.isTagStart())
            open.push_back(in.tagStr());
        else if (in.isTagEnd()) {
            if (open.empty() || !in.isTag(open.back().c_str()))
                throw kUnexpected;
            open.pop_back();
        }
    } while (!open.empty());
}

// Reads elements through scopes, as format readers do: text, attributes, and every
// third child skipped whole.
void scopeChildren(CXmlIn& in, CXmlElemIn& parent, int depth) {
    CStr name, text;
    for (int k = 0;; ++k) {
        in.getText(text, true);
        in.getNextTag(name);
        if (in.isTagEnd())
            return;
        if (k % 3 == 2 && in.skipElem(name.str()))
            continue;
        CXmlElemIn e(&parent, &in, name.str());
        in.attrInt("id", 0);
        in.attrDec("x", 0);
        double d3[3];
        in.attrD3("p", d3, nullptr);
        if (e.state() == eXmlTagStart && depth < 64)
            scopeChildren(in, e, depth + 1);
    }
}

// Without readHeader: a leading document type or comment, which readHeader would hand
// back as a tag, is passed over by the first read.
void scopeWalk(CXmlIn& in) {
    CXmlElemIn root(in, nullptr);
    if (root.state() == eXmlTagStart)
        scopeChildren(in, root, 0);
}

// Searches through the whole file.
void searchWalk(CXmlIn& in) {
    while (vq::findElem(in, nullptr, "id", nullptr, "skipme")) {
    }
}

// Runs the three walks over `doc`; each result is "" or the message thrown.
std::vector<std::string> walkResults(const std::string& doc) {
    ScratchXml f(doc);
    std::vector<std::string> r;
    for (void (*walk)(CXmlIn&) : {strictWalk, scopeWalk, searchWalk}) {
        CXmlIn in(f.c_str());
        r.push_back(thrownText([&] { walk(in); }));
    }
    return r;
}

// A well-formed document with the constructs that matter: declaration, comments,
// nesting, attributes longer than the tag buffer's first size, text and empty elements.
std::string sampleDocument() {
    std::string longValue(1500, 'v');
    std::string d = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- sample -->\n<root id=\"1\">\n";
    d += "  <item id=\"2\" x=\"1.5\" p=\"1 2 3\" note=\"" + longValue + "\"/>\n";
    d += "  <group id=\"3\"><item id=\"4\">text &amp; more</item><skipme><item id=\"5\"/></skipme>";
    d += "<group><item/></group></group>\n";
    d += "  <?pi data?><empty></empty>\n</root>\n";
    return d;
}

} // namespace

// Where the reader says the last error lies: "offset line:column".
std::string placeOfError(CXmlIn& in) {
    vq::SXmlPos at;
    if (!in.errorPos(at))
        return "none";
    return std::to_string(at.offset) + " " + std::to_string(at.line) + ":" + std::to_string(at.column);
}

TEST(XmlInBadInput, EachMalformedShapeGivesItsMessageAndPlace) {
    struct Case {
        const char* doc;
        const char* message;
        const char* at = nullptr; // null: not checked (the walk itself throws "Unexpected tag")
    };
    const Case cases[] = {
        {"", kEof, "0 1:1"},
        {"   \n\t", kEof, "5 2:2"},
        {"only text, no root", kEof, "18 1:19"},
        {"<?xml version=\"1.0\"?>\n<!-- no root -->\n", kEof, "39 3:1"},
        {"<a", kTag, "0 1:1"},
        {"<a>\n <b c='1'", kTag, "5 2:2"},
        {"<a>", kEof, "3 1:4"},
        {"<a><b>text", kEof, "10 1:11"},
        {"<a b>", kAttrs, "4 1:5"},
        {"<a\n  b=\n>", kAttrs, "8 3:1"},
        {"<a b=1>", kAttrs, "5 1:6"},
        {"<a b='1>", kAttrs, "7 1:8"},
        {"<a b=\"1'>", kAttrs, "8 1:9"},
        // The reader reads in text mode: CR LF reaches it as one LF on Windows.
        {"<a>\r\n<a b='1' / x>", kAttrs, VQK_TARGET_WINDOWS ? "14 2:11" : "15 2:11"},
        {"<a b.c='1'/>", kAttrs, "4 1:5"},
        {"<a b c='1'>", kAttrs},
        {"<a b-c='1'>", kAttrs},
        {"<a b =>", kAttrs},
        {"<a \"v\">", kAttrs},
        {"<a b='1' c>", kAttrs},
        {"<a/ >", kAttrs},
        {"<a b='1'/x>", kAttrs},
        {"</a >", kTag},
        {"</a b='1'>", kTag},
        {"</a/>", kTag},
        {"<a></a x>", kTag, "6 1:7"},
        {"<a></b>", kUnexpected, nullptr},
        {"<a><b></a></b>", kUnexpected, nullptr},
    };
    for (const Case& c : cases) {
        ScratchXml f(c.doc);
        CXmlIn in(f.c_str());
        EXPECT_EQ(thrownText([&] { strictWalk(in); }), c.message) << c.doc;
        if (c.at) {
            EXPECT_EQ(placeOfError(in), c.at) << c.doc;
        }
    }
}

TEST(XmlInBadInput, EndTagsAndExpectedNamesAreChecked) {
    ScratchXml f("<a><b/></a>\n<c/>");
    CXmlIn in(f.c_str());
    EXPECT_EQ(placeOfError(in), "none");
    EXPECT_EQ(thrownText([&] { in.read("root"); }), kUnexpected);
    EXPECT_EQ(placeOfError(in), "0 1:1");
    EXPECT_EQ(thrownText([&] { in.readEnd("a"); }), kTagEnd); // <b/> is no end tag
    EXPECT_EQ(placeOfError(in), "3 1:4");
    EXPECT_EQ(thrownText([&] { in.readEnd("x"); }), kTagEnd); // </a> ends another element
    EXPECT_EQ(placeOfError(in), "7 1:8");
    int n = 0;
    EXPECT_EQ(thrownText([&] { in.attr("n", "%d", &n, true); }), "Missed required attribute");
    EXPECT_EQ(placeOfError(in), "7 1:8");
    in.read("c"); // asking for the place left the stream where it was
    EXPECT_EQ(thrownText([&] { in.readEnd("c"); }), ""); // an empty element ends itself
    EXPECT_EQ(thrownText([&] { in.skip(); }), "");        // and has nothing to skip
    EXPECT_EQ(thrownText([&] { in.readEnd(nullptr); }), kEof);
    EXPECT_EQ(placeOfError(in), "16 2:5");
    // A stream that cannot go back to its start cannot tell.
    FILE* pipe = xml_test::pipeHolding("<a b>");
    ASSERT_NE(pipe, nullptr);
    ApXin x(pipe);
    EXPECT_STREQ(x._readBeg(), kAttrs);
    vq::SXmlPos at;
    EXPECT_FALSE(x.errorPos(at));
    std::fclose(pipe);
}

TEST(XmlInBadInput, EveryTruncationEndsInAMessage) {
    std::string d = sampleDocument();
    ASSERT_EQ(walkResults(d), std::vector<std::string>(3, ""));
    std::string rootEnd = "</root>";
    size_t complete = d.find(rootEnd) + rootEnd.size();
    for (size_t n = 0; n < d.size(); ++n) {
        std::vector<std::string> r = walkResults(d.substr(0, n));
        if (n >= complete) {
            EXPECT_EQ(r, std::vector<std::string>(3, "")) << "cut at " << n;
            continue;
        }
        // A search may simply find nothing more; the walks that read every tag must fail.
        EXPECT_TRUE(isReaderMessage(r[0])) << "cut at " << n << ": {" << r[0] << "}";
        EXPECT_TRUE(isReaderMessage(r[1])) << "cut at " << n << ": {" << r[1] << "}";
        EXPECT_TRUE(r[2].empty() || isReaderMessage(r[2])) << "cut at " << n << ": {" << r[2] << "}";
    }
}

TEST(XmlInBadInput, RandomDamageNeverEscapesTheMessages) {
    std::string d = sampleDocument();
    std::mt19937 rng(7);
    static const char bytes[] = "<>/=\"' \n!?&;abx-";
    int errors = 0;
    for (int k = 0; k < 400; ++k) {
        std::string m = d;
        int edits = 1 + int(rng() % 4);
        for (int e = 0; e < edits; ++e) {
            size_t at = rng() % m.size();
            switch (rng() % 3) {
            case 0:
                m[at] = bytes[rng() % (sizeof bytes - 1)];
                break;
            case 1:
                m.insert(at, 1, bytes[rng() % (sizeof bytes - 1)]);
                break;
            default:
                m.erase(at, 1 + rng() % 8);
            }
        }
        for (const std::string& r : walkResults(m)) {
            EXPECT_TRUE(r.empty() || isReaderMessage(r)) << "{" << r << "} for\n" << m;
            errors += !r.empty();
        }
    }
    EXPECT_GT(errors, 0); // the damage did reach the reader
}

TEST(XmlInBadInput, EveryConformanceSuiteDocumentEndsCleanly) {
    std::string dir = std::string(VQK_SOURCE_DIR) + "/../shared/corpus/xmlconf";
    std::ifstream list(dir + "/tests.tsv");
    if (!list)
        GTEST_SKIP() << "no conformance suite under " << dir;
    std::string line;
    int files = 0;
    while (std::getline(list, line)) {
        std::vector<std::string> cols;
        std::stringstream row(line);
        for (std::string c; std::getline(row, c, '\t');)
            cols.push_back(c);
        // Every kind of test document, not only the malformed ones: the tokenizer is
        // lenient, so what matters is that it never fails in another way.
        if (cols.size() < 8 || cols[0] == "id")
            continue;
        std::string path = dir + "/" + cols[7];
        if (!std::filesystem::is_regular_file(path))
            continue;
        ++files;
        for (void (*walk)(CXmlIn&) : {strictWalk, scopeWalk, searchWalk}) {
            CXmlIn in(path.c_str());
            std::string r = thrownText([&] { walk(in); });
            EXPECT_TRUE(r.empty() || isReaderMessage(r)) << path << ": {" << r << "}";
        }
    }
    EXPECT_GT(files, 2000);
}

TEST(XmlInBadInput, TheReaderIsReusableAfterAnError) {
    ScratchXml bad("<a b=>"), good("<ok v='1'/>");
    CXmlIn in(bad.c_str());
    EXPECT_EQ(thrownText([&] { in.read(); }), kAttrs);
    ASSERT_TRUE(in.open(good.c_str()));
    in.read("ok");
    EXPECT_EQ(in.attrInt("v", 0), 1);
}
