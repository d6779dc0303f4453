// vqk/diagnostics/log_workflow.h
//
// The workflow log: one text file of XML records shared by a process and the processes
// it starts, telling what ran, in which order and inside which step. Messages are
// printf-formatted; steps are scoped tags that indent everything written inside them,
// in this process and in child processes started while they are open.
//
//   vq::CLogWorkflow::setMinLevel(3);
//   {
//       vq::CLogWorkflow::CTag step(5, "translate", "part.xml");
//       vq::CLogWorkflow::msg(5, "read %i bodies", n);     // one tab deeper
//   }
//
// Records, one per line, each line led by one tab per open tag:
//   <msg t="2026.11.22 07:30:00" pid="4242" cpu="x64" module="/opt/app/bin/tool" msg="..."/>
//       the first record a process writes; every later one leaves out cpu and module:
//   <msg t="..." pid="4242" msg="..."/>
//   <tag t="..." pid="4242" name="translate" text="part.xml">
//       opens a step (with cpu and module when it is the process's first record); on
//       closing, the lines
//   <end t="..." pid="4242" name="translate" sec="0.125"/>     (one tab deeper)
//   </tag>
//       close it, sec being the seconds the step took.
// The time is local time, "%Y.%m.%d %H:%M:%S". A message is cut to 3999 bytes (at a
// character boundary) and every double quote in a message, name, text or module path
// becomes an apostrophe; nothing else is escaped. cpu names the processor family the
// library was built for: "x64" on x86-64.
//
// The file is opened for appending for every record and closed after it, so that
// several processes can share it and nothing is lost when a process dies. A file that has
// reached 1048577 bytes or more is removed before the next record, which starts it afresh.
//
// Where the file lives and the prefix: genLogName("workflow.~.xml") puts the log in the
// temporary folder (vq::platform::tempFolder()) and replaces '~' by the log prefix
// ("/tmp/workflow.mytool.xml"); an empty prefix drops the '~' with one point beside it
// ("/tmp/workflow.xml"). The prefix is, in order of preference: the one given to
// setPrefix; the one in the environment variable _ORV_LOGPREFIX (a parent process's);
// the executable's file name without extension ("vqk" when it is unknown). ASCII
// characters other than letters, digits, '-', '_' and '.' become '_'; non-ASCII text is
// kept. Whatever is chosen is written to _ORV_LOGPREFIX so that child processes write to
// the same file.
//
// Indentation: the number of open tags is kept in _ORV_LOGINDENT (a decimal integer),
// written whenever a tag opens or closes and read once, when first needed, so that a
// child process starts at its parent's depth. A missing or malformed value counts as 0.
//
// Levels: a message or tag whose level is below minLevel() (initially 0) writes nothing
// and a dropped tag does not indent. Failure: the log never throws and never stops the
// program; a record that cannot be written (no folder, no permission) is lost silently.
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"

#include <cstdarg>

namespace vq {

class VQK_API CLogWorkflow {
public:
    // The size at which the file is removed and started afresh.
    static constexpr long kRestartSize = 1048577;
    // The formatting buffer of a message, terminator included.
    static constexpr int kTextSize = 4000;

#if defined(__GNUC__)
    static void msg(int level, const char* format, ...) __attribute__((format(printf, 2, 3)));
#else
    static void msg(int level, const char* format, ...);
#endif
    static void vmsg(int level, const char* format, va_list args);

    static void setMinLevel(int level);
    static int minLevel();

    // Sets the log prefix (cleaned as above) and the file name that follows from it.
    static void setPrefix(const char* prefix);
    static CStr prefix();
    // The number of open tags, this process's and its parents'.
    static int indent();

    // out = the temporary folder followed by tmpl with '~' replaced by the prefix.
    static void genLogName(CStr& out, const char* tmpl);
    // The file records go to: genLogName("workflow.~.xml").
    static CStr fileName();

    // A step: opens in the constructor, closes in the destructor.
    class VQK_API CTag {
    public:
        CTag(int level, const char* name, const char* text);
        ~CTag();
        CTag(const CTag&) = delete;
        CTag& operator=(const CTag&) = delete;

    private:
        bool m_open = false;
        CStr m_name;
        long long m_startNs = 0;
    };
};

} // namespace vq
