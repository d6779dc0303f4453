// The options file: where it is, and how a set is read from it and merged into it.
// Saving is safe against crashes and against other writers: under a lock file the set
// is written to "tmp_opt.xml", merged into the target's document, saved to a new file
// and renamed over the target, so the target is always either the old file or the new
// one; a target that is not well-formed is left alone.
#include "vqk/options/options_file.h"
#include "vqk/options/options_set.h"

#include "vqk/files/file_path.h"
#include "vqk/platform/file_ops.h"
#include "vqk/platform/module.h"
#include "vqk/platform/xml_document.h"
#include "vqk/text/bounded.h"
#include "vqk/xml/xml_in.h"
#include "vqk/xml/xml_out.h"

#include <cstdio>
#include <string>

namespace vq {

namespace {

CTStr<char> g_product("vqk");

std::string folderOf(const char* path) {
    const std::string p(path);
    const size_t slash = p.find_last_of("/\\");
    return slash == std::string::npos ? std::string() : p.substr(0, slash + 1);
}

// Reads the document through to the end of its root element: true when the whole of
// it is readable, so that applying it cannot stop half way.
bool readableToTheEnd(const char* path) {
    CXmlIn in;
    if (!in.open(path))
        return false;
    try {
        int depth = 0;
        do {
            in.read(nullptr);
            if (in.isTagEnd())
                --depth;
            else if (in.isTagStart())
                ++depth;
        } while (depth > 0);
        return depth == 0;
    } catch (const char*) {
        return false;
    }
}

// Holds the target's lock file for one read-merge-save.
class CSaveLock {
public:
    explicit CSaveLock(const char* target)
        : m_lock(platform::lockFile((std::string(target) + ".lock").c_str())) {}
    ~CSaveLock() { platform::unlockFile(m_lock); }
    bool held() const { return m_lock != -1; }

private:
    intptr_t m_lock;
};

bool mergeInto(const char* target, const std::string& setFile, const char* setName) {
    auto set = platform::CXmlDocument::create();
    auto doc = platform::CXmlDocument::create();
    if (!set->load(setFile.c_str()))
        return false;
    if (!doc->load(target)) {
        CXmlIn probe;
        if (probe.open(target))
            return false; // there, but not well-formed: never overwritten
        doc->reset("Options");
    }
    const std::string fresh = std::string(target) + ".new";
    if (!doc->replaceTopElement(*set, "OptionsSet", "name", setName) || !doc->save(fresh.c_str()))
        return false;
    if (!platform::replaceFile(fresh.c_str(), target)) {
        std::remove(fresh.c_str());
        return false;
    }
    return true;
}

} // namespace

void setProductName(const char* name) { g_product = name && *name ? name : "vqk"; }
const char* productName() { return g_product.str(); }

const char* optionsFilePath() {
    static char path[260];
    const std::string base = platform::userSettingsFolder();
    path[0] = 0;
    if (base.empty())
        return path;
    const std::string folder = base + pathDelimiter() + g_product.str();
    if (!platform::makeFolders(folder.c_str()))
        return path;
    const std::string file = folder + pathDelimiter() + "options.xml";
    vq::strcpy(path, sizeof path, file.c_str());
    return path;
}

const char* optionsRepairCritical() {
    static char path[260];
    const std::string file = platform::libraryFolder() + "healing_env_default.xml";
    vq::strcpy(path, sizeof path, file.c_str());
    return path;
}

int COptionsSet::read(const char* path) {
    ensureOptions();
    CXmlIn probe;
    if (!path || !probe.open(path))
        return -1;
    probe.close();
    if (!readableToTheEnd(path))
        return -2;
    CXmlIn in;
    if (!in.open(path))
        return -1;
    return read(in);
}

bool COptionsSet::write(const char* path) {
    ensureOptions();
    if (!path || !*path)
        return false;
    CSaveLock lock(path);
    if (!lock.held())
        return false;
    const std::string tmp = folderOf(path) + "tmp_opt.xml";
    {
        CXmlOut out;
        if (!out.open(tmp.c_str()))
            return false;
        write(out);
        out.close();
    }
    const bool merged = mergeInto(path, tmp, m_name.str());
    std::remove(tmp.c_str());
    return merged;
}

} // namespace vq
