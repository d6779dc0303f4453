// The child runs' helpers that need no system calls of their own.
#include "self_child.h"
#include "support/test_files.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

const char* const kSelfChildRole = "VQK_DIAG_CHILD_ROLE";

std::string freshFolder(const std::string& name) { return test_files::freshFolder("diagnostics/" + name); }

std::string readText(const std::string& path) { return test_files::lfOnly(test_files::readFile(path)); }

std::vector<std::string> readLines(const std::string& path) {
    std::vector<std::string> lines;
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}
