#include "vqk/platform/module.h"
#include "vqk/text/format.h"
#include "vqk/text/str.h"
#include "vqk/text/runtime_critical.h"
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

std::string tempFolder(const char* name) {
    const char* base = std::getenv("VQK_TEST_TMP");
    std::string dir = base && *base ? base : "/tmp";
    ::mkdir(dir.c_str(), 0755);
    dir += "/";
    dir += name;
    ::mkdir(dir.c_str(), 0755);
    return dir;
}

void writeFile(const std::string& path, const std::string& bytes) {
    FILE* f = std::fopen(path.c_str(), "wb");
    ASSERT_NE(f, nullptr) << path;
    std::fwrite(bytes.data(), 1, bytes.size(), f);
    std::fclose(f);
}

// Points the tables at a folder for one test and back at the defaults afterwards.
class StringTableFolder : public ::testing::Test {
protected:
    void TearDown() override { vq::setStringTableFolder(nullptr); }
};

std::unordered_map<int, std::string> parse(const std::string& text, int* skipped = nullptr) {
    std::unordered_map<int, std::string> out;
    int s = vq::parseStringCsv(text.data(), text.size(), out);
    if (skipped)
        *skipped = s;
    return out;
}

} // namespace

TEST(StringCsv, QuotedTextsKeepLineFeedsAndDoubledQuotes) {
    auto t = parse("1;\"Label\nThe \"\"long\"\" description\"\r\n2;plain text\r\n3;\"\"\n");
    ASSERT_EQ(t.size(), 3u);
    EXPECT_EQ(t[1], "Label\nThe \"long\" description");
    EXPECT_EQ(t[2], "plain text");
    EXPECT_EQ(t[3], "");
}

TEST(StringCsv, MalformedRecordsAreSkippedAndTheRestLoads) {
    int skipped = 0;
    auto t = parse("\xEF\xBB\xBF"
                   "# comment\n"
                   "\n"
                   "abc;not a number\n"
                   "7 no separator\n"
                   "8;\"junk after\" quote\n"
                   "99999999999;too big\n"
                   "9;\"unterminated\n"
                   "10;after the stray quote\n"
                   "11,comma separated\n"
                   "  12 ; blanks around\n"
                   "10;\"later wins\"",
                   &skipped);
    EXPECT_EQ(skipped, 5);
    EXPECT_EQ(t.count(7), 0u);
    EXPECT_EQ(t.count(8), 0u);
    EXPECT_EQ(t.count(9), 0u);
    EXPECT_EQ(t[10], "later wins");
    EXPECT_EQ(t[11], "comma separated");
    EXPECT_EQ(t[12], "blanks around");
}

TEST(StringCsv, TruncatedInputNeverReadsPastItsEnd) {
    const std::string full = "5;\"ab\"\"c\"\n6;x\n";
    for (size_t n = 0; n <= full.size(); ++n) {
        // A heap copy of exactly n bytes lets the sanitizer catch any overread.
        std::unique_ptr<char[]> bytes(new char[n ? n : 1]);
        std::memcpy(bytes.get(), full.data(), n);
        std::unordered_map<int, std::string> out;
        vq::parseStringCsv(bytes.get(), n, out);
        // Cut inside the quotes, the record has no end and is dropped; cut right after
        // a closing quote, it is whole.
        if (n >= 9) {
            EXPECT_EQ(out[5], "ab\"c");
        } else if (n == 6) {
            EXPECT_EQ(out[5], "ab");
        } else if (n >= 3) {
            EXPECT_EQ(out.count(5), 0u) << n;
        }
    }
    std::unordered_map<int, std::string> out;
    EXPECT_EQ(vq::parseStringCsv(nullptr, 10, out), 0);
}

TEST_F(StringTableFolder, DefaultTableBesideTheLibraryHasTheLibrarysTexts) {
    EXPECT_STREQ(vq::stringTableText(62407, 0), "True");
    EXPECT_STREQ(vq::stringTableText(62408, 0), "False");
    for (int id : {61720, 61727, 61846, 61848, 61919, 64031})
        EXPECT_STRNE(vq::stringTableText(id, 0), "") << id;
}

TEST_F(StringTableFolder, UnknownIdsAndTablesGiveEmptyTextNeverNull) {
    for (int table : {-5, -1, 0, 1, 2, 3, 1000}) {
        const char* p = vq::stringTableText(123456789, table);
        ASSERT_NE(p, nullptr);
        EXPECT_STREQ(p, "");
    }
    EXPECT_STREQ(vq::stringTableFileName(2), "orv_strings_translator.csv");
    EXPECT_EQ(vq::stringTableFileName(3), nullptr);
}

TEST_F(StringTableFolder, ApplicationFolderIsSearchedFirstPerFile) {
    std::string dir = tempFolder("string_table_app");
    writeFile(dir + "/orv_string.csv", "62407;\"Wahr\"\n500;\"Label\nDescription\"\n501;\"\nkept\"\n");
    writeFile(dir + "/orv_string_repair.csv", "bad line\n600;repair\n500;\"other\"\n");
    std::remove((dir + "/orv_strings_translator.csv").c_str());

    const char* before = vq::stringTableText(62408, 0);
    vq::setStringTableFolder(dir.c_str());
    EXPECT_STREQ(vq::stringTableText(62407, 0), "Wahr");
    EXPECT_STREQ(vq::stringTableText(600, 1), "repair");
    EXPECT_STREQ(vq::stringTableText(600, 0), "");
    // The first table that has an id answers a lookup without a table.
    EXPECT_STREQ(vq::stringTableText(500), "Label\nDescription");
    EXPECT_STREQ(vq::stringTableText(600), "repair");
    // Texts handed out before the folder changed stay readable.
    EXPECT_STREQ(before, "False");

    // Labels: the first line is dropped only when the line feed is not the first char.
    EXPECT_EQ(vq::CStr(500, false), "Description");
    EXPECT_EQ(vq::CStr(500, true), "Label\nDescription");
    EXPECT_EQ(vq::CStr(501, false), "\nkept");
    vq::CStr s("old");
    EXPECT_EQ(s.loadLabelOnly(500), "Description");
    EXPECT_EQ(s.load(500), "Label\nDescription");
    EXPECT_EQ(s.load(999999), "");
    vq::CWStr w(500, false);
    EXPECT_TRUE(w == L"Description");

    vq::CStr f;
    f.format(vq::CFormat(vq::SStrId{62407, 0}));
    EXPECT_EQ(f, "Wahr");
}

TEST_F(StringTableFolder, MissingFileFallsBackToEnvironmentThenLibraryFolder) {
    std::string app = tempFolder("string_table_empty");
    std::remove((app + "/orv_string.csv").c_str());
    std::string env = tempFolder("string_table_env");
    writeFile(env + "/orv_string.csv", "62407;env\n");

    vq::setStringTableFolder(app.c_str());
    ::setenv(VQK_STRING_DIR_ENV, env.c_str(), 1);
    EXPECT_STREQ(vq::stringTableText(62407, 0), "env");
    ::unsetenv(VQK_STRING_DIR_ENV);
    vq::setStringTableFolder(app.c_str());
    EXPECT_STREQ(vq::stringTableText(62407, 0), "True");
}

TEST_F(StringTableFolder, CformatTakesItsFormatFromTheTable) {
    std::string dir = tempFolder("string_table_fmt");
    writeFile(dir + "/orv_string.csv", "700;\"%s has %i items\"\n");
    vq::setStringTableFolder(dir.c_str());
    vq::CStr s;
    EXPECT_STREQ(s.cformat(700, "list", 3), "list has 3 items");
    EXPECT_STREQ(s.cformat(701, "list", 3), "");
}

TEST_F(StringTableFolder, FirstLoadFromManyThreadsGivesEveryoneTheSameText) {
    std::string dir = tempFolder("string_table_threads");
    std::string csv;
    for (int i = 0; i < 20000; ++i) // large enough that loading takes a while
        csv += std::to_string(100000 + i) + ";\"text " + std::to_string(i) + "\"\n";
    writeFile(dir + "/orv_string.csv", csv);
    vq::setStringTableFolder(dir.c_str());
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
    long plain = 0; // deliberately not atomic: only the section keeps the count exact
    const int rounds = 20000;
#pragma omp parallel for num_threads(4)
    for (int i = 0; i < rounds; ++i)
        vq::runInRuntimeCritical([](void* p) { ++*static_cast<long*>(p); }, &plain);
    EXPECT_EQ(plain, rounds);
    long viaMacro = 0;
#pragma omp parallel for num_threads(4)
    for (int i = 0; i < rounds; ++i) {
        VQK_RUNTIME_CRITICAL
        ++viaMacro;
    }
    EXPECT_EQ(viaMacro, rounds);
    vq::runInRuntimeCritical(nullptr, nullptr); // no function: nothing happens
}

TEST(LibraryFolder, NamesTheFolderHoldingTheLibraryAndItsTable) {
    std::string dir = vq::platform::libraryFolder();
    ASSERT_FALSE(dir.empty());
    EXPECT_EQ(dir.back(), '/');
    FILE* f = std::fopen((dir + "orv_string.csv").c_str(), "rb"); // copied there by the build
    EXPECT_NE(f, nullptr) << dir;
    if (f)
        std::fclose(f);
}
