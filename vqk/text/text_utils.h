// vqk/text/text_utils.h
//
// The plain-string utilities in one include: number texts, scanning and printf pieces,
// substring search and splitting, cleaners, date stamps and the bounded C string
// functions. Each piece has its own header for code that needs only one.
//
//   #include "vqk/text/text_utils.h"
//   char buf[32];
//   vq::sprintDec(buf, sizeof buf, 2.50, 3);   // "2.5"
#pragma once

#include "vqk/text/bounded.h"
#include "vqk/text/clean.h"
#include "vqk/text/date_text.h"
#include "vqk/text/number_text.h"
#include "vqk/text/scan.h"
#include "vqk/text/substring.h"
