#pragma once

#include "platform/searchtarget.h"

#include <QStringList>
#include <QWidget>

class QsciAbstractAPIs;
class QsciLexerHTML;

namespace Vantry::Platform {

class ScintillaView;

// The source view's text editor: QScintilla with HTML colouring, tag completion from the
// member list "HTML Tags", and the editing commands of the source view's context menu.
//
// The tag list opens by itself only while a tag name is typed (after "<" or "</"), and on
// Ctrl+Space anywhere; elsewhere Enter always starts a new line.
//
// Lines and columns in this interface are counted from 1, as the position display shows
// them; a column counts characters.
class SourceEditor : public QWidget, public SearchTarget
{
    Q_OBJECT

public:
    using SearchOptions = Platform::SearchOptions;

    explicit SourceEditor(QWidget *parent = nullptr);
    ~SourceEditor() override;

    // Display, colouring and completion settings; resets colours to the lexer's own.
    void configure();
    // Offers the tags of the file (see SourceText::parseMemberList) for completion; a
    // missing, unreadable or empty file offers the built-in list. Returns whether the file
    // was used.
    bool loadMemberList(const QString &fileName);
    // Applies the colours of a language file (see SourceText::parseLanguageFile); a missing
    // file keeps the lexer's colours. Returns whether the file was read.
    bool loadLanguage(const QString &fileName);
    static QString memberListTitle();
    QStringList memberList() const;
    // Completion needs the list indexed, which QScintilla does in the background.
    bool isMemberListPrepared() const { return true; }

    QString text() const;
    // Replaces the whole text with a fresh undo history and puts the caret at the start.
    // This is no edit: edited() is not emitted.
    void setText(const QString &text);
    bool hasSelectedText() const;
    QString selectedText() const;
    void select(int lineFrom, int columnFrom, int lineTo, int columnTo);
    int caretLine() const;
    int caretColumn() const;
    void setCaretPosition(int line, int column);
    int lineCount() const;
    // "Ln N, Col M" for the caret.
    QString positionText() const;

    bool isReadOnly() const;
    bool canPaste() const;
    bool isUndoAvailable() const;
    bool isRedoAvailable() const;

    // Commands of the context menu.
    void commentSelection();
    void uncommentSelection();
    void cut();
    void copy();
    void paste();
    void undo();
    void redo();
    void makeUpperCase();
    void makeLowerCase();
    bool isWhitespaceVisible() const;
    void setWhitespaceVisible(bool visible);
    void toggleWhitespace();
    // The caption of the whitespace item: what choosing it will do.
    QString whitespaceCaption() const;

    // Selects the next occurrence after (or before) the selection, wrapping at the end.
    bool findNext(const QString &text, const SearchOptions &options) override;
    bool canReplace() const override { return true; }
    // Replaces the selection when it is an occurrence of text, then selects the next one.
    // Returns whether there is a next one.
    bool replaceNext(
        const QString &text, const QString &replacement, const SearchOptions &options) override;
    // Replaces every occurrence as one undo step; returns how many.
    int replaceAll(
        const QString &text, const QString &replacement, const SearchOptions &options) override;
    // Moves the caret to the start of the line, clamped to the text.
    void goToLine(int line);
    // Opens the tag list for the word at the caret; nothing opens when no tag fits.
    void showTagList();

Q_SIGNALS:
    void caretMoved(int line, int column);
    void memberListPrepared();
    // The text was changed by an edit (typing, clipboard, undo and redo, a command, a
    // replacement); a command or an undo step counts once however much it changes.
    // Emitted from the event loop once the change is complete.
    void edited();
    // The user asked for a context menu at this global position.
    void contextMenuRequested(const QPoint &globalPos);

private:
    class EditStep;

    void textModified(int modificationType);
    void reportEdit();
    void charAdded();
    void transformSelectedLines(QString (*transform)(const QString &));
    QString lineWithoutEol(int line) const;

    ScintillaView *m_view = nullptr;
    QsciLexerHTML *m_lexer = nullptr;
    QsciAbstractAPIs *m_apis = nullptr;
    QStringList m_memberList;
    bool m_settingText = false;
    int m_stepDepth = 0;
    bool m_stepChanged = false;
};

} // namespace Vantry::Platform
