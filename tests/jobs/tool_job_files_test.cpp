// Job files and jobs lists run by a real tool: entries, groups, masks, XML jobs,
// registered tests, and every failure a job file can cause.
#include "job_log.h"
#include "tool_process.h"

#include <gtest/gtest.h>

namespace {

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
    // Writes `text` as a job file in the test's folder and runs it there.
    SToolRun runJobFile(const std::string& name, const std::string& text) {
        writeFile(m_dir + "/" + name, text);
        return runTool({name, "//b"}, m_dir);
    }
};

TEST_F(ToolJobFiles, ExamplesJobsList) {
    SToolRun r = runTool({"examples/jobs.xml", "//b"}, sourceDir());
    EXPECT_EQ(r.exitCode, 1) << "one example fails on purpose";
    CJobLog log(r.out);
    ASSERT_TRUE(log.wellFormed()) << r.out;
    // Groups are transparent: every entry is a job directly inside the list's job.
    EXPECT_EQ(log.count("//group"), 0);
    EXPECT_EQ(log.str("/job_log/job/@name"), "examples/jobs.xml");
    EXPECT_EQ(log.count("/job_log/job/job"), 9);
    // The mask entry ran once per matching file, in name order.
    std::vector<std::string> masked = log.strs("/job_log/job/job[func/@func='xml_summary']/@arg2");
    EXPECT_EQ(masked, (std::vector<std::string>{"examples/data/plate.xml", "data/bracket.xml",
                                                "data/flange.xml", "data/plate.xml"}));
    // The XML job and the registered test ran from their own job files.
    EXPECT_EQ(log.count("/job_log/job/job/func[@func='expect_counts']"), 2);
    EXPECT_EQ(log.str("/job_log/job/job/func[@func='same_shape']/same_shape/same"), "1");
    // The failure on purpose, recorded with the job that failed.
    EXPECT_EQ(log.str("/job_log/job/job[@name='examples/expect_wrong.xml']/info/error/@msg"),
              "element hole: expected 5, found 4");
    EXPECT_EQ(log.num("/job_log/job/job[@name='examples/expect_wrong.xml']/ret"), -1);
    EXPECT_EQ(log.num("/job_log/job/ret"), -1);
    EXPECT_EQ(log.num("/job_log/stat/@job"), 9);
    EXPECT_EQ(log.num("/job_log/stat/@fail"), 1);
}

TEST_F(ToolJobFiles, SingleJobEntryWithArguments) {
    SToolRun r = runJobFile("one.xml", "<job name=\"list\" arg1=\".\" arg2=\"*.xml\" arg4=\"gap\"/>");
    EXPECT_EQ(r.exitCode, 0) << r.out;
    CJobLog log(r.out);
    ASSERT_TRUE(log.wellFormed()) << r.out;
    EXPECT_EQ(log.str("/job_log/job/job/@name"), "list");
    EXPECT_EQ(log.str("/job_log/job/job/@arg3"), "*.xml");
    EXPECT_EQ(log.count("/job_log/job/job/@arg4"), 0) << "arguments stop at the first gap";
    // The mask ignores letter case; the listing is in name order.
    EXPECT_EQ(log.strs("/job_log/job/job/func/files/file/@name"),
              (std::vector<std::string>{"a.xml", "b.xml", "c.XML", "one.xml"}));
}

TEST_F(ToolJobFiles, GroupsNestAndEmptyListsRunNothing) {
    SToolRun r = runJobFile("list.xml",
                            "<jobs>\n<group name=\"g\"><group><job name=\"xml_summary\" arg1=\"a.xml\"/>"
                            "</group>\n<job name=\"xml_summary\" arg1=\"b.xml\"></job></group>\n</jobs>\n");
    EXPECT_EQ(r.exitCode, 0) << r.out;
    CJobLog log(r.out);
    ASSERT_TRUE(log.wellFormed()) << r.out;
    EXPECT_EQ(log.strs("/job_log/job/job/@arg2"), (std::vector<std::string>{"a.xml", "b.xml"}));
    EXPECT_EQ(log.num("/job_log/stat/@job"), 2);

    r = runJobFile("empty.xml", "<?xml version=\"1.0\"?>\n<jobs/>\n");
    CJobLog empty(r.out);
    ASSERT_TRUE(empty.wellFormed()) << r.out;
    EXPECT_EQ(empty.num("/job_log/stat/@job"), 0);
    EXPECT_EQ(empty.num("/job_log/stat/@fail"), 0);
    EXPECT_EQ(r.exitCode, 0);
}

TEST_F(ToolJobFiles, UnknownTagEndsTheList) {
    SToolRun r = runJobFile("list.xml",
                            "<jobs><job name=\"xml_summary\" arg1=\"a.xml\"/><task name=\"x\"/>"
                            "<job name=\"xml_summary\" arg1=\"b.xml\"/></jobs>");
    EXPECT_EQ(r.exitCode, 1);
    CJobLog log(r.out);
    ASSERT_TRUE(log.wellFormed()) << r.out;
    EXPECT_EQ(log.count("/job_log/job/job"), 1) << "the entry before the tag ran, none after";
    EXPECT_EQ(log.str("/job_log/job/Fail"), "Fatal: unknown tag in jobs list file");
    EXPECT_EQ(log.str("/job_log/job/info/error/@file"), "vq_job");
    EXPECT_EQ(log.num("/job_log/stat/@fail"), 1);
    EXPECT_EQ(log.num("/job_log/stat/@job"), 1);
}

TEST_F(ToolJobFiles, SyntaxErrorIsReportedWithTheJobName) {
    SToolRun r = runJobFile("bad.xml", "<jobs><job name=\"list\" arg1=x/></jobs>");
    EXPECT_EQ(r.exitCode, 1);
    CJobLog log(r.out);
    ASSERT_TRUE(log.wellFormed()) << r.out;
    EXPECT_EQ(log.str("/job_log/job/info/error/@msg"), "bad.xml : XML error: invalid tag attributes");
    EXPECT_EQ(log.num("/job_log/job/info/error/@line"), 720);
    EXPECT_EQ(log.str("/job_log/job/Fail"), "bad.xml : XML error: invalid tag attributes");
    EXPECT_EQ(log.num("/job_log/job/ret"), -1);
}

TEST_F(ToolJobFiles, MissingFileAndNameWithAPoint) {
    // "list" is registered, but a name with a point always means a job file.
    SToolRun r = runTool({"list.x", "//b"}, m_dir);
    EXPECT_EQ(r.exitCode, 1);
    CJobLog log(r.out);
    ASSERT_TRUE(log.wellFormed()) << r.out;
    EXPECT_EQ(log.str("/job_log/job/Fail"), "Can't open file 'list.x'");
    EXPECT_EQ(log.num("/job_log/job/info/error/@line"), 525);
    EXPECT_EQ(log.count("//func"), 0);
}

TEST_F(ToolJobFiles, FolderThatCannotBeEnteredSkipsTheEntry) {
    SToolRun r = runJobFile("dir.xml",
                            "<jobs><job dir=\"no/such\" name=\"list\"/><job name=\"list\" arg1=\".\" "
                            "arg2=\"a.*\"/></jobs>");
    EXPECT_EQ(r.exitCode, 1);
    CJobLog log(r.out);
    ASSERT_TRUE(log.wellFormed()) << r.out;
    EXPECT_EQ(log.str("/job_log/job/Fail"), "Can't change dir to no/such");
    EXPECT_EQ(log.num("/job_log/job/info/error/@line"), 598);
    // The next entry runs from the tool's own folder again.
    EXPECT_EQ(log.strs("/job_log/job/job/func/files/file/@name"), (std::vector<std::string>{"a.xml"}));
}

TEST_F(ToolJobFiles, MaskEntries) {
    ASSERT_EQ(std::system(("mkdir -p '" + m_dir + "/sub' && printf '<x/>' > '" + m_dir +
                           "/sub/x2.xml' && printf '<x><y/></x>' > '" + m_dir + "/sub/x1.xml'")
                              .c_str()),
              0);
    SToolRun r = runJobFile("mask.xml",
                            "<jobs><job dir=\"sub\" name=\"xml_summary\" mask=\"x*.xml\"/>"
                            "<job name=\"xml_summary\" mask=\"*.none\"/></jobs>");
    EXPECT_EQ(r.exitCode, 1);
    CJobLog log(r.out);
    ASSERT_TRUE(log.wellFormed()) << r.out;
    EXPECT_EQ(log.strs("/job_log/job/job/@arg2"), (std::vector<std::string>{"x1.xml", "x2.xml"}));
    EXPECT_EQ(log.strs("/job_log/job/job/func/xml_summary/@elements"),
              (std::vector<std::string>{"2", "1"}));
    EXPECT_EQ(log.str("/job_log/job/Fail"), "No file with mask: *.none");
    EXPECT_EQ(log.num("/job_log/job/info/error/@line"), 466);
    EXPECT_EQ(log.num("/job_log/stat/@job"), 2);
    EXPECT_EQ(log.num("/job_log/stat/@fail"), 1);
}

TEST_F(ToolJobFiles, RootElementChoosesTestXmlJobOrPlainJob) {
    writeFile(m_dir + "/other.xml", "<a><b/><b/><b/></a>");
    // A registered test, comparing two files that differ.
    SToolRun r = runJobFile("test.xml", "<same_shape a=\"a.xml\" b=\"other.xml\"/>");
    EXPECT_EQ(r.exitCode, 1);
    CJobLog test(r.out);
    ASSERT_TRUE(test.wellFormed()) << r.out;
    EXPECT_EQ(test.str("/job_log/job/func/@func"), "same_shape");
    EXPECT_EQ(test.str("/job_log/job/func/@file"), "test.xml");
    EXPECT_EQ(test.num("/job_log/stat/@fail"), 2) << "attribute count and element b differ";
    EXPECT_EQ(test.num("/job_log/stat/@job"), 1);

    // A registered XML job, reading its own element.
    r = runJobFile("expect.xml", "<expect_counts file=\"other.xml\"><count element=\"b\" n=\"3\"/></expect_counts>");
    EXPECT_EQ(r.exitCode, 0) << r.out;
    CJobLog xmlJob(r.out);
    ASSERT_TRUE(xmlJob.wellFormed()) << r.out;
    EXPECT_EQ(xmlJob.str("/job_log/job/func/@func"), "expect_counts");
    EXPECT_EQ(xmlJob.str("/job_log/job/func/out"), " ");
    EXPECT_EQ(xmlJob.num("/job_log/job/func/expect/@found"), 3);
    EXPECT_EQ(xmlJob.num("/job_log/stat/@job"), 1);

    // Neither: the element's name runs as an ordinary job, with the file as argument.
    r = runJobFile("plain.xml", "<xml_summary/>");
    EXPECT_EQ(r.exitCode, 0) << r.out;
    CJobLog plain(r.out);
    ASSERT_TRUE(plain.wellFormed()) << r.out;
    EXPECT_EQ(plain.str("/job_log/job/job/@name"), "xml_summary");
    EXPECT_EQ(plain.str("/job_log/job/job/func/@file"), "plain.xml");
    EXPECT_EQ(plain.num("/job_log/job/job/func/xml_summary/@elements"), 1);
}

TEST_F(ToolJobFiles, ElementNameIsCutToItsBuffer) {
    // No job of that name: it runs as a plain job under the first 255 characters.
    const std::string name(300, 'q');
    SToolRun r = runJobFile("long.xml", "<" + name + "/>");
    EXPECT_EQ(r.exitCode, 1);
    CJobLog log(r.out);
    ASSERT_TRUE(log.wellFormed()) << r.out;
    EXPECT_EQ(log.str("/job_log/job/job/@name"), name.substr(0, 255));
    EXPECT_EQ(log.str("/job_log/job/job/@arg2"), m_dir + "/long.xml");
    EXPECT_EQ(log.str("/job_log/job/job/info/error/@msg"),
              "Can't find registered function '" + name.substr(0, 255) + "'");
}

} // namespace

namespace {

TEST_F(ToolJobFiles, ListThatNamesItselfStopsAtTheNestingLimit) {
    SToolRun r = runJobFile("self.xml", "<jobs><job name=\"self.xml\"/></jobs>");
    ASSERT_FALSE(r.timedOut);
    EXPECT_EQ(r.exitCode, 1);
    CJobLog log(r.out);
    ASSERT_TRUE(log.wellFormed()) << r.err;
    EXPECT_EQ(log.count("//info/error"), 1);
    EXPECT_EQ(log.str("//info/error/@msg"), "Job files nested too deeply: self.xml");
    EXPECT_EQ(log.num("/job_log/stat/@fail"), 1);
    EXPECT_EQ(log.count("//job[not(job)]"), 1) << "one innermost job, where the nesting stopped";
}

} // namespace

namespace {

TEST_F(ToolJobFiles, MarkupInNamesKeepsTheDocumentWellFormed) {
    SToolRun r = runTool({"R&D <\"1\">.xml", "//b"}, m_dir);
    EXPECT_EQ(r.exitCode, 1);
    CJobLog log(r.out);
    ASSERT_TRUE(log.wellFormed()) << r.out;
    EXPECT_EQ(log.str("/job_log/job/@name"), "R&D <\"1\">.xml");
    EXPECT_EQ(log.str("/job_log/job/Fail"), "Can't open file 'R&D <\"1\">.xml'");
    EXPECT_EQ(log.str("/job_log/job/info/error/@msg"), "Can't open file 'R&D <\"1\">.xml'");
}

} // namespace
