// Error output and texts: a message is readable at once, the file-error codes have
// texts of their own, and the last system error reads as the system words it.
#include "vqk/diagnostics/err.h"

#include "self_child.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <set>
#include <string>

namespace {

TEST(Err, MessageIsOnItsWayBeforeTheStreamCloses) {
    const std::string dir = freshFolder("Err_Message");
    ASSERT_FALSE(dir.empty());
    const std::string path = dir + "/err.txt";
    FILE* f = std::fopen(path.c_str(), "w");
    ASSERT_NE(f, nullptr);
    {
        vq::CErr err(f);
        err.msg("cannot read %s", "a.xml");
        EXPECT_EQ(readText(path), "cannot read a.xml\n");
    }
    std::fclose(f);
}

TEST(Err, FileErrorCodesHaveTheirOwnTexts) {
    const std::string general = vq::stringTableText(vq::errMsgId(12345));
    EXPECT_FALSE(general.empty());
    EXPECT_STREQ(vq::stringTableText(vq::errMsgId(0)), "");
    std::set<std::string> seen;
    for (int code : {ENOENT, EACCES, EEXIST, EISDIR, ENOTDIR, EMFILE, ENOSPC, EROFS, EBUSY,
                     ENAMETOOLONG, EINVAL}) {
        const std::string text = vq::stringTableText(vq::errMsgId(code));
        EXPECT_FALSE(text.empty()) << code;
        EXPECT_NE(text, general) << code;
        EXPECT_TRUE(seen.insert(text).second) << code << ": " << text;
    }
    EXPECT_EQ(vq::errMsgId(ENFILE).id, vq::errMsgId(EMFILE).id);
}

TEST(Err, LastErrorIsTheSystemsTextAndCode) {
    const std::string dir = freshFolder("Err_LastError");
    errno = 0;
    FILE* f = std::fopen((dir + "/missing/file.txt").c_str(), "r");
    ASSERT_EQ(f, nullptr);
    vq::CStr text;
    if (VQK_TARGET_WINDOWS) { // the system's code and text, not the runtime's errno
        EXPECT_EQ(vq::getLastError(text), 3); // ERROR_PATH_NOT_FOUND
        const std::string t = text.str();
        const std::string tail = " (error code = 3)";
        EXPECT_GT(t.size(), tail.size()); // the system's own text comes first
        EXPECT_EQ(t.substr(t.size() - std::min(t.size(), tail.size())), tail);
        return;
    }
    EXPECT_EQ(vq::getLastError(text), ENOENT);
    EXPECT_EQ(std::string(text.str()), std::string(std::strerror(ENOENT)) + " (error code = 2)");
}

} // namespace
