#pragma once

#include <VantryHTMLEditor/TableDialogValues.h>

#include <QList>
#include <QString>

#include <optional>

// The markup rules of the table dialogs. Qt Core only.
namespace Vantry::Dialogs {

// The largest table hosts and users may build: already far more than a page shows, and
// its markup stays at a few megabytes.
inline constexpr int maxTableRows = 1000;
inline constexpr int maxTableColumns = 100;

// The insert-table command's parameters, as the dialog has always built them.
struct InsertTableParameters
{
    int NumRows = 0;
    int NumCols = 0;
    QString TableAttrs;
    QString CellAttrs;
};

// Table attributes, unquoted: border, cellPadding, cellSpacing, width and height always
// (empty ones too), then align, bordercolor and bgcolor when given, then the background,
// quoted, when placedBackground is not empty.
QString insertTableAttributes(const InsertTableValues &values, const QString &placedBackground);
// Attributes every new cell gets: align, bordercolor, bgcolor, each when given.
QString insertTableCellAttributes(const InsertTableValues &values);
// A row or column count as typed: a whole number from 1 to limit, else nothing.
std::optional<int> tablePartCount(const QString &text, int limit);
// The background image handed to image placement: the prefix goes in front of a file name
// given without a folder; empty stays empty.
QString backgroundImagePath(const QString &prefix, const QString &image);

// One attribute a property dialog edits: the element attribute it is read from and written
// to, and whether the style's property of the same name goes with it (width and height).
struct TableField
{
    const char *attribute;
    const char *styleProperty;
};

// The element attributes behind TablePropertiesValues and CellPropertiesValues, in the
// order of their members (noWrap last for cells). Highlight reads and writes
// borderColorDark, shadow borderColorLight, both ways.
QList<TableField> tablePropertyFields();
QList<TableField> cellPropertyFields();

QList<QString *> tablePropertyTexts(TablePropertiesValues &values);
QList<QString *> cellPropertyTexts(CellPropertiesValues &values);

// A width or height read back: the attribute, else the style's length.
QString dimensionFromElement(const QString &attribute, const QString &styleValue);
// A width or height of "0" or nothing is removed rather than written.
bool dimensionRemoved(const QString &value);
// The style length of a width or height: bare numbers are pixels.
QString cssLength(const QString &value);
} // namespace Vantry::Dialogs
