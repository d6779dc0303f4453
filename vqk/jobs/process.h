// vqk/jobs/process.h
//
// Running other programs: a child process with an optional time limit and kill-on-exit
// grouping, lookup of a running process by executable name, this process's memory
// figures, the two XML tools built with the library (XSL transformation and schema
// validation) and printing an HTML file.
//
//   unsigned long code = vq::startProcess("\"tool\" in.xml \"out dir\"", true, 60, true, 0);
//   if (code == vq::kProcessNotStarted) ...     // the program could not be started
//   if (code == vq::kProcessTimedOut) ...       // killed after 60 seconds
//
// startProcess: the command line is one string; arguments are split by the Windows rules
// on every system ("a b" groups, \" is a quote), the program is looked up on PATH when it
// names no folder. wait = false returns 0 at once; otherwise timeoutSec < 0 waits without
// limit, timeoutSec >= 0 kills the program after that many seconds. A program ended by
// signal n (Linux) reports 128 + n. asJob puts the child into a job named
// "orv_child_job_<handle value>" so that it dies when this process ends, however it ends.
// flags are the Windows creation flags (kNoWindow hides a console program's window);
// other systems ignore them. Every call is recorded in the workflow log (level 5).
//
// Failure: nothing here throws. A program that cannot be started gives
// kProcessNotStarted; the other functions report failure through their result (null,
// false) or, for xmlTransform and the print functions, not at all.
#pragma once

#include "vqk/config.h"

namespace vq {

// Exit codes that callers must recognise (-119 and -118 as signed 32-bit values).
constexpr unsigned long kProcessNotStarted = 4294967177UL;
constexpr unsigned long kProcessTimedOut = 4294967178UL;
// Creation flag: no console window for the child.
constexpr unsigned long kNoWindow = 0x8000000UL;

VQK_API unsigned long startProcess(const wchar_t* cmd, bool wait, int timeoutSec, bool asJob,
                                   unsigned long flags);
VQK_API unsigned long startProcess(const char* cmd, bool wait, int timeoutSec, bool asJob,
                                   unsigned long flags);

// Puts `process` (a handle from findProcess, or a child's) into the job named `jobName`,
// made on first use and alive as long as this process. Linux can only move a process
// into a job before its program starts, so there this confirms the membership of a
// child startProcess made as a job and is false for any other process.
VQK_API bool assignToJob(void* process, const char* jobName);

// The first running process whose executable's file name equals exeName, ignoring case
// ("tool.exe" on Windows, "tool" on Linux), opened with all access rights; null when
// none runs. Close the handle with closeProcess.
VQK_API void* findProcess(const char* exeName);
VQK_API void* findProcess(const wchar_t* exeName);
VQK_API void closeProcess(void* process);

// This process's private (committed) bytes and peak working set in bytes; both 0 when
// the system cannot tell.
VQK_API void getMemInfo(uint64& privateBytes, uint64& peakBytes);

// The tools' full paths: beside the library, else in the bin folder next to the
// library's folder (the build tree and an installation). Empty when not found.
VQK_API bool findTool(const char* baseName, char* path, int size);

// Runs the tool xsl_transform on `xml` with the stylesheet `xsl`, writing `out`; waits
// for it. The tool's result is not examined: look at `out`.
VQK_API void xmlTransform(const char* xml, const char* xsl, const char* out);
// Validates `xml` against the schemas with the tool xmlvalidate; true exactly when the
// tool says the document is valid. showConsole lets the tool print its messages on this
// process's console; otherwise they are hidden (Windows) or go to standard error.
VQK_API bool xmlValidate(const char* xml, const char* schema, bool showConsole);
VQK_API bool xmlValidate(const char* xml, const char* const* schemas, int schemaCount,
                         bool showConsole);

// Prints an HTML file on the default printer and waits for the print service.
VQK_API void printHtml(const char* htmlFile);
// Makes the printer kPdfPrinter the default (the earlier default is not restored) and
// prints the file there.
VQK_API void printHtmlToPdf(const char* htmlFile);
constexpr const char* kPdfPrinter = "CutePDF Writer";
// True when a printer of that name exists.
VQK_API bool findPrinter(char* printerName);

} // namespace vq
