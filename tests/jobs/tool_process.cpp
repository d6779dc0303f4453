#include "tool_process.h"

#include "vqk/diagnostics/log_workflow.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <signal.h>
#include <sstream>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

std::string toolPath() { return std::string(VQK_BINARY_DIR) + "/bin/vqk_run"; }

std::string sourceDir() { return VQK_SOURCE_DIR; }

std::string testTmpRoot() {
    // Fixed at the first call, and absolute: the tool runs in other folders, and a
    // relative TEMP would put its workflow log wherever it happens to run.
    static const std::string root = [] {
        const char* base = std::getenv("VQK_TEST_TMP");
        std::string dir = base && *base ? base : std::string(VQK_BINARY_DIR) + "/test_tmp";
        if (dir[0] != '/') {
            char cwd[4096];
            if (getcwd(cwd, sizeof cwd))
                dir = std::string(cwd) + "/" + dir;
        }
        std::system(("mkdir -p '" + dir + "'").c_str());
        return dir;
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
        setenv("TEMP", testTmpRoot().c_str(), 1);
        vq::CLogWorkflow::setPrefix("vqk_jobs_tests");
    }
};

::testing::Environment* const g_testTmp = ::testing::AddGlobalTestEnvironment(new CTestTmpEnvironment);

} // namespace

std::string toolLogDir() {
    std::string dir = testTmpRoot() + "/jobs_logs";
    std::system(("mkdir -p '" + dir + "'").c_str());
    return dir;
}

std::string freshTempDir(const std::string& name) {
    std::string dir = testTmpRoot() + "/jobs/" + name;
    std::string cmd = "rm -rf '" + dir + "' && mkdir -p '" + dir + "'";
    if (std::system(cmd.c_str()) != 0)
        return "";
    return dir;
}

void writeFile(const std::string& path, const std::string& text) {
    std::ofstream f(path, std::ios::binary);
    f << text;
}

std::string readFile(const std::string& path) {
    std::ifstream f(path, std::ios::binary);
    std::stringstream s;
    s << f.rdbuf();
    return s.str();
}

std::string readAndClose(FILE* f) {
    std::string out;
    std::fflush(f);
    std::rewind(f);
    char buf[4096];
    for (size_t n; (n = std::fread(buf, 1, sizeof buf, f)) > 0;)
        out.append(buf, n);
    std::fclose(f);
    return out;
}

bool fileExists(const std::string& path) {
    struct stat st;
    return stat(path.c_str(), &st) == 0;
}

namespace {

// Starts the tool with stdin on `inFd`; its stdout and stderr go to the returned pipes,
// or stderr to `errFd` when one is given (errPipe[0] is then a copy of it).
pid_t spawn(const std::vector<std::string>& args, const std::string& cwd, int inFd, int outPipe[2],
            int errPipe[2], int errFd = -1) {
    if (pipe(outPipe) != 0)
        return -1;
    if (errFd >= 0) {
        errPipe[0] = dup(errFd);
        errPipe[1] = dup(errFd);
    } else if (pipe(errPipe) != 0) {
        return -1;
    }
    std::string tool = toolPath();
    std::string logDir = toolLogDir();
    pid_t pid = fork();
    if (pid == 0) {
        setsid();
        dup2(inFd, 0);
        dup2(outPipe[1], 1);
        dup2(errPipe[1], 2);
        close(outPipe[0]);
        close(errPipe[0]);
        if (chdir(cwd.c_str()) != 0)
            _exit(126);
        // A run as from a fresh shell, with its workflow log in the tests' folder.
        unsetenv("_ORV_LOGPREFIX");
        unsetenv("_ORV_LOGINDENT");
        setenv("TEMP", logDir.c_str(), 1);
        std::vector<char*> argv;
        argv.push_back(const_cast<char*>(tool.c_str()));
        for (const std::string& a : args)
            argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        execv(tool.c_str(), argv.data());
        _exit(127);
    }
    close(outPipe[1]);
    close(errPipe[1]);
    return pid;
}

// Collects the child's output until both pipes close, calling `onOutput` after every
// read of stdout; kills the child when the time limit passes.
template <class F>
SToolRun collect(pid_t pid, int outFd, int errFd, int timeoutSeconds, F onOutput) {
    SToolRun run;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(timeoutSeconds);
    pollfd fds[2] = {{outFd, POLLIN, 0}, {errFd, POLLIN, 0}};
    int open = 2;
    while (open > 0) {
        if (std::chrono::steady_clock::now() > deadline) {
            run.timedOut = true;
            kill(pid, SIGKILL);
            break;
        }
        if (poll(fds, 2, 100) < 0 && errno != EINTR)
            break;
        for (int i = 0; i < 2; ++i) {
            if (fds[i].fd < 0 || !(fds[i].revents & (POLLIN | POLLHUP)))
                continue;
            char buf[4096];
            ssize_t n = read(fds[i].fd, buf, sizeof buf);
            if (n <= 0) {
                close(fds[i].fd);
                fds[i].fd = -1;
                --open;
                continue;
            }
            (i == 0 ? run.out : run.err).append(buf, size_t(n));
            if (i == 0)
                onOutput(run.out);
        }
    }
    for (pollfd& p : fds)
        if (p.fd >= 0)
            close(p.fd);
    int status = 0;
    waitpid(pid, &status, 0);
    if (!run.timedOut && WIFEXITED(status))
        run.exitCode = WEXITSTATUS(status);
    // Under the sanitizer presets the tool is instrumented too: its reports fail the test.
    if (run.err.find("Sanitizer") != std::string::npos ||
        run.err.find("runtime error:") != std::string::npos)
        ADD_FAILURE() << "the tool reported:\n" << run.err;
    return run;
}

} // namespace

SToolRun runTool(const std::vector<std::string>& args, const std::string& cwd, int timeoutSeconds) {
    int in = open("/dev/null", O_RDONLY);
    int outPipe[2], errPipe[2];
    pid_t pid = spawn(args, cwd, in, outPipe, errPipe);
    close(in);
    if (pid < 0)
        return SToolRun();
    return collect(pid, outPipe[0], errPipe[0], timeoutSeconds, [](const std::string&) {});
}

namespace {

// A new pseudo-terminal, both sides open.
bool openTerminal(int& master, int& slave) {
    master = posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0)
        return false;
    slave = open(ptsname(master), O_RDWR | O_NOCTTY);
    if (slave < 0) {
        close(master);
        return false;
    }
    return true;
}

} // namespace

SToolRun runToolOnTerminal(const std::vector<std::string>& args, const std::string& cwd,
                           const std::string& waitFor, char key, bool& keyTyped,
                           int timeoutSeconds) {
    keyTyped = false;
    int master, slave;
    if (!openTerminal(master, slave))
        return SToolRun();
    int outPipe[2], errPipe[2];
    pid_t pid = spawn(args, cwd, slave, outPipe, errPipe);
    close(slave);
    SToolRun run;
    if (pid >= 0)
        run = collect(pid, outPipe[0], errPipe[0], timeoutSeconds, [&](const std::string& out) {
            if (keyTyped || out.find(waitFor) == std::string::npos)
                return;
            // Give the tool a moment to switch the terminal to raw mode.
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
            keyTyped = write(master, &key, 1) == 1;
        });
    close(master);
    return run;
}

SToolRun runToolWithErrOnTerminal(const std::vector<std::string>& args, const std::string& cwd,
                                  int columns, int timeoutSeconds) {
    int master, slave;
    if (!openTerminal(master, slave))
        return SToolRun();
    winsize size{};
    size.ws_col = (unsigned short)columns;
    size.ws_row = 24;
    ioctl(master, TIOCSWINSZ, &size);
    int in = open("/dev/null", O_RDONLY);
    int outPipe[2], errPipe[2];
    pid_t pid = spawn(args, cwd, in, outPipe, errPipe, slave);
    close(in);
    close(slave);
    SToolRun run;
    if (pid >= 0) {
        // The terminal's output is read from its master side; errPipe[0] was a copy of
        // the slave, which must close for the master to report the end.
        close(errPipe[0]);
        run = collect(pid, outPipe[0], master, timeoutSeconds, [](const std::string&) {});
    } else {
        close(master);
    }
    return run;
}
