// The workflow log: record forms, levels, tags, the size restart, and child processes
// that continue the parent's file and indentation. Child processes are this test
// program itself, in a role naming what the child writes.
#include "self_child.h"

#include "support/xml_referee.h"
#include "vqk/diagnostics/log_workflow.h"
#include "vqk/platform/environment.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace {

using vq::CLogWorkflow;

const char* const kTime = R"(\d{4}\.\d\d\.\d\d \d\d:\d\d:\d\d)";

std::string selfPath() { return vq::platform::executablePath(); }

std::string testFolder() {
    const char* tmp = std::getenv("VQK_TEST_TMP");
    std::string dir = std::string(tmp && *tmp ? tmp : VQK_BINARY_DIR "/test_tmp") + "/log_workflow";
    std::error_code ec;
    std::filesystem::create_directories(dir, ec);
    return dir;
}

int leadingTabs(const std::string& line) {
    int n = 0;
    while (n < int(line.size()) && line[size_t(n)] == '\t')
        ++n;
    return n;
}

std::string escaped(const std::string& text) {
    std::string out;
    for (char c : text) {
        if (std::string("\\^$.|?*+()[]{}").find(c) != std::string::npos)
            out += '\\';
        out += c;
    }
    return out;
}

std::string shortMsg(int pid, const std::string& text) {
    return std::string(R"(<msg t=")") + kTime + R"(" pid=")" + std::to_string(pid) + R"(" msg=")" + text +
           R"("/>)";
}

std::string firstMsg(int pid, const std::string& text) {
    return std::string(R"(<msg t=")") + kTime + R"(" pid=")" + std::to_string(pid) +
           R"(" cpu="x64" module=")" + escaped(selfPath()) + R"(" msg=")" + text + R"("/>)";
}

bool matches(const std::string& line, const std::string& pattern) {
    return std::regex_match(line.substr(size_t(leadingTabs(line))), std::regex(pattern));
}

// Started as a child of the tests below, the program writes these records.
void writeTwo() {
    CLogWorkflow::msg(5, "first %i", 1);
    CLogWorkflow::msg(5, "second \"quoted\"");
}
void writeNested() {
    CLogWorkflow::msg(5, "child at the parent's depth");
    CLogWorkflow::CTag step(5, "child step", "");
    CLogWorkflow::msg(5, "inside the child's step");
}
SELF_CHILD_ROLE("log-two", writeTwo);
SELF_CHILD_ROLE("log-nested", writeNested);

// Runs this program as a child in `role`; its pid once it has ended well, else -1.
int runChild(const char* role) {
    SChildEnd end = runSelf(role, {});
    return end.exited && end.code == 0 ? end.pid : -1;
}

class LogWorkflow : public ::testing::Test {
protected:
    void SetUp() override {
        m_dir = testFolder();
        vq::platform::setEnv("TEMP", m_dir.c_str());
        CLogWorkflow::setMinLevel(0);
        CLogWorkflow::setPrefix(::testing::UnitTest::GetInstance()->current_test_info()->name());
        m_file = CLogWorkflow::fileName().str();
        std::remove(m_file.c_str());
    }
    void TearDown() override { CLogWorkflow::setMinLevel(0); }

    std::string m_dir;
    std::string m_file;
};

TEST_F(LogWorkflow, FileNameFollowsTheTemplateAndThePrefix) {
    const std::string dir = m_dir + (VQK_TARGET_WINDOWS ? '\\' : '/');
    vq::CStr name;
    CLogWorkflow::setPrefix("my tool/1<x>");
    EXPECT_EQ(vq::CStr("my_tool_1_x_"), CLogWorkflow::prefix());
    EXPECT_STREQ("my_tool_1_x_", std::getenv("_ORV_LOGPREFIX"));
    CLogWorkflow::genLogName(name, "workflow.~.xml");
    EXPECT_EQ(dir + "workflow.my_tool_1_x_.xml", name.str());
    EXPECT_EQ(name, CLogWorkflow::fileName());

    CLogWorkflow::setPrefix("");
    CLogWorkflow::genLogName(name, "workflow.~.xml");
    EXPECT_EQ(dir + "workflow.xml", name.str());
    CLogWorkflow::genLogName(name, "trace-~");
    EXPECT_EQ(dir + "trace-", name.str());
    CLogWorkflow::genLogName(name, "log.~");
    EXPECT_EQ(dir + "log", name.str());
    CLogWorkflow::genLogName(name, "log.~x"); // the point before goes when none follows
    EXPECT_EQ(dir + "logx", name.str());
}

TEST_F(LogWorkflow, MessagesAreCutAndLoseTheirDoubleQuotes) {
    CLogWorkflow::msg(5, "warm-up");
    CLogWorkflow::msg(5, "say \"%s\" %i times", "hi", 3);
    const std::string longText(5000, 'a');
    CLogWorkflow::msg(3, "%s", longText.c_str());
    // A two-byte character across the cut is dropped whole.
    const std::string acrossCut = std::string(3998, 'b') + "\xc3\xa9" + "tail";
    CLogWorkflow::msg(3, "%s", acrossCut.c_str());

    std::vector<std::string> lines = readLines(m_file);
    ASSERT_EQ(4u, lines.size());
    const int pid = vq::platform::processId();
    EXPECT_TRUE(matches(lines[1], shortMsg(pid, "say 'hi' 3 times"))) << lines[1];
    EXPECT_TRUE(matches(lines[2], shortMsg(pid, std::string(3999, 'a'))));
    EXPECT_TRUE(matches(lines[3], shortMsg(pid, std::string(3998, 'b'))));
}

TEST_F(LogWorkflow, RecordsBelowTheMinimumLevelAreDropped) {
    CLogWorkflow::setMinLevel(4);
    EXPECT_EQ(4, CLogWorkflow::minLevel());
    const int depth = CLogWorkflow::indent();
    CLogWorkflow::msg(3, "dropped");
    {
        CLogWorkflow::CTag quiet(3, "quiet", "dropped");
        EXPECT_EQ(depth, CLogWorkflow::indent());
        CLogWorkflow::msg(4, "kept");
    }
    std::vector<std::string> lines = readLines(m_file);
    ASSERT_EQ(1u, lines.size());
    EXPECT_NE(std::string::npos, lines[0].find("msg=\"kept\""));
    EXPECT_EQ(depth, leadingTabs(lines[0]));
}

TEST_F(LogWorkflow, TagsNestAndIndentWhatIsWrittenInside) {
    const int depth = CLogWorkflow::indent();
    const int pid = vq::platform::processId();
    {
        CLogWorkflow::CTag outer(5, "outer", "o \"q\"");
        EXPECT_EQ(depth + 1, CLogWorkflow::indent());
        EXPECT_EQ(std::to_string(depth + 1), std::getenv("_ORV_LOGINDENT"));
        CLogWorkflow::msg(5, "in outer");
        {
            CLogWorkflow::CTag inner(5, "inner", "");
            CLogWorkflow::msg(5, "in inner");
        }
    }
    EXPECT_EQ(depth, CLogWorkflow::indent());
    EXPECT_EQ(std::to_string(depth), std::getenv("_ORV_LOGINDENT"));

    std::vector<std::string> lines = readLines(m_file);
    ASSERT_EQ(8u, lines.size());
    const std::string head = std::string(R"(<(tag|end) t=")") + kTime + R"(" pid=")" + std::to_string(pid) +
                             R"("( cpu="x64" module="[^"]*")?)";
    EXPECT_TRUE(matches(lines[0], head + R"( name="outer" text="o 'q'">)")) << lines[0];
    EXPECT_TRUE(matches(lines[1], shortMsg(pid, "in outer"))) << lines[1];
    EXPECT_TRUE(matches(lines[2], head + R"( name="inner" text="">)")) << lines[2];
    EXPECT_TRUE(matches(lines[3], shortMsg(pid, "in inner"))) << lines[3];
    EXPECT_TRUE(matches(lines[4], head + R"( name="inner" sec="\d+\.\d{3}"/>)")) << lines[4];
    EXPECT_EQ("</tag>", lines[5].substr(size_t(leadingTabs(lines[5]))));
    EXPECT_TRUE(matches(lines[6], head + R"( name="outer" sec="\d+\.\d{3}"/>)")) << lines[6];
    const int expectedTabs[] = {0, 1, 1, 2, 2, 1, 1, 0};
    for (size_t i = 0; i < 8; ++i)
        EXPECT_EQ(depth + expectedTabs[i], leadingTabs(lines[i])) << i;

    // The records of a closed tag form one element.
    std::string doc = "<log>";
    for (const std::string& line : lines)
        doc += line + "\n";
    doc += "</log>";
    EXPECT_TRUE(parseXml(doc)) << doc;
}

TEST_F(LogWorkflow, AChildContinuesTheParentsFileAndIndentation) {
    int pid = 0;
    int depth = 0;
    {
        CLogWorkflow::CTag parent(5, "parent", "starts a child");
        depth = CLogWorkflow::indent();
        pid = runChild("log-nested");
    }
    ASSERT_GT(pid, 0);
    std::vector<std::string> lines = readLines(m_file);
    ASSERT_EQ(8u, lines.size());
    // The child writes between the parent's opening and closing records.
    EXPECT_TRUE(matches(lines[1], firstMsg(pid, "child at the parent's depth"))) << lines[1];
    EXPECT_EQ(depth, leadingTabs(lines[1]));
    EXPECT_NE(std::string::npos, lines[2].find("name=\"child step\""));
    EXPECT_EQ(depth, leadingTabs(lines[2]));
    EXPECT_TRUE(matches(lines[3], shortMsg(pid, "inside the child's step"))) << lines[3];
    EXPECT_EQ(depth + 1, leadingTabs(lines[3]));
    EXPECT_EQ(depth, leadingTabs(lines[5]));
    EXPECT_EQ("</tag>", lines[5].substr(size_t(depth)));
    // The child's own tag does not change the parent's depth.
    EXPECT_EQ(depth - 1, leadingTabs(lines[7]));
}

TEST_F(LogWorkflow, AChildWithoutAPrefixNamesTheLogAfterItsProgram) {
    const char* inherited = std::getenv("_ORV_LOGINDENT");
    const std::string savedIndent = inherited ? inherited : "";
    vq::platform::setEnv("_ORV_LOGPREFIX", nullptr);
    vq::platform::setEnv("_ORV_LOGINDENT", "x3");
    std::string program = std::filesystem::path(selfPath()).stem().string();
    std::string own = m_dir + "/workflow." + program + ".xml";
    std::remove(own.c_str());
    int pid = runChild("log-two");
    vq::platform::setEnv("_ORV_LOGINDENT", inherited ? savedIndent.c_str() : nullptr);
    ASSERT_GT(pid, 0);
    std::vector<std::string> lines = readLines(own);
    ASSERT_EQ(2u, lines.size());
    EXPECT_EQ(0, leadingTabs(lines[0])) << "a malformed depth counts as none";
    // The first record of a process names its program; later ones do not.
    EXPECT_TRUE(matches(lines[0], firstMsg(pid, "first 1"))) << lines[0];
    EXPECT_TRUE(matches(lines[1], shortMsg(pid, "second 'quoted'"))) << lines[1];
    std::remove(own.c_str());
}

// A file one byte short of the limit is appended to (the old text and the record share
// its one line); a file at the limit is started afresh by the next record.
TEST_F(LogWorkflow, AFullFileIsStartedAfresh) {
    for (long size : {CLogWorkflow::kRestartSize - 1, CLogWorkflow::kRestartSize}) {
        {
            std::ofstream fill(m_file, std::ios::binary | std::ios::trunc);
            fill << std::string(size_t(size), 'x');
        }
        CLogWorkflow::msg(5, "after %ld", size);
        std::vector<std::string> lines = readLines(m_file);
        ASSERT_EQ(1u, lines.size());
        EXPECT_NE(std::string::npos, lines[0].find("msg=\"after " + std::to_string(size) + "\""));
        EXPECT_EQ(size < CLogWorkflow::kRestartSize ? 'x' : '<', lines[0][0]) << "appended, or the old text is gone";
    }
}

} // namespace
