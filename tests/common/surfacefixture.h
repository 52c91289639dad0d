#pragma once

#include "enginetest.h"

namespace VantryTest {

// Base of the engine tests that work on one shown editor's document through its surface:
// start() in initTestCase, then the steps a user takes on the document.
class SurfaceFixture : public QObject
{
protected:
    bool start() { return startEditor(m_editor, m_surface); }

    void load(const QString &body) { QVERIFY(m_surface->setBodyInnerHTML(body)); }

    // A range over the first hit of needle in the body, null when there is none.
    Vantry::Platform::TextRange found(const QString &needle)
    {
        const Vantry::Platform::TextRange range = m_surface->bodyRange();
        if (!m_surface->findText(range, needle))
            return {};
        return range;
    }

    void select(const QString &needle)
    {
        const Vantry::Platform::TextRange range = found(needle);
        QVERIFY2(!range.isNull(), qPrintable(needle));
        QVERIFY(m_surface->selectRange(range));
    }

    void caretAt(const QString &needle, bool atEnd = false)
    {
        const Vantry::Platform::TextRange range = found(needle);
        QVERIFY2(!range.isNull(), qPrintable(needle));
        QVERIFY(m_surface->collapseRange(range, !atEnd));
        QVERIFY(m_surface->selectRange(range));
    }

    // The first element of the tag, selected whole as a click selects it.
    void selectElement(const QString &tagName)
    {
        const QList<Vantry::Platform::Element> elements = m_surface->elementsByTagName(tagName);
        QVERIFY(!elements.isEmpty());
        QVERIFY(m_surface->selectElement(elements.first()));
    }

    QString selectedText() { return m_surface->rangeText(m_surface->selectionRange()); }
    QString body() { return m_surface->bodyInnerHTML(); }

    // The widget that takes the keys, with the document focused.
    QWidget *input()
    {
        m_surface->focusDocument();
        return inputOf(*m_surface);
    }

    QVariant js(const QString &operation, const QVariantList &args = {})
    {
        return adapterValue(*m_editor, operation, args);
    }

    // The engine hit-tests and drags on what it has rendered.
    void waitForFrame()
    {
        const QVariant ticket = js(QStringLiteral("frameTicket"));
        QTRY_VERIFY(js(QStringLiteral("frameRendered"), {ticket}).toBool());
    }

    std::unique_ptr<Vantry::HTMLEditorComponent> m_editor;
    Vantry::Platform::WebEngineDesignSurface *m_surface = nullptr;
};

} // namespace VantryTest
