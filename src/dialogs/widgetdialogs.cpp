#include <VantryHTMLEditor/EditorDialogs.h>

#include "dialogs/imageuploadform.h"

#include <QWidget>

namespace Vantry {

EditorDialogs::~EditorDialogs() = default;

bool EditorDialogs::imageUpload(ImageUploadValues &values)
{
    values.cancelled = true;
    return false;
}

WidgetDialogs::WidgetDialogs(QWidget *parent)
    : m_parent(parent)
{ }

WidgetDialogs::~WidgetDialogs() = default;

QWidget *WidgetDialogs::window() const
{
    return m_parent ? m_parent->window() : nullptr;
}

bool WidgetDialogs::imageUpload(ImageUploadValues &values)
{
    Dialogs::ImageUploadForm form(values, window());
    form.exec();
    values = form.values();
    return !values.cancelled;
}

} // namespace Vantry
