#pragma once

#include <VantryHTMLEditor/ImageDialogValues.h>

#include <QString>
#include <QStringList>

#include <optional>

// The markup rules of the image dialog. Qt Core only.
namespace Vantry::Dialogs {

// The IMG tag of the dialog, with its link around it when there is one. VSPACE, ALIGN,
// SRC, BORDER and ALT are always written; HSPACE repeats VSPACE, as pages made with this
// dialog have always had it. A double quote inside a value is written as &quot; so that
// it cannot end the attribute.
QString imageDialogMarkup(const ImageDialogValues &values);

// The prefixes the hyperlink list offers, in its order.
QStringList linkPrefixes();
// An address split for the prefix list and the box: a known prefix (any case) is taken
// off and given in the list's spelling; any other address stays whole in the box.
struct SplitLink
{
    QString prefix;
    QString rest;
};
SplitLink splitLinkPrefix(const QString &address);
// The address collected from the list and the box: the box alone when it is empty or
// already starts with a known prefix (any case, as users type "HTTP://"), else the
// prefix in front.
QString joinLinkPrefix(const QString &prefix, const QString &text);

// The roll-over fields of an image read back: images when it has srcOver or srcDown, else
// scripts when it has a mouse handler, else none. Out images come from the "this.src='...'"
// of onmouseout, with their doubled backslashes undone.
struct RollOverAttributes
{
    QString onMouseOver;
    QString onMouseDown;
    QString onMouseOut;
    QString srcOver;
    QString srcDown;
};
void setRollOver(ImageDialogValues &values, const RollOverAttributes &attributes);

// A width or height read from an image: the attribute, else the style's length without
// "px"; anything but a whole number of pixels is kept as it is.
QString imageDimension(const QString &attribute, const QString &styleValue);

// The height that keeps the picture's proportions for a width (and the other way round,
// with the sizes swapped), rounded to the nearest pixel; nothing when a size is unknown.
std::optional<int> keptAspect(int changed, int pictureChanged, int pictureOther);

} // namespace Vantry::Dialogs
