#include "vqk/jobs/event.h"
#include "vqk/jobs/timer.h"
#include "vqk/jobs/timer_xml.h"
#include "vqk/xml/xml_out.h"

#include "tool_process.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <thread>

namespace {
void sleepMs(int ms) { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); }
} // namespace

TEST(Timer, AccumulatorAndIntervalsSumTheirScopes) {
    double total = 0;
    for (int i = 0; i < 2; ++i) {
        vq::CTimer t(total);
        sleepMs(10);
    }
    EXPECT_GE(total, 0.019);

    vq::CTimerIntervals iv;
    iv.stop(); // stopped already: nothing
    iv.start();
    sleepMs(10);
    iv.stop();
    const double once = iv.time();
    sleepMs(10);
    iv.stop();
    EXPECT_EQ(iv.time(), once);
    EXPECT_GE(once, 0.009);
    EXPECT_LT(once, 0.5);
}

TEST(TimerXml, WritesOneTimeElementOnlyWithAWriter) {
    for (std::string algo : {"mesh", ""}) {
        const std::string head = algo.empty() ? "<time sec=\"" : "<time algo=\"mesh\" sec=\"";
        FILE* f = std::tmpfile();
        ASSERT_NE(f, nullptr);
        {
            vq::CXmlOut out(f, nullptr);
            { vq::CTimerXml none(nullptr, algo.c_str()); }
            { vq::CTimerXml t(out, algo.c_str()); sleepMs(20); }
            out.close();
        }
        const std::string text = readAndClose(f);
        ASSERT_EQ(text.rfind(head, 0), 0u) << text;
        EXPECT_GE(std::atof(text.c_str() + head.size()), 0.015) << text;
        EXPECT_EQ(text.find("<time", 1), std::string::npos) << text;
    }
}

namespace {

// Logs its id when called; disconnects the handle passed as the first pointer.
struct CLogHandle : vq::event::CHandleBase {
    CLogHandle(std::vector<int>& log, int id, bool takes = false) : log(log), id(id), takes(takes) {}
    bool onEvent(void* a, void*) override {
        log.push_back(id);
        if (a)
            static_cast<CLogHandle*>(a)->disconnect();
        return takes;
    }
    std::vector<int>& log;
    int id;
    bool takes;
};

} // namespace

TEST(Event, TypeAndOrderSelectWhoIsCalled) {
    using namespace vq::event;
    struct SCase {
        EType type;
        EOrder order;
        std::vector<int> called;
    };
    const SCase cases[] = {
        {eAll, eForward, {1, 2, 3}},
        {eAll, eReverse, {3, 2, 1}},
        {eFirst, eForward, {1, 2}},
        {eFirst, eReverse, {3, 2}},
    };
    for (const SCase& c : cases) {
        std::vector<int> log;
        CEventVoid ev(c.type, c.order);
        EXPECT_FALSE(ev.invoke(nullptr, nullptr));
        CLogHandle h1(log, 1), h2(log, 2, true), h3(log, 3);
        h1.connect(ev);
        h2.connect(ev);
        h3.connect(ev);
        EXPECT_TRUE(ev.invoke(nullptr, nullptr));
        EXPECT_EQ(log, c.called);
    }
}

TEST(Event, HandlesAndEventsMayGoInAnyOrder) {
    std::vector<int> log;
    auto ev = std::make_unique<vq::event::CEventVoid>();
    auto early = std::make_unique<CLogHandle>(log, 1);
    CLogHandle first(log, 2), victim(log, 3), moved(log, 4);
    early->connect(*ev);
    first.connect(*ev);
    victim.connect(*ev);
    moved.connect(*ev);
    early.reset(); // destroyed before its event
    vq::event::CEventVoid other;
    moved.connect(other); // leaves the first event
    // first disconnects victim during the round: victim is skipped.
    ev->invoke(&victim, nullptr);
    EXPECT_EQ(log, (std::vector<int>{2}));
    EXPECT_EQ(ev->index(victim), -1);
    ev.reset(); // destroyed before its handles
    EXPECT_EQ(first.event(), nullptr);
    first.disconnect();
    EXPECT_EQ(moved.event(), &other);
}
