// The two XML tools, run as child processes: found beside the library or in the bin
// folder next to it, started with quoted paths so that blanks in them survive.
#include "vqk/jobs/process.h"

#include "vqk/platform/module.h"
#include "vqk/platform/process.h"
#include "vqk/text/bounded.h"
#include "vqk/text/convert.h"
#include "vqk/text/str.h"

#include <cstdio>
#include <cstring>
#include <string>

namespace vq {

namespace {

bool exists(const std::string& path) {
    FILE* f = std::fopen(path.c_str(), "rb");
    if (!f)
        return false;
    std::fclose(f);
    return true;
}

// Appends as much of `s` as fits, keeping the terminator.
void appendBounded(char* buf, size_t size, const char* s) {
    size_t n = std::strlen(buf);
    while (s && *s && n + 1 < size)
        buf[n++] = *s++;
    buf[n] = 0;
}

// The tool's full path, or its bare name (which then fails to start) when it is nowhere.
std::string toolPathOrName(const char* baseName) {
    char path[4096];
    if (findTool(baseName, path, (int)sizeof path))
        return path;
    return std::string(baseName) + platform::executableSuffix();
}

} // namespace

bool findTool(const char* baseName, char* path, int size) {
    if (!path || size <= 0)
        return false;
    *path = 0;
    if (!baseName || !*baseName)
        return false;
    std::string lib = platform::libraryFolder();
    if (lib.empty())
        return false;
    std::string name = std::string(baseName) + platform::executableSuffix();
    // Beside the library (Windows, and tools copied there), then bin/ beside lib/ (the
    // build tree, an installation) and beside lib/<multiarch>/.
    for (const char* up : {"", "../bin/", "../../bin/"}) {
        std::string candidate = lib + up + name;
        if (exists(candidate) && (int)candidate.size() < size) {
            vq::strcpy(path, (size_t)size, candidate.c_str());
            return true;
        }
    }
    return false;
}

void xmlTransform(const char* xml, const char* xsl, const char* out) {
    std::string tool = toolPathOrName("xsl_transform");
    char cmd[4096] = "\"";
    char toolPart[261];
    vq::strncpy(toolPart, sizeof toolPart, tool.c_str(), sizeof toolPart - 1);
    appendBounded(cmd, sizeof cmd, toolPart);
    for (const char* item : {xml, xsl, out}) {
        appendBounded(cmd, sizeof cmd, "\" \"");
        appendBounded(cmd, sizeof cmd, item);
    }
    appendBounded(cmd, sizeof cmd, "\"");
    CWStr wide;
    strtowstr(wide, cmd, true);
    startProcess(wide.str(), true, -1, false, kNoWindow);
}

bool xmlValidate(const char* xml, const char* schema, bool showConsole) {
    const char* schemas[] = {schema};
    return xmlValidate(xml, schemas, 1, showConsole);
}

bool xmlValidate(const char* xml, const char* const* schemas, int schemaCount, bool showConsole) {
    if (!xml || !*xml || !schemas || schemaCount <= 0)
        return false;
    CStr cmd;
    cmd += "\"";
    cmd += toolPathOrName("xmlvalidate").c_str();
    cmd += "\" \"";
    cmd += xml;
    cmd += "\"";
    for (int i = 0; i < schemaCount; ++i) {
        if (!schemas[i] || !*schemas[i])
            return false;
        cmd += " \"";
        cmd += schemas[i];
        cmd += "\"";
    }
    if (showConsole)
        std::fflush(stdout);
    return startProcess(cmd.str(), true, -1, false, showConsole ? 0 : kNoWindow) == 0;
}

} // namespace vq
