#include "commands/tableflow.h"

#include "commands/commandtables.h"
#include "commands/selectionaccess.h"
#include "dialogs/dialogrules.h"
#include "dialogs/tablemarkup.h"
#include "platform/designsurface.h"

#include <VantryHTMLEditor/EditorDialogs.h>
#include <VantryHTMLEditor/UserPrompts.h>

#include <QDir>

namespace Vantry::Dialogs {

using Platform::DesignSurface;
using Platform::Element;

namespace {

QString folderPrefix(const QString &directory)
{
    if (directory.isEmpty() || directory.endsWith(QLatin1Char('/'))
        || directory.endsWith(QLatin1Char('\\')))
        return directory;
    return directory + QDir::separator();
}

QStringList attributeNames(const QList<TableField> &fields)
{
    QStringList names;
    for (const TableField &field : fields)
        names.append(QLatin1String(field.attribute));
    return names;
}

bool isDimension(const TableField &field)
{
    return field.styleProperty != nullptr;
}

// Reads the texts of fields into texts, widths and heights falling back to the style.
bool readFields(const TableFlow &flow, const Element &element, const QList<TableField> &fields,
    const QList<QString *> &texts, std::optional<QString> *extra)
{
    const DesignSurface::ElementFields read = flow.surface.elementFields(
        element, attributeNames(fields), {QStringLiteral("width"), QStringLiteral("height")});
    if (flow.surface.lastCallFailed() || read.attributes.size() != fields.size()
        || read.styles.size() != 2)
        return false;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const QString attribute = read.attributes.at(i).value_or(QString());
        const TableField &field = fields.at(i);
        if (isDimension(field)) {
            const bool width = qstrcmp(field.styleProperty, "width") == 0;
            *texts.at(i) = dimensionFromElement(attribute, read.styles.at(width ? 0 : 1));
        } else {
            *texts.at(i) = attribute;
        }
    }
    if (extra)
        *extra = read.attributes.value(texts.size());
    return true;
}

// Every text goes back to its attribute; an empty one, and a width or height of "0", is
// removed rather than left as an empty attribute.
QList<DesignSurface::FieldEdit> fieldEdits(
    const QList<TableField> &fields, const QList<QString *> &texts)
{
    QList<DesignSurface::FieldEdit> edits;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const TableField &field = fields.at(i);
        const QString &value = *texts.at(i);
        const QString name = QLatin1String(field.attribute);
        if (isDimension(field)) {
            const QString style = QLatin1String(field.styleProperty);
            const bool removed = dimensionRemoved(value);
            edits.append({style, removed ? QString() : cssLength(value), true});
            edits.append({name, removed ? std::nullopt : std::optional<QString>(value)});
        } else {
            edits.append({name, value.isEmpty() ? std::nullopt : std::optional<QString>(value)});
        }
    }
    return edits;
}

bool enclosing(const TableFlow &flow, const QStringList &tags, Element *element)
{
    for (const QString &tag : tags) {
        if (flow.selection.findSelectedElementByTag(tag)) {
            *element = flow.references.found;
            return true;
        }
    }
    return false;
}

} // namespace

bool askInsertTable(const TableFlow &flow, QVariant *parameters)
{
    InsertTableValues values;
    values.ImageDirectory = flow.imageDirectory;
    values.ImagePrefix = folderPrefix(flow.imageDirectory);
    values.ClearValues();
    // A start users can take as it is.
    values.Rows = QStringLiteral("2");
    values.Columns = QStringLiteral("2");
    values.BorderSize = QStringLiteral("1");
    values.CellPadding = QStringLiteral("2");
    values.CellSpacing = QStringLiteral("0");
    values.Width = QStringLiteral("100%");
    if (!flow.dialogs.insertTable(values) || values.Cancel)
        return false;

    const std::optional<int> rows = tablePartCount(values.Rows, Commands::maxTableRows);
    const std::optional<int> columns = tablePartCount(values.Columns, Commands::maxTableColumns);
    if (!rows || !columns) {
        flow.prompts.information(QStringLiteral("A table needs 1 to %1 rows and 1 to %2 columns.")
                                     .arg(Commands::maxTableRows)
                                     .arg(Commands::maxTableColumns));
        return false;
    }
    QString background = backgroundImagePath(values.ImagePrefix, values.BGImage);
    if (!background.isEmpty() && flow.placeImage) {
        background = flow.placeImage(background);
        // Placement said why it failed; no table without its background.
        if (background.isEmpty())
            return false;
    }
    *parameters
        = QVariantMap{{QStringLiteral("NumRows"), *rows}, {QStringLiteral("NumCols"), *columns},
            {QStringLiteral("TableAttrs"), insertTableAttributes(values, background)},
            {QStringLiteral("CellAttrs"), insertTableCellAttributes(values)}};
    return true;
}

bool editTableProperties(const TableFlow &flow)
{
    Element table;
    if (!enclosing(flow, {QStringLiteral("TABLE")}, &table))
        return false;
    TablePropertiesValues values;
    values.ClearValues();
    values.ImageDirectory = flow.imageDirectory;
    const QList<TableField> fields = tablePropertyFields();
    if (!readFields(flow, table, fields, tablePropertyTexts(values), nullptr))
        return false;
    if (!flow.dialogs.tableProperties(values) || values.Cancel)
        return false;
    return flow.surface.editElementFields(table, fieldEdits(fields, tablePropertyTexts(values)));
}

bool editCellProperties(const TableFlow &flow)
{
    Element cell;
    if (!enclosing(flow, {QStringLiteral("TD"), QStringLiteral("TH")}, &cell))
        return false;
    CellPropertiesValues values;
    values.ClearValues();
    const QList<TableField> fields = cellPropertyFields();
    std::optional<QString> noWrap;
    if (!readFields(flow, cell, fields, cellPropertyTexts(values), &noWrap))
        return false;
    // HTML writes the flag bare (nowrap, read as "" or as its own name).
    values.NoWrap = noWrap
        && (noWrap->isEmpty() || noWrap->compare(QLatin1String("nowrap"), Qt::CaseInsensitive) == 0
            || Commands::CheckBoolean(*noWrap));
    if (!flow.dialogs.cellProperties(values) || values.Cancel)
        return false;
    QList<DesignSurface::FieldEdit> edits = fieldEdits(fields, cellPropertyTexts(values));
    edits.append({QLatin1String(fields.last().attribute),
        values.NoWrap ? std::optional<QString>(QString()) : std::nullopt});
    return flow.surface.editElementFields(cell, edits);
}

} // namespace Vantry::Dialogs
