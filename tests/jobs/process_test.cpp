// Child processes, run against this test program playing the child (process_child.h).
#include "process_child.h"
#include "tool_process.h"

#include "vqk/diagnostics/log_workflow.h"
#include "vqk/jobs/process.h"
#include "vqk/platform/environment.h"
#include "vqk/platform/process.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point t0) {
    return std::chrono::duration<double>(Clock::now() - t0).count();
}

class ProcessTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_dir = freshTempDir(::testing::UnitTest::GetInstance()->current_test_info()->name());
        ASSERT_FALSE(m_dir.empty());
    }
    // The workflow-log lines this process wrote.
    std::string ownLogLines() {
        std::string all = readFile(vq::CLogWorkflow::fileName().str()), own;
        std::string pid = "pid=\"" + std::to_string(vq::platform::processId()) + "\"";
        size_t begin = 0;
        while (begin < all.size()) {
            size_t end = all.find('\n', begin);
            std::string line = all.substr(begin, end == std::string::npos ? end : end - begin + 1);
            if (line.find(pid) != std::string::npos)
                own += line;
            begin = end == std::string::npos ? all.size() : end + 1;
        }
        return own;
    }
    std::string m_dir;
};

TEST_F(ProcessTest, ExitCodesComeBackAsTheChildLeft) {
    struct {
        const char* act;
        unsigned long code;
    } cases[] = {{"exit 0", 0}, {"exit 3", 3}, {"exit 255", 255}, {"sleep 10", 0}};
    for (const auto& c : cases)
        EXPECT_EQ(c.code, vq::startProcess(childCommand(c.act).c_str(), true, -1, false, 0)) << c.act;
    // A timed wait that the child beats gives its own code too.
    EXPECT_EQ(7u, vq::startProcess(childCommand("exit 7").c_str(), true, 30, true, vq::kNoWindow));
    // An abort: 128 + SIGABRT where signals end programs, the runtime's 3 elsewhere.
    unsigned long crash = vq::startProcess(childCommand("crash").c_str(), true, 30, true, 0);
    EXPECT_TRUE(crash == 134 || crash == 3) << crash;
    EXPECT_NE(std::string::npos, ownLogLines().find("msg=\"startProcess() exit = 7, peak memory usage = "));
}

TEST_F(ProcessTest, CommandLinesThatStartNothingReportNotStarted) {
    std::string dir = "\"" + m_dir + "\"";
    const char* cases[] = {"", "   ", "no-such-program-vqk", "\"/no/such/folder/tool\" a",
                           dir.c_str(), "\"unbalanced"};
    for (const char* cmd : cases)
        EXPECT_EQ(vq::kProcessNotStarted, vq::startProcess(cmd, true, -1, true, 0)) << cmd;
    EXPECT_EQ(vq::kProcessNotStarted, vq::startProcess((const char*)nullptr, true, 1, false, 0));
    EXPECT_EQ(vq::kProcessNotStarted, vq::startProcess((const wchar_t*)nullptr, false, 1, false, 0));
    std::string log = ownLogLines();
    size_t at = log.find("msg=\"startProcess error: '");
    ASSERT_NE(std::string::npos, at) << log;
    EXPECT_NE('\'', log[at + 26]) << "the system's text is missing";
}

TEST_F(ProcessTest, TimeLimitKillsTheChild) {
    auto t0 = Clock::now();
    EXPECT_EQ(vq::kProcessTimedOut, vq::startProcess(childCommand("sleep 30000").c_str(), true, 1, true, 0));
    double s = secondsSince(t0);
    EXPECT_GE(s, 0.9);
    EXPECT_LT(s, 3.0);

    t0 = Clock::now();
    EXPECT_EQ(vq::kProcessTimedOut, vq::startProcess(childCommand("sleep 30000").c_str(), true, 0, true, 0));
    EXPECT_LT(secondsSince(t0), 2.0);
}

TEST_F(ProcessTest, NoWaitReturnsZeroAtOnce) {
    auto t0 = Clock::now();
    EXPECT_EQ(0u, vq::startProcess(childCommand("sleep 3000").c_str(), false, -1, true, 0));
    EXPECT_EQ(0u, vq::startProcess(childCommand("exit 9").c_str(), false, 0, true, 0));
    EXPECT_LT(secondsSince(t0), 2.0);
}

TEST_F(ProcessTest, ArgumentsArriveSplitByTheWindowsRules) {
    std::string out = m_dir + "/args.txt";
    std::string cmd = childCommand("args \"" + out + "\" plain \"two words\" a\\\\\\\"b \"x\"\"y\" \"\" tab\\end");
    ASSERT_EQ(0u, vq::startProcess(cmd.c_str(), true, 30, true, 0));
    EXPECT_EQ("plain\ntwo words\na\\\"b\nx\"y\n\ntab\\end\n", readFile(out));
}

TEST(ProcessCommandLine, SplitsLikeWindowsPrograms) {
    struct {
        const wchar_t* line;
        std::vector<std::wstring> args;
    } cases[] = {
        {L"", {}},
        {L" \t ", {}},
        {L"prog", {L"prog"}},
        {L"\"C:\\Program Files\\t.exe\" a", {L"C:\\Program Files\\t.exe", L"a"}},
        {L"C:\\dir\\\"x y\"z w", {L"C:\\dir\\x yz", L"w"}},
        {L"p a\\\\b \\\\\"c d\" e", {L"p", L"a\\\\b", L"\\c d", L"e"}},
        {L"p \\\"q a\\\\\\\"b", {L"p", L"\"q", L"a\\\"b"}},
        {L"p \"a\"\"b\" \"\" \"open", {L"p", L"a\"b", L"", L"open"}},
        {L"p\ta  \t b", {L"p", L"a", L"b"}},
    };
    for (const auto& c : cases) {
        std::vector<std::wstring> got = vq::platform::processSplitCommandLine(c.line);
        EXPECT_EQ(c.args, got) << std::string(c.line, c.line + wcslen(c.line));
    }
    EXPECT_TRUE(vq::platform::processSplitCommandLine(nullptr).empty());
}

// A job's children die with the process that made the job, however it ends; the heart
// beats in the file stop.
TEST_F(ProcessTest, JobChildrenDieWithTheirOwner) {
    if (VQK_TARGET_WINDOWS && std::getenv("WINEPREFIX"))
        GTEST_SKIP() << "Wine does not end a job's processes when its last handle closes";
    struct {
        const char* act;
        int timeoutSec;  // the owner is killed after it, or ends on its own first
        const char* ownerSleepMs;
    } cases[] = {{"job-beat", 6, "60000"}, {"job-beat", -1, "0"}, {"job-grandchild-beat", -1, "0"}};
    int i = 0;
    for (const auto& c : cases) {
        std::string beats = m_dir + "/beats" + std::to_string(i++);
        std::string cmd = childCommand(std::string(c.act) + " \"" + beats + "\" " + c.ownerSleepMs);
        vq::startProcess(cmd.c_str(), true, c.timeoutSec, true, 0);
        std::this_thread::sleep_for(std::chrono::milliseconds(400));
        size_t after = readFile(beats).size();
        std::this_thread::sleep_for(std::chrono::milliseconds(600));
        EXPECT_GT(after, 0u) << c.act << ": the child never ran";
        EXPECT_EQ(after, readFile(beats).size()) << c.act << ": the child outlived its owner";
    }
}

TEST_F(ProcessTest, FindProcessIgnoresCase) {
    std::string exe = vq::platform::executablePath();
    std::string name = exe.substr(exe.find_last_of("/\\") + 1);
    for (char& ch : name)
        ch = (char)std::toupper((unsigned char)ch);
    void* p = vq::findProcess(name.c_str());
    EXPECT_NE(nullptr, p) << name;
    vq::closeProcess(p);
    std::wstring wide(name.begin(), name.end());
    p = vq::findProcess(wide.c_str());
    EXPECT_NE(nullptr, p);
    vq::closeProcess(p);
    EXPECT_EQ(nullptr, vq::findProcess("no-such-program-vqk"));
    EXPECT_EQ(nullptr, vq::findProcess((const char*)nullptr));
    EXPECT_FALSE(vq::assignToJob(nullptr, "orv_child_job_1"));
}

TEST(ProcessMemory, PeakCoversWhatWasTouched) {
    std::vector<char> block(64 << 20, 1);
    vq::uint64 priv = 0, peak = 0;
    vq::getMemInfo(priv, peak);
    // Private bytes are left alone: some systems (Wine) always report 0.
    EXPECT_GE(peak, (vq::uint64)block.size());
}

} // namespace
