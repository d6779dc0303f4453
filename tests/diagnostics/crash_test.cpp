// Crash records: a child process (this program again) that really faults, with the
// handler installed, must leave a dump naming the signal and the faulting function, a
// record in the assertion log, and the job_log it had written so far; and then still
// die of its signal. writeMiniDump on request and its failure to create a file run
// in-process.
#include "vqk/diagnostics/assert.h"
#include "vqk/platform/environment.h"
#include "vqk/xml/xml_out.h"
#include "vqk/xml/xml_out_elem.h"

#include "self_child.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <regex>
#include <string>

namespace {

using vq::CAssert;

// Where the child puts its dump, from its parent.
const char* const kDumpDirVar = "CRASH_TEST_DUMP_DIR";

int g_zero = 0;

// The sanitizers must not catch the fault first: the handler under test is to see it.
__attribute__((noinline, no_sanitize("undefined"))) int faultInHelper(int how) {
    volatile int* volatile nowhere = nullptr;
    switch (how) {
    case SIGSEGV: *nowhere = 42; break;
    case SIGFPE: return 7 / *const_cast<volatile int*>(&g_zero);
    case SIGABRT: std::abort();
    }
    return how;
}

void crashWithJobLog(int how) {
    CAssert::installCrashHandler(std::getenv(kDumpDirVar));
    vq::xout.attach(stdout, false);
    vq::CXmlOutElem root(vq::xout, "job_log");
    {
        vq::CXmlOutElem job(vq::xout, "job");
        vq::xout.attrStr("name", "written before the crash");
    }
    std::exit(faultInHelper(how) == how ? 3 : 4);
}
void crashSegv() { crashWithJobLog(SIGSEGV); }
void crashFpe() { crashWithJobLog(SIGFPE); }
void crashAbort() { crashWithJobLog(SIGABRT); }
SELF_CHILD_ROLE("crash-segv", crashSegv);
SELF_CHILD_ROLE("crash-fpe", crashFpe);
SELF_CHILD_ROLE("crash-abort", crashAbort);

// What the library puts between a folder and a file name.
const char kSeparator = VQK_TARGET_WINDOWS ? '\\' : '/';

std::vector<std::string> dumpsIn(const std::string& dir) {
    std::vector<std::string> found;
    if (DIR* d = opendir(dir.c_str())) {
        while (dirent* e = readdir(d))
            if (std::regex_match(e->d_name, std::regex(R"(\d\d_[A-Z][a-z]+_\d\d_\d\d\.dmp)")))
                found.push_back(dir + kSeparator + e->d_name);
        closedir(d);
    }
    return found;
}

class Crash : public ::testing::Test {
protected:
    void SetUp() override {
        m_dir = freshFolder(::testing::UnitTest::GetInstance()->current_test_info()->name());
        ASSERT_FALSE(m_dir.empty());
        m_log = m_dir + "/asserts.log";
    }
    std::string m_dir;
    std::string m_log;
};

TEST_F(Crash, FatalSignalLeavesDumpLogRecordAndJobLog) {
    struct SCase {
        const char* role;
        int signal;
        const char* signalLine;
    };
    const SCase cases[] = {
        {"crash-segv", SIGSEGV, "signal: 11 SIGSEGV, code 1 (address not mapped)\nfault address: 0x0000000000000000\n"},
        {"crash-fpe", SIGFPE, "signal: 8 SIGFPE, code 1 (integer divide by zero)\n"},
        {"crash-abort", SIGABRT, "signal: 6 SIGABRT, code -6 (sent by a process)\n"},
    };
    for (const SCase& c : cases) {
        // Windows' abort() ends the process without an exception: nothing to catch.
        if (VQK_TARGET_WINDOWS && c.signal == SIGABRT)
            continue;
        SCOPED_TRACE(c.role);
        const std::string dumpDir = freshFolder(std::string("Crash_") + c.role);
        const std::string out = dumpDir + "/job_log.xml";
        SChildEnd end = runSelf(c.role,
                                {{"_ORV_ASSERTS", m_log.c_str()},
                                 {"_ORV_ASSERTS_FIRST_OUT", nullptr},
                                 {kDumpDirVar, dumpDir.c_str()}},
                                out);
#if defined(__SANITIZE_ADDRESS__)
        // The sanitizer's own handler, which ours hands the fault on to, ends the process
        // after its report as its options say: an exit code or an abort.
        EXPECT_TRUE(end.signal != 0 || (end.exited && end.code != 0 && end.code != 3));
#else
        EXPECT_EQ(end.signal, c.signal);
#endif
        EXPECT_NE(readText(out).find("<job name=\"written before the crash\"/>"), std::string::npos)
            << readText(out);

        auto dumps = dumpsIn(dumpDir);
        ASSERT_EQ(dumps.size(), 1u);
        const std::string dump = readText(dumps[0]);
        const std::string log = readText(m_log);
        EXPECT_NE(log.find("<writeMiniDump>\nvqk Version: "), std::string::npos) << log;
        EXPECT_NE(log.find("Save dump file to '" + dumps[0] + "'\n</writeMiniDump>\n"), std::string::npos) << log;
        if (VQK_TARGET_WINDOWS) {
            EXPECT_EQ(dump.substr(0, 4), "MDMP"); // the system's minidump
            continue;
        }
        EXPECT_NE(dump.find(c.signalLine), std::string::npos) << dump;
        // The innermost frame is the faulting function itself, with its line.
        EXPECT_TRUE(std::regex_search(dump, std::regex(R"(stack:\n    #0 .*faultInHelper\(int\).* at \S*crash_test\.cpp:\d+ \[vqk_diagnostics_tests\+0x[0-9a-f]+\]\n)")) ||
                    (c.signal == SIGABRT &&
                     std::regex_search(dump, std::regex(R"(\n    #\d+ .*faultInHelper\(int\).* at \S*crash_test\.cpp:\d+)"))))
            << dump;
        // Line by line: a pattern spanning the whole map recurses once per line in
        // std::regex, and a sanitizer's map has thousands.
        const size_t map = dump.find("memory map:\n");
        ASSERT_NE(map, std::string::npos) << dump.substr(0, 4000);
        EXPECT_TRUE(std::regex_search(dump.substr(map), std::regex(R"(\n[0-9a-f]+-[0-9a-f]+ r-xp [^\n]*vqk_diagnostics_tests\n)")))
            << dump.substr(0, 4000);
    }
}

TEST_F(Crash, DumpOnRequestAndWhereNoFileCanBeMade) {
    vq::platform::setEnv("_ORV_ASSERTS_FIRST_OUT", "0");
    CAssert::setLogName(m_log.c_str());
    const std::string missing = m_dir + "/no/such/folder";
    const int noFolder = VQK_TARGET_WINDOWS ? 3 : ENOENT; // ERROR_PATH_NOT_FOUND there
    EXPECT_EQ(CAssert::writeMiniDump(nullptr, missing.c_str()), noFolder);
    EXPECT_EQ(vq::logException(0xC0000005u, nullptr, m_dir.c_str()), 1);

    const std::string log = readText(m_log);
    const std::string failed = "Failed to create dump file '" + missing + kSeparator;
    const size_t at = log.find(failed);
    ASSERT_NE(at, std::string::npos) << log;
    EXPECT_TRUE(std::regex_search(log.substr(at + failed.size()), std::regex(R"(^\d\d_[A-Z][a-z]+_\d\d_\d\d\.dmp' \(error )" + std::to_string(noFolder) + R"(\)\n</writeMiniDump>)")))
        << log;
    auto dumps = dumpsIn(m_dir);
    ASSERT_EQ(dumps.size(), 1u);
    const std::string dump = readText(dumps[0]);
    if (VQK_TARGET_WINDOWS) {
        EXPECT_EQ(dump.substr(0, 4), "MDMP");
        return;
    }
    EXPECT_NE(dump.find("signal: none (written on request)\n"), std::string::npos) << dump;
    EXPECT_TRUE(std::regex_search(dump, std::regex(R"(Crash_DumpOnRequestAndWhereNoFileCanBeMade_Test::TestBody\(\) at \S*crash_test\.cpp:\d+)")))
        << dump;
}

} // namespace
