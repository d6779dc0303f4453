// Saving an option set of 100 records of mixed kinds into an options file that already
// holds 20 other sets, and reading it back, against libxml2 doing only the work that
// cannot be avoided (parse the file, replace one element, save). The two alternate in
// one run; prints each one's time per save and the ratio.
//
//   build/bench/bin/bench_options
#include "vqk/vqk.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <chrono>
#include <cstdio>
#include <string>

namespace {

const char kFile[] = "bench_options.xml";
const char kLibxmlFile[] = "bench_options_libxml2.xml";
constexpr int kRounds = 200;

class CMixed : public vq::COptionsSet {
public:
    explicit CMixed(const char* name) : COptionsSet(name) {
        for (int i = 0; i < 20; ++i) {
            ints[i] = i;
            doubles[i] = i * 0.125;
            triples[i] = {i * 1.0, i * 2.0, i * 3.0};
            texts[i] = vq::CStringSt("a text with <markup> & quotes \"");
            flags[i] = i & 1;
        }
    }
    int ints[20];
    double doubles[20];
    vq::T3<double> triples[20];
    vq::CStringSt texts[20];
    bool flags[20];

protected:
    void addOptions() override {
        static char names[100][8];
        for (int i = 0; i < 20; ++i) {
            for (int k = 0; k < 5; ++k)
                std::snprintf(names[i * 5 + k], sizeof names[0], "o%d", i * 5 + k);
            addOpt(ints[i], names[i * 5], {});
            addOpt(doubles[i], names[i * 5 + 1], {}, vq::SOpt::eLength);
            addOpt(triples[i], names[i * 5 + 2], {});
            addOpt(texts[i], names[i * 5 + 3], {});
            addOpt(flags[i], names[i * 5 + 4], {});
        }
    }
};

double seconds(std::chrono::steady_clock::time_point since) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

// The irreducible work: parse, swap one top-level element for a fresh copy, save.
void libxml2Save(xmlNodePtr fresh) {
    xmlDocPtr doc = xmlReadFile(kLibxmlFile, nullptr, XML_PARSE_NOBLANKS);
    xmlNodePtr root = xmlDocGetRootElement(doc);
    for (xmlNodePtr n = root->children; n; n = n->next) {
        xmlChar* name = xmlGetProp(n, reinterpret_cast<const xmlChar*>("name"));
        const bool hit = name && xmlStrcmp(name, reinterpret_cast<const xmlChar*>("Bench")) == 0;
        xmlFree(name);
        if (hit) {
            xmlNodePtr copy = xmlDocCopyNode(fresh, doc, 1);
            xmlReplaceNode(n, copy);
            xmlFreeNode(n);
            break;
        }
    }
    xmlSaveFormatFileEnc(kLibxmlFile, doc, "utf-8", 1);
    xmlFreeDoc(doc);
}

} // namespace

int main() {
    std::remove(kFile);
    for (int s = 0; s < 20; ++s) {
        const std::string name = "Other" + std::to_string(s);
        CMixed(name.c_str()).write(kFile);
    }
    CMixed bench("Bench");
    bench.write(kFile);
    // libxml2 starts from the same file, and takes the set's element from it.
    {
        std::FILE* in = std::fopen(kFile, "rb");
        std::FILE* out = std::fopen(kLibxmlFile, "wb");
        char buf[65536];
        for (size_t n; (n = std::fread(buf, 1, sizeof buf, in)) > 0;)
            std::fwrite(buf, 1, n, out);
        std::fclose(in);
        std::fclose(out);
    }
    xmlDocPtr source = xmlReadFile(kFile, nullptr, XML_PARSE_NOBLANKS);
    xmlNodePtr fresh = nullptr;
    for (xmlNodePtr n = xmlDocGetRootElement(source)->children; n; n = n->next)
        fresh = n; // the last set written is "Bench"

    double vqk = 0, lib = 0;
    int read = 0;
    for (int r = 0; r < kRounds; ++r) {
        auto t = std::chrono::steady_clock::now();
        bench.ints[0] = r;
        bench.write(kFile);
        CMixed back("Bench");
        read += back.read(kFile);
        vqk += seconds(t);
        t = std::chrono::steady_clock::now();
        libxml2Save(fresh);
        xmlDocPtr check = xmlReadFile(kLibxmlFile, nullptr, 0);
        xmlFreeDoc(check);
        lib += seconds(t);
    }
    xmlFreeDoc(source);
    std::printf("options save + read back, 100 records into a file of 21 sets, %d rounds\n", kRounds);
    std::printf("  vqk     %8.3f ms per round (%d records read)\n", vqk * 1000 / kRounds, read / kRounds);
    std::printf("  libxml2 %8.3f ms per round (parse, replace, save, parse)\n", lib * 1000 / kRounds);
    std::printf("  ratio vqk/libxml2: %.2f (aim: 1.5 or less)\n", vqk / lib);
    return 0;
}
