#pragma once

#include <VantryHTMLEditor/vantryhtmleditor_export.h>

#include <QString>

namespace Vantry {

// What the page-properties dialog shows and returns: the BODY attributes and the title,
// as their markup holds them ("#FF0000", "10"); empty stands for no attribute.
struct VANTRYHTMLEDITOR_EXPORT PagePropertiesValues
{
    // Set by the editor: the folder the background-image picker opens in.
    QString ImageDirectory;

    QString BackgroundImage;
    QString BackgroundColor;
    QString Title;
    QString TextColor;
    QString LinkColor;
    QString VisitedLinkColor;
    QString ActiveLinkColor;
    QString LeftMargin;
    QString TopMargin;
    QString BottomMargin;
    QString RightMargin;
    bool Cancel = false;

    void ClearValues();
};

} // namespace Vantry
