// escapeXmlStr and unescapeXmlStr, and their agreement with a conforming parser.
#include "xml_out_capture.h"

#include "vqk/xml/xml_escape.h"

#include <gtest/gtest.h>

namespace {

TEST(XmlOutEscapeStr, EntitiesDroppedBytesAndHighBytes) {
    vq::CStr out("old");
    vq::escapeXmlStr(out, "a\"b&c'd<e>f\tg\nh\ri\x01j\x1Fk\xC3\xA9");
    EXPECT_STREQ(out.str(), "a&quot;b&amp;c&apos;d&lt;e&gt;f\tg\nh\rijk\xC3\xA9");
    vq::escapeXmlStr(out, nullptr);
    EXPECT_STREQ(out.str(), "");
    vq::escapeXmlStr(out, "\x02\x03");
    EXPECT_STREQ(out.str(), "");
    EXPECT_TRUE(out.empty());
    vq::escapeXmlStr(out, "plain");
    EXPECT_STREQ(out.str(), "plain");
}

TEST(XmlOutEscapeStr, UnescapeKnowsTheFiveNamedEntitiesOnly) {
    vq::CStr out("old");
    vq::unescapeXmlStr(out, "&amp;lt; &quot;&apos;&gt;&lt; &#65; & &AMP; &am");
    EXPECT_STREQ(out.str(), "&lt; \"'>< &#65; & &AMP; &am");
    vq::unescapeXmlStr(out, nullptr);
    EXPECT_STREQ(out.str(), "");
    vq::unescapeXmlStr(out, "&");
    EXPECT_STREQ(out.str(), "&");
}

TEST(XmlOutEscapeStr, RoundTripAndParserAgree) {
    const char* texts[] = {"", "x", "<<&&>>", "'\"'", "a&amp;b", "tab\tend", "\xE2\x82\xAC 5 < 6"};
    for (const char* t : texts) {
        vq::CStr esc, back;
        vq::escapeXmlStr(esc, t);
        vq::unescapeXmlStr(back, esc.str());
        EXPECT_STREQ(back.str(), t);
        // As element content the escaped text reads back as the original.
        std::string doc = std::string("<t>") + esc.str() + "</t>";
        auto parsed = xml_out_test::parseXml(doc);
        ASSERT_TRUE(parsed) << t;
        xmlChar* content = xmlNodeGetContent(xmlDocGetRootElement(parsed.get()));
        EXPECT_STREQ(reinterpret_cast<char*>(content), t);
        xmlFree(content);
    }
}

} // namespace
