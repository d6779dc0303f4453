// The job runner: option scan, the choice between a registered function and a job
// file, the per-job record on vq::xout, and the exception barrier around every job.
#include "vqk/jobs/job.h"

#include "vqk/diagnostics/log_workflow.h"
#include "vqk/files/file_path.h"
#include "vqk/jobs/progress.h"
#include "vqk/platform/clock.h"
#include "vqk/platform/console.h"
#include "vqk/platform/current_dir.h"
#include "vqk/platform/dir_list.h"
#include "vqk/text/bounded.h"
#include "vqk/xml/xml_in.h"
#include "vqk/xml/xml_out.h"

#include <cctype>
#include <cstdarg>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <memory>
#include <string>

namespace vq {

namespace {

// The runner files its own records under this source name and these lines. Log
// readers and scripts key on the pairs, so they stay fixed whatever happens to the
// layout of this file; the remaining records carry their real line.
const char* const kRunnerFile = "vq_job";
enum ERunnerLine {
    eLineNoFunction = 290,
    eLineNoMaskMatch = 466,
    eLineCantOpen = 525,
    eLineCantChangeDir = 598,
    eLineNoJobName = 697,
    eLineThrownText = 720,
    eLineStdException = 724,
    eLineUnknownException = 728,
};

const char* const kUsage =
    "{job} [args] [opts]\n\n{job}: job file or registered function name\n[args]: job specific "
    "argument list\n[opts]: options\n\n  Options format:\n  //{option}[+][-] [args]\n\n  Available "
    "options:\n  //b: batch mode, no user interaction\n  //o {stdout file}: redirect stdout to the "
    "file\n  //e {stderr file}: redirect stderr to the file\n";

// Fixed buffers of the failure path, so that reporting never allocates.
enum { eMessageSize = 2048, eArgTextSize = 1024, eElemNameSize = 256, eArgNameSize = 10 };

enum { eMaxFileDepth = 32 };

// Keeps a job file on the chain of open job files for the life of the scope.
class COpenJobFile {
public:
    COpenJobFile(TVectorC<CStr>& chain, const CStr& path) : m_chain(chain) { m_chain.push_back(path); }
    ~COpenJobFile() { m_chain.pop_back(); }
    COpenJobFile(const COpenJobFile&) = delete;
    COpenJobFile& operator=(const COpenJobFile&) = delete;

private:
    TVectorC<CStr>& m_chain;
};

bool onChain(const TVectorC<CStr>& chain, const CStr& path) {
    for (const CStr& open : chain)
        if (open == path)
            return true;
    return false;
}

const char* nonNull(const char* s) { return s ? s : ""; }

// Writes `in` with '&', '<', '>' and '"' as entities. The runner's messages carry names
// and paths from command lines and job files, and they land in the job_log as a console
// line, a record attribute and an element text: escaped, an "R&D" folder cannot break
// the document. The apostrophe, with which the messages quote names, stays as it is.
std::string escapeMarkup(const char* in) {
    std::string out;
    for (const char* p = in; *p; ++p) {
        switch (*p) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        default: out += *p; break;
        }
    }
    return out;
}

// Reports a runner failure: counted, console line, `error` record, and a `Fail`
// element echoing the message.
void fail(SJobStat& stat, const char* msg, int line) {
    const std::string escaped = escapeMarkup(msg);
    logFail(stat, escaped.c_str(), kRunnerFile, line);
    xout.text("Fail", "%s", escaped.c_str());
}

// Over-long messages (huge paths) are cut rather than lost.
void failf(SJobStat& stat, int line, const char* format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 3, 4)))
#endif
    ;
void failf(SJobStat& stat, int line, const char* format, ...) {
    char msg[eMessageSize];
    va_list args;
    va_start(args, format);
    // The C library's cutting print: the message stays, shortened, when it is too long.
    if (std::vsnprintf(msg, sizeof msg, format, args) < 0)
        msg[0] = 0;
    va_end(args);
    fail(stat, msg, line);
}

// Removes argv[i] .. argv[i+n-1], shifting the rest left.
void removeArgs(int& argc, char** argv, int i, int n) {
    if (n > argc - i)
        n = argc - i;
    for (int k = i; k + n < argc; ++k)
        argv[k] = argv[k + n];
    argc -= n;
    argv[argc] = nullptr;
}

bool isOption(const char* a) { return a && a[0] == '/' && (a[1] == '/' || a[1] == '.'); }

char optionLetter(const char* a) { return char(std::tolower((unsigned char)a[2])); }
bool optionOn(const char* a) { return !(a[2] && a[3] == '-'); }

// Applies the batch options from argv[i] on. When the scan stops early (an output that
// cannot be redirected), a //b further along the line still means that nobody is there
// to press a key.
void applyLaterBatchOptions(int argc, char** argv, int i) {
    for (; i < argc; ++i) {
        if (!isOption(argv[i]))
            continue;
        const char letter = optionLetter(argv[i]);
        if (letter == 'b')
            CJobInfo::s_batch = optionOn(argv[i]);
        else if (letter == 'o' || letter == 'e')
            ++i;
    }
}

// Restores the current folder when a job entry changed it, so that every entry of a
// list resolves its `dir` from where the tool was started.
class CDirRestore {
public:
    CDirRestore() { m_saved = platform::currentDir(m_dir); }
    ~CDirRestore() {
        if (m_saved)
            platform::changeDir(m_dir.str());
    }
    CDirRestore(const CDirRestore&) = delete;
    CDirRestore& operator=(const CDirRestore&) = delete;

private:
    CStr m_dir;
    bool m_saved;
};

// Puts a string back to its value at construction when the scope ends, however it ends.
class CRestoreStr {
public:
    explicit CRestoreStr(CStr& s) : m_s(s), m_saved(s) {}
    ~CRestoreStr() { m_s = m_saved; }
    CRestoreStr(const CRestoreStr&) = delete;
    CRestoreStr& operator=(const CRestoreStr&) = delete;

private:
    CStr& m_s;
    CStr m_saved;
};

// An argument vector built from owned strings, for the jobs a job file starts.
class CArgs {
public:
    void add(const char* s) { m_text.push_back(CStr(s)); }
    int argc() const { return int(m_text.size()); }
    char* const* argv() {
        m_ptr.clear();
        for (CStr& s : m_text)
            m_ptr.push_back(const_cast<char*>(s.str()));
        m_ptr.push_back(nullptr);
        return m_ptr.data();
    }

private:
    TVectorC<CStr> m_text;
    TVector<char*> m_ptr;
};

void writeFileAttr(const char* path) {
    CStr fileExt;
    TFilePath<char>(path).getFileExt(fileExt);
    xout.attrStr("file", fileExt.str());
}

} // namespace

CJob::CJob(const char* appName) : m_appName(appName ? appName : "Application") {}

CJob::~CJob() = default;

void CJob::usage() const { xout("Usage: %s %s\n", m_appName, kUsage); }

void CJob::pauseUnlessBatch() {
    if (!CJobInfo::s_batch)
        wait(nullptr, 0);
}

int CJob::wait(const char* text, int seconds) {
    flush();
    if (CJobInfo::s_batch)
        return 0;
    COutFile& console = CJobHost::host().console();
    console.print("\n<!--%s-->\n", text ? text : "Press any key to continue");
    console.flush();
    platform::CRawConsole keys;
    // Microsecond ticks here: a millisecond tick read just before it turns could end
    // the wait up to a millisecond before the whole seconds have really passed.
    const uint64 start = platform::clockUs();
    // The first look for a key does not wait, so that a key already typed wins.
    int stepMs = 0;
    for (;;) {
        const int key = keys.pollKey(stepMs);
        if (key >= 0)
            return key;
        stepMs = 50;
        if (seconds < 1)
            continue;
        // Whole seconds, truncated: the wait ends when they reach the limit.
        const uint64 elapsedUs = platform::clockUs() - start;
        if (elapsedUs / 1000000u >= uint64(seconds))
            return 0;
        const uint64 leftMs = (uint64(seconds) * 1000000u - elapsedUs + 999u) / 1000u;
        if (leftMs < uint64(stepMs))
            stepMs = int(leftMs);
    }
}

bool CJob::main(int argc, char** argv) {
    CJobHost& host = CJobHost::host();
    for (int i = 1; i < argc;) {
        const char* a = argv[i];
        if (!isOption(a)) {
            ++i;
            continue;
        }
        const char letter = optionLetter(a);
        const bool on = optionOn(a);
        const char* file = i + 1 < argc ? nonNull(argv[i + 1]) : "";
        switch (letter) {
        case 'b':
            CJobInfo::s_batch = on;
            removeArgs(argc, argv, i, 1);
            break;
        case 'x':
            CJobInfo::s_xml = on;
            removeArgs(argc, argv, i, 1);
            break;
        case 'o':
            removeArgs(argc, argv, i, 2);
            host.setOutRedirected(true);
            if (on && !redirectOut(file)) {
                xout("Fatal: can't open %s\n", file);
                flush();
                applyLaterBatchOptions(argc, argv, i);
                pauseUnlessBatch();
                return false;
            }
            break;
        case 'e':
            removeArgs(argc, argv, i, 2);
            if (on && !redirectErr(file)) {
                xout("Fatal: can't open %s\n", file);
                return false;
            }
            break;
        default:
            removeArgs(argc, argv, i, 1);
            break;
        }
    }

    if (argc < 2) {
        usage();
        flush();
        pauseUnlessBatch();
        return false;
    }

    bool ok;
    xout.setIndent("  ");
    {
        CXmlOutElemKeeper root(xout.isOpen() ? &xout : nullptr, "job_log");
        ok = main_job(argc, argv, m_stat);
        host.totals().add(m_stat);
        m_stat.print(xout, nullptr);
    }
    host.clearJobs();
    return ok;
}

bool CJob::main_func(int argc, char* const* argv, SJobStat& stat, FJobXml xmlFn, CXmlIn* xmlIn,
                     const char* file) {
    // The job as a step of the workflow log: what it starts (child processes included)
    // is logged inside it.
    CLogWorkflow::CTag tag(3, "job", argc > 1 ? nonNull(argv[1]) : "");
    return main_func_imp(argc, argv, stat, xmlFn, xmlIn, file);
}

bool CJob::main_func_imp(int argc, char* const* argv, SJobStat& stat, FJobXml xmlFn, CXmlIn* xmlIn,
                         const char* file) {
    // Every job sees the same pseudo-random sequence, whatever ran before it.
    std::srand(42);
    SJobStat local;
    local.job = 1;

    if (xmlFn) {
        // The caller opened the `func` element.
        xout.text("out", " ");
        bool result = xmlFn(*xmlIn, file, local);
        stat.add(local);
        return result;
    }

    const char* name = argv[1];
    FJob fn = CJobHost::host().findJob(name);
    CXmlOutElem func(xout, "func");
    xout.attrStr("func", name);
    xout.attrStr("dir", m_dir.str());
    if (argc > 2)
        writeFileAttr(argv[2]);
    for (int k = 3; k < argc; ++k) {
        char attrName[16];
        vq::sprintf(attrName, sizeof attrName, "arg%d", k - 2);
        xout.attrStr(attrName, nonNull(argv[k]));
    }
    xout.text("out", " ");
    if (!fn) {
        // The record made for this job is dropped: an unknown name is not a job run.
        stat.fail += 1;
        SJobStat dropped;
        failf(dropped, eLineNoFunction, "Can't find registered function '%s'", name);
        return stat.isOk();
    }
    flush();
    bool result = fn(argc - 1, argv + 1, local);
    stat.add(local);
    return result;
}

void CJob::runJobMask(SJobStat& stat, const char* dir, const char* mask, const char* name, int argc,
                      char* const* args) {
    TVectorC<CStr> files;
    platform::listFiles(dir, mask, files);
    if (files.empty()) {
        failf(stat, eLineNoMaskMatch, "No file with mask: %s", mask);
        return;
    }
    // A mask with a folder part lists that folder: the job gets the same folder prefix.
    CStr prefix;
    for (int i = int(std::strlen(mask)) - 1; i >= 0; --i)
        if (mask[i] == '/' || mask[i] == '\\') {
            prefix.reset(mask, 0, i + 1);
            break;
        }
    // The counter and the name are set apart by ") - ": "Tests (2/5) - data/b.xml".
    CProgress tests(double(files.size()), "Tests");
    int counter = 0;
    for (const CStr& f : files) {
        CStr step;
        step.cformat("Tests (%d/%d) - %s%s", ++counter, int(files.size()), prefix.str(), f.str());
        tests.resetText(step.str());
        CArgs a;
        a.add(args[0]);
        a.add(name);
        CStr path(prefix);
        path += f;
        a.add(path.str());
        for (int k = 1; k < argc; ++k)
            a.add(args[k]);
        main_job(a.argc(), a.argv(), stat);
        tests.progress(1);
    }
}

// One `job` entry of a job file, with its tag in hand.
void CJob::runJobEntry(SJobStat& stat, CXmlIn& in, const char* program) {
    // The values point into the reader's tag buffer: copy them before anything runs.
    CStr dir(in.attrStr("dir", nullptr));
    bool hasDir = in.hasAttr("dir");
    CStr name(in.attrStr("name", nullptr));
    bool hasMask = in.hasAttr("mask");
    CStr mask(in.attrStr("mask", nullptr));
    CArgs a;
    a.add(program);
    a.add(name.str());
    for (int k = 1;; ++k) {
        char attrName[eArgNameSize];
        if (vq::sprintf(attrName, sizeof attrName, "arg%d", k) < 0 || !in.hasAttr(attrName))
            break;
        a.add(in.attrStr(attrName, ""));
    }

    CDirRestore restore;
    CRestoreStr keepJobDir(m_dir);
    if (hasDir) {
        if (!platform::changeDir(dir.str())) {
            failf(stat, eLineCantChangeDir, "Can't change dir to %s", dir.str());
            return;
        }
        // Reported in the form of a file's folder, with its trailing separator.
        if (platform::currentDir(m_dir) && !m_dir.empty() && m_dir[m_dir.length() - 1] != '/')
            m_dir += "/";
    }
    if (hasMask) {
        // runJobMask takes the arguments after the job name: (program, arg1, ...).
        CArgs rest;
        char* const* av = a.argv();
        rest.add(av[0]);
        for (int k = 2; k < a.argc(); ++k)
            rest.add(av[k]);
        runJobMask(stat, nullptr, mask.str(), name.str(), rest.argc(), rest.argv());
    } else {
        main_job(a.argc(), a.argv(), stat);
    }
}

bool CJob::main_file(int /*argc*/, char* const* argv, SJobStat& stat) {
    if (int(m_openFiles.size()) >= eMaxFileDepth) {
        failf(stat, __LINE__, "Job files nested too deeply: %s", argv[1]);
        return stat.isOk();
    }
    CStr full;
    if (!fullpath(full, argv[1])) {
        failf(stat, __LINE__, "%s is not a valid file path", argv[1]);
        return stat.isOk();
    }
    // A list that names itself, directly or through other lists, would run without end
    // in breadth even where the nesting limit bounds its depth.
    if (onChain(m_openFiles, full)) {
        failf(stat, __LINE__, "Job file already open by a list that runs it: %s", argv[1]);
        return stat.isOk();
    }
    COpenJobFile open(m_openFiles, full);
    TFilePath<char> path(full);
    CStr folder;
    path.getDriveFolder(folder);
    CRestoreStr keepJobDir(m_dir);
    m_dir = folder;

    CXmlIn in;
    if (!in.open(full.str())) {
        failf(stat, eLineCantOpen, "Can't open file '%s'", argv[1]);
        return stat.isOk();
    }
    in.read(nullptr);
    if (in.isTag("job")) {
        runJobEntry(stat, in, argv[0]);
    } else if (in.isTag("jobs")) {
        // `group` only structures a list: its children run as if they stood in the list.
        // An empty <jobs/> is a list without entries.
        for (bool more = in.isTagStart(); more;) {
            in.read(nullptr);
            if (in.isTag("group") || (in.isTag("job") && in.isTagEnd()))
                continue;
            if (in.isTag("jobs")) {
                more = false;
                continue;
            }
            if (in.isTag("job")) {
                runJobEntry(stat, in, argv[0]);
                if (in.isTagStart())
                    in.skip(); // whatever a job entry holds is not part of the list
                continue;
            }
            failf(stat, __LINE__, "%s", "Fatal: unknown tag in jobs list file");
            break;
        }
    } else {
        CArgs a;
        a.add(argv[0]);
        a.add(full.str());
        main_file_func(stat, in, in.tagStr(), folder.str(), a.argc(), a.argv());
    }
    return stat.isOk();
}

void CJob::main_file_func(SJobStat& stat, CXmlIn& in, const char* elementName, const char* dir,
                          int argc, char* const* argv) {
    CDirRestore restore;
    if (dir && *dir && !platform::changeDir(dir)) {
        failf(stat, eLineCantChangeDir, "Can't change dir to %s", dir);
        return;
    }
    char name[eElemNameSize];
    vq::strncpy(name, sizeof name, elementName, size_t(-1));
    const char* file = argc > 1 ? argv[1] : "";

    if (const STestDescriptor* test = CJobHost::host().findTest(name)) {
        CXmlOutElem func(xout, "func");
        xout.attrStr("func", name);
        xout.attrStr("dir", m_dir.str());
        writeFileAttr(file);
        std::unique_ptr<CTest> t(test->factory(in, file));
        if (!t) {
            failf(stat, __LINE__, "Can't create test '%s'", name);
            return;
        }
        t->run();
        stat.add(t->summary());
        return;
    }
    if (FJobXml fn = CJobHost::host().findJobXml(name)) {
        CXmlOutElem func(xout, "func");
        xout.attrStr("func", name);
        xout.attrStr("dir", m_dir.str());
        writeFileAttr(file);
        main_func(argc, argv, stat, fn, &in, file);
        return;
    }
    CArgs a;
    a.add(argv[0]);
    a.add(name);
    a.add(file);
    main_job(a.argc(), a.argv(), stat);
}

bool CJob::main_job(int argc, char* const* argv, SJobStat& stat) {
    const char* name = argc < 2 ? "no name" : nonNull(argv[1]);

    // The job's arguments as raw attribute text: arg2="..." arg3="..." (k is the index
    // in argv). Values go in unescaped; a pair that does not fit the text any more
    // empties it (the rule of the bounded append), and later ones start it afresh.
    char argText[eArgTextSize];
    argText[0] = 0;
    for (int k = 2; k < argc; ++k) {
        char one[eMessageSize];
        if (vq::sprintf(one, sizeof one, "%sarg%d=\"%s\"", k == 2 ? "" : " ", k, nonNull(argv[k])) < 0)
            break;
        vq::strcat(argText, sizeof argText, one);
    }

    CXmlOutElem job(xout, "job");
    xout.attrStr("name", name);
    if (argText[0])
        xout.attr(argText, nullptr);

    CJobInfo info(&sum);
    SJobStat local;
    bool result = false;
    if (argc < 2) {
        failf(local, eLineNoJobName, "%s", "No job file or function name");
    } else {
        try {
            // Millisecond ticks, as the time element is read: seconds to the millisecond.
            const uint64 start = platform::clockMs();
            if (std::strchr(name, '.'))
                result = main_file(argc, argv, local);
            else
                result = main_func(argc, argv, local, nullptr, nullptr, nullptr);
            const uint64 end = platform::clockMs();
            xout.text("time", "%.8g", std::fabs(double(end - start) / 1000.0));
        } catch (const char* text) {
            failf(local, eLineThrownText, "%s : %s", name, nonNull(text));
            result = false;
        } catch (const std::exception& e) {
            failf(local, eLineStdException, "%s : %s", name, e.what());
            result = false;
        } catch (...) {
            failf(local, eLineUnknownException, "Unknown exception at %s", name);
            result = false;
        }
    }
    // A job that only warned has not succeeded either.
    const bool success = result && local.isOk();
    xout.text("ret", "%d", success ? 0 : -1);
    stat.add(local);
    return success;
}

} // namespace vq
