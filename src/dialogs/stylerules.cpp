#include "dialogs/stylerules.h"

#include <QRegularExpression>
#include <QSet>

namespace Vantry::Dialogs {

namespace {

struct Declaration
{
    QString name;
    QString text;
};

// The declarations of a style text, split at the semicolons that stand outside brackets
// and quotes (a filter's argument list may hold anything).
QList<Declaration> declarations(const QString &styleText)
{
    QList<Declaration> out;
    int depth = 0;
    QChar quote;
    qsizetype start = 0;
    const auto take = [&](qsizetype end) {
        const QString text = styleText.mid(start, end - start).trimmed();
        if (!text.isEmpty()) {
            const qsizetype colon = text.indexOf(QLatin1Char(':'));
            out.append({colon < 0 ? text : text.left(colon).trimmed().toLower(), text});
        }
        start = end + 1;
    };
    for (qsizetype i = 0; i < styleText.size(); ++i) {
        const QChar c = styleText.at(i);
        if (!quote.isNull()) {
            if (c == quote)
                quote = QChar();
        } else if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
            quote = c;
        } else if (c == QLatin1Char('(')) {
            ++depth;
        } else if (c == QLatin1Char(')')) {
            depth = qMax(0, depth - 1);
        } else if (c == QLatin1Char(';') && depth == 0) {
            take(i);
        }
    }
    take(styleText.size());
    return out;
}

int flag(const QString &value)
{
    const QString v = value.trimmed().toLower();
    return v.isEmpty() || v == QLatin1String("0") || v == QLatin1String("false") ? 0 : 1;
}

} // namespace

QString filterText(const QString &filter, const QString &property)
{
    return QStringLiteral("progid:DXImageTransform.Microsoft.") + filter + QLatin1Char('(')
        + property + QLatin1Char(')');
}

QString cssPropertyName(const QString &name)
{
    // A capital after a small letter starts a word of a script name.
    const QString trimmed = name.trimmed();
    const bool scriptName = !trimmed.contains(QLatin1Char('-'));
    QString out;
    for (qsizetype i = 0; i < trimmed.size(); ++i) {
        const QChar c = trimmed.at(i);
        if (scriptName && c.isUpper() && i > 0 && trimmed.at(i - 1).isLower())
            out += QLatin1Char('-');
        out += c.toLower();
    }
    return out;
}

QString styleDeclaration(const QString &styleText, const QString &name)
{
    const QString wanted = cssPropertyName(name);
    QString value;
    for (const Declaration &d : declarations(styleText)) {
        if (d.name == wanted)
            value = d.text.mid(d.text.indexOf(QLatin1Char(':')) + 1).trimmed();
    }
    return value;
}

QString withStyleDeclaration(const QString &styleText, const QString &name, const QString &value)
{
    const QString wanted = cssPropertyName(name);
    const QString written = wanted + QStringLiteral(": ") + value;
    QStringList parts;
    bool placed = value.isEmpty();
    for (const Declaration &d : declarations(styleText)) {
        if (d.name != wanted)
            parts.append(d.text);
        else if (!placed) {
            parts.append(written);
            placed = true;
        }
    }
    if (!placed)
        parts.append(written);
    return parts.join(QStringLiteral("; "));
}

QList<StyleClass> styleClasses(const QList<StyleSheetRule> &rules)
{
    static const QRegularExpression classSelector(QStringLiteral("\\.(-?[_a-zA-Z][_a-zA-Z0-9-]*)"));
    QList<StyleClass> out;
    QSet<QString> seen;
    for (const StyleSheetRule &rule : rules) {
        auto it = classSelector.globalMatch(rule.selectorText);
        while (it.hasNext()) {
            const QString name = it.next().captured(1);
            if (!seen.contains(name)) {
                seen.insert(name);
                out.append({name, rule.cssText});
            }
        }
    }
    return out;
}

QString withClass(const QString &classAttribute, const QString &className)
{
    const QStringList names = classAttribute.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (className.isEmpty() || names.contains(className))
        return names.join(QLatin1Char(' '));
    return (names + QStringList{className}).join(QLatin1Char(' '));
}

bool isAttributeName(const QString &name)
{
    // What setAttribute accepts in an HTML document, less the characters markup cannot hold.
    static const QRegularExpression valid(QStringLiteral("^[A-Za-z_:][A-Za-z0-9_:.\\-]*$"));
    return valid.match(name).hasMatch();
}

QList<std::pair<QString, std::optional<QString>>> attributeEdits(
    const QList<ElementAttribute> &before, const QList<ElementAttribute> &after)
{
    QList<std::pair<QString, QString>> wanted;
    for (const ElementAttribute &a : after) {
        const QString name = a.Name.trimmed().toLower();
        if (name.isEmpty())
            continue;
        const auto same = [&name](const auto &w) { return w.first == name; };
        wanted.removeIf(same);
        wanted.append({name, a.Value});
    }
    QList<std::pair<QString, std::optional<QString>>> edits;
    for (const ElementAttribute &a : before) {
        const QString name = a.Name.toLower();
        const bool kept = std::any_of(
            wanted.cbegin(), wanted.cend(), [&name](const auto &w) { return w.first == name; });
        if (!kept)
            edits.append({name, std::nullopt});
    }
    for (const auto &[name, value] : wanted) {
        const auto old = std::find_if(before.cbegin(), before.cend(),
            [&name](const ElementAttribute &a) { return a.Name.toLower() == name; });
        if (old == before.cend() || old->Value != value)
            edits.append({name, value});
    }
    return edits;
}

QList<std::pair<QString, QString>> flashParams(const FlashPropertiesValues &v)
{
    const auto n = [](int value) { return QString::number(value); };
    return {{QStringLiteral("Movie"), v.MovieURL}, {QStringLiteral("Src"), v.MovieURL},
        {QStringLiteral("WMode"), v.WindowMode}, {QStringLiteral("Play"), n(v.Play)},
        {QStringLiteral("Loop"), n(v.Loop)}, {QStringLiteral("Quality"), v.Quality},
        {QStringLiteral("Menu"), n(v.ShowMenu)}, {QStringLiteral("DeviceFont"), n(v.DeviceFont)},
        {QStringLiteral("EmbedMovie"), n(v.EmbedMovie)}, {QStringLiteral("BGColor"), v.BGColor}};
}

QString flashObjectBlock(const FlashPropertiesValues &v)
{
    const QList<std::pair<QString, QString>> own = flashParams(v);
    const auto value = [&own](const char *name) {
        for (const auto &[n, text] : own) {
            if (n == QLatin1String(name))
                return text;
        }
        return QString();
    };
    const std::pair<const char *, QString> params[] = {{"_cx", QStringLiteral("5080")},
        {"_cy", QStringLiteral("5080")}, {"FlashVars", {}}, {"Movie", value("Movie")},
        {"Src", value("Src")}, {"WMode", value("WMode")}, {"Play", value("Play")},
        {"Loop", value("Loop")}, {"Quality", value("Quality")}, {"SAlign", {}},
        {"Menu", value("Menu")}, {"AllowScriptAccess", QStringLiteral("always")},
        {"Scale", QStringLiteral("ShowAll")}, {"DeviceFont", value("DeviceFont")},
        {"EmbedMovie", value("EmbedMovie")}, {"BGColor", value("BGColor")}, {"SWRemote", {}},
        {"MovieData", {}}, {"SeamlessTabbing", QStringLiteral("1")}};
    QString block
        = QStringLiteral("<OBJECT id=ShockwaveFlash1 "
                         "classid=clsid:D27CDB6E-AE6D-11CF-96B8-444553540000 VIEWASTEXT>");
    for (const auto &[name, text] : params) {
        block += QStringLiteral("    <PARAM NAME=\"") + QLatin1String(name)
            + QStringLiteral("\" VALUE=\"") + text + QStringLiteral("\">");
    }
    return block + QStringLiteral("</OBJECT>");
}

void readFlashParams(const QList<std::pair<QString, QString>> &params, FlashPropertiesValues &v)
{
    for (const auto &[name, value] : params) {
        const QString n = name.toLower();
        if (n == QLatin1String("movie"))
            v.MovieURL = value;
        else if (n == QLatin1String("src") && v.MovieURL.isEmpty())
            v.MovieURL = value;
        else if (n == QLatin1String("wmode"))
            v.WindowMode = value;
        else if (n == QLatin1String("play"))
            v.Play = flag(value);
        else if (n == QLatin1String("loop"))
            v.Loop = flag(value);
        else if (n == QLatin1String("quality"))
            v.Quality = value;
        else if (n == QLatin1String("menu"))
            v.ShowMenu = flag(value);
        else if (n == QLatin1String("devicefont"))
            v.DeviceFont = flag(value);
        else if (n == QLatin1String("embedmovie"))
            v.EmbedMovie = flag(value);
        else if (n == QLatin1String("bgcolor"))
            v.BGColor = value;
    }
}

} // namespace Vantry::Dialogs
