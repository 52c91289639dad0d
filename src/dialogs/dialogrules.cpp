#include "dialogs/dialogrules.h"

namespace Vantry::Dialogs {

bool CheckEnterNumber(int keyCode)
{
    return keyCode >= '0' && keyCode <= '9';
}

bool CheckEnterHex(int keyCode)
{
    return CheckEnterNumber(keyCode) || (keyCode >= 'a' && keyCode <= 'f')
        || (keyCode >= 'A' && keyCode <= 'F') || keyCode == '#';
}

int ConvertBooleanToNumber(bool value)
{
    return value ? 1 : 0;
}

QString ColorToHtml(quint32 color)
{
    const QString hex = QString::number(color, 16).toUpper().rightJustified(6, QLatin1Char('0'));
    if (hex.size() > 6)
        return {};
    return QLatin1Char('#') + hex.mid(4, 2) + hex.mid(2, 2) + hex.left(2);
}

QString HtmlToColorHex(const QString &html)
{
    QString text = html;
    text.remove(QLatin1Char('#'));
    return QLatin1String("&H00") + text.right(2) + text.mid(2, 2) + text.left(2);
}

QString GetFolderOfPath(const QString &path)
{
    QString text = path;
    text.remove(QLatin1String("file://"));
    qsizetype end = text.lastIndexOf(QLatin1Char('\\'));
    if (end < 0)
        end = text.lastIndexOf(QLatin1Char('/'));
    return end < 0 ? QString() : text.left(end + 1);
}

QString unitSuffix(const QString &unitText)
{
    return unitText == unitPercent ? QStringLiteral("%") : QString();
}

Dimension splitDimension(const QString &value)
{
    Dimension dimension;
    dimension.percent = value.endsWith(QLatin1Char('%'));
    dimension.number = value;
    dimension.number.remove(QLatin1Char('%'));
    if (dimension.number.endsWith(QLatin1String("px"), Qt::CaseInsensitive))
        dimension.number.chop(2);
    return dimension;
}

QString joinDimension(const QString &number, const QString &unitText)
{
    return number.isEmpty() ? number : number + unitSuffix(unitText);
}

} // namespace Vantry::Dialogs
