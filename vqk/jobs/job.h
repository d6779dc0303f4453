// vqk/jobs/job.h (being written)
#pragma once
