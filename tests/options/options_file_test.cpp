// Option sets and the options file: every kind through a file and back, the merge that
// keeps other sets, and the safety of saving (a damaged target, concurrent writers, a
// writer killed in the middle).
#include "options_test_support.h"

#include <thread>
#include <vector>
#ifndef _WIN32
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>
#endif

using opt_test::CAllKinds;

namespace {

void expectSameValues(CAllKinds& a, CAllKinds& b) {
    ASSERT_EQ(a.nOpt(), b.nOpt());
    for (int i = 0; i < a.nOpt(); ++i)
        EXPECT_TRUE(a.opt(i)->isEqual(*b.opt(i))) << a.opt(i)->name();
}

TEST(OptionsFile, EveryKindReadsBackWhatWasWritten) {
    const std::string path = opt_test::scratchFolder("round_trip") + "/options.xml";
    CAllKinds saved;
    saved.fill();
    ASSERT_TRUE(saved.write(path.c_str()));
    EXPECT_TRUE(opt_test::wellFormed(path));
    CAllKinds loaded;
    EXPECT_EQ(loaded.read(path.c_str()), loaded.nOpt());
    expectSameValues(saved, loaded);
    EXPECT_EQ(loaded.vs[0], "line one\nline two\r\nthree");
    EXPECT_FALSE(std::filesystem::exists(opt_test::scratchFolder("round_trip") + "/tmp_opt.xml"));
}

TEST(OptionsFile, WritingOneSetKeepsTheOthers) {
    const std::string dir = opt_test::scratchFolder("merge");
    const std::string path = dir + "/options.xml";
    CAllKinds a("A"), b("B");
    a.fill();
    b.i1 = 99;
    ASSERT_TRUE(a.write(path.c_str()));
    ASSERT_TRUE(b.write(path.c_str()));
    a.i1 = 1234;
    ASSERT_TRUE(a.write(path.c_str()));

    CAllKinds readA("A"), readB("B"), none("C");
    readA.read(path.c_str());
    readB.read(path.c_str());
    EXPECT_EQ(readA.i1, 1234);
    EXPECT_EQ(readB.i1, 99);
    expectSameValues(a, readA);
    none.i1 = 5;
    EXPECT_EQ(none.read(path.c_str()), 0) << "no set of that name: nothing read";
    EXPECT_EQ(none.i1, 5);

    vq::COptions doc(path.c_str());
    std::string names;
    for (const char* n = doc.optFirst("i"); n; n = doc.optNext())
        names += std::string(n) + ",";
    EXPECT_EQ(names, "i1,i2,i3,i1,i2,i3,");
    EXPECT_EQ(doc.opt("i1", 0), 1234) << "the first set in the file";
    EXPECT_EQ(doc.opt("nothing", 17), 17);
    EXPECT_TRUE(doc.setOpt("i1", 77));
    EXPECT_FALSE(doc.setOpt("nothing", 1));
    ASSERT_TRUE(doc.save(nullptr));
    readA.read(path.c_str());
    EXPECT_EQ(readA.i1, 77);
}

TEST(OptionsFile, DamagedOrMissingFilesChangeNothing) {
    const std::string dir = opt_test::scratchFolder("damaged");
    const std::string path = dir + "/options.xml";
    CAllKinds a;
    a.fill();
    ASSERT_TRUE(a.write(path.c_str()));
    const std::string whole = opt_test::readFile(path);
    const std::string cut = whole.substr(0, whole.size() / 2);
    opt_test::writeFile(path, cut);

    CAllKinds reader;
    EXPECT_EQ(reader.read(path.c_str()), -2);
    EXPECT_EQ(reader.i1, 0) << "a damaged file is not applied in part";
    EXPECT_FALSE(a.write(path.c_str()));
    EXPECT_EQ(opt_test::readFile(path), cut) << "a damaged target stays as it was";
    EXPECT_EQ(reader.read((dir + "/missing.xml").c_str()), -1);
}

TEST(OptionsFile, ConcurrentWritersEachKeepTheirSet) {
    const std::string path = opt_test::scratchFolder("concurrent") + "/options.xml";
    const int writers = 6, rounds = 10;
    std::vector<std::thread> threads;
    for (int w = 0; w < writers; ++w)
        threads.emplace_back([&, w] {
            const std::string name = "W" + std::to_string(w);
            CAllKinds set(name.c_str());
            for (int r = 1; r <= rounds; ++r) {
                set.i1 = w * 100 + r;
                EXPECT_TRUE(set.write(path.c_str()));
            }
        });
    for (std::thread& t : threads)
        t.join();
    for (int w = 0; w < writers; ++w) {
        const std::string name = "W" + std::to_string(w);
        CAllKinds set(name.c_str());
        EXPECT_GT(set.read(path.c_str()), 0) << name;
        EXPECT_EQ(set.i1, w * 100 + rounds) << name;
    }
}

#ifndef _WIN32
// A writer killed at any moment leaves the old file or the new one, whole.
TEST(OptionsFile, AWriterKilledMidwayLeavesAWholeFile) {
    const std::string path = opt_test::scratchFolder("killed") + "/options.xml";
    CAllKinds first;
    first.fill();
    ASSERT_TRUE(first.write(path.c_str()));
    for (int attempt = 0; attempt < 12; ++attempt) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            CAllKinds set;
            set.fill();
            for (int r = 0;; ++r) {
                set.i1 = r;
                set.write(path.c_str());
            }
        }
        usleep(useconds_t(2000 + attempt * 1500));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        ASSERT_TRUE(opt_test::wellFormed(path)) << "attempt " << attempt;
        CAllKinds after;
        EXPECT_EQ(after.read(path.c_str()), after.nOpt());
        EXPECT_EQ(after.vs, first.vs);
    }
}
#endif

TEST(OptionsFile, ReportingSetIsSharedAndValidated) {
    vq::COptReporting& r = vq::COptReporting::create();
    EXPECT_EQ(&vq::COptReporting::create(), &r);
    EXPECT_EQ(r.nOpt(), 13);
    auto* limit = static_cast<vq::SOptI1*>(r.findOptByName("ScreenshotLimit"));
    ASSERT_NE(limit, nullptr);
    limit->setVal(5000);
    EXPECT_EQ(r.screenshotLimit, 1000) << "a change brings the value back into range";
    static_cast<vq::SOptEnum*>(r.findOptByName("AutoSave"))->setVal(1);
    EXPECT_EQ(r.autoSave, 0) << "no folder: no automatic saving";
    EXPECT_EQ(r.findOpt(65106), r.findOptByName("LogoCompany"));
    vq::COptReporting::destroy();
    EXPECT_EQ(vq::COptReporting::opt(), &r);
    vq::COptReporting::destroy();
    EXPECT_EQ(vq::COptReporting::opt(), nullptr);
}

} // namespace
