#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// Text rules of the source editor that need no widget.
namespace Vantry::Platform::SourceText {

// Wraps the line's content (leading and trailing blanks stay outside) in an HTML comment.
// Blank lines are left alone.
QString commentLine(const QString &line);
// Removes the comment markers put there by commentLine(); other lines are left alone.
QString uncommentLine(const QString &line);

// The member-list file holds one tag name per line. Blanks around a name and angle
// brackets ("<div>") are ignored, as are empty lines and lines starting with "#".
QStringList parseMemberList(const QString &content);
// The tags offered when there is no member-list file.
QStringList builtInHtmlTags();

// Whether the text in front of the caret ends in a tag name being typed: "<" or "</"
// followed by a letter and then letters or digits.
bool typesTagName(const QString &textBeforeCaret);

// The caret position as the position display shows it, both counted from 1.
QString positionText(int line, int column);

} // namespace Vantry::Platform::SourceText
