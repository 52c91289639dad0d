#include <VantryHTMLEditor/CompanionObjects.h>

namespace Vantry {

clsContextMenu::clsContextMenu(QObject *parent)
    : QObject(parent)
{
}

clsContextMenu::~clsContextMenu() = default;

clsToolbar::clsToolbar(QObject *parent)
    : QObject(parent)
{
}

clsToolbar::~clsToolbar() = default;

clsStyle::clsStyle(QObject *parent)
    : QObject(parent)
{
}

clsStyle::~clsStyle() = default;

QString clsStyle::LoadStylesSource() const
{
    QString markup;
    if (!m_sheetAddresses)
        return markup;
    const QStringList addresses = m_sheetAddresses();
    for (const QString &href : addresses)
        markup += QStringLiteral("<LINK href=\"") + href + QStringLiteral("\" rel=\"StyleSheet\">");
    return markup;
}

clsDocumentProperties::clsDocumentProperties(QObject *parent)
    : QObject(parent)
{
}

clsDocumentProperties::~clsDocumentProperties() = default;

} // namespace Vantry
