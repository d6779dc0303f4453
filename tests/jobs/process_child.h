// The jobs test program is its own child process: started with "--vqk-child <act> ..."
// it plays one part for the process tests instead of running them, so that no test
// depends on programs that may be missing.
//   sleep <ms>                      sleeps, then exits 0
//   exit <n>                        exits with n
//   crash                           aborts
//   args <file> ...                 writes its arguments to <file>, one a line
//   beat <file> <seconds>           appends a byte to <file> every 50 ms, for at most <seconds>
//   job-beat <file> <ms>            starts "beat <file> 20" as a job, waits for the first
//                                   beat, sleeps <ms>, exits
//   job-grandchild-beat <file> <ms> the same with "job-free-beat <file>" as the job
//   job-free-beat <file>            starts "beat <file> 20" outside any job, sleeps 20 s
#pragma once

#include <string>

// The quoted command line that runs this program as a child playing `act`.
std::string childCommand(const std::string& act);
