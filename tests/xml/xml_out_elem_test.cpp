// Layout of elements: empty, attributes only, children, text, CDATA, raw tags,
// indentation and the depth rule.
#include "xml_out_capture.h"

#include <gtest/gtest.h>

namespace {

using xml_out_test::CCapture;
using xml_out_test::parseXml;

TEST(XmlOutElemLayout, EmptyElementsAreNeverIndented) {
    CCapture c;
    c.out.setIndent("\t");
    {
        vq::CXmlOutElem root(c.out, "root");
        EXPECT_EQ(c.bytes(), ""); // nothing is written before it is needed
        {
            vq::CXmlOutElem a(c.out, "a");
            vq::CXmlOutElem b(c.out, "b");
        }
    }
    EXPECT_EQ(c.bytes(), "<root>\n\t<a>\n<b/>\n\t</a>\n</root>\n");
    EXPECT_TRUE(parseXml(c.bytes()));
}

TEST(XmlOutElemLayout, LoneRootIsOneEmptyTag) {
    CCapture c;
    c.out.setIndent("  ");
    { vq::CXmlOutElem root(c.out, "job_log"); }
    EXPECT_EQ(c.bytes(), "<job_log/>\n");
}

TEST(XmlOutElemLayout, AttributesOnlyCloseOnTheirLine) {
    CCapture c;
    c.out.setIndent("  ");
    {
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
    }
    EXPECT_EQ(c.bytes(), "<r v=\"1\">\n"
                         "  <a n=\"x\">\n"
                         "    <b ok=\"1\"/>\n"
                         "  </a>\n"
                         "  <d p=\"1 2\"/>\n"
                         "</r>\n");
    auto doc = parseXml(c.bytes());
    ASSERT_TRUE(doc);
    EXPECT_EQ(xml_out_test::propOf(xmlDocGetRootElement(doc.get()), "v"), "1");
}

TEST(XmlOutElemLayout, RawTagsWriteNoLineBreaks) {
    CCapture c;
    c.out.setIndent("  ");
    c.out.setRawTags(true);
    EXPECT_TRUE(c.out.isRawTags());
    {
        vq::CXmlOutElem root(c.out, "r");
        {
            vq::CXmlOutElem a(c.out, "a");
            c.out.attrInt("i", 3);
        }
        { vq::CXmlOutElem e(c.out, "e"); }
        c.out.text("t", "%s", "x");
    }
    EXPECT_EQ(c.bytes(), "<r>  <a i=\"3\"/><e/>  <t>x</t></r>");
    EXPECT_TRUE(parseXml(c.bytes()));
}

TEST(XmlOutElemLayout, TextElementsStayOnOneLine) {
    CCapture c;
    c.out.setIndent("\t");
    {
        vq::CXmlOutElem root(c.out, "root");
        vq::CXmlOutElem mid(c.out, "mid");
        c.out.text("a", "%i", 5);
        c.out.text("b", "%s&amp;", "q");
    }
    EXPECT_EQ(c.bytes(), "<root>\n\t<mid>\n\t\t<a>5</a>\n\t\t<b>q&amp;</b>\n\t</mid>\n</root>\n");
    auto doc = parseXml(c.bytes());
    ASSERT_TRUE(doc);
}

TEST(XmlOutElemLayout, TextBodyClosesRightAfterTheText) {
    CCapture c;
    c.out.setIndent("  ");
    {
        vq::CXmlOutElem root(c.out, "r");
        {
            vq::CXmlOutElem a(c.out, "a");
            c.out.attrInt("k", 1);
            c.out << "v=" << 2 << " " << 0.5;
        }
        {
            // Text first, then a child: the end tag still follows on the child's line.
            vq::CXmlOutElem m(c.out, "m");
            c.out << "t";
            vq::CXmlOutElem k(c.out, "k");
            c.out.attrInt("z", 0);
        }
    }
    EXPECT_EQ(c.bytes(), "<r>\n"
                         "  <a k=\"1\">v=2 0.5</a>\n"
                         "  <m>t    <k z=\"0\"/>\n"
                         "</m>\n"
                         "</r>\n");
    EXPECT_TRUE(parseXml(c.bytes()));
}

TEST(XmlOutElemLayout, CdataContentIsNotIndented) {
    CCapture c;
    c.out.setIndent("  ");
    {
        vq::CXmlOutElem root(c.out, "r");
        vq::CXmlOutElem s(c.out, "script", "//");
        EXPECT_EQ(s.depth(), 1);
        {
            vq::CXmlOutElem in(c.out, "in");
            EXPECT_EQ(in.depth(), -2); // the complement of the parent's depth
            vq::CXmlOutElem deeper(c.out, "deeper");
            EXPECT_EQ(deeper.depth(), -3);
            c.out.attrInt("x", 1);
        }
    }
    EXPECT_EQ(c.bytes(), "<r>\n"
                         "  <script><![CDATA[//<in>\n"
                         "<deeper x=\"1\"/>\n"
                         "</in>\n"
                         "]]></script>\n"
                         "</r>\n");
    auto doc = parseXml(c.bytes());
    ASSERT_TRUE(doc);
    xmlNode* script = xmlDocGetRootElement(doc.get())->children;
    while (script && script->type != XML_ELEMENT_NODE)
        script = script->next;
    ASSERT_TRUE(script);
    xmlChar* content = xmlNodeGetContent(script);
    EXPECT_STREQ(reinterpret_cast<char*>(content), "//<in>\n<deeper x=\"1\"/>\n</in>\n");
    xmlFree(content);
}

TEST(XmlOutElemLayout, DepthOfRootUnderCdataIsMinusOne) {
    CCapture c;
    vq::CXmlOutElem root(c.out, "r", "");
    vq::CXmlOutElem in(c.out, "in");
    EXPECT_EQ(root.depth(), 0);
    EXPECT_EQ(in.depth(), -1);
    EXPECT_EQ(in.parent(), &root);
    EXPECT_EQ(c.out.current(), &in);
}

TEST(XmlOutElemLayout, ClosingOutOfOrderUsesTheCurrentDepth) {
    CCapture c;
    c.out.setIndent("-");
    vq::CXmlOutElem root(c.out, "r");
    auto* a = new vq::CXmlOutElem(c.out, "a");
    auto* b = new vq::CXmlOutElem(c.out, "b");
    c.out.text("t", "1");
    // a is not current: its end tag takes b's depth and its parent becomes current.
    delete a;
    EXPECT_EQ(c.out.current(), &root);
    EXPECT_EQ(c.bytes(), "<r>\n-<a>\n--<b>\n---<t>1</t>\n--</a>\n");
    c.out.close();
    delete b; // the writer is closed: nothing more
}

TEST(XmlOutElemLayout, KeeperOpensOnlyWithAWriter) {
    CCapture c;
    {
        vq::CXmlOutElemKeeper none(nullptr, "x");
        EXPECT_EQ(none.elem(), nullptr);
        vq::CXmlOutElemKeeper k(&c.out, "kept");
        ASSERT_NE(k.elem(), nullptr);
        EXPECT_EQ(c.out.current(), k.elem());
        c.out.attrInt("n", 4);
    }
    EXPECT_EQ(c.out.current(), nullptr);
    EXPECT_EQ(c.bytes(), "<kept n=\"4\"/>\n");
}

TEST(XmlOutElemLayout, ClosedWriterWritesNothingAndKeepsNoElement) {
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

TEST(XmlOutElemLayout, NullTextIsEmptyEverywhere) {
    CCapture c;
    {
        vq::CXmlOutElem r(c.out, nullptr, nullptr);
        c.out.attr(nullptr, "%i", 1);
        c.out.attrStr(nullptr, static_cast<const char*>(nullptr));
        c.out.attr(nullptr, nullptr);
        c.out.text(nullptr, nullptr);
        c.out(nullptr);
        c.out.write(nullptr, 3);
        c.out.comment(nullptr);
        EXPECT_FALSE(c.out.insertXml(static_cast<const char*>(nullptr)));
    }
    EXPECT_EQ(c.bytes(), "< =\"1\" =\"\" >\n<></>\n<!--  -->\n</>\n");
}

TEST(XmlOutElemLayout, ElementsOutlivingTheirStreamStaySilent) {
    CCapture c;
    auto* e = new vq::CXmlOutElem(c.out, "old");
    c.out.attrInt("a", 1);
    c.out.close();
    EXPECT_EQ(c.out.current(), nullptr);
    delete e;
    EXPECT_EQ(c.bytes(), "<old a=\"1\"");
}

} // namespace
