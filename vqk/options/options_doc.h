// vqk/options/options_doc.h
//
// COptions: an options file seen as a document, read and edited by option name without
// declaring an option set. Names are looked up in document order across all sets: the
// first "opt" element of that name is the one read and set.
//
//   vq::COptions o(vq::optionsFilePath());
//   int limit = o.opt("timeLimit", 30);        // the default when absent or not a number
//   o.setOpt("timeLimit", 60);
//   o.save(nullptr);                            // back to its own file
//
// A missing or damaged file gives an empty document: every lookup gives its default and
// every setOpt returns false.
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"

#include <memory>
#include <string>
#include <vector>

namespace vq {

namespace platform {
class CXmlDocument;
}

class VQK_API COptions {
public:
    explicit COptions(const char* file = nullptr);
    ~COptions();
    COptions(const COptions&) = delete;
    COptions& operator=(const COptions&) = delete;

    // Loads another file; false when it is missing or not well-formed.
    bool reset(const char* file);

    // The "val" of option `name` (UTF-8), null when absent; valid until the next call.
    const char* optStr(const char* name);
    int opt(const char* name, int def);
    bool opt(const char* name, bool def); // "true"/"false", else a number's != 0
    double opt(const char* name, double def);
    bool setOpt(const char* name, const char* value);
    bool setOpt(const char* name, int value);
    bool setOpt(const char* name, double value);
    bool setOpt(const char* name, bool value);

    // The names of the options that begin with `prefix` (null or empty: all), in
    // document order; null at the end.
    const char* optFirst(const char* prefix);
    const char* optNext();

    // Replaces this document's "OptionsSet" called `setName` with the other's.
    bool replaceGroup(const COptions& other, const char* setName);
    // To `path`, or to the loaded file when null.
    bool save(const char* path);
    const char* filename() const { return m_file.str(); }
    bool isEmpty() const;

private:
    std::unique_ptr<platform::CXmlDocument> m_doc;
    CTStr<char> m_file;
    std::string m_value;
    std::vector<std::string> m_names;
    size_t m_next = 0;
    CTStr<char> m_prefix;
};

} // namespace vq
