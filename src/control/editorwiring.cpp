#include "control/imageplacement.h"
#include "platform/hunspell/dictionaries.h"
#include "text/spellingcheck.h"
#include "text/spellingunderlines.h"
#include "control/uploadcommand.h"
#include "commands/companionlinks.h"
#include "control/htmleditorcomponent_p.h"

#include "commands/command.h"
#include "commands/commandtables.h"
#include "commands/contextmenus.h"
#include "commands/documentpage.h"
#include "commands/editortoolbar.h"
#include "commands/executor.h"
#include "commands/selectionstate.h"
#include "commands/toolbarbuilder.h"
#include "control/contentexchange.h"
#include "control/documentfields.h"
#include "control/eventrelay.h"
#include "control/fileoperations.h"
#include "control/firstdocument.h"
#include "control/sourceview.h"
#include "dialogs/linklists.h"
#include "platform/designsurface.h"
#include "platform/prompts/userprompts.h"
#include "platform/scintilla/sourceeditor.h"
#include "text/designfind.h"
#include "text/findreplace.h"
#include "text/printing.h"
#include "text/scriptinjection.h"

#include <QAction>
#include <QCoreApplication>

namespace Vantry {

using Commands::Command;
using Control::ContentExchange;
using Control::PropertyEffect;
using Control::PropertyInfo;
using Control::Settings;

HTMLEditorComponent::Private::Private(HTMLEditorComponent *q)
    : q(q)
    , frame(q)
{
    surface = Platform::createDesignSurface(frame.editPanel());
    surface->widget()->setObjectName(QStringLiteral("DHTMLEdit1"));

    ContentExchange::Hooks hooks;
    hooks.styleSheetLinks = [q] { return q->StyleSheet()->LoadStylesSource(); };
    hooks.settle = [] { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); };
    hooks.ensureDesignView = [this] { sourceView->switchBackToDesign(); };
    hooks.sourceViewText = [this]() -> std::optional<QString> {
        if (sourceView->isDesignViewActive())
            return std::nullopt;
        return sourceView->editor()->text();
    };
    exchange = std::make_unique<ContentExchange>(settings, *surface, std::move(hooks));

    Control::SourceView::Hooks viewHooks;
    viewHooks.isDocumentReady = [this] { return exchange->isDocumentReady(); };
    viewHooks.setEnabledFlag = [this](bool enabled) { exchange->setEnabled(enabled); };
    viewHooks.styleSheetLinks = [q] { return q->StyleSheet()->LoadStylesSource(); };
    viewHooks.refreshToolbarStates = [this] { toolbarControls->refresh(); };
    viewHooks.setFocusTarget = [q](QWidget *target) { q->setFocusProxy(target); };
    sourceView = std::make_unique<Control::SourceView>(
        settings, *surface, frame.editPanel(), frame.tabs(), std::move(viewHooks));
    sourceView->setUp(settings.ApplicationDirectoryPath);

    prompts = std::make_unique<Platform::WidgetPrompts>(q);
    dialogs = std::make_unique<WidgetDialogs>(q);
    const auto currentPrompts = [this]() -> Platform::UserPrompts & { return *prompts; };
    Commands::SelectionAccess::Hooks selectionHooks;
    selectionHooks.isReady = [this] { return exchange->isDocumentReady(); };
    selectionHooks.prompts = currentPrompts;
    selection = std::make_unique<Commands::SelectionAccess>(
        *surface, references, std::move(selectionHooks));
    page = std::make_unique<Commands::DocumentPage>(
        *surface, *selection, references, [this] { return exchange->isDocumentReady(); });
    finder = std::make_unique<Text::FindReplace>(*surface, references);
    scriptInjection = std::make_unique<Text::ScriptInjection>(
        *surface,
        [this](const QString &tagName) { return selection->findSelectedElementByTag(tagName); },
        references);
    printing = std::make_unique<Text::Printing>(*surface, currentPrompts);
    designFind = std::make_unique<Text::DesignFind>(
        *surface, q, [this] { executor->executeCommand(Command::Find); });

    Commands::Executor::Hooks executorHooks;
    executorHooks.designViewActive = [q] { return q->DesignViewActive(); };
    executorHooks.displaySwitch = [this](Commands::DisplaySwitch which) {
        return surface->displaySwitch(Commands::displaySwitchName(which));
    };
    executorHooks.setDisplaySwitch = [this](Commands::DisplaySwitch which, bool on) {
        return surface->setDisplaySwitch(Commands::displaySwitchName(which), on);
    };
    executorHooks.markDirty = [q] { q->setisDirty(true); };
    executorHooks.prompts = currentPrompts;
    executorHooks.dialogs = [this]() -> EditorDialogs & { return *dialogs; };
    upload = std::make_unique<Images::ImageUploadCommand>(Images::ImageUploadCommand::Hooks{
        [this]() -> const Control::Settings & { return settings; },
        [this]() -> EditorDialogs & { return *dialogs; }, currentPrompts});
    executorHooks.uploadImage = [this] { return upload->run(); };
    dictionaries = std::make_unique<Platform::Dictionaries>();
    spelling = std::make_unique<Text::SpellingCheck>(*surface, *dictionaries);
    underlines = std::make_unique<Text::SpellingUnderlines>(*surface, *dictionaries,
        [this] { return settings.SpellCheckAsYouType && exchange->isDocumentReady(); });
    executorHooks.spellCheck = [this] {
        const bool changed = spelling->checkDocument(*dialogs, *prompts);
        // Words added or ignored in the walk lose their underlines.
        underlines->schedule();
        return changed;
    };
    executorHooks.imageDirectory = [this] { return settings.ImageDirectory; };
    executorHooks.linkSources = [this](LinkPropertiesValues &values) {
        values.ContentSites = settings.ContentSites;
        values.ContentPages = settings.ContentPages;
        values.PortalPages = settings.PortalPages;
        values.Targets = Dialogs::linkTargets(settings.LinkTargets);
    };
    Images::ImagePlacement::Hooks imageHooks;
    imageHooks.prompts = currentPrompts;
    imageHooks.isReady = [this] { return exchange->isDocumentReady(); };
    imageHooks.imageInserted = [q](const QString &fileName, const QString &filePath) {
        QVariant sFileName = fileName;
        QVariant sFilePath = filePath;
        Q_EMIT q->ImageInserted(sFileName, sFilePath);
    };
    imageHooks.htmlChanged = [q] { Q_EMIT q->HTMLChanged(); };
    imageHooks.markDirty = [q] { q->setisDirty(true); };
    imageHooks.designViewActive = [q] { return q->DesignViewActive(); };
    imageHooks.upload = [this](const QString &path) { return upload->uploadInserted(path); };
    images = std::make_unique<Images::ImagePlacement>(
        settings, *surface, *selection, references, std::move(imageHooks));
    QObject::connect(upload.get(), &Images::ImageUploadCommand::imageUploaded, q,
        [this](const QString &local, const QString &remote, const QString &address) {
            images->insertUploadedImage({local, remote, address});
        });
    executorHooks.placeImage
        = [this](const QString &path) { return images->placeInsertedImage(path); };
    executorHooks.imagesPlaced = [this](bool completed) { images->announcePlaced(completed); };
    executorHooks.setButtonPressed = [this](const QString &key, bool pressed) {
        if (QAction *button = toolbarControls->buttons().button(key)) {
            button->setCheckable(true);
            button->setChecked(pressed);
        }
    };
    executorHooks.setButtonToolTip = [this](const QString &key, const QString &toolTip) {
        if (QAction *button = toolbarControls->buttons().button(key))
            button->setToolTip(toolTip);
    };
    executorHooks.showFindDialog = [this] { designFind->showDialog(); };
    executor = std::make_unique<Commands::Executor>(
        *surface, *selection, references, std::move(executorHooks));

    Commands::ContextMenus::Hooks menuHooks;
    menuHooks.designViewActive = [q] { return q->DesignViewActive(); };
    menuHooks.disabled = [this] { return settings.DisableContextMenus; };
    menuHooks.settings = [q]() -> clsContextMenu & { return *q->ContextMenu(); };
    menuHooks.execute = [this](Command command) { executor->executeCommand(command); };
    menuHooks.elementProperties
        = [this] { executor->runDialog(&Commands::DialogLauncher::elementProperties); };
    menuHooks.spellingSuggestions = [this](const QPoint &position) -> std::optional<QStringList> {
        if (const auto word = spelling->misspeltAt(position))
            return word->suggestions;
        return std::nullopt;
    };
    menuHooks.replaceMisspelt = [q, this](const QString &replacement) {
        if (spelling->replaceMisspelt(replacement))
            q->setisDirty(true);
    };
    menuHooks.customClicked = [q](const QString &key) {
        QString sCustomMenuKey = key;
        Q_EMIT q->CustomContextMenuClick(sCustomMenuKey);
    };
    menuHooks.flashProperties
        = [this] { executor->runDialog(&Commands::DialogLauncher::flashProperties); };
    menus = std::make_unique<Commands::ContextMenus>(*surface, *selection, std::move(menuHooks));

    Control::FileOperations::Hooks fileHooks;
    fileHooks.prompts = currentPrompts;
    fileHooks.setDirty = [q](bool dirty) { q->setisDirty(dirty); };
    fileHooks.refreshSelectionState = [this] { toolbarControls->refresh(); };
    fileHooks.settle = [] { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); };
    fileHooks.focusDocument = [this] { sourceView->focusDocument(); };
    files = std::make_unique<Control::FileOperations>(
        settings, *exchange, *surface, std::move(fileHooks));

    Commands::EditorToolbar::Hooks toolbarHooks;
    toolbarHooks.isDocumentReady = [this] { return exchange->isDocumentReady(); };
    toolbarHooks.designViewActive = [q] { return q->DesignViewActive(); };
    toolbarHooks.focusDocument = [this] { surface->focusDocument(); };
    toolbarControls
        = std::make_unique<Commands::EditorToolbar>(frame.rows(), q, std::move(toolbarHooks));
    commandStatus = std::make_unique<Commands::SurfaceStatusSource>(*surface);
    toolbarControls->setStatusSource(commandStatus.get());
    toolbarControls->setCommandSink(executor.get());
    toolbarControls->attach(companion(toolbar));
    QObject::connect(toolbarControls.get(), &Commands::EditorToolbar::buttonClicked, q,
        [this](const QString &key) { executor->executeKey(key); });
    QObject::connect(
        toolbarControls.get(), &Commands::EditorToolbar::rowsChanged, q, [this] { layout(); });
    QObject::connect(sourceView.get(), &Control::SourceView::viewChanged, q,
        [this](Control::SourceView::View view) {
            toolbarControls->followView(view == Control::SourceView::View::Design);
        });

    Control::FirstDocument::Hooks firstHooks;
    firstHooks.layout = [this] { layout(); };
    firstHooks.reassign
        = [this](QString Settings::*field) { assign(field, QVariant::fromValue(settings.*field)); };
    firstDocument = std::make_unique<Control::FirstDocument>(
        settings, *exchange, *surface, std::move(firstHooks));
    Control::EventRelay::Hooks relayHooks;
    relayHooks.documentComplete = [this] { firstDocument->documentComplete(); };
    relay = std::make_unique<Control::EventRelay>(*q, settings, *surface, *sourceView->editor(),
        *toolbarControls, *menus, std::move(relayHooks));
    // Changing the picture asks the user; not from inside the engine's notification.
    QObject::connect(
        surface, &Platform::DesignSurface::doubleClicked, q, [this] { images->doubleClicked(); },
        Qt::QueuedConnection);
}

HTMLEditorComponent::Private::~Private() = default;

void HTMLEditorComponent::Private::attachStyle(clsStyle *style)
{
    Commands::StyleSheetLink::attach(
        style, surface, [this] { return exchange->isDocumentReady(); },
        [this] { q->setisDirty(true); });
}

clsDocumentProperties *HTMLEditorComponent::Private::attachDocumentProperties(
    clsDocumentProperties *properties)
{
    documentProperties = properties;
    Commands::DocumentPropertiesLink::attach(properties, page.get());
    return properties;
}

// Stores, announces, then applies the effect the property table gives the property.
void HTMLEditorComponent::Private::assign(Control::SettingsField field, const QVariant &value)
{
    const PropertyInfo *info = Control::findProperty(field);
    Q_ASSERT(info);
    info->set(settings, value);
    if (!info->announcedName.isEmpty())
        Q_EMIT q->PropertyChanged(QString(info->announcedName));
    applyEffect(info->effect);
}

void HTMLEditorComponent::Private::applyEffect(PropertyEffect effect)
{
    switch (effect) {
    case PropertyEffect::None:
        break;
    case PropertyEffect::Layout:
        layout();
        break;
    case PropertyEffect::ScrollSideways:
        surface->setScrollLeft(settings.ScrollTop);
        break;
    case PropertyEffect::ScrollLeft:
        surface->setScrollLeft(settings.ScrollLeft);
        break;
    case PropertyEffect::Load:
        // The field holds the text as assigned; the load stores the transformed text.
        exchange->load(settings.SetHtmlSource);
        break;
    case PropertyEffect::BaseUrl:
        surface->setBaseUrl(settings.BaseURL);
        break;
    case PropertyEffect::PagePropertiesButton:
        toolbarControls->setButtonState(
            QStringLiteral("PageProperties"), settings.ReturnFullDocument);
        break;
    case PropertyEffect::EditingEnabled:
        applyEnabled();
        break;
    case PropertyEffect::ToolbarDisplay:
        frame.applyToolbarDisplay(settings);
        layout();
        break;
    case PropertyEffect::TabStripDisplay:
        frame.applyTabStripDisplay(settings);
        layout();
        break;
    case PropertyEffect::PageTitle:
        Control::DocumentFields::setPageTitle(*surface, settings.PageTitle);
        break;
    case PropertyEffect::KeyWords:
        Control::DocumentFields::setKeyWords(*surface, settings.KeyWords);
        break;
    case PropertyEffect::ScrollBars:
        surface->setScrollBarsVisible(settings.ScrollBars);
        break;
    case PropertyEffect::SpellingUnderlines:
        applySpellingUnderlines();
        break;
    }
}

void HTMLEditorComponent::Private::applySpellingUnderlines()
{
    underlines->schedule();
}

void HTMLEditorComponent::Private::applyEnabled()
{
    const bool enabled = settings.Enabled;
    surface->setEditable(enabled);
    sourceView->setEditorEnabled(enabled);
    exchange->setEnabled(enabled);
    frame.setToolbarsEnabled(enabled);
}

void HTMLEditorComponent::Private::layout()
{
    const Control::LayoutResult result = frame.layout(settings, toolbarControls->rowsTopToBottom());
    surface->widget()->setGeometry(0, 0, result.editingPanel.width(), result.editingPanel.height());
    sourceView->layout(result.editingPanel.size(), result.tabStrip.size());
}

bool HTMLEditorComponent::Private::insertTableByName(const QVariantMap &arguments, bool second)
{
    QString error;
    const std::optional<Commands::TableArguments> table
        = Commands::tableArgumentsFromMap(arguments, second, &error);
    if (!table) {
        qWarning(
            "%s: %s", second ? "InsertTABLENoPrompt2" : "InsertTABLENoPrompt", qPrintable(error));
        return false;
    }
    executor->insertTableFromArguments(*table, second);
    return true;
}

} // namespace Vantry
