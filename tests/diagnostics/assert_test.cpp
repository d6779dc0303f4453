// The assertion facility: record forms, levels and modes, the record cap, where the log
// goes, the first-out rule across processes, and the call stack of a level-5 record.
// Behaviour that depends on a fresh process runs in a child (this program again).
#include "vqk/diagnostics/assert.h"
#include "vqk/platform/environment.h"

#include "self_child.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <regex>
#include <string>

namespace {

using vq::CAssert;

const char* const kTime = R"(\d\d:\d\d:\d\d)";

void oneAssert() { CAssert::setMode(vq::eAssertLog), CAssert::ass("c.cpp", 1, "child", "x", nullptr, 3); }
void assertsPastTheCap() {
    CAssert::setMode(vq::eAssertLog);
    for (int i = 0; i < 1003; ++i)
        CAssert::ass("c.cpp", i, "child", "x", nullptr, 3);
    std::printf("%d", CAssert::nAssert());
}
void breakMode() {
    CAssert::setMode(vq::eAssertBreak);
    VQ_ASSERT(1 + 1 == 3, 3);
}
SELF_CHILD_ROLE("assert-one", oneAssert);
SELF_CHILD_ROLE("assert-cap", assertsPastTheCap);
SELF_CHILD_ROLE("assert-break", breakMode);

class Assert : public ::testing::Test {
protected:
    void SetUp() override {
        m_dir = freshFolder(::testing::UnitTest::GetInstance()->current_test_info()->name());
        ASSERT_FALSE(m_dir.empty());
        m_log = m_dir + "/asserts.log";
        vq::platform::setEnv("_ORV_ASSERTS_FIRST_OUT", nullptr);
        CAssert::setFirstOut(true);
        CAssert::setLogName(m_log.c_str());
        CAssert::setMode(vq::eAssertLog);
        CAssert::setMinLevel(3);
    }
    void TearDown() override { CAssert::setMode(vq::eAssertOff); }

    std::string m_dir;
    std::string m_log;
};

TEST_F(Assert, RecordsQuoteFreeAttributesAndSkipLowLevels) {
    const int before = CAssert::nAssert();
    int evaluated = 0;
    VQ_ASSERT(++evaluated == 0, 3);
    CAssert::ass("a.cpp", 7, "f", "s == \"a\"", "bad \"b\"", 4);
    CAssert::ass("a.cpp", 8, "f", "low", nullptr, 2);
    VQ_ASSERT(evaluated == 1, 3);

    EXPECT_EQ(evaluated, 1);
    EXPECT_EQ(CAssert::nAssert(), before + 2);
    auto lines = readLines(m_log);
    ASSERT_EQ(lines.size(), 2u);
    std::string head = std::string("<assert time=\"") + kTime + "\" ";
    EXPECT_TRUE(std::regex_match(
        lines[0], std::regex(head + "file=\".*assert_test\\.cpp\" line=\"\\d+\" func=\"TestBody\" "
                                    "expr=\"\\+\\+evaluated == 0\" level=\"3\" id=\"" +
                             std::to_string(before + 1) + "\"/>")))
        << lines[0];
    EXPECT_TRUE(std::regex_match(lines[1], std::regex(head + "file=\"a.cpp\" line=\"7\" func=\"f\" "
                                                             "expr=\"s ==  a \" msg=\"bad  b \" level=\"4\" id=\"" +
                                                             std::to_string(before + 2) + "\"/>")))
        << lines[1];
}

TEST_F(Assert, OtherModesAndRecordsFollowTheMode) {
    const int before = CAssert::nAssert();
    CAssert::setMode(vq::eAssertOff);
    CAssert::ass("a.cpp", 1, "f", "off", nullptr, 5);
    CAssert::logStr("<off/>\n");
    CAssert::logModelName("off");
    EXPECT_EQ(CAssert::nAssert(), before + 1);
    EXPECT_FALSE(std::ifstream(m_log).good());

    CAssert::setMode(vq::eAssertLog);
    EXPECT_EQ(CAssert::getMode(), vq::eAssertLog);
    CAssert::logStr("<free/>\n");
    CAssert::logModelName("part.prt");
    EXPECT_EQ(readText(m_log), "<free/>\n<model name=\"part.prt\"/>\n");

    SChildEnd end = runSelf("assert-break", {});
    EXPECT_EQ(end.signal, kTrapSignal);
}

TEST_F(Assert, FirstProcessEmptiesTheLogAndLaterOnesAppend) {
    { std::ofstream(m_log) << "left from an earlier run\n"; }
    CAssert::ass("a.cpp", 1, "f", "first", nullptr, 3);
    const char* flag = std::getenv("_ORV_ASSERTS_FIRST_OUT");
    ASSERT_NE(flag, nullptr);
    EXPECT_STREQ(flag, "0");
    ASSERT_EQ(runSelf("assert-one", {}).code, 0);
    CAssert::ass("a.cpp", 2, "f", "third", nullptr, 3);
    auto lines = readLines(m_log);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_NE(lines[0].find("expr=\"first\""), std::string::npos);
    EXPECT_NE(lines[1].find("func=\"child\""), std::string::npos);
    EXPECT_NE(lines[2].find("expr=\"third\""), std::string::npos);

    // A new process tree starts the file afresh.
    ASSERT_EQ(runSelf("assert-one", {{"_ORV_ASSERTS_FIRST_OUT", nullptr}}).code, 0);
    EXPECT_EQ(readLines(m_log).size(), 1u);
}

TEST_F(Assert, ChildFindsTheLogThroughTheEnvironment) {
    struct SCase {
        const char* what;
        std::vector<std::pair<std::string, const char*>> env;
        std::string expected;
    };
    const std::string named = m_dir + "/named.log";
    const SCase cases[] = {
        {"_ORV_ASSERTS", {{"_ORV_ASSERTS", named.c_str()}}, named},
        {"temporary folder", {{"_ORV_ASSERTS", nullptr}, {"TEMP", m_dir.c_str()}}, m_log},
        {"empty _ORV_ASSERTS", {{"_ORV_ASSERTS", ""}, {"TEMP", m_dir.c_str()}}, m_log},
    };
    for (const SCase& c : cases) {
        std::remove(named.c_str());
        std::remove(m_log.c_str());
        auto env = c.env;
        env.push_back({"_ORV_ASSERTS_FIRST_OUT", nullptr});
        ASSERT_EQ(runSelf("assert-one", env).code, 0) << c.what;
        EXPECT_EQ(readLines(c.expected).size(), 1u) << c.what;
    }
}

TEST_F(Assert, RecordsStopAtTheCapWhileCountingGoesOn) {
    const std::string out = m_dir + "/count.txt";
    ASSERT_EQ(runSelf("assert-cap", {{"_ORV_ASSERTS", m_log.c_str()}}, out).code, 0);
    EXPECT_EQ(readText(out), "1003");
    auto lines = readLines(m_log);
    ASSERT_EQ(lines.size(), 1001u);
    EXPECT_NE(lines[999].find("id=\"1000\""), std::string::npos);
    EXPECT_EQ(lines[1000], "<too_many_asserts/>");
}

// Returns after the assertion, so that the call is no tail call and keeps its frame.
__attribute__((noinline)) int failInsideHelper() {
    VQ_ASSERT_MSG(std::getenv("PATH") == nullptr, "a level-5 record", 5);
    return CAssert::nAssert();
}

TEST_F(Assert, LevelFiveNamesTheFramesWithFileAndLine) {
    EXPECT_GT(failInsideHelper(), 0);
    const std::string log = readText(m_log);
    size_t open = log.find("<callStack>\n  <![CDATA[\n");
    size_t close = log.find("  ]]>\n</callStack>\n");
    ASSERT_NE(open, std::string::npos) << log;
    ASSERT_NE(close, std::string::npos) << log;
    const std::string frames = log.substr(open, close - open);
    // The helper has internal linkage: only the module's own symbol table names it.
    // DbgHelp names functions without their namespace and parameters.
    const std::string scope = VQK_TARGET_WINDOWS ? "" : R"(\(anonymous namespace\)::)";
    const std::string noArgs = VQK_TARGET_WINDOWS ? "" : R"(\(\))";
    EXPECT_TRUE(std::regex_search(frames, std::regex(R"(#\d+ )" + scope + "failInsideHelper" + noArgs + R"( at \S*assert_test\.cpp:\d+ \[vqk_diagnostics_tests(\.exe)?\+0x[0-9a-f]+\])")))
        << frames;
    EXPECT_TRUE(std::regex_search(frames, std::regex("Assert_LevelFiveNamesTheFramesWithFileAndLine_Test::TestBody" + noArgs + R"( at \S*assert_test\.cpp:\d+)")))
        << frames;
}

} // namespace
