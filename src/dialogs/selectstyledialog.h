#pragma once

#include "dialogs/dialogwidgets.h"
#include "dialogs/stylerules.h"

#include <VantryHTMLEditor/StyleDialogValues.h>

#include <QDialog>

class QComboBox;
class QListWidget;
class QPlainTextEdit;

namespace Vantry::Dialogs {

// frmSelectStyle: a sheet of the document, its classes, and the text of the chosen class's
// rule. "Pick StyleSheet" closes the dialog with a sheet to link.
class SelectStyleDialog : public QDialog
{
public:
    SelectStyleDialog(PromptsAccess prompts, QWidget *parent = nullptr);

    void setValues(const SelectStyleValues &values);
    SelectStyleValues values() const;

    QComboBox *styleSheets() const { return m_styleSheets; }
    QListWidget *classes() const { return m_classes; }
    QPlainTextEdit *cssText() const { return m_cssText; }
    void pickStyleSheet();

private:
    void showSheet(int index);
    void showClass(int row);

    PromptsAccess m_prompts;
    SelectStyleValues m_values;
    QList<StyleClass> m_shownClasses;
    QComboBox *m_styleSheets;
    QListWidget *m_classes;
    QPlainTextEdit *m_cssText;
};

} // namespace Vantry::Dialogs
