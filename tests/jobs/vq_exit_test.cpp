// vq::exit ends the process with its code after leaving a record in the workflow log.
#include "tool_process.h"

#include "vqk/diagnostics/log_workflow.h"
#include "vqk/jobs/vq_exit.h"
#include "vqk/platform/environment.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

namespace {

TEST(VqExit, LogsTheCodeAndExitsWithIt) {
    const std::string dir = freshTempDir("vq_exit");
    ASSERT_FALSE(dir.empty());
    EXPECT_EXIT(
        {
            vq::platform::setEnv("TEMP", dir.c_str());
            vq::CLogWorkflow::setPrefix("exit_test");
            vq::exit(3);
        },
        ::testing::ExitedWithCode(3), "");
    const std::string log = readFile(dir + "/workflow.exit_test.xml");
    EXPECT_NE(log.find("msg=\"exit: abnormal termination with code 3\"/>"), std::string::npos) << log;
}

TEST(VqExit, JobRunIsAStepOfTheWorkflowLog) {
    if (!fileExists(toolPath()))
        GTEST_SKIP() << "vqk_run is not built: " << toolPath();
    const std::string dir = freshTempDir("workflow_step");
    std::remove((toolLogDir() + "/workflow.vqk_run.xml").c_str());
    SToolRun r = runTool({"list", ".", "*.none", "//b"}, dir);
    EXPECT_EQ(r.exitCode, 1);
    const std::string log = readFile(toolLogDir() + "/workflow.vqk_run.xml");
    EXPECT_NE(log.find("name=\"job\" text=\"list\""), std::string::npos);
}

} // namespace
