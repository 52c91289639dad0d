#include "control/contentrules.h"

#include "commands/insertionrules.h"

namespace Vantry::Control::ContentRules {

using Commands::indexOfNoCase;

namespace {

QString htmlTag()
{
    return QStringLiteral("<HTML>");
}

} // namespace

QString removeLineBreaks(const QString &text)
{
    if (!text.contains(u'\r'))
        return text;
    QString result = text;
    result.remove(QLatin1StringView("\r\n"));
    return result;
}

QString wrapInDefaultFont(
    const QString &text, const QString &fontName, const QString &fontColor, const QString &fontSize)
{
    // An empty document still carries the default font, so that typing starts in it.
    return QStringLiteral("<div style=\"FONT-FAMILY:") + fontName + QStringLiteral(";COLOR:")
        + fontColor + QStringLiteral(";FONT-SIZE:") + fontSize + QStringLiteral("\">")
        + (text.isEmpty() ? QStringLiteral("&nbsp;") : text) + QStringLiteral("</div>");
}

QString baseTag(const QString &baseUrl)
{
    return QStringLiteral("<BASE HREF=\"") + baseUrl + QStringLiteral("\">");
}

QString insertBase(const QString &text, const QString &baseUrl)
{
    if (baseUrl.isEmpty())
        return text;
    const QString result = removeBase(text, baseUrl);
    if (result.isEmpty())
        return baseTag(baseUrl);
    // In front of <HTML> rather than inside HEAD: removeBase relies on that placement.
    return ReplaceNoCase(result, htmlTag(), baseTag(baseUrl) + htmlTag());
}

QString removeBase(const QString &text, const QString &baseUrl)
{
    if (baseUrl.isEmpty())
        return text;
    const qsizetype base = text.indexOf(QLatin1StringView("<BASE"), 0, Qt::CaseInsensitive);
    const qsizetype html = text.indexOf(htmlTag(), 0, Qt::CaseInsensitive);
    if (base < 0 || html < 0 || html < base)
        return text;
    // The piece is cut from the text itself, not from an upper-cased copy: upper-casing can
    // change the length of the text (ß becomes SS) and so move every position after it.
    const QString piece = text.sliced(base, html - base + htmlTag().size());
    return ReplaceNoCase(text, piece, htmlTag());
}

QString normaliseStyleSheetLinks(const QString &text, const QString &linkMarkup)
{
    // One pass that drops every stylesheet LINK tag with a CR LF pair right in front of it.
    // Deleting each such tag everywhere (the CR LF form first) and searching again gives the
    // same text, short of a deletion that joins its surroundings into new markup, but costs a
    // pass over the whole document per tag.
    const QStringView linkStart(u"<link");
    const QLatin1StringView crlf("\r\n");

    QString result;
    result.reserve(text.size());
    qsizetype copied = 0;
    qsizetype from = 0;
    for (;;) {
        const qsizetype start = indexOfNoCase(text, linkStart, from);
        if (start < 0)
            break;
        const qsizetype end = text.indexOf(u'>', start);
        // A tag that never closes is text, and so is all that follows it.
        if (end < 0)
            break;
        const QStringView tag = QStringView(text).sliced(start, end + 1 - start);
        if (tag.contains(QLatin1StringView("stylesheet"), Qt::CaseInsensitive)) {
            result.append(QStringView(text).sliced(copied, start - copied));
            if (result.endsWith(crlf))
                result.chop(crlf.size());
            copied = end + 1;
        }
        from = end + 1;
    }
    result.append(QStringView(text).sliced(copied));

    return ReplaceNoCase(result, QStringLiteral("</head>"), linkMarkup + QStringLiteral("</HEAD>"));
}

QString removeRootPath(const QString &text, const QString &rootPath)
{
    if (rootPath.isEmpty())
        return text;
    // Paths also appear with doubled backslashes, as inside script strings.
    QString doubled = rootPath;
    doubled.replace(u'\\', QStringLiteral("\\\\"));
    QString result = ReplaceNoCase(text, doubled, QString());
    if (doubled != rootPath)
        result = ReplaceNoCase(result, rootPath, QString());
    return result;
}

} // namespace Vantry::Control::ContentRules
