#pragma once

#include "commands/toolbarmodel.h"

#include <QRect>
#include <QSize>

#include <array>

namespace Vantry::Control {

// Geometry of the editor's children: the toolbar rows stacked at the top, the tab strip
// under them, the editing panel taking what is left. Hidden parts give their room to the
// editing panel.
struct LayoutInput
{
    QSize size; // the editor's own size
    std::array<int, 3> rowHeights{}; // toolbar rows, top to bottom
    bool toolbarsVisible = true;
    bool tabStripVisible = true;
    int tabStripHeight = 0;
    int displayWidth = 0; // SetDisplayWidth; 0 = the editor's width
    int displayHeight = 0; // SetDisplayHeight; 0 = whatever is left
};

struct LayoutResult
{
    std::array<QRect, 3> rows;
    QRect tabStrip;
    QRect editingPanel;
};

LayoutResult computeLayout(const LayoutInput &input);

using Commands::twipsToPixels;

} // namespace Vantry::Control
