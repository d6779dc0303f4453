// Copying another XML file into the output (CXmlOut::insertXml).
#include "vqk/xml/xml_out.h"
#include "vqk/platform/file_open_read.h"

#include "vqk/text/convert.h"

#include <cstring>
#include <memory>
#include <new>
#include <utility>

namespace vq {

namespace {

// Drops every carriage return that stands right before a line feed; returns the new
// length.
size_t joinCrLf(char* s, size_t n) {
    size_t w = 0;
    for (size_t r = 0; r < n; ++r) {
        if (s[r] == '\r' && r + 1 < n && s[r + 1] == '\n')
            continue;
        s[w++] = s[r];
    }
    s[w] = '\0';
    return w;
}

// The content goes to operator() as its format, without arguments. "%%" there is
// one '%'; any other '%' would be a conversion reading an argument that does not
// exist, so it is doubled and the byte comes out as it stands in the file.
// `out` has room for 2 n + 1 bytes.
void percentsAsFormat(char* out, const char* s, size_t n) {
    size_t w = 0;
    for (size_t i = 0; i < n; ++i) {
        out[w++] = s[i];
        if (s[i] != '%')
            continue;
        out[w++] = '%';
        if (i + 1 < n && s[i + 1] == '%')
            ++i;
    }
    out[w] = '\0';
}

} // namespace

bool CXmlOut::insertXml(const char* path) {
    if (!path || !*path)
        return false;
    CTStr<wchar_t> wide;
    strtowstr(wide, path, true);
    return insertXml(wide.str());
}

bool CXmlOut::insertXml(const wchar_t* path) {
    FILE* in = platform::openSharedBinary(path);
    if (!in)
        return false;
    bool ok = insert(in);
    std::fclose(in);
    return ok;
}

bool CXmlOut::insert(FILE* in) {
    // Everything before the first '<' that opens an element (declarations, processing
    // instructions, comments, document type lines, or any other bytes) is skipped.
    for (;;) {
        int c = std::fgetc(in);
        if (c == EOF)
            return false;
        if (c != '<')
            continue;
        int next = std::fgetc(in);
        if (next == EOF)
            return false;
        if (next != '!' && next != '?')
            break;
    }
    if (std::fseek(in, -2, SEEK_CUR) != 0)
        return false;
    long start = std::ftell(in);
    if (start < 0 || std::fseek(in, 0, SEEK_END) != 0)
        return false;
    long end = std::ftell(in);
    if (end < start || std::fseek(in, start, SEEK_SET) != 0)
        return false;
    size_t size = size_t(end - start);
    std::unique_ptr<char[]> buf(new (std::nothrow) char[size + 1]);
    if (!buf)
        return false;
    size_t got = std::fread(buf.get(), 1, size, in);
    size_t n = joinCrLf(buf.get(), got);
    if (std::memchr(buf.get(), '%', n)) {
        std::unique_ptr<char[]> format(new (std::nothrow) char[2 * n + 1]);
        if (!format)
            return false;
        percentsAsFormat(format.get(), buf.get(), n);
        buf = std::move(format);
    }
    // The content is the format on purpose (an overriding writer sees it as one); stray
    // percent signs were doubled above, so it reads no arguments.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"
    (*this)(buf.get());
#pragma GCC diagnostic pop
    return true;
}

} // namespace vq
