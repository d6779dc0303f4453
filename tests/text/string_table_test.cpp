#include "vqk/platform/module.h"
#include "vqk/text/format.h"
#include "vqk/text/runtime_critical.h"
#include "vqk/text/str.h"
#include "vqk/text/string_csv.h"
#include "vqk/text/string_table.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <sys/stat.h>

namespace {

// A fresh folder under the test area holding the given files ("" removes one).
std::string tableFolder(const char* name, std::initializer_list<std::pair<const char*, std::string>> files) {
    const char* base = std::getenv("VQK_TEST_TMP");
    std::string dir = base && *base ? base : "/tmp";
    ::mkdir(dir.c_str(), 0755);
    dir += std::string("/") + name;
    ::mkdir(dir.c_str(), 0755);
    for (auto& f : files) {
        std::string path = dir + "/" + f.first;
        std::remove(path.c_str());
        if (FILE* out = f.second.empty() ? nullptr : std::fopen(path.c_str(), "wb")) {
            std::fwrite(f.second.data(), 1, f.second.size(), out);
            std::fclose(out);
        }
    }
    return dir;
}

// Points the tables back at the defaults after each test.
class StringTableFolder : public ::testing::Test {
protected:
    void TearDown() override { vq::setStringTableFolder(nullptr); }
};

} // namespace

TEST(StringCsv, QuotedLineFeedsAndMalformedRecords) {
    std::unordered_map<int, std::string> t;
    const std::string text = "\xEF\xBB\xBF# comment\n\n"
                             "1;\"Label\nThe \"\"long\"\" description\"\r\n2;plain text\r\n3;\"\"\n"
                             "abc;not a number\n7 no separator\n8;\"junk after\" quote\n"
                             "99999999999;too big\n9;\"unterminated\n10;after the stray quote\n"
                             "11,comma separated\n  12 ; blanks around\n10;\"later wins\"";
    EXPECT_EQ(vq::parseStringCsv(text.data(), text.size(), t), 5); // the skipped records
    EXPECT_EQ(t[1], "Label\nThe \"long\" description");
    EXPECT_EQ(t[2], "plain text");
    EXPECT_EQ(t[3], "");
    for (int id : {7, 8, 9})
        EXPECT_EQ(t.count(id), 0u) << id;
    EXPECT_EQ(t[10], "later wins");
    EXPECT_EQ(t[11], "comma separated");
    EXPECT_EQ(t[12], "blanks around");

    // Truncated input, in an exactly sized heap copy: cut inside the quotes a record is
    // dropped, cut right after a closing quote it is whole.
    const std::string full = "5;\"ab\"\"c\"\n6;x\n";
    for (size_t n = 0; n <= full.size(); ++n) {
        std::unique_ptr<char[]> bytes(new char[n ? n : 1]);
        std::memcpy(bytes.get(), full.data(), n);
        std::unordered_map<int, std::string> out;
        vq::parseStringCsv(bytes.get(), n, out);
        if (n >= 9 || n == 6) {
            EXPECT_EQ(out[5], n == 6 ? "ab" : "ab\"c") << n;
        } else if (n >= 3) {
            EXPECT_EQ(out.count(5), 0u) << n;
        }
    }
    EXPECT_EQ(vq::parseStringCsv(nullptr, 10, t), 0);
}

TEST_F(StringTableFolder, DefaultTableAndUnknownIds) {
    EXPECT_STREQ(vq::stringTableText(62407, 0), "True");
    EXPECT_STREQ(vq::stringTableText(62408, 0), "False");
    for (int id : {61720, 61727, 61846, 61848, 61919, 64031})
        EXPECT_STRNE(vq::stringTableText(id, 0), "") << id;
    for (int table : {-5, -1, 0, 1, 2, 3, 1000}) {
        const char* p = vq::stringTableText(123456789, table);
        ASSERT_NE(p, nullptr);
        EXPECT_STREQ(p, "");
    }
    EXPECT_STREQ(vq::stringTableFileName(2), "orv_strings_translator.csv");
    EXPECT_EQ(vq::stringTableFileName(3), nullptr);
    std::string dir = vq::platform::libraryFolder(); // the build copies the table there
    ASSERT_FALSE(dir.empty());
    EXPECT_EQ(dir.back(), '/');
    FILE* f = std::fopen((dir + "orv_string.csv").c_str(), "rb");
    EXPECT_NE(f, nullptr) << dir;
    if (f)
        std::fclose(f);
}

TEST_F(StringTableFolder, ApplicationFolderIsSearchedFirstPerFile) {
    std::string dir = tableFolder("string_table_app",
                                  {{"orv_string.csv", "62407;\"Wahr\"\n500;\"Label\nDescription\"\n501;\"\nkept\nwhole\"\n"
                                                      "700;\"%s has %i items\"\n"},
                                   {"orv_string_repair.csv", "bad line\n600;repair\n500;\"other\"\n"},
                                   {"orv_strings_translator.csv", ""}});
    const char* before = vq::stringTableText(62408, 0);
    vq::setStringTableFolder(dir.c_str());
    EXPECT_STREQ(vq::stringTableText(62407, 0), "Wahr");
    EXPECT_STREQ(vq::stringTableText(600, 1), "repair");
    EXPECT_STREQ(vq::stringTableText(600, 0), "");
    EXPECT_STREQ(vq::stringTableText(500), "Label\nDescription"); // the first table with the id
    EXPECT_STREQ(vq::stringTableText(600), "repair");
    EXPECT_STREQ(before, "False"); // texts handed out earlier stay readable

    // Labels: the first line is dropped only when the line feed is not the first char.
    EXPECT_EQ(vq::CStr(500, false), "Description");
    EXPECT_EQ(vq::CStr(500, true), "Label\nDescription");
    EXPECT_EQ(vq::CStr(501, false), "\nkept\nwhole");
    EXPECT_EQ(vq::CStr().loadLabelOnly(501), "\nkept\nwhole");
    EXPECT_TRUE(vq::CWStr(500, false) == L"Description");
    vq::CStr s("old");
    EXPECT_EQ(s.loadLabelOnly(500), "Description");
    EXPECT_EQ(s.load(500), "Label\nDescription");
    EXPECT_EQ(s.load(999999), "");
    s.format(vq::CFormat(vq::SStrId{62407, 0}));
    EXPECT_EQ(s, "Wahr");
    EXPECT_STREQ(s.cformat(700, "list", 3), "list has 3 items");
    EXPECT_STREQ(s.cformat(701, "list", 3), "");
}

TEST_F(StringTableFolder, MissingFileFallsBackToEnvironmentThenLibraryFolder) {
    std::string app = tableFolder("string_table_empty", {{"orv_string.csv", ""}});
    std::string env = tableFolder("string_table_env", {{"orv_string.csv", "62407;env\n"}});
    vq::setStringTableFolder(app.c_str());
    ::setenv(VQK_STRING_DIR_ENV, env.c_str(), 1);
    EXPECT_STREQ(vq::stringTableText(62407, 0), "env");
    ::unsetenv(VQK_STRING_DIR_ENV);
    vq::setStringTableFolder(app.c_str());
    EXPECT_STREQ(vq::stringTableText(62407, 0), "True");
}

TEST_F(StringTableFolder, FirstLoadFromManyThreadsGivesEveryoneTheSameText) {
    std::string csv;
    for (int i = 0; i < 20000; ++i) // large enough that loading takes a while
        csv += std::to_string(100000 + i) + ";\"text " + std::to_string(i) + "\"\n";
    vq::setStringTableFolder(tableFolder("string_table_threads", {{"orv_string.csv", csv}}).c_str());
    const int threads = 8;
    const char* seen[threads] = {};
#pragma omp parallel for num_threads(threads)
    for (int t = 0; t < threads; ++t)
        seen[t] = vq::stringTableText(119999, 0);
    for (int t = 0; t < threads; ++t) {
        ASSERT_NE(seen[t], nullptr);
        EXPECT_STREQ(seen[t], "text 19999");
        EXPECT_EQ(seen[t], seen[0]); // one table was loaded, not one per thread
    }
}

TEST(RuntimeCritical, SerialisesCallersOnTheSharedName) {
    long viaCall = 0, viaMacro = 0; // deliberately not atomic
    const int rounds = 20000;
#pragma omp parallel for num_threads(4)
    for (int i = 0; i < rounds; ++i) {
        vq::runInRuntimeCritical([](void* p) { ++*static_cast<long*>(p); }, &viaCall);
        VQK_RUNTIME_CRITICAL
        ++viaMacro;
    }
    EXPECT_EQ(viaCall, rounds);
    EXPECT_EQ(viaMacro, rounds);
    vq::runInRuntimeCritical(nullptr, nullptr); // no function: nothing happens
}
