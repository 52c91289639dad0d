#include "platform/scintilla/sourceeditor.h"

#include "platform/scintilla/languagefile.h"
#include "platform/scintilla/sourcetext.h"

#include <Qsci/qsciabstractapis.h>
#include <Qsci/qscilexerhtml.h>
#include <Qsci/qsciscintilla.h>

#include <QContextMenuEvent>
#include <QFile>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>
#include <utility>

namespace Vantry::Platform {

namespace {

// Offers the tags of the member list that start with the word being typed. A few hundred
// tags need no index, so this works synchronously rather than on QsciAPIs' worker thread,
// which could outlive the editor.
class TagCompletion : public QsciAbstractAPIs
{
public:
    TagCompletion(QsciLexer *lexer, const QStringList *tags)
        : QsciAbstractAPIs(lexer)
        , m_tags(tags)
    { }

    void updateAutoCompletionList(const QStringList &context, QStringList &list) override
    {
        const QString word = context.isEmpty() ? QString() : context.last();
        for (const QString &tag : *m_tags) {
            if (tag.startsWith(word, Qt::CaseInsensitive) && !list.contains(tag))
                list.append(tag);
        }
    }

    QStringList callTips(
        const QStringList &, int, QsciScintilla::CallTipsStyle, QList<int> &) override
    {
        return {};
    }

private:
    const QStringList *m_tags;
};

} // namespace

// QScintilla's own context menu gives way to the one of the source view.
class ScintillaView : public QsciScintilla
{
public:
    using QsciScintilla::QsciScintilla;

    std::function<void(const QPoint &)> contextMenuRequested;
    std::function<void()> completionRequested;

protected:
    void contextMenuEvent(QContextMenuEvent *event) override
    {
        if (contextMenuRequested)
            contextMenuRequested(event->globalPos());
        event->accept();
    }

    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_Space && event->modifiers() == Qt::ControlModifier
            && completionRequested) {
            completionRequested();
            event->accept();
            return;
        }
        QsciScintilla::keyPressEvent(event);
    }
};

// Changes made between construction and destruction make one undo step and count as one
// edit.
class SourceEditor::EditStep
{
public:
    explicit EditStep(SourceEditor &editor)
        : m_editor(editor)
    {
        ++m_editor.m_stepDepth;
        m_editor.m_view->beginUndoAction();
    }
    ~EditStep()
    {
        m_editor.m_view->endUndoAction();
        if (--m_editor.m_stepDepth == 0 && std::exchange(m_editor.m_stepChanged, false))
            m_editor.reportEdit();
    }
    EditStep(const EditStep &) = delete;
    EditStep &operator=(const EditStep &) = delete;

private:
    SourceEditor &m_editor;
};

namespace {

// Scintilla has at most this many styles.
constexpr int styleCount = 128;

} // namespace

SourceEditor::SourceEditor(QWidget *parent)
    : QWidget(parent)
{
    m_view = new ScintillaView(this);
    m_view->setObjectName(QStringLiteral("HTMLSourceText"));
    m_view->contextMenuRequested = [this](const QPoint &pos) { Q_EMIT contextMenuRequested(pos); };
    m_view->completionRequested = [this] { showTagList(); };
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
    setFocusProxy(m_view);

    m_lexer = new QsciLexerHTML(this);
    m_apis = new TagCompletion(m_lexer, &m_memberList);
    m_apis->setObjectName(memberListTitle());
    m_view->setLexer(m_lexer);

    connect(m_view, &QsciScintilla::cursorPositionChanged, this,
        [this](int line, int index) { Q_EMIT caretMoved(line + 1, index + 1); });
    connect(m_view, &QsciScintillaBase::SCN_MODIFIED, this,
        [this](int, int modificationType) { textModified(modificationType); });
    connect(m_view, &QsciScintillaBase::SCN_CHARADDED, this, &SourceEditor::charAdded);

    configure();
    loadMemberList(QString());
}

SourceEditor::~SourceEditor()
{
    // The view must not use the lexer while both are torn down.
    m_view->setLexer(nullptr);
}

void SourceEditor::configure()
{
    const QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    m_lexer->setDefaultFont(font);
    m_lexer->setFont(font, -1);
    for (int style = 0; style < styleCount; ++style) {
        if (m_lexer->description(style).isEmpty())
            continue;
        m_lexer->setColor(m_lexer->defaultColor(style), style);
        m_lexer->setPaper(m_lexer->defaultPaper(style), style);
    }

    m_view->setUtf8(true);
    // The design surface hands out text with line feeds only.
    m_view->setEolMode(QsciScintilla::EolUnix);
    m_view->setTabWidth(4);
    m_view->setAutoIndent(true);
    m_view->setBraceMatching(QsciScintilla::SloppyBraceMatch);
    m_view->setMarginsFont(font);
    m_view->setMarginType(0, QsciScintilla::NumberMargin);
    m_view->setMarginLineNumbers(0, true);
    m_view->setMarginWidth(0, QStringLiteral("00000"));
    m_view->setWhitespaceVisibility(QsciScintilla::WsInvisible);

    m_view->setAutoCompletionSource(QsciScintilla::AcsAPIs);
    // No list after every word's first letter: charAdded() opens it for tag names only.
    m_view->setAutoCompletionThreshold(0);
    m_view->setAutoCompletionCaseSensitivity(false);
    m_view->setAutoCompletionReplaceWord(true);
}

QString SourceEditor::memberListTitle()
{
    return QStringLiteral("HTML Tags");
}

QStringList SourceEditor::memberList() const
{
    return m_memberList;
}

bool SourceEditor::loadMemberList(const QString &fileName)
{
    QStringList tags;
    QFile file(fileName);
    if (!fileName.isEmpty() && file.open(QIODevice::ReadOnly | QIODevice::Text))
        tags = SourceText::parseMemberList(QString::fromUtf8(file.readAll()));
    const bool fromFile = !tags.isEmpty();
    if (!fromFile)
        tags = SourceText::builtInHtmlTags();

    m_memberList = tags;
    Q_EMIT memberListPrepared();
    return fromFile;
}

bool SourceEditor::loadLanguage(const QString &fileName)
{
    QFile file(fileName);
    if (fileName.isEmpty() || !file.open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    const QList<SourceText::StyleColour> styles
        = SourceText::parseLanguageFile(QString::fromUtf8(file.readAll()));
    for (int style = 0; style < styleCount; ++style) {
        const QString description = m_lexer->description(style);
        if (description.isEmpty())
            continue;
        for (const SourceText::StyleColour &colour : styles) {
            if (colour.styleName.compare(description, Qt::CaseInsensitive) != 0)
                continue;
            m_lexer->setColor(colour.foreground, style);
            if (colour.background.isValid())
                m_lexer->setPaper(colour.background, style);
        }
    }
    return true;
}

QString SourceEditor::text() const
{
    return m_view->text();
}

void SourceEditor::setText(const QString &text)
{
    const QScopedValueRollback settingText(m_settingText, true);
    m_view->setText(text);
    m_view->SendScintilla(QsciScintillaBase::SCI_EMPTYUNDOBUFFER);
    m_view->setCursorPosition(0, 0);
    // Setting the same position again reports nothing; the display must still follow.
    Q_EMIT caretMoved(1, 1);
}

void SourceEditor::textModified(int modificationType)
{
    if (!(modificationType
            & (QsciScintillaBase::SC_MOD_INSERTTEXT | QsciScintillaBase::SC_MOD_DELETETEXT))
        || m_settingText)
        return;
    // An undo or redo replays its step change by change; it counts once, at the last.
    if ((modificationType
            & (QsciScintillaBase::SC_PERFORMED_UNDO | QsciScintillaBase::SC_PERFORMED_REDO))
        && !(modificationType & QsciScintillaBase::SC_LASTSTEPINUNDOREDO))
        return;
    if (m_stepDepth > 0)
        m_stepChanged = true;
    else
        reportEdit();
}

// Reported once the change is complete: a receiver may read the text or switch views,
// which must not happen inside Scintilla's change notification.
void SourceEditor::reportEdit()
{
    QMetaObject::invokeMethod(this, &SourceEditor::edited, Qt::QueuedConnection);
}

void SourceEditor::charAdded()
{
    if (m_view->isListActive())
        return;
    const long caret = m_view->SendScintilla(QsciScintillaBase::SCI_GETCURRENTPOS);
    const long lineStart = m_view->SendScintilla(QsciScintillaBase::SCI_POSITIONFROMLINE,
        m_view->SendScintilla(QsciScintillaBase::SCI_LINEFROMPOSITION, caret));
    const long wordStart
        = m_view->SendScintilla(QsciScintillaBase::SCI_WORDSTARTPOSITION, caret, true);
    // The word and what stands in front of it ("</" at most) decide; the rest of the line
    // does not matter.
    const int from = static_cast<int>(std::max(lineStart, wordStart - 2));
    if (SourceText::typesTagName(m_view->text(from, static_cast<int>(caret))))
        showTagList();
}

void SourceEditor::showTagList()
{
    m_view->autoCompleteFromAPIs();
}

bool SourceEditor::hasSelectedText() const
{
    return m_view->hasSelectedText();
}

QString SourceEditor::selectedText() const
{
    return m_view->selectedText();
}

void SourceEditor::select(int lineFrom, int columnFrom, int lineTo, int columnTo)
{
    m_view->setSelection(lineFrom - 1, columnFrom - 1, lineTo - 1, columnTo - 1);
}

int SourceEditor::caretLine() const
{
    int line = 0;
    int index = 0;
    m_view->getCursorPosition(&line, &index);
    return line + 1;
}

int SourceEditor::caretColumn() const
{
    int line = 0;
    int index = 0;
    m_view->getCursorPosition(&line, &index);
    return index + 1;
}

void SourceEditor::setCaretPosition(int line, int column)
{
    m_view->setCursorPosition(line - 1, column - 1);
}

int SourceEditor::lineCount() const
{
    return m_view->lines();
}

QString SourceEditor::positionText() const
{
    return SourceText::positionText(caretLine(), caretColumn());
}

QString SourceEditor::lineWithoutEol(int line) const
{
    QString text = m_view->text(line);
    while (text.endsWith(QLatin1Char('\n')) || text.endsWith(QLatin1Char('\r')))
        text.chop(1);
    return text;
}

// Applies transform to every line the selection touches (the caret's line when nothing is
// selected) as one undo step, then selects those lines whole.
void SourceEditor::transformSelectedLines(QString (*transform)(const QString &))
{
    int lineFrom = 0;
    int indexFrom = 0;
    int lineTo = 0;
    int indexTo = 0;
    if (m_view->hasSelectedText()) {
        m_view->getSelection(&lineFrom, &indexFrom, &lineTo, &indexTo);
        // A selection ending at the start of a line does not take that line in.
        if (lineTo > lineFrom && indexTo == 0)
            --lineTo;
    } else {
        m_view->getCursorPosition(&lineFrom, &indexFrom);
        lineTo = lineFrom;
    }

    {
        const EditStep step(*this);
        for (int line = lineFrom; line <= lineTo; ++line) {
            const QString before = lineWithoutEol(line);
            const QString after = transform(before);
            if (after == before)
                continue;
            m_view->setSelection(line, 0, line, static_cast<int>(before.size()));
            m_view->replaceSelectedText(after);
        }
    }
    m_view->setSelection(lineFrom, 0, lineTo, static_cast<int>(lineWithoutEol(lineTo).size()));
}

void SourceEditor::commentSelection()
{
    transformSelectedLines(&SourceText::commentLine);
}

void SourceEditor::uncommentSelection()
{
    transformSelectedLines(&SourceText::uncommentLine);
}

void SourceEditor::cut()
{
    m_view->cut();
}

void SourceEditor::copy()
{
    m_view->copy();
}

void SourceEditor::paste()
{
    m_view->paste();
}

void SourceEditor::undo()
{
    m_view->undo();
}

void SourceEditor::redo()
{
    m_view->redo();
}

void SourceEditor::makeUpperCase()
{
    const EditStep step(*this);
    m_view->SendScintilla(QsciScintillaBase::SCI_UPPERCASE);
}

void SourceEditor::makeLowerCase()
{
    const EditStep step(*this);
    m_view->SendScintilla(QsciScintillaBase::SCI_LOWERCASE);
}

bool SourceEditor::isWhitespaceVisible() const
{
    return m_view->whitespaceVisibility() != QsciScintilla::WsInvisible;
}

void SourceEditor::setWhitespaceVisible(bool visible)
{
    m_view->setWhitespaceVisibility(
        visible ? QsciScintilla::WsVisible : QsciScintilla::WsInvisible);
}

void SourceEditor::toggleWhitespace()
{
    setWhitespaceVisible(!isWhitespaceVisible());
}

QString SourceEditor::whitespaceCaption() const
{
    return isWhitespaceVisible() ? QStringLiteral("Hide Whitespace")
                                 : QStringLiteral("Show Whitespace");
}

bool SourceEditor::findNext(const QString &text, const SearchOptions &options)
{
    if (text.isEmpty())
        return false;
    int line = 0;
    int index = 0;
    if (m_view->hasSelectedText()) {
        int lineFrom = 0;
        int indexFrom = 0;
        int lineTo = 0;
        int indexTo = 0;
        m_view->getSelection(&lineFrom, &indexFrom, &lineTo, &indexTo);
        // Searching on from the selected occurrence, not into it.
        line = options.backwards ? lineFrom : lineTo;
        index = options.backwards ? indexFrom : indexTo;
    } else {
        m_view->getCursorPosition(&line, &index);
    }
    return m_view->findFirst(text, false, options.matchCase, options.wholeWord, true,
        !options.backwards, line, index, true);
}

bool SourceEditor::replaceNext(
    const QString &text, const QString &replacement, const SearchOptions &options)
{
    if (text.isEmpty())
        return false;
    const Qt::CaseSensitivity cs = options.matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive;
    if (m_view->hasSelectedText() && m_view->selectedText().compare(text, cs) == 0) {
        int lineFrom = 0;
        int indexFrom = 0;
        int lineTo = 0;
        int indexTo = 0;
        m_view->getSelection(&lineFrom, &indexFrom, &lineTo, &indexTo);
        {
            const EditStep step(*this);
            m_view->replaceSelectedText(replacement);
        }
        // A backward search goes on from in front of what was just put in.
        if (options.backwards)
            m_view->setCursorPosition(lineFrom, indexFrom);
    }
    return findNext(text, options);
}

int SourceEditor::replaceAll(
    const QString &text, const QString &replacement, const SearchOptions &options)
{
    if (text.isEmpty())
        return 0;
    int count = 0;
    const EditStep step(*this);
    // Each search goes on after the previous replacement, so a replacement holding the
    // text is not searched again.
    bool found = m_view->findFirst(
        text, false, options.matchCase, options.wholeWord, false, true, 0, 0, false);
    while (found) {
        m_view->replace(replacement);
        ++count;
        found = m_view->findNext();
    }
    return count;
}

void SourceEditor::goToLine(int line)
{
    const int target = std::clamp(line, 1, std::max(1, lineCount())) - 1;
    m_view->setCursorPosition(target, 0);
    m_view->ensureLineVisible(target);
    m_view->setFocus();
}

bool SourceEditor::isReadOnly() const
{
    return m_view->isReadOnly();
}

bool SourceEditor::canPaste() const
{
    return m_view->SendScintilla(QsciScintillaBase::SCI_CANPASTE) != 0;
}

bool SourceEditor::isUndoAvailable() const
{
    return m_view->isUndoAvailable();
}

bool SourceEditor::isRedoAvailable() const
{
    return m_view->isRedoAvailable();
}

} // namespace Vantry::Platform
