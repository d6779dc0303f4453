// vqk/files/file_path.h
//
// File paths held as their four components (drive, folder, file name, extension) and
// the free functions that split and join paths into strings. Splitting follows the same
// rules on every system: a drive is a leading letter and colon ("C:"), the folder
// runs to the last slash or backslash (both kept), the extension starts at the last
// point of the last component. Joining writes this system's separator ("/" here, "\"
// on Windows) only where a folder lacks a trailing one.
//
//   vq::CStr out;
//   vq::TFilePath<char> p("C:\\a\\b\\name.tar.gz");   // "C:", "\a\b\", "name.tar", ".gz"
//   p.setExt(".xml");
//   p.get(out, vq::ePathFileExt);                     // "name.tar.xml"
//   vq::makepath(out, nullptr, "out", "log", "xml");  // "out/log.xml"
//
// Failure: a component longer than its split buffer (drive 2 characters, the others
// 255) or a joined path that does not fit makes the operation fail. Free functions
// return the error code (0, EINVAL or ERANGE), TFilePath members return false; in both
// cases the outputs are left as they were.
#pragma once

#include "vqk/config.h"
#include "vqk/platform/path.h"
#include "vqk/text/str.h"

#include <cstddef>

namespace vq {

// Selects components of a path; combinations are sums.
enum EPathComponent {
    ePathDrive = 1,
    ePathFolder = 2,
    ePathFile = 4,
    ePathExt = 8,
    ePathDriveFolder = 3,
    ePathDriveFolderFile = 7,
    ePathFileExt = 12,
    ePathAll = 15,
};

template <class T> class VQK_API TFilePath {
public:
    TFilePath() = default;
    // Splits path; a null path, or one that cannot be split, leaves all four empty.
    TFilePath(const T* path);
    TFilePath(const CTStr<T>& path);
    TFilePath(const TFilePath& o) = default;
    TFilePath& operator=(const TFilePath& o) = default;

    // Splits path into the four components; null empties them. A failed split returns
    // false and keeps the previous components.
    bool reset(const T* path);

    const T* drive() const { return m_drive.str(); }
    const T* folder() const { return m_folder.str(); }
    const T* file() const { return m_file.str(); }
    const T* ext() const { return m_ext.str(); }

    // Masks 1, 2, 4, 8 copy one component; 3, 7, 12 and 15 join the selected ones.
    // Any other mask empties out and returns false.
    bool get(CTStr<T>& out, EPathComponent mask) const;
    // Splits text and takes the selected components from it. Accepted masks are 1, 2,
    // 3, 4, 8, 12 and 15 (7 is refused although get accepts it); a refused mask or a
    // failed split returns false and changes nothing.
    bool set(const T* text, EPathComponent mask);
    // The extension of text split as a path becomes ext: "xml" gives none, ".xml" and
    // "a.xml" give ".xml".
    bool setExt(const T* text);

    void getDrive(CTStr<T>& out) const { out = m_drive; }
    void getFolder(CTStr<T>& out) const { out = m_folder; }
    void getFile(CTStr<T>& out) const { out = m_file; }
    void getExt(CTStr<T>& out) const { out = m_ext; }
    bool getDriveFolder(CTStr<T>& out) const { return get(out, ePathDriveFolder); }
    bool getDriveFolderFile(CTStr<T>& out) const { return get(out, ePathDriveFolderFile); }
    bool getFileExt(CTStr<T>& out) const { return get(out, ePathFileExt); }
    bool getFullPath(CTStr<T>& out) const { return get(out, ePathAll); }

private:
    CTStr<T> m_drive;
    CTStr<T> m_folder;
    CTStr<T> m_file;
    CTStr<T> m_ext;
};

extern template class TFilePath<char>;
extern template class TFilePath<wchar_t>;

// Splits path into the given strings; a null pointer skips that component. Returns 0,
// or EINVAL (null path) or ERANGE (a component too long) with no output touched.
VQK_API int splitpath(const char* path, CTStr<char>* drive, CTStr<char>* folder,
                      CTStr<char>* file, CTStr<char>* ext);
VQK_API int splitpath(const wchar_t* path, CTStr<wchar_t>* drive, CTStr<wchar_t>* folder,
                      CTStr<wchar_t>* file, CTStr<wchar_t>* ext);

// Joins the parts into out (null parts are skipped): drive letter and colon, folder with
// a separator added when it has none at its end, file, extension with a point added when
// it has none at its start. Returns 0; on failure the error code with out unchanged.
// The style overloads write the given separator instead of this system's.
VQK_API int makepath(CTStr<char>& out, const char* drive, const char* folder, const char* file,
                     const char* ext);
VQK_API int makepath(CTStr<wchar_t>& out, const wchar_t* drive, const wchar_t* folder,
                     const wchar_t* file, const wchar_t* ext);
VQK_API int makepath(CTStr<char>& out, const char* drive, const char* folder, const char* file,
                     const char* ext, platform::EPathStyle style);
VQK_API int makepath(CTStr<wchar_t>& out, const wchar_t* drive, const wchar_t* folder,
                     const wchar_t* file, const wchar_t* ext, platform::EPathStyle style);

// The splitter and joiner on caller buffers (sizes in elements, terminator included);
// on failure the given buffers are emptied.
VQK_API int _splitpath(const char* path, char* drive, size_t driveSize, char* folder,
                       size_t folderSize, char* file, size_t fileSize, char* ext, size_t extSize);
VQK_API int _splitpath(const wchar_t* path, wchar_t* drive, size_t driveSize, wchar_t* folder,
                       size_t folderSize, wchar_t* file, size_t fileSize, wchar_t* ext,
                       size_t extSize);
VQK_API int _makepath(char* path, size_t size, const char* drive, const char* folder,
                      const char* file, const char* ext);
VQK_API int _makepath(wchar_t* path, size_t size, const wchar_t* drive, const wchar_t* folder,
                      const wchar_t* file, const wchar_t* ext);

// out = drive and folder of path ("C:\a\" of "C:\a\b.txt"); out untouched on error.
VQK_API int getFolder(CTStr<char>& out, const char* path);
VQK_API int getFolder(CTStr<wchar_t>& out, const wchar_t* path);

// This system's separator as text: "/" here, "\" on Windows.
VQK_API const char* pathDelimiter();
VQK_API const wchar_t* pathDelimiterW();

// True when the extension of path, point included, equals ext exactly (case matters):
// hasFileExt("x.xml", ".xml") is true, hasFileExt("x.XML", ".xml") and
// hasFileExt("x.xml", "xml") are false. A path that cannot be split has no extension.
VQK_API bool hasFileExt(const char* path, const char* ext);
VQK_API bool hasFileExt(const wchar_t* path, const wchar_t* ext);

// Replaces the extension of path by ext (a point is added when ext has none; null or
// empty removes it). Returns the error code; path is unchanged on failure.
VQK_API int replaceExt(CTStr<wchar_t>& path, const wchar_t* ext);
VQK_API int replaceExt(CTStr<char>& path, const char* ext);

// Moves the file of path into folder: path keeps its file name and extension and takes
// the drive and folder of the folder text. When the last component of the folder text
// has no extension it is part of the folder ("C:\out" means "C:\out\"); when it has one
// it is a file name and is dropped ("C:\out\x.txt" means "C:\out\"). Returns the error
// code; path is unchanged on failure.
VQK_API int replacePath(CTStr<wchar_t>& path, const wchar_t* folder);
VQK_API int replacePath(CTStr<char>& path, const char* folder);
VQK_API int replacePath(CTStr<wchar_t>& path, const wchar_t* folder, platform::EPathStyle style);
VQK_API int replacePath(CTStr<char>& path, const char* folder, platform::EPathStyle style);

// The absolute form of path written into buf (size elements, terminator included),
// resolved against the current folder; the file need not exist. Returns buf, or null
// when the result does not fit (buf is then left as it was). A null buf asks for a
// buffer allocated with malloc, which the caller frees.
VQK_API char* fullpath(char* buf, const char* path, int size);
VQK_API wchar_t* fullpath(wchar_t* buf, const wchar_t* path, int size);
// The same into a string; false with out unchanged when the current folder is unknown.
VQK_API bool fullpath(CTStr<char>& out, const char* path);
VQK_API bool fullpath(CTStr<wchar_t>& out, const wchar_t* path);

} // namespace vq
