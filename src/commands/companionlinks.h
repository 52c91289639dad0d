#pragma once

#include <QObject>
#include <QPointer>

namespace Vantry {
class clsDocumentProperties;
class clsStyle;
class clsToolbar;
} // namespace Vantry

namespace Vantry::Platform {
class DesignSurface;
}

namespace Vantry::Commands {

class DocumentPage;
class EditorToolbar;

// Ties a companion object to the part of an editor that serves it. A link is a child of
// its companion, so it goes with it; the part it points to may go first, which leaves the
// companion serving nothing, as one never handed to an editor.

class ToolbarLink : public QObject
{
    Q_OBJECT

public:
    static void attach(clsToolbar *companion, EditorToolbar *toolbar);
    static EditorToolbar *toolbar(const clsToolbar *companion);

private:
    using QObject::QObject;
    QPointer<EditorToolbar> m_toolbar;
};

class StyleSheetLink : public QObject
{
    Q_OBJECT

public:
    // surface supplies the addresses of the sheets its document links.
    static void attach(clsStyle *companion, Platform::DesignSurface *surface);
    static Platform::DesignSurface *surface(const clsStyle *companion);

private:
    using QObject::QObject;
    QPointer<Platform::DesignSurface> m_surface;
};

class DocumentPropertiesLink : public QObject
{
    Q_OBJECT

public:
    static void attach(clsDocumentProperties *companion, DocumentPage *page);
    static DocumentPage *page(const clsDocumentProperties *companion);

private:
    using QObject::QObject;
    QPointer<DocumentPage> m_page;
};

} // namespace Vantry::Commands
