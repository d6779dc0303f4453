// Children started with posix_spawn and an environment of their own.
#include "self_child.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

extern char** environ;

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
    end.pid = int(pid);
    end.exited = WIFEXITED(status);
    end.code = end.exited ? WEXITSTATUS(status) : -1;
    end.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    return end;
}
