#pragma once

#include "commands/insertionrules.h"

#include <QString>
#include <QStringView>

// Text rules of the content exchange between host and editor. None of them needs a
// document or an engine.
namespace Vantry::Control::ContentRules {

// Lives with the selection rules that paste markup; the content rules use it throughout.
using Commands::ReplaceNoCase;

// Removes every carriage-return line-feed pair; a lone line feed or carriage return stays.
QString removeLineBreaks(const QString &text);

// Wraps text in the default-font division (family, colour, size; no spaces, no closing
// semicolon). An empty text becomes a division holding one &nbsp;.
QString wrapInDefaultFont(const QString &text, const QString &fontName, const QString &fontColor,
    const QString &fontSize);

// The BASE tag written for baseUrl: <BASE HREF="baseUrl">.
QString baseTag(const QString &baseUrl);

// Puts the BASE tag for baseUrl in front of every "<HTML>" (any case); an empty text
// becomes the tag alone; a text without "<HTML>" gets none. An empty baseUrl changes
// nothing.
QString insertBase(const QString &text, const QString &baseUrl);

// Removes the piece from the first "<BASE" up to and including the first "<HTML>"
// wherever it occurs (any case), leaving "<HTML>". Unchanged when baseUrl is empty, when
// either marker is missing, or when "<HTML>" comes before "<BASE".
QString removeBase(const QString &text, const QString &baseUrl);

// Removes every stylesheet LINK tag (with a CR LF in front of it where there is one) and
// puts linkMarkup followed by "</HEAD>" in place of every "</head>" (any case).
QString normaliseStyleSheetLinks(const QString &text, const QString &linkMarkup);

// Deletes every occurrence of the root path, first with its backslashes doubled, then as
// given (both ignoring case), so that paths below it become relative.
QString removeRootPath(const QString &text, const QString &rootPath);

} // namespace Vantry::Control::ContentRules
