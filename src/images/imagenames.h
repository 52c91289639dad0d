#pragma once

#include <QString>

// The path and file-name rules of image placement. Qt Core only: no document, no files.
namespace Vantry::Images {

// The folder of an image path with its separator: "file://" dropped (any case), then up
// to the last "/", else the last "\", else empty. The forward slash wins on purpose, so
// "C:\dir/sub\x.gif" gives "C:\dir/".
QString GetFolderFromPath(const QString &path);
// The file name of an image address: after the last "\", else after the last "/", else
// the whole address. The backslash wins here, the reverse of GetFolderFromPath.
QString GetImageFileName(const QString &address);
// "photo.jpg" with 2 is "photo_002.jpg", "photo" with 2 is "photo_002"; the number keeps
// its last three digits.
QString IncrementFileName(const QString &fileName, int counter);
// Numbered names stop here: the last candidate is taken even when it exists.
inline constexpr int maxFileNameCounter = 999;

// The folder with one trailing separator (the platform's when it has none); empty stays
// empty.
QString folderWithSeparator(const QString &folder);

// The src an inserted image's copy gets, chosen so that the design view shows it and the
// saved page points at the copy:
// - with vcDirectory, the image folder's address as the site serves it: vcDirectory, a
//   "/" when it has no trailing separator, and the file name;
// - else, when baseURL is a local folder holding the copy, the copy's path relative to it
//   with "/" (the design view resolves it against the BASE tag);
// - else, with a web baseURL, the copy's file: URL, which the BASE tag cannot redirect;
// - else the copy's absolute path with the platform's separators.
QString insertedImageSource(
    const QString &copyPath, const QString &baseURL, const QString &vcDirectory);

} // namespace Vantry::Images
