#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace Vantry {
class UserPrompts;
} // namespace Vantry

namespace Vantry::Platform {
using Vantry::UserPrompts;
} // namespace Vantry::Platform

namespace Vantry::Control {

// Error numbers of document loading. Negative numbers are the platform's failure codes;
// positive ones are the editor's own, from reading files itself.
namespace LoadError {
constexpr qint32 code(quint32 value)
{
    return static_cast<qint32>(value);
}
constexpr qint32 None = 0;
constexpr qint32 Unexpected = code(0x8000FFFF);
constexpr qint32 FileNotFound = code(0x80070002);
constexpr qint32 PathNotFound = code(0x80070003);
constexpr qint32 Frameset = code(0x80100001);
constexpr qint32 ServerScript = code(0x80100002);
constexpr qint32 InvalidArgument = 5;
constexpr qint32 AccessDenied = 70;
// Platform codes without a message of their own.
constexpr qint32 PlatformAccessDenied = code(0x80070005);
constexpr qint32 PlatformInvalidArgument = code(0x80070057);
constexpr qint32 ResourceNotFound = code(0x800C0005);
constexpr qint32 ConnectionTimeout = code(0x800C000B);
constexpr qint32 UnknownProtocol = code(0x800C000D);
constexpr qint32 Cancelled = code(0x800704C7);
// The editor's own: a file with binary content (an image) is not opened as text.
constexpr qint32 NotText = code(0x80100003);
} // namespace LoadError

// The raw bytes of a document and where they came from.
struct DocumentBytes
{
    QByteArray bytes;
    // The charset the transport named (an HTTP Content-Type), if any.
    QByteArray charset;
    // Where the bytes came from, after redirects, as a URL.
    QString address;
    // A LoadError number; None when the bytes were read.
    qint32 error = LoadError::None;
    // What went wrong, in words, for the log.
    QString detail;

    bool ok() const { return error == LoadError::None; }
};

// Reads a whole local file. A file that is missing, in a missing folder, a folder itself
// or unreadable gets the matching editor error number.
[[nodiscard]] DocumentBytes readLocalFile(const QString &path);

// How long an address may take to answer before its load fails.
constexpr std::chrono::seconds fetchTimeout{30};
// How long a fetch runs before the user is shown a progress with Cancel.
constexpr std::chrono::milliseconds fetchProgressDelay{400};

// Reads a document by address: file: URLs and plain paths from disk, http and https over
// the network. A fetch waits at most timeout; when it takes longer than
// fetchProgressDelay and prompts are given, it shows a progress whose Cancel ends it with
// LoadError::Cancelled. Every failure has a platform (negative) error number, as a URL
// load reports it.
[[nodiscard]] DocumentBytes readAddress(const QString &address,
    std::chrono::milliseconds timeout = fetchTimeout, Platform::UserPrompts *prompts = nullptr);

} // namespace Vantry::Control
