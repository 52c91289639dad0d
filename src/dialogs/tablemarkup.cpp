#include "dialogs/tablemarkup.h"

namespace Vantry::Dialogs {

namespace {

void appendWhenGiven(QString &attributes, QLatin1StringView leadIn, const QString &value)
{
    if (!value.isEmpty())
        attributes += leadIn + value;
}

} // namespace

QString insertTableAttributes(const InsertTableValues &values, const QString &placedBackground)
{
    QString attributes = QLatin1String("border=") + values.BorderSize
        + QLatin1String(" cellPadding=") + values.CellPadding + QLatin1String(" cellSpacing=")
        + values.CellSpacing + QLatin1String(" width=") + values.Width + QLatin1String(" height=")
        + values.Height;
    appendWhenGiven(attributes, QLatin1String(" align="), values.Alignment);
    appendWhenGiven(attributes, QLatin1String(" bordercolor="), values.BorderColor);
    appendWhenGiven(attributes, QLatin1String(" bgcolor="), values.BGColor);
    if (!placedBackground.isEmpty())
        attributes += QLatin1String(" background=\"") + placedBackground + QLatin1Char('"');
    return attributes;
}

QString insertTableCellAttributes(const InsertTableValues &values)
{
    QString attributes;
    appendWhenGiven(attributes, QLatin1String(" align="), values.AlignmentCell);
    appendWhenGiven(attributes, QLatin1String(" bordercolor="), values.BorderColorCell);
    appendWhenGiven(attributes, QLatin1String(" bgcolor="), values.BGColorCell);
    return attributes;
}

std::optional<int> tablePartCount(const QString &text, int limit)
{
    for (const QChar c : text) {
        if (!c.isDigit())
            return std::nullopt;
    }
    bool ok = false;
    const int count = text.toInt(&ok);
    if (!ok || count < 1 || count > limit)
        return std::nullopt;
    return count;
}

QString backgroundImagePath(const QString &prefix, const QString &image)
{
    if (image.isEmpty())
        return {};
    const bool bare = !image.contains(QLatin1Char('/')) && !image.contains(QLatin1Char('\\'));
    return bare ? prefix + image : image;
}

QList<TableField> tablePropertyFields()
{
    return {{"bgColor", nullptr}, {"background", nullptr}, {"Height", "height"}, {"Width", "width"},
        {"Align", nullptr}, {"cellSpacing", nullptr}, {"cellPadding", nullptr}, {"Border", nullptr},
        {"BorderColor", nullptr}, {"borderColorDark", nullptr}, {"borderColorLight", nullptr}};
}

QList<TableField> cellPropertyFields()
{
    return {{"bgColor", nullptr}, {"Width", "width"}, {"Height", "height"}, {"Align", nullptr},
        {"vAlign", nullptr}, {"colSpan", nullptr}, {"rowSpan", nullptr}, {"BorderColor", nullptr},
        {"borderColorDark", nullptr}, {"borderColorLight", nullptr}, {"noWrap", nullptr}};
}

QList<QString *> tablePropertyTexts(TablePropertiesValues &values)
{
    return {&values.BGColor, &values.BGImage, &values.Height, &values.Width, &values.Alignment,
        &values.CellSpacing, &values.CellPadding, &values.BorderSize, &values.BorderColor,
        &values.BorderHighlight, &values.BorderShadow};
}

QList<QString *> cellPropertyTexts(CellPropertiesValues &values)
{
    return {&values.BGColor, &values.Width, &values.Height, &values.HorizontalAlignment,
        &values.VerticalAlignment, &values.ColSpan, &values.RowSpan, &values.BorderColor,
        &values.BorderHighlight, &values.BorderShadow};
}

QString dimensionFromElement(const QString &attribute, const QString &styleValue)
{
    return attribute.isEmpty() ? styleValue : attribute;
}

bool dimensionRemoved(const QString &value)
{
    return value.isEmpty() || value == QLatin1String("0");
}

QString cssLength(const QString &value)
{
    for (const QChar c : value) {
        if (!c.isDigit())
            return value;
    }
    return value + QLatin1String("px");
}

} // namespace Vantry::Dialogs
