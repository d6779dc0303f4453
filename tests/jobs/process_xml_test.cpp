// The XML tools through the library: schema validation and XSL transformation, their exit
// codes, and the QIF corpus (when present) validated offline.
#include "tool_process.h"

#include "vqk/jobs/process.h"
#include "vqk/platform/environment.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <thread>

namespace fs = std::filesystem;

namespace {

const char* const kSchema = R"(<?xml version="1.0"?>
<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema">
  <xs:element name="part">
    <xs:complexType>
      <xs:sequence><xs:element name="hole" type="xs:decimal" maxOccurs="unbounded"/></xs:sequence>
      <xs:attribute name="id" type="xs:int" use="required"/>
    </xs:complexType>
  </xs:element>
</xs:schema>
)";
// A second schema that wants another root.
const char* const kOtherSchema = R"(<?xml version="1.0"?>
<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema"><xs:element name="model"/></xs:schema>
)";

std::string tool(const char* name) {
    char path[4096];
    return vq::findTool(name, path, sizeof path) ? path : "";
}

class XmlToolTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (tool("xmlvalidate").empty() || tool("xsl_transform").empty())
            GTEST_SKIP() << "the XML tools are not built";
        m_dir = freshTempDir(::testing::UnitTest::GetInstance()->current_test_info()->name());
        ASSERT_FALSE(m_dir.empty());
    }
    std::string file(const char* name, const char* text) {
        std::string path = m_dir + "/" + name;
        writeFile(path, text);
        return path;
    }
    std::string m_dir;
};

TEST_F(XmlToolTest, ValidationAnswersForEveryDocumentAndSchema) {
    std::string xsd = file("part.xsd", kSchema), other = file("model.xsd", kOtherSchema);
    std::string good = file("good.xml", "<part id=\"3\"><hole>2.5</hole></part>");
    std::string typo = file("typo.xml", "<part id=\"three\"><hole>2.5</hole></part>");
    std::string broken = file("broken.xml", "<part id=\"3\"><hole>2.5</part>");
    std::string missing = m_dir + "/missing.xml", noSchema = m_dir + "/missing.xsd";
    std::string junkSchema = file("junk.xsd", "<xs:schema");
    struct {
        std::string xml;
        std::vector<std::string> schemas;
        bool valid;
    } cases[] = {
        {good, {xsd}, true},         {typo, {xsd}, false},         {broken, {xsd}, false},
        {missing, {xsd}, false},     {good, {noSchema}, false},    {good, {junkSchema}, false},
        {good, {xsd, xsd}, true},    {good, {xsd, other}, false},  {"", {xsd}, false},
    };
    for (const auto& c : cases) {
        std::vector<const char*> s;
        for (const std::string& p : c.schemas)
            s.push_back(p.c_str());
        EXPECT_EQ(c.valid, vq::xmlValidate(c.xml.c_str(), s.data(), (int)s.size(), false))
            << c.xml << " against " << c.schemas.back();
    }
    EXPECT_TRUE(vq::xmlValidate(good.c_str(), xsd.c_str(), true));
    EXPECT_FALSE(vq::xmlValidate(good.c_str(), (const char*)nullptr, false));
    EXPECT_FALSE(vq::xmlValidate(good.c_str(), (const char* const*)nullptr, 1, false));

    // The tool itself tells a usage or file error (2) from an invalid document (1).
    std::string v = "\"" + tool("xmlvalidate") + "\" ";
    struct {
        std::string args;
        unsigned long code;
    } runs[] = {{"", 2}, {"\"" + good + "\"", 2}, {"\"" + missing + "\" \"" + xsd + "\"", 2},
                {"\"" + good + "\" \"" + noSchema + "\"", 2}, {"\"" + typo + "\" \"" + xsd + "\"", 1}};
    for (const auto& r : runs)
        EXPECT_EQ(r.code, vq::startProcess((v + r.args).c_str(), true, 60, true, vq::kNoWindow)) << r.args;
}

TEST_F(XmlToolTest, TransformWritesTheOutputOrNothing) {
    std::string xml = file("in.xml", "<part id=\"7\"><hole>1</hole><hole>2</hole></part>");
    std::string xsl = file("count.xsl", R"xsl(<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:template match="/part">part <xsl:value-of select="@id"/>: <xsl:value-of select="count(hole)"/> holes</xsl:template>
</xsl:stylesheet>)xsl");
    std::string out = m_dir + "/out dir.txt";
    vq::xmlTransform(xml.c_str(), xsl.c_str(), out.c_str());
    EXPECT_EQ("part 7: 2 holes", readFile(out));

    std::string badXsl = file("bad.xsl", "<xsl:stylesheet version=\"1.0\" xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\"><xsl:nonsense/>");
    for (const std::string& style : {badXsl, m_dir + "/missing.xsl"}) {
        std::string none = m_dir + "/none.txt";
        vq::xmlTransform(xml.c_str(), style.c_str(), none.c_str());
        EXPECT_FALSE(fileExists(none)) << style;
    }
    std::string t = "\"" + tool("xsl_transform") + "\" \"" + xml + "\" \"" + badXsl + "\"";
    EXPECT_EQ(2u, vq::startProcess(t.c_str(), true, 60, true, vq::kNoWindow));
}

fs::path qifCorpus() {
    std::string env;
    if (vq::platform::getEnv("VQK_QIF_CORPUS", env) && !env.empty())
        return env;
    return fs::path(VQK_SOURCE_DIR) / ".." / "shared" / "corpus" / "qif";
}

// Every sample of the QIF corpus validates against the application schema, offline (the
// corpus's catalog maps the one remote schema it imports to its local copy), and a
// sample with a misspelt element does not.
TEST_F(XmlToolTest, QifSamplesValidateAndADamagedOneFails) {
    fs::path root = qifCorpus();
    std::string xsd = (root / "QIFApplications" / "QIFDocument.xsd").string();
    if (!fs::exists(xsd))
        GTEST_SKIP() << "no QIF corpus at " << root << " (set VQK_QIF_CORPUS)";
    std::string savedCatalog;
    bool hadCatalog = vq::platform::getEnv("XML_CATALOG_FILES", savedCatalog);
    vq::platform::setEnv("XML_CATALOG_FILES", (root / "catalog.xml").string().c_str());

    std::vector<std::string> samples;
    for (const auto& e : fs::directory_iterator(root / "samples"))
        samples.push_back(e.path().string());
    std::sort(samples.begin(), samples.end());
    ASSERT_FALSE(samples.empty());
    std::vector<char> valid(samples.size(), 0);
    std::atomic<size_t> next{0};
    auto worker = [&] {
        for (size_t i; (i = next++) < samples.size();)
            valid[i] = vq::xmlValidate(samples[i].c_str(), xsd.c_str(), false);
    };
    std::thread other(worker);
    worker();
    other.join();
    for (size_t i = 0; i < samples.size(); ++i)
        EXPECT_TRUE(valid[i]) << samples[i];

    std::string text = readFile(samples[0]);
    size_t at = text.find("<QPId>");
    ASSERT_NE(std::string::npos, at) << samples[0];
    text.replace(at, 6, "<QPid>");
    size_t end = text.find("</QPId>", at);
    ASSERT_NE(std::string::npos, end);
    text.replace(end, 7, "</QPid>");
    std::string damaged = m_dir + "/damaged.QIF";
    writeFile(damaged, text);
    EXPECT_FALSE(vq::xmlValidate(damaged.c_str(), xsd.c_str(), false));

    vq::platform::setEnv("XML_CATALOG_FILES", hadCatalog ? savedCatalog.c_str() : nullptr);
    std::printf("QIF corpus: %zu samples validated, %zu failed; damaged sample rejected\n", samples.size(),
                (size_t)std::count(valid.begin(), valid.end(), 0));
}

} // namespace
