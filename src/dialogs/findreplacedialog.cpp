#include "dialogs/findreplacedialog.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace Vantry::Dialogs {

namespace {

QPushButton *button(const QString &caption, const char *objectName, QWidget *parent)
{
    auto *result = new QPushButton(caption, parent);
    result->setObjectName(QLatin1String(objectName));
    result->setAutoDefault(false);
    return result;
}

} // namespace

FindReplaceDialog::FindReplaceDialog(Platform::SearchTarget &target, QWidget *parent)
    : QDialog(parent)
    , m_target(target)
{
    setModal(false);

    m_find = new QLineEdit(this);
    m_find->setObjectName(QStringLiteral("txtFind"));
    m_replace = new QLineEdit(this);
    m_replace->setObjectName(QStringLiteral("txtReplace"));
    auto *findLabel = new QLabel(QStringLiteral("Find what:"), this);
    findLabel->setBuddy(m_find);
    m_replaceLabel = new QLabel(QStringLiteral("Replace with:"), this);
    m_replaceLabel->setBuddy(m_replace);
    m_matchCase = new QCheckBox(QStringLiteral("Match case"), this);
    m_matchCase->setObjectName(QStringLiteral("chkMatchCase"));
    m_wholeWord = new QCheckBox(QStringLiteral("Match whole word only"), this);
    m_wholeWord->setObjectName(QStringLiteral("chkWholeWord"));
    m_searchUp = new QCheckBox(QStringLiteral("Search up"), this);
    m_searchUp->setObjectName(QStringLiteral("chkSearchUp"));
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("lblStatus"));

    QPushButton *findButton = button(QStringLiteral("Find Next"), "cmdFindNext", this);
    findButton->setDefault(true);
    m_replaceButton = button(QStringLiteral("Replace"), "cmdReplace", this);
    m_replaceAllButton = button(QStringLiteral("Replace All"), "cmdReplaceAll", this);
    QPushButton *closeButton = button(QStringLiteral("Close"), "cmdClose", this);

    auto *fields = new QGridLayout;
    fields->addWidget(findLabel, 0, 0);
    fields->addWidget(m_find, 0, 1);
    fields->addWidget(m_replaceLabel, 1, 0);
    fields->addWidget(m_replace, 1, 1);
    fields->addWidget(m_matchCase, 2, 0, 1, 2);
    fields->addWidget(m_wholeWord, 3, 0, 1, 2);
    fields->addWidget(m_searchUp, 4, 0, 1, 2);
    fields->addWidget(m_status, 5, 0, 1, 2);
    fields->setRowStretch(6, 1);

    auto *buttons = new QVBoxLayout;
    buttons->addWidget(findButton);
    buttons->addWidget(m_replaceButton);
    buttons->addWidget(m_replaceAllButton);
    buttons->addWidget(closeButton);
    buttons->addStretch();

    auto *layout = new QHBoxLayout(this);
    layout->addLayout(fields, 1);
    layout->addLayout(buttons);

    connect(findButton, &QPushButton::clicked, this, &FindReplaceDialog::findNext);
    connect(m_replaceButton, &QPushButton::clicked, this, &FindReplaceDialog::replace);
    connect(m_replaceAllButton, &QPushButton::clicked, this, &FindReplaceDialog::replaceAll);
    connect(closeButton, &QPushButton::clicked, this, &QDialog::close);

    setReplaceMode(false);
}

void FindReplaceDialog::setReplaceMode(bool replace)
{
    m_replaceMode = replace && m_target.canReplace();
    setWindowTitle(m_replaceMode ? QStringLiteral("Replace") : QStringLiteral("Find"));
    for (QWidget *widget :
        {static_cast<QWidget *>(m_replaceLabel), static_cast<QWidget *>(m_replace),
            static_cast<QWidget *>(m_replaceButton), static_cast<QWidget *>(m_replaceAllButton)})
        widget->setVisible(m_replaceMode);
    m_status->clear();
    m_find->setFocus();
    m_find->selectAll();
}

void FindReplaceDialog::setFindText(const QString &text)
{
    m_find->setText(text);
}

QString FindReplaceDialog::statusText() const
{
    return m_status->text();
}

void FindReplaceDialog::report(bool found)
{
    m_status->setText(found ? QString() : QStringLiteral("The text was not found."));
}

Platform::SearchOptions FindReplaceDialog::options() const
{
    return {m_matchCase->isChecked(), m_wholeWord->isChecked(), m_searchUp->isChecked()};
}

void FindReplaceDialog::findNext()
{
    report(m_target.findNext(m_find->text(), options()));
}

void FindReplaceDialog::replace()
{
    report(m_target.replaceNext(m_find->text(), m_replace->text(), options()));
}

void FindReplaceDialog::replaceAll()
{
    // Everything is replaced, whichever way the search would go.
    const int count = m_target.replaceAll(m_find->text(), m_replace->text(), options());
    if (count == 0)
        report(false);
    else if (count == 1)
        m_status->setText(QStringLiteral("1 occurrence replaced."));
    else
        m_status->setText(QString::number(count) + QStringLiteral(" occurrences replaced."));
}

} // namespace Vantry::Dialogs
