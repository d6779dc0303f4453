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

TEST_F(ToolCli, UsageWhenNoJobIsNamed) {
    // No arguments at all, only options, and the dot form of the batch option.
    for (const std::vector<std::string>& args :
         {std::vector<std::string>{"//b"}, {"/.b"}, {"//x", "//B+", "//q"}}) {
        SToolRun r = runHere(args);
        ASSERT_FALSE(r.timedOut) << "a batch run must never wait for a key";
        EXPECT_EQ(r.exitCode, 1);
        EXPECT_NE(r.out.find(kUsageText), std::string::npos) << r.out;
        EXPECT_EQ(r.out.find("<job_log"), std::string::npos);
        EXPECT_EQ(r.out.find("Press any key"), std::string::npos) << "no prompt in batch mode";
    }
}

TEST_F(ToolCli, UsagePromptWaitsForAKeyOnATerminal) {
    bool typed = false;
    // Ctrl-C is a key like any other there: it must not kill the tool with its terminal
    // left raw.
    SToolRun r = runToolOnTerminal({}, m_dir, "<!--Press any key to continue-->", '\x03', typed, 20);
    EXPECT_TRUE(typed) << r.out;
    EXPECT_FALSE(r.timedOut) << "the key press must end the pause";
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_NE(r.out.find(kUsageText), std::string::npos);
    EXPECT_NE(r.out.find("\n<!--Press any key to continue-->\n"), std::string::npos);
}

TEST_F(ToolCli, UnknownFunctionIsOneFailureAndNoJob) {
    SToolRun r = runHere({"unknownjob", "//b"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_NE(r.out.find("Fail : Can't find registered function 'unknownjob'\n"), std::string::npos);
    CJobLog log(r.out);
    ASSERT_TRUE(log.wellFormed()) << r.out;
    EXPECT_EQ(log.num("/job_log/stat/@fail"), 1);
    EXPECT_EQ(log.num("/job_log/stat/@job"), 0);
    EXPECT_EQ(log.str("/job_log/job/@name"), "unknownjob");
    EXPECT_EQ(log.str("/job_log/job/func/@func"), "unknownjob");
    EXPECT_EQ(log.str("/job_log/job/func/Fail"), "Can't find registered function 'unknownjob'");
    EXPECT_EQ(log.num("/job_log/job/ret"), -1);
    EXPECT_EQ(log.str("/job_log/job/info/error/@file"), "vq_job");
    EXPECT_EQ(log.num("/job_log/job/info/error/@line"), 290);
    EXPECT_EQ(log.str("/job_log/job/info/error/@msg"), "Can't find registered function 'unknownjob'");
}

TEST_F(ToolCli, StatElementCarriesEveryCounter) {
    SToolRun r = runAtRoot({"xml_summary", "examples/data/plate.xml", "//b"});
    EXPECT_EQ(r.exitCode, 0) << r.out;
    CJobLog log(r.out);
    ASSERT_TRUE(log.wellFormed()) << r.out;
    EXPECT_EQ(log.num("count(/job_log/*)"), 2) << "one job, then the totals";
    EXPECT_EQ(log.count("/job_log/*[1][self::job]"), 1);
    EXPECT_EQ(log.count("/job_log/*[2][self::stat]"), 1);
    EXPECT_EQ(log.num("/job_log/stat/@job"), 1);
    for (const char* counter : {"fail", "warn", "crash", "timeout"})
        EXPECT_EQ(log.num(("/job_log/stat/@" + std::string(counter)).c_str()), 0) << counter;
    EXPECT_GE(log.num("/job_log/stat/@nThread"), 1);
    EXPECT_GE(log.num("/job_log/stat/@memPeakMb"), 0);
    EXPECT_EQ(log.num("/job_log/job/ret"), 0);
    EXPECT_EQ(log.count("/job_log/job/time"), 1);
    EXPECT_EQ(log.count("/job_log/job/info"), 0) << "no records, no info element";
    EXPECT_EQ(log.num("/job_log/job/func/xml_summary/@elements"), 5);
}

TEST_F(ToolCli, ArgumentsBecomeAttributes) {
    SToolRun r = runAtRoot({"list", "examples/data", "*.xml", "//b"});
    EXPECT_EQ(r.exitCode, 0) << r.out;
    CJobLog log(r.out);
    ASSERT_TRUE(log.wellFormed()) << r.out;
    // On the job: every argument after the name, by its index in the command line.
    EXPECT_EQ(log.str("/job_log/job/@arg2"), "examples/data");
    EXPECT_EQ(log.str("/job_log/job/@arg3"), "*.xml");
    // On the function record: the first as a file name, the rest numbered from 1.
    EXPECT_EQ(log.str("/job_log/job/func/@file"), "data");
    EXPECT_EQ(log.str("/job_log/job/func/@arg1"), "*.xml");
    EXPECT_EQ(log.count("/job_log/job/func/@dir"), 1);
    EXPECT_EQ(log.str("/job_log/job/func/out"), " ");
    std::vector<std::string> names = log.strs("/job_log/job/func/files/file/@name");
    EXPECT_EQ(names, (std::vector<std::string>{"bracket.xml", "flange.xml", "plate.xml"}));
}

TEST_F(ToolCli, OptionsMayStandAnywhere) {
    SToolRun before = runAtRoot({"//b", "xml_summary", "examples/data/plate.xml"});
    SToolRun between = runAtRoot({"xml_summary", "/.B", "examples/data/plate.xml"});
    for (const SToolRun* r : {&before, &between}) {
        CJobLog log(r->out);
        ASSERT_TRUE(log.wellFormed()) << r->out;
        EXPECT_EQ(log.str("/job_log/job/@arg2"), "examples/data/plate.xml");
        EXPECT_EQ(log.count("/job_log/job/@arg3"), 0);
        EXPECT_EQ(r->exitCode, 0);
    }
}

TEST_F(ToolCli, SwitchedOffRedirectionStillTakesItsFileName) {
    const std::string never = m_dir + "/never.xml";
    const std::string neverErr = m_dir + "/never.txt";
    SToolRun r = runAtRoot(
        {"xml_summary", "//e-", neverErr, "examples/data/plate.xml", "//o-", never, "//b"});
    EXPECT_EQ(r.exitCode, 0) << r.out;
    EXPECT_FALSE(fileExists(never));
    EXPECT_FALSE(fileExists(neverErr));
    CJobLog log(r.out);
    ASSERT_TRUE(log.wellFormed()) << r.out;
    EXPECT_EQ(log.str("/job_log/job/@arg2"), "examples/data/plate.xml");
    EXPECT_EQ(log.count("/job_log/job/@arg3"), 0) << "the file names were not left to the job";
    EXPECT_EQ(log.count("/job_log/job/func/xml_summary"), 1);
}

TEST_F(ToolCli, RedirectedOutputHoldsTheWholeDocument) {
    const std::string outFile = m_dir + "/run.xml";
    const std::string errFile = m_dir + "/err.txt";
    SToolRun r = runAtRoot({"//o", outFile, "unknownjob", "//e", errFile, "//b"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.out, "") << "the console gets nothing, not even the declaration";
    std::string text = readFile(outFile);
    EXPECT_EQ(text.rfind("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n", 0), 0u) << text;
    CJobLog log(text);
    ASSERT_TRUE(log.wellFormed()) << text;
    EXPECT_EQ(log.num("/job_log/stat/@fail"), 1);
    EXPECT_TRUE(fileExists(errFile));
}

TEST_F(ToolCli, OutputThatCannotBeOpenedEndsTheRun) {
    const std::string bad = m_dir + "/no/such/folder/out.xml";
    // //b after the failing option still spares the prompt; //e fails without one.
    for (const std::vector<std::string>& args :
         {std::vector<std::string>{"xml_summary", "//o", bad, "//b"},
          {"//b", "xml_summary", "//e", bad},
          {"xml_summary", "//e", bad}}) {
        SToolRun r = runHere(args);
        ASSERT_FALSE(r.timedOut) << args[1] << " " << args[2];
        EXPECT_EQ(r.exitCode, 1);
        EXPECT_NE(r.out.find("Fatal: can't open " + bad + "\n"), std::string::npos) << r.out;
        EXPECT_EQ(r.out.find("<job_log"), std::string::npos);
        EXPECT_EQ(r.out.find("Press any key"), std::string::npos);
        EXPECT_FALSE(fileExists(bad));
    }
}

TEST_F(ToolCli, FailedStdoutRedirectionPausesButStderrDoesNot) {
    const std::string bad = m_dir + "/no/such/folder/out.xml";
    bool typed = false;
    SToolRun r = runToolOnTerminal({"xml_summary", "//o", bad}, m_dir, "Press any key", 'q', typed, 20);
    EXPECT_TRUE(typed) << r.out;
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_NE(r.out.find("Fatal: can't open"), std::string::npos);

    // The same failure on stderr returns at once: no prompt to answer.
    r = runToolOnTerminal({"xml_summary", "//e", bad}, m_dir, "Press any key", 'q', typed, 20);
    EXPECT_FALSE(typed) << r.out;
    EXPECT_FALSE(r.timedOut);
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_NE(r.out.find("Fatal: can't open"), std::string::npos);
}

TEST_F(ToolCli, JobThatOnlyWarnsIsNotOk) {
    SToolRun r = runAtRoot({"list", "examples/data", "*.nothing", "//b"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_NE(r.out.find("Warn : no file of examples/data matches *.nothing\n"), std::string::npos);
    CJobLog log(r.out);
    ASSERT_TRUE(log.wellFormed()) << r.out;
    EXPECT_EQ(log.num("/job_log/stat/@warn"), 1);
    EXPECT_EQ(log.num("/job_log/stat/@fail"), 0);
    EXPECT_EQ(log.num("/job_log/job/ret"), -1);
    EXPECT_EQ(log.str("/job_log/job/info/warning/@file"), "vqk_run");
    EXPECT_GT(log.num("/job_log/job/info/warning/@line"), 0);
}

} // namespace
