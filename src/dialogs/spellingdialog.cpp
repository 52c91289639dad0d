#include "dialogs/spellingdialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace Vantry::Dialogs {

SpellingDialog::SpellingDialog(QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Spelling"));
    setWindowModality(Qt::ApplicationModal);

    m_sentence = new QLabel(this);
    m_sentence->setTextFormat(Qt::RichText);
    m_sentence->setWordWrap(true);
    m_sentence->setMinimumWidth(360);
    m_sentence->setFrameShape(QFrame::StyledPanel);
    m_replacement = new QLineEdit(this);
    m_suggestions = new QListWidget(this);
    m_dictionaries = new QComboBox(this);

    auto *grid = new QGridLayout;
    grid->addWidget(new QLabel(QStringLiteral("Not in the dictionary:"), this), 0, 0);
    grid->addWidget(m_sentence, 1, 0);
    grid->addWidget(new QLabel(QStringLiteral("Change to:"), this), 2, 0);
    grid->addWidget(m_replacement, 3, 0);
    grid->addWidget(new QLabel(QStringLiteral("Suggestions:"), this), 4, 0);
    grid->addWidget(m_suggestions, 5, 0);
    grid->addWidget(new QLabel(QStringLiteral("Dictionary:"), this), 6, 0);
    grid->addWidget(m_dictionaries, 7, 0);

    auto *buttons = new QVBoxLayout;
    auto *column = new QWidget(this);
    column->setLayout(buttons);
    grid->addWidget(column, 0, 1, 8, 1, Qt::AlignTop);
    const auto add = [this, buttons](const QString &text, Action action) {
        QPushButton *button = addButton(text, action);
        buttons->addWidget(button);
        return button;
    };
    add(QStringLiteral("&Ignore"), Action::Ignore);
    add(QStringLiteral("I&gnore All"), Action::IgnoreAll);
    add(QStringLiteral("&Add to Dictionary"), Action::AddToDictionary);
    m_change = add(QStringLiteral("&Change"), Action::Change);
    m_changeAll = add(QStringLiteral("Change A&ll"), Action::ChangeAll);
    m_undo = add(QStringLiteral("&Undo Last"), Action::UndoLast);
    buttons->addStretch();
    add(QStringLiteral("Close"), Action::Cancel);
    setLayout(grid);

    connect(m_suggestions, &QListWidget::currentTextChanged, m_replacement, &QLineEdit::setText);
    connect(m_suggestions, &QListWidget::itemActivated, this, [this] { answer(Action::Change); });
    connect(m_replacement, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_change->setEnabled(!text.isEmpty());
        m_changeAll->setEnabled(!text.isEmpty());
    });
    connect(m_dictionaries, &QComboBox::activated, this, [this] {
        settle({Action::SwitchDictionary, m_dictionaries->currentText()});
    });
}

SpellingDialog::~SpellingDialog() = default;

QPushButton *SpellingDialog::addButton(const QString &text, Action action)
{
    auto *button = new QPushButton(text, this);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, action] { answer(action); });
    return button;
}

void SpellingDialog::answer(Action action)
{
    settle({action, m_replacement->text()});
}

void SpellingDialog::settle(const EditorDialogs::SpellingAnswer &answer)
{
    if (!m_pending)
        return;
    *m_pending = answer;
    m_loop->quit();
}

void SpellingDialog::reject()
{
    answer(Action::Cancel);
}

EditorDialogs::SpellingAnswer SpellingDialog::ask(const EditorDialogs::SpellingQuestion &question)
{
    const QString before = question.sentence.left(question.wordStart).toHtmlEscaped();
    const QString word = question.sentence.mid(question.wordStart, question.word.size());
    const QString after
        = question.sentence.mid(question.wordStart + question.word.size()).toHtmlEscaped();
    m_sentence->setText(before + QLatin1String("<b><font color=\"#c00000\">") + word.toHtmlEscaped()
        + QLatin1String("</font></b>") + after);
    m_suggestions->clear();
    m_suggestions->addItems(question.suggestions);
    m_replacement->setText(question.suggestions.value(0, question.word));
    if (!question.suggestions.isEmpty())
        m_suggestions->setCurrentRow(0);
    m_dictionaries->clear();
    m_dictionaries->addItems(question.dictionaries);
    m_dictionaries->setCurrentText(question.dictionary);
    m_undo->setEnabled(question.canUndo);
    m_change->setDefault(true);

    if (!isVisible())
        show();
    raise();
    activateWindow();
    // The dialog may go with its window while the loop runs: the answer lives out here.
    std::optional<EditorDialogs::SpellingAnswer> result;
    QEventLoop loop;
    m_pending = &result;
    m_loop = &loop;
    const QPointer<SpellingDialog> self(this);
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    while (!result && self)
        loop.exec();
    if (!self)
        return {};
    m_pending = nullptr;
    m_loop = nullptr;
    return *result;
}

} // namespace Vantry::Dialogs
