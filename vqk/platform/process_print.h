// vqk/platform/process_print.h
//
// The system's printing service as the library uses it: the command line that prints an
// HTML file on the default printer, and the default printer itself.
//
//   std::string cmd;
//   if (vq::platform::printHtmlCommand("/tmp/report.html", cmd))
//       vq::startProcess(cmd.c_str(), true, -1, false, 0);
//
// Windows: rundll32 with the HTML print entry point of the system directory, the spooler's
// default printer. Elsewhere: the CUPS commands lp, lpstat and lpoptions, found on PATH.
// Failure: each operation returns false; nothing is reported.
#pragma once

#include "vqk/config.h"

#include <string>

namespace vq {
namespace platform {

// The command line that prints `htmlFile` on the default printer; false when it cannot be
// built (too long, no system directory).
VQK_API bool printHtmlCommand(const char* htmlFile, std::string& cmd);
VQK_API bool defaultPrinter(std::string& name);
VQK_API bool setDefaultPrinter(const char* name);
// True when a printer of that name exists (it is opened and closed again at once).
VQK_API bool printerExists(const char* name);

} // namespace platform
} // namespace vq
