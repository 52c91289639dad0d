#pragma once

#include <VantryHTMLEditor/CompanionObjects.h>
#include <VantryHTMLEditor/EditorDialogs.h>
#include <VantryHTMLEditor/HTMLElement.h>
#include <VantryHTMLEditor/PropertyBag.h>
#include <VantryHTMLEditor/UserPrompts.h>
#include <VantryHTMLEditor/vantryhtmleditor_export.h>

#include <QString>
#include <QVariant>
#include <QWidget>

#include <memory>

namespace Vantry {

// The embeddable HTML editor. A host puts it on a window, configures it through its
// properties (all of them Q_PROPERTYs, so hosts may also drive it by name), hands it a
// page with SetHtmlSource and takes the page back with GetHtmlSource.
//
// Property and method names are the editor's public interface and are kept exactly as
// hosts know them, including their historical spellings. Properties that read the live
// document or hold run-time state are not DESIGNABLE: forms made in Qt Designer set only
// configuration.
class VANTRYHTMLEDITOR_EXPORT HTMLEditorComponent : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool isDirty READ isDirty WRITE setisDirty DESIGNABLE false)
    Q_PROPERTY(bool UploadImagesWhenInserted READ UploadImagesWhenInserted WRITE
            setUploadImagesWhenInserted)
    Q_PROPERTY(
        bool CopyImagesWhenInserted READ CopyImagesWhenInserted WRITE setCopyImagesWhenInserted)
    Q_PROPERTY(qint16 SetDisplayHeight READ SetDisplayHeight WRITE setSetDisplayHeight)
    Q_PROPERTY(qint16 ScrollTop READ ScrollTop WRITE setScrollTop)
    Q_PROPERTY(qint16 ScrollLeft READ ScrollLeft WRITE setScrollLeft)
    Q_PROPERTY(QString GetHtmlSource READ GetHtmlSource WRITE setGetHtmlSource DESIGNABLE false)
    Q_PROPERTY(QString GetPlainText READ GetPlainText DESIGNABLE false)
    Q_PROPERTY(QString SetHtmlSource READ SetHtmlSource WRITE setSetHtmlSource)
    Q_PROPERTY(QString FTP_ServerName READ FTP_ServerName WRITE setFTP_ServerName)
    Q_PROPERTY(QString FTP_UserName READ FTP_UserName WRITE setFTP_UserName)
    Q_PROPERTY(QString FTP_Password READ FTP_Password WRITE setFTP_Password)
    Q_PROPERTY(QString FTP_InitialDir READ FTP_InitialDir WRITE setFTP_InitialDir)
    Q_PROPERTY(qint16 SetDisplayWidth READ SetDisplayWidth WRITE setSetDisplayWidth)
    Q_PROPERTY(QString ContentPages READ ContentPages WRITE setContentPages)
    Q_PROPERTY(QString PortalPages READ PortalPages WRITE setPortalPages)
    Q_PROPERTY(QString ContentSites READ ContentSites WRITE setContentSites)
    Q_PROPERTY(QString BaseURL READ BaseURL WRITE setBaseURL)
    Q_PROPERTY(QString ImageDirectory READ ImageDirectory WRITE setImageDirectory)
    Q_PROPERTY(QString ImageVCDirectory READ ImageVCDirectory WRITE setImageVCDirectory)
    Q_PROPERTY(QString FTP_FileNamePrefix READ FTP_FileNamePrefix WRITE setFTP_FileNamePrefix)
    Q_PROPERTY(QString FTP_FileNameSuffix READ FTP_FileNameSuffix WRITE setFTP_FileNameSuffix)
    Q_PROPERTY(QString FTP_RistrictedDirectory READ FTP_RistrictedDirectory WRITE
            setFTP_RistrictedDirectory)
    Q_PROPERTY(QString FTP_AllowMultiableFiles READ FTP_AllowMultiableFiles WRITE
            setFTP_AllowMultiableFiles)
    Q_PROPERTY(QString FTP_OverWriteFiles READ FTP_OverWriteFiles WRITE setFTP_OverWriteFiles)
    Q_PROPERTY(QString FTP_IncermentExistingFileNames READ FTP_IncermentExistingFileNames WRITE
            setFTP_IncermentExistingFileNames)
    Q_PROPERTY(bool IncermentExistingFileNames READ IncermentExistingFileNames WRITE
            setIncermentExistingFileNames)
    Q_PROPERTY(QString FTP_StripInvalidCharacters READ FTP_StripInvalidCharacters WRITE
            setFTP_StripInvalidCharacters)
    Q_PROPERTY(bool PreserveWhiteSpace READ PreserveWhiteSpace WRITE setPreserveWhiteSpace)
    Q_PROPERTY(bool ReturnFullDocument READ ReturnFullDocument WRITE setReturnFullDocument)
    Q_PROPERTY(
        bool MakePathsRelativeOnSave READ MakePathsRelativeOnSave WRITE setMakePathsRelativeOnSave)
    Q_PROPERTY(bool Enabled READ Enabled WRITE setEditorEnabled DESIGNABLE false)
    Q_PROPERTY(QString LinkTargets READ LinkTargets WRITE setLinkTargets)
    Q_PROPERTY(QString ToolbarDisplay READ ToolbarDisplay WRITE setToolbarDisplay)
    Q_PROPERTY(QString TabStripDisplay READ TabStripDisplay WRITE setTabStripDisplay)
    Q_PROPERTY(QString PageTitle READ PageTitle WRITE setPageTitle DESIGNABLE false)
    Q_PROPERTY(QString KeyWords READ KeyWords WRITE setKeyWords DESIGNABLE false)
    Q_PROPERTY(QString ChangeImageOnDblClickTags READ ChangeImageOnDblClickTags WRITE
            setChangeImageOnDblClickTags)
    Q_PROPERTY(QString RelativePathToRoot READ RelativePathToRoot WRITE setRelativePathToRoot)
    Q_PROPERTY(QString DefaultFontName READ DefaultFontName WRITE setDefaultFontName)
    Q_PROPERTY(QString DefaultFontSize READ DefaultFontSize WRITE setDefaultFontSize)
    Q_PROPERTY(QString DefaultFontColor READ DefaultFontColor WRITE setDefaultFontColor)
    Q_PROPERTY(QString ApplicationDirectoryPath READ ApplicationDirectoryPath WRITE
            setApplicationDirectoryPath)
    Q_PROPERTY(bool ChangeImageOnDblClick READ ChangeImageOnDblClick WRITE setChangeImageOnDblClick)
    Q_PROPERTY(bool DisableContextMenus READ DisableContextMenus WRITE setDisableContextMenus)
    Q_PROPERTY(bool ScrollBars READ ScrollBars WRITE setScrollBars)
    Q_PROPERTY(bool SpellCheckAsYouType READ SpellCheckAsYouType WRITE setSpellCheckAsYouType)
    Q_PROPERTY(Vantry::clsContextMenu *ContextMenu READ ContextMenu WRITE setContextMenu)
    Q_PROPERTY(Vantry::clsToolbar *Toolbar READ Toolbar WRITE setToolbar)
    Q_PROPERTY(Vantry::clsStyle *StyleSheet READ StyleSheet WRITE setStyleSheet)
    Q_PROPERTY(Vantry::clsDocumentProperties *DocumentProperties READ DocumentProperties WRITE
            setDocumentProperties)

public:
    explicit HTMLEditorComponent(QWidget *parent = nullptr);
    ~HTMLEditorComponent() override;

    bool isDirty() const;
    void setisDirty(bool value);
    bool UploadImagesWhenInserted() const;
    void setUploadImagesWhenInserted(bool value);
    bool CopyImagesWhenInserted() const;
    void setCopyImagesWhenInserted(bool value);
    qint16 SetDisplayHeight() const;
    void setSetDisplayHeight(qint16 value);
    qint16 ScrollTop() const;
    void setScrollTop(qint16 value);
    qint16 ScrollLeft() const;
    void setScrollLeft(qint16 value);
    QString GetHtmlSource() const;
    void setGetHtmlSource(const QString &value);
    QString GetPlainText() const;
    QString SetHtmlSource() const;
    void setSetHtmlSource(const QString &value);
    QString FTP_ServerName() const;
    void setFTP_ServerName(const QString &value);
    QString FTP_UserName() const;
    void setFTP_UserName(const QString &value);
    QString FTP_Password() const;
    void setFTP_Password(const QString &value);
    QString FTP_InitialDir() const;
    void setFTP_InitialDir(const QString &value);
    qint16 SetDisplayWidth() const;
    void setSetDisplayWidth(qint16 value);
    QString ContentPages() const;
    void setContentPages(const QString &value);
    QString PortalPages() const;
    void setPortalPages(const QString &value);
    QString ContentSites() const;
    void setContentSites(const QString &value);
    QString BaseURL() const;
    void setBaseURL(const QString &value);
    QString ImageDirectory() const;
    void setImageDirectory(const QString &value);
    QString ImageVCDirectory() const;
    void setImageVCDirectory(const QString &value);
    QString FTP_FileNamePrefix() const;
    void setFTP_FileNamePrefix(const QString &value);
    QString FTP_FileNameSuffix() const;
    void setFTP_FileNameSuffix(const QString &value);
    QString FTP_RistrictedDirectory() const;
    void setFTP_RistrictedDirectory(const QString &value);
    QString FTP_AllowMultiableFiles() const;
    void setFTP_AllowMultiableFiles(const QString &value);
    QString FTP_OverWriteFiles() const;
    void setFTP_OverWriteFiles(const QString &value);
    QString FTP_IncermentExistingFileNames() const;
    void setFTP_IncermentExistingFileNames(const QString &value);
    bool IncermentExistingFileNames() const;
    void setIncermentExistingFileNames(bool value);
    QString FTP_StripInvalidCharacters() const;
    void setFTP_StripInvalidCharacters(const QString &value);
    bool PreserveWhiteSpace() const;
    void setPreserveWhiteSpace(bool value);
    bool ReturnFullDocument() const;
    void setReturnFullDocument(bool value);
    bool MakePathsRelativeOnSave() const;
    void setMakePathsRelativeOnSave(bool value);
    // Enabled is the editing switch; Qt's isEnabled/setEnabled ("enabled") is the widget's
    // and the two are independent. Enabled false shows the page read-only: the user can
    // still scroll, select and copy, while the toolbar and source editor are disabled and
    // the editor keeps its page (SetHtmlSource, FileNew, FileOpen and URLOpen do nothing).
    // setEnabled(false) greys out the whole widget and takes no input at all, but leaves
    // Enabled as it was. The setter has its own name because setEnabled is QWidget's.
    bool Enabled() const;
    void setEditorEnabled(bool value);
    QString LinkTargets() const;
    void setLinkTargets(const QString &value);
    QString ToolbarDisplay() const;
    void setToolbarDisplay(const QString &value);
    QString TabStripDisplay() const;
    void setTabStripDisplay(const QString &value);
    QString PageTitle() const;
    void setPageTitle(const QString &value);
    QString KeyWords() const;
    void setKeyWords(const QString &value);
    QString ChangeImageOnDblClickTags() const;
    void setChangeImageOnDblClickTags(const QString &value);
    QString RelativePathToRoot() const;
    void setRelativePathToRoot(const QString &value);
    QString DefaultFontName() const;
    void setDefaultFontName(const QString &value);
    QString DefaultFontSize() const;
    void setDefaultFontSize(const QString &value);
    QString DefaultFontColor() const;
    void setDefaultFontColor(const QString &value);
    QString ApplicationDirectoryPath() const;
    void setApplicationDirectoryPath(const QString &value);
    bool ChangeImageOnDblClick() const;
    void setChangeImageOnDblClick(bool value);
    bool DisableContextMenus() const;
    void setDisableContextMenus(bool value);
    bool ScrollBars() const;
    void setScrollBars(bool value);
    // Misspelt words are underlined in the design view while the user types (on by default).
    bool SpellCheckAsYouType() const;
    void setSpellCheckAsYouType(bool value);

    // Companion objects. The editor creates each on first use when the host set none;
    // an object the host sets stays the host's.
    clsContextMenu *ContextMenu() const;
    void setContextMenu(clsContextMenu *menu);
    clsToolbar *Toolbar() const;
    void setToolbar(clsToolbar *toolbar);
    clsStyle *StyleSheet() const;
    void setStyleSheet(clsStyle *style);
    using QWidget::setStyleSheet;
    clsDocumentProperties *DocumentProperties() const;
    void setDocumentProperties(clsDocumentProperties *properties);

    // Toolbar buttons by key, in any letter case. SetButtonState is the host's permission:
    // a button it switches off stays off whatever the selection. The getters return the
    // stored state as a bool, or an invalid QVariant for a key never stored.
    Q_INVOKABLE void SetButtonState(const QString &ButtonKey, bool bState);
    Q_INVOKABLE void SetButtonVisibleState(const QString &ButtonKey, bool bState);
    Q_INVOKABLE QVariant GetButtonEnabledState(const QString &ButtonKey) const;
    Q_INVOKABLE QVariant GetButtonLatchedState(const QString &ButtonKey) const;

    // Font of the selection in the design view. Each does nothing before the first
    // document, in the source view, or while the selection takes no such change.
    Q_INVOKABLE void FontName(const QString &sFontName);
    Q_INVOKABLE void FontSize(const QVariant &sFontSize);
    Q_INVOKABLE void FontColor(const QVariant &FontColor);

    // The three moments of persistence: a fresh instance, reading from and writing to the
    // container's bag. Reading runs no side effects of the properties.
    Q_INVOKABLE void InitProperties();
    Q_INVOKABLE void ReadProperties(Vantry::PropertyBag &bag);
    Q_INVOKABLE void WriteProperties(Vantry::PropertyBag &bag) const;

    // Redraws the design surface.
    Q_INVOKABLE void HTMLRefresh();

    // Document files. Opening and starting anew first offer to save a changed document;
    // the saves return the document's file path afterwards.
    Q_INVOKABLE void FileNew();
    Q_INVOKABLE void FileOpen(const QString &sFilePath = QString());
    Q_INVOKABLE void URLOpen(const QVariant &sURL);
    Q_INVOKABLE QString FileSave(const QString &sFilePath = QString());
    Q_INVOKABLE QString FileSaveAs(const QString &sFilePath = QString());

    // Every message box and picker the editor shows goes through its prompts. A host that
    // answers them itself hands its own here; the editor takes ownership and deletes the
    // previous ones (null goes back to the default WidgetPrompts). Not while a prompt shows.
    void setUserPrompts(std::unique_ptr<UserPrompts> prompts);
    UserPrompts &userPrompts() const;
    // The table, image, link, page, style, element, spelling and upload dialogs go through
    // these; null goes back to the default WidgetDialogs. Not while a dialog shows.
    void setEditorDialogs(std::unique_ptr<EditorDialogs> dialogs);
    EditorDialogs &editorDialogs() const;

    // The selection and markup. The element under the selection is the selected element,
    // or the one around the selected text or caret.
    Q_INVOKABLE Vantry::HTMLElement GetSelectedElementObject() const;
    // Deletes the selected image; sTagName is not consulted, and nothing but an image goes.
    // Returns an invalid QVariant.
    Q_INVOKABLE QVariant RemoveSelectedElementObject(const QString &sTagName);
    // The selection's markup as a QString (empty for no selection).
    Q_INVOKABLE QVariant GetSelectedHTML() const;
    // Returns an invalid QVariant.
    Q_INVOKABLE QVariant ReplaceSelectedHTML(const QString &sHTMLToReplace);
    Q_INVOKABLE void InsertHTML(const QString &sHTML);
    // Replaces in the body's markup, ignoring letter case.
    Q_INVOKABLE void FindAndReplaceHTML(
        const QVariant &sHTMLToFind, const QVariant &sHTMLToReplace);
    // A property of the current element's style attribute, named as CSS ("background-color")
    // or as a script ("backgroundColor"); values are written exactly as given, empty
    // removes. Setting needs a selected control or selected text, and the design view.
    Q_INVOKABLE QString GetStyleOfCurrentElement(const QString &Style);
    Q_INVOKABLE void SetStyleOfCurrentElement(const QString &Style, const QString &Value);
    // Style "filter" becomes progid:DXImageTransform.Microsoft.<Filter>(<Property>).
    Q_INVOKABLE void SetFilterOfCurrentElement(const QString &Filter, const QString &Property);
    // frmSelectStyle for the current element, and frmFlashProperties for the movie under the
    // selection or a new one (FlashProperties and the InsertFlash key stay inert).
    Q_INVOKABLE void SelectStyleDialog();
    Q_INVOKABLE void FlashMovieDialog();
    // A bool: true for "1", 1, true and "true" in any case.
    Q_INVOKABLE QVariant CheckBoolean(const QVariant &sValue) const;
    // Form controls pasted in place of the selection (refused on a selected control).
    Q_INVOKABLE void InsertButton();
    Q_INVOKABLE void InsertSubmitButton();
    Q_INVOKABLE void InsertResetButton();
    Q_INVOKABLE void InsertCheckBox();
    Q_INVOKABLE void InsertRadio();
    Q_INVOKABLE void InsertDropDown();
    Q_INVOKABLE void InsertListBox();
    Q_INVOKABLE void InsertTextBox();
    Q_INVOKABLE void InsertTextArea();
    Q_INVOKABLE void InsertForm();

    // Find and replace in the design view's text, ignoring letter case and matching inside
    // words. The First methods start a search, the Next ones go on from the last hit; the
    // InSelection ones stay inside the selection and wrap to its start. The replace-all
    // methods return false once done.
    Q_INVOKABLE bool FindFirstText(const QString &sTextoFind);
    Q_INVOKABLE bool FindNextText(const QString &sTextoFind);
    Q_INVOKABLE bool FindFirstTextInSelection(const QString &sTextoFind);
    Q_INVOKABLE bool FindNextTextInSelection(const QString &sTextoFind);
    Q_INVOKABLE bool ReplaceFirstText(const QString &sTextoFind, const QString &sTextoReplace);
    Q_INVOKABLE bool ReplaceNextText(const QString &sTextoFind, const QString &sTextoReplace);
    Q_INVOKABLE bool ReplaceFirstTextInSelection(
        const QString &sTextoFind, const QString &sTextoReplace);
    Q_INVOKABLE bool ReplaceNextTextInSelection(
        const QString &sTextoFind, const QString &sTextoReplace);
    Q_INVOKABLE bool ReplaceAllTextInSelection(
        const QString &sTextoFind, const QString &sTextoReplace);
    Q_INVOKABLE bool ReplaceAllText(const QString &sTextoFind, const QString &sTextoReplace);

    // True once the design surface has loaded its first document.
    bool isDocumentReady() const;

    // Puts the named library script function ("SwapImage") into the page; other names and
    // a page not loaded yet change nothing.
    Q_INVOKABLE void AddJavaScript(const QVariant &sFunction);
    // Prints the page after the platform's print dialog.
    Q_INVOKABLE void PrintHTML();

    // Shows the view named "design" or "source" (any case); other values do nothing.
    Q_INVOKABLE void ToggleDesignSourceView(const QVariant &sView);
    // True while the design view shows; editing commands run only then.
    bool DesignViewActive() const;

    // Editing commands. They do nothing while the source view shows and mark the document
    // dirty once done; FlashProperties does nothing at all.
    Q_INVOKABLE void Bold();
    Q_INVOKABLE void Italic();
    Q_INVOKABLE void Underline();
    Q_INVOKABLE void NumberBullets();
    Q_INVOKABLE void Bullets();
    Q_INVOKABLE void Outdent();
    Q_INVOKABLE void Indent();
    Q_INVOKABLE void LeftAlign();
    Q_INVOKABLE void CenterAlign();
    Q_INVOKABLE void RightAlign();
    Q_INVOKABLE void ForeColor();
    Q_INVOKABLE void BackColor();
    Q_INVOKABLE void Hyperlink();
    Q_INVOKABLE void UploadImage();
    Q_INVOKABLE void InsertImage();
    // Image files. CopyImageFiles copies every image of the page into ToLocation, a folder
    // path ending in a separator; ChangeImagePath points every image at sPath + its file
    // name. ChangeImageFromSelectedElement gives the selected image (or table background)
    // a copy of the file in ImageDirectory under a free name; with no path the user picks
    // one. RemoveImageFromSelectedElement takes the selected table's background away.
    Q_INVOKABLE void CopyImageFiles(const QString &ToLocation);
    Q_INVOKABLE void ChangeImagePath(const QString &sPath);
    Q_INVOKABLE void ChangeImageFromSelectedElement(
        const QString &sImagePath = QString(), const QString &sImageFileName = QString());
    Q_INVOKABLE void RemoveImageFromSelectedElement();
    Q_INVOKABLE void Cut();
    Q_INVOKABLE void Copy();
    Q_INVOKABLE void Paste();
    Q_INVOKABLE void UnDo();
    Q_INVOKABLE void ReDo();
    Q_INVOKABLE void Border();
    Q_INVOKABLE void Details();
    Q_INVOKABLE void AbsolutePosition();
    Q_INVOKABLE void LockElement();
    Q_INVOKABLE void SnapToGrid();
    Q_INVOKABLE void InsertTABLE();
    Q_INVOKABLE void InsertRow();
    Q_INVOKABLE void DeleteRow();
    Q_INVOKABLE void InsertColumn();
    Q_INVOKABLE void DeleteColumn();
    Q_INVOKABLE void InsertCell();
    Q_INVOKABLE void DeleteCell();
    Q_INVOKABLE void MergeCells();
    Q_INVOKABLE void SplitCells();
    Q_INVOKABLE void Font();
    Q_INVOKABLE void SelectAll();
    Q_INVOKABLE void Find();
    Q_INVOKABLE void BringToFront();
    Q_INVOKABLE void SendToBack();
    Q_INVOKABLE void BringForward();
    Q_INVOKABLE void SendBack();
    Q_INVOKABLE void BringAboveText();
    Q_INVOKABLE void SendBelowText();
    Q_INVOKABLE void FlashProperties();
    Q_INVOKABLE void SpellCheck();
    Q_INVOKABLE void PageProperties();
    // An IMG tag from the non-empty arguments, pasted at the selection; an empty source asks
    // for a file. The arguments afterwards hold what was inserted.
    Q_INVOKABLE void InsertImageNoPrompt(QString &psIMAGE_Width, QString &psIMAGE_Height,
        QString &psIMAGE_vspace, QString &psIMAGE_hspace, QString &psIMAGE_align,
        QString &psIMAGE_border, QString &psIMAGE_alt, QString &psIMAGE_src,
        QString &psIMAGE_Style);
    // A table from the arguments: pasted at the selection, or with a class appended to the
    // end of the body. Empty rows and columns give one row of three cells; a table has 1 to
    // 1000 rows and 1 to 100 columns, other sizes are refused with a message.
    Q_INVOKABLE void InsertTABLENoPrompt(QString &psTABLE_Width, QString &psTABLE_Height,
        QString &psTABLE_Rows, QString &psTABLE_Columns, QString &psTABLE_Align,
        QString &psTABLE_Valign, QString &psTABLE_BGImage, QString &psTABLE_BGColor,
        QString &psTABLE_Border, QString &psTABLE_CellSpacing, QString &psTABLE_CellPadding,
        QString &psTABLE_BorderColor, QString &psTABLE_Style);
    Q_INVOKABLE void InsertTABLENoPrompt2(QString &psTABLE_Width, QString &psTABLE_Height,
        QString &psTABLE_Rows, QString &psTABLE_Columns, QString &psTABLE_Align,
        QString &psTABLE_Valign, QString &psTABLE_BGImage, QString &psTABLE_BGColor,
        QString &psTABLE_Border, QString &psTABLE_CellSpacing, QString &psTABLE_CellPadding,
        QString &psTABLE_BorderColor, QString &psTABLE_Style, QString &psTABLE_Class);
    // The same for arguments the host does not keep, such as literals.
    Q_INVOKABLE void InsertImageNoPrompt(const QString &psIMAGE_Width,
        const QString &psIMAGE_Height, const QString &psIMAGE_vspace, const QString &psIMAGE_hspace,
        const QString &psIMAGE_align, const QString &psIMAGE_border, const QString &psIMAGE_alt,
        const QString &psIMAGE_src, const QString &psIMAGE_Style);
    void InsertTABLENoPrompt(const QString &psTABLE_Width, const QString &psTABLE_Height,
        const QString &psTABLE_Rows, const QString &psTABLE_Columns, const QString &psTABLE_Align,
        const QString &psTABLE_Valign, const QString &psTABLE_BGImage,
        const QString &psTABLE_BGColor, const QString &psTABLE_Border,
        const QString &psTABLE_CellSpacing, const QString &psTABLE_CellPadding,
        const QString &psTABLE_BorderColor, const QString &psTABLE_Style);
    void InsertTABLENoPrompt2(const QString &psTABLE_Width, const QString &psTABLE_Height,
        const QString &psTABLE_Rows, const QString &psTABLE_Columns, const QString &psTABLE_Align,
        const QString &psTABLE_Valign, const QString &psTABLE_BGImage,
        const QString &psTABLE_BGColor, const QString &psTABLE_Border,
        const QString &psTABLE_CellSpacing, const QString &psTABLE_CellPadding,
        const QString &psTABLE_BorderColor, const QString &psTABLE_Style,
        const QString &psTABLE_Class);
    // The table methods for hosts that call by name, which QMetaObject::invokeMethod cannot
    // do beyond ten arguments: the arguments keyed by their names without the prefix
    // ("Width", "Rows", "BGColor", "Class" ...; any letter case), absent ones empty.
    // Returns false, inserting nothing, when a key names no argument of the method.
    Q_INVOKABLE bool InsertTABLENoPrompt(const QVariantMap &arguments);
    Q_INVOKABLE bool InsertTABLENoPrompt2(const QVariantMap &arguments);
    // Select the next misspelt word, or the second of a word written twice in a row ("the
    // the"), after the selection and scroll it into view. False when there is none up to
    // the end of the document: the search never wraps, and the selection stays.
    Q_INVOKABLE bool FindSpellingError();
    Q_INVOKABLE bool FindDoubledWord();

Q_SIGNALS:
    void ImageInserted(QVariant &sFileName, QVariant &sFilePath);
    void HTMLChanged();
    void DocumentLoaded();
    void EnterFocus();
    void ExitFocus();
    void CurrentSelectionStateChange(QString &sCommandName, bool &bEnabled, bool &bSelected);
    void CurrentSelectionStateChangeText(QString &sCommandName, QString &sValue);
    void MouseDown(qint16 &Button, qint16 &Shift, float &x, float &y);
    void MouseMove(qint16 &Button, qint16 &Shift, float &x, float &y);
    void MouseUp(qint16 &Button, qint16 &Shift, float &x, float &y);
    void CustomContextMenuClick(QString &sCustomMenuKey);

    // A property was assigned; name is the property's announced name.
    void PropertyChanged(const QString &name);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Vantry
