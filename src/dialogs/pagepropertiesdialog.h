#pragma once

#include "dialogs/dialogwidgets.h"

#include <VantryHTMLEditor/PageDialogValues.h>

#include <QDialog>

class QLineEdit;

namespace Vantry::Dialogs {

// frmPageProperties: the page's title, colours, background image and margins.
class PagePropertiesDialog : public QDialog
{
public:
    PagePropertiesDialog(PromptsAccess prompts, QWidget *parent = nullptr);

    void setValues(const PagePropertiesValues &values);
    // SetLocalVariables.
    PagePropertiesValues values() const;

private:
    PagePropertiesValues m_values;
    QLineEdit *m_title;
    FileField *m_bgImage;
    // Background, text, link, visited link and active link, as the table lists them.
    ColorField *m_colors[5];
    NumberBox *m_margins[4];
};

} // namespace Vantry::Dialogs
