// POSIX side of the crash seam. The handler runs in a process in an unknown state: it
// allocates nothing, writes through file descriptors from static buffers, and reads
// function names (which needs libdw and the heap) in a forked child, so that a heap or a
// lock left broken by the fault can hang or kill only that child.
#include "vqk/platform/crash.h"

#include "vqk/platform/call_stack.h"
#include "vqk/text/fixed_text.h"

#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <ucontext.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <ctime>

namespace vq {
namespace platform {
namespace {

const int kFatalSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
const int kMaxFrames = 64;
// How long the child that names the frames may take before its addresses are used.
const int kNamingMillis = 10000;

struct sigaction g_previous[NSIG];
std::atomic<CrashCallback> g_callback{nullptr};
std::atomic<long> g_handlingThread{0};
std::atomic<bool> g_offsetKnown{false};
long g_utcOffset = 0;
// Big enough for the naming child, which runs on a copy of it.
alignas(16) char g_altStack[512 * 1024];

long threadId() { return long(syscall(SYS_gettid)); }

using CText = CFixedText<1024>;

void put(intptr_t file, CText& t) {
    crashFileWrite(file, t.str(), t.size());
    t.clear();
}

const char* signalName(int sig) {
    switch (sig) {
    case SIGSEGV: return "SIGSEGV";
    case SIGBUS: return "SIGBUS";
    case SIGFPE: return "SIGFPE";
    case SIGILL: return "SIGILL";
    case SIGABRT: return "SIGABRT";
    default: return "signal";
    }
}

const char* codeName(int sig, int code) {
    if (code <= 0)
        return code == SI_USER || code == SI_TKILL ? "sent by a process" : "sent";
    if (sig == SIGSEGV)
        return code == SEGV_MAPERR ? "address not mapped" : code == SEGV_ACCERR ? "access not permitted" : "";
    if (sig == SIGFPE)
        return code == FPE_INTDIV ? "integer divide by zero" : code == FPE_INTOVF ? "integer overflow" : "";
    if (sig == SIGBUS)
        return code == BUS_ADRALN ? "misaligned address" : code == BUS_ADRERR ? "no such physical address" : "";
    if (sig == SIGILL)
        return code == ILL_ILLOPC ? "illegal opcode" : "";
    return "";
}

const void* instructionOf(void* context) {
    if (!context)
        return nullptr;
    auto* uc = static_cast<ucontext_t*>(context);
#if defined(__x86_64__)
    return reinterpret_cast<const void*>(uc->uc_mcontext.gregs[REG_RIP]);
#elif defined(__aarch64__)
    return reinterpret_cast<const void*>(uc->uc_mcontext.pc);
#else
    (void)uc;
    return nullptr;
#endif
}

void onSignal(int sig, siginfo_t* si, void* context) {
    const int savedErrno = errno;
    const long self = threadId();
    long expected = 0;
    if (g_handlingThread.compare_exchange_strong(expected, self)) {
        SExceptionPointers info;
        info.signal = sig;
        info.code = si ? si->si_code : 0;
        info.address = si ? si->si_addr : nullptr;
        info.pc = instructionOf(context);
        info.context = context;
        if (CrashCallback cb = g_callback.load())
            cb(&info);
    } else if (expected != self) {
        // Another thread is writing the record: let it finish before this one ends us.
        for (int i = 0; i < 300 && g_handlingThread.load() != 0; ++i) {
            timespec pause = {0, 100 * 1000 * 1000};
            nanosleep(&pause, nullptr);
        }
    }
    // End as the process would have without us: the earlier action, and for a signal
    // that was sent rather than caused by an instruction, the signal sent again (a fault
    // recurs by itself when the instruction runs again).
    sigaction(sig, &g_previous[sig], nullptr);
    if (!si || si->si_code <= 0)
        raise(sig);
    errno = savedErrno;
}

bool isOurs(const struct sigaction& a) {
    return (a.sa_flags & SA_SIGINFO) && a.sa_sigaction == onSignal;
}

// The frames from the faulting instruction outward, when it is among them.
int firstFrame(void* const* frames, int n, const void* pc) {
    for (int i = 0; pc && i < n; ++i)
        if (frames[i] == pc)
            return i;
    return 0;
}

void writeAddresses(intptr_t file, void* const* frames, int first, int n) {
    CText t;
    for (int i = first; i < n; ++i) {
        t.add("    #").dec(i - first).add(" ").hex(uintptr_t(frames[i]));
        Dl_info dl{};
        if (dladdr(frames[i], &dl) && dl.dli_fname) {
            const char* base = std::strrchr(dl.dli_fname, '/');
            t.add(" [").add(base ? base + 1 : dl.dli_fname).add("+");
            t.hex(uintptr_t(frames[i]) - uintptr_t(dl.dli_fbase)).add("]");
        }
        t.add("\n");
        put(file, t);
    }
}

// What the naming child is to name; set before it is forked.
struct SNamingJob {
    intptr_t file;
    void* const* frames;
    int first;
    int n;
    bool exactFirst;
};
SNamingJob g_naming;
ucontext_t g_namingDone;
ucontext_t g_namingRun;
// The naming child's own stack: the handler may run on a small alternate stack (a
// sanitizer's), too small for reading debug information and demangling.
alignas(16) char g_namingStack[1024 * 1024];

void nameFrames() {
    static char line[2048];
    CText t;
    const SNamingJob& j = g_naming;
    for (int i = j.first; i < j.n; ++i) {
        describeFrame(j.frames[i], j.exactFirst && i == j.first, line, sizeof line);
        t.add("    #").dec(i - j.first).add(" ");
        put(j.file, t);
        crashFileWrite(j.file, line, std::strlen(line));
        crashFileWrite(j.file, "\n", 1);
    }
}

// Names the frames in a child process; false when the child failed or took too long.
bool writeNames(intptr_t file, void* const* frames, int first, int n, bool exactFirst) {
    g_naming = SNamingJob{file, frames, first, n, exactFirst};
    pid_t child = _Fork();
    if (child < 0)
        return false;
    if (child == 0) {
        for (int sig : kFatalSignals)
            signal(sig, SIG_DFL);
        if (getcontext(&g_namingRun) != 0)
            _exit(2);
        g_namingRun.uc_stack.ss_sp = g_namingStack;
        g_namingRun.uc_stack.ss_size = sizeof g_namingStack;
        g_namingRun.uc_link = &g_namingDone;
        makecontext(&g_namingRun, nameFrames, 0);
        if (swapcontext(&g_namingDone, &g_namingRun) != 0)
            _exit(2);
        _exit(0);
    }
    int status = 0;
    for (int waited = 0; waited < kNamingMillis; waited += 10) {
        pid_t r = waitpid(child, &status, WNOHANG);
        if (r == child)
            return WIFEXITED(status) && WEXITSTATUS(status) == 0;
        if (r < 0 && errno != EINTR)
            return false;
        timespec pause = {0, 10 * 1000 * 1000};
        nanosleep(&pause, nullptr);
    }
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return false;
}

void copyFile(intptr_t file, const char* path) {
    int in = open(path, O_RDONLY | O_CLOEXEC);
    if (in < 0)
        return;
    static char buf[4096];
    for (;;) {
        ssize_t n = read(in, buf, sizeof buf);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        crashFileWrite(file, buf, size_t(n));
    }
    close(in);
}

// Days since 1970-01-01 to a civil date (proleptic Gregorian).
void civilFromDays(long long z, int& y, int& m, int& d) {
    z += 719468;
    long long era = (z >= 0 ? z : z - 146096) / 146097;
    long long doe = z - era * 146097;
    long long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    long long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    long long mp = (5 * doy + 2) / 153;
    d = int(doy - (153 * mp + 2) / 5 + 1);
    m = int(mp < 10 ? mp + 3 : mp - 9);
    y = int(yoe + era * 400 + (m <= 2));
}

void learnUtcOffset() {
    time_t now = time(nullptr);
    struct tm local {};
    if (localtime_r(&now, &local))
        g_utcOffset = local.tm_gmtoff;
    g_offsetKnown = true;
}

} // namespace

bool installCrashHandler(CrashCallback onCrash) {
    g_callback = onCrash;
    // Done now so that the handler need not: backtrace loads the unwinder on first use,
    // and the time zone is read through locks.
    void* warm[2];
    backtrace(warm, 2);
    learnUtcOffset();

    stack_t current{};
    if (sigaltstack(nullptr, &current) == 0 && (current.ss_flags & SS_DISABLE)) {
        stack_t ours{};
        ours.ss_sp = g_altStack;
        ours.ss_size = sizeof g_altStack;
        sigaltstack(&ours, nullptr);
    }
    bool ok = true;
    for (int sig : kFatalSignals) {
        struct sigaction action {};
        action.sa_sigaction = onSignal;
        action.sa_flags = SA_SIGINFO | SA_ONSTACK;
        sigemptyset(&action.sa_mask);
        struct sigaction before {};
        if (sigaction(sig, &action, &before) != 0) {
            ok = false;
            continue;
        }
        if (!isOurs(before))
            g_previous[sig] = before;
    }
    return ok;
}

bool isCrashHandlerActive() {
    for (int sig : kFatalSignals) {
        struct sigaction current {};
        if (sigaction(sig, nullptr, &current) != 0 || !isOurs(current))
            return false;
    }
    return g_callback.load() != nullptr;
}

intptr_t crashFileOpen(const char* path, bool truncate) {
    if (!path || !*path) {
        errno = ENOENT;
        return -1;
    }
    int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (truncate ? O_TRUNC : O_APPEND);
    return intptr_t(open(path, flags, 0644));
}

bool crashFileWrite(intptr_t file, const char* data, size_t size) {
    while (size > 0) {
        ssize_t n = write(int(file), data, size);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        data += n;
        size -= size_t(n);
    }
    return true;
}

void crashFileClose(intptr_t file) {
    if (file >= 0)
        close(int(file));
}

int crashLastError() { return errno; }

void crashLocalTime(SCrashTime& t) {
    if (!g_offsetKnown)
        learnUtcOffset();
    long long s = (long long)time(nullptr) + g_utcOffset;
    long long days = s >= 0 ? s / 86400 : (s - 86399) / 86400;
    long long rest = s - days * 86400;
    civilFromDays(days, t.year, t.month, t.day);
    t.hour = int(rest / 3600);
    t.minute = int(rest / 60 % 60);
    t.second = int(rest % 60);
}

EDumpSupport dumpSupport() { return eDumpReady; }

int writeCrashDump(intptr_t file, const SExceptionPointers* info) {
    if (file < 0)
        return EBADF;
    static char exe[1024];
    ssize_t len = readlink("/proc/self/exe", exe, sizeof exe - 1);
    exe[len > 0 ? len : 0] = 0;
    SCrashTime now;
    crashLocalTime(now);
    CText t;
    t.add("crash report\nprocess: ").dec(getpid()).add(" ").add(exe).add("\n");
    t.add("time: ").dec(now.year).add("-").dec(now.month, 2).add("-").dec(now.day, 2).add(" ");
    t.dec(now.hour, 2).add(":").dec(now.minute, 2).add(":").dec(now.second, 2).add("\n");
    if (info) {
        t.add("signal: ").dec(info->signal).add(" ").add(signalName(info->signal));
        const char* why = codeName(info->signal, info->code);
        t.add(", code ").dec(info->code).add(*why ? " (" : "").add(why).add(*why ? ")" : "").add("\n");
        // A sent signal has no fault address.
        if (info->code > 0)
            t.add("fault address: ").hex(uintptr_t(info->address)).add("\n");
        if (info->pc)
            t.add("instruction: ").hex(uintptr_t(info->pc)).add("\n");
    } else {
        t.add("signal: none (written on request)\n");
    }
    t.add("stack:\n");
    put(file, t);

    static void* frames[kMaxFrames];
    int n = backtrace(frames, kMaxFrames);
    const void* pc = info ? info->pc : nullptr;
    int first = firstFrame(frames, n, pc);
    if (first == 0 && n > 0)
        first = 1; // this function
    const bool exact = pc && frames[first] == pc;
    if (!writeNames(file, frames, first, n, exact)) {
        t.add("    (function names unavailable; addresses:)\n");
        put(file, t);
        writeAddresses(file, frames, first, n);
    }
    t.add("memory map:\n");
    put(file, t);
    copyFile(file, "/proc/self/maps");
    return 0;
}

bool flushIfFree(std::FILE* stream) {
    if (!stream || ftrylockfile(stream) != 0)
        return false;
    const bool ok = std::fflush(stream) == 0;
    funlockfile(stream);
    return ok;
}

} // namespace platform
} // namespace vq
