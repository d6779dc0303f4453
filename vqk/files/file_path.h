// vqk/files/file_path.h (being written)
#pragma once
