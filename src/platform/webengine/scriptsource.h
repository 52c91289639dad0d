#pragma once

#include <QString>

namespace Vantry::Platform {

// The script as the page gets it: without lines that hold only a comment, without
// indentation and without empty lines, so that every document parses less of it. Line
// breaks stay, and with them the line of every statement. A script with a code line that
// a template literal or a line continuation could carry on is returned as it is, as
// those keep their blanks.
QString compactScript(const QString &source);

} // namespace Vantry::Platform
