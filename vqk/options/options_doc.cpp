#include "vqk/options/options_doc.h"

#include "vqk/platform/xml_document.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace vq {

COptions::COptions(const char* file) : m_doc(platform::CXmlDocument::create()) {
    if (file)
        reset(file);
}

COptions::~COptions() = default;

bool COptions::reset(const char* file) {
    m_file = file;
    m_names.clear();
    return file && m_doc->load(file);
}

bool COptions::isEmpty() const { return m_doc->isEmpty(); }

const char* COptions::optStr(const char* name) {
    if (!name || !m_doc->getAttr("opt", "name", name, "val", m_value))
        return nullptr;
    return m_value.c_str();
}

int COptions::opt(const char* name, int def) {
    const char* v = optStr(name);
    char* end = nullptr;
    const long n = v ? std::strtol(v, &end, 10) : 0;
    return v && end != v ? int(n) : def;
}

bool COptions::opt(const char* name, bool def) {
    const char* v = optStr(name);
    if (!v || !*v)
        return def;
    if (std::strcmp(v, "true") == 0)
        return true;
    if (std::strcmp(v, "false") == 0)
        return false;
    return std::atoi(v) != 0;
}

double COptions::opt(const char* name, double def) {
    const char* v = optStr(name);
    char* end = nullptr;
    const double d = v ? std::strtod(v, &end) : 0;
    return v && end != v ? d : def;
}

bool COptions::setOpt(const char* name, const char* value) {
    return name && m_doc->setAttr("opt", "name", name, "val", value ? value : "");
}

bool COptions::setOpt(const char* name, int value) {
    char text[16];
    std::snprintf(text, sizeof text, "%i", value);
    return setOpt(name, text);
}

bool COptions::setOpt(const char* name, double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.15g", value);
    return setOpt(name, text);
}

bool COptions::setOpt(const char* name, bool value) { return setOpt(name, value ? "true" : "false"); }

const char* COptions::optFirst(const char* prefix) {
    m_doc->listAttr("opt", "name", m_names);
    m_prefix = prefix;
    m_next = 0;
    return optNext();
}

const char* COptions::optNext() {
    const size_t n = std::strlen(m_prefix.str());
    while (m_next < m_names.size()) {
        const std::string& name = m_names[m_next++];
        if (name.compare(0, n, m_prefix.str()) == 0)
            return name.c_str();
    }
    return nullptr;
}

bool COptions::replaceGroup(const COptions& other, const char* setName) {
    return setName && m_doc->replaceTopElement(*other.m_doc, "OptionsSet", "name", setName);
}

bool COptions::save(const char* path) {
    const char* target = path ? path : m_file.str();
    return *target && !m_doc->isEmpty() && m_doc->save(target);
}

} // namespace vq
