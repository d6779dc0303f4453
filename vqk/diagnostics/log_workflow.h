// vqk/diagnostics/log_workflow.h (being written)
#pragma once
