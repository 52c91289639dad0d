#pragma once

#include "commands/commandtables.h"

#include <QString>
#include <QVariant>

#include <functional>
#include <memory>
#include <optional>

namespace Vantry {
struct LinkPropertiesValues;
class EditorDialogs;
class UserPrompts;
} // namespace Vantry

namespace Vantry::Platform {
class DesignSurface;
using Vantry::UserPrompts;
struct DocumentReferences;
} // namespace Vantry::Platform

namespace Vantry::Dialogs {
struct TableFlow;
} // namespace Vantry::Dialogs

namespace Vantry::Commands {

class SelectionAccess;
using Platform::DocumentReferences;

// What the link dialog shows and returns; the values go into the anchor as they are.
struct LinkFields
{
    QString href;
    QString target;
    QString color;
    QString title;
    QString textDecoration;
    // The content-management reference the link dialog keeps.
    QString dataFld;
};

// The dialogs and forms the commands open. Each returns true when the user confirmed
// and the document may have changed.
class DialogLauncher
{
public:
    virtual ~DialogLauncher();

    // current is empty for a new link.
    virtual std::optional<LinkFields> editLink(const LinkFields &current, bool existing) = 0;
    virtual bool imageDialog() = 0;
    virtual bool uploadImage() = 0;
    // Fills the table parameters that the insert-table command takes.
    virtual bool insertTableDialog(QVariant *parameters) = 0;
    virtual bool pageProperties() = 0;
    virtual bool tableProperties() = 0;
    virtual bool cellProperties() = 0;
    virtual bool elementProperties() = 0;
    // No command reaches these; the context menu and the editor's methods do. Without
    // dialogs they do nothing.
    virtual bool flashProperties();
    virtual bool selectStyle();
};

// Until the dialogs exist the user is told which one the command will open; nothing
// changes.
class PendingDialogLauncher : public DialogLauncher
{
public:
    explicit PendingDialogLauncher(std::function<Platform::UserPrompts &()> prompts);

    std::optional<LinkFields> editLink(const LinkFields &current, bool existing) override;
    bool imageDialog() override;
    bool uploadImage() override;
    bool insertTableDialog(QVariant *parameters) override;
    bool pageProperties() override;
    bool tableProperties() override;
    bool cellProperties() override;
    bool elementProperties() override;

private:
    bool announce(const QString &what);

    std::function<Platform::UserPrompts &()> m_prompts;
};

enum class DisplaySwitch
{
    Borders,
    Details,
    SnapToGrid
};

// The surface's name for a display switch.
QString displaySwitchName(DisplaySwitch which);

// Carries out the editing commands, whether they come from a toolbar button, a
// context-menu entry or a public method. Nothing runs while the source view shows; every
// command that completes marks the document dirty, and one the surface refuses ends
// quietly without the mark.
class Executor : public CommandSink
{
public:
    struct Hooks
    {
        std::function<bool()> designViewActive;
        std::function<void()> markDirty;
        std::function<Platform::UserPrompts &()> prompts;
        std::function<EditorDialogs &()> dialogs;
        // The toolbar button with this key; ignored when there is none.
        std::function<void(const QString &key, bool pressed)> setButtonPressed;
        std::function<void(const QString &key, const QString &toolTip)> setButtonToolTip;
        // The surface's display switches. While unset the executor keeps them itself.
        std::function<bool(DisplaySwitch)> displaySwitch;
        std::function<bool(DisplaySwitch, bool)> setDisplaySwitch;
        // Where a picked image file goes before its path is written; unset keeps the path.
        std::function<QString(const QString &path)> placeImage;
        // After each command: whether it completed, so that the images it placed are
        // announced (before the document is marked dirty) or forgotten.
        std::function<void(bool completed)> imagesPlaced;
        // Shows the design view's find dialog.
        std::function<void()> showFindDialog;
        // The folder the table dialogs' background-image pickers start in.
        std::function<QString()> imageDirectory;
        // Command 14; unset announces the form through the dialog launcher.
        std::function<bool()> uploadImage;
        // The spelling check's walk over the document; true when it changed the document.
        std::function<bool()> spellCheck;
        // The host's content sites, content pages, portal pages and link targets.
        std::function<void(LinkPropertiesValues &)> linkSources;
    };

    Executor(Platform::DesignSurface &surface, SelectionAccess &selection,
        DocumentReferences &references, Hooks hooks);
    ~Executor() override;

    // A design command run directly (the font boxes use this), under the same rules.
    bool execute(int commandId, const QVariant &argument = {}) override;

    void executeCommand(Command command);
    // A toolbar button's key; unknown keys do nothing.
    void executeKey(const QString &key);
    // A dialog no command opens (the context menu's and the editor's own), under the same
    // rules as a command.
    void runDialog(bool (DialogLauncher::*dialog)());

    // The host's table and image arguments, kept after each insertion.
    void insertTableFromArguments(const TableArguments &table, bool appendToBody);
    // The arguments afterwards hold what was inserted (a picked source, emptied sizes).
    void insertImageFromArguments(ImageArguments &image);
    const TableArguments &pendingTable() const { return m_table; }

    bool displaySwitch(DisplaySwitch which) const;

    void setDialogLauncher(std::unique_ptr<DialogLauncher> launcher);
    DialogLauncher &dialogs() const { return *m_dialogs; }

private:
    bool dispatch(Command command, const CommandEntry &entry);
    bool pickColor(const CommandEntry &entry);
    bool promptedCommand(int designCommand);
    bool toggle(DisplaySwitch which, const QString &buttonKey);
    bool absolutePosition();
    bool hyperlink();
    bool imageFromArguments();
    bool tableFromArguments(bool appendToBody);
    Platform::UserPrompts &prompts() const { return m_hooks.prompts(); }

    Platform::DesignSurface &m_surface;
    SelectionAccess &m_selection;
    DocumentReferences &m_references;
    Hooks m_hooks;
    std::unique_ptr<DialogLauncher> m_dialogs;
    TableArguments m_table;
    ImageArguments m_image;
    bool m_switches[3] = {false, false, false};
};

// The launcher an executor starts with: the table, link, page, style, Flash and element dialogs
// through the editor's dialogs (hooks.dialogs; while unset they are announced like the others).
class EditorDialogLauncher : public PendingDialogLauncher
{
public:
    EditorDialogLauncher(Platform::DesignSurface &surface, SelectionAccess &selection,
        DocumentReferences &references, Executor::Hooks hooks);

    bool insertTableDialog(QVariant *parameters) override;
    bool tableProperties() override;
    bool cellProperties() override;
    bool imageDialog() override;
    std::optional<LinkFields> editLink(const LinkFields &current, bool existing) override;
    bool pageProperties() override;
    bool elementProperties() override;
    bool flashProperties() override;
    bool selectStyle() override;

private:
    Dialogs::TableFlow flow();

    Platform::DesignSurface &m_surface;
    SelectionAccess &m_selection;
    DocumentReferences &m_references;
    Executor::Hooks m_hooks;
};

} // namespace Vantry::Commands
