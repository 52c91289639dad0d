#pragma once

#include "commands/insertionrules.h"
#include "platform/designsurface.h"
#include "platform/documentreferences.h"

#include <QString>
#include <QVariant>

#include <functional>
#include <optional>

namespace Vantry {
class UserPrompts;
} // namespace Vantry

namespace Vantry::Platform {
using Vantry::UserPrompts;
}

namespace Vantry::Commands {

using Platform::DocumentReferences;

// What is selected in the design view, and putting markup into it. Every method ends
// quietly with its default (nothing, false, empty) when a document call fails or before
// the document is ready.
class SelectionAccess
{
public:
    struct Hooks
    {
        // Document loaded and control initialised.
        std::function<bool()> isReady;
        std::function<Platform::UserPrompts &()> prompts;
    };

    SelectionAccess(Platform::DesignSurface &surface, DocumentReferences &references, Hooks hooks);

    // The selected element (Control), or the element around the selected text or caret;
    // it also becomes the current element.
    Platform::Element selectedElement();
    // The selected element or its nearest ancestor with this tag name (any case), not
    // looking past the HTML element; a find becomes the found element.
    bool findSelectedElementByTag(const QString &tagName);
    bool findSelectedTable();
    // Deletes the selection when the selected element is an image. The tag name is not
    // consulted: hosts rely on only images going.
    void removeSelectedElementObject(const QString &tagName);
    // The selected element's markup (Control), else the selection's markup.
    QString selectedMarkup();
    void replaceSelection(const QString &html);
    // Pastes a kind's markup in place of the selection; a selected control refuses with a
    // message.
    void insertMarkupAtSelection(int kind, const QString &html);
    // Replaces, ignoring case, every occurrence of find in the body's markup.
    void findAndReplaceHTML(const QString &find, const QString &replacement);

private:
    bool failed() const { return m_surface.lastCallFailed(); }
    Platform::Element selectedControl(const Platform::TextRange &range);

    Platform::DesignSurface &m_surface;
    DocumentReferences &m_references;
    Hooks m_hooks;
};

} // namespace Vantry::Commands
