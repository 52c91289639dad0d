#pragma once

#include "dialogs/dialogwidgets.h"

#include <VantryHTMLEditor/TableDialogValues.h>

#include <QDialog>

class QCheckBox;
class QComboBox;

namespace Vantry::Dialogs {

// TableCellProperties: the attributes of the cell around the selection.
class CellPropertiesDialog : public QDialog
{
public:
    CellPropertiesDialog(PromptsAccess prompts, QWidget *parent = nullptr);

    void setValues(const CellPropertiesValues &values);
    CellPropertiesValues values() const;

    NumberBox *width() const { return m_width; }
    QComboBox *widthUnit() const { return m_widthUnit; }
    NumberBox *height() const { return m_height; }
    QCheckBox *wrapText() const { return m_wrapText; }

private:
    CellPropertiesValues m_values;
    ColorField *m_bgColor;
    NumberBox *m_width;
    QComboBox *m_widthUnit;
    NumberBox *m_height;
    QComboBox *m_horizontalAlignment;
    QComboBox *m_verticalAlignment;
    NumberBox *m_colspan;
    NumberBox *m_rowspan;
    ColorField *m_borderColor;
    ColorField *m_borderHighlight;
    ColorField *m_borderShadow;
    QCheckBox *m_wrapText;
};

} // namespace Vantry::Dialogs
