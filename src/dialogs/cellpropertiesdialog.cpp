#include "dialogs/cellpropertiesdialog.h"

#include "dialogs/dialogrules.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QVBoxLayout>

namespace Vantry::Dialogs {

CellPropertiesDialog::CellPropertiesDialog(PromptsAccess prompts, QWidget *parent)
    : QDialog(parent)
    , m_bgColor(new ColorField(prompts, this))
    , m_width(new NumberBox(0, 9999, this))
    , m_widthUnit(unitList(this))
    , m_height(new NumberBox(0, 9999, this))
    , m_horizontalAlignment(choiceList({QStringLiteral("left"), QStringLiteral("center"),
                                           QStringLiteral("right"), QStringLiteral("justify")},
          this))
    , m_verticalAlignment(choiceList({QStringLiteral("top"), QStringLiteral("middle"),
                                         QStringLiteral("bottom"), QStringLiteral("baseline")},
          this))
    , m_colspan(new NumberBox(1, 100, this))
    , m_rowspan(new NumberBox(1, 1000, this))
    , m_borderColor(new ColorField(prompts, this))
    , m_borderHighlight(new ColorField(prompts, this))
    , m_borderShadow(new ColorField(prompts, this))
    , m_wrapText(new QCheckBox(QStringLiteral("&No text wrapping"), this))
{
    setWindowTitle(QStringLiteral("Table Cell Properties"));

    auto *layoutBox = new QGroupBox(QStringLiteral("Layout"), this);
    auto *layoutForm = new QFormLayout(layoutBox);
    layoutForm->addRow(QStringLiteral("&Width:"), dimensionRow(m_width, m_widthUnit, layoutBox));
    layoutForm->addRow(QStringLiteral("&Height (pixels):"), m_height);
    layoutForm->addRow(QStringLiteral("Hori&zontal alignment:"), m_horizontalAlignment);
    layoutForm->addRow(QStringLiteral("&Vertical alignment:"), m_verticalAlignment);
    layoutForm->addRow(QStringLiteral("&Columns spanned:"), m_colspan);
    layoutForm->addRow(QStringLiteral("&Rows spanned:"), m_rowspan);
    layoutForm->addRow(m_wrapText);

    auto *colors = new QGroupBox(QStringLiteral("Colors"), this);
    auto *colorsForm = new QFormLayout(colors);
    colorsForm->addRow(QStringLiteral("Back&ground color:"), m_bgColor);
    colorsForm->addRow(QStringLiteral("Border c&olor:"), m_borderColor);
    colorsForm->addRow(QStringLiteral("Highligh&t:"), m_borderHighlight);
    colorsForm->addRow(QStringLiteral("Sha&dow:"), m_borderShadow);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(layoutBox);
    layout->addWidget(colors);
    QWidget *buttons = okCancelButtons(this);
    layout->addWidget(buttons);
    setTabChain({m_width, m_widthUnit, m_height, m_horizontalAlignment, m_verticalAlignment,
        m_colspan, m_rowspan, m_wrapText, m_bgColor, m_borderColor, m_borderHighlight,
        m_borderShadow, buttons});
    m_width->setFocus();
}

void CellPropertiesDialog::setValues(const CellPropertiesValues &values)
{
    m_values = values;
    m_bgColor->setText(values.BGColor);
    showDimension(m_width, m_widthUnit, values.Width);
    m_height->setText(values.Height);
    showChoice(m_horizontalAlignment, values.HorizontalAlignment);
    showChoice(m_verticalAlignment, values.VerticalAlignment);
    m_colspan->setText(values.ColSpan);
    m_rowspan->setText(values.RowSpan);
    m_borderColor->setText(values.BorderColor);
    m_borderHighlight->setText(values.BorderHighlight);
    m_borderShadow->setText(values.BorderShadow);
    m_wrapText->setCheckState(ConvertBooleanToNumber(values.NoWrap) ? Qt::Checked : Qt::Unchecked);
}

CellPropertiesValues CellPropertiesDialog::values() const
{
    CellPropertiesValues values = m_values;
    values.BGColor = m_bgColor->text();
    values.Width = collectDimension(m_width, m_widthUnit);
    values.Height = m_height->text();
    values.HorizontalAlignment = m_horizontalAlignment->currentText();
    values.VerticalAlignment = m_verticalAlignment->currentText();
    values.ColSpan = m_colspan->text();
    values.RowSpan = m_rowspan->text();
    values.BorderColor = m_borderColor->text();
    values.BorderHighlight = m_borderHighlight->text();
    values.BorderShadow = m_borderShadow->text();
    values.NoWrap = m_wrapText->isChecked();
    values.Cancel = false;
    return values;
}

} // namespace Vantry::Dialogs
