// Content of elements: raw output, comments, indentation, block writes and inserted
// files.
#include "xml_out_capture.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>
#include <vector>

namespace {

using xml_out_test::CCapture;
using xml_out_test::parseXml;

TEST(XmlOutContent, RawTextBeforeTheRootGoesOutAsItIs) {
    CCapture c;
    c.out("<?xml-stylesheet type=\"text/xsl\" href=\"%s\"?>\n", "s.xsl");
    { vq::CXmlOutElem r(c.out, "r"); }
    EXPECT_EQ(c.bytes(), "<?xml-stylesheet type=\"text/xsl\" href=\"s.xsl\"?>\n<r/>\n");
    EXPECT_TRUE(parseXml(c.bytes()));
}

TEST(XmlOutContent, RawTextOpensTheBodyOnce) {
    CCapture c;
    c.out.setIndent("  ");
    {
        vq::CXmlOutElem r(c.out, "r");
        c.out("a%i", 1);
        c.out("b");
        c.out << static_cast<const char*>(nullptr) << -3 << 1e-20;
    }
    EXPECT_EQ(c.bytes(), "<r>a1b-31e-20</r>\n");
}

TEST(XmlOutContent, RawTextAfterAttributesAndInCdata) {
    CCapture c;
    {
        vq::CXmlOutElem r(c.out, "r");
        c.out.attrInt("n", 2);
        c.out("x<y");
    }
    {
        vq::CXmlOutElem s(c.out, "s", "begin:");
        c.out("a<b");
    }
    EXPECT_EQ(c.bytes(), "<r n=\"2\">x<y</r>\n<s><![CDATA[begin:a<b]]></s>\n");
}

TEST(XmlOutContent, CommentUnderAnOpenStartTag) {
    CCapture c;
    c.out.setIndent("  ");
    {
        vq::CXmlOutElem r(c.out, "r");
        vq::CXmlOutElem a(c.out, "a");
        c.out.attrInt("k", 1);
        c.out.comment("note");
    }
    // The indentation of a's depth comes before a's '>' on its start tag's line, and
    // a then closes without indentation.
    EXPECT_EQ(c.bytes(), "<r>\n  <a k=\"1\"  ><!-- note -->\n</a>\n</r>\n");
    EXPECT_TRUE(parseXml(c.bytes()));
}

// A writer that sends raw output its own way; the writer's other output must reach
// the stream before it.
class CXmlOutTagged : public vq::CXmlOut {
public:
    using vq::CXmlOut::CXmlOut;
    void operator()(const char* format, ...) override {
        ++calls;
        print("[%s]", format);
    }
    int calls = 0;
};

TEST(XmlOutContent, CommentsAndInsertionsGoThroughTheVirtualRawOutput) {
    FILE* tmp = std::tmpfile();
    ASSERT_TRUE(tmp);
    {
        CXmlOutTagged out(tmp, nullptr);
        out.setIndent("  ");
        vq::CXmlOutElem r(out, "r");
        vq::CXmlOutElem a(out, "a");
        out.attrInt("k", 1);
        out.comment("c");
        EXPECT_EQ(out.calls, 1);
    }
    std::rewind(tmp);
    char buf[128] = {};
    std::fread(buf, 1, sizeof buf - 1, tmp);
    std::fclose(tmp);
    // The override opened no body, so a still closes as an element with attributes.
    EXPECT_STREQ(buf, "<r>\n  <a k=\"1\"  [<!-- %s -->\n]/>\n</r>\n");
}

TEST(XmlOutContent, CommentBetweenChildren) {
    CCapture c;
    c.out.setIndent("\t");
    {
        vq::CXmlOutElem r(c.out, "r");
        { vq::CXmlOutElem a(c.out, "a"); }
        c.out.comment(nullptr);
        c.out.comment("x -- y");
    }
    EXPECT_EQ(c.bytes(), "<r>\n<a/>\n<!--  -->\n<!-- x -- y -->\n</r>\n");
}

TEST(XmlOutContent, CommentWithoutIndentOrElement) {
    CCapture c;
    c.out.comment("top");
    EXPECT_EQ(c.bytes(), "<!-- top -->\n");
    c.out.setIndent("  ");
    c.out.comment("still top");
    EXPECT_EQ(c.bytes(), "<!-- top -->\n<!-- still top -->\n");
}

TEST(XmlOutContent, IndentCountsAndDepth) {
    CCapture c;
    c.out.indent(3); // no indent string: nothing, not even the body
    c.out.setIndent("-");
    EXPECT_STREQ(c.out.indentString(), "-");
    {
        vq::CXmlOutElem r(c.out, "r");
        vq::CXmlOutElem a(c.out, "a");
        c.out.indent(2);  // 2
        c.out.indent(0);  // depth 1
        c.out.indent(-2); // depth + 2
    }
    EXPECT_EQ(c.bytes(), "<r>\n-<a>------</a>\n</r>\n");
}

TEST(XmlOutContent, IndentStringIsPrintedAsAFormatAndReadEachTime) {
    CCapture c;
    char unit[8] = "%%.";
    c.out.setIndent(unit);
    {
        vq::CXmlOutElem r(c.out, "r");
        { vq::CXmlOutElem a(c.out, "a"); c.out.attrInt("k", 1); }
        std::strcpy(unit, "%x");   // changed in place: the writer looks at it again
        { vq::CXmlOutElem b(c.out, "b"); c.out.attrInt("k", 2); }
        std::strcpy(unit, "");     // empty: nothing to print at all
        c.out.indent(std::numeric_limits<int>::min()); // and no overflow in the count
        c.out.indent(std::numeric_limits<int>::max());
    }
    // "%%" prints one '%'; a '%' that starts no complete conversion stays as it is.
    EXPECT_EQ(c.bytes(), "<r>\n%.<a k=\"1\"/>\n%x<b k=\"2\"/>\n</r>\n");
}

TEST(XmlOutContent, NamesLongerThanAnyBufferKeepTheirPlace) {
    std::string name(40000, 'n');
    name[0] = 'N';
    std::string cdata(30000, 'c');
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

TEST(XmlOutContent, WriteCopiesBytesUnchanged) {
    CCapture c;
    {
        vq::CXmlOutElem r(c.out, "r");
        c.out.write("a%sb\0c", 6);
        c.out.write("ignored", -1);
        c.out.write(nullptr, 4);
    }
    EXPECT_EQ(c.bytes(), std::string("<r>a%sb\0c</r>\n", 14));
}

class XmlOutInsert : public ::testing::Test {
protected:
    std::string put(const char* name, const std::string& bytes) {
        std::string path = m_dir + "/" + name;
        xml_out_test::writeFile(path, bytes);
        return path;
    }
    std::string m_dir = xml_out_test::tempDir("insert");
};

TEST_F(XmlOutInsert, SkipsPrologAndJoinsCrLf) {
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
}

TEST_F(XmlOutInsert, WidePathAndPercentSigns) {
    std::string path = put("pct\xC3\xA9.xml", "<p>50% of 100%% %s</p>");
    std::wstring wpath(m_dir.begin(), m_dir.end());
    wpath += L"/pct\u00e9.xml";
    CCapture c;
    EXPECT_TRUE(c.out.insertXml(wpath.c_str()));
    // As a format "%%" is one '%'; no other conversion reads an argument.
    EXPECT_EQ(c.bytes(), "<p>50% of 100% %s</p>");
}

// Records the formats operator() receives and prints them as the base would, without
// arguments (they are expected to hold none).
class CXmlOutFormats : public vq::CXmlOut {
public:
    using vq::CXmlOut::CXmlOut;
    void operator()(const char* format, ...) override {
        formats.push_back(format);
        vq::CXmlOut::operator()("%s", format);
    }
    std::vector<std::string> formats;
};

TEST_F(XmlOutInsert, ContentReachesTheRawOutputAsItsFormat) {
    std::string path = put("fmt.xml", "<?xml version=\"1.0\"?>\r\n<p a=\"5%\">100%% %d</p>\r\n");
    FILE* tmp = std::tmpfile();
    ASSERT_TRUE(tmp);
    {
        CXmlOutFormats out(tmp, nullptr);
        EXPECT_TRUE(out.insertXml(path.c_str()));
        ASSERT_EQ(out.formats.size(), 1u);
        // Printed without arguments, this format gives back the file's own bytes, with
        // "%%" as one '%' as any format would.
        EXPECT_EQ(out.formats[0], "<p a=\"5%%\">100%% %%d</p>\n");
        char printed[64];
        std::snprintf(printed, sizeof printed, out.formats[0].c_str());
        EXPECT_STREQ(printed, "<p a=\"5%\">100% %d</p>\n");
    }
    std::fclose(tmp);
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

} // namespace
