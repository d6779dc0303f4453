// The child runs' helpers that need no system calls of their own.
#include "self_child.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

const char* const kSelfChildRole = "VQK_DIAG_CHILD_ROLE";

std::string freshFolder(const std::string& name) {
    const char* tmp = std::getenv("VQK_TEST_TMP");
    std::string dir = std::string(tmp && *tmp ? tmp : VQK_BINARY_DIR "/test_tmp") + "/diagnostics/" + name;
    std::error_code ec;
    std::filesystem::remove_all(dir, ec);
    if (!std::filesystem::create_directories(dir, ec))
        return std::string();
    return dir;
}

std::string readText(const std::string& path) {
    std::ifstream in(path); // text mode: CR LF comes back as LF on Windows
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

std::vector<std::string> readLines(const std::string& path) {
    std::vector<std::string> lines;
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}
