// The source view on the real engine and the real QScintilla: switching between the views
// and carrying the document both ways, edits and focus while the source shows, the position
// display, the editor's own commands and dialogs, tag completion, and its files under the
// application directory.

#include "../common/datarows.h"
#include "../common/enginetest.h"
#include "../common/files.h"
#include "../common/recordingprompts.h"

#include "control/appdirectory.h"
#include "dialogs/findreplacedialog.h"
#include "dialogs/gotolinedialog.h"
#include "platform/scintilla/languagefile.h"
#include "platform/scintilla/sourceeditor.h"
#include "platform/scintilla/sourcetext.h"

#include <Qsci/qscilexer.h>
#include <Qsci/qsciscintilla.h>

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QStandardPaths>
#include <QTabBar>
#include <QTemporaryDir>

using namespace Vantry;
using namespace Qt::StringLiterals;
using Platform::SourceEditor;
using VantryTest::fontDivision;
using VantryTest::surfaceOf;
using VantryTest::writeFile;

namespace {

bool anyDialogShown()
{
    const auto windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), [](const QWidget *window) {
        return window->isVisible() && qobject_cast<const QDialog *>(window);
    });
}

} // namespace

class tst_SourceView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_window = std::make_unique<QWidget>();
        m_host = new QLineEdit(m_window.get());
        m_host->setGeometry(0, 0, 900, 30);
        m_editor = new HTMLEditorComponent(m_window.get());
        m_editor->setGeometry(0, 30, 900, 600);
        m_window->resize(900, 630);
        auto prompts = std::make_unique<VantryTest::RecordingPrompts>();
        m_prompts = prompts.get();
        m_editor->setUserPrompts(std::move(prompts));
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QVERIFY(VantryTest::waitUntilReady(*m_editor));
    }

    void init()
    {
        m_editor->InitProperties();
        m_editor->setEditorEnabled(true);
        m_editor->setSetHtmlSource(u"<p>one</p>"_s);
        QVERIFY(m_editor->DesignViewActive());
    }

    void cleanup()
    {
        if (scintilla()->isListActive())
            scintilla()->cancelList();
        m_prompts->answers.clear();
        m_prompts->shown.clear();
        m_editor->ToggleDesignSourceView(u"design"_s);
        const auto dialogs = editor()->findChildren<QDialog *>();
        for (QDialog *dialog : dialogs)
            dialog->close();
        editor()->setWhitespaceVisible(false);
    }

    // Switching.
    void toggleNamesTheViewInAnyCase_data()
    {
        columns<bool, QVariant, bool>("fromSource", "view", "designActive");
        row("SOURCE", false, QVariant(u"SOURCE"_s), false);
        row("Design", true, QVariant(u"Design"_s), true);
        row("other word from design", false, QVariant(u"other word"_s), true);
        row("other word from source", true, QVariant(u"other word"_s), false);
        row("tab number", false, QVariant(2), true);
        row("source again", true, QVariant(u"source"_s), false);
    }

    void toggleNamesTheViewInAnyCase()
    {
        auto [fromSource, view, designActive]
            = fetch<bool, QVariant, bool>("fromSource", "view", "designActive");

        if (fromSource)
            m_editor->ToggleDesignSourceView(u"source"_s);
        QCOMPARE(m_editor->DesignViewActive(), !fromSource);
        editor()->setText(editor()->text() + u"<p>kept</p>"_s);

        m_editor->ToggleDesignSourceView(view);
        QCOMPARE(m_editor->DesignViewActive(), designActive);
        QCOMPARE(tabs()->currentIndex(), designActive ? 0 : 1);
        QCOMPARE(sourceShows(), !designActive);
        QCOMPARE(positionDisplay()->isVisible(), !designActive);
        // Staying in the source view keeps what was typed there.
        if (fromSource && !designActive)
            QVERIFY(editor()->text().endsWith(u"<p>kept</p>"_s));
    }

    void bodyOrWholeDocumentTravelsBothWays_data()
    {
        QTest::addColumn<bool>("fullDocument");
        row("body", false);
        row("whole document", true);
    }

    void bodyOrWholeDocumentTravelsBothWays()
    {
        QFETCH(bool, fullDocument);
        m_editor->setReturnFullDocument(fullDocument);
        const QString link = u"<link rel=\"stylesheet\" href=\"one.css\">"_s;
        m_editor->setSetHtmlSource(
            u"<html><head><title>T</title></head><body><p>one</p>"_s + link + u"</body></html>"_s);
        tabs()->setCurrentIndex(1);
        QVERIFY(!m_editor->DesignViewActive());

        QString text = editor()->text();
        QVERIFY2(text.contains(u"<p>one</p>"_s), qPrintable(text));
        QCOMPARE(text.contains(u"<title>T</title>"_s), fullDocument);
        QCOMPARE(text.contains(u"<body"_s, Qt::CaseInsensitive), fullDocument);
        // Style-sheet links stand once, just before the end of the head, and never in the body.
        QCOMPARE(text.count(u"<link"_s, Qt::CaseInsensitive), int(fullDocument));
        QCOMPARE(
            text.contains(u"<LINK href=\"one.css\" rel=\"StyleSheet\"></HEAD>"_s), fullDocument);
        if (!fullDocument)
            QCOMPARE(text, surfaceOf(*m_editor)->bodyInnerHTML().remove(link));

        // Reading the document takes what was edited in the source, back in the design view.
        editor()->setText(text.replace(u"<p>one</p>"_s, u"<p>edited</p>"_s));
        const QString html = m_editor->GetHtmlSource();
        QVERIFY2(html.contains(u"<p>edited</p>"_s), qPrintable(html));
        QVERIFY(!html.contains(u"<p>one</p>"_s));
        QCOMPARE(html.contains(u"<title>T</title>"_s), fullDocument);
        QVERIFY(m_editor->DesignViewActive());

        // Reading the text alone switches back too.
        m_editor->ToggleDesignSourceView(u"source"_s);
        editor()->setText(u"<p>plain edit</p>"_s);
        m_editor->GetPlainText();
        QVERIFY(m_editor->DesignViewActive());
        QVERIFY(surfaceOf(*m_editor)->bodyInnerHTML().contains(u"plain edit"_s));

        // And so does the tab bar.
        tabs()->setCurrentIndex(1);
        editor()->setText(u"<p>two</p>"_s);
        tabs()->setCurrentIndex(0);
        QVERIFY(m_editor->DesignViewActive());
        QCOMPARE(surfaceOf(*m_editor)->bodyInnerHTML(), u"<p>two</p>"_s);
    }

    // Edits and focus while the source shows.
    void sourceEditsAreChangesAndLoadsAreNot_data()
    {
        QTest::addColumn<QString>("edit");
        for (const char *edit : {"typing", "paste", "undo", "redo", "replace all", "comment"})
            row(edit, edit);
    }

    void sourceEditsAreChangesAndLoadsAreNot()
    {
        QFETCH(QString, edit);
        QTemporaryDir folder;
        const QString file = folder.filePath(u"page.html"_s);
        QVERIFY(writeFile(file, "<html><body><p>from file</p></body></html>"));
        m_editor->setisDirty(false);
        QSignalSpy changed(m_editor, &HTMLEditorComponent::HTMLChanged);

        // Text the editor is given is no edit: switching, loading while the source shows, and
        // opening a file while it shows.
        m_editor->ToggleDesignSourceView(u"source"_s);
        m_editor->setSetHtmlSource(u"<p>loaded</p>"_s);
        QVERIFY(m_editor->DesignViewActive());
        QCOMPARE(m_editor->GetHtmlSource(), fontDivision + u"<p>loaded</p></div>"_s);
        m_editor->ToggleDesignSourceView(u"source"_s);
        m_editor->FileOpen(file);
        m_editor->ToggleDesignSourceView(u"source"_s);
        QVERIFY(editor()->text().contains(u"from file"_s));
        QCoreApplication::processEvents();
        QCOMPARE(changed.count(), 0);
        QVERIFY(!m_editor->isDirty());

        scintilla()->setFocus();
        if (edit == QLatin1String("undo") || edit == QLatin1String("redo")) {
            QTest::keyClicks(scintilla(), u"x"_s);
            if (edit == QLatin1String("redo"))
                choose("mnuUndo");
            QTRY_VERIFY(m_editor->isDirty());
            m_editor->setisDirty(false);
            changed.clear();
        }

        const QString before = editor()->text();
        // Raised as each change completes; a step of many changes counts once.
        int changes = 1;
        if (edit == QLatin1String("typing")) {
            QTest::keyClicks(scintilla(), u"abc"_s);
            changes = 3;
        } else if (edit == QLatin1String("paste")) {
            editor()->select(1, 1, 1, 4);
            choose("mnuCopy");
            editor()->setCaretPosition(1, 1);
            choose("mnuPaste");
        } else if (edit == QLatin1String("undo")) {
            choose("mnuUndo");
        } else if (edit == QLatin1String("redo")) {
            choose("mnuRedo");
        } else if (edit == QLatin1String("replace all")) {
            choose("mnuReplace");
            auto *dialog = editor()->findChild<Dialogs::FindReplaceDialog *>();
            dialog->findChild<QLineEdit *>(u"txtFind"_s)->setText(u"p"_s);
            dialog->findChild<QLineEdit *>(u"txtReplace"_s)->setText(u"P"_s);
            dialog->findChild<QPushButton *>(u"cmdReplaceAll"_s)->click();
        } else if (edit == QLatin1String("comment")) {
            choose("mnuCommentSelection");
        }
        QVERIFY(editor()->text() != before);
        QTRY_VERIFY(m_editor->isDirty());
        QCOMPARE(changed.count(), changes);

        // Replacing the document now asks first.
        m_prompts->answers.enqueue(Platform::UserPrompts::Answer::Cancel);
        m_editor->FileNew();
        QCOMPARE(m_prompts->texts(VantryTest::RecordingPrompts::Kind::Question).size(), 1);
        QVERIFY(!m_editor->DesignViewActive());
        QVERIFY(m_editor->isDirty());
    }

    void focusAndKeysGoToTheSourceNotTheHiddenPage_data()
    {
        QTest::addColumn<QString>("path");
        row("host sets the focus", "setFocus");
        row("tab from the host", "tab");
        row("cancelled save prompt", "prompt");
    }

    void focusAndKeysGoToTheSourceNotTheHiddenPage()
    {
        QFETCH(QString, path);
        // Dialogs of earlier cases may have taken the activation.
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_host->setFocus();
        QTRY_VERIFY(m_host->hasFocus());
        m_editor->ToggleDesignSourceView(u"source"_s);
        // A host that switches views keeps its focus.
        QVERIFY(m_host->hasFocus());

        if (path == QLatin1String("setFocus")) {
            m_editor->setFocus();
        } else if (path == QLatin1String("tab")) {
            for (int step = 0; step < 40 && !focusInSource(); ++step) {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
                QVERIFY2(!focusInSurface(), qPrintable(QString::number(step)));
            }
        } else if (path == QLatin1String("prompt")) {
            m_editor->setisDirty(true);
            m_prompts->answers.enqueue(Platform::UserPrompts::Answer::Cancel);
            m_editor->FileNew();
            QCOMPARE(m_prompts->shown.size(), 1);
        }
        QTRY_VERIFY(focusInSource());
        QVERIFY(!focusInSurface());

        // What the user types lands in the source and survives the switch back.
        QTest::keyClicks(QApplication::focusWidget(), u"typed"_s);
        QVERIFY2(editor()->text().contains(u"typed"_s), qPrintable(editor()->text()));
        m_editor->ToggleDesignSourceView(u"design"_s);
        const QString body = surfaceOf(*m_editor)->bodyInnerHTML();
        QVERIFY2(body.contains(u"typed"_s), qPrintable(body));

        // Back in design, the page takes the focus again.
        QVERIFY(focusInSurface());
        m_host->setFocus();
        m_editor->setFocus();
        QTRY_VERIFY(focusInSurface());
    }

    // The position display.
    void positionDisplayFollowsTheCaret()
    {
        QVERIFY(!positionDisplay()->isVisible());
        m_editor->setSetHtmlSource(u"<p>first</p>\n<p>second</p>"_s);
        m_editor->ToggleDesignSourceView(u"source"_s);
        QVERIFY(positionDisplay()->isVisible());
        QCOMPARE(positionDisplay()->text(), u"Ln 1, Col 1"_s);
        // It stands right of the tabs, inside the tab panel.
        const QRect tabArea = tabs()->tabRect(1);
        QVERIFY(positionDisplay()->geometry().left() > tabArea.right());
        QVERIFY(positionDisplay()->parentWidget()->rect().contains(positionDisplay()->geometry()));

        editor()->setFocus();
        QTest::keyClick(scintilla(), Qt::Key_Right);
        QTest::keyClick(scintilla(), Qt::Key_Right);
        // QScintilla reports caret moves when it next updates its display.
        QTRY_COMPARE(positionDisplay()->text(), u"Ln 1, Col 3"_s);
        QTest::keyClick(scintilla(), Qt::Key_Down);
        QTRY_COMPARE(positionDisplay()->text(), u"Ln 2, Col 3"_s);
        editor()->setCaretPosition(1, 2);
        QTRY_COMPARE(positionDisplay()->text(), u"Ln 1, Col 2"_s);
    }

    // The editor's commands.
    void commentCommandsWorkOnWholeLines_data()
    {
        // selection: line, column, line, column; empty: the caret.
        columns<QString, QList<int>, QString>("text", "selection", "commented");

        row("caret line", "<p>a</p>\n<p>b</p>", QList<int>{}, "<!--<p>a</p>-->\n<p>b</p>");
        row("part of two lines", "<p>a</p>\n<p>b</p>\n<p>c</p>", QList<int>{1, 3, 2, 2},
            "<!--<p>a</p>-->\n<!--<p>b</p>-->\n<p>c</p>");
        row("selection ending at a line start", "<p>a</p>\n<p>b</p>", QList<int>{1, 1, 2, 1},
            "<!--<p>a</p>-->\n<p>b</p>");
        row("indentation and blank lines stay", "  <p>a</p>  \n\n\t<br>", QList<int>{1, 1, 3, 5},
            "  <!--<p>a</p>-->  \n\n\t<!--<br>-->");
    }

    void commentCommandsWorkOnWholeLines()
    {
        auto [text, selection, commented]
            = fetch<QString, QList<int>, QString>("text", "selection", "commented");

        editor()->setText(text);
        if (!selection.isEmpty())
            editor()->select(selection[0], selection[1], selection[2], selection[3]);
        choose("mnuCommentSelection");
        QCOMPARE(editor()->text(), commented);
        // The touched lines stay selected, so that uncommenting takes the same lines.
        choose("mnuUncommentSelection");
        QCOMPARE(editor()->text(), text);

        // One command is one undo step.
        choose("mnuCommentSelection");
        choose("mnuUndo");
        QCOMPARE(editor()->text(), text);
    }

    void caseCommandsChangeTheSelectionOnly_data()
    {
        columns<QString, QString>("item", "expected");
        row("upper", "mnuMakeUpperCase", "<p>MIXED Case</p>");
        row("lower", "mnuMakeLowerCase", "<p>mixed Case</p>");
    }

    void caseCommandsChangeTheSelectionOnly()
    {
        auto [item, expected] = fetch<QString, QString>("item", "expected");
        editor()->setText(u"<p>MiXeD Case</p>"_s);
        editor()->select(1, 4, 1, 9);
        choose(item.toLatin1().constData());
        QCOMPARE(editor()->text(), expected);
        QCOMPARE(editor()->selectedText(), expected.mid(3, 5));
    }

    void whitespaceItemSaysWhatItWillDo()
    {
        for (const bool shown : {false, true, false}) {
            openMenu();
            QCOMPARE(menuItem("mnuShowWhiteSpace")->text(),
                shown ? u"Hide Whitespace"_s : u"Show Whitespace"_s);
            QCOMPARE(scintilla()->whitespaceVisibility() == QsciScintilla::WsVisible, shown);
            choose("mnuShowWhiteSpace");
        }
    }

    // Paste, undo and redo from the menu are edits above.
    void clipboardAndUndoItemsWhenTheyApply()
    {
        editor()->setText(u"abc def"_s);
        openMenu();
        // A fresh text has nothing to undo and nothing selected.
        QVERIFY(!menuItem("mnuUndo")->isEnabled());
        QVERIFY(!menuItem("mnuCut")->isEnabled());
        QVERIFY(!menuItem("mnuMakeUpperCase")->isEnabled());
        QVERIFY(menuItem("mnuFind")->isEnabled());
        editor()->select(1, 1, 1, 4);
        openMenu();
        QVERIFY(menuItem("mnuCut")->isEnabled());
        QVERIFY(menuItem("mnuMakeLowerCase")->isEnabled());

        choose("mnuCut");
        QCOMPARE(editor()->text(), u" def"_s);
    }

    void findAndReplaceDialog()
    {
        editor()->setText(u"Cat cat\ncategory CAT"_s);
        choose("mnuFind");
        auto *dialog = editor()->findChild<Dialogs::FindReplaceDialog *>();
        QVERIFY(dialog && dialog->isVisible());
        QVERIFY(!dialog->isModal());
        QVERIFY(!dialog->isReplaceMode());
        QVERIFY(!dialog->findChild<QLineEdit *>(u"txtReplace"_s)->isVisible());
        const auto check = [dialog](const char *name, bool on) {
            dialog->findChild<QCheckBox *>(QLatin1String(name))->setChecked(on);
        };
        const auto type = [dialog](const char *name, const QString &text) {
            dialog->findChild<QLineEdit *>(QLatin1String(name))->setText(text);
        };
        const auto click = [dialog](const char *name) {
            dialog->findChild<QPushButton *>(QLatin1String(name))->click();
        };
        // Where the caret stands after each search.
        const auto find = [&](const QString &text) {
            type("txtFind", text);
            click("cmdFindNext");
            return QPoint(editor()->caretColumn(), editor()->caretLine());
        };
        QCOMPARE(find(u"cat"_s), QPoint(4, 1));
        QCOMPARE(find(u"cat"_s), QPoint(8, 1));
        QCOMPARE(find(u"cat"_s).y(), 2);
        check("chkSearchUp", true);
        QCOMPARE(find(u"cat"_s), QPoint(8, 1));
        QCOMPARE(editor()->selectedText(), u"cat"_s);

        check("chkSearchUp", false);
        check("chkMatchCase", true);
        check("chkWholeWord", true);
        QCOMPARE(find(u"CAT"_s), QPoint(13, 2));
        QVERIFY(dialog->statusText().isEmpty());
        find(u"dog"_s);
        QVERIFY(!dialog->statusText().isEmpty());
        click("cmdClose");
        QVERIFY(!dialog->isVisible());

        // Replacing all does not search the replacements again.
        editor()->setText(u"a b A\na"_s);
        choose("mnuReplace");
        QVERIFY(dialog->isVisible() && dialog->isReplaceMode());
        QCOMPARE(dialog->windowTitle(), u"Replace"_s);
        check("chkMatchCase", false);
        check("chkWholeWord", false);
        type("txtFind", u"a"_s);
        type("txtReplace", u"aa"_s);
        click("cmdReplaceAll");
        QCOMPARE(editor()->text(), u"aa b aa\naa"_s);
        QCOMPARE(dialog->statusText(), u"3 occurrences replaced."_s);
        choose("mnuUndo");
        QCOMPARE(editor()->text(), u"a b A\na"_s);

        // Replace goes one occurrence at a time and selects the next; the first selects.
        editor()->setCaretPosition(1, 1);
        type("txtReplace", u"x"_s);
        click("cmdReplace");
        QCOMPARE(editor()->text(), u"a b A\na"_s);
        click("cmdReplace");
        QCOMPARE(editor()->text(), u"x b A\na"_s);
        QCOMPARE(editor()->selectedText(), u"A"_s);
    }

    void goToLineDialogMovesTheCaret()
    {
        editor()->setText(u"1\n2\n3\n4"_s);
        choose("mnuGoTo");
        auto *dialog = editor()->findChild<Dialogs::GoToLineDialog *>();
        QVERIFY(dialog && dialog->isVisible());
        QCOMPARE(dialog->line(), 1);
        dialog->setLine(9); // beyond the text: the last line
        QCOMPARE(dialog->line(), 4);
        dialog->setLine(3);
        dialog->accept();
        QVERIFY(!dialog->isVisible());
        QCOMPARE(editor()->caretLine(), 3);
        QCOMPARE(editor()->caretColumn(), 1);

        choose("mnuGoTo");
        QCOMPARE(dialog->line(), 3);
        dialog->setLine(1);
        dialog->reject();
        QCOMPARE(editor()->caretLine(), 3);
    }

    void tagListOpensForTagNamesOrWhenAsked_data()
    {
        columns<QString, bool, QString>("typed", "ask", "expected");
        row("word in text", "a tab", false, "a tab\n");
        row("text after a tag", "<p>ta", false, "<p>ta\n");
        row("attribute name", "<td wi", false, "<td wi\n");
        row("tag name", "<ta", false, "<table");
        row("closing tag name", "</ta", false, "</table");
        row("asked for", "a ta", true, "a table");
        row("asked for, nothing fits", "zq", true, "zq\n");
    }

    void tagListOpensForTagNamesOrWhenAsked()
    {
        auto [typed, ask, expected] = fetch<QString, bool, QString>("typed", "ask", "expected");
        editor()->loadMemberList(QString());
        m_editor->ToggleDesignSourceView(u"source"_s);
        editor()->setText(QString());
        scintilla()->setFocus();
        QTest::keyClicks(scintilla(), typed);
        if (ask)
            QTest::keyClick(scintilla(), Qt::Key_Space, Qt::ControlModifier);
        QTest::keyClick(scintilla(), Qt::Key_Return);
        QCOMPARE(editor()->text(), expected);
    }

    // Files under the application directory.
    void applicationDirectoryDropsOneSeparatorAndExists_data()
    {
        // suffix null: no directory given, the shared data folder's.
        columns<QString, QString>("suffix", "expected");
        row("trailing separator", "app/", "app");
        row("only one separator dropped", "deep/app//", "deep/app/");
        row("none given", QString(), "/Vantry Technologies/HTML Editor Control");
    }

    void applicationDirectoryDropsOneSeparatorAndExists()
    {
        auto [suffix, expected] = fetch<QString, QString>("suffix", "expected");
        QTemporaryDir root;
        QVERIFY(root.isValid());
        const QString directory
            = Control::applicationDirectory(suffix.isNull() ? suffix : root.filePath(suffix));
        if (suffix.isNull()) {
            QVERIFY2(directory.endsWith(expected), qPrintable(directory));
            const QStringList dataFolders
                = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
            QVERIFY(std::any_of(dataFolders.begin(), dataFolders.end(),
                [&](const QString &folder) { return directory.startsWith(folder); }));
            return;
        }
        QCOMPARE(directory, root.path() + QLatin1Char('/') + expected);
        QVERIFY(QFileInfo(directory).isDir());
    }

    void memberListComesFromTheApplicationDirectory_data()
    {
        // list null: no file. The built-in tags come back after a list of the folder's own.
        columns<QByteArray, QStringList>("list", "expected");
        row("the folder's list",
            QByteArray("# site tags\r\ncustomtag\r\n  <blink>  \r\n\r\ncustard\r\n"),
            QStringList{u"customtag"_s, u"blink"_s, u"custard"_s});
        row("an empty list file", QByteArray("# none\n"), Platform::SourceText::builtInHtmlTags());
        row("no list file", QByteArray(), Platform::SourceText::builtInHtmlTags());
    }

    void memberListComesFromTheApplicationDirectory()
    {
        auto [list, expected] = fetch<QByteArray, QStringList>("list", "expected");
        QTemporaryDir root;
        // The folder is made when it is not there yet.
        const QString directory = root.filePath(u"not yet there"_s);
        if (!list.isNull())
            QVERIFY(writeFile(directory + u"/memberlists/html tags.mbr"_s, list));
        QSignalSpy prepared(editor(), &SourceEditor::memberListPrepared);
        readApplicationDirectory(directory + QLatin1Char('/'));
        QVERIFY(QFileInfo(directory).isDir());
        QCOMPARE(editor()->memberList(), expected);
        QVERIFY(!QTest::qWaitFor(anyDialogShown, 50));
        if (expected.first() != u"customtag"_s)
            return;

        // Typing the start of a tag offers the list's tags.
        QTRY_VERIFY(editor()->isMemberListPrepared());
        m_editor->ToggleDesignSourceView(u"source"_s);
        editor()->setText(QString());
        scintilla()->setFocus();
        QTest::keyClicks(scintilla(), u"<cu"_s);
        QTRY_VERIFY(scintilla()->isListActive());
        QTest::keyClick(scintilla(), Qt::Key_Return);
        QVERIFY2(editor()->text().startsWith(u"<cust"_s), qPrintable(editor()->text()));
        scintilla()->cancelList();
    }

    void languageFileColoursTheLexer()
    {
        QsciLexer *lexer = scintilla()->lexer();
        QVERIFY(lexer);
        const int tagStyle = 1;
        const int commentStyle = 9;
        const QColor defaultTag = lexer->defaultColor(tagStyle);

        QTemporaryDir root;
        QVERIFY(writeFile(root.filePath(u"languages/html.lng"_s),
            "# colours\ntag = #123456\nHTML Comment = navy, #fafafa\n"));
        readApplicationDirectory(root.path());
        QCOMPARE(lexer->color(tagStyle), QColor(0x12, 0x34, 0x56));
        QCOMPARE(lexer->color(commentStyle), QColor(Qt::darkBlue));
        QCOMPARE(lexer->paper(commentStyle), QColor(0xfa, 0xfa, 0xfa));

        // Without the file the lexer's own colours come back.
        QVERIFY(QFile::remove(root.filePath(u"languages/html.lng"_s)));
        readApplicationDirectory(root.path());
        QCOMPARE(lexer->color(tagStyle), defaultTag);
    }

    void fileFormatsSkipWhatTheyCannotRead()
    {
        using namespace Platform::SourceText;
        const QList<StyleColour> styles = parseLanguageFile(QStringLiteral(
            "; comment\nTag = nocolour\n= #000000\nAttribute #ff0000\nEntity = red, blue, green\n"
            "Default = #010203 , #040506\r\n"));
        QCOMPARE(styles.size(), 1);
        QCOMPARE(styles.first().styleName, u"Default"_s);
        QCOMPARE(styles.first().foreground, QColor(1, 2, 3));
        QCOMPARE(styles.first().background, QColor(4, 5, 6));

        QCOMPARE(parseMemberList(u"<>\n  \n#x\na\n"_s), QStringList{u"a"_s});
        // Lines that only look commented are left alone.
        QCOMPARE(uncommentLine(u"<!-->"_s), u"<!-->"_s);
        QCOMPARE(uncommentLine(u"<!-- a --> b"_s), u"<!-- a --> b"_s);
        QCOMPARE(uncommentLine(u" <!-- a --> "_s), u"  a  "_s);
    }

private:
    SourceEditor *editor() const { return m_editor->findChild<SourceEditor *>(); }
    QsciScintilla *scintilla() const { return editor()->findChild<QsciScintilla *>(); }
    QTabBar *tabs() const { return m_editor->findChild<QTabBar *>(u"TabStrip1"_s); }
    QLabel *positionDisplay() const { return m_editor->findChild<QLabel *>(u"lblLnCol"_s); }
    QMenu *menu() const { return editor()->findChild<QMenu *>(u"mnuSource"_s); }
    QAction *menuItem(const char *name) const
    {
        return menu()->findChild<QAction *>(QLatin1String(name));
    }
    // The menu is brought up to date as it opens.
    void openMenu() const { Q_EMIT menu()->aboutToShow(); }
    // Picks an item the way a user does.
    void choose(const char *name) const
    {
        openMenu();
        menuItem(name)->trigger();
    }

    void readApplicationDirectory(const QString &path)
    {
        MemoryPropertyBag bag;
        bag.setValue(u"ApplicationDirectoryPath"_s, path);
        m_editor->ReadProperties(bag);
    }

    // The source editor shows by covering the whole editing panel, surface included.
    bool sourceShows() const
    {
        const auto *panel = m_editor->findChild<QWidget *>(u"picDHTMLEdit"_s);
        const QWidget *top = panel->childAt(panel->rect().center());
        return editor()->isVisible() && editor()->geometry() == panel->rect()
            && (top == editor() || editor()->isAncestorOf(top));
    }

    static bool focusIn(const QWidget *widget)
    {
        const QWidget *focused = QApplication::focusWidget();
        return focused && (focused == widget || widget->isAncestorOf(focused));
    }

    bool focusInSurface() const { return focusIn(surfaceOf(*m_editor)->widget()); }
    bool focusInSource() const { return focusIn(editor()); }

    std::unique_ptr<QWidget> m_window;
    QLineEdit *m_host = nullptr; // a host widget before the editor in the tab chain
    HTMLEditorComponent *m_editor = nullptr;
    VantryTest::RecordingPrompts *m_prompts = nullptr; // owned by the editor
};

QTEST_MAIN(tst_SourceView)
#include "tst_sourceview.moc"
