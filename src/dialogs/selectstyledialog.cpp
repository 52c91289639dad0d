#include "dialogs/selectstyledialog.h"

#include <VantryHTMLEditor/UserPrompts.h>

#include <QComboBox>
#include <QFormLayout>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace Vantry::Dialogs {

namespace {

QString sheetCaption(const StyleSheetInfo &sheet)
{
    QString caption = sheet.href.isEmpty()
        ? QStringLiteral("Embedded style sheet %1").arg(sheet.index + 1)
        : sheet.href;
    if (!sheet.rulesReadable)
        caption += QStringLiteral(" (rules not readable)");
    return caption;
}

} // namespace

SelectStyleDialog::SelectStyleDialog(PromptsAccess prompts, QWidget *parent)
    : QDialog(parent)
    , m_prompts(std::move(prompts))
    , m_styleSheets(new QComboBox(this))
    , m_classes(new QListWidget(this))
    , m_cssText(new QPlainTextEdit(this))
{
    setWindowTitle(QStringLiteral("Select Style"));
    m_styleSheets->setObjectName(QStringLiteral("cboStyleSheets"));
    m_classes->setObjectName(QStringLiteral("lstClasses"));
    m_cssText->setObjectName(QStringLiteral("txtCssText"));
    m_cssText->setReadOnly(true);
    m_cssText->setMaximumHeight(90);
    auto *pick = new QPushButton(QStringLiteral("Pick StyleSheet"), this);
    pick->setAutoDefault(false);
    connect(pick, &QPushButton::clicked, this, &SelectStyleDialog::pickStyleSheet);
    connect(m_styleSheets, &QComboBox::currentIndexChanged, this, &SelectStyleDialog::showSheet);
    connect(m_classes, &QListWidget::currentRowChanged, this, &SelectStyleDialog::showClass);
    connect(m_classes, &QListWidget::itemDoubleClicked, this, &QDialog::accept);

    auto *form = new QFormLayout;
    form->addRow(QStringLiteral("&Style sheet:"), m_styleSheets);
    form->addRow(QString(), pick);
    form->addRow(QStringLiteral("C&lasses:"), m_classes);
    form->addRow(QStringLiteral("&Rule:"), m_cssText);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    QWidget *buttons = okCancelButtons(this);
    buttons->setObjectName(QStringLiteral("cmdButton"));
    layout->addWidget(buttons);
    setTabChain({m_styleSheets, pick, m_classes, m_cssText, buttons});
    resize(460, 380);
}

void SelectStyleDialog::setValues(const SelectStyleValues &values)
{
    m_values = values;
    const QSignalBlocker blocker(m_styleSheets);
    m_styleSheets->clear();
    for (const StyleSheetInfo &sheet : values.StyleSheets)
        m_styleSheets->addItem(sheetCaption(sheet));
    const int index = values.StyleSheet >= 0 && values.StyleSheet < m_styleSheets->count()
        ? values.StyleSheet
        : 0;
    m_styleSheets->setCurrentIndex(index);
    showSheet(index);
    const auto chosen = std::find_if(m_shownClasses.cbegin(), m_shownClasses.cend(),
        [&values](const StyleClass &c) { return c.name == values.ClassName; });
    if (chosen != m_shownClasses.cend())
        m_classes->setCurrentRow(int(chosen - m_shownClasses.cbegin()));
}

SelectStyleValues SelectStyleDialog::values() const
{
    SelectStyleValues values = m_values;
    values.StyleSheet = m_styleSheets->currentIndex();
    const int row = m_classes->currentRow();
    values.ClassName = row >= 0 ? m_shownClasses.at(row).name : QString();
    values.CssText = m_cssText->toPlainText();
    values.Cancel = false;
    return values;
}

void SelectStyleDialog::pickStyleSheet()
{
    const QString picked = m_prompts().openFileName(QStringLiteral("Pick StyleSheet"),
        QStringLiteral("Style Sheets (*.css);;All Files (*)"), m_values.ImageDirectory);
    if (picked.isEmpty())
        return;
    m_values.NewStyleSheet = picked;
    accept();
}

void SelectStyleDialog::showSheet(int index)
{
    m_shownClasses = index >= 0 && index < m_values.StyleSheets.size()
        ? styleClasses(m_values.StyleSheets.at(index).rules)
        : QList<StyleClass>();
    const QSignalBlocker blocker(m_classes);
    m_classes->clear();
    for (const StyleClass &c : std::as_const(m_shownClasses))
        m_classes->addItem(QLatin1Char('.') + c.name);
    m_cssText->clear();
}

void SelectStyleDialog::showClass(int row)
{
    m_cssText->setPlainText(row >= 0 ? m_shownClasses.at(row).cssText : QString());
}

} // namespace Vantry::Dialogs
