#pragma once

#include <VantryHTMLEditor/StyleDialogValues.h>

#include <QList>
#include <QString>

#include <optional>
#include <utility>

// Rules of the style, Flash and element-properties dialogs that need no document. Qt Core
// only.
namespace Vantry::Dialogs {

// The style text SetFilterOfCurrentElement writes, exactly as given:
// progid:DXImageTransform.Microsoft.Filter(Property).
QString filterText(const QString &filter, const QString &property);

// A style property as CSS names it: "backgroundColor" and "Filter" become
// "background-color" and "filter"; a name with dashes stays as it is, lower-cased.
QString cssPropertyName(const QString &name);
// The value of a property in a style attribute's text; empty when it is not there.
QString styleDeclaration(const QString &styleText, const QString &name);
// The style text with the property set to value, in place when it was there, else at the
// end; an empty value removes it. The value is kept as given, so that declarations the
// engine does not know (filter texts) survive.
QString withStyleDeclaration(const QString &styleText, const QString &name, const QString &value);

// A class of a style sheet and the text of the first rule that names it.
struct StyleClass
{
    QString name;
    QString cssText;

    bool operator==(const StyleClass &) const = default;
};
// Every class named by a selector of the rules, in order of first appearance.
QList<StyleClass> styleClasses(const QList<StyleSheetRule> &rules);
// A class attribute with the class added, unless it has it already.
QString withClass(const QString &classAttribute, const QString &className);

// Whether the name can be an attribute of an HTML element.
bool isAttributeName(const QString &name);
// What turns the attributes before into those after: a value to set, or nothing to remove.
// Names compare without case; of two rows with one name the last counts.
QList<std::pair<QString, std::optional<QString>>> attributeEdits(
    const QList<ElementAttribute> &before, const QList<ElementAttribute> &after);

// The OBJECT block a new Flash movie is pasted as: one line, the nineteen PARAM tags in
// their fixed order, values as they are.
QString flashObjectBlock(const FlashPropertiesValues &values);
// The PARAMs the dialog writes on an existing OBJECT, with their values; Src follows Movie.
QList<std::pair<QString, QString>> flashParams(const FlashPropertiesValues &values);
// The values filled from an OBJECT's PARAMs (names without case); others keep theirs.
void readFlashParams(
    const QList<std::pair<QString, QString>> &params, FlashPropertiesValues &values);

} // namespace Vantry::Dialogs
