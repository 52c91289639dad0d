#pragma once

#include <VantryHTMLEditor/vantryhtmleditor_export.h>

#include <QString>

namespace Vantry {

// What the image dialog (frmInsertImage) shows and returns. Every text is the literal text
// of its markup attribute; the editor calls ClearValues, fills the values from the image
// being edited (nothing for a new one) and shows the dialog; Cancel is true when the user
// cancelled and then nothing is written.
struct VANTRYHTMLEDITOR_EXPORT ImageDialogValues
{
    // What the roll-over fields hold: nothing, images to swap in, or scripts.
    enum class RollOver
    {
        None,
        Image,
        Script
    };

    // Set by the editor: the folder the pickers open in.
    QString ImageDirectory;

    QString Source;
    QString Width;
    QString Height;
    QString VSpace;
    QString HSpace;
    QString Align;
    QString Border;
    QString Alt;
    // The whole address, its prefix ("http://", "ftp://", "mailto:") included.
    QString Hyperlink;
    QString Target;
    RollOver MouseOverOption = RollOver::None;
    // Image paths in image mode, scripts in script mode.
    QString SourceOver;
    QString SourceDown;
    QString SourceOut;
    bool KeepAspect = true;
    bool Cancel = false;

    void ClearValues();
};

} // namespace Vantry
