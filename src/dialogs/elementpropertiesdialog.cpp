#include "dialogs/elementpropertiesdialog.h"

#include "dialogs/stylerules.h"

#include <VantryHTMLEditor/UserPrompts.h>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace Vantry::Dialogs {

namespace {

QString cellText(const QTableWidget *table, int row, int column)
{
    const QTableWidgetItem *item = table->item(row, column);
    return item ? item->text() : QString();
}

} // namespace

ElementPropertiesDialog::ElementPropertiesDialog(PromptsAccess prompts, QWidget *parent)
    : QDialog(parent)
    , m_prompts(std::move(prompts))
    , m_table(new QTableWidget(0, 2, this))
{
    setWindowTitle(QStringLiteral("Element Properties"));
    m_table->setHorizontalHeaderLabels({QStringLiteral("Attribute"), QStringLiteral("Value")});
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->verticalHeader()->hide();
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setColumnWidth(0, 140);

    auto *add = new QPushButton(QStringLiteral("&Add"), this);
    auto *remove = new QPushButton(QStringLiteral("&Remove"), this);
    for (QPushButton *button : {add, remove})
        button->setAutoDefault(false);
    connect(add, &QPushButton::clicked, this, &ElementPropertiesDialog::addAttribute);
    connect(remove, &QPushButton::clicked, this, &ElementPropertiesDialog::removeAttribute);
    auto *rowButtons = new QHBoxLayout;
    rowButtons->addWidget(add);
    rowButtons->addWidget(remove);
    rowButtons->addStretch();

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_table);
    layout->addLayout(rowButtons);
    layout->addWidget(okCancelButtons(this));
    resize(460, 360);
}

void ElementPropertiesDialog::setValues(const ElementPropertiesValues &values)
{
    m_values = values;
    setWindowTitle(QStringLiteral("Element Properties: ") + values.TagName);
    m_table->setRowCount(0);
    for (const ElementAttribute &attribute : values.Attributes) {
        const int row = m_table->rowCount();
        m_table->insertRow(row);
        m_table->setItem(row, 0, new QTableWidgetItem(attribute.Name));
        m_table->setItem(row, 1, new QTableWidgetItem(attribute.Value));
    }
}

ElementPropertiesValues ElementPropertiesDialog::values() const
{
    ElementPropertiesValues values = m_values;
    values.Attributes.clear();
    for (int row = 0; row < m_table->rowCount(); ++row) {
        const QString name = cellText(m_table, row, 0).trimmed();
        if (!name.isEmpty())
            values.Attributes.append({name, cellText(m_table, row, 1)});
    }
    values.Cancel = false;
    return values;
}

void ElementPropertiesDialog::addAttribute()
{
    const int row = m_table->rowCount();
    m_table->insertRow(row);
    m_table->setItem(row, 0, new QTableWidgetItem);
    m_table->setItem(row, 1, new QTableWidgetItem);
    m_table->setCurrentCell(row, 0);
    m_table->editItem(m_table->item(row, 0));
}

void ElementPropertiesDialog::removeAttribute()
{
    const int row = m_table->currentRow();
    if (row >= 0)
        m_table->removeRow(row);
}

void ElementPropertiesDialog::accept()
{
    for (int row = 0; row < m_table->rowCount(); ++row) {
        const QString name = cellText(m_table, row, 0).trimmed();
        if (!name.isEmpty() && !isAttributeName(name)) {
            m_prompts().information(
                QStringLiteral("\"%1\" is not a valid attribute name.").arg(name));
            m_table->setCurrentCell(row, 0);
            return;
        }
    }
    QDialog::accept();
}

} // namespace Vantry::Dialogs
