// Files for the tests, alike on both systems: paths are UTF-8 (which Windows' narrow file
// functions would misread), and every folder a test makes lies under the tests'
// temporary folder.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace test_files {

// VQK_TEST_TMP, else test_tmp in the build folder.
inline std::filesystem::path root() {
    const char* tmp = std::getenv("VQK_TEST_TMP");
    return std::filesystem::path(tmp && *tmp ? tmp : VQK_BINARY_DIR "/test_tmp");
}

// `relative` under the temporary folder, made empty; "" when it cannot be made.
inline std::string freshFolder(const std::string& relative) {
    const std::filesystem::path dir = root() / std::filesystem::u8path(relative);
    std::error_code ec;
    std::filesystem::remove_all(dir, ec);
    return std::filesystem::create_directories(dir, ec) ? dir.u8string() : std::string();
}

inline std::string readFile(const std::string& path) {
    std::ifstream f(std::filesystem::u8path(path), std::ios::binary);
    std::ostringstream s;
    s << f.rdbuf();
    return s.str();
}

inline bool writeFile(const std::string& path, const std::string& bytes) {
    std::ofstream f(std::filesystem::u8path(path), std::ios::binary);
    f << bytes;
    return bool(f);
}

// A UTF-8 text as UTF-16 (Windows) or UTF-32 (POSIX).
inline std::wstring wide(const std::string& s) { return std::filesystem::u8path(s).wstring(); }

// Everything written to `f` (a temporary file); closes it.
inline std::string readAndClose(FILE* f) {
    std::string out;
    std::fflush(f);
    std::rewind(f);
    char buf[4096];
    for (size_t n; (n = std::fread(buf, 1, sizeof buf, f)) > 0;)
        out.append(buf, n);
    std::fclose(f);
    return out;
}

// The text with every CR LF as LF: what a text-mode reader sees on either system.
inline std::string lfOnly(std::string s) {
    size_t w = 0;
    for (size_t r = 0; r < s.size(); ++r)
        if (!(s[r] == '\r' && r + 1 < s.size() && s[r + 1] == '\n'))
            s[w++] = s[r];
    s.resize(w);
    return s;
}

} // namespace test_files
