// Child processes on Linux. The child is made with clone(CLONE_VM | CLONE_VFORK): it runs
// on a small stack of its own inside this process's memory while the creating thread
// sleeps, applies the job settings itself, and execs. No page tables are copied (as a
// fork would), the exec error comes back through the shared memory before processCreate
// returns, and the job settings are in force before the program's first instruction.
#include "vqk/platform/process.h"
#include "vqk/platform/posix/process_job.h"
#include "vqk/text/convert.h"

#include <cerrno>
#include <cstdint>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <poll.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#ifndef CLONE_PIDFD
#define CLONE_PIDFD 0x00001000
#endif
#ifndef CLOSE_RANGE_CLOEXEC
#define CLOSE_RANGE_CLOEXEC (1U << 2)
#endif

extern char** environ;
extern "C" int __clone(int (*fn)(void*), void* stack, int flags, void* arg, ...);

namespace vq {
namespace platform {

namespace {

// What the child reads from the shared memory, and where it leaves its exec error.
struct SChildStart {
    const char* path = nullptr;
    char* const* argv = nullptr;
    char* const* envp = nullptr;
    const char* jobPrefix = nullptr;
    const char* const* jobNames = nullptr;  // the known jobs, for the child to join
    const pid_t* jobGroups = nullptr;
    size_t jobCount = 0;
    pid_t parent = 0;
    sigset_t parentMask;
    volatile int pidfd = -1;  // written by the kernel before the child runs
    volatile int error = 0;
};

constexpr size_t kChildStack = 64 * 1024;

// The kernel's own sigaction record (rt_sigaction), which the child passes directly.
struct SKernelSigaction {
    void (*handler)(int);
    unsigned long flags;
    void (*restorer)();
    uint64_t mask;
};

#if defined(__has_attribute)
#if __has_attribute(disable_sanitizer_instrumentation)
#define VQK_CHILD_UNINSTRUMENTED __attribute__((disable_sanitizer_instrumentation))
#endif
#endif
#ifndef VQK_CHILD_UNINSTRUMENTED
#define VQK_CHILD_UNINSTRUMENTED __attribute__((no_sanitize("address", "undefined", "thread")))
#endif

// The child side. It shares the creating thread's memory, so it allocates nothing, takes
// no lock and makes its calls straight to the kernel: the sanitizers intercept sigaction,
// sigprocmask, prctl and _exit and keep books on them in memory the child shares, and
// their shadow of this stack would outlive the child.
VQK_CHILD_UNINSTRUMENTED int childMain(void* arg) {
    SChildStart* s = static_cast<SChildStart*>(arg);
    // A handler of the parent's must not run in the shared memory: until the exec,
    // signals go to their default action (the exec resets caught ones anyway).
    for (int sig = 1; sig <= 64; ++sig) {
        SKernelSigaction sa{};
        if (::syscall(SYS_rt_sigaction, sig, nullptr, &sa, sizeof sa.mask) == 0 &&
            sa.handler != SIG_IGN && sa.handler != SIG_DFL) {
            SKernelSigaction byDefault{};
            byDefault.handler = SIG_DFL;
            ::syscall(SYS_rt_sigaction, sig, &byDefault, nullptr, sizeof byDefault.mask);
        }
    }
    if (s->jobPrefix) {
        ::syscall(SYS_prctl, PR_SET_PDEATHSIG, SIGKILL, 0, 0, 0);
        if (::getppid() != s->parent)
            ::syscall(SYS_exit_group, 127);  // the parent died before the death signal was armed
        char name[320];
        size_t n = 0;
        for (const char* p = s->jobPrefix; *p && n < sizeof name - 12; ++p)
            name[n++] = *p;
        char digits[12];
        int k = 0;
        unsigned v = (unsigned)s->pidfd;
        do {
            digits[k++] = char('0' + v % 10);
            v /= 10;
        } while (v);
        while (k)
            name[n++] = digits[--k];
        name[n] = 0;
        pid_t group = 0;
        for (size_t i = 0; i < s->jobCount && !group; ++i) {
            const char* a = s->jobNames[i];
            size_t j = 0;
            while (a[j] && a[j] == name[j])
                ++j;
            if (a[j] == 0 && name[j] == 0)
                group = s->jobGroups[i];
        }
        if (!group || ::setpgid(0, group) != 0)
            ::setpgid(0, 0);
    }
    // Handles are not inherited: every descriptor above the standard three closes at exec.
    ::syscall(SYS_close_range, 3U, ~0U, CLOSE_RANGE_CLOEXEC);
    ::syscall(SYS_rt_sigprocmask, SIG_SETMASK, &s->parentMask, nullptr, sizeof(uint64_t));
    const long r = ::syscall(SYS_execve, s->path, s->argv, s->envp);
    s->error = r < 0 && errno ? errno : ENOEXEC;
    ::syscall(SYS_exit_group, 127);
    return 127;
}

bool isExecutableFile(const std::string& path) {
    struct stat st;
    return ::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

// The program's path: as given when it names a folder, else the first match on PATH.
bool findProgram(const std::string& name, std::string& path) {
    if (name.empty())
        return false;
    if (name.find('/') != std::string::npos) {
        path = name;
        return true;
    }
    const char* env = ::getenv("PATH");
    std::string dirs = env && *env ? env : "/usr/local/bin:/usr/bin:/bin";
    size_t begin = 0;
    for (;;) {
        size_t end = dirs.find(':', begin);
        std::string dir = dirs.substr(begin, end == std::string::npos ? std::string::npos : end - begin);
        std::string candidate = (dir.empty() ? std::string(".") : dir) + "/" + name;
        if (isExecutableFile(candidate)) {
            path = candidate;
            return true;
        }
        if (end == std::string::npos)
            return false;
        begin = end + 1;
    }
}

// Children closed before they were waited for, reaped as they end so that none stays a
// zombie for the rest of this process's life.
std::mutex g_unreapedLock;
std::vector<pid_t> g_unreaped;

void reapEnded() {
    std::lock_guard<std::mutex> hold(g_unreapedLock);
    for (size_t i = 0; i < g_unreaped.size();) {
        siginfo_t info{};
        int r = ::waitid(P_PID, (id_t)g_unreaped[i], &info, WEXITED | WNOHANG);
        if (r != 0 || info.si_pid != 0) {
            g_unreaped[i] = g_unreaped.back();
            g_unreaped.pop_back();
        } else {
            ++i;
        }
    }
}

int handleFd(const SChildProcess& child) { return (int)(intptr_t)child.process; }

std::string errorText(int err) {
    char buf[256];
    const char* text = ::strerror_r(err, buf, sizeof buf);
    return text ? text : "unknown error";
}

} // namespace

bool processCreate(const wchar_t* cmdLine, unsigned long, const char* jobNamePrefix,
                   SChildProcess& child, std::string& error) {
    child = SChildProcess();
    error.clear();
    reapEnded();
    std::vector<std::wstring> wideArgs = processSplitCommandLine(cmdLine);
    if (wideArgs.empty() || wideArgs[0].empty()) {
        error = errorText(EINVAL) + " (empty command line)";
        return false;
    }
    std::vector<std::string> args;
    for (const std::wstring& w : wideArgs) {
        CTStr<char> u;
        wstrtoutf8(u, w.c_str());
        args.emplace_back(u.str());
    }
    std::string path;
    if (!findProgram(args[0], path)) {
        error = errorText(ENOENT);
        return false;
    }
    std::vector<char*> argv;
    for (std::string& a : args)
        argv.push_back(&a[0]);
    argv.push_back(nullptr);

    SChildStart s;
    s.path = path.c_str();
    s.argv = argv.data();
    s.envp = environ;
    s.parent = ::getpid();
    std::unique_lock<std::mutex> jobsHeld(jobs::lock(), std::defer_lock);
    std::vector<const char*> jobNames;
    std::vector<pid_t> jobGroups;
    if (jobNamePrefix) {
        jobsHeld.lock();
        jobs::snapshot(jobNames, jobGroups);
        s.jobPrefix = jobNamePrefix;
        s.jobNames = jobNames.data();
        s.jobGroups = jobGroups.data();
        s.jobCount = jobNames.size();
    }

    void* stack = ::mmap(nullptr, kChildStack, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
    if (stack == MAP_FAILED) {
        error = errorText(errno);
        return false;
    }
    sigset_t all;
    sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &s.parentMask);
    // glibc's clone under its own name: the thread sanitizer's interceptor of clone takes
    // every clone for a fork and fails on one that shares memory.
    pid_t pid = ::__clone(childMain, static_cast<char*>(stack) + kChildStack,
                        CLONE_VM | CLONE_VFORK | CLONE_PIDFD | SIGCHLD, &s, const_cast<int*>(&s.pidfd));
    int cloneErr = errno;
    ::pthread_sigmask(SIG_SETMASK, &s.parentMask, nullptr);
    ::munmap(stack, kChildStack);
    if (pid < 0) {
        error = errorText(cloneErr);
        return false;
    }
    int pidfd = s.pidfd;
    if (s.error) {
        int status = 0;
        ::waitpid(pid, &status, 0);
        ::close(pidfd);
        error = errorText(s.error);
        return false;
    }
    child.process = (void*)(intptr_t)pidfd;
    child.id = pid;
    return true;
}

void processResume(SChildProcess&) {}

EProcessWait processWait(SChildProcess& child, int milliseconds) {
    if (child.reaped)
        return EProcessWait::ended;
    struct pollfd p{handleFd(child), POLLIN, 0};
    for (;;) {
        int r = ::poll(&p, 1, milliseconds < 0 ? -1 : milliseconds);
        if (r > 0)
            return EProcessWait::ended;
        if (r == 0)
            return EProcessWait::timedOut;
        if (errno != EINTR)
            return EProcessWait::failed;
        // An interrupted wait starts over; the caller's limit is loose by that much.
    }
}

void processPeekMessages() {}

bool processTerminate(SChildProcess& child, unsigned int) {
    return ::syscall(SYS_pidfd_send_signal, handleFd(child), SIGKILL, nullptr, 0) == 0;
}

bool processExitCode(SChildProcess& child, unsigned long& code) {
    if (!child.reaped) {
        struct pollfd p{handleFd(child), POLLIN, 0};
        if (::poll(&p, 1, 0) == 0) {
            code = 259;  // still running, as Windows says it
            return true;
        }
        int status = 0;
        struct rusage usage{};
        pid_t r;
        do {
            r = ::wait4((pid_t)child.id, &status, 0, &usage);
        } while (r < 0 && errno == EINTR);
        if (r != (pid_t)child.id)
            return false;
        child.reaped = true;
        child.exitCode = WIFSIGNALED(status) ? 128u + (unsigned)WTERMSIG(status) : (unsigned)WEXITSTATUS(status);
        child.peakBytes = (uint64)usage.ru_maxrss * 1024u;
        child.peakKnown = true;
    }
    code = child.exitCode;
    return true;
}

bool processPeakMemory(SChildProcess& child, uint64& bytes) {
    bytes = child.peakKnown ? child.peakBytes : 0;
    return child.peakKnown;
}

void processClose(SChildProcess& child) {
    if (child.process)
        ::close(handleFd(child));
    if (child.id && !child.reaped) {
        std::lock_guard<std::mutex> hold(g_unreapedLock);
        g_unreaped.push_back((pid_t)child.id);
    }
    child = SChildProcess();
}

void processCloseHandle(void* process) {
    if (process)
        ::close((int)(intptr_t)process);
}

const char* executableSuffix() { return ""; }

} // namespace platform
} // namespace vq
