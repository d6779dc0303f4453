// Job files and jobs lists run by a real tool: entries, groups, masks, XML jobs,
// registered tests, and every failure a job file can cause.
#include "job_log.h"
#include "tool_process.h"

#include <gtest/gtest.h>

#include <algorithm>

#include <filesystem>

namespace {

using Strs = std::vector<std::string>;

class ToolJobFiles : public ToolTest {
protected:
    void SetUp() override {
        ToolTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        writeFile(m_dir + "/a.xml", "<a><b x=\"1\"/><b/></a>\n");
        writeFile(m_dir + "/c.XML", "<c/>\n");
        writeFile(m_dir + "/b.xml", "<?xml version=\"1.0\"?>\n<r><s><t/></s></r>\n");
    }
    // Writes `text` as a job file in the test's folder (none when empty) and runs it there.
    SToolRun runJobFile(const std::string& name, const std::string& text) {
        if (!text.empty())
            writeFile(m_dir + "/" + name, text);
        return runTool({name, "//b"}, m_dir);
    }
};

TEST_F(ToolJobFiles, ExamplesJobsList) {
    SToolRun r = runTool({"examples/jobs.xml", "//b"}, sourceDir());
    EXPECT_EQ(r.exitCode, 1) << "one example fails on purpose";
    PARSED_LOG(log, r.out);
    // Groups are transparent; the mask entry ran once per matching file, in name order.
    EXPECT_EQ(log.count("//group"), 0);
    EXPECT_EQ(log.str("/job_log/job/@name"), "examples/jobs.xml");
    EXPECT_EQ(log.count("/job_log/job/job"), 9);
    EXPECT_EQ(log.strs("/job_log/job/job[func/@func='xml_summary']/@arg2"),
              (Strs{"examples/data/plate.xml", "data/bracket.xml", "data/flange.xml", "data/plate.xml"}));
    EXPECT_EQ(log.count("/job_log/job/job/func[@func='expect_counts']"), 2);
    EXPECT_EQ(log.str("/job_log/job/job/func[@func='same_shape']/same_shape/same"), "1");
    EXPECT_EQ(log.str("/job_log/job/job[@name='examples/expect_wrong.xml']/info/error/@msg"),
              "element hole: expected 5, found 4");
    EXPECT_EQ(log.num("/job_log/job/job[@name='examples/expect_wrong.xml']/ret"), -1);
    EXPECT_EQ(log.num("/job_log/job/ret"), -1);
    EXPECT_EQ(log.num("/job_log/stat/@job"), 9);
    EXPECT_EQ(log.num("/job_log/stat/@fail"), 1);
}

TEST_F(ToolJobFiles, EntriesGroupsAndMasks) {
    ASSERT_TRUE(std::filesystem::create_directories(m_dir + "/sub"));
    writeFile(m_dir + "/sub/x2.xml", "<x/>");
    writeFile(m_dir + "/sub/x1.xml", "<x><y/></x>");
    // Arguments stop at the first gap; the mask ignores letter case; listings are in name order.
    SToolRun r = runJobFile("one.xml", "<job name=\"list\" arg1=\".\" arg2=\"*.xml\" arg4=\"gap\"/>");
    EXPECT_EQ(r.exitCode, 0) << r.out;
    PARSED_LOG(one, r.out);
    EXPECT_EQ(one.str("/job_log/job/job/@name"), "list");
    EXPECT_EQ(one.str("/job_log/job/job/@arg3"), "*.xml");
    EXPECT_EQ(one.count("/job_log/job/job/@arg4"), 0);
    EXPECT_EQ(one.strs("/job_log/job/job/func/files/file/@name"), (Strs{"a.xml", "b.xml", "c.XML", "one.xml"}));

    r = runJobFile("list.xml", "<jobs>\n<group name=\"g\"><group><job name=\"xml_summary\" arg1=\"a.xml\"/>"
                               "</group>\n<job name=\"xml_summary\" arg1=\"b.xml\"></job></group>\n</jobs>\n");
    EXPECT_EQ(r.exitCode, 0) << r.out;
    PARSED_LOG(groups, r.out);
    EXPECT_EQ(groups.strs("/job_log/job/job/@arg2"), (Strs{"a.xml", "b.xml"}));
    EXPECT_EQ(groups.num("/job_log/stat/@job"), 2);

    r = runJobFile("empty.xml", "<?xml version=\"1.0\"?>\n<jobs/>\n");
    EXPECT_EQ(r.exitCode, 0);
    PARSED_LOG(empty, r.out);
    EXPECT_EQ(empty.num("/job_log/stat/@job"), 0);
    EXPECT_EQ(empty.num("/job_log/stat/@fail"), 0);

    r = runJobFile("mask.xml", "<jobs><job dir=\"sub\" name=\"xml_summary\" mask=\"x*.xml\" arg1=\"../a.xml\"/>"
                               "<job name=\"xml_summary\" mask=\"*.none\"/></jobs>");
    EXPECT_EQ(r.exitCode, 1);
    PARSED_LOG(mask, r.out);
    EXPECT_EQ(mask.strs("/job_log/job/job/@arg2"), (Strs{"x1.xml", "x2.xml"}));
    // The entry's own arguments follow each file.
    EXPECT_EQ(mask.strs("/job_log/job/job/@arg3"), (Strs{"../a.xml", "../a.xml"}));
    EXPECT_EQ(mask.strs("/job_log/job/job/func/xml_summary/@elements"), (Strs{"2", "3", "1", "3"}));
    EXPECT_EQ(mask.str("/job_log/job/Fail"), "No file with mask: *.none");
    EXPECT_EQ(mask.num("/job_log/job/info/error/@line"), 466);
    EXPECT_EQ(mask.num("/job_log/stat/@job"), 2);
    EXPECT_EQ(mask.num("/job_log/stat/@fail"), 1);
}

TEST_F(ToolJobFiles, FailuresAreRecordedWithTheJob) {
    const std::string markup = "R&D <\"1\">.xml";
    struct SCase {
        std::string name, text, fail;
        int line;      // 0: not checked
        int jobs;      // inner jobs that ran
        bool msgIsFail;
        Strs listed;   // files listed by the jobs that ran after the failure
    } cases[] = {
        {"list.xml",
         "<jobs><job name=\"xml_summary\" arg1=\"a.xml\"/><task name=\"x\"/><job name=\"xml_summary\" "
         "arg1=\"b.xml\"/></jobs>",
         "Fatal: unknown tag in jobs list file", 0, 1, false, {}},
        {"bad.xml", "<jobs><job name=\"list\" arg1=x/></jobs>", "bad.xml : XML error: invalid tag attributes",
         720, 0, true, {}},
        // "list" is registered, but a name with a point always means a job file.
        {"list.x", "", "Can't open file 'list.x'", 525, 0, true, {}},
        // The entry after the folder that cannot be entered runs from the tool's own folder.
        {"dir.xml", "<jobs><job dir=\"no/such\" name=\"list\"/><job name=\"list\" arg1=\".\" arg2=\"a.*\"/></jobs>",
         "Can't change dir to no/such", 598, 1, true, {"a.xml"}},
        {markup, "", "Can't open file '" + markup + "'", 0, 0, true, {}},
    };
    for (const SCase& c : cases) {
        SCOPED_TRACE(c.name);
        SToolRun r = runJobFile(c.name, c.text);
        EXPECT_EQ(r.exitCode, 1);
        PARSED_LOG(log, r.out);
        EXPECT_EQ(log.str("/job_log/job/@name"), c.name);
        EXPECT_EQ(log.str("/job_log/job/Fail"), c.fail);
        EXPECT_EQ(log.str("/job_log/job/info/error/@file"), "vq_job");
        if (c.msgIsFail) {
            EXPECT_EQ(log.str("/job_log/job/info/error/@msg"), c.fail);
        }
        if (c.line) {
            EXPECT_EQ(log.num("/job_log/job/info/error/@line"), c.line);
        }
        EXPECT_EQ(log.count("/job_log/job/job"), c.jobs) << "entries before the failure ran, none after";
        EXPECT_EQ(log.count("//func"), c.jobs);
        EXPECT_EQ(log.strs("/job_log/job/job/func/files/file/@name"), c.listed);
        EXPECT_EQ(log.num("/job_log/job/ret"), -1);
        EXPECT_EQ(log.num("/job_log/stat/@fail"), 1);
    }
}

TEST_F(ToolJobFiles, RootElementChoosesTestXmlJobOrPlainJob) {
    writeFile(m_dir + "/other.xml", "<a><b/><b/><b/></a>");
    // A registered test, comparing two files that differ.
    SToolRun r = runJobFile("test.xml", "<same_shape a=\"a.xml\" b=\"other.xml\"/>");
    EXPECT_EQ(r.exitCode, 1);
    PARSED_LOG(test, r.out);
    EXPECT_EQ(test.str("/job_log/job/func/@func"), "same_shape");
    EXPECT_EQ(test.str("/job_log/job/func/@file"), "test.xml");
    EXPECT_EQ(test.num("/job_log/stat/@fail"), 2) << "attribute count and element b differ";
    EXPECT_EQ(test.num("/job_log/stat/@job"), 1);

    // A registered XML job, reading its own element.
    r = runJobFile("expect.xml", "<expect_counts file=\"other.xml\"><count element=\"b\" n=\"3\"/></expect_counts>");
    EXPECT_EQ(r.exitCode, 0) << r.out;
    PARSED_LOG(xmlJob, r.out);
    EXPECT_EQ(xmlJob.str("/job_log/job/func/@func"), "expect_counts");
    EXPECT_EQ(xmlJob.str("/job_log/job/func/out"), " ");
    EXPECT_EQ(xmlJob.num("/job_log/job/func/expect/@found"), 3);
    EXPECT_EQ(xmlJob.num("/job_log/stat/@job"), 1);

    // Neither: the element's name runs as an ordinary job, with the file as argument.
    r = runJobFile("plain.xml", "<xml_summary/>");
    EXPECT_EQ(r.exitCode, 0) << r.out;
    PARSED_LOG(plain, r.out);
    EXPECT_EQ(plain.str("/job_log/job/job/@name"), "xml_summary");
    EXPECT_EQ(plain.str("/job_log/job/job/func/@file"), "plain.xml");
    EXPECT_EQ(plain.num("/job_log/job/job/func/xml_summary/@elements"), 1);

    // An unknown name is cut to its 255-character buffer.
    const std::string name(300, 'q');
    r = runJobFile("long.xml", "<" + name + "/>");
    EXPECT_EQ(r.exitCode, 1);
    PARSED_LOG(cut, r.out);
    EXPECT_EQ(cut.str("/job_log/job/job/@name"), name.substr(0, 255));
    std::string full = cut.str("/job_log/job/job/@arg2"); // with the system's separators
    std::replace(full.begin(), full.end(), '\\', '/');
    EXPECT_EQ(full, m_dir + "/long.xml");
    EXPECT_EQ(cut.str("/job_log/job/job/info/error/@msg"),
              "Can't find registered function '" + name.substr(0, 255) + "'");
}

TEST_F(ToolJobFiles, JobFilesOpenFurtherUpAreRefusedAndNestingIsBounded) {
    // A list naming itself twice once ran 2^32 jobs; a chain of distinct lists stops at 32.
    for (int k = 0; k < 33; ++k)
        writeFile(m_dir + "/n" + std::to_string(k) + ".xml",
                  "<jobs><job name=\"n" + std::to_string(k + 1) + ".xml\"/></jobs>");
    writeFile(m_dir + "/loop.xml", "<jobs><job name=\"self.xml\"/></jobs>");
    const std::string open = "Job file already open by a list that runs it: self.xml";
    const struct {
        std::string file, text, msg;
        int fails;
    } cases[] = {{"self.xml", "<jobs><job name=\"self.xml\"/><job name=\"./self.xml\"/></jobs>", open, 2},
                 {"self.xml", "<jobs><job name=\"loop.xml\"/></jobs>", open, 1},
                 {"n0.xml", "", "Job files nested too deeply: n32.xml", 1}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        SToolRun r = runJobFile(c.file, c.text);
        ASSERT_FALSE(r.timedOut);
        PARSED_LOG(log, r.out);
        EXPECT_EQ(log.str("//info/error/@msg"), c.msg);
        EXPECT_EQ(log.num("/job_log/stat/@fail"), c.fails);
        EXPECT_EQ(log.count("//job[not(job)]"), c.fails) << "the refused entries, where the run stopped";
    }
}

} // namespace
