#include "commands/imageflow.h"

#include "commands/selectionaccess.h"
#include "dialogs/imagemarkup.h"
#include "platform/designsurface.h"

#include <VantryHTMLEditor/EditorDialogs.h>

#include <QFileInfo>

namespace Vantry::Dialogs {

using Platform::DesignSurface;
using Platform::Element;

namespace {

QString attributeText(const DesignSurface::ElementFields &fields, int index)
{
    return fields.attributes.value(index).value_or(QString());
}

// Fills values from the image; false when the document could not be read.
bool readImage(DesignSurface &surface, const Element &image, ImageDialogValues &values)
{
    const QStringList names{QStringLiteral("src"), QStringLiteral("width"),
        QStringLiteral("height"), QStringLiteral("vspace"), QStringLiteral("hspace"),
        QStringLiteral("align"), QStringLiteral("border"), QStringLiteral("alt"),
        QStringLiteral("onmouseover"), QStringLiteral("onmousedown"), QStringLiteral("onmouseout"),
        QStringLiteral("srcOver"), QStringLiteral("srcDown")};
    const DesignSurface::ElementFields fields
        = surface.elementFields(image, names, {QStringLiteral("width"), QStringLiteral("height")});
    if (surface.lastCallFailed() || fields.attributes.size() != names.size()
        || fields.styles.size() != 2)
        return false;
    values.Source = attributeText(fields, 0);
    values.Width = imageDimension(attributeText(fields, 1), fields.styles.at(0));
    values.Height = imageDimension(attributeText(fields, 2), fields.styles.at(1));
    values.VSpace = attributeText(fields, 3);
    values.HSpace = attributeText(fields, 4);
    values.Align = attributeText(fields, 5);
    values.Border = attributeText(fields, 6);
    values.Alt = attributeText(fields, 7);
    setRollOver(values,
        {attributeText(fields, 8), attributeText(fields, 9), attributeText(fields, 10),
            attributeText(fields, 11), attributeText(fields, 12)});
    return true;
}

// A path the user chose that names a file on this machine and is new to the image.
bool isNewLocalFile(const QString &path, const QString &before)
{
    if (path.isEmpty() || path == before)
        return false;
    QString file = path;
    file.remove(QStringLiteral("file://"), Qt::CaseInsensitive);
    return QFileInfo(file).isFile();
}

} // namespace

bool editImage(const TableFlow &flow)
{
    ImageDialogValues values;
    values.ImageDirectory = flow.imageDirectory;
    values.ClearValues();

    // The element the new markup replaces: the image, or its link when the link holds
    // nothing else; none for a new image.
    Element replaced;
    const bool control = flow.surface.selectionType() == Platform::SelectionType::Control;
    if (flow.surface.lastCallFailed())
        return false;
    if (control && flow.selection.findSelectedElementByTag(QStringLiteral("IMG"))) {
        const Element image = flow.references.found;
        if (!readImage(flow.surface, image, values))
            return false;
        replaced = image;
        if (flow.selection.findSelectedElementByTag(QStringLiteral("A"))) {
            const Element anchor = flow.references.found;
            const DesignSurface::ElementFields link = flow.surface.elementFields(
                anchor, {QStringLiteral("href"), QStringLiteral("target")}, {});
            if (flow.surface.lastCallFailed())
                return false;
            values.Hyperlink = attributeText(link, 0);
            values.Target = attributeText(link, 1);
            // A link around more than the image keeps the rest; the dialog then edits only
            // the image.
            if (flow.surface.innerHTML(anchor).trimmed() == flow.surface.outerHTML(image))
                replaced = anchor;
            else
                values.Hyperlink.clear();
        }
    }

    const ImageDialogValues before = values;
    if (!flow.dialogs.insertImage(values) || values.Cancel)
        return false;

    // Chosen files go where image placement puts them; a failed copy inserts nothing.
    QList<QString *> files{&values.Source};
    if (values.MouseOverOption == ImageDialogValues::RollOver::Image)
        files << &values.SourceOver << &values.SourceDown << &values.SourceOut;
    const QList<const QString *> originals{
        &before.Source, &before.SourceOver, &before.SourceDown, &before.SourceOut};
    for (qsizetype i = 0; i < files.size(); ++i) {
        if (!flow.placeImage || !isNewLocalFile(*files.at(i), *originals.at(i)))
            continue;
        *files.at(i) = flow.placeImage(*files.at(i));
        if (files.at(i)->isEmpty())
            return false;
    }

    const QString markup = imageDialogMarkup(values);
    if (!replaced.isNull())
        return flow.surface.setOuterHTML(replaced, markup);
    const Platform::TextRange range = flow.surface.selectionRange();
    if (flow.surface.lastCallFailed())
        return false;
    return flow.surface.pasteHTML(range, markup);
}

} // namespace Vantry::Dialogs
