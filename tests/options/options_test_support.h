// Helpers of the option tests: a scratch folder per test, a record's "opt" element as
// bytes, and a set over one variable of every kind.
#pragma once

#include "support/test_files.h"

#include "vqk/vqk.h"
#include "vqk/platform/xml_document.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace opt_test {

inline std::string scratchFolder(const char* name) { return test_files::freshFolder(std::string("options/") + name); }

using test_files::readFile;
using test_files::writeFile;

// The bytes write_base gives for `rec`, without the line end.
inline std::string optBytes(const vq::SOpt& rec) {
    FILE* f = std::tmpfile();
    {
        vq::CXmlOut out(f, nullptr);
        rec.write_base(out);
        out.close();
    }
    std::string s = test_files::readAndClose(f);
    while (!s.empty() && (s.back() == '\n' || s.back() == '\r'))
        s.pop_back();
    return s;
}

// Whether the document service (libxml2 on POSIX) accepts the file as well-formed.
inline bool wellFormed(const std::string& path) {
    return vq::platform::CXmlDocument::create()->load(path.c_str());
}

// A set with one variable of every kind.
class CAllKinds : public vq::COptionsSet {
public:
    explicit CAllKinds(const char* name = "All") : COptionsSet(name) {}
    bool b = false;
    int i1 = 0, e = 0;
    float f1 = 0;
    double d1 = 0;
    vq::T2<int> i2{0, 0};
    vq::T3<int> i3{0, 0, 0};
    vq::T2<double> d2{0, 0};
    vq::T3<double> d3{0, 0, 0};
    vq::CColor color;
    vq::CFont font;
    vq::CStringSt text;
    unsigned bits = 0;
    vq::TVector<int> vi;
    vq::TVector<vq::T2<int>> vi2;
    vq::TVector<double> vd;
    vq::TVector<vq::T2<double>> vd2;
    vq::TVector<vq::T3<double>> vd3;
    vq::TVector<bool> vb;
    vq::TVector<vq::T2<bool>> vb2;
    vq::TVectorC<vq::CStr> vs;

    // Values that differ from the defaults in every field.
    void fill() {
        b = true, i1 = -7, e = 2, f1 = 0.25f, d1 = 0.125; // "%.8g" keeps these exact
        i2 = {1, -2}, i3 = {3, 4, -5}, d2 = {0.1, 7}, d3 = {1e-9, -2.5, 1e300};
        color = vq::CColor{1, 128, 255};
        font.parse("Courier New 9 bold italic");
        text = vq::CStringSt("a \"quoted\" <text> & more");
        bits = 0x5;
        vi.push_back(1), vi.push_back(-2);
        vi2.push_back({3, 4});
        vd.push_back(0.1), vd.push_back(-1e-300);
        vd2.push_back({0.5, 1.0 / 7});
        vd3.push_back({1, 2, 3});
        vb.push_back(true), vb.push_back(false);
        vb2.push_back({false, true});
        vs.emplace_back("line one\nline two\r\nthree");
        vs.emplace_back("<markup> & \"quotes\" 'apos'");
        vs.emplace_back("");
    }

protected:
    void addOptions() override {
        static const char* const labels[] = {"zero", "one", "two"};
        addOpt(b, "b", vq::SStrId{});
        addOpt(i1, "i1", vq::SStrId{});
        addOptEnum(e, "e", vq::SStrId{}, labels, 3);
        addOpt(f1, "f1", vq::SStrId{}, vq::SOpt::eAngle);
        addOpt(d1, "d1", vq::SStrId{}, vq::SOpt::eLength);
        addOpt(i2, "i2", vq::SStrId{});
        addOpt(i3, "i3", vq::SStrId{});
        addOpt(d2, "d2", vq::SStrId{});
        addOpt(d3, "d3", vq::SStrId{});
        addOpt(color, "color", vq::SStrId{});
        addOpt(font, "font", vq::SStrId{});
        addOpt(text, "text", vq::SStrId{});
        addOptEx(new vq::SOptBitset("bits", bits, 4));
        addOpt(vi, "vi", vq::SStrId{});
        addOpt(vi2, "vi2", vq::SStrId{});
        addOpt(vd, "vd", vq::SStrId{});
        addOpt(vd2, "vd2", vq::SStrId{});
        addOpt(vd3, "vd3", vq::SStrId{});
        addOpt(vb, "vb", vq::SStrId{});
        addOpt(vb2, "vb2", vq::SStrId{});
        addOpt(vs, "vs", vq::SStrId{});
    }
};

} // namespace opt_test
