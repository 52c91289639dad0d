#pragma once

#include <VantryHTMLEditor/HTMLEditorComponent.h>

#include "platform/designsurface.h"
#include "platform/webengine/webenginedesignsurface.h"

#include <QApplication>
#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <QWebEnginePage>

#include <memory>

namespace VantryTest {

// The division the editor wraps a loaded body in, with the default font settings.
inline const QString fontDivision
    = QStringLiteral("<div style=\"FONT-FAMILY:arial;COLOR:#000000;FONT-SIZE:10pt\">");

// The design surface inside an editor, for tests that inspect the live document.
inline Vantry::Platform::WebEngineDesignSurface *surfaceOf(Vantry::HTMLEditorComponent &editor)
{
    const auto views = editor.findChildren<QWidget *>(QStringLiteral("DHTMLEdit1"));
    if (views.isEmpty())
        return nullptr;
    return editor.findChild<Vantry::Platform::WebEngineDesignSurface *>();
}

// The widget that takes the surface's keys and mouse events.
inline QWidget *inputOf(Vantry::Platform::WebEngineDesignSurface &surface)
{
    QWidget *view = surface.widget();
    return view->focusProxy() ? view->focusProxy() : view;
}

// Adds the operations only tests use (testoperations.js) to the surface's adapter, once.
inline bool addTestOperations(Vantry::Platform::WebEngineDesignSurface &surface)
{
    const char *const added = "vantryTestOperations";
    if (surface.property(added).toBool())
        return true;
    QFile file(QStringLiteral(":/vantry/tests/testoperations.js"));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const auto done = std::make_shared<bool>(false);
    surface.page()->runJavaScript(QString::fromUtf8(file.readAll()),
        Vantry::Platform::WebEngineDesignSurface::adapterWorld(),
        [done](const QVariant &) { *done = true; });
    if (!QTest::qWaitFor([done] { return *done; }))
        return false;
    surface.setProperty(added, true);
    return true;
}

// Waits until the editor's surface has loaded its first document, and adds the test
// operations then, before a test sets up state that events handled meanwhile could change.
inline bool waitUntilReady(Vantry::HTMLEditorComponent &editor, int timeoutMs = 60000)
{
    if (!QTest::qWaitFor([&editor] { return editor.isDocumentReady(); }, timeoutMs))
        return false;
    auto *surface = surfaceOf(editor);
    return surface && addTestOperations(*surface);
}

// Creates a shown editor, waits for its first document and hands out its surface; false
// when either fails.
inline bool startEditor(std::unique_ptr<Vantry::HTMLEditorComponent> &editor,
    Vantry::Platform::WebEngineDesignSurface *&surface)
{
    editor = std::make_unique<Vantry::HTMLEditorComponent>();
    editor->resize(800, 600);
    editor->show();
    if (!waitUntilReady(*editor))
        return false;
    surface = surfaceOf(*editor);
    return surface != nullptr;
}

// Activates the widget's window and gives the widget the keyboard focus, as a click would;
// the widget that has the focus then (a child, for the design surface), or nullptr.
inline QWidget *giveFocus(QWidget *widget)
{
    widget->window()->activateWindow();
    if (!QTest::qWaitForWindowActive(widget->window()))
        return nullptr;
    widget->setFocus();
    if (!QTest::qWaitFor([widget] {
            const QWidget *focused = QApplication::focusWidget();
            return focused && (focused == widget || widget->isAncestorOf(focused));
        }))
        return nullptr;
    return QApplication::focusWidget();
}

// Runs an adapter operation, test operations included, and returns its value; warns on
// error.
inline QVariant adapterValue(
    Vantry::HTMLEditorComponent &editor, const QString &operation, const QVariantList &args = {})
{
    auto *surface = surfaceOf(editor);
    if (!surface || !addTestOperations(*surface))
        return {};
    const auto result = surface->call(operation, args);
    if (!result.ok)
        qWarning(
            "adapter operation %s failed: %s", qPrintable(operation), qPrintable(result.error));
    return result.value;
}

} // namespace VantryTest
