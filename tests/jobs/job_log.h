// A job_log document parsed by the referee parser, queried with XPath, for the job host
// tests.
#pragma once

#include "support/xml_referee.h"

using CJobLog = CXmlReferee;

// Parses `text` into `log`, failing the test when it is not well-formed.
#define PARSED_LOG(log, text)                                                                      \
    CJobLog log(text);                                                                             \
    ASSERT_TRUE(log.wellFormed()) << (text)
