// Runs the vqk_run tool as a child process with a real command line, for the job host
// tests: standard output captured, standard input from /dev/null or a pseudo-terminal,
// and a time limit after which the child is killed (so a wait that never ends fails the
// test instead of hanging it).
#pragma once

#include "support/test_files.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

struct SToolRun {
    int exitCode = -1;  // -1 when the child did not exit normally
    bool timedOut = false;
    std::string out;    // standard output
    std::string err;    // standard error
};

// The tool's path in the build tree.
std::string toolPath();
// The repository's root folder.
std::string sourceDir();
// The tests' temporary folder (VQK_TEST_TMP, made absolute), where every file the
// tests make belongs.
std::string testTmpRoot();
// A fresh empty folder for one test, under the tests' temporary folder.
std::string freshTempDir(const std::string& name);
using test_files::lfOnly;
using test_files::readAndClose;
using test_files::readFile;
using test_files::writeFile;
bool fileExists(const std::string& path);

// The folder of the tools' workflow logs (their TEMP), shared by all tool runs.
std::string toolLogDir();

// Runs the tool with `args` in folder `cwd`, stdin from /dev/null.
SToolRun runTool(const std::vector<std::string>& args, const std::string& cwd,
                 int timeoutSeconds = 30);

// Whether runToolOnTerminal can give the tool a terminal here (Windows has no
// pseudo-terminal a test can type into).
bool terminalRunsSupported();

// Runs the tool with a pseudo-terminal as its standard input (in the terminal's default
// mode, echo on); once its standard output shows `waitFor`, `key` is typed into the
// terminal. keyTyped tells whether that happened.
SToolRun runToolOnTerminal(const std::vector<std::string>& args, const std::string& cwd,
                           const std::string& waitFor, char key, bool& keyTyped,
                           int timeoutSeconds = 30);

// Runs the tool with its standard error on a pseudo-terminal `columns` wide (stdin from
// /dev/null); `err` holds what the terminal received.
SToolRun runToolWithErrOnTerminal(const std::vector<std::string>& args, const std::string& cwd,
                                  int columns, int timeoutSeconds = 30);

// A test that runs the tool: skipped when the tool is not built; m_dir is a fresh
// folder named after the test.
class ToolTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!fileExists(toolPath()))
            GTEST_SKIP() << "vqk_run is not built: " << toolPath();
        m_dir = freshTempDir(::testing::UnitTest::GetInstance()->current_test_info()->name());
        ASSERT_FALSE(m_dir.empty());
    }

    std::string m_dir;
};
