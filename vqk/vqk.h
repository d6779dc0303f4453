// vqk/vqk.h
//
// The umbrella header: every public header of the library. Applications may include
// this one header, or the single headers of the pieces they use.
#pragma once

#include "vqk/config.h"

// -- text
#include "vqk/text/codepage.h"
#include "vqk/text/color.h"
#include "vqk/text/convert.h"
#include "vqk/text/fixed_text.h"
#include "vqk/text/font.h"
#include "vqk/text/format.h"
#include "vqk/text/runtime_critical.h"
#include "vqk/text/str.h"
#include "vqk/text/str_format.h"
#include "vqk/text/string_csv.h"
#include "vqk/text/string_list.h"
#include "vqk/text/string_table.h"
#include "vqk/text/text_utils.h"
#include "vqk/text/tuples.h"
#include "vqk/text/utf8.h"
#include "vqk/text/vector.h"
#include "vqk/text/vector_c.h"

// -- options: data units
#include "vqk/options/du_array.h"
#include "vqk/options/du_base.h"
#include "vqk/options/du_bool.h"
#include "vqk/options/du_enum.h"
#include "vqk/options/du_list.h"
#include "vqk/options/du_look.h"
#include "vqk/options/du_number.h"
#include "vqk/options/du_string_id.h"
#include "vqk/options/du_text.h"
#include "vqk/options/du_time.h"
#include "vqk/options/du_triple.h"

// -- files: paths
#include "vqk/files/file_path.h"

// -- files and xml: output
#include "vqk/files/out_file.h"
#include "vqk/xml/xml_escape.h"
#include "vqk/xml/xml_out.h"
#include "vqk/xml/xml_out_elem.h"

// -- xml: tokenizer
#include "vqk/xml/xin.h"

// -- xml: reader
#include "vqk/xml/xml_in.h"

// -- diagnostics
#include "vqk/diagnostics/assert.h"
#include "vqk/diagnostics/err.h"
#include "vqk/diagnostics/log_workflow.h"

// -- jobs
#include "vqk/jobs/global_props.h"
#include "vqk/jobs/job.h"
#include "vqk/jobs/job_host.h"
#include "vqk/jobs/job_info.h"
#include "vqk/jobs/job_stat.h"
#include "vqk/jobs/process.h"
#include "vqk/jobs/regression_test.h"
#include "vqk/jobs/vq_exit.h"
#include "vqk/options/opt.h"
#include "vqk/options/opt_array.h"
#include "vqk/options/opt_kinds.h"
#include "vqk/options/opt_reporting.h"
#include "vqk/options/options_doc.h"
#include "vqk/options/options_file.h"
#include "vqk/options/options_set.h"

// -- spreadsheet
#include "vqk/spreadsheet/excel_cell.h"
#include "vqk/spreadsheet/excel_doc.h"
#include "vqk/spreadsheet/excel_row.h"
#include "vqk/spreadsheet/excel_sheet.h"
#include "vqk/spreadsheet/excel_style.h"

// -- jobs: progress, threads, locks, timers, events
#include "vqk/jobs/event.h"
#include "vqk/jobs/gen_id.h"
#include "vqk/jobs/progress.h"
#include "vqk/jobs/progress_console.h"
#include "vqk/jobs/progress_host.h"
#include "vqk/jobs/progress_parallel.h"
#include "vqk/jobs/spin_lock.h"
#include "vqk/jobs/thread.h"
#include "vqk/jobs/timer.h"
#include "vqk/jobs/timer_xml.h"
