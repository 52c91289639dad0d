#include "commands/executor.h"

#include "commands/fontcommand.h"
#include "commands/positioning.h"
#include "commands/selectionaccess.h"
#include "commands/tablecommands.h"
#include "commands/imageflow.h"
#include "commands/linkpageflow.h"
#include "commands/styleflow.h"
#include "commands/tableflow.h"
#include "platform/designsurface.h"
#include "platform/prompts/userprompts.h"

#include <QColor>

namespace Vantry::Commands {

using Platform::DesignSurface;
using Platform::Element;

DialogLauncher::~DialogLauncher() = default;

PendingDialogLauncher::PendingDialogLauncher(std::function<Platform::UserPrompts &()> prompts)
    : m_prompts(std::move(prompts))
{ }

bool PendingDialogLauncher::announce(const QString &what)
{
    m_prompts().information(what + QLatin1String(" is coming in a later version."));
    return false;
}

std::optional<LinkFields> PendingDialogLauncher::editLink(const LinkFields &, bool)
{
    announce(QStringLiteral("The link properties dialog"));
    return std::nullopt;
}

bool PendingDialogLauncher::imageDialog()
{
    return announce(QStringLiteral("The image dialog"));
}

bool PendingDialogLauncher::uploadImage()
{
    return announce(QStringLiteral("The image upload form"));
}

bool PendingDialogLauncher::insertTableDialog(QVariant *)
{
    return announce(QStringLiteral("The insert table dialog"));
}

bool PendingDialogLauncher::pageProperties()
{
    return announce(QStringLiteral("The page properties dialog"));
}

bool PendingDialogLauncher::tableProperties()
{
    return announce(QStringLiteral("The table properties dialog"));
}

bool PendingDialogLauncher::cellProperties()
{
    return announce(QStringLiteral("The table cell properties dialog"));
}

bool PendingDialogLauncher::elementProperties()
{
    return announce(QStringLiteral("The element properties dialog"));
}

bool DialogLauncher::flashProperties()
{
    return false;
}

bool DialogLauncher::selectStyle()
{
    return false;
}

EditorDialogLauncher::EditorDialogLauncher(Platform::DesignSurface &surface,
    SelectionAccess &selection, DocumentReferences &references, Executor::Hooks hooks)
    : PendingDialogLauncher(hooks.prompts)
    , m_surface(surface)
    , m_selection(selection)
    , m_references(references)
    , m_hooks(std::move(hooks))
{ }

bool EditorDialogLauncher::insertTableDialog(QVariant *parameters)
{
    if (!m_hooks.dialogs)
        return PendingDialogLauncher::insertTableDialog(parameters);
    return Dialogs::askInsertTable(flow(), parameters);
}

bool EditorDialogLauncher::tableProperties()
{
    if (!m_hooks.dialogs)
        return PendingDialogLauncher::tableProperties();
    return Dialogs::editTableProperties(flow());
}

bool EditorDialogLauncher::cellProperties()
{
    if (!m_hooks.dialogs)
        return PendingDialogLauncher::cellProperties();
    return Dialogs::editCellProperties({m_surface, m_selection, m_references, m_hooks.dialogs(),
        m_hooks.prompts(), m_hooks.placeImage, QString()});
}

bool EditorDialogLauncher::imageDialog()
{
    if (!m_hooks.dialogs)
        return PendingDialogLauncher::imageDialog();
    return Dialogs::editImage(flow());
}

std::optional<LinkFields> EditorDialogLauncher::editLink(const LinkFields &current, bool existing)
{
    if (!m_hooks.dialogs)
        return PendingDialogLauncher::editLink(current, existing);
    LinkPropertiesValues sources;
    if (m_hooks.linkSources)
        m_hooks.linkSources(sources);
    return Dialogs::askLink(m_hooks.dialogs(), sources, current);
}

bool EditorDialogLauncher::pageProperties()
{
    if (!m_hooks.dialogs)
        return PendingDialogLauncher::pageProperties();
    return Dialogs::editPageProperties(flow());
}

Dialogs::TableFlow EditorDialogLauncher::flow()
{
    return {m_surface, m_selection, m_references, m_hooks.dialogs(), m_hooks.prompts(),
        m_hooks.placeImage, m_hooks.imageDirectory ? m_hooks.imageDirectory() : QString()};
}

bool EditorDialogLauncher::elementProperties()
{
    if (!m_hooks.dialogs)
        return PendingDialogLauncher::elementProperties();
    return Dialogs::editElementProperties(flow());
}

bool EditorDialogLauncher::flashProperties()
{
    return m_hooks.dialogs && Dialogs::editFlashProperties(flow());
}

bool EditorDialogLauncher::selectStyle()
{
    return m_hooks.dialogs && Dialogs::selectStyle(flow());
}

Executor::Executor(
    DesignSurface &surface, SelectionAccess &selection, DocumentReferences &references, Hooks hooks)
    : m_surface(surface)
    , m_selection(selection)
    , m_references(references)
    , m_hooks(std::move(hooks))
    , m_dialogs(std::make_unique<EditorDialogLauncher>(surface, selection, references, m_hooks))
{ }

Executor::~Executor() = default;

void Executor::setDialogLauncher(std::unique_ptr<DialogLauncher> launcher)
{
    if (launcher)
        m_dialogs = std::move(launcher);
}

void Executor::executeKey(const QString &key)
{
    if (!m_hooks.designViewActive())
        return;
    if (const std::optional<Command> command = toolbarKeyCommand(key))
        executeCommand(*command);
}

void Executor::executeCommand(Command command)
{
    if (!m_hooks.designViewActive())
        return;
    const CommandEntry entry = commandEntry(command);
    if (entry.action == CommandAction::Inert)
        return;
    const bool completed = dispatch(command, entry);
    if (m_hooks.imagesPlaced)
        m_hooks.imagesPlaced(completed);
    if (completed)
        m_hooks.markDirty();
}

void Executor::runDialog(bool (DialogLauncher::*dialog)())
{
    if (!m_hooks.designViewActive())
        return;
    const bool completed = (m_dialogs.get()->*dialog)();
    if (m_hooks.imagesPlaced)
        m_hooks.imagesPlaced(completed);
    if (completed)
        m_hooks.markDirty();
}

bool Executor::execute(int commandId, const QVariant &argument)
{
    if (!m_hooks.designViewActive())
        return false;
    if (!m_surface.execCommand(commandId, DesignSurface::OptionDontPromptUser, argument))
        return false;
    m_hooks.markDirty();
    return true;
}

void Executor::insertTableFromArguments(const TableArguments &table, bool appendToBody)
{
    m_table = table;
    executeCommand(appendToBody ? Command::TableFromArgumentsToBody : Command::TableFromArguments);
}

void Executor::insertImageFromArguments(ImageArguments &image)
{
    m_image = image;
    executeCommand(Command::ImageFromArguments);
    image = m_image;
}

QString displaySwitchName(DisplaySwitch which)
{
    switch (which) {
    case DisplaySwitch::Borders:
        return QStringLiteral("borders");
    case DisplaySwitch::Details:
        return QStringLiteral("details");
    case DisplaySwitch::SnapToGrid:
        return QStringLiteral("snapToGrid");
    }
    return {};
}

bool Executor::displaySwitch(DisplaySwitch which) const
{
    if (m_hooks.displaySwitch)
        return m_hooks.displaySwitch(which);
    return m_switches[static_cast<int>(which)];
}

bool Executor::dispatch(Command command, const CommandEntry &entry)
{
    switch (entry.action) {
    case CommandAction::Inert:
        return false;
    case CommandAction::Plain:
        if (entry.option == DesignSurface::OptionPromptUser)
            return promptedCommand(entry.platformCommand);
        return m_surface.execCommand(entry.platformCommand, entry.option);
    case CommandAction::ColorPick:
        return pickColor(entry);
    case CommandAction::Hyperlink:
        return hyperlink();
    case CommandAction::UploadImage:
        return m_hooks.uploadImage ? m_hooks.uploadImage() : m_dialogs->uploadImage();
    case CommandAction::InsertImage:
        return m_dialogs->imageDialog();
    case CommandAction::ToggleBorders:
        return toggle(DisplaySwitch::Borders, QStringLiteral("Border"));
    case CommandAction::ToggleDetails:
        return toggle(DisplaySwitch::Details, QStringLiteral("Details"));
    case CommandAction::ToggleSnapToGrid:
        return toggle(DisplaySwitch::SnapToGrid, QStringLiteral("SnapToGrid"));
    case CommandAction::AbsolutePosition:
        return absolutePosition();
    case CommandAction::InsertTableDialog: {
        QVariant parameters;
        return m_dialogs->insertTableDialog(&parameters)
            && m_surface.execCommand(entry.platformCommand, entry.option, parameters);
    }
    case CommandAction::GuardedDelete:
        return deleteTablePart(m_surface, m_selection, m_references, prompts(), command)
            == TableEdit::Done;
    case CommandAction::SpellCheck:
        return m_hooks.spellCheck && m_hooks.spellCheck();
    case CommandAction::ImageFromArguments:
        return imageFromArguments();
    case CommandAction::TableFromArguments:
    case CommandAction::TableFromArgumentsToBody:
        return tableFromArguments(entry.action == CommandAction::TableFromArgumentsToBody);
    case CommandAction::PageProperties:
        return m_dialogs->pageProperties();
    case CommandAction::TableProperties:
        return m_dialogs->tableProperties();
    case CommandAction::CellProperties:
        return m_dialogs->cellProperties();
    }
    return false;
}

bool Executor::pickColor(const CommandEntry &entry)
{
    const std::optional<QColor> color = prompts().color(QColor(0, 0, 0));
    if (!color)
        return false;
    return m_surface.execCommand(
        entry.platformCommand, entry.option, color->name(QColor::HexRgb).toUpper());
}

// The surface shows no dialogs of its own: ours ask, then the commands run without
// prompting.
bool Executor::promptedCommand(int designCommand)
{
    switch (designCommand) {
    case DesignCommand::Font:
        return chooseFont(m_surface, prompts());
    case DesignCommand::FindText:
        // Finding selects and changes nothing.
        if (m_hooks.showFindDialog)
            m_hooks.showFindDialog();
        return false;
    default:
        return false;
    }
}

bool Executor::toggle(DisplaySwitch which, const QString &buttonKey)
{
    const bool on = !displaySwitch(which);
    if (m_hooks.setDisplaySwitch) {
        if (!m_hooks.setDisplaySwitch(which, on))
            return false;
    } else {
        m_switches[static_cast<int>(which)] = on;
    }
    if (m_hooks.setButtonPressed)
        m_hooks.setButtonPressed(buttonKey, on);
    return true;
}

bool Executor::absolutePosition()
{
    const std::optional<QString> toolTip = toggleAbsolutePosition(m_surface);
    if (!toolTip)
        return false;
    if (m_hooks.setButtonToolTip)
        m_hooks.setButtonToolTip(QStringLiteral("Absolute"), *toolTip);
    return true;
}

bool Executor::hyperlink()
{
    const QString color = QStringLiteral("color");
    const QString decoration = QStringLiteral("text-decoration");
    const QString target = QStringLiteral("target");
    const QString title = QStringLiteral("title");
    const QString dataFld = QStringLiteral("dataFld");
    const QString href = QStringLiteral("href");

    // Empty values leave no empty attribute behind.
    const auto write = [this](const Element &anchor, const QString &name, const QString &value) {
        if (value.isEmpty())
            m_surface.removeAttribute(anchor, name);
        else
            m_surface.setAttribute(anchor, name, value);
    };

    Element anchor;
    if (m_selection.findSelectedElementByTag(QStringLiteral("A")))
        anchor = m_references.found;

    if (anchor.isNull()) {
        const std::optional<LinkFields> link = m_dialogs->editLink({}, false);
        if (!link)
            return false;
        if (!m_surface.execCommand(
                DesignCommand::Hyperlink, DesignSurface::OptionDontPromptUser, link->href))
            return false;
        if (!m_selection.findSelectedElementByTag(QStringLiteral("A")))
            return false;
        anchor = m_references.found;
        write(anchor, target, link->target);
        write(anchor, title, link->title);
        write(anchor, dataFld, link->dataFld);
        m_surface.setStyleProperty(anchor, color, link->color);
        m_surface.setStyleProperty(anchor, decoration, link->textDecoration);
        return !m_surface.lastCallFailed();
    }

    LinkFields current;
    current.href = m_surface.attribute(anchor, href);
    current.target = m_surface.attribute(anchor, target);
    current.title = m_surface.attribute(anchor, title);
    current.dataFld = m_surface.attribute(anchor, dataFld);
    current.color = m_surface.styleProperty(anchor, color);
    current.textDecoration = m_surface.styleProperty(anchor, decoration);
    if (m_surface.lastCallFailed())
        return false;
    const std::optional<LinkFields> link = m_dialogs->editLink(current, true);
    if (!link)
        return false;
    write(anchor, target, link->target);
    write(anchor, title, link->title);
    write(anchor, dataFld, link->dataFld);
    m_surface.setStyleProperty(anchor, color, link->color);
    m_surface.setStyleProperty(anchor, decoration, link->textDecoration);
    m_surface.setAttribute(anchor, href, link->href);

    // A link left without an address goes; its text stays.
    if (link->href.isEmpty() && m_surface.selectionType() != Platform::SelectionType::Control) {
        const QString text = m_surface.innerHTML(anchor);
        if (m_surface.lastCallFailed() || !m_surface.setOuterHTML(anchor, text))
            return false;
    }
    return !m_surface.lastCallFailed();
}

// The host's methods return nothing, so an impossible size is refused in words.
bool Executor::tableFromArguments(bool appendToBody)
{
    const QString problem = tableArgumentsProblem(m_table);
    if (!problem.isEmpty()) {
        prompts().information(problem);
        return false;
    }
    return appendToBody ? appendTableToBody(m_surface, m_table)
                        : insertTableAtSelection(m_surface, m_table);
}

bool Executor::imageFromArguments()
{
    if (m_image.src.isEmpty()) {
        const QString picked = prompts().openFileName(QStringLiteral("Pick Image"),
            QStringLiteral("Images (*.gif *.jpg *.jpeg *.png *.bmp *.svg *.webp);;All Files (*)"));
        if (picked.isEmpty())
            return false;
        m_image.src = m_hooks.placeImage ? m_hooks.placeImage(picked) : picked;
        if (m_image.src.isEmpty())
            return false;
        // The picked picture keeps its natural size.
        m_image.width.clear();
        m_image.height.clear();
    }
    const Platform::TextRange range = m_surface.selectionRange();
    if (m_surface.lastCallFailed())
        return false;
    return m_surface.pasteHTML(range, imageMarkup(m_image));
}

} // namespace Vantry::Commands
