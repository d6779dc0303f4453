// Printing through substitute print commands on PATH that record how they were called.
#include "tool_process.h"

#include "vqk/jobs/process.h"
#include "vqk/platform/environment.h"
#include "vqk/platform/process.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

class PrintTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (*vq::platform::executableSuffix())
            GTEST_SKIP() << "printing goes through the system's print service here";
        m_dir = freshTempDir(::testing::UnitTest::GetInstance()->current_test_info()->name());
        ASSERT_FALSE(m_dir.empty());
        m_log = m_dir + "/calls.txt";
        // Each command writes its name and arguments, '|'-separated, one call a line.
        std::string record = "#!/bin/sh\nprintf '%s' \"$(basename \"$0\")\" >> '" + m_log +
                             "'\nfor a in \"$@\"; do printf '|%s' \"$a\" >> '" + m_log + "'; done\necho >> '" +
                             m_log + "'\n";
        install("lp", record);
        install("lpoptions", record);
        install("lpstat", record + "case \"$1\" in\n"
                                   "  -d) echo 'system default destination: Office';;\n"
                                   "  -p) [ \"$2\" = Office ] || [ \"$2\" = 'CutePDF Writer' ];;\n"
                                   "esac\n");
        vq::platform::getEnv("PATH", m_path);
        vq::platform::setEnv("PATH", (m_dir + ":" + m_path).c_str());
    }
    void TearDown() override {
        if (!m_path.empty())
            vq::platform::setEnv("PATH", m_path.c_str());
    }
    void install(const char* name, const std::string& script) {
        std::string path = m_dir + "/" + name;
        writeFile(path, script);
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    }
    std::string m_dir, m_log, m_path;
};

TEST_F(PrintTest, PdfPrintingMakesThePdfPrinterTheDefaultThenPrints) {
    std::string html = m_dir + "/my report.html";
    writeFile(html, "<html/>");
    vq::printHtmlToPdf(html.c_str());
    vq::printHtml(html.c_str());
    EXPECT_EQ("lpstat|-d\nlpoptions|-d|CutePDF Writer\nlp|" + html + "\nlp|" + html + "\n", readFile(m_log));
}

TEST_F(PrintTest, FindPrinterAsksForThatPrinterOnly) {
    char office[] = "Office", other[] = "Nowhere", empty[] = "";
    EXPECT_TRUE(vq::findPrinter(office));
    EXPECT_FALSE(vq::findPrinter(other));
    EXPECT_FALSE(vq::findPrinter(empty));
    EXPECT_FALSE(vq::findPrinter(nullptr));
    EXPECT_EQ("lpstat|-p|Office\nlpstat|-p|Nowhere\n", readFile(m_log));
}

TEST_F(PrintTest, NamesThatCannotBePrintedAreDroppedSilently) {
    vq::printHtml(nullptr);
    vq::printHtml("");
    vq::printHtml("say \"cheese\".html");
    EXPECT_FALSE(fileExists(m_log));
    // Without the print commands nothing runs and nothing fails loudly.
    vq::platform::setEnv("PATH", "/nonexistent");
    vq::printHtmlToPdf((m_dir + "/x.html").c_str());
    char office[] = "Office";
    EXPECT_FALSE(vq::findPrinter(office));
}

} // namespace
