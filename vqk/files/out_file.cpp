#include "vqk/files/out_file.h"

#include "vqk/platform/file_lock.h"
#include "vqk/platform/printf.h"
#include "vqk/text/convert.h"
#include "vqk/text/str.h"

#include <cstdlib>

namespace vq {

namespace {

// The runtime's fprintf may be a fortified inline wrapper; a function of our own has
// one address to compare against.
int runtimePrint(FILE* f, const char* format, ...) {
    va_list args;
    va_start(args, format);
    int n = std::vfprintf(f, platform::CNativeFormat<char>(format).str(), args);
    va_end(args);
    return n;
}

int runtimeVPrint(FILE* f, const char* format, va_list args) {
    return std::vfprintf(f, platform::CNativeFormat<char>(format).str(), args);
}

size_t runtimeWrite(const void* data, size_t size, size_t count, FILE* f) {
    return std::fwrite(data, size, count, f);
}

} // namespace

COutFile::COutFile() : m_print(runtimePrint), m_vprint(runtimeVPrint), m_write(runtimeWrite) {}

COutFile::COutFile(const char* path) : COutFile() {
    if (path)
        open(path, false, false);
}

COutFile::COutFile(const wchar_t* path) : COutFile() {
    if (path)
        open(path, false, false);
}

COutFile::COutFile(FILE* stream, PrintFn print) : COutFile() {
    m_stream = stream;
    if (print) {
        m_print = print;
        m_plainPrint = false;
    }
}

COutFile::~COutFile() { close(); }

bool COutFile::open(const char* path, bool append, bool unbuffered) {
    close();
    FILE* f = platform::openFileDenyWriters(path, append);
    if (!f)
        return false;
    if (unbuffered) {
        std::setvbuf(f, nullptr, _IONBF, 0);
    } else {
        m_streamBuffer = static_cast<char*>(std::malloc(kStreamBufferSize));
        if (m_streamBuffer)
            std::setvbuf(f, m_streamBuffer, _IOFBF, kStreamBufferSize);
    }
    m_stream = f;
    m_owned = true;
    return true;
}

bool COutFile::open(const wchar_t* path, bool append, bool unbuffered) {
    CTStr<char> narrow;
    wstrtostr(narrow, path, true);
    if (narrow.empty()) {
        close();
        return false;
    }
    return open(narrow.str(), append, unbuffered);
}

void COutFile::close() {
    writePending();
    if (m_stream && m_owned)
        std::fclose(m_stream);
    std::free(m_streamBuffer);
    m_streamBuffer = nullptr;
    m_stream = nullptr;
    m_owned = false;
}

void COutFile::writePending() {
    if (!m_pending)
        return;
    uint32_t n = m_pending->size();
    if (!n)
        return;
    if (m_stream) {
        if (m_plainPrint) {
            m_write(m_pending->data(), 1, n, m_stream);
        } else {
            // A caller's print gets the plainest of formats. Pending bytes come from C
            // strings and escaped values, so they hold no NUL that would cut them short.
            if (n < m_pending->capacity()) {
                m_pending->data()[n] = '\0';
                m_print(m_stream, "%s", m_pending->data());
            } else {
                m_print(m_stream, "%.*s", int(n), m_pending->data());
            }
        }
    }
    m_pending->clear();
}

void COutFile::attach(FILE* stream, bool owned) {
    close();
    m_stream = stream;
    m_owned = stream && owned;
}

int COutFile::print(const char* format, ...) {
    if (!m_stream || !format)
        return 0;
    writePending();
    va_list args;
    va_start(args, format);
    int n;
    if (m_plainPrint) {
        n = m_vprint(m_stream, format, args);
    } else {
        // A caller's print takes only variadic arguments: hand it the finished text.
        CTStr<char> text;
        text.vcformat(format, args);
        n = m_print(m_stream, "%s", text.str());
    }
    va_end(args);
    return n;
}

int COutFile::vprint(const char* format, va_list args) {
    if (!m_stream || !format)
        return 0;
    writePending();
    return m_vprint(m_stream, format, args);
}

size_t COutFile::writeBlock(const void* data, size_t size) {
    if (!m_stream || !data || !size)
        return 0;
    writePending();
    return m_write(data, 1, size, m_stream);
}

void COutFile::flush() {
    writePending();
    if (m_stream)
        std::fflush(m_stream);
}

} // namespace vq
