#pragma once

#include "dialogs/dialogwidgets.h"

#include <VantryHTMLEditor/TableDialogValues.h>

#include <QDialog>

class QCheckBox;
class QComboBox;

namespace Vantry::Dialogs {

// frmInsertTable: the shape and look of a new table.
class InsertTableDialog : public QDialog
{
public:
    InsertTableDialog(PromptsAccess prompts, QWidget *parent = nullptr);

    void setValues(const InsertTableValues &values);
    // What OK collects, units applied; Cancel stays false.
    InsertTableValues values() const;
    // Stays open while the row or column count is not a count the table can have.
    void accept() override;

    NumberBox *rows() const { return m_rows; }
    NumberBox *columns() const { return m_columns; }
    NumberBox *width() const { return m_width; }
    NumberBox *height() const { return m_height; }
    QComboBox *widthUnit() const { return m_widthUnit; }
    QComboBox *heightUnit() const { return m_heightUnit; }
    FileField *backgroundImage() const { return m_bgImage; }

private:
    InsertTableValues m_values;
    NumberBox *m_rows;
    NumberBox *m_columns;
    NumberBox *m_borderSize;
    NumberBox *m_cellPadding;
    NumberBox *m_cellSpacing;
    NumberBox *m_width;
    QComboBox *m_widthUnit;
    NumberBox *m_height;
    QComboBox *m_heightUnit;
    QComboBox *m_alignment;
    ColorField *m_borderColor;
    ColorField *m_bgColor;
    FileField *m_bgImage;
    QComboBox *m_alignmentCell;
    ColorField *m_borderColorCell;
    ColorField *m_bgColorCell;
    QCheckBox *m_wrapText;
};

} // namespace Vantry::Dialogs
