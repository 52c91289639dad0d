#pragma once

#include <VantryHTMLEditor/vantryhtmleditor_export.h>

#include <QPointer>
#include <QtGlobal>

class QWidget;

namespace Vantry {

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
};

// The dialogs of a desktop session and the editor's default: modal to the window of parent.
class VANTRYHTMLEDITOR_EXPORT WidgetDialogs : public EditorDialogs
{
public:
    explicit WidgetDialogs(QWidget *parent);
    ~WidgetDialogs() override;

protected:
    // The window the dialogs are modal to; none once parent is gone.
    QWidget *window() const;

private:
    QPointer<QWidget> m_parent;
};

} // namespace Vantry
