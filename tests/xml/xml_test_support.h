// Helpers shared by the XML tests: a writer whose bytes can be read back, documents in
// scratch files and the reader's thrown messages.
#pragma once

#include "support/test_files.h"
#include "vqk/platform/environment.h"
#include "vqk/xml/xml_in.h"
#include "vqk/xml/xml_out.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <memory>
#include <string>
#if VQK_TARGET_WINDOWS
#include <fcntl.h>
#include <io.h>
#else
#include <unistd.h>
#endif

namespace xml_test {

// A stream reading `bytes` from a pipe: one that cannot go back to its start.
inline FILE* pipeHolding(const std::string& bytes) {
    int fds[2];
#if VQK_TARGET_WINDOWS
    if (_pipe(fds, 4096, _O_BINARY) != 0)
        return nullptr;
    const bool written = _write(fds[1], bytes.data(), unsigned(bytes.size())) == int(bytes.size());
    _close(fds[1]);
    return written ? _fdopen(fds[0], "rb") : nullptr;
#else
    if (pipe(fds) != 0)
        return nullptr;
    const bool written = write(fds[1], bytes.data(), bytes.size()) == ssize_t(bytes.size());
    close(fds[1]);
    return written ? fdopen(fds[0], "r") : nullptr;
#endif
}

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
        s.resize(std::fread(&s[0], 1, s.size(), m_file));
        std::fseek(m_file, 0, SEEK_END);
        return s;
    }

private:
    FILE* m_file;

public:
    vq::CXmlOut out;
};

using test_files::lfOnly;
using test_files::readFile;
using test_files::writeFile;

inline std::filesystem::path testRoot() { return test_files::root(); }

// A fresh folder for one test's files. Tests run in parallel processes, so the folder
// is the running test's own, not only the caller's name.
inline std::string tempDir(const char* test) {
    std::string own = test;
    if (const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info())
        own = own + "." + info->test_suite_name() + "." + info->name();
    return test_files::freshFolder("output/" + own);
}

// A folder for scratch documents, shared by all tests.
inline std::string scratchFolder() {
    std::filesystem::path dir = testRoot() / "scratch";
    std::error_code ec;
    std::filesystem::create_directories(dir, ec);
    return dir.string();
}

// A document on disk for the life of the object; the process id and a counter keep
// parallel tests apart.
class ScratchXml {
public:
    explicit ScratchXml(const std::string& content) {
        static int counter = 0;
        m_path = scratchFolder() + "/xml_in_" + std::to_string(vq::platform::processId()) + "_" + std::to_string(++counter) + ".xml";
        EXPECT_TRUE(writeFile(m_path, content)) << m_path;
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

} // namespace xml_test
