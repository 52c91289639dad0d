#pragma once

#include <VantryHTMLEditor/vantryhtmleditor_export.h>

#include <QString>

namespace Vantry {

// What the table dialogs show and return. Every text is the literal text of a markup
// attribute ("50%", "#FF0000"); empty stands for no attribute. The editor calls
// ClearValues, fills the values and shows the dialog; Cancel is true when the user
// cancelled and then nothing is written.

// The insert-table dialog. Width and Height carry their unit ("100%" or "100").
struct VANTRYHTMLEDITOR_EXPORT InsertTableValues
{
    // Set by the editor: the folder the background-image picker opens in, and what goes in
    // front of a background image given by file name alone.
    QString ImageDirectory;
    QString ImagePrefix;

    QString Rows;
    QString Columns;
    QString BorderSize;
    QString CellPadding;
    QString CellSpacing;
    QString Width;
    QString Height;
    QString Alignment;
    QString BorderColor;
    QString BGColor;
    QString BGImage;
    QString AlignmentCell;
    QString BorderColorCell;
    QString BGColorCell;
    // Shown, but a new table's cells always wrap.
    bool WrapText = true;
    bool Cancel = false;

    void ClearValues();
};

// The table around the selection, in the order the dialog collects them.
struct VANTRYHTMLEDITOR_EXPORT TablePropertiesValues
{
    QString BGColor;
    QString BGImage;
    QString Height;
    QString Width;
    QString Alignment;
    QString CellSpacing;
    QString CellPadding;
    QString BorderSize;
    QString BorderColor;
    // The highlight box carries borderColorDark and the shadow box borderColorLight.
    QString BorderHighlight;
    QString BorderShadow;
    QString ImageDirectory;
    bool Cancel = false;

    void ClearValues();
};

// The cell around the selection. Height has no unit list and stays bare.
struct VANTRYHTMLEDITOR_EXPORT CellPropertiesValues
{
    QString BGColor;
    QString Width;
    QString Height;
    QString HorizontalAlignment;
    QString VerticalAlignment;
    QString ColSpan;
    QString RowSpan;
    QString BorderColor;
    QString BorderHighlight;
    QString BorderShadow;
    bool NoWrap = false;
    bool Cancel = false;

    void ClearValues();
};

} // namespace Vantry
