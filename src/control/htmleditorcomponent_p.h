#pragma once

#include <VantryHTMLEditor/HTMLEditorComponent.h>

#include "commands/commandsfwd.h"
#include "commands/selectionaccess.h"
#include "control/editorframe.h"
#include "control/settings.h"
#include "platform/platformfwd.h"

#include <QPointer>

#include <memory>

namespace Vantry {

namespace Images {
class ImagePlacement;
class ImageUploadCommand;
} // namespace Images

namespace Platform {
class Dictionaries;
} // namespace Platform

namespace Control {
class ContentExchange;
class EventRelay;
class FileOperations;
class FirstDocument;
class SourceView;
} // namespace Control

namespace Text {
class DesignFind;
class FindReplace;
class Printing;
class ScriptInjection;
class SpellingCheck;
class SpellingUnderlines;
} // namespace Text

// The units behind the editor's public interface, built and wired together; the editor
// delegates each of its methods to one of them.
class HTMLEditorComponent::Private
{
public:
    explicit Private(HTMLEditorComponent *q);
    ~Private();

    void assign(Control::SettingsField field, const QVariant &value);
    void applyEffect(Control::PropertyEffect effect);
    void layout();
    void applyEnabled();
    bool insertTableByName(const QVariantMap &arguments, bool second);
    // A companion object the host has not set is made on first use.
    template <typename T> T *companion(QPointer<T> &slot) const
    {
        if (!slot)
            slot = new T(q);
        return slot;
    }
    void attachStyle(clsStyle *style);
    // Keeps properties as the editor's companion and lets it reach the document.
    clsDocumentProperties *attachDocumentProperties(clsDocumentProperties *properties);
    // Underlines misspelt words while SpellCheckAsYouType is on.
    void applySpellingUnderlines();

    HTMLEditorComponent *q;
    Control::Settings settings;
    Control::EditorFrame frame;
    Platform::DesignSurface *surface = nullptr; // owned by the frame's editing panel
    std::unique_ptr<Control::ContentExchange> exchange;
    std::unique_ptr<Control::SourceView> sourceView;
    std::unique_ptr<Platform::UserPrompts> prompts;
    std::unique_ptr<EditorDialogs> dialogs;
    std::unique_ptr<Images::ImageUploadCommand> upload;
    std::unique_ptr<Images::ImagePlacement> images;
    std::unique_ptr<Platform::Dictionaries> dictionaries;
    std::unique_ptr<Text::SpellingCheck> spelling;
    std::unique_ptr<Text::SpellingUnderlines> underlines;
    Commands::DocumentReferences references;
    std::unique_ptr<Commands::SelectionAccess> selection;
    std::unique_ptr<Commands::DocumentPage> page;
    std::unique_ptr<Text::FindReplace> finder;
    std::unique_ptr<Text::ScriptInjection> scriptInjection;
    std::unique_ptr<Text::Printing> printing;
    std::unique_ptr<Text::DesignFind> designFind;
    std::unique_ptr<Commands::Executor> executor;
    std::unique_ptr<Commands::ContextMenus> menus;
    std::unique_ptr<Control::FileOperations> files;
    std::unique_ptr<Commands::CommandStatusSource> commandStatus;
    std::unique_ptr<Commands::EditorToolbar> toolbarControls;
    std::unique_ptr<Control::FirstDocument> firstDocument;

    mutable QPointer<clsContextMenu> contextMenu;
    mutable QPointer<clsToolbar> toolbar;
    mutable QPointer<clsStyle> styleSheet;
    mutable QPointer<clsDocumentProperties> documentProperties;

    // Last, so that it goes first: nothing reaches the editor while the rest goes.
    std::unique_ptr<Control::EventRelay> relay;
};

} // namespace Vantry
