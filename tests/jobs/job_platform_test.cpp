// The operating-system pieces of the job host: folder listing by mask, the current
// folder, redirection of the standard streams and key polling without a terminal.
#include "tool_process.h"

#include "vqk/platform/console.h"
#include "vqk/platform/current_dir.h"
#include "vqk/platform/dir_list.h"
#include "vqk/platform/std_redirect.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

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

TEST(CurrentDir, ChangeAndRestore) {
    vq::CStr start;
    ASSERT_TRUE(vq::platform::currentDir(start));
    std::string dir = freshTempDir("current_dir");
    ASSERT_TRUE(vq::platform::changeDir(dir.c_str()));
    vq::CStr now;
    ASSERT_TRUE(vq::platform::currentDir(now));
    EXPECT_NE(std::string(now.str()).find("current_dir"), std::string::npos);
    EXPECT_FALSE(vq::platform::changeDir("no/such/folder"));
    EXPECT_FALSE(vq::platform::changeDir(nullptr));
    vq::CStr still;
    vq::platform::currentDir(still);
    EXPECT_STREQ(still.str(), now.str()) << "a failed change leaves the folder alone";
    ASSERT_TRUE(vq::platform::changeDir(start.str()));
}

TEST(StdRedirect, FailureLeavesTheStreamUsable) {
    EXPECT_FALSE(vq::platform::redirectStderr("/no/such/folder/err.txt"));
    EXPECT_FALSE(vq::platform::redirectStderr(nullptr));
    EXPECT_GE(std::fprintf(stderr, "%s", ""), 0);
    EXPECT_NE(fcntl(2, F_GETFD), -1) << "standard error is still open";
}

TEST(Console, NoTerminalMeansNoKey) {
    if (isatty(0))
        GTEST_SKIP() << "standard input is a terminal";
    vq::platform::CRawConsole console;
    EXPECT_FALSE(console.active());
    EXPECT_EQ(console.pollKey(20), -1);
    EXPECT_EQ(console.pollKey(-5), -1);
}

} // namespace
