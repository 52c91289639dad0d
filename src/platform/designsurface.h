#pragma once

#include "platform/commandstate.h"
#include "platform/searchtarget.h"
#include "platform/textrange.h"

#include <VantryHTMLEditor/StyleDialogValues.h>

#include <QHash>
#include <QObject>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <optional>

class QKeySequence;
class QPrinter;
class QWidget;

namespace Vantry::Platform {

class DesignSurface;

// A document element as seen from C++: a handle into the surface's current document.
// A handle taken from an earlier document fails cleanly when used.
struct Element
{
    int id = 0;
    int generation = -1;

    bool isNull() const { return id == 0; }
    QVariant toVariant() const;
    static Element fromVariant(const QVariant &value);
};

// A table's rows and cells, not counting those of nested tables, its width in grid columns,
// and how many of each a row, column or cell deletion at the selection would take (none
// when the selection is in no cell of the table). Spans count as the cells they are.
struct TableParts
{
    int rows = 0;
    int columns = 0;
    int cells = 0;
    int selectedRows = 0;
    int selectedColumns = 0;
    int selectedCells = 0;
};

// The editing surface of the design view: an HTML document in editing mode with a
// document object model, and notifications of what the user does in it.
//
// Every call is synchronous to the caller. A call that fails (no document yet, an engine
// that does not answer in time, a stale element) returns its default and records the
// failure in lastError(); notifications may arrive while a call waits.
class DesignSurface : public QObject
{
    Q_OBJECT

public:
    ~DesignSurface() override;

    virtual QWidget *widget() const = 0;

    // True once the first document has completed loading.
    virtual bool isReady() const = 0;
    bool lastCallFailed() const { return !m_lastError.isEmpty(); }
    QString lastError() const { return m_lastError; }

    // The whole document as HTML. Text handed in is parsed the way a browser parses it,
    // all of it before the call returns, whatever it links to. Only the editor's own
    // wrapper gets other treatment: the default-font division around a whole document goes
    // around its body content, and a BASE with the address of setBaseUrl in front of
    // "<HTML>" is the editor's; a document's own BASE stays with that document.
    virtual bool setDocumentHTML(const QString &html) = 0;
    virtual QString documentHTML() = 0;
    virtual QString bodyInnerHTML() = 0;
    virtual QString bodyInnerText() = 0;
    // Replaces the body's content; element handles of the document become stale.
    virtual bool setBodyInnerHTML(const QString &html) = 0;
    // Replaces the body's content as one edit the user can undo; the undo history before
    // it stays.
    virtual bool editBodyInnerHTML(const QString &html) = 0;

    virtual QString title() = 0;
    virtual bool setTitle(const QString &title) = 0;

    virtual QList<Element> elementsByName(const QString &name) = 0;
    virtual QList<Element> elementsByTagName(const QString &tagName) = 0;
    virtual Element head() = 0;
    virtual Element body() = 0;
    virtual Element createElement(const QString &tagName) = 0;
    virtual bool appendChild(const Element &parent, const Element &child) = 0;
    virtual QString tagName(const Element &element) = 0;
    virtual QString attribute(const Element &element, const QString &name) = 0;
    virtual bool setAttribute(const Element &element, const QString &name, const QString &value)
        = 0;
    virtual QString outerHTML(const Element &element) = 0;
    // Position and size in the view, in CSS pixels.
    virtual QRectF boundingRect(const Element &element) = 0;
    // The address of every style sheet the document links, as written.
    virtual QStringList styleSheetHrefs() = 0;
    // Null for the root element.
    virtual Element parentElement(const Element &element) = 0;
    struct PathStep
    {
        Element element;
        QString tagName;
    };
    // The element and its ancestors up to the root element, in one call.
    virtual QList<PathStep> elementPath(const Element &element) = 0;
    virtual QString innerHTML(const Element &element) = 0;
    virtual bool setInnerHTML(const Element &element, const QString &html) = 0;
    // Puts the markup in the element's place; the handle keeps the element taken out.
    virtual bool setOuterHTML(const Element &element, const QString &html) = 0;
    virtual bool removeAttribute(const Element &element, const QString &name) = 0;
    // A property of the element's style attribute, by its CSS name ("font-size").
    virtual QString styleProperty(const Element &element, const QString &name) = 0;
    // An empty value removes the property.
    virtual bool setStyleProperty(const Element &element, const QString &name, const QString &value)
        = 0;
    virtual TableParts tableParts(const Element &table) = 0;
    // What a property dialog shows of an element, in one call: each attribute (nothing
    // when absent) and each style property (empty when unset).
    struct ElementFields
    {
        QList<std::optional<QString>> attributes;
        QStringList styles;
    };
    virtual ElementFields elementFields(
        const Element &element, const QStringList &attributes, const QStringList &styles);
    // A dialog's answer, written as one undo step: an attribute without a value and a style
    // property with an empty one are removed.
    struct FieldEdit
    {
        QString name;
        std::optional<QString> value;
        bool style = false;
    };
    virtual bool editElementFields(const Element &element, const QList<FieldEdit> &edits);
    // The document's style sheets with their rules, in one call.
    virtual QList<StyleSheetInfo> styleSheets() = 0;
    // Links a style sheet at the end of HEAD, as one undo step.
    virtual bool addStyleSheet(const QString &href) = 0;
    // The element's tag name and its attributes as written, the editor's own left out.
    struct AttributeList
    {
        QString tagName;
        QList<std::pair<QString, QString>> attributes;
    };
    virtual AttributeList elementAttributes(const Element &element) = 0;
    // The PARAMs of an OBJECT as name and value; setting them is one undo step.
    virtual QList<std::pair<QString, QString>> objectParams(const Element &object) = 0;
    virtual bool setObjectParams(
        const Element &object, const QList<std::pair<QString, QString>> &params)
        = 0;
    virtual QList<Element> images() = 0;
    virtual QList<Element> scripts() = 0;

    // The selection. Clicking an image, a form control, an object, a table's frame or a
    // positioned element's edge selects that element whole ("Control"), framed; Delete
    // removes it.
    virtual SelectionType selectionType() = 0;
    // A control range when elements are selected whole, else a text range (a caret at the
    // start of the body when nothing is selected).
    virtual TextRange selectionRange() = 0;
    // Deletes what is selected.
    virtual bool clearSelection() = 0;
    // Selects an element whole, as clicking an image does.
    virtual bool selectElement(const Element &element) = 0;

    // Text ranges. Positions count what a reader sees: a character of text, &nbsp; and a
    // run of white space as one space, a line break or the boundary between two blocks as
    // one break (read as "\r\n"), an image or control as one character that reads as
    // nothing. Ranges follow edits made elsewhere in the document.
    virtual TextRange bodyRange() = 0;
    virtual bool isControlRange(const TextRange &range) = 0;
    // The elements of a control range; a text range has none and fails.
    virtual int controlCount(const TextRange &range) = 0;
    virtual Element controlItem(const TextRange &range, int index) = 0;
    // The element that encloses the range's text (for a caret: the one it stands in).
    virtual Element rangeParentElement(const TextRange &range) = 0;
    virtual QString rangeText(const TextRange &range) = 0;
    // Replaces the range's content with plain text (line ends become line breaks); the
    // range then stands collapsed after that text.
    virtual bool setRangeText(const TextRange &range, const QString &text) = 0;
    // The markup of the range, with the elements it lies partly in around it.
    virtual QString rangeHtmlText(const TextRange &range) = 0;
    // Replaces the range's content with the markup; the range ends up after it.
    virtual bool pasteHTML(const TextRange &range, const QString &html) = 0;
    // The moves return the units actually moved, negative for backward moves. move()
    // collapses the range to its start first; a start moved past the end takes the end
    // along, and the other way round.
    virtual int moveRange(const TextRange &range, TextUnit unit, int count) = 0;
    virtual int moveRangeStart(const TextRange &range, TextUnit unit, int count) = 0;
    virtual int moveRangeEnd(const TextRange &range, TextUnit unit, int count) = 0;
    virtual bool collapseRange(const TextRange &range, bool toStart) = 0;
    virtual TextRange duplicateRange(const TextRange &range) = 0;
    // A text that stands for the range's place; moveRangeToBookmark puts a range there.
    virtual QString rangeBookmark(const TextRange &range) = 0;
    virtual bool moveRangeToBookmark(const TextRange &range, const QString &bookmark) = 0;
    // Whether inner lies within outer.
    virtual bool rangeInRange(const TextRange &outer, const TextRange &inner) = 0;
    virtual bool rangesEqual(const TextRange &a, const TextRange &b) = 0;
    // Searches forward from the range's start, ignoring letter case and matching inside
    // words: within the range when it holds text, else to the end of the body. On a hit
    // the range covers it and the result is true.
    virtual bool findText(const TextRange &range, const QString &text) = 0;
    // Makes the range the document's selection.
    virtual bool selectRange(const TextRange &range) = 0;

    // The find dialog's search: selects the next hit after the selection (before it when
    // searching backwards), going round the document once, and scrolls it into view. No
    // hit leaves the selection as it was.
    virtual bool findNext(const QString &text, const SearchOptions &options);

    // Replacing every hit in the body or the selection, in one step.
    enum class ReplaceScope
    {
        Body,
        Selection
    };
    struct ReplaceAllResult
    {
        bool found = false;
        // The selection held elements, not text: nothing was searched.
        bool controlSelected = false;
        int replaced = 0;
        TextRange searchRange;
        TextRange selectionCopy;
        QString bookmark;
    };
    // Takes the body's (or the selection's) range as search range, its duplicate as copy
    // and its bookmark, then makes one pass: find from the search range; a hit inside the
    // copy is selected, replaced and the search range moved on one word; the first hit
    // outside, or a failed search, ends the pass. Text a replacement put in is never
    // searched again. found is false whenever the pass has ended. The visible selection
    // and the undo history take the whole pass as one step.
    virtual ReplaceAllResult replaceAll(
        ReplaceScope scope, const QString &find, const QString &replacement)
        = 0;

    // Scroll offsets of the document's scrolling element, in CSS pixels.
    virtual QPoint scrollPosition() = 0;
    virtual bool setScrollLeft(int left) = 0;
    virtual bool setScrollTop(int top) = 0;

    // Prints the page on a printer the caller has set up; returns once the job is done.
    virtual bool print(QPrinter *printer) = 0;
    // Writes the page as a PDF file with the engine's default page layout.
    virtual bool printToPdf(const QString &path) = 0;

    // Edit state (true) or browse state (false).
    virtual bool setEditable(bool editable) = 0;
    virtual bool isEditable() = 0;
    virtual bool setScrollBarsVisible(bool visible) = 0;
    // The URL relative addresses resolve against while editing; never part of what is
    // read back as the body, and only in front of the HTML start tag in the document.
    virtual bool setBaseUrl(const QString &url) = 0;
    // The address last given to setBaseUrl.
    virtual QString baseUrl() const = 0;
    // The address the documents loaded from now on came from (a file or page URL; empty
    // for none). Their relative addresses resolve against it unless a BASE says otherwise;
    // it never shows in what is read back.
    virtual bool setDocumentAddress(const QString &url) = 0;
    virtual bool refresh() = 0;
    // Makes the engine's formatting commands write elements rather than style attributes.
    virtual bool useElementFormatting() = 0;
    virtual bool focusDocument() = 0;

    // Editing commands by their identifiers (5000 to 5052), each in a CommandState.
    // Options of a command run, as the host's toolbar passes them.
    enum CommandOption
    {
        OptionDoDefault = 0,
        OptionPromptUser = 1,
        OptionDontPromptUser = 2,
        OptionShowHelp = 3,
    };
    // Runs a command; result receives its output where it has one (a font name, the
    // block-format names). False when the command failed or is unknown.
    virtual bool execCommand(int commandId, int option = OptionDoDefault,
        const QVariant &argument = {}, QVariant *result = nullptr);
    // The status of every command asked for, in one round trip. With values given, the
    // value of every reading command among them ("get..." commands: font name, size ...)
    // whose state is enabled or latched comes back in the same trip.
    [[nodiscard]] virtual QHash<int, CommandState> queryStatus(
        const QList<int> &commandIds, QHash<int, QVariant> *values = nullptr);
    [[nodiscard]] CommandState commandStatus(int commandId)
    {
        return queryStatus(QList<int>{commandId}).value(commandId, NotSupported);
    }
    // The same question, values included, without waiting for the answer: work that follows
    // the document's own notifications asks this way, since the engine may hold answers
    // back while anything waits for one. done runs once, with answered false when the
    // surface could not say; at once where the surface answers without the engine.
    using StatusAnswer = std::function<void(
        bool answered, const QHash<int, CommandState> &states, const QHash<int, QVariant> &values)>;
    virtual void requestStatus(const QList<int> &commandIds, StatusAnswer done);

    // Editing aids drawn only while editing, never saved: "borders" (tables without a
    // border drawn dashed), "details" (marks for invisible elements) and "snapToGrid".
    // Sets an element's text exactly, without parsing it as markup.
    virtual bool setElementText(const Element &element, const QString &text);
    virtual bool displaySwitch(const QString &name);
    virtual bool setDisplaySwitch(const QString &name, bool on);

    // Which keys belong to the editor and its host rather than to the engine's own key
    // bindings (on X11 the engine deletes to the end of the line on Ctrl+K). A claimed key
    // goes to the application's shortcuts first. When none takes it (its command is off),
    // it is dropped with a beep, or, where the engine's binding does what the command would
    // (the clipboard keys, undo and redo), the engine runs it.
    enum class KeyClaim
    {
        Engine,
        Application,
        ApplicationThenEngine
    };
    void setShortcutClaim(std::function<KeyClaim(const QKeySequence &)> claims)
    {
        m_shortcutClaim = std::move(claims);
    }
    KeyClaim shortcutClaim(const QKeySequence &keys) const
    {
        return m_shortcutClaim ? m_shortcutClaim(keys) : KeyClaim::Engine;
    }

    // The spelling check's access to the text. spellingText reads every text node of the
    // body outside scripts, styles and form controls, in reading order, in one call; the
    // calls after it address those nodes by index until the next read. A text point is a
    // node index and an offset in that node's text.
    struct TextPoint
    {
        int node = 0;
        int offset = 0;
    };
    struct SpellingText
    {
        QStringList texts;
        // Per node: an index into languages (the lang attribute in force, "" for none).
        QList<int> languageOf;
        // Per node: whether a new run of text starts there (a block or line break before
        // it), so that words never join across.
        QList<bool> runStarts;
        QStringList languages;
        QString documentLanguage;
        // Where the selection ends.
        TextPoint selectionEnd;
        // The read's number, never 0. An answer with unchanged set carries only this, the
        // selection and the document language: the body is as the read numbered so left it.
        quint64 read = 0;
        bool unchanged = false;
    };
    // since: the number of a read whose texts the caller still holds, or 0.
    virtual SpellingText spellingText(quint64 since = 0);
    // The same read of only the blocks in and near the view (and the one with the caret),
    // for the underlines, without waiting: done runs once, answered false when the surface
    // could not read. The nodes of this read are kept apart from spellingText's, so that
    // the calls below keep addressing the whole page.
    using SpellingTextAnswer = std::function<void(bool answered, const SpellingText &text)>;
    virtual void requestVisibleSpellingText(SpellingTextAnswer done);
    // Selects the text between two points and scrolls it into view.
    virtual bool selectSpellingText(TextPoint start, TextPoint end);
    struct SpellingEdit
    {
        TextPoint start;
        TextPoint end;
        QString text;
    };
    // Replaces text inside text nodes, in one step the user can undo; the edits come in
    // document order. Returns the new text of every node changed, empty when it failed.
    virtual QList<std::pair<int, QString>> replaceSpellingText(const QList<SpellingEdit> &edits);
    // The text node at a point of the view (as the context menu reports it), read as node 0
    // for the calls above: its text, the point's offset in it and its language. No text
    // there gives offset -1.
    struct TextAtPoint
    {
        QString text;
        int offset = -1;
        QString language;
    };
    virtual TextAtPoint spellingTextAt(const QPoint &viewPoint);
    // Underlines the words between each pair of points of the last requestVisibleSpellingText
    // read, in place of the underlines before; none takes them all away. The underlines
    // follow edits until the next call and never reach the document's markup. Does not wait
    // for the page; false when this surface cannot underline.
    virtual bool underlineSpellingText(const QList<std::pair<TextPoint, TextPoint>> &words);

Q_SIGNALS:
    void documentComplete();
    void displayChanged();
    void contentChanged();
    void keyDown(int keyCode, int shift);
    void mouseDown(int button, int shift, double x, double y);
    void mouseMove(int button, int shift, double x, double y);
    void mouseUp(int button, int shift, double x, double y);
    void clicked();
    void doubleClicked();
    void contextMenuRequested(const QPoint &position);
    // The view came to rest after scrolling, once text in view was read.
    void viewScrolled();

protected:
    explicit DesignSurface(QObject *parent = nullptr);
    // Records the outcome of the call just made; an error also goes to the log.
    void setLastError(const QString &error);

private:
    QString m_lastError;
    std::function<KeyClaim(const QKeySequence &)> m_shortcutClaim;
};

// The surface this build uses. It and its widget are children of parent, which owns them.
DesignSurface *createDesignSurface(QWidget *parent);

} // namespace Vantry::Platform
