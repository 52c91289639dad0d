#pragma once

#include <VantryHTMLEditor/EditorDialogs.h>

#include <QDialog>
#include <QEventLoop>

#include <optional>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace Vantry::Dialogs {

// The spelling dialog: the misspelt word in its sentence, the suggestions and a box for the
// replacement, the dictionary in use, and the buttons of the walk. It stays open from word
// to word; each question waits in a local loop for the user's button.
class SpellingDialog : public QDialog
{
    Q_OBJECT

public:
    explicit SpellingDialog(QWidget *parent);
    ~SpellingDialog() override;

    EditorDialogs::SpellingAnswer ask(const EditorDialogs::SpellingQuestion &question);

protected:
    void reject() override;

private:
    using Action = EditorDialogs::SpellingAnswer::Action;
    void answer(Action action);
    void settle(const EditorDialogs::SpellingAnswer &answer);
    QPushButton *addButton(const QString &text, Action action);

    QLabel *m_sentence = nullptr;
    QLineEdit *m_replacement = nullptr;
    QListWidget *m_suggestions = nullptr;
    QComboBox *m_dictionaries = nullptr;
    QPushButton *m_undo = nullptr;
    QPushButton *m_change = nullptr;
    QPushButton *m_changeAll = nullptr;
    QEventLoop *m_loop = nullptr;
    std::optional<EditorDialogs::SpellingAnswer> *m_pending = nullptr;
};

} // namespace Vantry::Dialogs
