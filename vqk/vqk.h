// vqk/vqk.h
//
// The umbrella header: every public header of the library. Applications may include
// this one header, or the single headers of the pieces they use.
#pragma once

#include "vqk/config.h"
#include "vqk/text/codepage.h"
#include "vqk/text/convert.h"
#include "vqk/text/format.h"
#include "vqk/text/str.h"
#include "vqk/text/string_table.h"
#include "vqk/text/utf8.h"
#include "vqk/text/vector.h"
