#pragma once

#include <QLineEdit>
#include <QWidget>

#include <functional>

class QComboBox;
class QDialog;
class QToolButton;

namespace Vantry {
class UserPrompts;
} // namespace Vantry

// Controls every property dialog builds on.
namespace Vantry::Dialogs {

using PromptsAccess = std::function<UserPrompts &()>;

// A number box with its up-down arrows. Typed characters pass CheckEnterNumber; keys that
// type nothing (Delete, the arrows, Tab, Enter) work as usual. Up, Down, the wheel and the
// arrows step within the range; an empty box steps from nothing to the minimum.
class NumberBox : public QWidget
{
public:
    explicit NumberBox(int minimum, int maximum, QWidget *parent = nullptr);

    QString text() const;
    void setText(const QString &text);
    void stepBy(int steps);
    QLineEdit *lineEdit() const { return m_edit; }

private:
    QLineEdit *m_edit;
    int m_minimum;
    int m_maximum;
};

// An editable colour list with its button: the button shows the colour picker (PickColor)
// and puts the colour, or nothing when the user cancels, in place of the text.
class ColorField : public QWidget
{
public:
    ColorField(PromptsAccess prompts, QWidget *parent = nullptr);

    QString text() const;
    void setText(const QString &text);
    void pickColor();
    QComboBox *comboBox() const { return m_combo; }

private:
    PromptsAccess m_prompts;
    QComboBox *m_combo;
};

// A file name box with its button, which shows the file picker under its title.
class FileField : public QWidget
{
public:
    FileField(PromptsAccess prompts, const QString &pickerTitle, QWidget *parent = nullptr);

    QString text() const { return m_edit->text(); }
    void setText(const QString &text) { m_edit->setText(text); }
    // Where the picker opens.
    void setDirectory(const QString &directory) { m_directory = directory; }
    // The picker's file types; images unless set.
    void setFilter(const QString &filter) { m_filter = filter; }
    void pickFile();

private:
    PromptsAccess m_prompts;
    QString m_title;
    QString m_directory;
    QString m_filter;
    QLineEdit *m_edit;
};

// A unit list: "percent", then "pixels"; percent selected.
QComboBox *unitList(QWidget *parent);
// A width or height shown in its box and unit list (an empty one leaves the unit as it
// is), and collected from them.
void showDimension(NumberBox *box, QComboBox *units, const QString &value);
QString collectDimension(const NumberBox *box, const QComboBox *units);
// A box and its unit list side by side.
QWidget *dimensionRow(NumberBox *box, QComboBox *units, QWidget *parent);
// A fixed list with an empty first entry; a value from the document that is not among
// the entries is added, so that it comes back unchanged.
QComboBox *choiceList(const QStringList &entries, QWidget *parent);
void showChoice(QComboBox *list, const QString &value);
// Tab goes through the fields in this order (into their boxes and buttons), then to OK
// and Cancel.
void setTabChain(const QList<QWidget *> &fields);
// OK and Cancel at the foot of a dialog, OK the default. Closing the window is Cancel.
QWidget *okCancelButtons(QDialog *dialog);

} // namespace Vantry::Dialogs
