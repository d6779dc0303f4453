// vqk/jobs/gen_id.h
//
// CGenID hands out 0, 1, 2, ... in order, one per id() call. For one thread.
#pragma once

namespace vq {

class CGenID {
public:
    int id() { return m_next++; }

private:
    int m_next = 0;
};

} // namespace vq
