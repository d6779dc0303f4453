// Random options files through an option set of every kind (read, then merged back
// with write) and through the document view. A set keeps its defaults or takes values;
// a damaged file is refused; anything else (a crash, a sanitizer report, a hang, a
// leak) is a fault.
#include "vqk/platform/environment.h"
#include "vqk/vqk.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

namespace {

class CSet : public vq::COptionsSet {
public:
    CSet() : COptionsSet("S") {}
    bool b = false;
    int i = 0, e = 0;
    double d = 0;
    vq::T2<double> d2{0, 0};
    vq::T3<int> i3{0, 0, 0};
    vq::CColor c;
    vq::CFont f;
    vq::CStringSt s;
    unsigned bits = 0;
    vq::TVector<vq::T3<double>> v3;
    vq::TVector<vq::T2<bool>> vb;
    vq::TVectorC<vq::CStr> vs;

protected:
    void addOptions() override {
        static const int table[] = {1, 2, 4};
        static const char* const labels[] = {"a", "b", "c"};
        addOpt(b, "b", {});
        addOpt(i, "i", {}, table, 3);
        addOptEnum(e, "e", {}, labels, 3, false, 0, nullptr, 3);
        addOpt(d, "d", {}, vq::SOpt::eArea);
        addOpt(d2, "d2", {});
        addOpt(i3, "i3", {});
        addOpt(c, "c", {});
        addOpt(f, "f", {});
        addOpt(s, "s", {});
        addOptEx(new vq::SOptBitset("bits", bits, 8));
        addOpt(v3, "v3", {});
        addOpt(vb, "vb", {});
        addOpt(vs, "vs", {});
    }
};

std::string scratch(const char* name) {
    return std::string(vq::platform::tempFolder()) + "fuzz_options_" + name + ".xml";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string path = scratch("in");
    if (FILE* f = std::fopen(path.c_str(), "wb")) {
        std::fwrite(data, 1, size, f);
        std::fclose(f);
    }
    CSet set;
    if (set.read(path.c_str()) >= 0) {
        CSet copy;
        copy = set;
        copy.write(path.c_str());
    }
    vq::COptions doc(path.c_str());
    doc.opt("i", 0);
    doc.opt("b", false);
    doc.opt("d", 0.0);
    for (const char* n = doc.optFirst(""); n; n = doc.optNext())
        doc.setOpt(n, n);
    vq::COptions other(path.c_str());
    doc.replaceGroup(other, "S");
    doc.save(scratch("out").c_str());
    return 0;
}
