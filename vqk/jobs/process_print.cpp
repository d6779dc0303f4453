// Printing an HTML file through the system's print service.
#include "vqk/jobs/process.h"

#include "vqk/platform/process_print.h"

#include <string>

namespace vq {

void printHtml(const char* htmlFile) {
    std::string cmd;
    if (platform::printHtmlCommand(htmlFile, cmd))
        startProcess(cmd.c_str(), true, -1, false, 0);
}

void printHtmlToPdf(const char* htmlFile) {
    // The earlier default is read and deliberately not set back: the PDF printer stays
    // the default after the call.
    std::string earlier;
    platform::defaultPrinter(earlier);
    platform::setDefaultPrinter(kPdfPrinter);
    printHtml(htmlFile);
}

bool findPrinter(char* printerName) { return printerName && platform::printerExists(printerName); }

} // namespace vq
