// Folder listing by mask, as job files' mask entries use it.
#include "tool_process.h"

#include "vqk/platform/dir_list.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

std::vector<std::string> names(const vq::TVectorC<vq::CStr>& v) {
    std::vector<std::string> out;
    for (const vq::CStr& s : v)
        out.push_back(s.str());
    return out;
}

TEST(DirList, MatchingFilesInNameOrder) {
    std::string dir = freshTempDir("dir_list");
    ASSERT_FALSE(dir.empty());
    // No "a.xml" beside "A.XML": on Windows the two names are one file.
    for (const char* n : {"b.xml", "A.XML", "c.txt", "ab.xml"})
        writeFile(dir + "/" + n, "x");
    std::filesystem::create_directories(dir + "/d.xml");
    std::filesystem::create_directories(dir + "/sub");
    writeFile(dir + "/sub/s1.xml", "");
    vq::TVectorC<vq::CStr> found;
    ASSERT_TRUE(vq::platform::listFiles(dir.c_str(), "*.xml", found));
    EXPECT_EQ(names(found), (std::vector<std::string>{"A.XML", "ab.xml", "b.xml"}))
        << "folders are never listed; letter case is ignored";
    ASSERT_TRUE(vq::platform::listFiles(dir.c_str(), "?.xml", found));
    EXPECT_EQ(names(found), (std::vector<std::string>{"A.XML", "b.xml"}));
    ASSERT_TRUE(vq::platform::listFiles(dir.c_str(), "sub/*.xml", found));
    EXPECT_EQ(names(found), (std::vector<std::string>{"s1.xml"}));
    ASSERT_TRUE(vq::platform::listFiles(dir.c_str(), "*.none", found));
    EXPECT_TRUE(found.empty());
    found.add() = "stale";
    EXPECT_FALSE(vq::platform::listFiles((dir + "/missing").c_str(), "*", found));
    EXPECT_TRUE(found.empty());
    EXPECT_FALSE(vq::platform::matchesMask(nullptr, "*"));
    EXPECT_TRUE(vq::platform::matchesMask("Part.QIF", "part.qif"));
}

} // namespace
