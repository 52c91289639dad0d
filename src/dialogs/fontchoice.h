#pragma once

#include <VantryHTMLEditor/UserPrompts.h>

#include <QColor>
#include <QString>

namespace Vantry::Dialogs {

using Vantry::FontChoice;

// The point size a dialog shows for an HTML font size, and back: the nearest HTML size.
int pointSizeForHtmlSize(int htmlSize);
int htmlSizeForPointSize(double points);

// A colour as the document's style reports it ("rgb(1, 2, 3)", "rgba(...)", "#abc", a
// name); invalid when it cannot be read.
QColor colorFromCss(const QString &text);

} // namespace Vantry::Dialogs
