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

TEST(XmlOutFile, OpenWritesTheDeclarationUnlessAppending) {
    std::string path = xml_test::tempDir("decl") + "/a.xml";
    {
        vq::CXmlOut out;
        ASSERT_TRUE(out.open(path.c_str(), false, false));
        vq::CXmlOutElem r(out, "r");
        out.attrStr("v", "1");
    }
    EXPECT_EQ(readFile(path), std::string(kXmlOutDecl) + "<r v=\"1\"/>\n");
    EXPECT_TRUE(parseXml(readFile(path)));
    {
        vq::CXmlOut out;
        ASSERT_TRUE(out.open(path.c_str(), true, true));
        vq::CXmlOutElem r(out, "s");
    }
    EXPECT_EQ(readFile(path), std::string(kXmlOutDecl) + "<r v=\"1\"/>\n<s/>\n");
}

TEST(XmlOutFile, PathConstructorsWriteNoDeclaration) {
    std::string dir = xml_test::tempDir("ctor");
    std::string path = dir + "/n.xml";
    {
        vq::CXmlOut out(path.c_str());
        EXPECT_TRUE(out.isOpen());
        vq::CXmlOutElem r(out, "n");
    }
    EXPECT_EQ(readFile(path), "<n/>\n");
    std::wstring wpath(dir.begin(), dir.end());
    wpath += L"/w.xml";
    {
        vq::CXmlOut out(wpath.c_str());
        EXPECT_TRUE(out.isOpen());
        vq::CXmlOutElem r(out, "w");
    }
    EXPECT_EQ(readFile(dir + "/w.xml"), "<w/>\n");
    vq::CXmlOut none(static_cast<const char*>(nullptr));
    EXPECT_FALSE(none.isOpen());
}

TEST(XmlOutFile, FailedOpenWritesNothingAndReturnsFalse) {
    std::string path = xml_test::tempDir("fail") + "/held.xml";
    vq::CXmlOut first;
    ASSERT_TRUE(first.open(path.c_str()));
    vq::CXmlOut second;
    EXPECT_FALSE(second.open(path.c_str()));
    EXPECT_FALSE(second.open("/nonexistent-folder-vqk/x.xml"));
    EXPECT_FALSE(second.isOpen());
    first.close();
    EXPECT_EQ(readFile(path), kXmlOutDecl);
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
    EXPECT_EQ(readFile(dir + "/1.xml"), std::string(kXmlOutDecl) + "<first a=\"1\"");
    EXPECT_EQ(readFile(dir + "/2.xml"), std::string(kXmlOutDecl) + "<second/>\n");
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
        return readFile(path).substr(sizeof kXmlOutDecl - 1);
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
    {
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
    }
    std::string got = readFile(path);
    EXPECT_EQ(got.substr(got.size() - 19), "<e i=\"4999\"/>\n</r>\n");
    auto doc = parseXml(got);
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
    xml_test::CCapture plain;
    FILE* tmp = std::tmpfile();
    ASSERT_TRUE(tmp);
    g_xmlOutPrinted.clear();
    {
        vq::CXmlOut out(tmp, xmlOutRecordingPrint);
        out.setIndent("  ");
        plain.out.setIndent("  ");
        for (vq::CXmlOut* o : {&out, &plain.out}) {
            vq::CXmlOutElem r(*o, "r");
            o->attrD1("d", 0.5);
            o->attr("g", "%s", "a&b");
            vq::CXmlOutElem k(*o, "k");
            o->attrBool("z", false);
        }
    }
    std::string expected = "<r d=\"0.5\" g=\"a&amp;b\">\n  <k z=\"0\"/>\n</r>\n";
    EXPECT_EQ(g_xmlOutPrinted, expected);
    EXPECT_EQ(plain.bytes(), expected);
    std::rewind(tmp);
    char buf[128] = {};
    std::fread(buf, 1, sizeof buf - 1, tmp);
    EXPECT_EQ(buf, expected);
    std::fclose(tmp);
}

// Counts what reaches the overridable operations.
class CXmlOutCounting : public vq::CXmlOut {
public:
    using vq::CXmlOut::open;
    bool open(const wchar_t* path, bool append, bool unbuffered) override {
        ++wideOpens;
        return vq::CXmlOut::open(path, append, unbuffered);
    }
    void operator()(const char* format, ...) override {
        raw += format;
        raw += '|';
    }
    int wideOpens = 0;
    std::string raw;
};

TEST(XmlOutFile, NarrowOpenAndStreamingGoThroughTheOverrides) {
    std::string path = xml_test::tempDir("virtual") + "/v.xml";
    CXmlOutCounting out;
    ASSERT_TRUE(out.open(path.c_str(), false, false));
    EXPECT_EQ(out.wideOpens, 1);
    out << "a" << 7 << 0.25;
    EXPECT_EQ(out.raw, "%s|%i|%.15g|");
    out.close();
    EXPECT_EQ(readFile(path), kXmlOutDecl);
}

TEST(XmlOutFile, GlobalWriterIsOnStandardOutput) {
    EXPECT_EQ(vq::xout.stream(), stdout);
    EXPECT_FALSE(vq::xout.isOwned());
    EXPECT_EQ(vq::xout.current(), nullptr);
}

TEST(XmlOutFile, IdsCountFromOnePerWriter) {
    vq::CXmlOut a, b;
    EXPECT_EQ(a.newId(), 1);
    EXPECT_EQ(a.newId(), 2);
    EXPECT_EQ(b.newId(), 1);
    EXPECT_EQ(a.newId(), 3);
}

TEST(XmlOutFile, StoredSettingsReadBack) {
    vq::CXmlOut out;
    EXPECT_EQ(out.stop(), 0);
    EXPECT_FALSE(out.isUseScaling());
    EXPECT_EQ(out.scaleCoef(), 1.0);
    EXPECT_EQ(out.indentString(), nullptr);
    out.setStop(-7);
    out.setUseScaling(true);
    out.setScaleCoef(25.4);
    EXPECT_EQ(out.stop(), -7);
    EXPECT_TRUE(out.isUseScaling());
    EXPECT_EQ(out.scaleCoef(), 25.4);
}

} // namespace
