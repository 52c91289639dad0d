#pragma once

#include "dialogs/dialogwidgets.h"

#include <VantryHTMLEditor/StyleDialogValues.h>

#include <QDialog>

class QTableWidget;

namespace Vantry::Dialogs {

// Element Properties: the current element's attributes in an editable table. OK refuses,
// with a message, a name no attribute can have, keeping every row as typed.
class ElementPropertiesDialog : public QDialog
{
public:
    ElementPropertiesDialog(PromptsAccess prompts, QWidget *parent = nullptr);

    void setValues(const ElementPropertiesValues &values);
    ElementPropertiesValues values() const;

    QTableWidget *table() const { return m_table; }
    void addAttribute();
    void removeAttribute();
    void accept() override;

private:
    PromptsAccess m_prompts;
    ElementPropertiesValues m_values;
    QTableWidget *m_table;
};

} // namespace Vantry::Dialogs
