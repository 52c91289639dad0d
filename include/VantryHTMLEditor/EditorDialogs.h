#pragma once

#include <VantryHTMLEditor/StyleDialogValues.h>
#include <VantryHTMLEditor/TableDialogValues.h>
#include <VantryHTMLEditor/vantryhtmleditor_export.h>

#include <QPointer>
#include <QtGlobal>

#include <memory>

class QWidget;

namespace Vantry {

class UserPrompts;

// The editor's own dialogs: table, image, link, page, style, element properties, spelling
// and upload. The editor fills a dialog's values from the document, hands them here, and
// writes back what comes out; a host that wants its own dialogs (its look, a web form,
// answers from a script) implements this, or derives from WidgetDialogs to replace only
// some, and hands it to HTMLEditorComponent::setEditorDialogs.
//
// Each dialog method takes its values by reference, changes them as the user did and
// returns true for OK; false (and the values' cancel flag set) when the user cancelled.
// The editor calls them on the GUI thread; an implementation may run a modal loop but
// must return.
class VANTRYHTMLEDITOR_EXPORT EditorDialogs
{
public:
    EditorDialogs() = default;
    virtual ~EditorDialogs();
    Q_DISABLE_COPY_MOVE(EditorDialogs)

    // Tables. insertTable may leave the row and column counts as typed: the editor inserts
    // nothing, and says why, when they are not 1 to 1,000 rows and 1 to 100 columns.
    virtual bool insertTable(InsertTableValues &values) = 0;
    virtual bool tableProperties(TablePropertiesValues &values) = 0;
    virtual bool cellProperties(CellPropertiesValues &values) = 0;

    // Styles: frmSelectStyle, frmFlashProperties and the element's attributes. An
    // implementation that does not offer one of these cancels it.
    virtual bool selectStyle(SelectStyleValues &values);
    virtual bool flashProperties(FlashPropertiesValues &values);
    virtual bool elementProperties(ElementPropertiesValues &values);
};

// The dialogs of a desktop session and the editor's default: modal to the window of parent.
class VANTRYHTMLEDITOR_EXPORT WidgetDialogs : public EditorDialogs
{
public:
    explicit WidgetDialogs(QWidget *parent);
    ~WidgetDialogs() override;

    // Tables.
    bool insertTable(InsertTableValues &values) override;
    bool tableProperties(TablePropertiesValues &values) override;
    bool cellProperties(CellPropertiesValues &values) override;

    // Styles.
    bool selectStyle(SelectStyleValues &values) override;
    bool flashProperties(FlashPropertiesValues &values) override;
    bool elementProperties(ElementPropertiesValues &values) override;

protected:
    // The window the dialogs are modal to; none once parent is gone.
    QWidget *window() const;
    // The colour and file pickers of the dialogs: the editor's prompts when parent is an
    // editor, else the desktop's.
    UserPrompts &prompts() const;

private:
    QPointer<QWidget> m_parent;
    mutable std::unique_ptr<UserPrompts> m_ownPrompts;
};

} // namespace Vantry
