// A progress host that records what it is told, for the progress tests.
#pragma once

#include "vqk/jobs/progress.h"

#include <string>
#include <vector>

struct CRecordingHost : vq::CProgressHost {
    std::vector<int> percents;
    std::vector<std::string> texts;
    std::vector<bool> windows;
    std::vector<int> threads;
    bool terminate = false;

    CRecordingHost() { vq::setProgressHost(this); }
    ~CRecordingHost() override { vq::setProgressHost(nullptr); }

    void showWindow(bool visible) override { windows.push_back(visible); }
    void show(int percent, const char* text) override;
    bool isTerminated() override { return terminate; }
};
