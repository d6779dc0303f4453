#include "process_child.h"

#include "vqk/jobs/process.h"
#include "vqk/platform/environment.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

std::string childCommand(const std::string& act) {
    return "\"" + vq::platform::executablePath() + "\" --vqk-child " + act;
}

namespace {

void sleepMs(long ms) { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); }

int beat(const char* file, int seconds) {
    auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    while (std::chrono::steady_clock::now() < end) {
        if (FILE* f = std::fopen(file, "ab")) {
            std::fputc('.', f);
            std::fclose(f);
        }
        sleepMs(50);
    }
    return 0;
}

bool hasBeat(const char* file) {
    FILE* f = std::fopen(file, "rb");
    bool beat = f && std::fgetc(f) != EOF;
    if (f)
        std::fclose(f);
    return beat;
}

int playChild(int argc, char** argv) {
    std::string act = argc > 0 ? argv[0] : "";
    const char* a1 = argc > 1 ? argv[1] : "";
    const char* a2 = argc > 2 ? argv[2] : "0";
    if (act == "sleep") {
        sleepMs(std::atol(a1));
        return 0;
    }
    if (act == "exit")
        return std::atoi(a1);
    if (act == "crash")
        std::abort();
    if (act == "args") {
        FILE* f = std::fopen(a1, "wb");
        if (!f)
            return 2;
        for (int i = 2; i < argc; ++i)
            std::fprintf(f, "%s\n", argv[i]);
        std::fclose(f);
        return 0;
    }
    if (act == "beat")
        return beat(a1, std::atoi(a2));
    if (act == "job-beat" || act == "job-grandchild-beat") {
        std::string next = act == "job-beat" ? "beat \"" + std::string(a1) + "\" 20"
                                             : "job-free-beat \"" + std::string(a1) + "\"";
        if (vq::startProcess(childCommand(next).c_str(), false, -1, true, 0) != 0)
            return 3;
        // The owner ends only once the heart beats, however slowly children start.
        for (int i = 0; i < 1000 && !hasBeat(a1); ++i)
            sleepMs(20);
        sleepMs(std::atol(a2));
        return 0;
    }
    if (act == "job-free-beat") {
        vq::startProcess(childCommand("beat \"" + std::string(a1) + "\" 20").c_str(), false, -1, false, 0);
        sleepMs(20000);
        return 0;
    }
    return 99;
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 1 && std::strcmp(argv[1], "--vqk-child") == 0)
        return playChild(argc - 2, argv + 2);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
