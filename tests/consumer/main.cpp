// Builds against the library through the umbrella header only, as an application does.
#include "vqk/vqk.h"

#include <cstdio>

int main() {
    vq::CStr s("vqk");
    s << vq::CFormat(7, 3);
    vq::CStr p21;
    vq::utf8top21(p21, "A\xC3\xA9" "B");
    if (s != "vqk007" || p21 != "A\\X2\\00E9\\X0\\B") {
        std::printf("unexpected: %s %s\n", s.str(), p21.str());
        return 1;
    }
    std::printf("%s %s\n", s.str(), p21.str());
    return 0;
}
