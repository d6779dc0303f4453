// The writer's files and streams: the declaration, appending, closing, the caller's
// stream and print function, the global writer and the stored settings.
#include "xml_test_support.h"

#include "support/xml_referee.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <string>

namespace {

using xml_test::readFile;

const char kXmlOutDecl[] = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";

// open() writes the declaration unless appending or refused; the path constructors write none.
TEST(XmlOutFile, DeclarationOnlyWhenOpenedFresh) {
    std::string dir = xml_test::tempDir("open");
    std::string path = dir + "/a.xml";
    for (bool append : {false, true}) {
        vq::CXmlOut out;
        ASSERT_TRUE(out.open(path.c_str(), append, append));
        vq::CXmlOutElem r(out, append ? "s" : "r");
        out.attrStr("v", "1");
    }
    vq::CXmlOut holder, refused; // a file held by another writer gets no declaration
    ASSERT_TRUE(holder.open(path.c_str(), true, true));
    EXPECT_FALSE(refused.open(path.c_str()));
    holder.close();
    EXPECT_EQ(xml_test::lfOnly(readFile(path)), std::string(kXmlOutDecl) + "<r v=\"1\"/>\n<s v=\"1\"/>\n");
    {
        vq::CXmlOut narrow((dir + "/n.xml").c_str());
        std::wstring wdir(dir.begin(), dir.end());
        vq::CXmlOut wide((wdir + L"/w.xml").c_str());
        EXPECT_TRUE(narrow.isOpen() && wide.isOpen());
        vq::CXmlOutElem n(narrow, "n");
        vq::CXmlOutElem w(wide, "w");
    }
    EXPECT_EQ(xml_test::lfOnly(readFile(dir + "/n.xml")), "<n/>\n");
    EXPECT_EQ(xml_test::lfOnly(readFile(dir + "/w.xml")), "<w/>\n");
    EXPECT_FALSE(vq::CXmlOut(static_cast<const char*>(nullptr)).isOpen());
}

TEST(XmlOutFile, CloseForgetsOpenElementsAndReopenStartsClean) {
    std::string dir = xml_test::tempDir("reopen");
    vq::CXmlOut out;
    ASSERT_TRUE(out.open((dir + "/1.xml").c_str(), false, false));
    auto* stale = new vq::CXmlOutElem(out, "first");
    out.attrInt("a", 1);
    out.close();
    EXPECT_EQ(out.current(), nullptr);
    ASSERT_TRUE(out.open((dir + "/2.xml").c_str(), false, false));
    {
        vq::CXmlOutElem fresh(out, "second");
        EXPECT_EQ(fresh.parent(), nullptr);
        EXPECT_EQ(fresh.depth(), 0);
    }
    delete stale; // belongs to the first file: writes nothing into the second
    out.close();
    EXPECT_EQ(xml_test::lfOnly(readFile(dir + "/1.xml")), std::string(kXmlOutDecl) + "<first a=\"1\"");
    EXPECT_EQ(xml_test::lfOnly(readFile(dir + "/2.xml")), std::string(kXmlOutDecl) + "<second/>\n");
}

TEST(XmlOutFile, EveryOperationReachesTheStreamBeforeItReturns) {
    std::string dir = xml_test::tempDir("hold");
    std::string path = dir + "/ops.xml";
    vq::CXmlOut out;
    ASSERT_TRUE(out.open(path.c_str(), false, false));
    out.setIndent("  ");
    // What the stream holds after each operation, seen through the stream itself.
    auto inFile = [&] {
        std::fflush(out.stream());
        return xml_test::lfOnly(readFile(path)).substr(sizeof kXmlOutDecl - 1);
    };
    EXPECT_EQ(inFile(), "");
    {
        vq::CXmlOutElem r(out, "r");
        EXPECT_EQ(inFile(), "");
        out.attrInt("a", 1);
        EXPECT_EQ(inFile(), "<r a=\"1\"");
        std::fputs(" b=\"2\"", out.stream()); // a caller's own bytes land in order
        vq::CXmlOutElem e(out, "e");
        EXPECT_EQ(inFile(), "<r a=\"1\" b=\"2\">\n");
        out.attrD1("d", 0.5);
        EXPECT_EQ(inFile(), "<r a=\"1\" b=\"2\">\n  <e d=\"0.5\"");
        out.print("%s", " c=\"3\"");
        out.writeBlock(">", 1);
        out.attrStr("late", "x"); // no check: an attribute after the body goes into it
        EXPECT_EQ(inFile(), "<r a=\"1\" b=\"2\">\n  <e d=\"0.5\" c=\"3\"> late=\"x\"");
    }
    EXPECT_EQ(inFile(), "<r a=\"1\" b=\"2\">\n  <e d=\"0.5\" c=\"3\"> late=\"x\"/>\n</r>\n");
    out.close();

    // Unbuffered: every operation reaches the file at once.
    std::string raw = dir + "/unbuffered.xml";
    vq::CXmlOut now;
    ASSERT_TRUE(now.open(raw.c_str(), true, true));
    vq::CXmlOutElem e(now, "e");
    now.attrInt("n", 5);
    EXPECT_EQ(readFile(raw), "<e n=\"5\"");
}

TEST(XmlOutFile, DestructorLeavesAWholeDocument) {
    std::string path = xml_test::tempDir("dtor") + "/d.xml";
    auto* out = new vq::CXmlOut;
    ASSERT_TRUE(out->open(path.c_str(), false, false));
    {
        vq::CXmlOutElem r(*out, "r");
        for (int i = 0; i < 5000; ++i) { // more than one stream buffer
            vq::CXmlOutElem e(*out, "e");
            out->attrInt("i", i);
        }
    }
    delete out;
    auto doc = parseXml(readFile(path));
    ASSERT_TRUE(doc);
    EXPECT_EQ(doc->count("/*/*"), 5000);
}

std::string g_xmlOutPrinted;
int xmlOutRecordingPrint(FILE* f, const char* format, ...) {
    char buf[4096];
    va_list args;
    va_start(args, format);
    int n = std::vsnprintf(buf, sizeof buf, format, args);
    va_end(args);
    g_xmlOutPrinted += buf;
    return std::fputs(buf, f) >= 0 ? n : -1;
}

TEST(XmlOutFile, CallersPrintCarriesTheFixedText) {
    FILE* tmp = std::tmpfile();
    ASSERT_TRUE(tmp);
    g_xmlOutPrinted.clear();
    {
        vq::CXmlOut out(tmp, xmlOutRecordingPrint);
        out.setIndent("  ");
        vq::CXmlOutElem r(out, "r");
        out.attrD1("d", 0.5);
        out.attr("g", "%s", "a&b");
        vq::CXmlOutElem k(out, "k");
        out.attrBool("z", false);
    }
    std::fclose(tmp);
    EXPECT_EQ(g_xmlOutPrinted, "<r d=\"0.5\" g=\"a&amp;b\">\n  <k z=\"0\"/>\n</r>\n");
}

TEST(XmlOutFile, IdsCountFromOnePerWriter) {
    vq::CXmlOut a, b;
    EXPECT_EQ(a.newId(), 1);
    EXPECT_EQ(a.newId(), 2);
    EXPECT_EQ(b.newId(), 1);
    EXPECT_EQ(a.newId(), 3);
}

} // namespace
