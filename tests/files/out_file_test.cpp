// The file output: opening modes, the writer lock, ownership of the stream and the
// three output operations.
#include "vqk/files/out_file.h"

// The writer's test helpers serve the file output's tests as well.
#include "../xml/xml_test_support.h"

#include "support/test_files.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using xml_test::readFile;
using xml_test::tempDir;

TEST(OutFileOpen, WritesAppendsAndTruncates) {
    std::string path = tempDir("file_modes") + "/a.txt";
    {
        vq::COutFile f(path.c_str());
        ASSERT_TRUE(f.isOpen());
        EXPECT_TRUE(f.isOwned());
        f.print("%s=%i\n", "n", 3);
        EXPECT_EQ(f.writeBlock("xy\0z", 4), 4u);
    }
    // Text mode: a reader on Windows sees CR LF where the output wrote a line break.
    EXPECT_EQ(xml_test::lfOnly(readFile(path)), std::string("n=3\nxy\0z", 8));
    {
        vq::COutFile f;
        ASSERT_TRUE(f.open(path.c_str(), true, false));
        f.print("%s", "more");
    }
    EXPECT_EQ(xml_test::lfOnly(readFile(path)), std::string("n=3\nxy\0zmore", 12));
    {
        vq::COutFile f;
        ASSERT_TRUE(f.open(path.c_str(), false, true));
        f.print("new");
        // Unbuffered: the bytes are in the file before any flush or close.
        EXPECT_EQ(readFile(path), "new");
    }
}

TEST(OutFileOpen, WidePathsAreUtf8OnDisk) {
    std::string dir = tempDir("file_wide");
    vq::COutFile g;
    std::wstring wpath(dir.begin(), dir.end());
    wpath += L"/\u00e9t\u00e9.txt";
    ASSERT_TRUE(g.open(wpath.c_str(), false, false));
    g.print("w");
    g.close();
    EXPECT_EQ(readFile(dir + "/\xC3\xA9t\xC3\xA9.txt"), "w");
}

TEST(OutFileOpen, SecondWriterIsRefusedAndTruncatesNothing) {
    std::string path = tempDir("file_lock") + "/held.txt";
    vq::COutFile first;
    ASSERT_TRUE(first.open(path.c_str(), false, false));
    first.print("kept");
    first.flush();
    vq::COutFile second;
    EXPECT_FALSE(second.open(path.c_str(), false, false));
    EXPECT_FALSE(second.open(path.c_str(), true, false));
    EXPECT_FALSE(second.isOpen());
    EXPECT_EQ(readFile(path), "kept");
    first.close();
    EXPECT_TRUE(second.open(path.c_str(), true, false));
}

TEST(OutFileOpen, FailuresLeaveItClosed) {
    vq::COutFile f;
    EXPECT_FALSE(f.open("/nonexistent-folder-vqk/x.txt", false, false));
    EXPECT_FALSE(f.open(static_cast<const char*>(nullptr), false, false));
    EXPECT_FALSE(f.open(static_cast<const wchar_t*>(nullptr), false, false));
    EXPECT_FALSE(f.isOpen());
    EXPECT_EQ(f.print("%i", 1), 0);
    EXPECT_EQ(f.writeBlock("a", 1), 0u);
    vq::COutFile n(static_cast<const char*>(nullptr));
    EXPECT_FALSE(n.isOpen());
}

TEST(OutFileStream, CallersStreamIsNeverClosed) {
    FILE* tmp = std::tmpfile();
    ASSERT_TRUE(tmp);
    {
        vq::COutFile f(tmp);
        EXPECT_FALSE(f.isOwned());
        f.print("%u", 7u);
    }
    // Still usable after the output is gone.
    EXPECT_GE(std::fputs("!", tmp), 0);
    EXPECT_EQ(test_files::readAndClose(tmp), "7!");
}

TEST(OutFileStream, AttachHandsOverOwnership) {
    std::string path = tempDir("file_attach") + "/o.txt";
    FILE* raw = std::fopen(path.c_str(), "w");
    ASSERT_TRUE(raw);
    vq::COutFile f;
    f.attach(raw, true);
    EXPECT_TRUE(f.isOwned());
    f.print("x");
    f.close(); // closes raw: the text reaches the file
    EXPECT_FALSE(f.isOpen());
    EXPECT_EQ(readFile(path), "x");
}

} // namespace
