#include <VantryHTMLEditor/TableDialogValues.h>

#include "dialogs/tablemarkup.h"

namespace Vantry {

void InsertTableValues::ClearValues()
{
    // The folders come from the editor, not from the user.
    const QString directory = ImageDirectory;
    const QString prefix = ImagePrefix;
    *this = InsertTableValues();
    ImageDirectory = directory;
    ImagePrefix = prefix;
}

void TablePropertiesValues::ClearValues()
{
    for (QString *text : Dialogs::tablePropertyTexts(*this))
        text->clear();
    Cancel = false;
}

void CellPropertiesValues::ClearValues()
{
    for (QString *text : Dialogs::cellPropertyTexts(*this))
        text->clear();
    NoWrap = false;
    Cancel = false;
}

} // namespace Vantry
