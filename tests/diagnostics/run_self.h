// Runs this test program again as a child, for the tests of what several processes
// write: the child sees the parent's environment and its standard output goes nowhere.
#pragma once

#include <string>

// The child's process id once it has ended with exit code 0; -1 otherwise.
int runSelf(const std::string& exe);
