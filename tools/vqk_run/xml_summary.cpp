#include "run_tool.h"

#include <chrono>
#include <cstdarg>
#include <stdexcept>

namespace vqk_run {

namespace {

void readShape(vq::CXmlIn& in, SXmlShape& shape) {
    in.readHeader();
    int depth = 0;
    do {
        in.read(nullptr);
        if (in.isTagEnd()) {
            --depth;
            continue;
        }
        ++shape.elements[in.tagStr()];
        ++shape.elementCount;
        shape.attributeCount += in.nAttr();
        if (depth + 1 > shape.maxDepth)
            shape.maxDepth = depth + 1;
        if (in.isTagStart())
            ++depth;
    } while (depth > 0);
}

} // namespace

SXmlShape readXmlShape(const char* path) {
    const auto start = std::chrono::steady_clock::now();
    SXmlShape shape;
    vq::CXmlIn in;
    try {
        if (!in.open(path))
            throw vq::xmlInErrNotOpen;
        readShape(in, shape);
    } catch (const char* error) {
        vq::SXmlPos at;
        vq::CStr msg;
        if (in.errorPos(at))
            msg.cformat("%s:%d:%d: %s", path, at.line, at.column, error);
        else
            msg.cformat("%s: %s", path, error);
        throw std::runtime_error(msg.str());
    }
    shape.seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return shape;
}

void writeXmlShape(const char* path, const SXmlShape& shape) {
    vq::CXmlOutElem summary(vq::xout, "xml_summary");
    vq::xout.attrStr("file", path);
    vq::xout.attrInt("elements", shape.elementCount);
    vq::xout.attrInt("attributes", shape.attributeCount);
    vq::xout.attrInt("maxDepth", shape.maxDepth);
    vq::xout.attrD1("seconds", shape.seconds);
    for (const auto& e : shape.elements) {
        vq::CXmlOutElem elem(vq::xout, "element");
        vq::xout.attrStr("name", e.first.c_str());
        vq::xout.attrInt("count", e.second);
    }
}

} // namespace vqk_run

namespace vqk_run {

void reportf(FReport report, vq::SJobStat& stat, int line, const char* format, ...) {
    va_list args;
    va_start(args, format);
    vq::CStr msg;
    msg.vcformat(format, args);
    va_end(args);
    vq::CStr escaped;
    vq::escapeXmlStr(escaped, msg.str());
    report(stat, escaped.str(), kSource, line);
}

} // namespace vqk_run
