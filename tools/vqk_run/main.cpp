// vqk_run: runs the jobs of this tool from a command line, a job file or a jobs list,
// and prints the run's job_log document.
//
//   vqk_run xml_summary model.xml            one registered job
//   vqk_run examples/jobs.xml //b            a jobs list, batch mode
//   vqk_run examples/jobs.xml //o run.xml    the job_log into a file
//
// Exit code 0 when every job ran without failures or warnings, 1 otherwise.
#include "run_tool.h"

#include <cstdio>
#include <cstring>

namespace {

const char* const kDeclaration = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";

class CRunTool : public vq::CJob {
public:
    CRunTool() : vq::CJob("vqk_run") {}

    // The job_log follows stdout into the file, which starts as every XML file does.
    bool redirectOut(const char* path) override {
        if (!vq::platform::redirectStdout(path))
            return false;
        std::fputs(kDeclaration, stdout);
        return true;
    }
    bool redirectErr(const char* path) override { return vq::platform::redirectStderr(path); }
    void flush() override {
        std::fflush(stdout);
        std::fflush(stderr);
    }
    // The host's usage text, then this tool's jobs.
    void usage() const override {
        vq::CJob::usage();
        vq::CStr jobs;
        vqk_run::jobList(jobs);
        vq::xout("%s", jobs.str());
    }
};

// A registered job's name has no '.'; one the tool does not have gets the list of those
// it has on standard error (standard output holds the job_log).
void listJobsIfUnknown(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const char* a = argv[i];
        if (a[0] == '/' && (a[1] == '/' || a[1] == '.')) {
            const char o = char(a[2] | 0x20);
            i += (o == 'o' || o == 'e'); // these take a file name
            continue;
        }
        if (!std::strchr(a, '.') && !vqk_run::isToolJob(a)) {
            vq::CStr jobs;
            vqk_run::jobList(jobs);
            std::fprintf(stderr, "vqk_run has no job '%s'.%s", a, jobs.str());
        }
        return;
    }
}

// Whether the command line sends standard output to a file (an //o or /.o option that
// is not switched off), so that the declaration goes there and not to the console.
bool redirectsOut(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const char* a = argv[i];
        if (a[0] != '/' || (a[1] != '/' && a[1] != '.') || (a[2] != 'o' && a[2] != 'O'))
            continue;
        if (a[3] != '-')
            return true;
        ++i; // a switched-off //o still takes its file name
    }
    return false;
}

} // namespace

int main(int argc, char** argv) {
    // A crash leaves a dump in the temporary folder and the job_log written so far.
    vq::CAssert::installCrashHandler(nullptr);
    vq::xout.attach(stdout, false);
    if (!redirectsOut(argc, argv))
        std::fputs(kDeclaration, stdout);
    // A bar on a terminal's standard error while jobs run; nothing in a log.
    vq::installConsoleProgress();
    listJobsIfUnknown(argc, argv);
    CRunTool tool;
    const bool ok = tool.main(argc, argv);
    tool.flush();
    vq::xout.close();
    return ok ? 0 : 1;
}
