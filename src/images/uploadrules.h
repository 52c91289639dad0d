#pragma once

#include <QSet>
#include <QString>

#include <optional>

// The rules of the image upload that need no server: remote file names, the restricted
// folder and the address an uploaded file is published at. Remote paths are absolute,
// '/'-separated paths as the server shows them after login ("/" is the login folder).
namespace Vantry::Images {

// A file that reached the server: where it came from, its path there and the address the web
// site publishes it at (publishedAddress).
struct UploadedImage
{
    QString localPath;
    QString remotePath;
    QString address;
};

// The FTP_* switches are texts; anything but "true" (any letter case) is false.
bool uploadSwitch(const QString &text);

// The remote name of a local file: prefix + name + suffix + extension. With strip, only
// ASCII letters, digits, '-', '_' and '.' stay (spaces become '_'); a name left empty
// becomes "image". Slashes never survive, whatever strip says, so a name cannot pick a
// folder of its own.
QString remoteFileName(
    const QString &localPath, const QString &prefix, const QString &suffix, bool strip);

enum class NameCollision
{
    Overwrite,
    Number,
    Refuse
};

// How an existing name is met: FTP_OverWriteFiles wins over numbering.
NameCollision collisionRule(bool overwrite, bool incrementExisting);

// The name to store under in a folder holding existing: the name itself when it is free or
// the rule overwrites, else the first free numbered name ("_001" ... "_999"). Nothing when
// the name is taken and the rule refuses, or every number is taken.
std::optional<QString> freeRemoteName(
    const QString &name, const QSet<QString> &existing, NameCollision rule);

// path as a clean absolute folder ("/", "/a/b"), ".." and "." resolved; relative paths
// start at base. Nothing for a path that climbs above "/", or holds a segment a server may
// read as something else: control characters, "~" (a home folder), names of dots and
// spaces only ("...", ". ."), or a backslash.
std::optional<QString> normalRemoteFolder(const QString &path, const QString &base = {});

// Whether folder (clean) is root (clean) or below it.
bool isInsideFolder(const QString &folder, const QString &root);

// The folder the user may browse: FTP_RistrictedDirectory, "/" when there is none.
// Nothing when the setting itself is not a clean path.
std::optional<QString> uploadRoot(const QString &restrictedDirectory);

// Where browsing starts: FTP_InitialDir when it lies inside root, else root itself.
QString startFolder(const QString &initialDir, const QString &root);

// requested (absolute, or relative to current) when it stays inside root; nothing when it
// would leave it, however it is written.
std::optional<QString> resolveUploadFolder(
    const QString &root, const QString &current, const QString &requested);

// folder + "/" + name.
QString remotePath(const QString &folder, const QString &name);

// The address at which the web server publishes an uploaded file. ImageVCDirectory is the
// address of the upload root (FTP_RistrictedDirectory, or the login folder) on the web
// site: absolute ("http://cdn.example.com/img/"), from the site's root ("/img/") or
// relative ("images/"). The path below the upload root is appended to it, its segments
// percent-encoded, and the result is resolved against BaseURL when BaseURL is set.
// ("http://www.example.com/", "images/", "/www", "/www/2024/a b.jpg") gives
// "http://www.example.com/images/2024/a%20b.jpg".
QString publishedAddress(const QString &baseURL, const QString &imageVCDirectory,
    const QString &uploadRoot, const QString &remoteFilePath);

} // namespace Vantry::Images
