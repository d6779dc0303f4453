#include "vqk/files/file_path.h"

#include <cstdlib>
#include <utility>

namespace vq {
namespace {

using platform::kMaxDir;
using platform::kMaxDrive;
using platform::kMaxExt;
using platform::kMaxFname;

// The four split buffers at the sizes the splitter is defined with; components that
// do not fit them make the split fail.
template <class T> struct SSplitParts {
    T drive[kMaxDrive];
    T folder[kMaxDir];
    T file[kMaxFname];
    T ext[kMaxExt];

    int split(const T* path) {
        return platform::splitpath_s(path, drive, kMaxDrive, folder, kMaxDir, file, kMaxFname, ext,
                                     kMaxExt);
    }
};

template <class T>
int splitInto(const T* path, CTStr<T>* drive, CTStr<T>* folder, CTStr<T>* file, CTStr<T>* ext) {
    SSplitParts<T> s;
    int rc = platform::splitpath_s(path, drive ? s.drive : nullptr, drive ? kMaxDrive : 0,
                                   folder ? s.folder : nullptr, folder ? kMaxDir : 0,
                                   file ? s.file : nullptr, file ? kMaxFname : 0,
                                   ext ? s.ext : nullptr, ext ? kMaxExt : 0);
    if (rc)
        return rc;
    if (drive)
        *drive = s.drive;
    if (folder)
        *folder = s.folder;
    if (file)
        *file = s.file;
    if (ext)
        *ext = s.ext;
    return 0;
}

template <class T> int partRoom(const T* part, int extra) {
    int n = textLength(part);
    return n ? n + extra : 0;
}

template <class T>
int joinInto(CTStr<T>& out, const T* drive, const T* folder, const T* file, const T* ext,
             platform::EPathStyle style) {
    // The room the joiner can need: a colon after the drive letter, a separator after
    // the folder, a point before the extension, and the terminator.
    int size = partRoom(drive, 1) + partRoom(folder, 1) + partRoom(file, 0) + partRoom(ext, 1) + 1;
    CTStr<T> joined;
    T* buf = joined.getBuffer(size);
    int rc = platform::makepath_s(buf, size_t(size), drive, folder, file, ext, style);
    if (rc)
        return rc;
    joined.getBuffer(textLength(buf) + 1);
    out = std::move(joined);
    return 0;
}

template <class T> bool hasExtImpl(const T* path, const T* ext) {
    CTStr<T> own;
    if (splitInto<T>(path, nullptr, nullptr, nullptr, &own))
        return false;
    return own == ext;
}

template <class T> int replaceExtImpl(CTStr<T>& path, const T* ext) {
    SSplitParts<T> s;
    int rc = s.split(path.str());
    if (rc)
        return rc;
    return joinInto(path, s.drive, s.folder, s.file, ext, platform::nativePathStyle());
}

template <class T> int replacePathImpl(CTStr<T>& path, const T* folder, platform::EPathStyle style) {
    SSplitParts<T> target;
    int rc = target.split(folder);
    if (rc)
        return rc;
    SSplitParts<T> own;
    rc = own.split(path.str());
    if (rc)
        return rc;
    // A last component without an extension names a folder: it joins the folder part,
    // and the joiner closes it with a separator.
    CTStr<T> where(target.folder);
    if (target.ext[0] == 0)
        where += target.file;
    return joinInto(path, target.drive, where.str(), own.file, own.ext, style);
}

template <class T> int folderOfImpl(CTStr<T>& out, const T* path) {
    SSplitParts<T> s;
    int rc = platform::splitpath_s(path, s.drive, kMaxDrive, s.folder, kMaxDir, nullptr, 0,
                                   nullptr, 0);
    if (rc)
        return rc;
    CTStr<T> joined(s.drive);
    joined += s.folder;
    out = std::move(joined);
    return 0;
}

template <class T> T* fullpathImpl(T* buf, const T* path, int size) {
    return platform::fullpath(buf, path, size_t(size < 0 ? 0 : size));
}

template <class T> bool fullpathImpl(CTStr<T>& out, const T* path) {
    T* p = platform::fullpath(static_cast<T*>(nullptr), path, 0);
    if (!p)
        return false;
    out = p;
    std::free(p);
    return true;
}

bool isAcceptedSetMask(int mask) {
    switch (mask) {
    case ePathDrive:
    case ePathFolder:
    case ePathDriveFolder:
    case ePathFile:
    case ePathExt:
    case ePathFileExt:
    case ePathAll:
        return true;
    default:
        return false;
    }
}

} // namespace

template <class T> TFilePath<T>::TFilePath(const T* path) { reset(path); }
template <class T> TFilePath<T>::TFilePath(const CTStr<T>& path) { reset(path.str()); }

template <class T> bool TFilePath<T>::reset(const T* path) {
    if (!path) {
        m_drive.reset();
        m_folder.reset();
        m_file.reset();
        m_ext.reset();
        return true;
    }
    return set(path, ePathAll);
}

template <class T> bool TFilePath<T>::get(CTStr<T>& out, EPathComponent mask) const {
    switch (int(mask)) {
    case ePathDrive:
        out = m_drive;
        return true;
    case ePathFolder:
        out = m_folder;
        return true;
    case ePathFile:
        out = m_file;
        return true;
    case ePathExt:
        out = m_ext;
        return true;
    case ePathDriveFolder:
    case ePathDriveFolderFile:
    case ePathFileExt:
    case ePathAll:
        return joinInto(out, (mask & ePathDrive) ? m_drive.str() : nullptr,
                        (mask & ePathFolder) ? m_folder.str() : nullptr,
                        (mask & ePathFile) ? m_file.str() : nullptr,
                        (mask & ePathExt) ? m_ext.str() : nullptr,
                        platform::nativePathStyle()) == 0;
    default:
        out.reset();
        return false;
    }
}

template <class T> bool TFilePath<T>::set(const T* text, EPathComponent mask) {
    if (!isAcceptedSetMask(mask))
        return false;
    SSplitParts<T> s;
    if (s.split(text))
        return false;
    if (mask & ePathDrive)
        m_drive = s.drive;
    if (mask & ePathFolder)
        m_folder = s.folder;
    if (mask & ePathFile)
        m_file = s.file;
    if (mask & ePathExt)
        m_ext = s.ext;
    return true;
}

template <class T> bool TFilePath<T>::setExt(const T* text) { return set(text, ePathExt); }

template class TFilePath<char>;
template class TFilePath<wchar_t>;

int splitpath(const char* path, CTStr<char>* drive, CTStr<char>* folder, CTStr<char>* file,
              CTStr<char>* ext) {
    return splitInto(path, drive, folder, file, ext);
}
int splitpath(const wchar_t* path, CTStr<wchar_t>* drive, CTStr<wchar_t>* folder,
              CTStr<wchar_t>* file, CTStr<wchar_t>* ext) {
    return splitInto(path, drive, folder, file, ext);
}

int makepath(CTStr<char>& out, const char* drive, const char* folder, const char* file,
             const char* ext) {
    return joinInto(out, drive, folder, file, ext, platform::nativePathStyle());
}
int makepath(CTStr<wchar_t>& out, const wchar_t* drive, const wchar_t* folder, const wchar_t* file,
             const wchar_t* ext) {
    return joinInto(out, drive, folder, file, ext, platform::nativePathStyle());
}
int makepath(CTStr<char>& out, const char* drive, const char* folder, const char* file,
             const char* ext, platform::EPathStyle style) {
    return joinInto(out, drive, folder, file, ext, style);
}
int makepath(CTStr<wchar_t>& out, const wchar_t* drive, const wchar_t* folder, const wchar_t* file,
             const wchar_t* ext, platform::EPathStyle style) {
    return joinInto(out, drive, folder, file, ext, style);
}

int _splitpath(const char* path, char* drive, size_t driveSize, char* folder, size_t folderSize,
               char* file, size_t fileSize, char* ext, size_t extSize) {
    return platform::splitpath_s(path, drive, driveSize, folder, folderSize, file, fileSize, ext,
                                 extSize);
}
int _splitpath(const wchar_t* path, wchar_t* drive, size_t driveSize, wchar_t* folder,
               size_t folderSize, wchar_t* file, size_t fileSize, wchar_t* ext, size_t extSize) {
    return platform::splitpath_s(path, drive, driveSize, folder, folderSize, file, fileSize, ext,
                                 extSize);
}
int _makepath(char* path, size_t size, const char* drive, const char* folder, const char* file,
              const char* ext) {
    return platform::makepath_s(path, size, drive, folder, file, ext);
}
int _makepath(wchar_t* path, size_t size, const wchar_t* drive, const wchar_t* folder,
              const wchar_t* file, const wchar_t* ext) {
    return platform::makepath_s(path, size, drive, folder, file, ext);
}

int getFolder(CTStr<char>& out, const char* path) { return folderOfImpl(out, path); }
int getFolder(CTStr<wchar_t>& out, const wchar_t* path) { return folderOfImpl(out, path); }

const char* pathDelimiter() {
    static const char text[2] = {platform::pathSeparator(platform::nativePathStyle()), 0};
    return text;
}
const wchar_t* pathDelimiterW() {
    static const wchar_t text[2] = {wchar_t(platform::pathSeparator(platform::nativePathStyle())), 0};
    return text;
}

bool hasFileExt(const char* path, const char* ext) { return hasExtImpl(path, ext); }
bool hasFileExt(const wchar_t* path, const wchar_t* ext) { return hasExtImpl(path, ext); }

int replaceExt(CTStr<wchar_t>& path, const wchar_t* ext) { return replaceExtImpl(path, ext); }
int replaceExt(CTStr<char>& path, const char* ext) { return replaceExtImpl(path, ext); }

int replacePath(CTStr<wchar_t>& path, const wchar_t* folder) {
    return replacePathImpl(path, folder, platform::nativePathStyle());
}
int replacePath(CTStr<char>& path, const char* folder) {
    return replacePathImpl(path, folder, platform::nativePathStyle());
}
int replacePath(CTStr<wchar_t>& path, const wchar_t* folder, platform::EPathStyle style) {
    return replacePathImpl(path, folder, style);
}
int replacePath(CTStr<char>& path, const char* folder, platform::EPathStyle style) {
    return replacePathImpl(path, folder, style);
}

char* fullpath(char* buf, const char* path, int size) { return fullpathImpl(buf, path, size); }
wchar_t* fullpath(wchar_t* buf, const wchar_t* path, int size) {
    return fullpathImpl(buf, path, size);
}
bool fullpath(CTStr<char>& out, const char* path) { return fullpathImpl(out, path); }
bool fullpath(CTStr<wchar_t>& out, const wchar_t* path) { return fullpathImpl(out, path); }

} // namespace vq
