// The tool runs' helpers that need no system calls of their own: folders, files and
// the tests' temporary environment.
#include "tool_process.h"

#include "vqk/diagnostics/log_workflow.h"
#include "vqk/platform/environment.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

std::string toolPath() { return std::string(VQK_BINARY_DIR) + "/bin/vqk_run" VQK_EXE_SUFFIX; }

std::string sourceDir() { return VQK_SOURCE_DIR; }

std::string testTmpRoot() {
    // Fixed at the first call, and absolute: the tool runs in other folders, and a
    // relative TEMP would put its workflow log wherever it happens to run.
    static const std::string root = [] {
        const char* base = std::getenv("VQK_TEST_TMP");
        std::string dir = base && *base ? base : std::string(VQK_BINARY_DIR) + "/test_tmp";
        std::error_code ec;
        std::filesystem::path abs = std::filesystem::absolute(dir, ec);
        std::filesystem::create_directories(abs, ec);
        return abs.generic_string();
    }();
    return root;
}

namespace {

// Whatever this program writes, the workflow log of the jobs it runs in-process
// included, goes under the tests' temporary folder and never into the folder it was
// started from.
class CTestTmpEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        vq::platform::setEnv("TEMP", testTmpRoot().c_str());
        vq::CLogWorkflow::setPrefix("vqk_jobs_tests");
    }
};

::testing::Environment* const g_testTmp = ::testing::AddGlobalTestEnvironment(new CTestTmpEnvironment);

} // namespace

std::string toolLogDir() {
    std::string dir = testTmpRoot() + "/jobs_logs";
    std::error_code ec;
    std::filesystem::create_directories(dir, ec);
    return dir;
}

std::string freshTempDir(const std::string& name) {
    std::string dir = testTmpRoot() + "/jobs/" + name;
    std::error_code ec;
    std::filesystem::remove_all(dir, ec);
    if (!std::filesystem::create_directories(dir, ec))
        return "";
    return dir;
}

bool fileExists(const std::string& path) {
    std::error_code ec;
    return std::filesystem::exists(path, ec);
}

