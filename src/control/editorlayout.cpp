#include "control/editorlayout.h"

#include <QtMath>

#include <algorithm>

namespace Vantry::Control {

LayoutResult computeLayout(const LayoutInput &input)
{
    LayoutResult result;
    const int width = std::max(0, input.size.width());
    int top = 0;
    if (input.toolbarsVisible) {
        for (std::size_t i = 0; i < input.rowHeights.size(); ++i) {
            const int height = std::max(0, input.rowHeights[i]);
            result.rows[i] = QRect(0, top, width, height);
            top += height;
        }
    }
    if (input.tabStripVisible) {
        result.tabStrip = QRect(0, top, width, std::max(0, input.tabStripHeight));
        top += result.tabStrip.height();
    }
    const int left = std::max(0, input.size.height() - top);
    const int panelWidth = input.displayWidth > 0 ? input.displayWidth : width;
    const int panelHeight = input.displayHeight > 0 ? input.displayHeight : left;
    result.editingPanel = QRect(0, top, panelWidth, panelHeight);
    return result;
}

} // namespace Vantry::Control
