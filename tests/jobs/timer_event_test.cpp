#include "vqk/jobs/event.h"
#include "vqk/jobs/gen_id.h"
#include "vqk/jobs/timer.h"
#include "vqk/jobs/timer_xml.h"
#include "vqk/xml/xml_out.h"

#include "tool_process.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {
void sleepMs(int ms) { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); }
} // namespace

TEST(Timer, AccumulatorAndIntervalsSumTheirScopes) {
    double total = 0;
    for (int i = 0; i < 2; ++i) {
        vq::CTimer t(total);
        sleepMs(10);
        EXPECT_GE(t.time(), 0.009);
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
    iv.reset();
    EXPECT_EQ(iv.time(), 0);
    EXPECT_FALSE(iv.isRunning());
}

TEST(TimerXml, WritesOneTimeElementOnlyWithAWriter) {
    struct SCase {
        const char* algo;
        const char* head;
    };
    for (const SCase& c : {SCase{"mesh", "<time algo=\"mesh\" sec=\""}, SCase{"", "<time sec=\""}}) {
        FILE* f = std::tmpfile();
        ASSERT_NE(f, nullptr);
        {
            vq::CXmlOut out(f, nullptr);
            { vq::CTimerXml none(nullptr, c.algo); }
            { vq::CTimerXml t(out, c.algo); sleepMs(20); }
            out.close();
        }
        const std::string text = readAndClose(f);
        ASSERT_EQ(text.rfind(c.head, 0), 0u) << text;
        double sec = -1;
        ASSERT_EQ(std::sscanf(text.c_str() + std::string(c.head).size(), "%lf", &sec), 1) << text;
        EXPECT_GE(sec, 0.015);
        EXPECT_EQ(text.find("<time", 1), std::string::npos) << text;
    }
}

namespace {

struct CLogHandle : vq::event::CHandleBase {
    CLogHandle(std::vector<int>& log, int id, bool handles) : m_log(log), m_id(id), m_handles(handles) {}
    bool onEvent(void* a, void*) override {
        m_log.push_back(m_id);
        if (a)
            static_cast<CLogHandle*>(a)->disconnect();
        return m_handles;
    }
    std::vector<int>& m_log;
    int m_id;
    bool m_handles;
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
        CLogHandle h1(log, 1, false), h2(log, 2, true), h3(log, 3, false);
        h1.connect(ev);
        h2.connect(ev);
        h3.connect(ev);
        EXPECT_TRUE(ev.invoke(nullptr, nullptr));
        EXPECT_EQ(log, c.called);
    }
}

TEST(Event, HandlesAndEventsMayGoInAnyOrder) {
    using namespace vq::event;
    std::vector<int> log;
    auto ev = std::make_unique<CEventVoid>(eAll, eForward);
    auto early = std::make_unique<CLogHandle>(log, 1, false);
    CLogHandle victim(log, 2, false), late(log, 3, false), other(log, 4, false);
    early->connect(*ev);
    victim.connect(*ev);
    late.connect(*ev);
    early.reset(); // destroyed before its event
    EXPECT_EQ(ev->index(late), 1);

    CEventVoid second;
    late.connect(second); // leaves the first event
    EXPECT_EQ(ev->index(late), -1);
    other.connect(*ev);
    ev->invoke(nullptr, nullptr);
    EXPECT_EQ(log, (std::vector<int>{2, 4}));

    log.clear();
    CLogHandle remover(log, 6, false);
    CEventVoid third;
    remover.connect(third);
    victim.connect(third);
    // remover, called first, disconnects victim during the round: victim is skipped.
    third.invoke(&victim, nullptr);
    EXPECT_EQ(log, (std::vector<int>{6}));
    EXPECT_EQ(third.index(victim), -1);
    EXPECT_TRUE(third.is());

    ev.reset(); // destroyed before its handles
    EXPECT_EQ(other.event(), nullptr);
    other.disconnect();
}

TEST(GenID, CountsFromZero) {
    vq::CGenID g;
    EXPECT_EQ(g.id(), 0);
    EXPECT_EQ(g.id(), 1);
    EXPECT_EQ(g.id(), 2);
}
