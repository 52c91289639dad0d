#pragma once

#include <QString>
#include <QtGlobal>

// The rules every property dialog shares (modCommands). Qt Core only: no widget, no
// document.
namespace Vantry::Dialogs {

// The only characters numeric boxes let through: "0" to "9". Backspace (8) is refused
// like any other key that raises a character, as users of these dialogs have always known.
bool CheckEnterNumber(int keyCode);
// Characters a typed colour may hold: hexadecimal digits and "#".
bool CheckEnterHex(int keyCode);
// Check-box value of a Boolean: 1 or 0.
int ConvertBooleanToNumber(bool value);

// 0x00BBGGRR to "#RRGGBB"; empty for a number longer than six hexadecimal digits (a
// system colour), which leaves the field as it was.
QString ColorToHtml(quint32 color);
// "#RRGGBB" to "&H00BBGGRR"; every "#" goes, the text is not checked further.
QString HtmlToColorHex(const QString &html);
// The folder of a path, separator kept: up to the last "\", else the last "/", else empty.
// "file://" is dropped first.
QString GetFolderOfPath(const QString &path);

// The unit lists of width and height hold these, in this order; "percent" is the default.
inline constexpr QLatin1StringView unitPercent{"percent"};
inline constexpr QLatin1StringView unitPixels{"pixels"};
// "%" for the unit text "percent" exactly, else nothing.
QString unitSuffix(const QString &unitText);

// A width or height as a dialog shows it: the number and its unit.
struct Dimension
{
    QString number;
    bool percent = false;
};
// "50%" is 50 percent; anything else pixels. Every "%" leaves the number, and so does the
// "px" a style gives a length, since the box takes digits only.
Dimension splitDimension(const QString &value);
// The value collected from a number and its unit text; no number, no unit.
QString joinDimension(const QString &number, const QString &unitText);

} // namespace Vantry::Dialogs
