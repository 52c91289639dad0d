#pragma once

#include <QColor>
#include <QList>
#include <QString>

namespace Vantry::Platform::SourceText {

// One line of the language file: "<style name> = <colour>[, <background colour>]".
// Style names are the HTML lexer's style descriptions ("Tag", "Attribute",
// "HTML comment", ...), compared ignoring case; colours are anything QColor reads
// ("#000080", "navy"). Empty lines and lines starting with "#" or ";" are comments.
struct StyleColour
{
    QString styleName;
    QColor foreground;
    QColor background; // invalid when not given
};
// Lines that do not follow the format, or carry an unreadable colour, are skipped.
QList<StyleColour> parseLanguageFile(const QString &content);

} // namespace Vantry::Platform::SourceText
