#pragma once

#include <VantryHTMLEditor/StyleDialogValues.h>
#include <VantryHTMLEditor/vantryhtmleditor_export.h>

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace Vantry {

// Configuration objects a host reaches through the editor's ContextMenu, Toolbar,
// StyleSheet and DocumentProperties properties.

class VANTRYHTMLEDITOR_EXPORT clsContextMenu : public QObject
{
    Q_OBJECT

public:
    enum em_ContextMenu : qint32
    {
        cm_AbsolutePosMenus = 1,
        cm_TableCellMenus = 2,
        cm_TableMenus = 3,
        cm_ImageMenus = 4,
        cm_BodyMenus = 5,
        cm_HyperlinkMenus = 6,
        cm_StandardMenus = 7,
        cm_ElementPropertiesMenus = 8
    };
    Q_ENUM(em_ContextMenu)

    struct CustomItem
    {
        QString key;
        QString text;
    };

    explicit clsContextMenu(QObject *parent = nullptr);
    ~clsContextMenu() override;

    // Which built-in groups the design view's context menu may show; all may at first.
    Q_INVOKABLE void ShowBuiltinContextMenuItem(Vantry::clsContextMenu::em_ContextMenu nMenuItem);
    Q_INVOKABLE void HideBuiltinContextMenuItem(Vantry::clsContextMenu::em_ContextMenu nMenuItem);
    Q_INVOKABLE void ShowAllBuiltinContextMenuItems();
    Q_INVOKABLE void HideAllBuiltinContextMenuItems();
    // The host's own entries, shown after the built-in ones in the order added; choosing
    // one raises CustomContextMenuClick with its key. The key "Spacer" adds a separator.
    Q_INVOKABLE void AddCustomContextMenuItem(
        const QString &sCustomMenuKey, const QString &sCustomMenuText);
    Q_INVOKABLE void RemoveCustomContextMenuItem(const QString &sCustomMenuKey);
    Q_INVOKABLE void RemoveAllCustomContextMenuItems();
    Q_INVOKABLE qint16 CountCustomContextMenuItems() const;

    bool isBuiltinContextMenuItemShown(em_ContextMenu nMenuItem) const;
    QList<CustomItem> customContextMenuItems() const { return m_customItems; }

private:
    // Bit n set: group n is hidden.
    quint32 m_hiddenGroups = 0;
    QList<CustomItem> m_customItems;
};

using em_ContextMenu = clsContextMenu::em_ContextMenu;

// The editor's three toolbars: which row each occupies, whether it shows, and whether
// each configurable button is enabled and visible. Out-of-range values are refused: the
// setters then return false and change nothing. A toolbar object not handed out by an
// editor configures nothing.
class VANTRYHTMLEDITOR_EXPORT clsToolbar : public QObject
{
    Q_OBJECT

public:
    enum em_Toolbars
    {
        tb_Standard = 0,
        tb_Formatting = 1,
        tb_TableEditing = 2
    };
    Q_ENUM(em_Toolbars)

    enum em_ToolbarOrder
    {
        tbo_first = 0,
        tbo_second = 1,
        tbo_third = 2
    };
    Q_ENUM(em_ToolbarOrder)

    // Member spellings are the interface's own.
    enum em_ToolbarButtons
    {
        tbb_Font = 1,
        tbb_FontSize = 2,
        tbb_bold = 3,
        tbb_Italic = 4,
        tbb_underline = 5,
        tbb_ForeColor = 6,
        tbb_BackColor = 7,
        tbb_LeftAlign = 8,
        tbb_CenterAlign = 9,
        tbb_RightAlign = 10,
        tbb_Numbers = 11,
        tbb_Bullets = 12,
        tbb_Cut = 13,
        tbb_Copy = 14,
        tbb_Paste = 15,
        tbb_UnDo = 16,
        tbb_ReDo = 17,
        tbb_Outdent = 18,
        tbb_Indent = 19,
        tbb_Hyperlink = 20,
        tbb_UploadImage = 21,
        tbb_InsertImage = 22,
        tbb_InsertFlash = 23,
        tbb_Border = 24,
        tbb_Details = 25,
        tbb_Absolute = 26,
        tbb_Lock = 27,
        tbb_SnapToGrid = 28,
        tbb_SpellCheck = 29,
        tbb_PageProperties = 30,
        tbb_InsertTABLE = 31,
        tbb_InsertRow = 32,
        tbb_DeleteRow = 33,
        tbb_InsertColumn = 34,
        tbb_DeleteColumn = 35,
        tbb_InsertCell = 36,
        tbb_DeleteCell = 37,
        tbb_MergeCells = 38,
        tbb_SplitCells = 39
    };
    Q_ENUM(em_ToolbarButtons)

    explicit clsToolbar(QObject *parent = nullptr);
    ~clsToolbar() override;

    // The row the toolbar occupies.
    Q_INVOKABLE Vantry::clsToolbar::em_ToolbarOrder ToolbarDisplayOrder(
        Vantry::clsToolbar::em_Toolbars Toolbar) const;
    // Moves the toolbar to the row; the toolbar that was there takes the row it left.
    Q_INVOKABLE bool setToolbarDisplayOrder(
        Vantry::clsToolbar::em_Toolbars Toolbar, Vantry::clsToolbar::em_ToolbarOrder order);

    Q_INVOKABLE bool ToolbarVisibleState(Vantry::clsToolbar::em_Toolbars Toolbar) const;
    Q_INVOKABLE bool setToolbarVisibleState(Vantry::clsToolbar::em_Toolbars Toolbar, bool state);

    // The host's permission. Forbidding disables the button at once; allowing again
    // enables it at the next selection refresh, when the document allows it too.
    Q_INVOKABLE bool ButtonEnabledState(Vantry::clsToolbar::em_ToolbarButtons ButtonKey) const;
    Q_INVOKABLE bool setButtonEnabledState(
        Vantry::clsToolbar::em_ToolbarButtons ButtonKey, bool state);

    // Reads back the last visibility set here, or the button's pressed state when a
    // selection refresh came since: both share one store, which hosts rely on.
    Q_INVOKABLE bool ButtonVisibleState(Vantry::clsToolbar::em_ToolbarButtons ButtonKey) const;
    Q_INVOKABLE bool setButtonVisibleState(
        Vantry::clsToolbar::em_ToolbarButtons ButtonKey, bool state);
};

// The document's style sheets. Sheets and rules are copies taken when asked for; a sheet
// of another origin whose rules the engine keeps from us is listed by its address alone.
// Without a document every list is as for a document without sheets.
class VANTRYHTMLEDITOR_EXPORT clsStyle : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool bHasStyleSheets MEMBER bHasStyleSheets)
    Q_PROPERTY(bool bHasStyleSheetRules MEMBER bHasStyleSheetRules)

public:
    explicit clsStyle(QObject *parent = nullptr);
    ~clsStyle() override;

    // Links the sheet at the end of the document's HEAD; false without a document.
    Q_INVOKABLE bool SetStyleSheet(const QString &sStyleSheetURL);
    // The address of every sheet in document order, empty for an embedded one; one empty
    // entry when there is no sheet.
    Q_INVOKABLE QStringList GetAllStyleSheets() const;
    // The first sheet whose address contains the name (ignoring case); a null sheet when
    // none does.
    Q_INVOKABLE Vantry::StyleSheetInfo GetStyleSheet(const QString &sStyleSheetName) const;
    // The sheet's rule whose selector is the name; an invalid variant when it has none.
    Q_INVOKABLE QVariant GetStyleSheetRule(
        const Vantry::StyleSheetInfo &oStyleSheet, const QString &sRuleName) const;
    // The selector of every rule of every sheet, and of one sheet.
    Q_INVOKABLE QVariantList GetAllStyleSheetRules() const;
    Q_INVOKABLE QVariantList GetStyleSheetRules(const Vantry::StyleSheetInfo &oStyleSheet) const;
    // A LINK tag for every style sheet the document links, in document order; the editor
    // puts this just before the end of HEAD whenever it hands the document out.
    Q_INVOKABLE QString LoadStylesSource() const;

    // The host's own flags; the editor neither reads nor sets them.
    bool bHasStyleSheets = false;
    bool bHasStyleSheetRules = false;
};

// The page's properties as the host reads and writes them: the BODY attributes named
// beside each, and the document's title. Before a document is loaded, and where the
// selection has no BODY around it, every property reads as "" and writes are dropped.
class VANTRYHTMLEDITOR_EXPORT clsDocumentProperties : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString DocumentBackgroundColor READ DocumentBackgroundColor WRITE
            setDocumentBackgroundColor)
    Q_PROPERTY(QString DocumentForegroundColor READ DocumentForegroundColor WRITE
            setDocumentForegroundColor)
    Q_PROPERTY(QString DocumentTitle READ DocumentTitle WRITE setDocumentTitle)
    Q_PROPERTY(QString DocumentBackgroundImage READ DocumentBackgroundImage WRITE
            setDocumentBackgroundImage)
    Q_PROPERTY(QString DocumentLinkColor READ DocumentLinkColor WRITE setDocumentLinkColor)
    Q_PROPERTY(QString DocumentvLinkColor READ DocumentvLinkColor WRITE setDocumentvLinkColor)
    Q_PROPERTY(QString DocumentaLinkColor READ DocumentaLinkColor WRITE setDocumentaLinkColor)
    Q_PROPERTY(QString DocumentLeftMargin READ DocumentLeftMargin WRITE setDocumentLeftMargin)
    Q_PROPERTY(QString DocumentTopMargin READ DocumentTopMargin WRITE setDocumentTopMargin)
    Q_PROPERTY(QString DocumentRightMargin READ DocumentRightMargin WRITE setDocumentRightMargin)
    Q_PROPERTY(QString DocumentBottomMargin READ DocumentBottomMargin WRITE setDocumentBottomMargin)

public:
    explicit clsDocumentProperties(QObject *parent = nullptr);
    ~clsDocumentProperties() override;

    QString DocumentBackgroundColor() const;
    void setDocumentBackgroundColor(const QString &value);
    QString DocumentForegroundColor() const;
    void setDocumentForegroundColor(const QString &value);
    QString DocumentTitle() const;
    void setDocumentTitle(const QString &value);
    QString DocumentBackgroundImage() const;
    void setDocumentBackgroundImage(const QString &value);
    QString DocumentLinkColor() const;
    void setDocumentLinkColor(const QString &value);
    QString DocumentvLinkColor() const;
    void setDocumentvLinkColor(const QString &value);
    QString DocumentaLinkColor() const;
    void setDocumentaLinkColor(const QString &value);
    QString DocumentLeftMargin() const;
    void setDocumentLeftMargin(const QString &value);
    QString DocumentTopMargin() const;
    void setDocumentTopMargin(const QString &value);
    QString DocumentRightMargin() const;
    void setDocumentRightMargin(const QString &value);
    QString DocumentBottomMargin() const;
    void setDocumentBottomMargin(const QString &value);
};

} // namespace Vantry
