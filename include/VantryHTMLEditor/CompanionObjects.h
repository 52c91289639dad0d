#pragma once

#include <VantryHTMLEditor/vantryhtmleditor_export.h>

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

namespace Vantry {

// Configuration objects a host reaches through the editor's ContextMenu, Toolbar,
// StyleSheet and DocumentProperties properties.

class VANTRYHTMLEDITOR_EXPORT clsContextMenu : public QObject
{
    Q_OBJECT

public:
    explicit clsContextMenu(QObject *parent = nullptr);
    ~clsContextMenu() override;
};

class VANTRYHTMLEDITOR_EXPORT clsToolbar : public QObject
{
    Q_OBJECT

public:
    explicit clsToolbar(QObject *parent = nullptr);
    ~clsToolbar() override;
};

class VANTRYHTMLEDITOR_EXPORT clsStyle : public QObject
{
    Q_OBJECT

public:
    explicit clsStyle(QObject *parent = nullptr);
    ~clsStyle() override;

    // A LINK tag for every style sheet the document links, in document order; the editor
    // puts this just before the end of HEAD whenever it hands the document out.
    Q_INVOKABLE QString LoadStylesSource() const;

private:
    friend class HTMLEditorComponent;
    // Supplied by the editor that owns the document: the address of every linked sheet.
    std::function<QStringList()> m_sheetAddresses;
};

class VANTRYHTMLEDITOR_EXPORT clsDocumentProperties : public QObject
{
    Q_OBJECT

public:
    explicit clsDocumentProperties(QObject *parent = nullptr);
    ~clsDocumentProperties() override;
};

} // namespace Vantry
