// TFilePath and the free path functions over strings.
#include "vqk/files/file_path.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace {

using vq::CStr;
using vq::CWStr;
using vq::EPathComponent;
using vq::TFilePath;
using vq::platform::EPathStyle;

template <class T> class FilePathObject : public ::testing::Test {};
using CharTypes = ::testing::Types<char, wchar_t>;
TYPED_TEST_SUITE(FilePathObject, CharTypes);

// ASCII test text at either width.
template <class T> vq::CTStr<T> t(const char* s) { return vq::CTStr<T>(s); }

template <class T> std::string narrow(const vq::CTStr<T>& s) { return std::string(vq::CStr(s).str()); }

TYPED_TEST(FilePathObject, GetJoinsTheSelectedComponents) {
    using T = TypeParam;
    const TFilePath<T> p(t<T>("C:\\a\\b\\name.tar.gz"));
    struct SGet {
        int mask;
        const char* expected;
    } cases[] = {
        {1, "C:"},          {2, "\\a\\b\\"},          {4, "name.tar"},
        {8, ".gz"},         {3, "C:\\a\\b\\"},        {7, "C:\\a\\b\\name.tar"},
        {12, "name.tar.gz"}, {15, "C:\\a\\b\\name.tar.gz"},
    };
    vq::CTStr<T> out;
    for (const SGet& c : cases) {
        out = t<T>("old");
        EXPECT_TRUE(p.get(out, EPathComponent(c.mask))) << c.mask;
        EXPECT_EQ(c.expected, narrow(out)) << c.mask;
    }
    for (int mask : {0, 5, 6, 9, 10, 11, 13, 14, 16, -1}) {
        out = t<T>("old");
        EXPECT_FALSE(p.get(out, EPathComponent(mask))) << mask;
        EXPECT_TRUE(out.empty()) << mask;
    }
    p.getDriveFolderFile(out);
    EXPECT_EQ("C:\\a\\b\\name.tar", narrow(out));
    p.getFileExt(out);
    EXPECT_EQ("name.tar.gz", narrow(out));
}

TYPED_TEST(FilePathObject, SetReplacesOnlyTheSelectedComponents) {
    using T = TypeParam;
    const vq::CTStr<T> before = t<T>("C:\\a\\name.txt");
    const vq::CTStr<T> source = t<T>("D:/x/y/other.xml");
    for (int mask = -1; mask <= 16; ++mask) {
        TFilePath<T> p(before);
        const bool accepted = mask == 1 || mask == 2 || mask == 3 || mask == 4 || mask == 8 ||
                              mask == 12 || mask == 15;
        EXPECT_EQ(accepted, p.set(source.str(), EPathComponent(mask))) << mask;
        const bool on = accepted;
        EXPECT_EQ((on && (mask & 1)) ? "D:" : "C:", narrow(vq::CTStr<T>(p.drive()))) << mask;
        EXPECT_EQ((on && (mask & 2)) ? "/x/y/" : "\\a\\", narrow(vq::CTStr<T>(p.folder()))) << mask;
        EXPECT_EQ((on && (mask & 4)) ? "other" : "name", narrow(vq::CTStr<T>(p.file()))) << mask;
        EXPECT_EQ((on && (mask & 8)) ? ".xml" : ".txt", narrow(vq::CTStr<T>(p.ext()))) << mask;
    }
}

TYPED_TEST(FilePathObject, FailedSplitChangesNothing) {
    using T = TypeParam;
    TFilePath<T> p(t<T>("C:\\a\\name.txt"));
    vq::CTStr<T> tooLong(300, T('z'));
    EXPECT_FALSE(p.set(tooLong.str(), vq::ePathExt));
    EXPECT_FALSE(p.reset(tooLong.str()));
    EXPECT_FALSE(p.setExt(tooLong.str()));
    EXPECT_FALSE(p.set(nullptr, vq::ePathAll));
    vq::CTStr<T> out;
    p.getFullPath(out);
    EXPECT_EQ("C:\\a\\name.txt", narrow(out));

    TFilePath<T> fresh(tooLong);
    fresh.getFullPath(out);
    EXPECT_TRUE(out.empty());
}

TYPED_TEST(FilePathObject, SetExtTakesTheExtensionOfAPath) {
    using T = TypeParam;
    TFilePath<T> p(t<T>("/d/name.txt"));
    EXPECT_TRUE(p.setExt(t<T>("xml").str()));
    EXPECT_EQ(0, p.ext()[0]) << "a bare word is a file name, not an extension";
    EXPECT_TRUE(p.setExt(t<T>(".xml").str()));
    EXPECT_EQ(t<T>(".xml"), p.ext());
    EXPECT_TRUE(p.setExt(t<T>("c:\\q.d\\arch.tar.gz").str()));
    EXPECT_EQ(t<T>(".gz"), p.ext());
    EXPECT_EQ(t<T>("name"), p.file());
    EXPECT_EQ(t<T>("/d/"), p.folder());
}

TEST(FilePathFunctions, SplitpathSkipsNullOutputsAndKeepsThemOnError) {
    CStr drive("keep"), folder("keep"), file("keep"), ext("keep");
    EXPECT_EQ(0, vq::splitpath("C:/a/b.c", &drive, nullptr, nullptr, &ext));
    EXPECT_EQ(CStr("C:"), drive);
    EXPECT_EQ(CStr("keep"), folder);
    EXPECT_EQ(CStr(".c"), ext);

    std::string longName(256, 'n');
    EXPECT_EQ(ERANGE, vq::splitpath(("C:/a/" + longName).c_str(), &drive, &folder, &file, &ext));
    EXPECT_EQ(EINVAL, vq::splitpath(static_cast<const char*>(nullptr), &drive, &folder, &file, &ext));
    EXPECT_EQ(CStr("C:"), drive);
    EXPECT_EQ(CStr("keep"), file);
    // The long name is not measured when it is not asked for.
    EXPECT_EQ(0, vq::splitpath(("C:/a/" + longName).c_str(), &drive, &folder, nullptr, &ext));
    EXPECT_EQ(CStr("/a/"), folder);

    CWStr wfile;
    EXPECT_EQ(0, vq::splitpath(L"\\x\\\u00e9t\u00e9.txt", nullptr, nullptr, &wfile, nullptr));
    EXPECT_EQ(CWStr(L"\u00e9t\u00e9"), wfile);
}

TEST(FilePathFunctions, MakepathJoinsWithThisSystemsDelimiter) {
    CStr out("old");
    EXPECT_EQ(0, vq::makepath(out, nullptr, nullptr, nullptr, nullptr));
    EXPECT_TRUE(out.empty());
    EXPECT_EQ(0, vq::makepath(out, "", "", "", ""));
    EXPECT_TRUE(out.empty());

    const std::string d = vq::pathDelimiter();
    ASSERT_EQ(1u, d.size());
    EXPECT_TRUE(d == "/" || d == "\\");
    EXPECT_EQ(std::wstring(1, wchar_t(d[0])), vq::pathDelimiterW());
    EXPECT_EQ(0, vq::makepath(out, "E", "out", "log", "xml"));
    EXPECT_EQ("E:out" + d + "log.xml", std::string(out.str()));
    // The joined string is exactly as long as its text: appending continues it.
    out += "!";
    EXPECT_EQ("E:out" + d + "log.xml!", std::string(out.str()));

    // Parts longer than a split buffer still join: the joiner sizes its output.
    const std::string longFolder(1000, 'f');
    EXPECT_EQ(0, vq::makepath(out, nullptr, longFolder.c_str(), "x", nullptr, EPathStyle::posix));
    EXPECT_EQ(longFolder + "/x", std::string(out.str()));
}

TEST(FilePathFunctions, GetFolderGivesDriveAndFolder) {
    CStr out("keep");
    EXPECT_EQ(0, vq::getFolder(out, "C:\\a\\b.txt"));
    EXPECT_EQ(CStr("C:\\a\\"), out);
    EXPECT_EQ(0, vq::getFolder(out, "b.txt"));
    EXPECT_TRUE(out.empty());
    out = "keep";
    EXPECT_EQ(ERANGE, vq::getFolder(out, (std::string(300, 'a') + "/b.txt").c_str()));
    EXPECT_EQ(CStr("keep"), out);
    CWStr wout;
    EXPECT_EQ(0, vq::getFolder(wout, L"/usr/lib/x"));
    EXPECT_EQ(CWStr(L"/usr/lib/"), wout);
}

TEST(FilePathFunctions, HasFileExtComparesTheWholeExtensionExactly) {
    const struct {
        const char *path, *ext;
        bool has;
    } cases[] = {{"x.xml", ".xml", true},    {"C:\\d.e\\x.tar.xml", ".xml", true}, {"x.XML", ".xml", false},
                 {"x.xml", "xml", false},    {"x.xmlz", ".xml", false},          {"d.xml/x", ".xml", false},
                 {"d.xml/x", "", true},      {nullptr, "", false}};
    for (const auto& c : cases)
        EXPECT_EQ(c.has, vq::hasFileExt(c.path, c.ext)) << (c.path ? c.path : "null") << " " << c.ext;
    EXPECT_TRUE(vq::hasFileExt(L"a/b.Q", L".Q"));
    EXPECT_FALSE(vq::hasFileExt(L"a/b.Q", L".q"));
}

TEST(FilePathFunctions, ReplaceExtKeepsEverythingElse) {
    CWStr p(L"C:\\a.d\\x.tar.gz");
    EXPECT_EQ(0, vq::replaceExt(p, L".bz2"));
    EXPECT_EQ(CWStr(L"C:\\a.d\\x.tar.bz2"), p);
    EXPECT_EQ(0, vq::replaceExt(p, L"xml"));
    EXPECT_EQ(CWStr(L"C:\\a.d\\x.tar.xml"), p);
    EXPECT_EQ(0, vq::replaceExt(p, nullptr));
    EXPECT_EQ(CWStr(L"C:\\a.d\\x.tar"), p);

    CStr n("/a/b");
    EXPECT_EQ(0, vq::replaceExt(n, ".log"));
    EXPECT_EQ(CStr("/a/b.log"), n);
    CStr tooLong(std::string(300, 'q').c_str());
    EXPECT_EQ(ERANGE, vq::replaceExt(tooLong, ".log"));
    EXPECT_EQ(300, tooLong.length());
}

TEST(FilePathFunctions, ReplacePathMovesTheFileIntoAFolder) {
    struct SMove {
        const wchar_t *path, *folder, *windows, *posix;
    } cases[] = {
        {L"C:\\in\\x.txt", L"D:\\out", L"D:\\out\\x.txt", L"D:\\out/x.txt"},
        {L"C:\\in\\x.txt", L"D:\\out\\", L"D:\\out\\x.txt", L"D:\\out\\x.txt"},
        {L"/in/x.txt", L"/out/y.dat", L"/out/x.txt", L"/out/x.txt"},
        {L"/in/x", L"rel", L"rel\\x", L"rel/x"},
        {L"x.txt", L"", L"x.txt", L"x.txt"},
        {L"/in/x.txt", L"E:", L"E:x.txt", L"E:x.txt"},
        {L"/in/x.txt", L"/out/sub.d", L"/out/x.txt", L"/out/x.txt"},
    };
    for (const SMove& c : cases) {
        for (EPathStyle style : {EPathStyle::windows, EPathStyle::posix}) {
            CWStr p(c.path);
            EXPECT_EQ(0, vq::replacePath(p, c.folder, style));
            EXPECT_EQ(CWStr(style == EPathStyle::windows ? c.windows : c.posix), p) << c.folder;
        }
    }
    CWStr p(L"/in/x.txt");
    EXPECT_EQ(0, vq::replacePath(p, L"/out/deeper"));
    EXPECT_EQ(CWStr((std::wstring(L"/out/deeper") + vq::pathDelimiterW() + L"x.txt").c_str()), p);
    EXPECT_EQ(EINVAL, vq::replacePath(p, nullptr));
    EXPECT_EQ(ERANGE, vq::replacePath(p, std::wstring(300, L'w').c_str()));
    EXPECT_EQ(CWStr((std::wstring(L"/out/deeper") + vq::pathDelimiterW() + L"x.txt").c_str()), p);

    CStr n("a/x.txt");
    EXPECT_EQ(0, vq::replacePath(n, "b", EPathStyle::posix));
    EXPECT_EQ(CStr("b/x.txt"), n);
}

std::string currentFolder() {
    char buf[4096];
    return getcwd(buf, sizeof buf) ? std::string(buf) : std::string();
}

TEST(FilePathFunctions, FullpathFoldsDotsWithoutTouchingTheDisk) {
    struct SAbs {
        const char *in, *out;
    } cases[] = {
        {"/a/./b//c/../d", "/a/b/d"},
        {"/..", "/"},
        {"/a/b/../../..", "/"},
        {"/a/b/", "/a/b/"},
        {"/a\\b\\..\\c", "/a/c"},
        {"/no/such/folder/file.txt", "/no/such/folder/file.txt"},
        {"/", "/"},
    };
    char buf[256];
    for (const SAbs& c : cases) {
        ASSERT_EQ(buf, vq::fullpath(buf, c.in, int(sizeof buf))) << c.in;
        EXPECT_STREQ(c.out, buf) << c.in;
    }
    const std::string cwd = currentFolder();
    ASSERT_FALSE(cwd.empty());
    std::string expected = cwd == "/" ? "/x/y" : cwd + "/x/y";
    CStr s;
    EXPECT_TRUE(vq::fullpath(s, "./x/z/../y"));
    EXPECT_EQ(expected, std::string(s.str()));
    EXPECT_TRUE(vq::fullpath(s, ""));
    EXPECT_EQ(cwd, std::string(s.str()));

    CWStr w;
    EXPECT_TRUE(vq::fullpath(w, L"/tmp/\u00e9/../\u00fc"));
    EXPECT_EQ(CWStr(L"/tmp/\u00fc"), w);
}

TEST(FilePathFunctions, FullpathRefusesASmallBuffer) {
    char buf[8] = "keep";
    EXPECT_EQ(nullptr, vq::fullpath(buf, "/abc/defg", 8));
    EXPECT_STREQ("keep", buf);
    EXPECT_EQ(nullptr, vq::fullpath(buf, "/abc", -5));
    EXPECT_EQ(buf, vq::fullpath(buf, "/abc/de", 8));
    EXPECT_STREQ("/abc/de", buf);

    wchar_t wbuf[4] = L"k";
    EXPECT_EQ(nullptr, vq::fullpath(wbuf, L"/abcd", 4));
    EXPECT_EQ(wbuf, vq::fullpath(wbuf, L"/\u00e9", 4));
    EXPECT_EQ(std::wstring(L"/\u00e9"), wbuf);

    char* owned = vq::fullpath(static_cast<char*>(nullptr), "/q/../r", 0);
    ASSERT_NE(nullptr, owned);
    EXPECT_STREQ("/r", owned);
    std::free(owned);
}

} // namespace
