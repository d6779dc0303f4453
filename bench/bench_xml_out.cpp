// Writing the same document with CXmlOut and with libxml2's xmlTextWriter, the two
// alternating in one run: 1000 groups of 1000 items under one root (items two deep,
// indent "  "), each item with five attributes: an int, a double as "%.15g", a text
// that needs escaping, an unsigned 64-bit id and a bool. Prints each writer's
// throughput and the ratio, by wall-clock time and by processor time (the fairer
// figure on a shared machine), and whether the two files came out identical.
//
//   build/bench/bin/bench_xml_out
#include "vqk/xml/xml_out.h"

#include <benchmark/benchmark.h>
#include <libxml/xmlwriter.h>

#include <chrono>
#include <ctime>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr int kGroups = 1000;
constexpr int kItems = 1000;
const char kText[] = "a < b & \"c\" > d";
const char kVqkFile[] = "bench_xml_out_vqk.xml";
const char kLibxmlFile[] = "bench_xml_out_libxml2.xml";

struct SItem {
    int n;
    double v;
    unsigned long long id;
    bool ok;
};

SItem item(int g, int i) {
    int k = g * kItems + i;
    return {k - 500000, k * 0.1 + 1.0 / 3.0, 0xFEDCBA9876543210ull - unsigned(k), (k & 1) != 0};
}

long fileSize(const char* path) {
    FILE* f = std::fopen(path, "rb");
    if (!f)
        return 0;
    std::fseek(f, 0, SEEK_END);
    long n = std::ftell(f);
    std::fclose(f);
    return n;
}

struct STimes {
    double wall = -1, cpu = -1;
};

class CStopwatch {
public:
    STimes stop() const {
        return {std::chrono::duration<double>(std::chrono::steady_clock::now() - m_wall).count(),
                double(std::clock() - m_cpu) / CLOCKS_PER_SEC};
    }

private:
    std::chrono::steady_clock::time_point m_wall = std::chrono::steady_clock::now();
    std::clock_t m_cpu = std::clock();
};

STimes writeVqk() {
    CStopwatch watch;
    {
        vq::CXmlOut out;
        if (!out.open(kVqkFile, false, false))
            return {};
        out.setIndent("  ");
        vq::CXmlOutElem root(out, "doc");
        for (int g = 0; g < kGroups; ++g) {
            vq::CXmlOutElem group(out, "group");
            out.attrInt("g", g);
            for (int i = 0; i < kItems; ++i) {
                SItem it = item(g, i);
                vq::CXmlOutElem e(out, "item");
                out.attrInt("n", it.n);
                out.attrD1("v", it.v);
                out.attrStr("t", kText);
                out.attrID1("id", it.id);
                out.attrBool("ok", it.ok);
            }
        }
    }
    return watch.stop();
}

// libxml2 as a careful user drives it: numbers formatted into a stack buffer and
// handed over as text, which saves the writer's own per-call allocation.
STimes writeLibxml2() {
    CStopwatch watch;
    xmlTextWriterPtr w = xmlNewTextWriterFilename(kLibxmlFile, 0);
    if (!w)
        return {};
    xmlTextWriterSetIndent(w, 1);
    xmlTextWriterSetIndentString(w, BAD_CAST "  ");
    xmlTextWriterStartDocument(w, "1.0", "utf-8", nullptr);
    xmlTextWriterStartElement(w, BAD_CAST "doc");
    char buf[64];
    for (int g = 0; g < kGroups; ++g) {
        xmlTextWriterStartElement(w, BAD_CAST "group");
        std::snprintf(buf, sizeof buf, "%i", g);
        xmlTextWriterWriteAttribute(w, BAD_CAST "g", BAD_CAST buf);
        for (int i = 0; i < kItems; ++i) {
            SItem it = item(g, i);
            xmlTextWriterStartElement(w, BAD_CAST "item");
            std::snprintf(buf, sizeof buf, "%i", it.n);
            xmlTextWriterWriteAttribute(w, BAD_CAST "n", BAD_CAST buf);
            std::snprintf(buf, sizeof buf, "%.15g", it.v);
            xmlTextWriterWriteAttribute(w, BAD_CAST "v", BAD_CAST buf);
            xmlTextWriterWriteAttribute(w, BAD_CAST "t", BAD_CAST kText);
            std::snprintf(buf, sizeof buf, "%llu", it.id);
            xmlTextWriterWriteAttribute(w, BAD_CAST "id", BAD_CAST buf);
            xmlTextWriterWriteAttribute(w, BAD_CAST "ok", BAD_CAST(it.ok ? "1" : "0"));
            xmlTextWriterEndElement(w);
        }
        xmlTextWriterEndElement(w);
    }
    xmlTextWriterEndElement(w);
    xmlTextWriterEndDocument(w);
    xmlFreeTextWriter(w);
    return watch.stop();
}

void skipLine(FILE* f) {
    int c;
    while ((c = std::fgetc(f)) != EOF && c != '\n') {
    }
}

// Compares the files after their declaration lines (libxml2 spells the encoding in
// capitals).
bool sameDocuments(const char* a, const char* b) {
    FILE* fa = std::fopen(a, "rb");
    FILE* fb = std::fopen(b, "rb");
    bool same = fa && fb;
    if (same) {
        skipLine(fa);
        skipLine(fb);
    }
    static char ba[1 << 16], bb[1 << 16];
    while (same) {
        size_t na = std::fread(ba, 1, sizeof ba, fa), nb = std::fread(bb, 1, sizeof bb, fb);
        same = na == nb && std::memcmp(ba, bb, na) == 0;
        if (na == 0)
            break;
    }
    if (fa)
        std::fclose(fa);
    if (fb)
        std::fclose(fb);
    return same;
}

struct SRuns {
    std::vector<STimes> vqk, libxml2;
    long vqkBytes = 0, libxml2Bytes = 0;
    bool identical = false;
} g_runs;

STimes best(const std::vector<STimes>& v) {
    STimes b = v.empty() ? STimes{} : v[0];
    for (const STimes& x : v) {
        b.wall = x.wall < b.wall ? x.wall : b.wall;
        b.cpu = x.cpu < b.cpu ? x.cpu : b.cpu;
    }
    return b;
}

void BM_XmlWritersAlternating(benchmark::State& state) {
    for (auto _ : state) {
        STimes a = writeVqk();
        STimes b = writeLibxml2();
        if (a.wall < 0 || b.wall < 0) {
            state.SkipWithError("cannot write the output files");
            break;
        }
        g_runs.vqk.push_back(a);
        g_runs.libxml2.push_back(b);
    }
    g_runs.vqkBytes = fileSize(kVqkFile);
    g_runs.libxml2Bytes = fileSize(kLibxmlFile);
    g_runs.identical = sameDocuments(kVqkFile, kLibxmlFile);
    double elems = double(kGroups) * kItems;
    state.counters["vqk_Melem_per_s"] = elems / best(g_runs.vqk).wall / 1e6;
    state.counters["libxml2_Melem_per_s"] = elems / best(g_runs.libxml2).wall / 1e6;
    state.counters["ratio"] = best(g_runs.libxml2).wall / best(g_runs.vqk).wall;
}

BENCHMARK(BM_XmlWritersAlternating)->Iterations(5)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    if (!g_runs.vqk.empty()) {
        double elems = double(kGroups) * kItems;
        STimes tv = best(g_runs.vqk), tl = best(g_runs.libxml2);
        std::printf("\n%d runs each, alternating; best run of each (wall clock / processor time):\n",
                    int(g_runs.vqk.size()));
        std::printf("  CXmlOut       %7.1f / %7.1f MB/s  %5.2f / %5.2f M elements/s  (%ld bytes)\n",
                    g_runs.vqkBytes / tv.wall / 1e6, g_runs.vqkBytes / tv.cpu / 1e6, elems / tv.wall / 1e6,
                    elems / tv.cpu / 1e6, g_runs.vqkBytes);
        std::printf("  xmlTextWriter %7.1f / %7.1f MB/s  %5.2f / %5.2f M elements/s  (%ld bytes)\n",
                    g_runs.libxml2Bytes / tl.wall / 1e6, g_runs.libxml2Bytes / tl.cpu / 1e6,
                    elems / tl.wall / 1e6, elems / tl.cpu / 1e6, g_runs.libxml2Bytes);
        std::printf("  ratio: %.2fx wall clock, %.2fx processor time; documents identical after the declaration: %s\n", tl.wall / tv.wall,
                    tl.cpu / tv.cpu, g_runs.identical ? "yes" : "no");
    }
    std::remove(kVqkFile);
    std::remove(kLibxmlFile);
    return 0;
}
