// Documents written by the library's writer, read back element by element: names,
// attribute values after the writer's escaping and the reader's decoding, typed
// values and text.
#include "vqk/xml/xml_in.h"

#include "vqk/xml/xml_escape.h"
#include "vqk/xml/xml_out.h"
#include "xml_test_support.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <vector>

using vq::CStr;
using vq::CXmlElemIn;
using vq::CXmlIn;
using vq::CXmlOut;
using vq::CXmlOutElem;

namespace {

// One element of a generated document.
struct Node {
    std::string name;
    std::vector<std::pair<std::string, std::string>> texts; // attribute name, plain value
    int number = 0;
    double point[3] = {0, 0, 0};
    vq::uint64 id = 0;
    bool flag = false;
    std::string content; // plain text, when the element has no children
    std::vector<std::unique_ptr<Node>> kids;
};

class TreeMaker {
public:
    explicit TreeMaker(unsigned seed) : m_rng(seed) {}

    std::unique_ptr<Node> make(int depth) {
        auto n = std::make_unique<Node>();
        n->name = pickName();
        int attrs = pick(4);
        for (int k = 0; k < attrs; ++k)
            n->texts.emplace_back("s" + std::to_string(k), pickText());
        n->number = int(uint32_t(m_rng())); // the whole int range, both signs
        for (double& c : n->point)
            c = (double(m_rng()) - 2147483648.0) / double(1 + pick(1000));
        n->id = (vq::uint64(m_rng()) << 32) | m_rng();
        n->flag = pick(2) != 0;
        int kids = depth < 5 ? pick(4) : 0;
        for (int k = 0; k < kids; ++k)
            n->kids.push_back(make(depth + 1));
        if (kids == 0 && pick(2))
            n->content = pickText();
        return n;
    }

private:
    int pick(int n) { return int(m_rng() % unsigned(n)); }
    std::string pickName() {
        static const char* const names[] = {"part", "Feature", "x", "ns:item", "a_b", "set.of-things",
                                            "Z9"};
        return names[pick(7)];
    }
    std::string pickText() {
        static const char* const pieces[] = {"a", " ", "&", "<", ">", "\"", "'", "&amp;", "x y",
                                             "\xC3\xA9", "\xE2\x82\xAC", "100%", "/", "="};
        std::string s;
        int len = pick(10);
        for (int k = 0; k < len; ++k)
            s += pieces[pick(14)];
        return s;
    }
    std::mt19937 m_rng;
};

void write(CXmlOut& out, const Node& n) {
    CXmlOutElem e(out, n.name.c_str());
    for (const auto& t : n.texts)
        out.attrStr(t.first.c_str(), t.second.c_str());
    out.attrInt("n", n.number);
    out.attrD3("p", n.point[0], n.point[1], n.point[2]);
    out.attrID1("id", n.id);
    out.attrBool("f", n.flag);
    for (const auto& k : n.kids)
        write(out, *k);
    if (!n.content.empty()) {
        CStr escaped;
        vq::escapeXmlStr(escaped, n.content.c_str());
        out << escaped.str();
    }
}

// What "%.15g" keeps of a double, read back by the C library's scanf as the reader reads
// it (MinGW's strtod and scanf round a few values differently).
double printed(double v) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.15g", v);
    double back = 0;
    std::sscanf(buf, "%lf", &back);
    return back;
}

void readBack(CXmlIn& in, CXmlElemIn* parent, const Node& n) {
    CXmlElemIn e(parent, &in, n.name.c_str());
    for (const auto& t : n.texts)
        EXPECT_EQ(std::string(in.attrStr(t.first.c_str(), "(missing)")), t.second) << n.name;
    EXPECT_EQ(in.attrInt("n", 0), n.number);
    double p[3];
    ASSERT_TRUE(in.attrD3("p", p, nullptr));
    for (int k = 0; k < 3; ++k)
        EXPECT_EQ(p[k], printed(n.point[k]));
    EXPECT_EQ(in.attrID1("id", 0), n.id);
    EXPECT_EQ(in.attrBool("f", !n.flag), n.flag);
    for (const auto& k : n.kids)
        readBack(in, &e, *k);
    if (!n.content.empty()) {
        CStr raw, plain;
        in.getText(raw, false);
        vq::unescapeXmlStr(plain, raw.str());
        EXPECT_EQ(std::string(plain.str()), n.content);
    }
    if (e.state() == eXmlTagStart) {
        EXPECT_TRUE(in.isNextTag(n.name.c_str())); // the end tag, nothing between
        EXPECT_TRUE(in.isTagEnd());
    }
}

} // namespace

TEST(XmlInRoundTrip, GeneratedTreesReadBackElementByElement) {
    std::string path = xml_test::scratchFolder() + "/xml_in_roundtrip_" + std::to_string(vq::platform::processId()) + ".xml";
    TreeMaker maker(5);
    for (int doc = 0; doc < 40; ++doc) {
        std::unique_ptr<Node> root = maker.make(0);
        {
            CXmlOut out;
            ASSERT_TRUE(out.open(path.c_str(), false, false));
            if (doc % 2)
                out.setIndent("  ");
            write(out, *root);
        }
        CXmlIn in(path.c_str());
        EXPECT_TRUE(in.readHeader());
        readBack(in, nullptr, *root);
        EXPECT_EQ(xml_test::thrownText([&] { in.read(); }), "XML error: unexpected end of file");
        if (HasFailure())
            break;
    }
    std::remove(path.c_str());
}
