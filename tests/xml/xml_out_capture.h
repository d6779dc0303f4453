// Test helpers for the XML writer's and the file output's tests: a writer over a temporary stream whose
// bytes can be read back, and libxml2 as an independent judge of well-formedness.
#pragma once

#include "vqk/xml/xml_out.h"

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

namespace xml_out_test {

// Everything a test writes through `out` lands in a temporary stream.
class CCapture {
public:
    CCapture() : m_file(std::tmpfile()), out(m_file, nullptr) {}
    ~CCapture() {
        out.close();
        if (m_file)
            std::fclose(m_file);
    }
    std::string bytes() {
        std::fflush(m_file);
        long end = std::ftell(m_file);
        std::string s(size_t(end > 0 ? end : 0), '\0');
        std::rewind(m_file);
        size_t got = std::fread(&s[0], 1, s.size(), m_file);
        s.resize(got);
        std::fseek(m_file, 0, SEEK_END);
        return s;
    }

private:
    FILE* m_file;

public:
    vq::CXmlOut out;
};

struct SDocFree {
    void operator()(xmlDoc* d) const { xmlFreeDoc(d); }
};
using DocPtr = std::unique_ptr<xmlDoc, SDocFree>;

// Parses with libxml2; null when the text is not well-formed XML.
inline DocPtr parseXml(const std::string& s) {
    return DocPtr(xmlReadMemory(s.data(), int(s.size()), "mem.xml", nullptr,
                                XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
}

// The value of attribute `name` of `node` as libxml2 reads it.
inline std::string propOf(xmlNode* node, const char* name) {
    xmlChar* v = xmlGetProp(node, reinterpret_cast<const xmlChar*>(name));
    std::string s = v ? reinterpret_cast<const char*>(v) : "<missing>";
    xmlFree(v);
    return s;
}

inline std::string readFile(const std::string& path) {
    std::string s;
    if (FILE* f = std::fopen(path.c_str(), "rb")) {
        char buf[4096];
        size_t n;
        while ((n = std::fread(buf, 1, sizeof buf, f)) > 0)
            s.append(buf, n);
        std::fclose(f);
    }
    return s;
}

inline void writeFile(const std::string& path, const std::string& bytes) {
    FILE* f = std::fopen(path.c_str(), "wb");
    if (f) {
        std::fwrite(bytes.data(), 1, bytes.size(), f);
        std::fclose(f);
    }
}

// A fresh folder for one test's files under the test temporary folder. Tests run in
// parallel processes, so the folder is the running test's own, not only the caller's name.
inline std::string tempDir(const char* test) {
    const char* root = std::getenv("VQK_TEST_TMP");
    std::string own = test;
    if (const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info())
        own = own + "." + info->test_suite_name() + "." + info->name();
    std::filesystem::path p = std::filesystem::path(root && *root ? root : "/tmp") / "output" / own;
    std::error_code ec;
    std::filesystem::remove_all(p, ec);
    std::filesystem::create_directories(p, ec);
    return p.string();
}

} // namespace xml_out_test
