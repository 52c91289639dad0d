#include <VantryHTMLEditor/EditorDialogs.h>
#include <VantryHTMLEditor/HTMLEditorComponent.h>
#include <VantryHTMLEditor/UserPrompts.h>

#include "dialogs/cellpropertiesdialog.h"
#include "dialogs/elementpropertiesdialog.h"
#include "dialogs/flashpropertiesdialog.h"
#include "dialogs/imagedialog.h"
#include "dialogs/inserttabledialog.h"
#include "dialogs/linkpropertiesdialog.h"
#include "dialogs/pagepropertiesdialog.h"
#include "dialogs/selectstyledialog.h"
#include "dialogs/tablepropertiesdialog.h"

#include "dialogs/imageuploadform.h"

#include "dialogs/spellingdialog.h"

#include <QWidget>

namespace Vantry {

EditorDialogs::~EditorDialogs() = default;

WidgetDialogs::WidgetDialogs(QWidget *parent)
    : m_parent(parent)
{ }

WidgetDialogs::~WidgetDialogs()
{
    delete m_spelling;
}

QWidget *WidgetDialogs::window() const
{
    return m_parent ? m_parent->window() : nullptr;
}

UserPrompts &WidgetDialogs::prompts() const
{
    if (auto *editor = qobject_cast<HTMLEditorComponent *>(m_parent.data()))
        return editor->userPrompts();
    if (!m_ownPrompts)
        m_ownPrompts = std::make_unique<WidgetPrompts>(window());
    return *m_ownPrompts;
}

namespace {

// Shows a dialog over its values: filled from them, and on OK they take what was collected.
// Closing the window is Cancel.
template <typename Dialog, typename Values> bool runDialog(Dialog &dialog, Values &values)
{
    dialog.setValues(values);
    if (dialog.exec() != QDialog::Accepted) {
        values.Cancel = true;
        return false;
    }
    values = dialog.values();
    return true;
}

} // namespace

bool WidgetDialogs::insertTable(InsertTableValues &values)
{
    Dialogs::InsertTableDialog dialog([this]() -> UserPrompts & { return prompts(); }, window());
    return runDialog(dialog, values);
}

bool WidgetDialogs::tableProperties(TablePropertiesValues &values)
{
    Dialogs::TablePropertiesDialog dialog(
        [this]() -> UserPrompts & { return prompts(); }, window());
    return runDialog(dialog, values);
}

bool WidgetDialogs::cellProperties(CellPropertiesValues &values)
{
    Dialogs::CellPropertiesDialog dialog([this]() -> UserPrompts & { return prompts(); }, window());
    return runDialog(dialog, values);
}

bool WidgetDialogs::imageUpload(ImageUploadValues &values)
{
    Dialogs::ImageUploadForm form(values, window());
    form.exec();
    values = form.values();
    return !values.Cancel;
}

EditorDialogs::SpellingAnswer WidgetDialogs::spellingWord(const SpellingQuestion &question)
{
    auto *dialog = qobject_cast<Dialogs::SpellingDialog *>(m_spelling.data());
    if (!dialog) {
        dialog = new Dialogs::SpellingDialog(window());
        m_spelling = dialog;
    }
    return dialog->ask(question);
}

void WidgetDialogs::spellingDone()
{
    if (m_spelling)
        m_spelling->deleteLater();
}

bool WidgetDialogs::insertImage(ImageDialogValues &values)
{
    Dialogs::ImageDialog dialog([this]() -> UserPrompts & { return prompts(); }, window());
    return runDialog(dialog, values);
}

bool WidgetDialogs::linkProperties(LinkPropertiesValues &values)
{
    Dialogs::LinkPropertiesDialog dialog([this]() -> UserPrompts & { return prompts(); }, window());
    return runDialog(dialog, values);
}

bool WidgetDialogs::pageProperties(PagePropertiesValues &values)
{
    Dialogs::PagePropertiesDialog dialog([this]() -> UserPrompts & { return prompts(); }, window());
    return runDialog(dialog, values);
}

bool WidgetDialogs::selectStyle(SelectStyleValues &values)
{
    Dialogs::SelectStyleDialog dialog([this]() -> UserPrompts & { return prompts(); }, window());
    return runDialog(dialog, values);
}

bool WidgetDialogs::flashProperties(FlashPropertiesValues &values)
{
    Dialogs::FlashPropertiesDialog dialog(
        [this]() -> UserPrompts & { return prompts(); }, window());
    return runDialog(dialog, values);
}

bool WidgetDialogs::elementProperties(ElementPropertiesValues &values)
{
    Dialogs::ElementPropertiesDialog dialog(
        [this]() -> UserPrompts & { return prompts(); }, window());
    return runDialog(dialog, values);
}

} // namespace Vantry
