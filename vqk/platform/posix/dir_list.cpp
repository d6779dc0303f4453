#include "vqk/platform/dir_list.h"

#include <algorithm>
#include <cstring>
#include <dirent.h>
#include <fnmatch.h>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace vq {
namespace platform {

bool matchesMask(const char* name, const char* mask) {
    if (!name || !mask)
        return false;
    return fnmatch(mask, name, FNM_CASEFOLD | FNM_NOESCAPE) == 0;
}

bool listFiles(const char* dir, const char* mask, TVectorC<CStr>& names) {
    names.clear();
    std::string folder = dir && *dir ? dir : ".";
    std::string pattern = mask ? mask : "*";
    size_t slash = pattern.find_last_of("/\\");
    if (slash != std::string::npos) {
        folder += '/';
        folder.append(pattern, 0, slash);
        pattern.erase(0, slash + 1);
    }
    DIR* d = opendir(folder.c_str());
    if (!d)
        return false;
    std::vector<std::string> found;
    while (dirent* e = readdir(d)) {
        if (!matchesMask(e->d_name, pattern.c_str()))
            continue;
        std::string full = folder + '/' + e->d_name;
        struct stat st;
        if (stat(full.c_str(), &st) == 0 && S_ISREG(st.st_mode))
            found.push_back(e->d_name);
    }
    closedir(d);
    std::sort(found.begin(), found.end());
    for (const std::string& n : found)
        names.push_back(CStr(n.c_str()));
    return true;
}

} // namespace platform
} // namespace vq
