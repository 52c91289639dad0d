#include "commands/styleflow.h"

#include "commands/selectionaccess.h"
#include "dialogs/stylerules.h"
#include "platform/designsurface.h"

#include <VantryHTMLEditor/EditorDialogs.h>
#include <VantryHTMLEditor/UserPrompts.h>

namespace Vantry::Dialogs {

using Platform::DesignSurface;
using Platform::Element;

namespace {

// The element a style change applies to: the selected control or the element around
// selected text; none for a bare caret.
Element styledElement(const TableFlow &flow)
{
    const Platform::SelectionType type = flow.surface.selectionType();
    if (flow.surface.lastCallFailed() || type == Platform::SelectionType::None)
        return {};
    if (type == Platform::SelectionType::Text) {
        const Platform::TextRange range = flow.surface.selectionRange();
        if (flow.surface.lastCallFailed() || flow.surface.rangeText(range).isEmpty())
            return {};
    }
    return flow.selection.selectedElement();
}

bool setAttributeText(
    const TableFlow &flow, const Element &element, const QString &name, const QString &value)
{
    return flow.surface.editElementFields(
        element, {{name, value.isEmpty() ? std::nullopt : std::optional<QString>(value)}});
}

} // namespace

QString currentElementStyle(const TableFlow &flow, const QString &name)
{
    const Element element = flow.selection.selectedElement();
    if (element.isNull())
        return {};
    const QString style = flow.surface.attribute(element, QStringLiteral("style"));
    return flow.surface.lastCallFailed() ? QString() : styleDeclaration(style, name);
}

bool setCurrentElementStyle(const TableFlow &flow, const QString &name, const QString &value)
{
    if (cssPropertyName(name).isEmpty())
        return false;
    const Element element = styledElement(flow);
    if (element.isNull())
        return false;
    const QString style = flow.surface.attribute(element, QStringLiteral("style"));
    if (flow.surface.lastCallFailed())
        return false;
    return setAttributeText(
        flow, element, QStringLiteral("style"), withStyleDeclaration(style, name, value));
}

bool selectStyle(const TableFlow &flow)
{
    const Element element = flow.selection.selectedElement();
    if (element.isNull())
        return false;
    SelectStyleValues values;
    values.ClearValues();
    values.ImageDirectory = flow.imageDirectory;
    bool linked = false;
    QString picked;
    for (;;) {
        values.StyleSheets = flow.surface.styleSheets();
        if (flow.surface.lastCallFailed())
            return linked;
        for (const StyleSheetInfo &sheet : std::as_const(values.StyleSheets)) {
            if (!picked.isEmpty() && sheet.href == picked)
                values.StyleSheet = sheet.index;
        }
        if (!flow.dialogs.selectStyle(values) || values.Cancel)
            return linked;
        if (values.NewStyleSheet.isEmpty())
            break;
        if (!flow.surface.addStyleSheet(values.NewStyleSheet))
            return linked;
        linked = true;
        picked = values.NewStyleSheet;
        values.ClearValues();
    }
    if (values.ClassName.isEmpty())
        return linked;
    if (values.ClassName.contains(QLatin1Char(' '))) {
        flow.prompts.information(
            QStringLiteral("\"%1\" is not a class name; the element keeps its classes.")
                .arg(values.ClassName));
        return linked;
    }
    const QString classes = flow.surface.attribute(element, QStringLiteral("class"));
    if (flow.surface.lastCallFailed())
        return linked;
    const QString wanted = withClass(classes, values.ClassName);
    if (wanted == classes)
        return linked;
    return setAttributeText(flow, element, QStringLiteral("class"), wanted) || linked;
}

bool editFlashProperties(const TableFlow &flow)
{
    FlashPropertiesValues values;
    values.ClearValues();
    values.ImageDirectory = flow.imageDirectory;
    Element object;
    if (flow.selection.findSelectedElementByTag(QStringLiteral("OBJECT"))) {
        object = flow.references.found;
        const QList<std::pair<QString, QString>> params = flow.surface.objectParams(object);
        if (flow.surface.lastCallFailed())
            return false;
        readFlashParams(params, values);
    } else {
        values.Quality = QStringLiteral("high");
        values.WindowMode = QStringLiteral("window");
    }
    if (!flow.dialogs.flashProperties(values) || values.Cancel)
        return false;
    if (!values.MovieURL.isEmpty() && flow.placeImage) {
        values.MovieURL = flow.placeImage(values.MovieURL);
        // Placement said why it failed.
        if (values.MovieURL.isEmpty())
            return false;
    }
    if (!object.isNull())
        return flow.surface.setObjectParams(object, flashParams(values));
    // A selected control gives way to the movie; otherwise the movie takes the place of the
    // selected text in one paste, so that one undo brings the text back.
    const Platform::SelectionType type = flow.surface.selectionType();
    if (flow.surface.lastCallFailed())
        return false;
    if (type == Platform::SelectionType::Control) {
        flow.selection.replaceSelection(flashObjectBlock(values));
        return !flow.surface.lastCallFailed();
    }
    const Platform::TextRange range = flow.surface.selectionRange();
    return !flow.surface.lastCallFailed()
        && flow.surface.pasteHTML(range, flashObjectBlock(values));
}

bool editElementProperties(const TableFlow &flow)
{
    const Element element = flow.selection.selectedElement();
    if (element.isNull())
        return false;
    const DesignSurface::AttributeList read = flow.surface.elementAttributes(element);
    if (flow.surface.lastCallFailed())
        return false;
    ElementPropertiesValues values;
    values.ClearValues();
    values.TagName = read.tagName;
    for (const auto &[name, value] : read.attributes)
        values.Attributes.append({name, value});
    const QList<ElementAttribute> before = values.Attributes;
    if (!flow.dialogs.elementProperties(values) || values.Cancel)
        return false;
    for (const ElementAttribute &attribute : std::as_const(values.Attributes)) {
        const QString name = attribute.Name.trimmed();
        if (!name.isEmpty() && !isAttributeName(name)) {
            flow.prompts.information(
                QStringLiteral("\"%1\" is not a valid attribute name; nothing was changed.")
                    .arg(name));
            return false;
        }
    }
    QList<DesignSurface::FieldEdit> edits;
    for (const auto &[name, value] : attributeEdits(before, values.Attributes))
        edits.append({name, value});
    return !edits.isEmpty() && flow.surface.editElementFields(element, edits);
}

} // namespace Vantry::Dialogs
