// Runs this test program again as a child process in a role that a test file picks up
// before any test runs (see SELF_CHILD_ROLE below), for the behaviour that needs a fresh
// process: first-out truncation, record caps, crashes.
#pragma once

#include <string>
#include <utility>
#include <vector>

// SIGTRAP, the debugger trap's signal, which Windows' headers do not name; a child
// ended there by a breakpoint exception reports it too.
constexpr int kTrapSignal = 5;

// The environment variable naming the child's role.
extern const char* const kSelfChildRole;

struct SChildEnd {
    bool exited = false;
    int code = -1;   // exit code when exited
    int signal = 0;  // the signal that ended it otherwise
    int pid = -1;    // its process id, once started
};

// Starts this program with kSelfChildRole=role plus `env` (a null value removes the
// variable), standard output to `outFile` when given, and waits for it.
SChildEnd runSelf(const std::string& role, const std::vector<std::pair<std::string, const char*>>& env,
                  const std::string& outFile = std::string());

// A fresh, empty folder for one test under the tests' temporary folder.
std::string freshFolder(const std::string& name);
std::string readText(const std::string& path);
std::vector<std::string> readLines(const std::string& path);

// In a test file: runs `body` when this process was started in `role`, then exits 0.
#define SELF_CHILD_ROLE(role, body)                                                                \
    static const bool selfChild_##body = [] {                                                       \
        const char* r = std::getenv(kSelfChildRole);                                                \
        if (!r || std::string(r) != (role))                                                         \
            return false;                                                                           \
        body();                                                                                     \
        std::exit(0);                                                                               \
    }()
