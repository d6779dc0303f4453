// The pieces under the runner: registries, the collector chain, statistics, the
// reporting family's fixed buffer, the application properties and the pause.
#include "tool_process.h"

#include "vqk/jobs/job.h"
#include "vqk/platform/memory_info.h"
#include "vqk/xml/xml_out.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <string>
#include "vqk/platform/console.h"

namespace {

bool jobA(int, char* const*, vq::SJobStat&) { return true; }
bool jobB(int, char* const*, vq::SJobStat&) { return false; }
bool xmlA(vq::CXmlIn&, const char*, vq::SJobStat&) { return true; }
bool xmlB(vq::CXmlIn&, const char*, vq::SJobStat&) { return false; }
vq::CTest* testA(vq::CXmlIn&, const char*) { return nullptr; }
vq::CTest* testB(vq::CXmlIn&, const char*) { return nullptr; }

TEST(JobHost, LookupsTakeNewestJobsAndOldestTests) {
    vq::CJobHost* host = vq::CJobHost::create();
    ASSERT_NE(host, &vq::CJobHost::host());
    host->addJob("a", jobA);
    host->addJob("a", jobB);
    host->addJobXml("x", xmlA);
    host->addJobXml("x", xmlB);
    host->addtest("t", testA);
    host->addtest("t", testB);
    EXPECT_EQ(host->findJob("a"), &jobB);
    EXPECT_EQ(host->findJobXml("x"), &xmlB);
    ASSERT_NE(host->findTest("t"), nullptr);
    EXPECT_EQ(host->findTest("t")->factory, &testA);
    EXPECT_STREQ(host->findTest("t")->name, "t");
    // Exact and case-sensitive; unknown and null names find nothing.
    EXPECT_EQ(host->findJob("A"), nullptr);
    EXPECT_EQ(host->findJob("a "), nullptr);
    EXPECT_EQ(host->findJob(nullptr), nullptr);
    EXPECT_EQ(host->findTest("T"), nullptr);
    EXPECT_EQ(host->findJobXml("a"), nullptr) << "the registries are separate";
    host->clearJobs();
    EXPECT_EQ(host->findJob("a"), nullptr);
    EXPECT_EQ(host->findJobXml("x"), nullptr);
    EXPECT_NE(host->findTest("t"), nullptr) << "tests stay registered";
    host->destroy();
}

TEST(JobInfo, CollectorsStackAndEmitTheirText) {
    FILE* f = std::tmpfile();
    vq::xout.attach(f, false);
    vq::CJobInfo* before = vq::sum;
    {
        vq::CJobInfo outer(&vq::sum);
        EXPECT_EQ(vq::sum, &outer);
        outer.info("<a/>");
        {
            vq::CJobInfo inner(&vq::sum);
            EXPECT_EQ(vq::sum, &inner);
            EXPECT_EQ(inner.previous(), &outer);
        }
        EXPECT_EQ(vq::sum, &outer) << "an empty collector pops without output";
        outer.info("<b/>");
        EXPECT_STREQ(outer.str(), "\n<a/>\n<b/>");
    }
    EXPECT_EQ(vq::sum, before);
    vq::xout.close();
    EXPECT_EQ(readAndClose(f), "<info>\n<a/>\n<b/></info>\n");
}

std::string printed(const vq::SJobStat& s, bool withAlso) {
    FILE* f = std::tmpfile();
    FILE* g = std::tmpfile();
    vq::xout.attach(f, false);
    vq::COutFile also(g);
    s.print(vq::xout, withAlso ? &also : nullptr);
    vq::xout.close();
    also.flush();
    std::string out = readAndClose(f) + "|";
    return out + readAndClose(g) + "|";
}

bool failingMemoryQuery(vq::platform::SMemoryInfo&) { return false; }

TEST(JobStat, PrintWritesTheStatElementAndTheCounterLine) {
    vq::SJobStat s;
    s.job = 3, s.fail = 1, s.timeout = -2;
    vq::platform::setMemoryInfoQuery(failingMemoryQuery);
    std::string out = printed(s, true);
    vq::platform::setMemoryInfoQuery(nullptr);
    const std::string head = "<stat job=\"3\" fail=\"1\" warn=\"0\" crash=\"0\" timeout=\"-2\" nThread=\"";
    EXPECT_EQ(out.rfind(head, 0), 0u) << out;
    EXPECT_NE(out.find("\" memPeakMb=\"0\"/>\n|"), std::string::npos) << out;
    EXPECT_NE(out.find("|\njob=\"3\" fail=\"1\" warn=\"0\" crash=\"0\" timeout=\"-2\"\n|"),
              std::string::npos)
        << out;
    // Without a second output only the element is written.
    EXPECT_EQ(printed(s, false).find("\njob="), std::string::npos);
}

TEST(JobStat, PeakMemoryIsReportedInMegabytes) {
    // The peak can only rise while the statistics are printed, so the printed value lies
    // between the peaks read before and after.
    vq::platform::SMemoryInfo before, after;
    ASSERT_TRUE(vq::platform::queryMemoryInfo(before));
    EXPECT_GT(before.peakResidentBytes, 0u);
    std::string out = printed(vq::SJobStat(), false);
    ASSERT_TRUE(vq::platform::queryMemoryInfo(after));
    const std::string key = "memPeakMb=\"";
    size_t at = out.find(key);
    ASSERT_NE(at, std::string::npos);
    long long mb = std::stoll(out.substr(at + key.size()));
    EXPECT_GE(mb, (long long)(before.peakResidentBytes >> 20));
    EXPECT_LE(mb, (long long)(after.peakResidentBytes >> 20));
}

TEST(Reporting, RecordThatDoesNotFitIsDroppedButCounted) {
    FILE* f = std::tmpfile();
    vq::xout.attach(f, false);
    vq::SJobStat s;
    {
        vq::CJobInfo info(&vq::sum);
        std::string fits(2048 - 40, 'm');       // the record's frame is 33 characters
        std::string tooLong(2048 - 20, 'm');
        vq::logFail(s, fits.c_str(), "src", 12);
        std::string afterFirst = info.str();
        vq::logFail(s, tooLong.c_str(), "src", 12);
        EXPECT_EQ(s.fail, 2);
        EXPECT_EQ(std::string(info.str()), afterFirst) << "the second record was dropped";
        EXPECT_EQ(afterFirst, "\n<error file=\"src\" line=\"12\" msg=\"" + fits + "\"/>");
        info.reset();
    }
    // Without a running job the count and console line still happen.
    vq::CJobInfo* saved = vq::sum;
    vq::sum = nullptr;
    vq::logCrash(s, "no job", "src", 1);
    vq::sum = saved;
    EXPECT_EQ(s.crash, 1);
    vq::xout.close();
    const std::string out = readAndClose(f);
    EXPECT_NE(out.find("Crash : no job\n"), std::string::npos);
    EXPECT_NE(out.find("Fail : " + std::string(2048 - 20, 'm') + "\n"), std::string::npos);
}

class CAppProps : public vq::CGlobalProps {
public:
    explicit CAppProps(const char* name) : m_name(name) {}
    const char* productName() const override { return m_name; }
    const char* productVersion() const override { return "1.0"; }
    bool getProp(const char*, vq::CStr& value) const override {
        value = m_name;
        return true;
    }
    bool setProp(const char*, const char*) override { return true; }

private:
    const char* m_name;
};

TEST(GlobalProps, LatestLivingInstanceWins) {
    EXPECT_STREQ(vq::globalProps().productName(), "");
    vq::CStr v("kept");
    EXPECT_FALSE(vq::globalProps().getProp("x", v));
    EXPECT_STREQ(v.str(), "kept");
    {
        CAppProps first("first");
        EXPECT_EQ(&vq::globalProps(), &first);
        {
            CAppProps second("second");
            EXPECT_STREQ(vq::globalProps().productName(), "second");
        }
        EXPECT_STREQ(vq::globalProps().productName(), "first");
    }
    EXPECT_STREQ(vq::globalProps().productName(), "") << "back to the built-in one";
    EXPECT_FALSE(vq::globalProps().setProp("x", "y"));
}

class CQuietJob : public vq::CJob {
public:
    CQuietJob() : vq::CJob(nullptr) {}
    bool redirectOut(const char*) override { return false; }
    bool redirectErr(const char*) override { return false; }
    void flush() override { ++flushes; }
    int flushes = 0;
};

TEST(Pause, BatchModeNeverWaits) {
    CQuietJob job;
    EXPECT_STREQ(job.appName(), "Application");
    const bool saved = vq::CJobInfo::s_batch;
    vq::CJobInfo::s_batch = true;
    EXPECT_EQ(job.wait(nullptr, 0), 0);
    EXPECT_EQ(job.wait("text", 100), 0);
    EXPECT_EQ(job.flushes, 2) << "flushed even when not waiting";
    vq::CJobInfo::s_batch = saved;
}

TEST(Pause, TimeLimitEndsAWaitWithoutKey) {
    if (vq::platform::stdinIsTerminal())
        GTEST_SKIP() << "standard input is a terminal: a key press would end the wait";
    CQuietJob job;
    const bool saved = vq::CJobInfo::s_batch;
    vq::CJobInfo::s_batch = false;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(job.wait("waiting one second", 1), 0);
    const auto waited = std::chrono::steady_clock::now() - start;
    vq::CJobInfo::s_batch = saved;
    EXPECT_GE(waited, std::chrono::seconds(1)) << "it returned before the whole second";
}

} // namespace
