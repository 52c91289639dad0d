#include <VantryHTMLEditor/HTMLEditorComponent.h>

#include "control/htmleditorcomponent_p.h"

#include "commands/commandtables.h"
#include "commands/editortoolbar.h"
#include "commands/executor.h"
#include "commands/fontcontrols.h"
#include "commands/htmlelement.h"
#include "commands/selectionaccess.h"
#include "control/contentexchange.h"
#include "control/documentfields.h"
#include "control/fileoperations.h"
#include "control/sourceview.h"
#include "platform/designsurface.h"
#include "platform/prompts/userprompts.h"
#include "text/findreplace.h"
#include "text/printing.h"
#include "text/scriptinjection.h"

#include <QResizeEvent>

#include <type_traits>

namespace Vantry {

using Commands::Command;
using Control::Settings;

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

HTMLElement HTMLEditorComponent::GetSelectedElementObject() const
{
    return Commands::HTMLElementAccess::make(d->surface, d->selection->selectedElement());
}

QVariant HTMLEditorComponent::RemoveSelectedElementObject(const QString &sTagName)
{
    d->selection->removeSelectedElementObject(sTagName);
    return {};
}

QVariant HTMLEditorComponent::GetSelectedHTML() const
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

QVariant HTMLEditorComponent::CheckBoolean(const QVariant &sValue) const
{
    return Commands::CheckBoolean(sValue);
}

// A form control pasted in place of the selection.
#define VANTRY_INSERT_CONTROL(Method, Kind)                                                        \
    void HTMLEditorComponent::Method()                                                             \
    {                                                                                              \
        d->selection->insertMarkupAtSelection(int(Commands::InsertKind::Kind), {});                \
    }

VANTRY_INSERT_CONTROL(InsertButton, Button)
VANTRY_INSERT_CONTROL(InsertSubmitButton, SubmitButton)
VANTRY_INSERT_CONTROL(InsertResetButton, ResetButton)
VANTRY_INSERT_CONTROL(InsertCheckBox, CheckBox)
VANTRY_INSERT_CONTROL(InsertRadio, Radio)
VANTRY_INSERT_CONTROL(InsertDropDown, DropDown)
VANTRY_INSERT_CONTROL(InsertListBox, ListBox)
VANTRY_INSERT_CONTROL(InsertTextBox, TextBox)
VANTRY_INSERT_CONTROL(InsertTextArea, TextArea)
VANTRY_INSERT_CONTROL(InsertForm, Form)

#undef VANTRY_INSERT_CONTROL

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

QString HTMLEditorComponent::GetHtmlSource() const
{
    return d->exchange->getHtmlSource();
}

QString HTMLEditorComponent::GetPlainText() const
{
    return d->exchange->getPlainText();
}

QString HTMLEditorComponent::PageTitle() const
{
    if (!d->exchange->isDocumentReady())
        return d->settings.PageTitle;
    return Control::DocumentFields::pageTitle(*d->surface);
}

QString HTMLEditorComponent::KeyWords() const
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
    return d->attachDocumentProperties(d->companion(d->documentProperties));
}

void HTMLEditorComponent::setDocumentProperties(clsDocumentProperties *properties)
{
    d->attachDocumentProperties(properties);
}

namespace {

// Setters take texts by reference and the small kinds by value, as the header declares them.
template <typename T>
using Argument = std::conditional_t<std::is_same_v<T, QString>, const QString &, T>;

} // namespace

// A stored property: the getter returns its field, the setter goes through assign.
#define VANTRY_STORED_PROPERTY(Type, Name)                                                         \
    Type HTMLEditorComponent::Name() const                                                         \
    {                                                                                              \
        return d->settings.Name;                                                                   \
    }                                                                                              \
    void HTMLEditorComponent::set##Name(Argument<Type> value)                                      \
    {                                                                                              \
        d->assign(&Settings::Name, QVariant::fromValue(value));                                    \
    }

VANTRY_STORED_PROPERTY(bool, isDirty)
VANTRY_STORED_PROPERTY(bool, UploadImagesWhenInserted)
VANTRY_STORED_PROPERTY(bool, CopyImagesWhenInserted)
VANTRY_STORED_PROPERTY(qint16, SetDisplayHeight)
VANTRY_STORED_PROPERTY(qint16, ScrollTop)
VANTRY_STORED_PROPERTY(qint16, ScrollLeft)
VANTRY_STORED_PROPERTY(QString, SetHtmlSource)
VANTRY_STORED_PROPERTY(QString, FTP_ServerName)
VANTRY_STORED_PROPERTY(QString, FTP_UserName)
VANTRY_STORED_PROPERTY(QString, FTP_Password)
VANTRY_STORED_PROPERTY(QString, FTP_InitialDir)
VANTRY_STORED_PROPERTY(qint16, SetDisplayWidth)
VANTRY_STORED_PROPERTY(QString, ContentPages)
VANTRY_STORED_PROPERTY(QString, PortalPages)
VANTRY_STORED_PROPERTY(QString, ContentSites)
VANTRY_STORED_PROPERTY(QString, BaseURL)
VANTRY_STORED_PROPERTY(QString, ImageDirectory)
VANTRY_STORED_PROPERTY(QString, ImageVCDirectory)
VANTRY_STORED_PROPERTY(QString, FTP_FileNamePrefix)
VANTRY_STORED_PROPERTY(QString, FTP_FileNameSuffix)
VANTRY_STORED_PROPERTY(QString, FTP_RistrictedDirectory)
VANTRY_STORED_PROPERTY(QString, FTP_AllowMultiableFiles)
VANTRY_STORED_PROPERTY(QString, FTP_OverWriteFiles)
VANTRY_STORED_PROPERTY(QString, FTP_IncermentExistingFileNames)
VANTRY_STORED_PROPERTY(bool, IncermentExistingFileNames)
VANTRY_STORED_PROPERTY(QString, FTP_StripInvalidCharacters)
VANTRY_STORED_PROPERTY(bool, PreserveWhiteSpace)
VANTRY_STORED_PROPERTY(bool, ReturnFullDocument)
VANTRY_STORED_PROPERTY(bool, MakePathsRelativeOnSave)
VANTRY_STORED_PROPERTY(QString, LinkTargets)
VANTRY_STORED_PROPERTY(QString, ToolbarDisplay)
VANTRY_STORED_PROPERTY(QString, TabStripDisplay)
VANTRY_STORED_PROPERTY(QString, ChangeImageOnDblClickTags)
VANTRY_STORED_PROPERTY(QString, RelativePathToRoot)
VANTRY_STORED_PROPERTY(QString, DefaultFontName)
VANTRY_STORED_PROPERTY(QString, DefaultFontSize)
VANTRY_STORED_PROPERTY(QString, DefaultFontColor)
VANTRY_STORED_PROPERTY(QString, ApplicationDirectoryPath)
VANTRY_STORED_PROPERTY(bool, ChangeImageOnDblClick)
VANTRY_STORED_PROPERTY(bool, DisableContextMenus)
VANTRY_STORED_PROPERTY(bool, ScrollBars)
VANTRY_STORED_PROPERTY(bool, SpellCheckAsYouType)

#undef VANTRY_STORED_PROPERTY

// The editing switch has its own setter name: setEnabled is QWidget's.
bool HTMLEditorComponent::Enabled() const
{
    return d->settings.Enabled;
}

void HTMLEditorComponent::setEditorEnabled(bool value)
{
    d->assign(&Settings::Enabled, QVariant::fromValue(value));
}

// These read the live document; assigning them still goes through the table.
void HTMLEditorComponent::setGetHtmlSource(const QString &value)
{
    d->assign(&Settings::GetHtmlSource, QVariant::fromValue(value));
}

void HTMLEditorComponent::setPageTitle(const QString &value)
{
    d->assign(&Settings::PageTitle, QVariant::fromValue(value));
}

void HTMLEditorComponent::setKeyWords(const QString &value)
{
    d->assign(&Settings::KeyWords, QVariant::fromValue(value));
}

// An editing command: the executor runs it under the rules every command follows.
#define VANTRY_COMMAND(Method, Name)                                                               \
    void HTMLEditorComponent::Method()                                                             \
    {                                                                                              \
        d->executor->executeCommand(Command::Name);                                                \
    }

VANTRY_COMMAND(Bold, Bold)
VANTRY_COMMAND(Italic, Italic)
VANTRY_COMMAND(Underline, Underline)
VANTRY_COMMAND(NumberBullets, NumberBullets)
VANTRY_COMMAND(Bullets, Bullets)
VANTRY_COMMAND(Outdent, Outdent)
VANTRY_COMMAND(Indent, Indent)
VANTRY_COMMAND(LeftAlign, LeftAlign)
VANTRY_COMMAND(CenterAlign, CenterAlign)
VANTRY_COMMAND(RightAlign, RightAlign)
VANTRY_COMMAND(ForeColor, ForeColor)
VANTRY_COMMAND(BackColor, BackColor)
VANTRY_COMMAND(Hyperlink, Hyperlink)
VANTRY_COMMAND(UploadImage, UploadImage)
VANTRY_COMMAND(InsertImage, InsertImage)
VANTRY_COMMAND(Cut, Cut)
VANTRY_COMMAND(Copy, Copy)
VANTRY_COMMAND(Paste, Paste)
VANTRY_COMMAND(UnDo, UnDo)
VANTRY_COMMAND(ReDo, ReDo)
VANTRY_COMMAND(Border, Border)
VANTRY_COMMAND(Details, Details)
VANTRY_COMMAND(AbsolutePosition, AbsolutePosition)
VANTRY_COMMAND(LockElement, LockElement)
VANTRY_COMMAND(SnapToGrid, SnapToGrid)
VANTRY_COMMAND(InsertTABLE, InsertTable)
VANTRY_COMMAND(InsertRow, InsertRow)
VANTRY_COMMAND(DeleteRow, DeleteRow)
VANTRY_COMMAND(InsertColumn, InsertColumn)
VANTRY_COMMAND(DeleteColumn, DeleteColumn)
VANTRY_COMMAND(InsertCell, InsertCell)
VANTRY_COMMAND(DeleteCell, DeleteCell)
VANTRY_COMMAND(MergeCells, MergeCells)
VANTRY_COMMAND(SplitCells, SplitCells)
VANTRY_COMMAND(Font, Font)
VANTRY_COMMAND(SelectAll, SelectAll)
VANTRY_COMMAND(Find, Find)
VANTRY_COMMAND(BringToFront, BringToFront)
VANTRY_COMMAND(SendToBack, SendToBack)
VANTRY_COMMAND(BringForward, BringForward)
VANTRY_COMMAND(SendBack, SendBack)
VANTRY_COMMAND(BringAboveText, BringAboveText)
VANTRY_COMMAND(SendBelowText, SendBelowText)
VANTRY_COMMAND(FlashProperties, InsertFlash)
VANTRY_COMMAND(SpellCheck, SpellCheck)
VANTRY_COMMAND(PageProperties, PageProperties)

#undef VANTRY_COMMAND

} // namespace Vantry
