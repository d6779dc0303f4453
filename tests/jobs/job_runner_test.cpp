// The runner in-process: jobs registered by the test itself, with vq::xout on a
// temporary file that is parsed afterwards.
#include "job_log.h"
#include "tool_process.h"

#include "vqk/jobs/job.h"
#include "vqk/xml/xml_in.h"
#include "vqk/xml/xml_out.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cmath>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

class CTestRunner : public vq::CJob {
public:
    CTestRunner() : vq::CJob("runner") {}
    bool redirectOut(const char*) override { return false; }
    bool redirectErr(const char*) override { return false; }
    void flush() override { ++flushes; }
    int flushes = 0;
};

// Runs CJob::main over `args` (the program name is added) with xout captured.
struct SRun {
    bool result = false;
    std::string out;
};

SRun runMain(CTestRunner& runner, std::vector<std::string> args) {
    args.insert(args.begin(), "runner");
    std::vector<char*> argv;
    for (std::string& a : args)
        argv.push_back(&a[0]);
    argv.push_back(nullptr);
    FILE* f = std::tmpfile();
    vq::xout.attach(f, false);
    SRun run;
    run.result = runner.main(int(args.size()), argv.data());
    vq::xout.close();
    run.out = readAndClose(f);
    return run;
}

SRun runMain(std::vector<std::string> args) {
    CTestRunner runner;
    return runMain(runner, std::move(args));
}

class JobRunner : public ::testing::Test {
protected:
    void SetUp() override {
        vq::CJobInfo::s_batch = true;
        vq::CJobHost::host().clearJobs();
    }
    void TearDown() override { vq::CJobHost::host().clearJobs(); }
};

int g_calls = 0;
std::vector<std::string> g_seenArgs;

bool okJob(int argc, char* const* argv, vq::SJobStat&) {
    ++g_calls;
    g_seenArgs.assign(argv, argv + argc);
    return true;
}
bool firstJob(int, char* const*, vq::SJobStat&) { g_seenArgs = {"first"}; return true; }
bool secondJob(int, char* const*, vq::SJobStat&) { g_seenArgs = {"second"}; return true; }
bool throwsText(int, char* const*, vq::SJobStat&) { throw "bad"; }
bool throwsInt(int, char* const*, vq::SJobStat&) { throw 7; }
bool throwsStd(int, char* const*, vq::SJobStat&) { throw std::runtime_error("broken input"); }
bool reportsAll(int, char* const*, vq::SJobStat& stat) {
    vq::logFail(stat, "f", "src", 1);
    vq::logWarn(stat, "w", "src", 2);
    vq::logCrash(stat, "c", "src", 3);
    vq::logTimeout(stat, "t", "src", 4);
    return false;
}

TEST_F(JobRunner, PlainJobSeesItsNameAsFirstArgument) {
    vq::registerJob("okjob", okJob);
    g_calls = 0;
    CTestRunner runner;
    SRun r = runMain(runner, {"okjob", "//b", "in.step", "x"});
    EXPECT_TRUE(r.result);
    EXPECT_EQ(g_calls, 1);
    EXPECT_EQ(g_seenArgs, (std::vector<std::string>{"okjob", "in.step", "x"}));
    EXPECT_GE(runner.flushes, 1) << "flushed before the job function";
}

TEST_F(JobRunner, LaterRegistrationWinsAndMainForgetsJobs) {
    vq::registerJob("twice", firstJob);
    vq::registerJob("twice", secondJob);
    EXPECT_EQ(vq::CJobHost::host().jobCount(), 2);
    SRun r = runMain({"twice"});
    EXPECT_TRUE(r.result);
    EXPECT_EQ(g_seenArgs, (std::vector<std::string>{"second"}));
    EXPECT_EQ(vq::CJobHost::host().jobCount(), 0);
    // Not registered again: the second run cannot find it.
    r = runMain({"twice"});
    EXPECT_FALSE(r.result);
    EXPECT_NE(r.out.find("Can't find registered function 'twice'"), std::string::npos);
}

TEST_F(JobRunner, ExceptionsBecomeFailuresAndTheRunContinues) {
    struct SCase {
        const char* name;
        vq::FJob fn;
        const char* message;
        int line;
    } cases[] = {
        {"thrower_text", throwsText, "thrower_text : bad", 720},
        {"thrower_std", throwsStd, "thrower_std : broken input", 724},
        {"thrower_int", throwsInt, "Unknown exception at thrower_int", 728},
    };
    for (const SCase& c : cases) {
        vq::registerJob(c.name, c.fn);
        SRun r = runMain({c.name});
        EXPECT_FALSE(r.result) << c.name;
        PARSED_LOG(log, r.out);
        EXPECT_EQ(log.str("/job_log/job/Fail"), c.message);
        EXPECT_EQ(log.str("/job_log/job/info/error/@msg"), c.message);
        EXPECT_EQ(log.num("/job_log/job/info/error/@line"), c.line);
        EXPECT_EQ(log.num("/job_log/job/ret"), -1);
        EXPECT_EQ(log.num("/job_log/stat/@fail"), 1) << c.name;
        EXPECT_NE(r.out.find(std::string("Fail : ") + c.message + "\n"), std::string::npos);
        EXPECT_EQ(log.count("/job_log/stat"), 1) << "the run went on to its totals";
    }
}

TEST_F(JobRunner, ReportingFamilyCountsPrintsAndRecords) {
    vq::registerJob("reports", reportsAll);
    SRun r = runMain({"reports"});
    EXPECT_FALSE(r.result);
    for (const char* line : {"Fail : f\n", "Warn : w\n", "Crash : c\n", "Timeout : t\n"})
        EXPECT_NE(r.out.find(line), std::string::npos) << line;
    PARSED_LOG(log, r.out);
    EXPECT_EQ(log.strs("/job_log/job/info/*/@msg"), (std::vector<std::string>{"f", "w", "c", "t"}));
    EXPECT_EQ(log.strs("/job_log/job/info/*/@line"), (std::vector<std::string>{"1", "2", "3", "4"}));
    for (const char* e : {"error", "warning", "crash", "timeout"})
        EXPECT_EQ(log.count(("/job_log/job/info/" + std::string(e)).c_str()), 1) << e;
    for (const char* c : {"job", "fail", "warn", "crash", "timeout"})
        EXPECT_EQ(log.num(("/job_log/stat/@" + std::string(c)).c_str()), 1) << c;
}

// An argument too long for the job's attributes is dropped; one too long even to format
// ends them. The function record has no such limit.
TEST_F(JobRunner, LongArgumentsAndTheJobAttributes) {
    struct SCase {
        std::vector<std::string> args;
        const char *arg2, *arg3, *arg4, *funcArg;
    } cases[] = {
        {{"okjob", std::string(1500, 'a'), "short"}, nullptr, "short", nullptr, "/job_log/job/func/@arg1"},
        {{"okjob", "short1", std::string(3000, 'a'), "short2"}, "short1", nullptr, nullptr,
         "/job_log/job/func/@arg2"},
    };
    for (const SCase& c : cases) {
        vq::registerJob("okjob", okJob);
        SRun r = runMain(c.args);
        PARSED_LOG(log, r.out);
        const char* attrs[] = {c.arg2, c.arg3, c.arg4};
        for (int i = 0; i < 3; ++i) {
            const std::string x = "/job_log/job/@arg" + std::to_string(i + 2);
            if (attrs[i])
                EXPECT_EQ(log.str(x.c_str()), attrs[i]) << x;
            else
                EXPECT_EQ(log.count(x.c_str()), 0) << x;
        }
        EXPECT_EQ(log.str(c.funcArg), c.args.back());
    }
}

bool sleepsAFewMs(int, char* const*, vq::SJobStat&) {
    usleep(3500);
    return true;
}

TEST_F(JobRunner, TimeIsInWholeMilliseconds) {
    vq::registerJob("sleeper", sleepsAFewMs);
    SRun r = runMain({"sleeper"});
    PARSED_LOG(log, r.out);
    const double seconds = std::strtod(log.str("/job_log/job/time").c_str(), nullptr);
    EXPECT_GE(seconds, 0.003);
    EXPECT_LT(seconds, 10.0);
    const double ms = seconds * 1000.0;
    EXPECT_NEAR(ms, std::round(ms), 1e-6) << "the time counts clock ticks of one millisecond";
}

int g_firstRandom = 0;
bool drawsOne(int, char* const*, vq::SJobStat&) {
    g_firstRandom = std::rand();
    return true;
}

TEST_F(JobRunner, EveryJobStartsTheSamePseudoRandomSequence) {
    vq::registerJob("draws", drawsOne);
    runMain({"draws"});
    const int first = g_firstRandom;
    std::srand(7);
    for (int i = 0; i < 5; ++i)
        std::rand();
    vq::registerJob("draws", drawsOne);
    runMain({"draws"});
    EXPECT_EQ(g_firstRandom, first) << "whatever ran before the job";
    std::srand(42);
    EXPECT_EQ(std::rand(), first) << "the sequence of seed 42";
}

TEST_F(JobRunner, UsageAndTotalsAcrossRuns) {
    vq::SJobStat before = vq::CJobHost::host().totals();
    CTestRunner runner;
    SRun r = runMain(runner, {});
    EXPECT_FALSE(r.result);
    EXPECT_EQ(r.out.rfind("Usage: runner {job} [args] [opts]\n", 0), 0u) << r.out;
    EXPECT_EQ(runner.flushes, 1);

    vq::registerJob("okjob", okJob);
    runMain({"okjob"});
    vq::registerJob("okjob", okJob);
    runMain({"nothing_here"});
    const vq::SJobStat& after = vq::CJobHost::host().totals();
    EXPECT_EQ(after.job - before.job, 1);
    EXPECT_EQ(after.fail - before.fail, 1);
}

TEST_F(JobRunner, OptionFlagsAndRedirectionFlag) {
    vq::CJobInfo::s_xml = false;
    vq::registerJob("okjob", okJob);
    runMain({"okjob", "//X+"});
    EXPECT_TRUE(vq::CJobInfo::s_xml);
    vq::registerJob("okjob", okJob);
    runMain({"okjob", "/.x-", "//b-", "/.B"});
    EXPECT_FALSE(vq::CJobInfo::s_xml);
    EXPECT_TRUE(vq::CJobInfo::s_batch) << "the last batch option wins";

    // //o- calls nothing but still marks the output as redirected.
    vq::registerJob("okjob", okJob);
    SRun r = runMain({"okjob", "//o-", "ignored.xml"});
    EXPECT_TRUE(r.result);
    EXPECT_TRUE(vq::CJobHost::host().outRedirected());
    // //o on: the runner's redirectOut refuses, so the run stops before any job.
    r = runMain({"okjob", "//o", "out.xml"});
    EXPECT_FALSE(r.result);
    EXPECT_EQ(r.out, "Fatal: can't open out.xml\n");
}

// A test registered for job files whose root element is "counting_test".
int g_testsRun = 0;
class CCountingTest : public vq::CTest {
public:
    explicit CCountingTest(int failures) : m_failures(failures) {}
    bool run() override {
        ++g_testsRun;
        summary().newJob();
        for (int i = 0; i < m_failures; ++i)
            summary().newFail();
        return summary().isOk();
    }

private:
    int m_failures;
};
vq::CTest* makeCounting(vq::CXmlIn& in, const char*) { return new CCountingTest(in.attrInt("fail", 0)); }
vq::CTest* makeNothing(vq::CXmlIn&, const char*) { return nullptr; }

TEST_F(JobRunner, RegisteredTestRunsFromItsJobFile) {
    static const int reg =
        vq::registerTest("counting_test", makeCounting) + vq::registerTest("null_test", makeNothing);
    (void)reg;
    std::string file = freshTempDir("registered_test") + "/counting_test_job.xml";
    writeFile(file, "<?xml version=\"1.0\"?>\n<counting_test fail=\"2\"/>\n");
    g_testsRun = 0;
    SRun r = runMain({file});
    EXPECT_EQ(g_testsRun, 1);
    EXPECT_FALSE(r.result);
    PARSED_LOG(log, r.out);
    EXPECT_EQ(log.str("/job_log/job/func/@func"), "counting_test");
    EXPECT_EQ(log.num("/job_log/stat/@fail"), 2);
    EXPECT_EQ(log.num("/job_log/stat/@job"), 1);

    writeFile(file, "<null_test/>\n");
    r = runMain({file});
    EXPECT_FALSE(r.result);
    EXPECT_NE(r.out.find("Can't create test 'null_test'"), std::string::npos);
}

} // namespace
