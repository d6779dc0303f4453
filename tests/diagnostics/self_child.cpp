#include "self_child.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

extern char** environ;

const char* const kSelfChildRole = "VQK_DIAG_CHILD_ROLE";

SChildEnd runSelf(const std::string& role, const std::vector<std::pair<std::string, const char*>>& env,
                  const std::string& outFile) {
    std::vector<std::string> vars;
    for (char** e = environ; *e; ++e) {
        std::string v(*e);
        bool replaced = v.compare(0, std::string(kSelfChildRole).size() + 1,
                                  std::string(kSelfChildRole) + "=") == 0;
        for (const auto& kv : env)
            replaced = replaced || v.compare(0, kv.first.size() + 1, kv.first + "=") == 0;
        if (!replaced)
            vars.push_back(v);
    }
    vars.push_back(std::string(kSelfChildRole) + "=" + role);
    for (const auto& kv : env)
        if (kv.second)
            vars.push_back(kv.first + "=" + kv.second);
    std::vector<char*> envp;
    for (auto& v : vars)
        envp.push_back(&v[0]);
    envp.push_back(nullptr);

    char exe[4096];
    ssize_t n = readlink("/proc/self/exe", exe, sizeof exe - 1);
    SChildEnd end;
    if (n <= 0)
        return end;
    exe[n] = 0;
    char* argv[] = {exe, nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, outFile.empty() ? "/dev/null" : outFile.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0644);
    pid_t pid = -1;
    int rc = posix_spawn(&pid, exe, &actions, nullptr, argv, envp.data());
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (rc != 0 || waitpid(pid, &status, 0) != pid)
        return end;
    end.exited = WIFEXITED(status);
    end.code = end.exited ? WEXITSTATUS(status) : -1;
    end.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    return end;
}

std::string freshFolder(const std::string& name) {
    const char* tmp = std::getenv("VQK_TEST_TMP");
    std::string dir = tmp && *tmp ? tmp : VQK_BINARY_DIR "/test_tmp";
    mkdir(dir.c_str(), 0755);
    dir += "/diagnostics";
    mkdir(dir.c_str(), 0755);
    dir += "/" + name;
    std::string rm = "rm -rf '" + dir + "'";
    if (std::system(rm.c_str()) != 0 || mkdir(dir.c_str(), 0755) != 0)
        return std::string();
    return dir;
}

std::string readText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
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
