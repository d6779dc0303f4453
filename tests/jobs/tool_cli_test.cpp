// The job host driven through a real tool: command lines, job files and the job_log
// document the tool writes, checked with libxml2.
#include "job_log.h"
#include "tool_process.h"

#include <gtest/gtest.h>

namespace {

const char* const kUsageText =
    "Usage: vqk_run {job} [args] [opts]\n\n{job}: job file or registered function name\n"
    "[args]: job specific argument list\n[opts]: options\n\n  Options format:\n"
    "  //{option}[+][-] [args]\n\n  Available options:\n"
    "  //b: batch mode, no user interaction\n  //o {stdout file}: redirect stdout to the file\n"
    "  //e {stderr file}: redirect stderr to the file\n";

class ToolCli : public ToolTest {
protected:
    // Runs from the repository root, as the examples expect.
    SToolRun runAtRoot(const std::vector<std::string>& args) { return runTool(args, sourceDir()); }
    SToolRun runHere(const std::vector<std::string>& args) { return runTool(args, m_dir); }
};

// Without a job, or with an output that cannot be opened, the run ends before any
// job_log; //b, wherever it stands, spares the prompt, and a failed //e never pauses.
TEST_F(ToolCli, RunsThatEndBeforeAnyJob) {
    const std::string bad = m_dir + "/no/such/folder/out.xml";
    const std::string cantOpen = "Fatal: can't open " + bad + "\n";
    const struct {
        std::vector<std::string> args;
        std::string text;
    } cases[] = {
        {{"//b"}, kUsageText},
        {{"/.b"}, kUsageText},
        {{"//x", "//B+", "//q"}, kUsageText},
        {{"xml_summary", "//o", bad, "//b"}, cantOpen},
        {{"//b", "xml_summary", "//e", bad}, cantOpen},
        {{"xml_summary", "//e", bad}, cantOpen},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.args.size() > 1 ? c.args[1] : c.args[0]);
        SToolRun r = runHere(c.args);
        ASSERT_FALSE(r.timedOut) << "a batch run must never wait for a key";
        EXPECT_EQ(r.exitCode, 1);
        EXPECT_NE(r.out.find(c.text), std::string::npos) << r.out;
        EXPECT_EQ(r.out.find("<job_log"), std::string::npos);
        EXPECT_EQ(r.out.find("Press any key"), std::string::npos);
    }
    EXPECT_FALSE(fileExists(bad));
}

// On a terminal the usage and a failed //o wait for a key (Ctrl-C included, which must
// not kill the tool with its terminal left raw); a failed //e returns at once.
TEST_F(ToolCli, PausesOnATerminal) {
    if (!terminalRunsSupported())
        GTEST_SKIP() << "no terminal a test can type into on this system";
    const std::string bad = m_dir + "/no/such/folder/out.xml";
    bool typed = false;
    SToolRun r = runToolOnTerminal({}, m_dir, "<!--Press any key to continue-->", '\x03', typed, 20);
    EXPECT_TRUE(typed) << r.out;
    EXPECT_FALSE(r.timedOut) << "the key press must end the pause";
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_NE(r.out.find(kUsageText), std::string::npos);
    EXPECT_NE(r.out.find("\n<!--Press any key to continue-->\n"), std::string::npos);
    for (const char* option : {"//o", "//e"}) {
        r = runToolOnTerminal({"xml_summary", option, bad}, m_dir, "Press any key", 'q', typed, 20);
        EXPECT_EQ(typed, option[2] == 'o') << option << r.out;
        EXPECT_FALSE(r.timedOut);
        EXPECT_EQ(r.exitCode, 1);
        EXPECT_NE(r.out.find("Fatal: can't open"), std::string::npos);
    }
}

// A job that is not found fails; a job that only warns is not ok either.
TEST_F(ToolCli, FailingAndWarningRunsAreNotOk) {
    struct SCase {
        std::vector<std::string> args;
        std::string console, record, file;
        int fail, warn, jobs, line;  // line 0: any positive line
    } cases[] = {
        {{"unknownjob", "//b"}, "Fail : Can't find registered function 'unknownjob'\n", "error", "vq_job",
         1, 0, 0, 290},
        {{"list", "examples/data", "*.nothing", "//b"}, "Warn : no file of examples/data matches *.nothing\n",
         "warning", "vqk_run", 0, 1, 1, 0},
    };
    for (const SCase& c : cases) {
        SCOPED_TRACE(c.args[0]);
        SToolRun r = runAtRoot(c.args);
        EXPECT_EQ(r.exitCode, 1);
        EXPECT_NE(r.out.find(c.console), std::string::npos) << r.out;
        PARSED_LOG(log, r.out);
        EXPECT_EQ(log.num("/job_log/stat/@fail"), c.fail);
        EXPECT_EQ(log.num("/job_log/stat/@warn"), c.warn);
        EXPECT_EQ(log.num("/job_log/stat/@job"), c.jobs);
        EXPECT_EQ(log.str("/job_log/job/@name"), c.args[0]);
        EXPECT_EQ(log.num("/job_log/job/ret"), -1);
        const std::string rec = "/job_log/job/info/" + c.record;
        const std::string msg = c.console.substr(7, c.console.size() - 8);
        EXPECT_EQ(log.str((rec + "/@msg").c_str()), msg);
        EXPECT_EQ(log.str("/job_log/job/func/@func"), c.args[0]);
        EXPECT_EQ(log.str("/job_log/job/func/Fail"), c.fail ? msg : "");
        EXPECT_EQ(log.str((rec + "/@file").c_str()), c.file);
        if (c.line)
            EXPECT_EQ(log.num((rec + "/@line").c_str()), c.line);
        else
            EXPECT_GT(log.num((rec + "/@line").c_str()), 0);
    }
    // A document that is not well formed is placed by file, line and column.
    const std::string bad = m_dir + "/bad.xml";
    writeFile(bad, "<a>\n  <b c=1/>\n</a>\n");
    SToolRun r = runAtRoot({"xml_summary", bad, "//b"});
    PARSED_LOG(log, r.out);
    EXPECT_EQ(log.str("/job_log/job/info/error/@msg"), bad + ":2:8: XML error: invalid tag attributes");
}

// A successful run: one job with its arguments as attributes, then the totals.
TEST_F(ToolCli, SuccessfulRunRecordsArgumentsAndTotals) {
    SToolRun r = runAtRoot({"list", "examples/data", "*.xml", "//b"});
    EXPECT_EQ(r.exitCode, 0) << r.out;
    PARSED_LOG(log, r.out);
    EXPECT_EQ(log.num("count(/job_log/*)"), 2) << "one job, then the totals";
    EXPECT_EQ(log.count("/job_log/*[2][self::stat]"), 1);
    EXPECT_EQ(log.num("/job_log/stat/@job"), 1);
    for (const char* counter : {"fail", "warn", "crash", "timeout"})
        EXPECT_EQ(log.num(("/job_log/stat/@" + std::string(counter)).c_str()), 0) << counter;
    EXPECT_GE(log.num("/job_log/stat/@nThread"), 1);
    EXPECT_GE(log.num("/job_log/stat/@memPeakMb"), 0);
    EXPECT_EQ(log.num("/job_log/job/ret"), 0);
    EXPECT_EQ(log.count("/job_log/job/time"), 1);
    EXPECT_EQ(log.count("/job_log/job/info"), 0) << "no records, no info element";
    // On the job: every argument after the name, by its index in the command line.
    EXPECT_EQ(log.str("/job_log/job/@arg2"), "examples/data");
    EXPECT_EQ(log.str("/job_log/job/@arg3"), "*.xml");
    // On the function record: the first as a file name, the rest numbered from 1.
    EXPECT_EQ(log.str("/job_log/job/func/@file"), "data");
    EXPECT_EQ(log.str("/job_log/job/func/@arg1"), "*.xml");
    EXPECT_EQ(log.count("/job_log/job/func/@dir"), 1);
    EXPECT_EQ(log.strs("/job_log/job/func/files/file/@name"),
              (std::vector<std::string>{"bracket.xml", "flange.xml", "plate.xml"}));
}

// Options may stand anywhere; a switched-off redirection still takes its file name.
TEST_F(ToolCli, OptionsAreNotJobArguments) {
    const std::string never = m_dir + "/never.xml", neverErr = m_dir + "/never.txt";
    for (const std::vector<std::string>& args :
         {std::vector<std::string>{"//b", "xml_summary", "examples/data/plate.xml"},
          {"xml_summary", "/.B", "examples/data/plate.xml"},
          {"xml_summary", "//e-", neverErr, "examples/data/plate.xml", "//o-", never, "//b"}}) {
        SToolRun r = runAtRoot(args);
        EXPECT_EQ(r.exitCode, 0) << r.out;
        PARSED_LOG(log, r.out);
        EXPECT_EQ(log.str("/job_log/job/@arg2"), "examples/data/plate.xml");
        EXPECT_EQ(log.count("/job_log/job/@arg3"), 0);
        EXPECT_EQ(log.count("/job_log/job/func/xml_summary"), 1);
    }
    EXPECT_FALSE(fileExists(never));
    EXPECT_FALSE(fileExists(neverErr));
}

TEST_F(ToolCli, RedirectedOutputHoldsTheWholeDocument) {
    const std::string outFile = m_dir + "/run.xml";
    const std::string errFile = m_dir + "/err.txt";
    SToolRun r = runAtRoot({"//o", outFile, "unknownjob", "//e", errFile, "//b"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.out, "") << "the console gets nothing, not even the declaration";
    std::string text = lfOnly(readFile(outFile));
    EXPECT_EQ(text.rfind("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n", 0), 0u) << text;
    PARSED_LOG(log, text);
    EXPECT_EQ(log.num("/job_log/stat/@fail"), 1);
    EXPECT_TRUE(fileExists(errFile));
}

} // namespace
