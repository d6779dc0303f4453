// The splitter and joiner rules on caller buffers, for narrow and wide text, with
// both separator styles run on this machine.
#include "vqk/files/file_path.h"
#include "vqk/platform/path.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace {

using vq::platform::EPathStyle;

template <class T> std::basic_string<T> txt(const char* s) {
    std::basic_string<T> out;
    for (; *s; ++s)
        out += T(static_cast<unsigned char>(*s));
    return out;
}

template <class T> class FilePathRules : public ::testing::Test {};
using CharTypes = ::testing::Types<char, wchar_t>;
TYPED_TEST_SUITE(FilePathRules, CharTypes);

struct SSplitCase {
    const char* path;
    const char* drive;
    const char* dir;
    const char* fname;
    const char* ext;
};

// Windows-form and POSIX-form paths go through the same rules.
const SSplitCase kSplitCases[] = {
    {"C:\\a\\b\\name.tar.gz", "C:", "\\a\\b\\", "name.tar", ".gz"},
    {"/usr/lib/libx.so.1", "", "/usr/lib/", "libx.so", ".1"},
    {"a/b\\c", "", "a/b\\", "c", ""},
    {"dir.d/file", "", "dir.d/", "file", ""},
    {".profile", "", "", "", ".profile"},
    {"name.", "", "", "name", "."},
    {"C:", "C:", "", "", ""},
    {"C:file.txt", "C:", "", "file", ".txt"},
    {"c:/x/", "c:", "/x/", "", ""},
    {"\\\\server\\share\\x.y", "", "\\\\server\\share\\", "x", ".y"},
    {"", "", "", "", ""},
    {"a:b:c", "a:", "", "b:c", ""},
    {"z:", "z:", "", "", ""},
    // Only a letter names a drive.
    {"1:x.y", "", "", "1:x", ".y"},
    {"\xE9:x", "", "", "\xE9:x", ""},
    {":x", "", "", ":x", ""},
    {"/:x", "", "/", ":x", ""},
};

TYPED_TEST(FilePathRules, SplitsDriveFolderNameAndExtension) {
    using T = TypeParam;
    for (const SSplitCase& c : kSplitCases) {
        SCOPED_TRACE(c.path);
        T drive[3], dir[256], fname[256], ext[256];
        ASSERT_EQ(0, vq::_splitpath(txt<T>(c.path).c_str(), drive, 3, dir, 256, fname, 256, ext, 256));
        EXPECT_EQ(txt<T>(c.drive), drive);
        EXPECT_EQ(txt<T>(c.dir), dir);
        EXPECT_EQ(txt<T>(c.fname), fname);
        EXPECT_EQ(txt<T>(c.ext), ext);
    }
}

TYPED_TEST(FilePathRules, ComponentOverflowFailsAndEmptiesEveryBuffer) {
    using T = TypeParam;
    T drive[3], dir[256], fname[256], ext[256];
    auto fill = [&] {
        drive[0] = dir[0] = fname[0] = ext[0] = T('#');
    };
    auto allEmpty = [&] { return !drive[0] && !dir[0] && !fname[0] && !ext[0]; };

    const std::basic_string<T> fits(255, T('n'));
    const std::basic_string<T> tooLong(256, T('n'));
    const std::basic_string<T> sep(1, T('/'));
    const std::basic_string<T> dotted = txt<T>("a.");
    // Each component exactly at its limit splits; one more element fails.
    const std::basic_string<T> good[] = {fits, fits.substr(1) + sep, txt<T>("x.") + fits.substr(1)};
    for (const auto& p : good) {
        fill();
        EXPECT_EQ(0, vq::_splitpath(p.c_str(), drive, 3, dir, 256, fname, 256, ext, 256));
    }
    const std::basic_string<T> bad[] = {tooLong, tooLong.substr(1) + sep, txt<T>("x.") + tooLong.substr(1),
                                        txt<T>("C:") + tooLong.substr(1) + sep + dotted};
    for (const auto& p : bad) {
        fill();
        EXPECT_EQ(ERANGE, vq::_splitpath(p.c_str(), drive, 3, dir, 256, fname, 256, ext, 256));
        EXPECT_TRUE(allEmpty());
    }
    // A drive needs three elements; a path without one does not.
    fill();
    EXPECT_EQ(ERANGE, vq::_splitpath(txt<T>("C:x").c_str(), drive, 2, dir, 256, fname, 256, ext, 256));
    EXPECT_TRUE(allEmpty());
    EXPECT_EQ(0, vq::_splitpath(txt<T>("x").c_str(), drive, 1, dir, 256, fname, 256, ext, 256));
    EXPECT_EQ(txt<T>("x"), fname);
    // A skipped component is not measured.
    std::basic_string<T> longFolder = tooLong + sep + txt<T>("f.e");
    EXPECT_EQ(0, vq::_splitpath(longFolder.c_str(), nullptr, 0, nullptr, 0, fname, 256, ext, 256));
    EXPECT_EQ(txt<T>("f"), fname);
    EXPECT_EQ(txt<T>(".e"), ext);
}

TYPED_TEST(FilePathRules, SplitArgumentErrorsAreEinval) {
    using T = TypeParam;
    T drive[3], dir[256], fname[256], ext[256];
    const std::basic_string<T> p = txt<T>("C:\\a\\b.c");
    auto fill = [&] { drive[0] = dir[0] = fname[0] = ext[0] = T('#'); };

    fill();
    EXPECT_EQ(EINVAL, vq::_splitpath(static_cast<const T*>(nullptr), drive, 3, dir, 256, fname, 256, ext, 256));
    EXPECT_EQ(0, drive[0]);
    EXPECT_EQ(0, ext[0]);
    fill();
    EXPECT_EQ(EINVAL, vq::_splitpath(p.c_str(), nullptr, 3, dir, 256, fname, 256, ext, 256));
    EXPECT_EQ(0, dir[0]);
    fill();
    EXPECT_EQ(EINVAL, vq::_splitpath(p.c_str(), drive, 3, dir, 0, fname, 256, ext, 256));
    EXPECT_EQ(T('#'), dir[0]) << "a buffer given with no room is never written";
    EXPECT_EQ(0, fname[0]);
    EXPECT_EQ(EINVAL, errno);
}

TYPED_TEST(FilePathRules, JoinAddsSeparatorColonAndPointOnlyWhereMissing) {
    using T = TypeParam;
    struct SJoin {
        const char *drive, *dir, *fname, *ext, *windows, *posix;
    } cases[] = {
        {"C", "a", "b", "txt", "C:a\\b.txt", "C:a/b.txt"},
        {"C:", "\\a\\", "b", ".txt", "C:\\a\\b.txt", "C:\\a\\b.txt"},
        {nullptr, "/a/", "b", nullptr, "/a/b", "/a/b"},
        {"", "a\\b/", "", "", "a\\b/", "a\\b/"},
        {nullptr, "out", nullptr, "xml", "out\\.xml", "out/.xml"},
        {"Dz", nullptr, "f", "", "D:f", "D:f"},
        {nullptr, nullptr, nullptr, nullptr, "", ""},
    };
    for (const SJoin& c : cases) {
        for (EPathStyle style : {EPathStyle::windows, EPathStyle::posix}) {
            auto part = [](const char* s) { return s ? txt<T>(s) : std::basic_string<T>(); };
            const std::basic_string<T> d = part(c.drive), f = part(c.dir), n = part(c.fname), e = part(c.ext);
            T out[64];
            ASSERT_EQ(0, vq::platform::makepath_s(out, 64, c.drive ? d.c_str() : nullptr,
                                                  c.dir ? f.c_str() : nullptr, c.fname ? n.c_str() : nullptr,
                                                  c.ext ? e.c_str() : nullptr, style));
            EXPECT_EQ(txt<T>(style == EPathStyle::windows ? c.windows : c.posix), out);
        }
    }
}

TYPED_TEST(FilePathRules, JoinFailsWhenTheResultDoesNotFit) {
    using T = TypeParam;
    const std::basic_string<T> dir = txt<T>("ab"), name = txt<T>("c"), ext = txt<T>("d");
    // "ab/c.d" is six elements and a terminator.
    T out[8];
    for (size_t size = 1; size <= 7; ++size) {
        out[0] = T('#');
        int rc = vq::platform::makepath_s(out, size, nullptr, dir.c_str(), name.c_str(), ext.c_str(),
                                          EPathStyle::posix);
        if (size == 7) {
            EXPECT_EQ(0, rc);
            EXPECT_EQ(txt<T>("ab/c.d"), out);
        } else {
            EXPECT_EQ(ERANGE, rc) << size;
            EXPECT_EQ(0, out[0]);
        }
    }
    EXPECT_EQ(EINVAL, vq::platform::makepath_s(out, 0, nullptr, dir.c_str(), nullptr, nullptr));
    EXPECT_EQ(EINVAL, vq::platform::makepath_s(static_cast<T*>(nullptr), 8, nullptr, dir.c_str(),
                                               nullptr, nullptr));
}

} // namespace
