#pragma once

#include <VantryHTMLEditor/vantryhtmleditor_export.h>

#include <QList>
#include <QMetaType>
#include <QString>

namespace Vantry {

// The document's style sheets as the host and the style dialog see them: copies taken when
// asked for, never live engine objects.

struct StyleSheetRule
{
    QString selectorText;
    // The declarations alone, without selector and braces.
    QString cssText;

    bool operator==(const StyleSheetRule &) const = default;
};

struct StyleSheetInfo
{
    // The address as the LINK has it; empty for a sheet embedded in a STYLE element.
    QString href;
    // Position in the document's sheets, counting from 0; -1 for no sheet.
    int index = -1;
    // False for a sheet whose rules the engine keeps from us (another origin, not loaded):
    // it is listed by its address, with no rules.
    bool rulesReadable = true;
    QList<StyleSheetRule> rules;

    bool isNull() const { return index < 0; }
    bool operator==(const StyleSheetInfo &) const = default;
};

// What the dialogs of this section show and return. Texts are literal markup texts; the
// editor calls ClearValues, fills the values and shows the dialog; Cancel is true when the
// user cancelled and then nothing is written.

// frmSelectStyle: a style sheet of the document and a class from it for the current
// element.
struct VANTRYHTMLEDITOR_EXPORT SelectStyleValues
{
    // Filled by the editor.
    QList<StyleSheetInfo> StyleSheets;
    QString ImageDirectory;
    // The chosen sheet (its index in StyleSheets), class and the rule's text.
    int StyleSheet = -1;
    QString ClassName;
    QString CssText;
    // Set by "Pick StyleSheet" instead of a class: the editor links this sheet and shows the
    // dialog again.
    QString NewStyleSheet;
    bool Cancel = false;

    void ClearValues();
};

// frmFlashProperties. The check boxes travel as 1 or 0.
struct VANTRYHTMLEDITOR_EXPORT FlashPropertiesValues
{
    QString ImageDirectory;
    QString MovieURL;
    QString Quality;
    QString WindowMode;
    int Play = 1;
    int Loop = 1;
    int ShowMenu = 1;
    int DeviceFont = 0;
    int EmbedMovie = 0;
    QString BGColor;
    bool Cancel = false;

    void ClearValues();
};

struct ElementAttribute
{
    QString Name;
    QString Value;

    bool operator==(const ElementAttribute &) const = default;
};

// The attributes of the current element. Event-handler attributes (onclick ...) are text
// like any other; the design view never runs them.
struct VANTRYHTMLEDITOR_EXPORT ElementPropertiesValues
{
    QString TagName;
    QList<ElementAttribute> Attributes;
    bool Cancel = false;

    void ClearValues();
};

} // namespace Vantry

Q_DECLARE_METATYPE(Vantry::StyleSheetRule)
Q_DECLARE_METATYPE(Vantry::StyleSheetInfo)
