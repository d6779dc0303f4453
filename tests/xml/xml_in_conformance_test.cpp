// The reader against a full parser: for generated documents made of every construct the
// tokenizer supports, in random combinations, the sequence of start, end and empty tags
// with their attributes that CXmlIn reports must equal what libxml2's xmlTextReader
// reports. The tokenizer is deliberately lenient and small; the differences that exist
// by design are pinned down separately.
#include "vqk/xml/xml_in.h"

#include "xml_test_support.h"

#include <gtest/gtest.h>
#include <libxml/xmlreader.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

using vq::CXmlIn;
using xml_test::ScratchXml;

namespace {

using Events = std::vector<std::string>;

// One event as text: "S" start, "E" end, "M" empty element, then the name and the
// attributes. Namespace declarations come first, as the full parser lists them.
struct EventText {
    std::string head, ns, attrs;
    void attr(const char* name, const char* value) {
        std::string& to = std::strncmp(name, "xmlns", 5) == 0 &&
                                  (name[5] == 0 || name[5] == ':')
                              ? ns
                              : attrs;
        to += std::string(" ") + name + "=[" + value + "]";
    }
    std::string str() const { return head + ns + attrs; }
};

// Documents of the suite may carry declarations the full parser warns about.
void quiet(void*, const char*, xmlParserSeverities, xmlTextReaderLocatorPtr) {}

Events referenceEvents(const std::string& path, bool& ok) {
    Events ev;
    ok = false;
    xmlTextReaderPtr r =
        xmlReaderForFile(path.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
    if (!r)
        return ev;
    xmlTextReaderSetErrorHandler(r, quiet, nullptr);
    int ret;
    while ((ret = xmlTextReaderRead(r)) == 1) {
        int type = xmlTextReaderNodeType(r);
        const char* name = reinterpret_cast<const char*>(xmlTextReaderConstName(r));
        if (type == XML_READER_TYPE_ELEMENT) {
            EventText e;
            e.head = std::string(xmlTextReaderIsEmptyElement(r) ? "M " : "S ") + name;
            while (xmlTextReaderMoveToNextAttribute(r) == 1)
                e.attr(reinterpret_cast<const char*>(xmlTextReaderConstName(r)),
                       reinterpret_cast<const char*>(xmlTextReaderConstValue(r)));
            xmlTextReaderMoveToElement(r);
            ev.push_back(e.str());
        } else if (type == XML_READER_TYPE_END_ELEMENT) {
            ev.push_back(std::string("E ") + name);
        }
    }
    ok = ret == 0;
    xmlFreeTextReader(r);
    return ev;
}

// The same walk through CXmlIn, from the declaration (when there is one) to the end
// of the root element. A reader error ends the list with "! message". readHeader is
// asked only when the document opens with its declaration: anything else in that
// place it would push back as a tag.
Events readerEvents(const std::string& path, bool hasDeclaration) {
    Events ev;
    try {
        CXmlIn in(path.c_str());
        if (hasDeclaration && !in.readHeader())
            ev.push_back("! declaration misread");
        int depth = 0;
        do {
            in.read();
            EventText e;
            e.head = std::string(in.isTagStart() ? "S " : in.isTagEnd() ? "E " : "M ") + in.tagStr();
            for (int i = 0; i < in.nAttr(); ++i)
                e.attr(in.attrName(i), in.attrVal(i));
            ev.push_back(e.str());
            depth += in.isTagStart() ? 1 : in.isTagEnd() ? -1 : 0;
        } while (depth > 0);
    } catch (const char* e) {
        ev.push_back(std::string("! ") + e);
    }
    return ev;
}

// The first difference between the two lists, for a readable failure message.
std::string firstDifference(const Events& ours, const Events& ref) {
    size_t n = std::min(ours.size(), ref.size());
    for (size_t i = 0; i < n; ++i)
        if (ours[i] != ref[i])
            return "event " + std::to_string(i) + ": reader {" + ours[i] + "} libxml2 {" + ref[i] + "}";
    if (ours.size() != ref.size())
        return "reader " + std::to_string(ours.size()) + " events, libxml2 " + std::to_string(ref.size()) +
               (ours.empty() ? "" : ", reader's last {" + ours.back() + "}");
    return "";
}

// Compares one document; returns false (with a failure) when the two disagree.
bool compareDocument(const std::string& path, const std::string& text) {
    bool refOk = false;
    Events ref = referenceEvents(path, refOk);
    if (!refOk) {
        ADD_FAILURE() << path << ": libxml2 rejects it";
        return false;
    }
    Events ours = readerEvents(path, text.compare(0, 6, "<?xml ") == 0);
    std::string diff = firstDifference(ours, ref);
    EXPECT_EQ(diff, "") << path;
    return diff.empty();
}

// -- Generated documents: every supported construct, in random combinations.

class DocumentGenerator {
public:
    explicit DocumentGenerator(unsigned seed) : m_rng(seed) {}

    std::string document() {
        std::string d;
        if (pick(4))
            d += pick(2) ? "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" : "<?xml version='1.0'?>";
        if (!pick(4))
            d += "<!-- head > comment -->\n";
        if (!pick(5))
            d += "<!DOCTYPE root>\n";
        if (!pick(5))
            d += "<?style sheet=\"x\"?>";
        element(d, 0, true);
        if (pick(2))
            d += "\n<!-- tail -->\n";
        return d;
    }

private:
    int pick(int n) { return int(m_rng() % unsigned(n)); }

    std::string name(bool element) {
        static const char first[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_";
        static const char elementRest[] = "abcxyzXYZ0123456789_.-";
        static const char attrRest[] = "abcxyzXYZ0123456789_";
        std::string n(1, first[pick(sizeof first - 1)]);
        int len = pick(8);
        for (int k = 0; k < len; ++k)
            n += element ? elementRest[pick(sizeof elementRest - 1)] : attrRest[pick(sizeof attrRest - 1)];
        if (element && !pick(6))
            n = "p:" + n;
        return n;
    }

    std::string value(char quote) {
        static const char* const pieces[] = {"a", "Z", "0", " ", "&amp;", "&lt;", "&gt;", "/", "=",
                                             "?", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "x y"};
        std::string v;
        int len = pick(12);
        for (int k = 0; k < len; ++k) {
            int p = pick(16);
            if (p == 14)
                v += quote == '"' ? "&quot;" : "\"";
            else if (p == 15)
                v += quote == '"' ? "'" : "&quot;";
            else
                v += pieces[p];
        }
        return v;
    }

    std::string blank() {
        static const char* const blanks[] = {" ", "  ", "\n", "\t", " \r\n "};
        return blanks[pick(5)];
    }

    void attributes(std::string& d, bool root) {
        int n = pick(5);
        std::vector<std::string> used;
        for (int k = 0; k < n; ++k) {
            std::string a = name(false);
            if (std::find(used.begin(), used.end(), a) != used.end())
                continue;
            used.push_back(a);
            char q = pick(3) ? '"' : '\'';
            d += blank() + a + (pick(4) ? "=" : " = ") + q + value(q) + q;
        }
        if (root)
            d += blank() + "xmlns:p=\"urn:x-p\"" + (pick(2) ? " p:at='1'" : "");
    }

    void text(std::string& d) {
        static const char* const pieces[] = {"text", " ", "\n", "&amp;", "&lt;", "&gt;", "&quot;",
                                             "&apos;", "&#65;", "&#x42;", ">", "<!-- c > -->",
                                             "<?pi x?>", "<![CDATA[ a > b & c ]]>"};
        int len = pick(4);
        for (int k = 0; k < len; ++k)
            d += pieces[pick(14)];
    }

    void element(std::string& d, int depth, bool root) {
        std::string n = name(true);
        d += "<" + n;
        attributes(d, root);
        int kids = depth < 6 ? pick(5) : 0;
        if (kids == 0 && pick(2)) {
            d += pick(2) ? "/>" : " />";
            return;
        }
        d += ">";
        for (int k = 0; k < kids; ++k) {
            text(d);
            element(d, depth + 1, false);
        }
        text(d);
        d += "</" + n + ">";
    }

    std::mt19937 m_rng;
};

} // namespace

TEST(XmlInConformance, GeneratedDocumentsReadLikeAFullParser) {
    DocumentGenerator gen(20261122);
    int compared = 0;
    for (int k = 0; k < 300; ++k) {
        std::string d = gen.document();
        ScratchXml f(d);
        if (!compareDocument(f.path(), d)) {
            ADD_FAILURE() << "document:\n" << d;
            break;
        }
        ++compared;
    }
    EXPECT_EQ(compared, 300);
}

// -- Where the reader differs from a full parser by design.

namespace {

// The attribute `name` of the root as each side reports it, or the reader's error.
struct RootAttr {
    explicit RootAttr(const std::string& doc, const char* name) {
        ScratchXml f(doc);
        bool ok = false;
        xmlTextReaderPtr r = xmlReaderForFile(f.c_str(), nullptr, XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
        if (r)
            xmlTextReaderSetErrorHandler(r, quiet, nullptr);
        if (r && xmlTextReaderRead(r) == 1) {
            xmlChar* v = xmlTextReaderGetAttribute(r, reinterpret_cast<const xmlChar*>(name));
            if (v)
                reference = reinterpret_cast<const char*>(v);
            xmlFree(v);
            ok = true;
        }
        xmlFreeTextReader(r);
        EXPECT_TRUE(ok) << doc;
        try {
            CXmlIn in(f.c_str());
            in.read();
            ours = in.attrStr(name, "(missing)");
        } catch (const char* e) {
            ours = std::string("! ") + e;
        }
    }
    std::string reference, ours;
};

} // namespace

TEST(XmlInConformance, DifferencesByDesignAreWhatTheyShouldBe) {
    struct Case {
        const char* doc;
        const char* attr;
        const char* reference; // the full parser's value
        const char* ours;      // the reader's value, or "! " and its message
    };
    const Case cases[] = {
        // Only &amp; &lt; &gt; &quot; are decoded; other references stay as they stand.
        {"<a v=\"&#65;&#x42;\"/>", "v", "AB", "&#65;&#x42;"},
        {"<a v=\"it&apos;s\"/>", "v", "it's", "it&apos;s"},
        {"<a v=\"&lt;&amp;&gt;&quot;\"/>", "v", "<&>\"", "<&>\""},
        // A '>' ends the tag even inside a value, in either quotes.
        {"<a v=\"x>y\"/>", "v", "x>y", "! XML error: invalid tag attributes"},
        {"<a w='1' v='x>y'/>", "w", "1", "! XML error: invalid tag attributes"},
        // Values are not normalised, and names end at '.' and '-'.
        {"<a v=\"1\t2\n3\"/>", "v", "1 2 3", "1\t2\n3"},
        {"<a b.c=\"1\"/>", "b.c", "1", "! XML error: invalid tag attributes"},
    };
    for (const Case& c : cases) {
        RootAttr r(c.doc, c.attr);
        EXPECT_EQ(r.reference, c.reference) << c.doc;
        EXPECT_EQ(r.ours, c.ours) << c.doc;
    }
}
