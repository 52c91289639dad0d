#pragma once

#include "platform/designsurface.h"

#include <QString>
#include <QVariant>

#include <functional>
#include <optional>
#include <variant>

namespace Vantry {
class UserPrompts;
} // namespace Vantry

namespace Vantry::Platform {
using Vantry::UserPrompts;
}

namespace Vantry::Commands {

// The two control-wide references into the document that the selection lookups leave
// behind. The find methods keep their search range in current too, so a find overwrites
// what a lookup left there, and a lookup ends a search in progress.
struct DocumentReferences
{
    std::variant<std::monostate, Platform::Element, Platform::TextRange> current;
    // Set by a successful findSelectedElementByTag.
    Platform::Element found;
};

// What the insert methods paste; the numbers are the kinds hosts and commands pass.
enum class InsertKind
{
    Button = 1,
    SubmitButton,
    ResetButton,
    CheckBox,
    Radio,
    DropDown,
    ListBox,
    TextBox,
    TextArea,
    Form,
    Html
};

// The markup a kind pastes, exactly as written (case and quoting are part of it); html is
// used by Html only. Nothing for a number outside the kinds.
std::optional<QString> insertionMarkup(int kind, const QString &html);

// True for the text "1", the number 1, Boolean true, and any text that lower-cased is
// "true"; false for everything else ("yes", "0", -1 ...).
bool CheckBoolean(const QVariant &value);

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
