// vqk/files/out_file.h (being written)
#pragma once
