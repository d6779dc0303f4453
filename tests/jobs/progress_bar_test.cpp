#include "vqk/jobs/progress_console.h"

#include "tool_process.h"

#include <gtest/gtest.h>

#include <string>

TEST(ProgressConsoleLine, ShowsPercentBarTimesAndTextWithinTheWidth) {
    struct SCase {
        int percent;
        const char* text;
        double elapsed;
        int columns;
        const char* expected;
    };
    const SCase cases[] = {
        {25, "Tests (1/4) - a.xml", 10, 80, " 25% [#####               ] 0:10, 0:30 left  Tests (1/4) - a.xml"},
        {100, "", 3725, 80, "100% [####################] 1:02:05, 0:00 left"},
        {0, nullptr, 0, 80, "  0% [                    ] 0:00"},
        {50, "abc", 1, 36, " 50% [##########          ] 0:01, 0"},
        // Cut between characters, never inside one: each "é" is two bytes.
        {50, "\xC3\xA9\xC3\xA9\xC3\xA9", 1, 48, " 50% [##########          ] 0:01, 0:01 left  \xC3\xA9\xC3\xA9"},
    };
    for (const SCase& c : cases)
        EXPECT_EQ(std::string(vq::CProgressConsole::formatLine(c.percent, c.text, c.elapsed, c.columns).str()),
                  c.expected);
}

namespace {

// A jobs list whose one entry runs a job over the example files by mask, so the job
// host drives its "Tests" progress.
std::string writeMaskJobs(const std::string& dir) {
    const std::string path = dir + "/mask_jobs.xml";
    writeFile(path, "<?xml version=\"1.0\"?>\n<jobs>\n  <job dir=\"" + sourceDir() +
                        "/examples\" name=\"xml_summary\" mask=\"data/*.xml\"/>\n</jobs>\n");
    return path;
}

} // namespace

using ProgressBarTool = ToolTest;

TEST_F(ProgressBarTool, DrawsOnATerminalAndClearsTheLineAtTheEnd) {
    SToolRun run = runToolWithErrOnTerminal({writeMaskJobs(m_dir), "//b"}, m_dir, 60);
    ASSERT_FALSE(run.timedOut);
    EXPECT_EQ(run.exitCode, 0) << run.out;
    const std::string& err = run.err;
    // The first draw is never held back: the first file's step at a third of the way.
    const std::string first = "\r 33% [######              ] 0:00, 0:00";
    ASSERT_NE(err.find(first), std::string::npos) << err;
    EXPECT_NE(err.find(" left  Tests (1/3) - "), std::string::npos) << "no text, or cut short of 59: " << err;
    EXPECT_EQ(err.find("Tests (1/3) - d"), std::string::npos) << "wider than the terminal: " << err;
    // Ends with the line blanked and the cursor back at its start.
    ASSERT_GE(err.size(), 61u);
    EXPECT_EQ(err.substr(err.size() - 61), "\r" + std::string(59, ' ') + "\r");
    EXPECT_EQ(run.out.find('\r'), std::string::npos);
}

TEST_F(ProgressBarTool, WritesNothingWhenStandardErrorIsALog) {
    const std::string log = m_dir + "/err.log";
    SToolRun run = runTool({writeMaskJobs(m_dir), "//b", "//e", log}, m_dir);
    EXPECT_EQ(run.exitCode, 0) << run.out;
    EXPECT_EQ(run.err.find('\r'), std::string::npos) << run.err;
    EXPECT_EQ(readFile(log).find('\r'), std::string::npos);
    EXPECT_EQ(run.out.find('%'), std::string::npos);
}
