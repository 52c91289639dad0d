#include "dialogs/inserttabledialog.h"

#include "dialogs/tablemarkup.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QVBoxLayout>

namespace Vantry::Dialogs {

InsertTableDialog::InsertTableDialog(PromptsAccess prompts, QWidget *parent)
    : QDialog(parent)
    , m_rows(new NumberBox(1, maxTableRows, this))
    , m_columns(new NumberBox(1, maxTableColumns, this))
    , m_borderSize(new NumberBox(0, 100, this))
    , m_cellPadding(new NumberBox(0, 100, this))
    , m_cellSpacing(new NumberBox(0, 100, this))
    , m_width(new NumberBox(0, 9999, this))
    , m_widthUnit(unitList(this))
    , m_height(new NumberBox(0, 9999, this))
    , m_heightUnit(unitList(this))
    , m_alignment(choiceList(
          {QStringLiteral("left"), QStringLiteral("center"), QStringLiteral("right")}, this))
    , m_borderColor(new ColorField(prompts, this))
    , m_bgColor(new ColorField(prompts, this))
    , m_bgImage(new FileField(prompts, QStringLiteral("Pick Background Image"), this))
    , m_alignmentCell(choiceList({QStringLiteral("left"), QStringLiteral("center"),
                                     QStringLiteral("right"), QStringLiteral("justify")},
          this))
    , m_borderColorCell(new ColorField(prompts, this))
    , m_bgColorCell(new ColorField(prompts, this))
    , m_wrapText(new QCheckBox(QStringLiteral("&Wrap text in cells"), this))
{
    setWindowTitle(QStringLiteral("Insert Table"));

    auto *table = new QGroupBox(QStringLiteral("Table"), this);
    auto *tableForm = new QFormLayout(table);
    tableForm->addRow(QStringLiteral("&Rows:"), m_rows);
    tableForm->addRow(QStringLiteral("C&olumns:"), m_columns);
    tableForm->addRow(QStringLiteral("&Border size:"), m_borderSize);
    tableForm->addRow(QStringLiteral("Cell &padding:"), m_cellPadding);
    tableForm->addRow(QStringLiteral("Cell &spacing:"), m_cellSpacing);
    tableForm->addRow(QStringLiteral("&Width:"), dimensionRow(m_width, m_widthUnit, table));
    tableForm->addRow(QStringLiteral("&Height:"), dimensionRow(m_height, m_heightUnit, table));
    tableForm->addRow(QStringLiteral("&Alignment:"), m_alignment);
    tableForm->addRow(QStringLiteral("Border &color:"), m_borderColor);
    tableForm->addRow(QStringLiteral("Back&ground color:"), m_bgColor);
    tableForm->addRow(QStringLiteral("Background &image:"), m_bgImage);

    auto *cells = new QGroupBox(QStringLiteral("Cells"), this);
    auto *cellForm = new QFormLayout(cells);
    cellForm->addRow(QStringLiteral("A&lignment:"), m_alignmentCell);
    cellForm->addRow(QStringLiteral("Bor&der color:"), m_borderColorCell);
    cellForm->addRow(QStringLiteral("Backgro&und color:"), m_bgColorCell);
    cellForm->addRow(m_wrapText);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(table);
    layout->addWidget(cells);
    QWidget *buttons = okCancelButtons(this);
    layout->addWidget(buttons);
    setTabChain({m_rows, m_columns, m_borderSize, m_cellPadding, m_cellSpacing, m_width,
        m_widthUnit, m_height, m_heightUnit, m_alignment, m_borderColor, m_bgColor, m_bgImage,
        m_alignmentCell, m_borderColorCell, m_bgColorCell, m_wrapText, buttons});
}

void InsertTableDialog::setValues(const InsertTableValues &values)
{
    m_values = values;
    m_rows->setText(values.Rows);
    m_columns->setText(values.Columns);
    m_borderSize->setText(values.BorderSize);
    m_cellPadding->setText(values.CellPadding);
    m_cellSpacing->setText(values.CellSpacing);
    showDimension(m_width, m_widthUnit, values.Width);
    showDimension(m_height, m_heightUnit, values.Height);
    showChoice(m_alignment, values.Alignment);
    m_borderColor->setText(values.BorderColor);
    m_bgColor->setText(values.BGColor);
    m_bgImage->setText(values.BGImage);
    m_bgImage->setDirectory(values.ImageDirectory);
    showChoice(m_alignmentCell, values.AlignmentCell);
    m_borderColorCell->setText(values.BorderColorCell);
    m_bgColorCell->setText(values.BGColorCell);
    m_wrapText->setChecked(values.WrapText);
}

InsertTableValues InsertTableDialog::values() const
{
    InsertTableValues values = m_values;
    values.BGImage = m_bgImage->text();
    values.Rows = m_rows->text();
    values.Columns = m_columns->text();
    values.BorderSize = m_borderSize->text();
    values.CellPadding = m_cellPadding->text();
    values.CellSpacing = m_cellSpacing->text();
    values.Width = collectDimension(m_width, m_widthUnit);
    values.Height = collectDimension(m_height, m_heightUnit);
    values.Alignment = m_alignment->currentText();
    values.BorderColor = m_borderColor->text();
    values.BGColor = m_bgColor->text();
    values.AlignmentCell = m_alignmentCell->currentText();
    values.BorderColorCell = m_borderColorCell->text();
    values.BGColorCell = m_bgColorCell->text();
    values.WrapText = m_wrapText->isChecked();
    values.Cancel = false;
    return values;
}

void InsertTableDialog::accept()
{
    if (!tablePartCount(m_rows->text(), maxTableRows)) {
        m_rows->setFocus();
        return;
    }
    if (!tablePartCount(m_columns->text(), maxTableColumns)) {
        m_columns->setFocus();
        return;
    }
    QDialog::accept();
}

} // namespace Vantry::Dialogs
