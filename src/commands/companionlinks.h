#pragma once

#include <VantryHTMLEditor/StyleDialogValues.h>

#include <QObject>
#include <QPointer>

#include <functional>

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
    // surface supplies the document's sheets; documentReady says whether there is a
    // document to read them from, and linked hears of every sheet linked.
    static void attach(clsStyle *companion, Platform::DesignSurface *surface,
        std::function<bool()> documentReady = {}, std::function<void()> linked = {});
    static Platform::DesignSurface *surface(const clsStyle *companion);
    // None without a document.
    static QList<StyleSheetInfo> sheets(const clsStyle *companion);
    static bool addSheet(const clsStyle *companion, const QString &href);

private:
    using QObject::QObject;
    static const StyleSheetLink *readyLink(const clsStyle *companion);

    QPointer<Platform::DesignSurface> m_surface;
    std::function<bool()> m_documentReady;
    std::function<void()> m_linked;
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
