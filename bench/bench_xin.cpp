// bench/bench_xin.cpp
//
// Tokenizes one large generated document (about 100 MB of elements with four or five
// attributes) with ApXin, with expat and with libxml2's xmlTextReader, and prints the
// throughput of each and ApXin's ratio to the other two. Every contender visits every
// element and every attribute value, and the totals are compared, so that none of them
// can win by doing less.
//
// The document is written once under the build folder and reused. Two further runs
// show what a byte-at-a-time scan costs with the stream's locked and unlocked read once
// the process has started threads, which is why the tokenizer reads unlocked.
//
//   cmake --workflow --preset bench          (or: build/bench/bin/bench_xin)
#include "vqk/xml/xin.h"

#include <benchmark/benchmark.h>
#include <expat.h>
#include <libxml/xmlreader.h>
#include <omp.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <sys/stat.h>
#include <time.h>

namespace {

const char* const kDocumentName = "bench_xin_v1.xml";
constexpr long long kTargetBytes = 100LL << 20;

std::string documentPath() { return std::string(VQK_BINARY_DIR) + "/" + kDocumentName; }

long long fileSize(const std::string& path) {
    struct stat st;
    return stat(path.c_str(), &st) == 0 ? (long long)st.st_size : -1;
}

// A model-like document: bodies holding points, edges and an occasional array element.
void writeDocument(const std::string& path) {
    std::string tmp = path + ".part";
    FILE* f = std::fopen(tmp.c_str(), "w");
    if (!f) {
        std::fprintf(stderr, "cannot write %s\n", tmp.c_str());
        std::exit(1);
    }
    unsigned seed = 12345;
    auto next = [&seed]() {
        seed = seed * 1103515245u + 12345u;
        return (seed >> 8) & 0xffff;
    };
    std::fprintf(f, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
    std::fprintf(f, "<!-- generated for the tokenizer benchmark -->\n");
    std::fprintf(f, "<model name=\"bench\" version=\"3\" units=\"mm\">\n");
    long long id = 1;
    for (int body = 0; ftell(f) < kTargetBytes; ++body) {
        std::fprintf(f, " <body id=\"%d\" name=\"body %d\" layer=\"%u\" color=\"%u %u %u\">\n", body, body,
                     next() % 16, next() % 256, next() % 256, next() % 256);
        for (int i = 0; i < 200; ++i, ++id) {
            std::fprintf(f, "  <point id=\"%lld\" x=\"%.6f\" y=\"%.6f\" z=\"%.6f\" flags=\"%u\"/>\n", id,
                         next() / 97.0, next() / -13.0, next() / 7.0, next() % 8);
            if (i % 4 == 3)
                std::fprintf(f, "  <edge id=\"%lld\" from=\"%lld\" to=\"%lld\" kind=\"line\" note=\"a &amp; b &lt;%u&gt;\"/>\n",
                             id, id - 3, id, next() % 100);
        }
        std::fprintf(f, "  <normals n=\"4\" kind=\"unit\">0 0 1 0 1 0 1 0 0 0.6 0.8 0</normals>\n");
        std::fprintf(f, " </body>\n");
    }
    std::fprintf(f, "</model>\n");
    std::fclose(f);
    std::rename(tmp.c_str(), path.c_str());
}

const std::string& document() {
    static std::string path = [] {
        std::string p = documentPath();
        if (fileSize(p) < kTargetBytes) {
            std::fprintf(stderr, "writing %s ...\n", p.c_str());
            writeDocument(p);
        }
        return p;
    }();
    return path;
}

// What every contender reports: elements, attributes and the bytes of decoded values.
struct STotals {
    long long elements = 0;
    long long attributes = 0;
    long long valueBytes = 0;
    bool operator==(const STotals& o) const {
        return elements == o.elements && attributes == o.attributes && valueBytes == o.valueBytes;
    }
};

STotals runApXin(const char* path) {
    STotals t;
    FILE* f = std::fopen(path, "r");
    ApXin x(f);
    while (!x._readBeg()) {
        if (x.isTagEnd())
            continue;
        ++t.elements;
        for (const ApXin::SAttr& a : x.m_attrs) {
            ++t.attributes;
            t.valueBytes += (long long)std::strlen(a.value);
        }
    }
    std::fclose(f);
    return t;
}

void XMLCALL expatStart(void* user, const XML_Char*, const XML_Char** atts) {
    STotals& t = *static_cast<STotals*>(user);
    ++t.elements;
    for (; *atts; atts += 2) {
        ++t.attributes;
        t.valueBytes += (long long)std::strlen(atts[1]);
    }
}

void XMLCALL expatEnd(void*, const XML_Char*) {}

STotals runExpat(const char* path) {
    STotals t;
    FILE* f = std::fopen(path, "rb");
    XML_Parser p = XML_ParserCreate(nullptr);
    XML_SetUserData(p, &t);
    XML_SetElementHandler(p, expatStart, expatEnd);
    for (;;) {
        void* buf = XML_GetBuffer(p, 1 << 20);
        size_t n = std::fread(buf, 1, 1 << 20, f);
        if (XML_ParseBuffer(p, int(n), n == 0) != XML_STATUS_OK) {
            std::fprintf(stderr, "expat: %s\n", XML_ErrorString(XML_GetErrorCode(p)));
            break;
        }
        if (n == 0)
            break;
    }
    XML_ParserFree(p);
    std::fclose(f);
    return t;
}

STotals runTextReader(const char* path) {
    STotals t;
    xmlTextReaderPtr r = xmlReaderForFile(path, nullptr, 0);
    while (xmlTextReaderRead(r) == 1) {
        if (xmlTextReaderNodeType(r) != XML_READER_TYPE_ELEMENT)
            continue;
        ++t.elements;
        while (xmlTextReaderMoveToNextAttribute(r) == 1) {
            ++t.attributes;
            t.valueBytes += (long long)std::strlen(reinterpret_cast<const char*>(xmlTextReaderConstValue(r)));
        }
    }
    xmlFreeTextReader(r);
    return t;
}

// Scans the bytes of the document one at a time with the given single-byte read.
template <int (*Read)(FILE*)> STotals runByteScan(const char* path) {
    STotals t;
    FILE* f = std::fopen(path, "r");
    for (int c; (c = Read(f)) != EOF;)
        t.elements += c == '<';
    std::fclose(f);
    return t;
}
int lockedRead(FILE* f) { return fgetc(f); }
int unlockedRead(FILE* f) { return getc_unlocked(f); }

struct SResult {
    double bestSeconds = 1e30;    // wall clock
    double bestCpuSeconds = 1e30; // the measuring thread's processor time
    STotals totals;
};

// Processor time of the calling thread: on a shared machine the contenders' ratios are
// taken from it, since wall time there depends on who else is running.
double threadCpuSeconds() {
    timespec ts;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
    return double(ts.tv_sec) + double(ts.tv_nsec) * 1e-9;
}
std::map<std::string, SResult> results;

void runContender(benchmark::State& state, const char* name, STotals (*run)(const char*)) {
    const std::string& path = document();
    SResult& r = results[name];
    for (auto _ : state) {
        auto t0 = std::chrono::steady_clock::now();
        double c0 = threadCpuSeconds();
        r.totals = run(path.c_str());
        double cpu = threadCpuSeconds() - c0;
        double s = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
        r.bestSeconds = std::min(r.bestSeconds, s);
        r.bestCpuSeconds = std::min(r.bestCpuSeconds, cpu);
        benchmark::DoNotOptimize(r.totals);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * fileSize(path));
    state.counters["elements"] = double(r.totals.elements);
}

void BM_ApXin(benchmark::State& s) { runContender(s, "ApXin", runApXin); }
void BM_Expat(benchmark::State& s) { runContender(s, "expat", runExpat); }
void BM_XmlTextReader(benchmark::State& s) { runContender(s, "xmlTextReader", runTextReader); }
void BM_ByteScanLocked(benchmark::State& s) { runContender(s, "fgetc scan", runByteScan<lockedRead>); }
void BM_ByteScanUnlocked(benchmark::State& s) { runContender(s, "getc_unlocked scan", runByteScan<unlockedRead>); }

BENCHMARK(BM_ApXin)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(BM_Expat)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(BM_XmlTextReader)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(BM_ByteScanLocked)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(BM_ByteScanUnlocked)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

void printSummary() {
    const double mb = double(fileSize(document())) / (1 << 20);
    std::printf("\ndocument: %s, %.1f MB\n", document().c_str(), mb);
    std::printf("  %-20s %12s %12s\n", "", "MB/s (cpu)", "MB/s (wall)");
    for (const auto& [name, r] : results)
        std::printf("  %-20s %12.1f %12.1f\n", name.c_str(), mb / r.bestCpuSeconds, mb / r.bestSeconds);
    auto ratio = [](const char* a, const char* b) {
        auto ia = results.find(a), ib = results.find(b);
        if (ia != results.end() && ib != results.end())
            std::printf("  %s / %s throughput: %.2fx (cpu), %.2fx (wall)\n", a, b,
                        ib->second.bestCpuSeconds / ia->second.bestCpuSeconds,
                        ib->second.bestSeconds / ia->second.bestSeconds);
    };
    ratio("ApXin", "expat");
    ratio("ApXin", "xmlTextReader");
    ratio("getc_unlocked scan", "fgetc scan");
    const STotals& x = results["ApXin"].totals;
    std::printf("  ApXin totals: %lld elements, %lld attributes, %lld value bytes\n", x.elements, x.attributes,
                x.valueBytes);
    for (const char* other : {"expat", "xmlTextReader"}) {
        auto it = results.find(other);
        if (it != results.end() && !(it->second.totals == x))
            std::printf("  MISMATCH: %s saw %lld elements, %lld attributes, %lld value bytes\n", other,
                        it->second.totals.elements, it->second.totals.attributes, it->second.totals.valueBytes);
    }
}

} // namespace

int main(int argc, char** argv) {
    // Start the OpenMP threads as a library user's process would have done, so that the
    // stream reads pay for locking the way they do in the real tools.
    int threads = 0;
#pragma omp parallel
    {
#pragma omp atomic
        ++threads;
    }
    std::fprintf(stderr, "%d OpenMP threads started\n", threads);
    document();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    printSummary();
    return 0;
}
