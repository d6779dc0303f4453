// Folder listing by mask, as job files' mask entries use it.
#include "tool_process.h"

#include "vqk/platform/dir_list.h"

#include <gtest/gtest.h>

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
    for (const char* n : {"b.xml", "A.XML", "a.xml", "c.txt", "ab.xml"})
        writeFile(dir + "/" + n, "x");
    ASSERT_EQ(std::system(("mkdir -p '" + dir + "/d.xml' '" + dir + "/sub' && touch '" + dir +
                           "/sub/s1.xml'")
                              .c_str()),
              0);
    vq::TVectorC<vq::CStr> found;
    ASSERT_TRUE(vq::platform::listFiles(dir.c_str(), "*.xml", found));
    EXPECT_EQ(names(found), (std::vector<std::string>{"A.XML", "a.xml", "ab.xml", "b.xml"}))
        << "folders are never listed; letter case is ignored";
    ASSERT_TRUE(vq::platform::listFiles(dir.c_str(), "?.xml", found));
    EXPECT_EQ(names(found), (std::vector<std::string>{"A.XML", "a.xml", "b.xml"}));
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
