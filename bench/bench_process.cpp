// bench/bench_process.cpp
//
// Starts a trivial program (/bin/true) and waits for it, with vq::startProcess (wait, no
// limit, no job) and with posix_spawn + waitpid, in interleaved rounds, and prints the
// median time per start of each and startProcess's ratio to posix_spawn. startProcess
// also writes its three workflow-log records per start; a second pair of figures leaves
// the log out (minimum level above 5) to show the cost of the start alone.
//
//   cmake --workflow --preset bench          (or: build/bench/bin/bench_process)
#include "vqk/diagnostics/log_workflow.h"
#include "vqk/jobs/process.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <spawn.h>
#include <sys/wait.h>
#include <vector>

extern char** environ;

namespace {

const char* const kProgram = "/bin/true";
constexpr int kRounds = 15;
constexpr int kStartsPerRound = 40;

double perStartUs(void (*start)()) {
    auto t0 = std::chrono::steady_clock::now();
    for (int i = 0; i < kStartsPerRound; ++i)
        start();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - t0).count() /
           kStartsPerRound;
}

void viaStartProcess() {
    if (vq::startProcess(kProgram, true, -1, false, 0) != 0)
        std::fprintf(stderr, "startProcess failed\n");
}

void viaPosixSpawn() {
    pid_t pid;
    char* argv[] = {const_cast<char*>(kProgram), nullptr};
    if (posix_spawn(&pid, kProgram, nullptr, nullptr, argv, environ) != 0) {
        std::fprintf(stderr, "posix_spawn failed\n");
        return;
    }
    int status = 0;
    waitpid(pid, &status, 0);
}

double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

void compare(const char* title) {
    std::vector<double> ours, peer;
    for (int r = 0; r < kRounds; ++r) {
        ours.push_back(perStartUs(viaStartProcess));
        peer.push_back(perStartUs(viaPosixSpawn));
    }
    double a = median(ours), b = median(peer);
    std::printf("%-34s startProcess %8.1f us  posix_spawn %8.1f us  ratio %.2f\n", title, a, b, a / b);
}

} // namespace

int main() {
    perStartUs(viaStartProcess);  // warm the caches and the log file
    compare("with the workflow log:");
    vq::CLogWorkflow::setMinLevel(6);
    compare("workflow log off:");
    return 0;
}
