#include "platform/scintilla/sourcetext.h"

namespace Vantry::Platform::SourceText {

namespace {

const QLatin1StringView commentStart("<!--");
const QLatin1StringView commentEnd("-->");

// The content of a line: from its first to its last non-blank character.
struct Content
{
    qsizetype begin = 0;
    qsizetype end = 0; // one past the last character
    bool isEmpty() const { return begin >= end; }
};

Content contentOf(const QString &line)
{
    Content c{0, line.size()};
    while (c.begin < c.end && line.at(c.begin).isSpace())
        ++c.begin;
    while (c.end > c.begin && line.at(c.end - 1).isSpace())
        --c.end;
    return c;
}

} // namespace

QString commentLine(const QString &line)
{
    const Content c = contentOf(line);
    if (c.isEmpty())
        return line;
    return line.left(c.begin) + commentStart + line.mid(c.begin, c.end - c.begin) + commentEnd
        + line.mid(c.end);
}

QString uncommentLine(const QString &line)
{
    const Content c = contentOf(line);
    const QStringView content = QStringView(line).mid(c.begin, c.end - c.begin);
    // "<!-->" alone is no commented line: its markers overlap.
    if (content.size() < commentStart.size() + commentEnd.size()
        || !content.startsWith(commentStart) || !content.endsWith(commentEnd))
        return line;
    return line.left(c.begin)
        + content.mid(commentStart.size(), content.size() - commentStart.size() - commentEnd.size())
        + line.mid(c.end);
}

QStringList parseMemberList(const QString &content)
{
    QStringList tags;
    const auto lines = QStringView(content).split(QLatin1Char('\n'));
    for (QStringView line : lines) {
        line = line.trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        if (line.startsWith(QLatin1Char('<')))
            line = line.mid(1);
        if (line.endsWith(QLatin1Char('>')))
            line.chop(1);
        line = line.trimmed();
        if (!line.isEmpty())
            tags.append(line.toString());
    }
    return tags;
}

QStringList builtInHtmlTags()
{
    const QString names = QStringLiteral(
        "a abbr acronym address area article aside audio b base bdo big blockquote body "
        "br button caption center cite code col colgroup dd del dfn div dl dt em embed "
        "fieldset figcaption figure font footer form frame frameset h1 h2 h3 h4 h5 h6 "
        "head header hr html i iframe img input ins kbd label legend li link main map "
        "mark meta nav noframes noscript object ol optgroup option p param pre q s samp "
        "script section select small source span strike strong style sub sup table tbody "
        "td textarea tfoot th thead title tr tt u ul var video");
    return names.split(QLatin1Char(' '));
}

bool typesTagName(const QString &textBeforeCaret)
{
    qsizetype start = textBeforeCaret.size();
    while (start > 0 && textBeforeCaret.at(start - 1).isLetterOrNumber())
        --start;
    if (start == textBeforeCaret.size() || !textBeforeCaret.at(start).isLetter())
        return false;
    QStringView before = QStringView(textBeforeCaret).left(start);
    if (before.endsWith(QLatin1Char('/')))
        before.chop(1);
    return before.endsWith(QLatin1Char('<'));
}

QString positionText(int line, int column)
{
    return QStringLiteral("Ln ") + QString::number(line) + QStringLiteral(", Col ")
        + QString::number(column);
}

} // namespace Vantry::Platform::SourceText
