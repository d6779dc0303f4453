// vqk/jobs/job.h
//
// CJob runs one named job from a command line: the entry point of every tool built on
// the library. The application derives from it (to say how its standard streams are
// redirected and flushed), registers its jobs and hands its command line over:
//
//   class CMyTool : public vq::CJob {
//   public:
//       CMyTool() : vq::CJob("mytool") {}
//       bool redirectOut(const char* path) override { return vq::platform::redirectStdout(path); }
//       bool redirectErr(const char* path) override { return vq::platform::redirectStderr(path); }
//       void flush() override { fflush(stdout); fflush(stderr); }
//   };
//   int main(int argc, char** argv) {
//       CMyTool tool;
//       return tool.main(argc, argv) ? 0 : 1;
//   }
//
// Command line: "{job} [args] [opts]". {job} without a '.' names a registered function,
// with a '.' a job file (one `job` entry, a `jobs` list with `group`s, or one XML job
// whose root element names a registered XML job or test). Options (`//` or `/.`, then
// a letter, then an optional '+' or '-') may stand anywhere and are removed before the
// job sees its arguments: //b batch mode, //x the s_xml flag, //o {file} and
// //e {file} redirect standard output and error. //o- and //e- still take their file
// argument, so a line can keep the name and merely switch the option off.
//
// Names and folders inside a job file (an entry's `name`, `dir` and arguments) resolve
// from the tool's current folder; an entry's `dir` is entered for that entry alone
// (the folder is restored after it), a `mask` entry runs once per matching file of
// that folder in name order, and an XML job runs in its job file's own folder. Job
// files may name other job files; nesting deeper than 32 files is a failure of the
// file that goes one level too far ("Job files nested too deeply: {file}").
//
// Everything the run prints goes to vq::xout as one `job_log` document: per job its
// `job` element (the `func` record, time, return value and the collected `info`), then
// the `stat` totals. Failures inside a job never escape: unknown jobs, unreadable job
// files and exceptions thrown by a job are counted and reported as `Fail` elements.
// main returns false when the command line is unusable (usage, an output that cannot
// be redirected) or when any job was not OK. Those two command-line failures pause for
// a key unless in batch mode; a //b anywhere on the line counts. The pause reads keys
// only from a terminal, so a run without one (a script, a pipe) that omits //b waits
// there for good: scripts pass //b.
#pragma once

#include "vqk/config.h"
#include "vqk/jobs/global_props.h"
#include "vqk/jobs/job_host.h"
#include "vqk/jobs/job_info.h"
#include "vqk/jobs/job_stat.h"
#include "vqk/jobs/regression_test.h"
#include "vqk/jobs/vq_exit.h"
#include "vqk/text/str.h"

namespace vq {

class CXmlIn;

class VQK_API CJob {
public:
    explicit CJob(const char* appName);
    CJob(const CJob&) = delete;
    CJob& operator=(const CJob&) = delete;

    // Writes the usage text to vq::xout.
    virtual void usage() const;
    // Point the standard output / error at `path`; false when it cannot be opened.
    virtual bool redirectOut(const char* path) = 0;
    virtual bool redirectErr(const char* path) = 0;
    // Flush the application's output streams; called before every pause prompt, at
    // the start of wait() and right before a plain job function runs.
    virtual void flush() = 0;
    // After the four operations above, which keep the first places of the table.
    virtual ~CJob();

    bool main(int argc, char** argv);

    // Waits for a key: returns its code, or 0 when `seconds` (>= 1) whole seconds have
    // passed, or at once in batch mode. `text` null prompts "Press any key to continue";
    // `seconds` < 1 waits without limit.
    int wait(const char* text, int seconds);

    const char* appName() const { return m_appName; }
    const SJobStat& stat() const { return m_stat; }
    // The folder reported as the `dir` of each `func` record.
    const CStr& jobDir() const { return m_dir; }
    void setJobDir(const char* dir) { m_dir = dir; }

private:
    bool main_job(int argc, char* const* argv, SJobStat& stat);
    bool main_func(int argc, char* const* argv, SJobStat& stat, FJobXml xmlFn, CXmlIn* xmlIn,
                   const char* file);
    bool main_func_imp(int argc, char* const* argv, SJobStat& stat, FJobXml xmlFn, CXmlIn* xmlIn,
                       const char* file);
    bool main_file(int argc, char* const* argv, SJobStat& stat);
    void main_file_func(SJobStat& stat, CXmlIn& in, const char* elementName, const char* dir,
                        int argc, char* const* argv);
    void runJobMask(SJobStat& stat, const char* dir, const char* mask, const char* name,
                    int argc, char* const* args);
    void runJobEntry(SJobStat& stat, CXmlIn& in, const char* program);
    void pauseUnlessBatch();

    const char* m_appName;
    SJobStat m_stat;
    CStr m_dir;
    // Full paths of the job files open inside each other (a list naming a list), outermost
    // first: a file already on the chain is refused, and the chain's length is bounded.
    TVectorC<CStr> m_openFiles;
};

} // namespace vq
