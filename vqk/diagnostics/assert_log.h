// vqk/diagnostics/assert_log.h
//
// The assertion log file as the pieces of the assertion facility share it (records,
// call stacks, crash records): which file, how it is opened, and the first-out rule.
// Internal to the library.
#pragma once

#include <cstdio>
#include <string>

namespace vq {
namespace assert_log {

// The name set by CAssert::setLogName, else _ORV_ASSERTS, else "asserts.log" in the
// temporary folder.
std::string name();
void setName(const char* name);

// True while this process is the first of its tree to write: the flag is set and
// _ORV_ASSERTS_FIRST_OUT is missing or empty.
bool isFirstOut();
void setFirstOut(bool firstOut);

// Opens the log, emptying it when this process writes first; null when it cannot be
// opened. closeLog ends the first-out state (children append from now on) and closes.
std::FILE* open();
void close(std::FILE* f);

// For a crash handler, which must not lock or allocate: the name as last resolved
// (resolve() resolves it now), and the first-out rule read without the lock.
void resolve();
const char* resolvedName();
bool isFirstOutUnlocked();

} // namespace assert_log
} // namespace vq
