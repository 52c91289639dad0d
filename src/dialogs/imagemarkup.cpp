#include "dialogs/imagemarkup.h"

#include <cmath>

namespace Vantry {

void ImageDialogValues::ClearValues()
{
    // The folder comes from the editor, not from the user.
    const QString directory = ImageDirectory;
    *this = ImageDialogValues();
    ImageDirectory = directory;
}

} // namespace Vantry

namespace Vantry::Dialogs {

namespace {

QString quoted(const QString &value)
{
    QString text = value;
    text.replace(QLatin1Char('"'), QLatin1String("&quot;"));
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString swapScript(const QString &path)
{
    QString escaped = path;
    escaped.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    return QStringLiteral("this.src='") + escaped + QLatin1Char('\'');
}

QString rollOverParts(const ImageDialogValues &v)
{
    using RollOver = ImageDialogValues::RollOver;
    switch (v.MouseOverOption) {
    case RollOver::Script:
        return QLatin1String("OnMouseOver=") + quoted(v.SourceOver) + QLatin1String("OnMouseDown=")
            + quoted(v.SourceDown) + QLatin1String("OnMouseOut=") + quoted(v.SourceOut);
    case RollOver::Image:
        return QLatin1String("OnMouseOver=") + quoted(swapScript(v.SourceOver))
            + QLatin1String(" srcOver=") + quoted(v.SourceOver) + QLatin1String(" OnMouseDown=")
            + quoted(swapScript(v.SourceDown)) + QLatin1String(" srcDown=") + quoted(v.SourceDown)
            + QLatin1String(" OnMouseOut=") + quoted(swapScript(v.SourceOut)) + QLatin1Char(' ');
    case RollOver::None:
        break;
    }
    return {};
}

// The part of a swap script between "this.src='" and its closing quote.
QString swappedImage(const QString &script)
{
    static const QLatin1StringView lead("this.src='");
    const qsizetype start = script.indexOf(lead, 0, Qt::CaseInsensitive);
    if (start < 0)
        return {};
    const qsizetype from = start + lead.size();
    const qsizetype end = script.indexOf(QLatin1Char('\''), from);
    QString path = script.mid(from, end < 0 ? -1 : end - from);
    path.replace(QLatin1String("\\\\"), QLatin1String("\\"));
    return path;
}

} // namespace

QString imageDialogMarkup(const ImageDialogValues &v)
{
    const bool link = !v.Hyperlink.isEmpty();
    QString markup;
    if (link) {
        markup += QLatin1String("<a href=") + quoted(v.Hyperlink) + QLatin1String(" target=")
            + quoted(v.Target) + QLatin1Char('>');
    }
    markup += QLatin1String("<IMG ") + rollOverParts(v);
    markup += QLatin1String("VSPACE=") + quoted(v.VSpace) + QLatin1String(" HSPACE=")
        + quoted(v.VSpace);
    markup += QLatin1String(" ALIGN=") + quoted(v.Align) + QLatin1String(" SRC=") + quoted(v.Source)
        + QLatin1String(" BORDER=") + quoted(v.Border) + QLatin1String(" ALT=") + quoted(v.Alt);
    QString style;
    if (!v.Width.isEmpty()) {
        markup += QLatin1String(" WIDTH=") + quoted(v.Width);
        style += QLatin1String("WIDTH:") + v.Width + QLatin1String("; ");
    }
    if (!v.Height.isEmpty()) {
        markup += QLatin1String(" HEIGHT=") + quoted(v.Height);
        style += QLatin1String("HEIGHT:") + v.Height + QLatin1String("; ");
    }
    if (!style.isEmpty())
        markup += QLatin1String(" STYLE=") + quoted(style);
    markup += QLatin1String(" >");
    if (link)
        markup += QLatin1String("</a>");
    return markup;
}

QStringList linkPrefixes()
{
    return {QStringLiteral("http://"), QStringLiteral("ftp://"), QStringLiteral("mailto:")};
}

SplitLink splitLinkPrefix(const QString &address)
{
    for (const QString &prefix : linkPrefixes()) {
        if (address.startsWith(prefix, Qt::CaseInsensitive))
            return {prefix, address.mid(prefix.size())};
    }
    return {QString(), address};
}

QString joinLinkPrefix(const QString &prefix, const QString &text)
{
    if (text.isEmpty() || !splitLinkPrefix(text).prefix.isEmpty())
        return text;
    return prefix + text;
}

void setRollOver(ImageDialogValues &values, const RollOverAttributes &a)
{
    using RollOver = ImageDialogValues::RollOver;
    if (!a.srcOver.isEmpty() || !a.srcDown.isEmpty()) {
        values.MouseOverOption = RollOver::Image;
        values.SourceOver = a.srcOver;
        values.SourceDown = a.srcDown;
        values.SourceOut = swappedImage(a.onMouseOut);
    } else if (!a.onMouseOver.isEmpty() || !a.onMouseDown.isEmpty() || !a.onMouseOut.isEmpty()) {
        values.MouseOverOption = RollOver::Script;
        values.SourceOver = a.onMouseOver;
        values.SourceDown = a.onMouseDown;
        values.SourceOut = a.onMouseOut;
    } else {
        values.MouseOverOption = RollOver::None;
    }
}

QString imageDimension(const QString &attribute, const QString &styleValue)
{
    if (!attribute.isEmpty())
        return attribute;
    QString value = styleValue.trimmed();
    if (value.endsWith(QLatin1String("px"), Qt::CaseInsensitive)) {
        bool whole = false;
        value.chopped(2).toInt(&whole);
        if (whole)
            value.chop(2);
    }
    return value;
}

std::optional<int> keptAspect(int changed, int pictureChanged, int pictureOther)
{
    if (changed < 0 || pictureChanged <= 0 || pictureOther <= 0)
        return std::nullopt;
    return static_cast<int>(
        std::lround(static_cast<double>(changed) * pictureOther / pictureChanged));
}

} // namespace Vantry::Dialogs
