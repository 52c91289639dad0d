#pragma once

#include <QString>

namespace Vantry::Control {

// The folder the source editor's member-list and language files live under.
//
// A non-empty configured path is used with one trailing separator dropped, and is created
// when it does not exist yet. An empty one means the shared data folder
// "<generic data>/Vantry Technologies/HTML Editor Control": the first such folder found
// in the data locations (user's first, then the system's), else the user's writable one.
// That default is never created: an editor that was not configured writes nothing.
QString applicationDirectory(const QString &configuredPath);

} // namespace Vantry::Control
