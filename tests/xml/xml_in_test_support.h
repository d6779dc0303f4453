// Helpers shared by the reader's test files: documents written to scratch files, and a
// generic walk over a whole document.
#pragma once

#include "vqk/xml/xml_in.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace xml_in_test {

// The scratch folder given to the tests, else the system's.
inline std::string scratchFolder() {
    const char* t = std::getenv("VQK_TEST_TMP");
    std::string dir = t && *t ? t : "/tmp";
    // The folder may not exist yet when the suite runs outside CTest.
    std::FILE* probe = std::fopen((dir + "/.").c_str(), "r");
    if (probe)
        std::fclose(probe);
    else
        dir = "/tmp";
    return dir;
}

// A document on disk for the life of the object. Names carry the process id and a
// counter, so tests running in parallel never share a file.
class ScratchXml {
public:
    explicit ScratchXml(const std::string& content) {
        static int counter = 0;
        m_path = scratchFolder() + "/xml_in_" + std::to_string(getpid()) + "_" +
                 std::to_string(++counter) + ".xml";
        std::FILE* f = std::fopen(m_path.c_str(), "wb");
        EXPECT_NE(f, nullptr) << m_path;
        if (f) {
            std::fwrite(content.data(), 1, content.size(), f);
            std::fclose(f);
        }
    }
    ~ScratchXml() { std::remove(m_path.c_str()); }
    ScratchXml(const ScratchXml&) = delete;
    ScratchXml& operator=(const ScratchXml&) = delete;
    const std::string& path() const { return m_path; }
    const char* c_str() const { return m_path.c_str(); }

private:
    std::string m_path;
};

// The message of what `f` throws as a reader error, or "" when it returns normally.
template <class F> std::string thrownText(F&& f) {
    try {
        f();
    } catch (const char* e) {
        return e ? e : "(null)";
    }
    return "";
}

} // namespace xml_in_test
