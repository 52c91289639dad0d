#pragma once

#include <VantryHTMLEditor/PageDialogValues.h>

#include <QList>
#include <QString>

#include <optional>

// The page-properties rules: which BODY attribute holds which value, and the orders in
// which the dialog is filled and its answer written. Qt Core only.
namespace Vantry::Dialogs {

struct PageField
{
    // The BODY attribute; empty for the document's title.
    QString attribute;
    QString PagePropertiesValues::*value;
};

// The order the dialog is filled in: "background", "bgColor", the title, "Text", "link",
// "vLink", "aLink", "leftMargin", "topMargin", "bottomMargin", "rightMargin".
QList<PageField> pageReadOrder();
// The order the answer is written in: "bgColor", "Text", "link", "vLink", "aLink",
// "leftMargin", "topMargin", "bottomMargin", "rightMargin", then "background" and the
// title, which are written last.
QList<PageField> pageWriteOrder();

// The BODY attributes the dialog reads, in reading order (the title left out).
QStringList pageReadAttributes();
// Fills values from the attributes read in that order, and the title.
void fillPageValues(PagePropertiesValues &values, const QList<std::optional<QString>> &attributes,
    const QString &title);

// One attribute of the answer; no value removes it.
struct PageEdit
{
    QString attribute;
    std::optional<QString> value;
};
// The answer's BODY attributes in writing order; an empty value removes its attribute.
// The title is written on its own.
QList<PageEdit> pageEdits(const PagePropertiesValues &values);

// The BODY attribute behind a clsDocumentProperties property ("DocumentLinkColor" is
// "link"); empty for DocumentTitle and for names that are none of the eleven.
QString documentPropertyAttribute(const QString &property);

} // namespace Vantry::Dialogs
