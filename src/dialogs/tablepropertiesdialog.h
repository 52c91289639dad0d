#pragma once

#include "dialogs/dialogwidgets.h"

#include <VantryHTMLEditor/TableDialogValues.h>

#include <QDialog>

class QComboBox;

namespace Vantry::Dialogs {

// TableProperties: the attributes of the table around the selection.
class TablePropertiesDialog : public QDialog
{
public:
    TablePropertiesDialog(PromptsAccess prompts, QWidget *parent = nullptr);

    void setValues(const TablePropertiesValues &values);
    TablePropertiesValues values() const;

    ColorField *borderHighlight() const { return m_borderHighlight; }
    ColorField *borderShadow() const { return m_borderShadow; }
    NumberBox *width() const { return m_width; }
    QComboBox *widthUnit() const { return m_widthUnit; }

private:
    TablePropertiesValues m_values;
    ColorField *m_bgColor;
    FileField *m_bgImage;
    NumberBox *m_height;
    QComboBox *m_heightUnit;
    NumberBox *m_width;
    QComboBox *m_widthUnit;
    QComboBox *m_alignment;
    NumberBox *m_cellSpacing;
    NumberBox *m_cellPadding;
    NumberBox *m_size;
    ColorField *m_borderColor;
    ColorField *m_borderHighlight;
    ColorField *m_borderShadow;
};

} // namespace Vantry::Dialogs
