// Printing on Windows: the HTML print entry point through rundll32, the spooler's printers.
#include "vqk/platform/process_print.h"

#include <windows.h>
#include <winspool.h>

#include <cstdio>

namespace vq {
namespace platform {

bool printHtmlCommand(const char* htmlFile, std::string& cmd) {
    char sys[MAX_PATH];
    UINT n = GetSystemDirectoryA(sys, MAX_PATH);
    if (!htmlFile || n == 0 || n >= MAX_PATH)
        return false;
    char buf[780];
    int len = std::snprintf(buf, sizeof buf, "\"%s\\rundll32.exe\" \"%s\\mshtml.dll\",PrintHTML \"%s\"", sys,
                            sys, htmlFile);
    if (len < 0 || len >= (int)sizeof buf)
        return false;
    cmd = buf;
    return true;
}

bool defaultPrinter(std::string& name) {
    char buf[1024];
    DWORD size = sizeof buf;
    if (!GetDefaultPrinterA(buf, &size))
        return false;
    name = buf;
    return true;
}

bool setDefaultPrinter(const char* name) { return name && SetDefaultPrinterA(name) != 0; }

bool printerExists(const char* name) {
    HANDLE printer = nullptr;
    if (!name || !OpenPrinterA(const_cast<char*>(name), &printer, nullptr))
        return false;
    ClosePrinter(printer);
    return true;
}

} // namespace platform
} // namespace vq
