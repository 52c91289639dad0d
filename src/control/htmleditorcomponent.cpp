#include <VantryHTMLEditor/HTMLEditorComponent.h>

#include "commands/commandtables.h"
#include "commands/contextmenus.h"
#include "commands/editortoolbar.h"
#include "commands/executor.h"
#include "commands/fontcontrols.h"
#include "commands/htmlelement.h"
#include "commands/selectionaccess.h"
#include "commands/selectionstate.h"
#include "commands/toolbarbuilder.h"
#include "control/contentexchange.h"
#include "control/documentfields.h"
#include "control/editorlayout.h"
#include "control/fileoperations.h"
#include "control/focustracker.h"
#include "control/settings.h"
#include "control/shortcuts.h"
#include "control/sourceview.h"
#include "dialogs/styleflow.h"
#include "dialogs/stylerules.h"
#include "platform/designsurface.h"
#include "platform/prompts/findreplacedialog.h"
#include "platform/prompts/userprompts.h"
#include "platform/scintilla/sourceeditor.h"
#include "text/designsearch.h"
#include "text/findreplace.h"
#include "text/printing.h"
#include "text/scriptinjection.h"

#include <QAction>
#include <QApplication>
#include <QHash>
#include <QResizeEvent>
#include <QScreen>
#include <QTabBar>
#include <QToolBar>

namespace Vantry {

using Control::ContentExchange;
using Control::PropertyInfo;

namespace {

// Height of a toolbar row, in twips; the toolbar model keeps where each row sits.
constexpr int rowHeightInTwips = 420;

bool isNone(const QString &display)
{
    return display.compare(QLatin1String("none"), Qt::CaseInsensitive) == 0;
}

} // namespace

class HTMLEditorComponent::Private
{
public:
    explicit Private(HTMLEditorComponent *q);
    ~Private();

    void assign(const QString &name, const QVariant &value);
    void applySideEffect(const QString &name);
    void layout();
    void applyToolbarDisplay();
    void applyTabStripDisplay();
    void applyEnabled();
    bool insertTableByName(const QVariantMap &arguments, bool second);
    void onDocumentComplete();
    void onFocusChanged(QWidget *now);
    void onDocumentEdited();
    void raiseMouse(void (HTMLEditorComponent::*signal)(qint16 &, qint16 &, float &, float &),
        int button, int shift, double x, double y);
    template <typename T> T *companion(QPointer<T> &slot) const;
    void attachStyle(clsStyle *style);
    // The context of the style methods; they place no images.
    Dialogs::TableFlow styleFlow()
    {
        return {*surface, *selection, references, *dialogs, *prompts, {}, settings.ImageDirectory};
    }
    void showFindDialog();

    HTMLEditorComponent *q;
    Control::Settings settings;
    std::array<QToolBar *, 3> rows{};
    // Kept here: a hidden row is given no height, and on some platforms the toolbar's own
    // layout drops the minimum that setFixedHeight set, so its height would stay 0.
    int rowHeight = 0;
    QWidget *tabPanel = nullptr;
    QTabBar *tabs = nullptr;
    QWidget *editPanel = nullptr;
    Platform::DesignSurface *surface = nullptr; // owned by editPanel
    std::unique_ptr<ContentExchange> exchange;
    std::unique_ptr<Control::SourceView> sourceView;
    std::unique_ptr<Platform::UserPrompts> prompts;
    std::unique_ptr<EditorDialogs> dialogs;
    Commands::DocumentReferences references;
    std::unique_ptr<Commands::SelectionAccess> selection;
    std::unique_ptr<Text::FindReplace> finder;
    std::unique_ptr<Text::ScriptInjection> scriptInjection;
    std::unique_ptr<Text::Printing> printing;
    std::unique_ptr<Commands::Executor> executor;
    std::unique_ptr<Commands::ContextMenus> menus;
    std::unique_ptr<Control::FileOperations> files;
    Control::FocusTracker focus;
    std::unique_ptr<Commands::CommandStatusSource> commandStatus;
    std::unique_ptr<Commands::EditorToolbar> toolbarControls;
    bool firstCompletionHandled = false;
    QMetaObject::Connection focusConnection;
    std::unique_ptr<Text::DesignSearch> designSearch;
    QPointer<Platform::FindReplaceDialog> findDialog;

    mutable QPointer<clsContextMenu> contextMenu;
    mutable QPointer<clsToolbar> toolbar;
    mutable QPointer<clsStyle> styleSheet;
    mutable QPointer<clsDocumentProperties> documentProperties;
};

HTMLEditorComponent::Private::Private(HTMLEditorComponent *q)
    : q(q)
{
    const qreal dpi = q->logicalDpiY();
    rowHeight = Control::twipsToPixels(rowHeightInTwips, dpi);
    const char *rowNames[] = {"StandardToolbar", "FormattingToolbar", "TableEditingToolbar"};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        rows[i] = new QToolBar(q);
        rows[i]->setObjectName(QLatin1String(rowNames[i]));
        rows[i]->setMovable(false);
        rows[i]->setFloatable(false);
        rows[i]->setFixedHeight(rowHeight);
    }

    tabPanel = new QWidget(q);
    tabPanel->setObjectName(QStringLiteral("picTabs"));
    tabs = new QTabBar(tabPanel);
    tabs->setObjectName(QStringLiteral("TabStrip1"));
    tabs->addTab(QStringLiteral("Design"));
    tabs->addTab(QStringLiteral("Source"));
    tabs->setDrawBase(false);
    tabs->setExpanding(false);

    editPanel = new QWidget(q);
    editPanel->setObjectName(QStringLiteral("picDHTMLEdit"));
    surface = Platform::createDesignSurface(editPanel);
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
        settings, *surface, editPanel, tabs, std::move(viewHooks));
    sourceView->setUp(settings.ApplicationDirectoryPath);

    prompts = std::make_unique<Platform::WidgetPrompts>(q);
    dialogs = std::make_unique<WidgetDialogs>(q);
    Commands::SelectionAccess::Hooks selectionHooks;
    selectionHooks.isReady = [this] { return exchange->isDocumentReady(); };
    selectionHooks.prompts = [this]() -> Platform::UserPrompts & { return *prompts; };
    selection = std::make_unique<Commands::SelectionAccess>(
        *surface, references, std::move(selectionHooks));
    finder = std::make_unique<Text::FindReplace>(*surface, references);
    scriptInjection = std::make_unique<Text::ScriptInjection>(*surface, *selection, references);
    printing = std::make_unique<Text::Printing>(
        *surface, [this]() -> Platform::UserPrompts & { return *prompts; });
    Commands::Executor::Hooks executorHooks;
    executorHooks.designViewActive = [q] { return q->DesignViewActive(); };
    executorHooks.displaySwitch = [this](Commands::DisplaySwitch which) {
        return surface->displaySwitch(Commands::displaySwitchName(which));
    };
    executorHooks.setDisplaySwitch = [this](Commands::DisplaySwitch which, bool on) {
        return surface->setDisplaySwitch(Commands::displaySwitchName(which), on);
    };
    executorHooks.markDirty = [q] { q->setisDirty(true); };
    executorHooks.prompts = [this]() -> Platform::UserPrompts & { return *prompts; };
    executorHooks.dialogs = [this]() -> EditorDialogs & { return *dialogs; };
    executorHooks.imageDirectory = [this] { return settings.ImageDirectory; };
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
    designSearch = std::make_unique<Text::DesignSearch>(*surface);
    // Ctrl+F in the design view; the source editor has its own.
    auto *findAction = new QAction(QStringLiteral("Find..."), surface->widget());
    findAction->setShortcut(QKeySequence::Find);
    findAction->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    surface->widget()->addAction(findAction);
    surface->setShortcutClaim([this, q](const QKeySequence &keys) {
        return Control::shortcutClaim(q->window(), keys, [this](const QAction *action) {
            return toolbarControls && toolbarControls->enginesKeysDoTheSame(action);
        });
    });
    QObject::connect(findAction, &QAction::triggered, q, [this] { executor->executeCommand(38); });
    executorHooks.showFindDialog = [this] { showFindDialog(); };
    executor = std::make_unique<Commands::Executor>(
        *surface, *selection, references, std::move(executorHooks));
    Commands::ContextMenus::Hooks menuHooks;
    menuHooks.designViewActive = [q] { return q->DesignViewActive(); };
    menuHooks.disabled = [this] { return settings.DisableContextMenus; };
    menuHooks.settings = [q]() -> clsContextMenu & { return *q->ContextMenu(); };
    menuHooks.execute = [this](int number) { executor->executeCommand(number); };
    menuHooks.elementProperties = [this, q] {
        if (executor->dialogs().elementProperties())
            q->setisDirty(true);
    };
    menuHooks.flashProperties = [this, q] {
        if (executor->dialogs().flashProperties())
            q->setisDirty(true);
    };
    menuHooks.customClicked = [q](const QString &key) {
        QString sCustomMenuKey = key;
        Q_EMIT q->CustomContextMenuClick(sCustomMenuKey);
    };
    menus = std::make_unique<Commands::ContextMenus>(*surface, *selection, std::move(menuHooks));
    Control::FileOperations::Hooks fileHooks;
    fileHooks.prompts = [this]() -> Platform::UserPrompts & { return *prompts; };
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
    toolbarControls = std::make_unique<Commands::EditorToolbar>(rows, q, std::move(toolbarHooks));
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
    QObject::connect(toolbarControls.get(), &Commands::EditorToolbar::selectionStateChanged, q,
        [q](const QString &key, bool enabled, bool selected) {
            QString sCommandName = key;
            Q_EMIT q->CurrentSelectionStateChange(sCommandName, enabled, selected);
        });
    QObject::connect(toolbarControls.get(), &Commands::EditorToolbar::selectionTextChanged, q,
        [q](const QString &key, const QString &value) {
            QString sCommandName = key;
            QString sValue = value;
            Q_EMIT q->CurrentSelectionStateChangeText(sCommandName, sValue);
        });

    using Platform::DesignSurface;
    QObject::connect(
        surface, &DesignSurface::displayChanged, q, [this] { toolbarControls->requestRefresh(); });
    QObject::connect(
        surface, &DesignSurface::documentComplete, q, [this] { onDocumentComplete(); });
    QObject::connect(surface, &DesignSurface::keyDown, q, [this] {
        Q_EMIT this->q->HTMLChanged();
        if (!focus.hasFocus())
            surface->focusDocument();
    });
    // Content changes, not key presses (a caret move is no edit), make the document dirty.
    QObject::connect(surface, &DesignSurface::contentChanged, q, [this] { onDocumentEdited(); });
    QObject::connect(
        sourceView->editor(), &Platform::SourceEditor::edited, q, [this] { onDocumentEdited(); });
    QObject::connect(
        surface, &DesignSurface::mouseDown, q, [this](int b, int s, double x, double y) {
            raiseMouse(&HTMLEditorComponent::MouseDown, b, s, x, y);
        });
    QObject::connect(
        surface, &DesignSurface::mouseMove, q, [this](int b, int s, double x, double y) {
            raiseMouse(&HTMLEditorComponent::MouseMove, b, s, x, y);
        });
    QObject::connect(surface, &DesignSurface::mouseUp, q, [this](int b, int s, double x, double y) {
        raiseMouse(&HTMLEditorComponent::MouseUp, b, s, x, y);
    });
    QObject::connect(surface, &DesignSurface::contextMenuRequested, q,
        [this](const QPoint &position) { menus->popup(surface->widget(), position); });
    QObject::connect(surface, &DesignSurface::clicked, q, [this] {
        if (focus.hasFocus())
            surface->focusDocument();
    });
    focusConnection = QObject::connect(qApp, &QApplication::focusChanged, q,
        [this](QWidget *, QWidget *now) { onFocusChanged(now); });
}

// The design view's find dialog is modeless and kept once made; it starts from the
// selected text when there is a short one.
void HTMLEditorComponent::Private::showFindDialog()
{
    if (!findDialog)
        findDialog = new Platform::FindReplaceDialog(*designSearch, q);
    const QString selected = surface->rangeText(surface->selectionRange());
    if (!surface->lastCallFailed() && !selected.isEmpty() && selected.size() < 100
        && !selected.contains(QLatin1Char('\n')))
        findDialog->setFindText(selected);
    findDialog->setReplaceMode(false);
    findDialog->show();
    findDialog->raise();
    findDialog->activateWindow();
}

HTMLEditorComponent::Private::~Private()
{
    // The widgets outlive this object by a moment (QWidget's destructor deletes them and
    // moves the focus); nothing may call back into it meanwhile.
    QObject::disconnect(focusConnection);
    QObject::disconnect(surface, nullptr, q, nullptr);
}

template <typename T> T *HTMLEditorComponent::Private::companion(QPointer<T> &slot) const
{
    if (!slot)
        slot = new T(q);
    return slot;
}

void HTMLEditorComponent::Private::attachStyle(clsStyle *style)
{
    if (!style)
        return;
    style->m_sheetAddresses = [this] { return surface->styleSheetHrefs(); };
    style->m_sheets = [this] {
        return exchange->isDocumentReady() ? surface->styleSheets() : QList<StyleSheetInfo>();
    };
    style->m_addSheet = [this](const QString &href) {
        const bool linked = exchange->isDocumentReady() && surface->addStyleSheet(href);
        if (linked)
            q->setisDirty(true);
        return linked;
    };
}

void HTMLEditorComponent::Private::raiseMouse(
    void (HTMLEditorComponent::*signal)(qint16 &, qint16 &, float &, float &), int button,
    int shift, double x, double y)
{
    qint16 b = static_cast<qint16>(button);
    qint16 s = static_cast<qint16>(shift);
    float fx = static_cast<float>(x);
    float fy = static_cast<float>(y);
    Q_EMIT(q->*signal)(b, s, fx, fy);
}

void HTMLEditorComponent::Private::onFocusChanged(QWidget *now)
{
    const bool inside = now && (now == q || q->isAncestorOf(now));
    if (inside && focus.enter())
        Q_EMIT q->EnterFocus();
    else if (!inside && focus.leave())
        Q_EMIT q->ExitFocus();
}

void HTMLEditorComponent::Private::onDocumentEdited()
{
    Q_EMIT q->HTMLChanged();
    if (!settings.isDirty)
        q->setisDirty(true);
}

void HTMLEditorComponent::Private::onDocumentComplete()
{
    if (!exchange->isDocumentReady()) {
        exchange->setDocumentReady();
        if (!firstCompletionHandled) {
            firstCompletionHandled = true;
            surface->useElementFormatting();
            // Properties read from a bag ran no side effects; the surface still needs the
            // base address for relative images.
            if (!settings.BaseURL.isEmpty())
                surface->setBaseUrl(settings.BaseURL);
            layout();
            // Replays a load the host asked for before the surface was ready; the host
            // heard of that assignment when it made it.
            if (exchange->isLoadPending()) {
                if (!settings.SetHtmlSource.isEmpty())
                    exchange->load(settings.SetHtmlSource);
                if (!settings.DefaultFontColor.isEmpty())
                    q->setDefaultFontColor(settings.DefaultFontColor);
                if (!settings.DefaultFontName.isEmpty())
                    q->setDefaultFontName(settings.DefaultFontName);
                if (!settings.DefaultFontSize.isEmpty())
                    q->setDefaultFontSize(settings.DefaultFontSize);
            }
        }
    }
    Q_EMIT q->DocumentLoaded();
}

void HTMLEditorComponent::Private::assign(const QString &name, const QVariant &value)
{
    const PropertyInfo *info = Control::findProperty(name);
    if (!info)
        return;
    info->set(settings, value);
    if (!info->announcedName.isEmpty())
        Q_EMIT q->PropertyChanged(QString(info->announcedName));
    applySideEffect(name);
}

void HTMLEditorComponent::Private::applySideEffect(const QString &name)
{
    if (name == QLatin1String("SetDisplayHeight") || name == QLatin1String("SetDisplayWidth")) {
        layout();
    } else if (name == QLatin1String("ScrollTop")) {
        // Historically this property moves the page sideways; hosts rely on it.
        surface->setScrollLeft(settings.ScrollTop);
    } else if (name == QLatin1String("ScrollLeft")) {
        surface->setScrollLeft(settings.ScrollLeft);
    } else if (name == QLatin1String("SetHtmlSource")) {
        // The field holds the text as assigned; the load stores the transformed text.
        exchange->load(settings.SetHtmlSource);
    } else if (name == QLatin1String("BaseURL")) {
        surface->setBaseUrl(settings.BaseURL);
    } else if (name == QLatin1String("ReturnFullDocument")) {
        toolbarControls->setButtonState(
            QStringLiteral("PageProperties"), settings.ReturnFullDocument);
    } else if (name == QLatin1String("Enabled")) {
        applyEnabled();
    } else if (name == QLatin1String("ToolbarDisplay")) {
        applyToolbarDisplay();
    } else if (name == QLatin1String("TabStripDisplay")) {
        applyTabStripDisplay();
    } else if (name == QLatin1String("PageTitle")) {
        Control::DocumentFields::setPageTitle(*surface, settings.PageTitle);
    } else if (name == QLatin1String("KeyWords")) {
        Control::DocumentFields::setKeyWords(*surface, settings.KeyWords);
    } else if (name == QLatin1String("ScrollBars")) {
        surface->setScrollBarsVisible(settings.ScrollBars);
    }
}

void HTMLEditorComponent::Private::applyEnabled()
{
    const bool enabled = settings.Enabled;
    surface->setEditable(enabled);
    sourceView->setEditorEnabled(enabled);
    exchange->setEnabled(enabled);
    for (QToolBar *row : rows)
        row->setEnabled(enabled);
}

void HTMLEditorComponent::Private::applyToolbarDisplay()
{
    const bool hide = isNone(settings.ToolbarDisplay);
    for (int i : {1, 2, 0})
        rows[i]->setVisible(!hide);
    layout();
}

void HTMLEditorComponent::Private::applyTabStripDisplay()
{
    const bool hide = isNone(settings.TabStripDisplay);
    tabPanel->setVisible(!hide);
    tabs->setVisible(!hide);
    layout();
}

void HTMLEditorComponent::Private::layout()
{
    Control::LayoutInput input;
    input.size = q->size();
    // The host may reorder the rows and hide single ones.
    const std::array<QToolBar *, 3> ordered = toolbarControls->rowsTopToBottom();
    for (std::size_t i = 0; i < ordered.size(); ++i)
        input.rowHeights[i] = ordered[i]->isHidden() ? 0 : rowHeight;
    input.toolbarsVisible = !isNone(settings.ToolbarDisplay);
    input.tabStripVisible = !isNone(settings.TabStripDisplay);
    input.tabStripHeight = tabs->sizeHint().height();
    input.displayWidth = settings.SetDisplayWidth;
    input.displayHeight = settings.SetDisplayHeight;

    const Control::LayoutResult result = Control::computeLayout(input);
    for (std::size_t i = 0; i < ordered.size(); ++i)
        ordered[i]->setGeometry(result.rows[i]);
    tabPanel->setGeometry(result.tabStrip);
    tabs->setGeometry(0, 0, result.tabStrip.width(), result.tabStrip.height());
    editPanel->setGeometry(result.editingPanel);
    surface->widget()->setGeometry(0, 0, result.editingPanel.width(), result.editingPanel.height());
    sourceView->layout(result.editingPanel.size(), result.tabStrip.size());
}

HTMLEditorComponent::HTMLEditorComponent(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{
    setFocusPolicy(Qt::StrongFocus);
    setFocusProxy(d->surface->widget());
    setMinimumSize(200, 150);
    InitProperties();
    d->layout();
}

HTMLEditorComponent::~HTMLEditorComponent() = default;

void HTMLEditorComponent::InitProperties()
{
    Control::initProperties(d->settings);
}

void HTMLEditorComponent::ReadProperties(PropertyBag &bag)
{
    Control::readProperties(d->settings, bag);
    // The source view's files live under ApplicationDirectoryPath.
    d->sourceView->setUp(d->settings.ApplicationDirectoryPath);
}

void HTMLEditorComponent::WriteProperties(PropertyBag &bag) const
{
    Control::writeProperties(d->settings, bag);
}

void HTMLEditorComponent::HTMLRefresh()
{
    d->surface->refresh();
}

void HTMLEditorComponent::FileNew()
{
    d->files->fileNew();
}

void HTMLEditorComponent::FileOpen(const QString &sFilePath)
{
    d->files->fileOpen(sFilePath);
}

void HTMLEditorComponent::URLOpen(const QVariant &sURL)
{
    d->files->urlOpen(sURL.toString());
}

QString HTMLEditorComponent::FileSave(const QString &sFilePath)
{
    return d->files->fileSave(sFilePath);
}

QString HTMLEditorComponent::FileSaveAs(const QString &sFilePath)
{
    return d->files->fileSaveAs(sFilePath);
}

void HTMLEditorComponent::setUserPrompts(std::unique_ptr<UserPrompts> prompts)
{
    // Without prompts of its own the editor goes back to message boxes and dialogs.
    d->prompts = prompts ? std::move(prompts) : std::make_unique<Platform::WidgetPrompts>(this);
}

UserPrompts &HTMLEditorComponent::userPrompts() const
{
    return *d->prompts;
}

void HTMLEditorComponent::setEditorDialogs(std::unique_ptr<EditorDialogs> dialogs)
{
    d->dialogs = dialogs ? std::move(dialogs) : std::make_unique<WidgetDialogs>(this);
}

EditorDialogs &HTMLEditorComponent::editorDialogs() const
{
    return *d->dialogs;
}

HTMLElement HTMLEditorComponent::GetSelectedElementObject()
{
    return Commands::HTMLElementAccess::make(d->surface, d->selection->selectedElement());
}

QVariant HTMLEditorComponent::RemoveSelectedElementObject(const QString &sTagName)
{
    d->selection->removeSelectedElementObject(sTagName);
    return {};
}

QVariant HTMLEditorComponent::GetSelectedHTML()
{
    return d->selection->selectedMarkup();
}

QVariant HTMLEditorComponent::ReplaceSelectedHTML(const QString &sHTMLToReplace)
{
    d->selection->replaceSelection(sHTMLToReplace);
    return {};
}

void HTMLEditorComponent::InsertHTML(const QString &sHTML)
{
    d->selection->insertMarkupAtSelection(int(Commands::InsertKind::Html), sHTML);
}

void HTMLEditorComponent::FindAndReplaceHTML(
    const QVariant &sHTMLToFind, const QVariant &sHTMLToReplace)
{
    d->selection->findAndReplaceHTML(sHTMLToFind.toString(), sHTMLToReplace.toString());
}

QString HTMLEditorComponent::GetStyleOfCurrentElement(const QString &Style)
{
    return Dialogs::currentElementStyle(d->styleFlow(), Style);
}

void HTMLEditorComponent::SetStyleOfCurrentElement(const QString &Style, const QString &Value)
{
    if (DesignViewActive() && Dialogs::setCurrentElementStyle(d->styleFlow(), Style, Value))
        setisDirty(true);
}

void HTMLEditorComponent::SetFilterOfCurrentElement(const QString &Filter, const QString &Property)
{
    SetStyleOfCurrentElement(QStringLiteral("filter"), Dialogs::filterText(Filter, Property));
}

void HTMLEditorComponent::SelectStyleDialog()
{
    if (DesignViewActive() && d->executor->dialogs().selectStyle())
        setisDirty(true);
}

void HTMLEditorComponent::FlashMovieDialog()
{
    if (DesignViewActive() && d->executor->dialogs().flashProperties())
        setisDirty(true);
}

QVariant HTMLEditorComponent::CheckBoolean(const QVariant &sValue) const
{
    return Commands::CheckBoolean(sValue);
}

void HTMLEditorComponent::InsertButton()
{
    d->selection->insertMarkupAtSelection(int(Commands::InsertKind::Button), {});
}

void HTMLEditorComponent::InsertSubmitButton()
{
    d->selection->insertMarkupAtSelection(int(Commands::InsertKind::SubmitButton), {});
}

void HTMLEditorComponent::InsertResetButton()
{
    d->selection->insertMarkupAtSelection(int(Commands::InsertKind::ResetButton), {});
}

void HTMLEditorComponent::InsertCheckBox()
{
    d->selection->insertMarkupAtSelection(int(Commands::InsertKind::CheckBox), {});
}

void HTMLEditorComponent::InsertRadio()
{
    d->selection->insertMarkupAtSelection(int(Commands::InsertKind::Radio), {});
}

void HTMLEditorComponent::InsertDropDown()
{
    d->selection->insertMarkupAtSelection(int(Commands::InsertKind::DropDown), {});
}

void HTMLEditorComponent::InsertListBox()
{
    d->selection->insertMarkupAtSelection(int(Commands::InsertKind::ListBox), {});
}

void HTMLEditorComponent::InsertTextBox()
{
    d->selection->insertMarkupAtSelection(int(Commands::InsertKind::TextBox), {});
}

void HTMLEditorComponent::InsertTextArea()
{
    d->selection->insertMarkupAtSelection(int(Commands::InsertKind::TextArea), {});
}

void HTMLEditorComponent::InsertForm()
{
    d->selection->insertMarkupAtSelection(int(Commands::InsertKind::Form), {});
}

bool HTMLEditorComponent::FindFirstText(const QString &sTextoFind)
{
    return d->finder->findFirstText(sTextoFind);
}

bool HTMLEditorComponent::FindNextText(const QString &sTextoFind)
{
    return d->finder->findNextText(sTextoFind);
}

bool HTMLEditorComponent::FindFirstTextInSelection(const QString &sTextoFind)
{
    return d->finder->findFirstTextInSelection(sTextoFind);
}

bool HTMLEditorComponent::FindNextTextInSelection(const QString &sTextoFind)
{
    return d->finder->findNextTextInSelection(sTextoFind);
}

bool HTMLEditorComponent::ReplaceFirstText(const QString &sTextoFind, const QString &sTextoReplace)
{
    return d->finder->replaceFirstText(sTextoFind, sTextoReplace);
}

bool HTMLEditorComponent::ReplaceNextText(const QString &sTextoFind, const QString &sTextoReplace)
{
    return d->finder->replaceNextText(sTextoFind, sTextoReplace);
}

bool HTMLEditorComponent::ReplaceFirstTextInSelection(
    const QString &sTextoFind, const QString &sTextoReplace)
{
    return d->finder->replaceFirstTextInSelection(sTextoFind, sTextoReplace);
}

bool HTMLEditorComponent::ReplaceNextTextInSelection(
    const QString &sTextoFind, const QString &sTextoReplace)
{
    return d->finder->replaceNextTextInSelection(sTextoFind, sTextoReplace);
}

bool HTMLEditorComponent::ReplaceAllTextInSelection(
    const QString &sTextoFind, const QString &sTextoReplace)
{
    return d->finder->replaceAllTextInSelection(sTextoFind, sTextoReplace);
}

bool HTMLEditorComponent::ReplaceAllText(const QString &sTextoFind, const QString &sTextoReplace)
{
    return d->finder->replaceAllText(sTextoFind, sTextoReplace);
}

void HTMLEditorComponent::AddJavaScript(const QVariant &sFunction)
{
    if (d->exchange->isDocumentReady())
        d->scriptInjection->addJavaScript(sFunction);
}

void HTMLEditorComponent::PrintHTML()
{
    if (d->exchange->isDocumentReady())
        d->printing->printPage();
}

bool HTMLEditorComponent::isDocumentReady() const
{
    return d->exchange->isDocumentReady();
}

void HTMLEditorComponent::ToggleDesignSourceView(const QVariant &sView)
{
    d->sourceView->toggle(sView);
}

bool HTMLEditorComponent::DesignViewActive() const
{
    return d->sourceView->isDesignViewActive();
}

void HTMLEditorComponent::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    d->layout();
}

QString HTMLEditorComponent::GetHtmlSource()
{
    return d->exchange->getHtmlSource();
}

QString HTMLEditorComponent::GetPlainText()
{
    return d->exchange->getPlainText();
}

QString HTMLEditorComponent::PageTitle()
{
    if (!d->exchange->isDocumentReady())
        return d->settings.PageTitle;
    return Control::DocumentFields::pageTitle(*d->surface);
}

QString HTMLEditorComponent::KeyWords()
{
    if (!d->exchange->isDocumentReady())
        return d->settings.KeyWords;
    return Control::DocumentFields::keyWords(*d->surface);
}

clsContextMenu *HTMLEditorComponent::ContextMenu() const
{
    return d->companion(d->contextMenu);
}

void HTMLEditorComponent::setContextMenu(clsContextMenu *menu)
{
    d->contextMenu = menu;
}

clsToolbar *HTMLEditorComponent::Toolbar() const
{
    if (!d->toolbar)
        d->toolbarControls->attach(d->companion(d->toolbar));
    return d->toolbar;
}

void HTMLEditorComponent::setToolbar(clsToolbar *toolbar)
{
    d->toolbar = toolbar;
    d->toolbarControls->attach(toolbar);
}

void HTMLEditorComponent::SetButtonState(const QString &ButtonKey, bool bState)
{
    d->toolbarControls->setButtonState(ButtonKey, bState);
}

void HTMLEditorComponent::SetButtonVisibleState(const QString &ButtonKey, bool bState)
{
    d->toolbarControls->setButtonVisibleState(ButtonKey, bState);
}

QVariant HTMLEditorComponent::GetButtonEnabledState(const QString &ButtonKey) const
{
    return d->toolbarControls->buttonEnabledState(ButtonKey);
}

QVariant HTMLEditorComponent::GetButtonLatchedState(const QString &ButtonKey) const
{
    return d->toolbarControls->buttonLatchedState(ButtonKey);
}

void HTMLEditorComponent::FontName(const QString &sFontName)
{
    d->toolbarControls->fonts().applyFontName(sFontName);
}

void HTMLEditorComponent::FontSize(const QVariant &sFontSize)
{
    d->toolbarControls->fonts().applyFontSize(sFontSize);
}

void HTMLEditorComponent::FontColor(const QVariant &FontColor)
{
    d->toolbarControls->fonts().applyFontColor(FontColor);
}

clsStyle *HTMLEditorComponent::StyleSheet() const
{
    if (!d->styleSheet)
        d->attachStyle(d->companion(d->styleSheet));
    return d->styleSheet;
}

void HTMLEditorComponent::setStyleSheet(clsStyle *style)
{
    d->styleSheet = style;
    d->attachStyle(style);
}

clsDocumentProperties *HTMLEditorComponent::DocumentProperties() const
{
    return d->companion(d->documentProperties);
}

void HTMLEditorComponent::setDocumentProperties(clsDocumentProperties *properties)
{
    d->documentProperties = properties;
}

// Stored properties: GET returns the field; LET stores, announces, then runs the side
// effect (see Private::applySideEffect).

bool HTMLEditorComponent::isDirty() const
{
    return d->settings.isDirty;
}

void HTMLEditorComponent::setisDirty(bool value)
{
    d->assign(QStringLiteral("isDirty"), QVariant::fromValue(value));
}

bool HTMLEditorComponent::UploadImagesWhenInserted() const
{
    return d->settings.UploadImagesWhenInserted;
}

void HTMLEditorComponent::setUploadImagesWhenInserted(bool value)
{
    d->assign(QStringLiteral("UploadImagesWhenInserted"), QVariant::fromValue(value));
}

bool HTMLEditorComponent::CopyImagesWhenInserted() const
{
    return d->settings.CopyImagesWhenInserted;
}

void HTMLEditorComponent::setCopyImagesWhenInserted(bool value)
{
    d->assign(QStringLiteral("CopyImagesWhenInserted"), QVariant::fromValue(value));
}

qint16 HTMLEditorComponent::SetDisplayHeight() const
{
    return d->settings.SetDisplayHeight;
}

void HTMLEditorComponent::setSetDisplayHeight(qint16 value)
{
    d->assign(QStringLiteral("SetDisplayHeight"), QVariant::fromValue(value));
}

qint16 HTMLEditorComponent::ScrollTop() const
{
    return d->settings.ScrollTop;
}

void HTMLEditorComponent::setScrollTop(qint16 value)
{
    d->assign(QStringLiteral("ScrollTop"), QVariant::fromValue(value));
}

qint16 HTMLEditorComponent::ScrollLeft() const
{
    return d->settings.ScrollLeft;
}

void HTMLEditorComponent::setScrollLeft(qint16 value)
{
    d->assign(QStringLiteral("ScrollLeft"), QVariant::fromValue(value));
}

void HTMLEditorComponent::setGetHtmlSource(const QString &value)
{
    d->assign(QStringLiteral("GetHtmlSource"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::SetHtmlSource() const
{
    return d->settings.SetHtmlSource;
}

void HTMLEditorComponent::setSetHtmlSource(const QString &value)
{
    d->assign(QStringLiteral("SetHtmlSource"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::FTP_ServerName() const
{
    return d->settings.FTP_ServerName;
}

void HTMLEditorComponent::setFTP_ServerName(const QString &value)
{
    d->assign(QStringLiteral("FTP_ServerName"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::FTP_UserName() const
{
    return d->settings.FTP_UserName;
}

void HTMLEditorComponent::setFTP_UserName(const QString &value)
{
    d->assign(QStringLiteral("FTP_UserName"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::FTP_Password() const
{
    return d->settings.FTP_Password;
}

void HTMLEditorComponent::setFTP_Password(const QString &value)
{
    d->assign(QStringLiteral("FTP_Password"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::FTP_InitialDir() const
{
    return d->settings.FTP_InitialDir;
}

void HTMLEditorComponent::setFTP_InitialDir(const QString &value)
{
    d->assign(QStringLiteral("FTP_InitialDir"), QVariant::fromValue(value));
}

qint16 HTMLEditorComponent::SetDisplayWidth() const
{
    return d->settings.SetDisplayWidth;
}

void HTMLEditorComponent::setSetDisplayWidth(qint16 value)
{
    d->assign(QStringLiteral("SetDisplayWidth"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::ContentPages() const
{
    return d->settings.ContentPages;
}

void HTMLEditorComponent::setContentPages(const QString &value)
{
    d->assign(QStringLiteral("ContentPages"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::PortalPages() const
{
    return d->settings.PortalPages;
}

void HTMLEditorComponent::setPortalPages(const QString &value)
{
    d->assign(QStringLiteral("PortalPages"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::ContentSites() const
{
    return d->settings.ContentSites;
}

void HTMLEditorComponent::setContentSites(const QString &value)
{
    d->assign(QStringLiteral("ContentSites"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::BaseURL() const
{
    return d->settings.BaseURL;
}

void HTMLEditorComponent::setBaseURL(const QString &value)
{
    d->assign(QStringLiteral("BaseURL"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::ImageDirectory() const
{
    return d->settings.ImageDirectory;
}

void HTMLEditorComponent::setImageDirectory(const QString &value)
{
    d->assign(QStringLiteral("ImageDirectory"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::ImageVCDirectory() const
{
    return d->settings.ImageVCDirectory;
}

void HTMLEditorComponent::setImageVCDirectory(const QString &value)
{
    d->assign(QStringLiteral("ImageVCDirectory"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::FTP_FileNamePrefix() const
{
    return d->settings.FTP_FileNamePrefix;
}

void HTMLEditorComponent::setFTP_FileNamePrefix(const QString &value)
{
    d->assign(QStringLiteral("FTP_FileNamePrefix"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::FTP_FileNameSuffix() const
{
    return d->settings.FTP_FileNameSuffix;
}

void HTMLEditorComponent::setFTP_FileNameSuffix(const QString &value)
{
    d->assign(QStringLiteral("FTP_FileNameSuffix"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::FTP_RistrictedDirectory() const
{
    return d->settings.FTP_RistrictedDirectory;
}

void HTMLEditorComponent::setFTP_RistrictedDirectory(const QString &value)
{
    d->assign(QStringLiteral("FTP_RistrictedDirectory"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::FTP_AllowMultiableFiles() const
{
    return d->settings.FTP_AllowMultiableFiles;
}

void HTMLEditorComponent::setFTP_AllowMultiableFiles(const QString &value)
{
    d->assign(QStringLiteral("FTP_AllowMultiableFiles"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::FTP_OverWriteFiles() const
{
    return d->settings.FTP_OverWriteFiles;
}

void HTMLEditorComponent::setFTP_OverWriteFiles(const QString &value)
{
    d->assign(QStringLiteral("FTP_OverWriteFiles"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::FTP_IncermentExistingFileNames() const
{
    return d->settings.FTP_IncermentExistingFileNames;
}

void HTMLEditorComponent::setFTP_IncermentExistingFileNames(const QString &value)
{
    d->assign(QStringLiteral("FTP_IncermentExistingFileNames"), QVariant::fromValue(value));
}

bool HTMLEditorComponent::IncermentExistingFileNames() const
{
    return d->settings.IncermentExistingFileNames;
}

void HTMLEditorComponent::setIncermentExistingFileNames(bool value)
{
    d->assign(QStringLiteral("IncermentExistingFileNames"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::FTP_StripInvalidCharacters() const
{
    return d->settings.FTP_StripInvalidCharacters;
}

void HTMLEditorComponent::setFTP_StripInvalidCharacters(const QString &value)
{
    d->assign(QStringLiteral("FTP_StripInvalidCharacters"), QVariant::fromValue(value));
}

bool HTMLEditorComponent::PreserveWhiteSpace() const
{
    return d->settings.PreserveWhiteSpace;
}

void HTMLEditorComponent::setPreserveWhiteSpace(bool value)
{
    d->assign(QStringLiteral("PreserveWhiteSpace"), QVariant::fromValue(value));
}

bool HTMLEditorComponent::ReturnFullDocument() const
{
    return d->settings.ReturnFullDocument;
}

void HTMLEditorComponent::setReturnFullDocument(bool value)
{
    d->assign(QStringLiteral("ReturnFullDocument"), QVariant::fromValue(value));
}

bool HTMLEditorComponent::MakePathsRelativeOnSave() const
{
    return d->settings.MakePathsRelativeOnSave;
}

void HTMLEditorComponent::setMakePathsRelativeOnSave(bool value)
{
    d->assign(QStringLiteral("MakePathsRelativeOnSave"), QVariant::fromValue(value));
}

bool HTMLEditorComponent::Enabled() const
{
    return d->settings.Enabled;
}

void HTMLEditorComponent::setEditorEnabled(bool value)
{
    d->assign(QStringLiteral("Enabled"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::LinkTargets() const
{
    return d->settings.LinkTargets;
}

void HTMLEditorComponent::setLinkTargets(const QString &value)
{
    d->assign(QStringLiteral("LinkTargets"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::ToolbarDisplay() const
{
    return d->settings.ToolbarDisplay;
}

void HTMLEditorComponent::setToolbarDisplay(const QString &value)
{
    d->assign(QStringLiteral("ToolbarDisplay"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::TabStripDisplay() const
{
    return d->settings.TabStripDisplay;
}

void HTMLEditorComponent::setTabStripDisplay(const QString &value)
{
    d->assign(QStringLiteral("TabStripDisplay"), QVariant::fromValue(value));
}

void HTMLEditorComponent::setPageTitle(const QString &value)
{
    d->assign(QStringLiteral("PageTitle"), QVariant::fromValue(value));
}

void HTMLEditorComponent::setKeyWords(const QString &value)
{
    d->assign(QStringLiteral("KeyWords"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::ChangeImageOnDblClickTags() const
{
    return d->settings.ChangeImageOnDblClickTags;
}

void HTMLEditorComponent::setChangeImageOnDblClickTags(const QString &value)
{
    d->assign(QStringLiteral("ChangeImageOnDblClickTags"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::RelativePathToRoot() const
{
    return d->settings.RelativePathToRoot;
}

void HTMLEditorComponent::setRelativePathToRoot(const QString &value)
{
    d->assign(QStringLiteral("RelativePathToRoot"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::DefaultFontName() const
{
    return d->settings.DefaultFontName;
}

void HTMLEditorComponent::setDefaultFontName(const QString &value)
{
    d->assign(QStringLiteral("DefaultFontName"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::DefaultFontSize() const
{
    return d->settings.DefaultFontSize;
}

void HTMLEditorComponent::setDefaultFontSize(const QString &value)
{
    d->assign(QStringLiteral("DefaultFontSize"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::DefaultFontColor() const
{
    return d->settings.DefaultFontColor;
}

void HTMLEditorComponent::setDefaultFontColor(const QString &value)
{
    d->assign(QStringLiteral("DefaultFontColor"), QVariant::fromValue(value));
}

QString HTMLEditorComponent::ApplicationDirectoryPath() const
{
    return d->settings.ApplicationDirectoryPath;
}

void HTMLEditorComponent::setApplicationDirectoryPath(const QString &value)
{
    d->assign(QStringLiteral("ApplicationDirectoryPath"), QVariant::fromValue(value));
}

bool HTMLEditorComponent::ChangeImageOnDblClick() const
{
    return d->settings.ChangeImageOnDblClick;
}

void HTMLEditorComponent::setChangeImageOnDblClick(bool value)
{
    d->assign(QStringLiteral("ChangeImageOnDblClick"), QVariant::fromValue(value));
}

bool HTMLEditorComponent::DisableContextMenus() const
{
    return d->settings.DisableContextMenus;
}

void HTMLEditorComponent::setDisableContextMenus(bool value)
{
    d->assign(QStringLiteral("DisableContextMenus"), QVariant::fromValue(value));
}

bool HTMLEditorComponent::ScrollBars() const
{
    return d->settings.ScrollBars;
}

void HTMLEditorComponent::setScrollBars(bool value)
{
    d->assign(QStringLiteral("ScrollBars"), QVariant::fromValue(value));
}

// Editing commands: each hands its number to the executor.

void HTMLEditorComponent::Bold()
{
    d->executor->executeCommand(1);
}

void HTMLEditorComponent::Italic()
{
    d->executor->executeCommand(2);
}

void HTMLEditorComponent::Underline()
{
    d->executor->executeCommand(3);
}

void HTMLEditorComponent::NumberBullets()
{
    d->executor->executeCommand(4);
}

void HTMLEditorComponent::Bullets()
{
    d->executor->executeCommand(5);
}

void HTMLEditorComponent::Outdent()
{
    d->executor->executeCommand(6);
}

void HTMLEditorComponent::Indent()
{
    d->executor->executeCommand(7);
}

void HTMLEditorComponent::LeftAlign()
{
    d->executor->executeCommand(8);
}

void HTMLEditorComponent::CenterAlign()
{
    d->executor->executeCommand(9);
}

void HTMLEditorComponent::RightAlign()
{
    d->executor->executeCommand(10);
}

void HTMLEditorComponent::ForeColor()
{
    d->executor->executeCommand(11);
}

void HTMLEditorComponent::BackColor()
{
    d->executor->executeCommand(12);
}

void HTMLEditorComponent::Hyperlink()
{
    d->executor->executeCommand(13);
}

void HTMLEditorComponent::UploadImage()
{
    d->executor->executeCommand(14);
}

void HTMLEditorComponent::InsertImage()
{
    d->executor->executeCommand(15);
}

void HTMLEditorComponent::Cut()
{
    d->executor->executeCommand(16);
}

void HTMLEditorComponent::Copy()
{
    d->executor->executeCommand(17);
}

void HTMLEditorComponent::Paste()
{
    d->executor->executeCommand(18);
}

void HTMLEditorComponent::UnDo()
{
    d->executor->executeCommand(19);
}

void HTMLEditorComponent::ReDo()
{
    d->executor->executeCommand(20);
}

void HTMLEditorComponent::Border()
{
    d->executor->executeCommand(21);
}

void HTMLEditorComponent::Details()
{
    d->executor->executeCommand(22);
}

void HTMLEditorComponent::AbsolutePosition()
{
    d->executor->executeCommand(23);
}

void HTMLEditorComponent::LockElement()
{
    d->executor->executeCommand(24);
}

void HTMLEditorComponent::SnapToGrid()
{
    d->executor->executeCommand(26);
}

void HTMLEditorComponent::InsertTABLE()
{
    d->executor->executeCommand(27);
}

void HTMLEditorComponent::InsertRow()
{
    d->executor->executeCommand(28);
}

void HTMLEditorComponent::DeleteRow()
{
    d->executor->executeCommand(29);
}

void HTMLEditorComponent::InsertColumn()
{
    d->executor->executeCommand(30);
}

void HTMLEditorComponent::DeleteColumn()
{
    d->executor->executeCommand(31);
}

void HTMLEditorComponent::InsertCell()
{
    d->executor->executeCommand(32);
}

void HTMLEditorComponent::DeleteCell()
{
    d->executor->executeCommand(33);
}

void HTMLEditorComponent::MergeCells()
{
    d->executor->executeCommand(34);
}

void HTMLEditorComponent::SplitCells()
{
    d->executor->executeCommand(35);
}

void HTMLEditorComponent::Font()
{
    d->executor->executeCommand(36);
}

void HTMLEditorComponent::SelectAll()
{
    d->executor->executeCommand(37);
}

void HTMLEditorComponent::Find()
{
    d->executor->executeCommand(38);
}

void HTMLEditorComponent::BringToFront()
{
    d->executor->executeCommand(39);
}

void HTMLEditorComponent::SendToBack()
{
    d->executor->executeCommand(40);
}

void HTMLEditorComponent::BringForward()
{
    d->executor->executeCommand(41);
}

void HTMLEditorComponent::SendBack()
{
    d->executor->executeCommand(42);
}

void HTMLEditorComponent::BringAboveText()
{
    d->executor->executeCommand(43);
}

void HTMLEditorComponent::SendBelowText()
{
    d->executor->executeCommand(44);
}

void HTMLEditorComponent::FlashProperties()
{
    d->executor->executeCommand(53);
}

void HTMLEditorComponent::SpellCheck()
{
    d->executor->executeCommand(46);
}

void HTMLEditorComponent::PageProperties()
{
    d->executor->executeCommand(50);
}

void HTMLEditorComponent::InsertImageNoPrompt(QString &psIMAGE_Width, QString &psIMAGE_Height,
    QString &psIMAGE_vspace, QString &psIMAGE_hspace, QString &psIMAGE_align,
    QString &psIMAGE_border, QString &psIMAGE_alt, QString &psIMAGE_src, QString &psIMAGE_Style)
{
    Commands::ImageArguments image{psIMAGE_Width, psIMAGE_Height, psIMAGE_vspace, psIMAGE_hspace,
        psIMAGE_align, psIMAGE_border, psIMAGE_alt, psIMAGE_src, psIMAGE_Style};
    d->executor->insertImageFromArguments(image);
    psIMAGE_Width = image.width;
    psIMAGE_Height = image.height;
    psIMAGE_src = image.src;
}

void HTMLEditorComponent::InsertTABLENoPrompt(QString &psTABLE_Width, QString &psTABLE_Height,
    QString &psTABLE_Rows, QString &psTABLE_Columns, QString &psTABLE_Align,
    QString &psTABLE_Valign, QString &psTABLE_BGImage, QString &psTABLE_BGColor,
    QString &psTABLE_Border, QString &psTABLE_CellSpacing, QString &psTABLE_CellPadding,
    QString &psTABLE_BorderColor, QString &psTABLE_Style)
{
    QString noClass;
    d->executor->insertTableFromArguments(
        {psTABLE_Width, psTABLE_Height, psTABLE_Rows, psTABLE_Columns, psTABLE_Align,
            psTABLE_Valign, psTABLE_BGImage, psTABLE_BGColor, psTABLE_Border, psTABLE_CellSpacing,
            psTABLE_CellPadding, psTABLE_BorderColor, psTABLE_Style, noClass},
        false);
}

void HTMLEditorComponent::InsertTABLENoPrompt2(QString &psTABLE_Width, QString &psTABLE_Height,
    QString &psTABLE_Rows, QString &psTABLE_Columns, QString &psTABLE_Align,
    QString &psTABLE_Valign, QString &psTABLE_BGImage, QString &psTABLE_BGColor,
    QString &psTABLE_Border, QString &psTABLE_CellSpacing, QString &psTABLE_CellPadding,
    QString &psTABLE_BorderColor, QString &psTABLE_Style, QString &psTABLE_Class)
{
    d->executor->insertTableFromArguments(
        {psTABLE_Width, psTABLE_Height, psTABLE_Rows, psTABLE_Columns, psTABLE_Align,
            psTABLE_Valign, psTABLE_BGImage, psTABLE_BGColor, psTABLE_Border, psTABLE_CellSpacing,
            psTABLE_CellPadding, psTABLE_BorderColor, psTABLE_Style, psTABLE_Class},
        true);
}

void HTMLEditorComponent::InsertImageNoPrompt(const QString &psIMAGE_Width,
    const QString &psIMAGE_Height, const QString &psIMAGE_vspace, const QString &psIMAGE_hspace,
    const QString &psIMAGE_align, const QString &psIMAGE_border, const QString &psIMAGE_alt,
    const QString &psIMAGE_src, const QString &psIMAGE_Style)
{
    Commands::ImageArguments image{psIMAGE_Width, psIMAGE_Height, psIMAGE_vspace, psIMAGE_hspace,
        psIMAGE_align, psIMAGE_border, psIMAGE_alt, psIMAGE_src, psIMAGE_Style};
    d->executor->insertImageFromArguments(image);
}

void HTMLEditorComponent::InsertTABLENoPrompt(const QString &psTABLE_Width,
    const QString &psTABLE_Height, const QString &psTABLE_Rows, const QString &psTABLE_Columns,
    const QString &psTABLE_Align, const QString &psTABLE_Valign, const QString &psTABLE_BGImage,
    const QString &psTABLE_BGColor, const QString &psTABLE_Border,
    const QString &psTABLE_CellSpacing, const QString &psTABLE_CellPadding,
    const QString &psTABLE_BorderColor, const QString &psTABLE_Style)
{
    d->executor->insertTableFromArguments(
        {psTABLE_Width, psTABLE_Height, psTABLE_Rows, psTABLE_Columns, psTABLE_Align,
            psTABLE_Valign, psTABLE_BGImage, psTABLE_BGColor, psTABLE_Border, psTABLE_CellSpacing,
            psTABLE_CellPadding, psTABLE_BorderColor, psTABLE_Style, QString()},
        false);
}

void HTMLEditorComponent::InsertTABLENoPrompt2(const QString &psTABLE_Width,
    const QString &psTABLE_Height, const QString &psTABLE_Rows, const QString &psTABLE_Columns,
    const QString &psTABLE_Align, const QString &psTABLE_Valign, const QString &psTABLE_BGImage,
    const QString &psTABLE_BGColor, const QString &psTABLE_Border,
    const QString &psTABLE_CellSpacing, const QString &psTABLE_CellPadding,
    const QString &psTABLE_BorderColor, const QString &psTABLE_Style, const QString &psTABLE_Class)
{
    d->executor->insertTableFromArguments(
        {psTABLE_Width, psTABLE_Height, psTABLE_Rows, psTABLE_Columns, psTABLE_Align,
            psTABLE_Valign, psTABLE_BGImage, psTABLE_BGColor, psTABLE_Border, psTABLE_CellSpacing,
            psTABLE_CellPadding, psTABLE_BorderColor, psTABLE_Style, psTABLE_Class},
        true);
}

bool HTMLEditorComponent::InsertTABLENoPrompt(const QVariantMap &arguments)
{
    return d->insertTableByName(arguments, false);
}

bool HTMLEditorComponent::InsertTABLENoPrompt2(const QVariantMap &arguments)
{
    return d->insertTableByName(arguments, true);
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
