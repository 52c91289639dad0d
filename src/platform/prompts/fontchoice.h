#pragma once

#include <QColor>
#include <QString>

namespace Vantry::Platform {

// What the font dialog shows and returns. Empty or invalid members stand for "not one
// value": the selection mixes faces, sizes or colours, or the user left them alone.
struct FontChoice
{
    QString family;
    // The HTML font size, 1 to 7; 0 when unknown.
    int htmlSize = 0;
    QColor color;
    bool bold = false;
    bool italic = false;
    bool underline = false;

    bool operator==(const FontChoice &) const = default;
};

// The point size a dialog shows for an HTML font size, and back: the nearest HTML size.
int pointSizeForHtmlSize(int htmlSize);
int htmlSizeForPointSize(double points);

// A colour as the document's style reports it ("rgb(1, 2, 3)", "rgba(...)", "#abc", a
// name); invalid when it cannot be read.
QColor colorFromCss(const QString &text);

} // namespace Vantry::Platform
