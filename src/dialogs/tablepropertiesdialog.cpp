#include "dialogs/tablepropertiesdialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QVBoxLayout>

namespace Vantry::Dialogs {

TablePropertiesDialog::TablePropertiesDialog(PromptsAccess prompts, QWidget *parent)
    : QDialog(parent)
    , m_bgColor(new ColorField(prompts, this))
    , m_bgImage(new FileField(prompts, QStringLiteral("Pick Background Image"), this))
    , m_height(new NumberBox(0, 9999, this))
    , m_heightUnit(unitList(this))
    , m_width(new NumberBox(0, 9999, this))
    , m_widthUnit(unitList(this))
    , m_alignment(choiceList(
          {QStringLiteral("left"), QStringLiteral("center"), QStringLiteral("right")}, this))
    , m_cellSpacing(new NumberBox(0, 100, this))
    , m_cellPadding(new NumberBox(0, 100, this))
    , m_size(new NumberBox(0, 100, this))
    , m_borderColor(new ColorField(prompts, this))
    , m_borderHighlight(new ColorField(prompts, this))
    , m_borderShadow(new ColorField(prompts, this))
{
    setWindowTitle(QStringLiteral("Table Properties"));

    auto *layoutBox = new QGroupBox(QStringLiteral("Layout"), this);
    auto *layoutForm = new QFormLayout(layoutBox);
    layoutForm->addRow(QStringLiteral("&Width:"), dimensionRow(m_width, m_widthUnit, layoutBox));
    layoutForm->addRow(QStringLiteral("&Height:"), dimensionRow(m_height, m_heightUnit, layoutBox));
    layoutForm->addRow(QStringLiteral("&Alignment:"), m_alignment);
    layoutForm->addRow(QStringLiteral("Cell &spacing:"), m_cellSpacing);
    layoutForm->addRow(QStringLiteral("Cell &padding:"), m_cellPadding);

    auto *background = new QGroupBox(QStringLiteral("Background"), this);
    auto *backgroundForm = new QFormLayout(background);
    backgroundForm->addRow(QStringLiteral("Back&ground color:"), m_bgColor);
    backgroundForm->addRow(QStringLiteral("Background &image:"), m_bgImage);

    auto *borders = new QGroupBox(QStringLiteral("Borders"), this);
    auto *bordersForm = new QFormLayout(borders);
    bordersForm->addRow(QStringLiteral("Si&ze:"), m_size);
    bordersForm->addRow(QStringLiteral("Border &color:"), m_borderColor);
    bordersForm->addRow(QStringLiteral("Highligh&t:"), m_borderHighlight);
    bordersForm->addRow(QStringLiteral("Sha&dow:"), m_borderShadow);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(layoutBox);
    layout->addWidget(background);
    layout->addWidget(borders);
    QWidget *buttons = okCancelButtons(this);
    layout->addWidget(buttons);
    setTabChain({m_width, m_widthUnit, m_height, m_heightUnit, m_alignment, m_cellSpacing,
        m_cellPadding, m_bgColor, m_bgImage, m_size, m_borderColor, m_borderHighlight,
        m_borderShadow, buttons});
    m_width->setFocus();
}

void TablePropertiesDialog::setValues(const TablePropertiesValues &values)
{
    m_values = values;
    m_bgColor->setText(values.BGColor);
    m_bgImage->setText(values.BGImage);
    m_bgImage->setDirectory(values.ImageDirectory);
    showDimension(m_height, m_heightUnit, values.Height);
    showDimension(m_width, m_widthUnit, values.Width);
    showChoice(m_alignment, values.Alignment);
    m_cellSpacing->setText(values.CellSpacing);
    m_cellPadding->setText(values.CellPadding);
    m_size->setText(values.BorderSize);
    m_borderColor->setText(values.BorderColor);
    m_borderHighlight->setText(values.BorderHighlight);
    m_borderShadow->setText(values.BorderShadow);
}

TablePropertiesValues TablePropertiesDialog::values() const
{
    TablePropertiesValues values = m_values;
    values.BGColor = m_bgColor->text();
    values.BGImage = m_bgImage->text();
    values.Height = collectDimension(m_height, m_heightUnit);
    values.Width = collectDimension(m_width, m_widthUnit);
    values.Alignment = m_alignment->currentText();
    values.CellSpacing = m_cellSpacing->text();
    values.CellPadding = m_cellPadding->text();
    values.BorderSize = m_size->text();
    values.BorderColor = m_borderColor->text();
    values.BorderHighlight = m_borderHighlight->text();
    values.BorderShadow = m_borderShadow->text();
    values.Cancel = false;
    return values;
}

} // namespace Vantry::Dialogs
