// The command executor and the context menus on the real engine: dispatch through the
// editor's public methods, the source-view guard, the dirty rule, the guarded deletions
// and their messages, the display toggles, the insertions from arguments and the menu
// built for what lies under the selection.

#include "../common/cancellingdialogs.h"
#include "../common/datarows.h"
#include "../common/recordingprompts.h"
#include "../common/surfacefixture.h"

#include "commands/commandtables.h"
#include "commands/contextmenus.h"
#include "commands/executor.h"
#include "commands/selectionaccess.h"
#include "dialogs/findreplacedialog.h"
#include "dialogs/fontdialog.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QFontDialog>
#include <QListView>
#include <QMimeData>
#include <QRegularExpression>

using namespace Vantry;
using namespace Qt::StringLiterals;
using namespace Vantry::Commands;
using Platform::Element;
using VantryTest::RecordingPrompts;

using EditorMethod = void (HTMLEditorComponent::*)();
Q_DECLARE_METATYPE(EditorMethod)
using Insertion = std::function<void(HTMLEditorComponent &)>;
Q_DECLARE_METATYPE(Insertion)

class tst_Executor : public VantryTest::SurfaceFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(start()); }

    void init()
    {
        auto prompts = std::make_unique<RecordingPrompts>();
        m_prompts = prompts.get();
        m_editor->setUserPrompts(std::move(prompts));
        // The editor's own dialogs would wait for a user; these cancel at once.
        m_editor->setEditorDialogs(std::make_unique<AnsweringDialogs>());
        m_editor->ToggleDesignSourceView(u"design"_s);
        m_dirtyMarks = 0;
        m_pressed.clear();
        m_toolTips.clear();
    }

    void cleanup()
    {
        m_executor.reset();
        m_selection.reset();
    }

    void commandsThatDoNothing_data()
    {
        // The editor's method, else the toolbar key, run in the source view or the design view.
        columns<EditorMethod, QString, bool>("method", "key", "sourceView");
        for (const auto &[name, method] : {std::pair{"Bold", &HTMLEditorComponent::Bold},
                 std::pair{"DeleteRow", &HTMLEditorComponent::DeleteRow},
                 std::pair{"Border", &HTMLEditorComponent::Border},
                 std::pair{"ForeColor", &HTMLEditorComponent::ForeColor},
                 std::pair{"PageProperties", &HTMLEditorComponent::PageProperties}})
            QTest::addRow("%s in the source view", name) << method << QString() << true;
        row("FlashProperties", &HTMLEditorComponent::FlashProperties, QString(), false);
        for (const char *key : {"ZOrder", "InsertFlash", "Strike", "bold"})
            QTest::addRow("key %s", key) << EditorMethod() << QString::fromLatin1(key) << false;
    }

    // Inert commands, keys that are none (unknown, wrong case) and any command in the source
    // view leave the document as it was.
    void commandsThatDoNothing()
    {
        auto [method, key, sourceView]
            = fetch<EditorMethod, QString, bool>("method", "key", "sourceView");
        load(u"<table><tr><td>only</td></tr></table>"_s);
        select(u"only"_s);
        const QString before = body();
        Executor &executor = localExecutor();
        if (sourceView)
            m_editor->ToggleDesignSourceView(u"source"_s);

        if (method)
            (m_editor.get()->*method)();
        else
            executor.executeKey(key);
        for (int number : {0, 25, 45, 49, 51, 52, 53, 57, -3, std::numeric_limits<int>::max()})
            executor.executeCommand(Command(number));

        QCOMPARE(m_dirtyMarks, 0);
        QVERIFY(!m_editor->isDirty());
        QVERIFY(m_prompts->shown.isEmpty());
        m_editor->ToggleDesignSourceView(u"design"_s);
        QCOMPARE(body(), before);
    }

    // The public methods, the toolbar keys and the design commands the toolbar's boxes run.
    void commandsRunInTheDesignViewAndMarkItDirty()
    {
        load(u"<p>bold lean under</p>"_s);
        select(u"bold"_s);
        m_editor->Bold();
        QVERIFY(m_editor->isDirty());
        QVERIFY(body().contains(u"<b>bold</b>"_s, Qt::CaseInsensitive));

        Executor &executor = localExecutor();
        CommandSink &sink = executor;
        m_editor->ToggleDesignSourceView(u"source"_s);
        executor.executeKey(u"Italic"_s);
        QVERIFY(!sink.execute(DesignCommand::Underline));
        m_editor->ToggleDesignSourceView(u"design"_s);
        QCOMPARE(m_dirtyMarks, 0);
        select(u"lean"_s);
        executor.executeKey(u"Italic"_s);
        QCOMPARE(m_dirtyMarks, 1);
        QVERIFY(body().contains(u"<i>lean</i>"_s, Qt::CaseInsensitive));
        select(u"under"_s);
        QVERIFY(sink.execute(DesignCommand::Underline));
        QCOMPARE(m_dirtyMarks, 2);
        QVERIFY(body().contains(QLatin1String("<u>under</u>"), Qt::CaseInsensitive));
        // A command the surface does not know runs nothing and leaves the document clean.
        QVERIFY(!sink.execute(4999));
        QCOMPARE(m_dirtyMarks, 2);
    }

    void guardedDeletions_data()
    {
        columns<EditorMethod, QString>("method", "table");
        // The selection runs from a1 to this text; empty for a caret-sized selection of a1.
        columns<QString, QString>("to", "message");

        const QString lastRow = u"Unable to remove the last table row."_s;
        const QString column = u"Unable to remove the last table column."_s;
        const QString cell = u"Unable to remove the last table cell."_s;
        const QString oneRow = u"<table><tr><td>a1</td><td>b1</td></tr></table>"_s;
        const QString oneColumn = u"<table><tr><td>a1</td></tr><tr><td>a2</td></tr>"
                                  "</table>"_s;
        const QString single = u"<table><tr><td>a1</td></tr></table>"_s;
        const QString nested
            = u"<table><tr><td><table><tr><td>a1</td><td>x</td></tr><tr><td>y</td><td>z</td></tr>"
              "</table></td></tr></table>"_s;
        row("last row", &HTMLEditorComponent::DeleteRow, oneRow, QString(), lastRow);
        row("last column", &HTMLEditorComponent::DeleteColumn, single, QString(), column);
        row("last cell", &HTMLEditorComponent::DeleteCell, single, QString(), cell);
        row("second column", &HTMLEditorComponent::DeleteColumn, oneRow, QString(), QString());
        row("one column of two cells", &HTMLEditorComponent::DeleteColumn, oneColumn, QString(),
            column);
        row("every row selected", &HTMLEditorComponent::DeleteRow, oneColumn, "a2", lastRow);
        row("every cell selected", &HTMLEditorComponent::DeleteCell, oneRow, "b1", cell);
        row("a row spanning the table", &HTMLEditorComponent::DeleteRow,
            "<table><tr><td rowspan=\"2\">a1</td><td>b1</td></tr>"
            "<tr><td>b2</td></tr></table>",
            QString(), lastRow);
        row("row markup in a comment is no row", &HTMLEditorComponent::DeleteRow,
            "<table><tr><td>a1<!-- <tr><td>x</td></tr> --></td></tr></table>", QString(), lastRow);
        row("inner table decides", &HTMLEditorComponent::DeleteRow, nested, QString(), QString());
        row("no table", &HTMLEditorComponent::DeleteRow, "<p>a1</p>", QString(), QString());
    }

    void guardedDeletions()
    {
        auto [method, table, to, message]
            = fetch<EditorMethod, QString, QString, QString>("method", "table", "to", "message");
        load(table);
        if (to.isEmpty())
            select(u"a1"_s);
        else
            QVERIFY(js(u"selectBetween"_s, {u"a1"_s, to}).toBool());
        const QString before = body();

        (m_editor.get()->*method)();

        if (!message.isEmpty()) {
            QCOMPARE(m_prompts->texts(RecordingPrompts::Kind::Information), QStringList{message});
            QCOMPARE(body(), before);
            QVERIFY(!m_editor->isDirty());
            return;
        }
        QVERIFY(m_prompts->shown.isEmpty());
        const bool changes = table.contains(QLatin1String("<table"));
        QCOMPARE(m_editor->isDirty(), changes);
        QCOMPARE(body() != before, changes);
    }

    void displayTogglesReturnAfterTwoClicks_data()
    {
        columns<int, QString, DisplaySwitch>("number", "key", "which");
        row("Border", 21, "Border", DisplaySwitch::Borders);
        row("Details", 22, "Details", DisplaySwitch::Details);
        row("SnapToGrid", 26, "SnapToGrid", DisplaySwitch::SnapToGrid);
    }

    void displayTogglesReturnAfterTwoClicks()
    {
        auto [number, key, which] = fetch<int, QString, DisplaySwitch>("number", "key", "which");
        load(u"<table><tr><td>cell</td></tr></table><!-- note --><a name=\"top\"></a>"_s);
        Executor &executor = localExecutor();
        const bool first = executor.displaySwitch(which);

        executor.executeKey(key);
        QCOMPARE(executor.displaySwitch(which), !first);
        QCOMPARE(m_pressed.value(key), !first);
        executor.executeCommand(Command(number));
        QCOMPARE(executor.displaySwitch(which), first);
        QCOMPARE(m_pressed.value(key), first);
        QCOMPARE(m_dirtyMarks, 2);
        QVERIFY(m_prompts->shown.isEmpty());
    }

    void absolutePositionNamesTheNextAction_data()
    {
        QTest::addColumn<QString>("document");
        // Empty: a caret in the first text, nothing selected whole.
        QTest::addColumn<QString>("selected");

        row("plain block", "<p>before</p><div>box</div>", "DIV");
        row("relative, offsets and layer",
            "<p>before</p><div style=\"position: relative; left: 4px; top: 2px; "
            "z-index: 5; color: red\">box</div>",
            "DIV");
        row("width and important layer",
            "<p>before</p><div style=\"width: 50%; z-index: 2 !important;\">box</div>", "DIV");
        row("image", "<p>before <img src=\"x.png\" style=\"left: 3px\"></p>", "IMG");
        row("caret in a cell", "<table><tr><td>cell</td></tr></table>", QString());
    }

    void absolutePositionNamesTheNextAction()
    {
        auto [document, selected] = fetch<QString, QString>("document", "selected");
        load(document);
        const QString before = body();
        Executor &executor = localExecutor();
        if (selected.isEmpty()) {
            caretAt(u"ll"_s);
            executor.executeCommand(Command::AbsolutePosition);
            QCOMPARE(m_dirtyMarks, 0);
            QVERIFY(m_toolTips.isEmpty());
            QCOMPARE(body(), before);
            return;
        }
        selectElement(selected);
        const Element element = m_surface->elementsByTagName(selected).value(0);

        executor.executeCommand(Command::AbsolutePosition);
        QCOMPARE(m_dirtyMarks, 1);
        QCOMPARE(m_toolTips.value(u"Absolute"_s), u"Set Position Attribute To Relitive"_s);
        QCOMPARE(m_surface->styleProperty(element, u"position"_s), u"absolute"_s);

        executor.executeCommand(Command::AbsolutePosition);
        QCOMPARE(m_toolTips.value(u"Absolute"_s), u"Set Position Attribute To Absolute"_s);
        QCOMPARE(m_dirtyMarks, 2);
        QCOMPARE(body(), before);
    }

    void colourPickerColoursTheSelection_data()
    {
        QTest::addColumn<QColor>("chosen"); // invalid: the picker is cancelled
        row("cancelled", QColor());
        row("chosen", QColor(0xff, 0x00, 0x80));
    }

    void colourPickerColoursTheSelection()
    {
        QFETCH(QColor, chosen);
        load(u"<p>paint me</p>"_s);
        select(u"paint"_s);
        const QString before = body();
        m_prompts->colors.enqueue(chosen.isValid() ? std::optional(chosen) : std::nullopt);
        m_editor->ForeColor();
        QCOMPARE(m_prompts->texts(RecordingPrompts::Kind::Color).size(), 1);
        QCOMPARE(m_editor->isDirty(), chosen.isValid());
        const QString html = body().toLower();
        if (!chosen.isValid())
            QCOMPARE(body(), before);
        else
            QVERIFY2(html.contains(QLatin1String("#ff0080"))
                    || html.contains(QLatin1String("255, 0, 128")),
                qPrintable(html));
    }

    void insertionsFromArguments_data()
    {
        // What the picker answers, if it is shown (empty: cancelled).
        columns<Insertion, QString>("insert", "picked");
        // A pattern the body matches afterwards (empty: unchanged), and the prompt shown.
        columns<QString, QString>("expected", "prompt");
        const QString refused = u"A table needs 1 to 1000 rows and 1 to 100 columns."_s;
        const QString pick = u"Pick Image"_s;
        const auto table = [](const char *width, const char *rows, const char *columns) {
            return [=](HTMLEditorComponent &editor) {
                QString w = QLatin1String(width), r = QLatin1String(rows),
                        c = QLatin1String(columns), none;
                editor.InsertTABLENoPrompt(
                    w, none, r, c, none, none, none, none, none, none, none, none, none);
            };
        };
        // The source comes back as the picker left it, and a picked picture keeps its size.
        const auto image = [](const char *src, const char *srcAfter) {
            return [=](HTMLEditorComponent &editor) {
                QString width = u"100"_s, s = QLatin1String(src), none;
                editor.InsertImageNoPrompt(width, none, none, none, none, none, none, s, none);
                QCOMPARE(s, QLatin1String(srcAfter));
                QCOMPARE(width.isEmpty(), s != QLatin1String(src));
            };
        };
        row("table, two by two", Insertion(table("300", "2", "2")), QString(),
            "<p>put it <table width=\"300\"><tbody>(<tr>(<td><div></div></td>){2}</tr>){2}"
            "</tbody></table></p>",
            QString());
        row("table, too many columns", Insertion(table("", "1", "101")), QString(), QString(),
            refused);
        // Past the ten arguments QMetaObject::invokeMethod takes, by name: appended to the body.
        row("table by name", Insertion([](HTMLEditorComponent &editor) {
            bool inserted = false;
            QVERIFY(QMetaObject::invokeMethod(&editor, "InsertTABLENoPrompt2",
                Q_RETURN_ARG(bool, inserted),
                Q_ARG(QVariantMap,
                    (QVariantMap{{u"Rows"_s, 1}, {u"Columns"_s, 1}, {u"Class"_s, u"grid"_s}}))));
            QVERIFY(inserted);
        }),
            QString(), "<p>put it here</p><table class=\"grid\">.*", QString());
        row("image", Insertion(image("pic.gif", "pic.gif")), QString(),
            "<p>put it <img width=\"100\" style=\"WIDTH:100;\" src=\"pic.gif\"></p>", QString());
        row("image, picker cancelled", Insertion(image("", "")), QString(), QString(), pick);
        row("image picked", Insertion(image("", "/tmp/picked.png")), "/tmp/picked.png",
            "<p>put it <img style=\"\" src=\"/tmp/picked.png\"></p>", pick);
    }

    void insertionsFromArguments()
    {
        auto [insert, picked, expected, prompt]
            = fetch<Insertion, QString, QString, QString>("insert", "picked", "expected", "prompt");
        load(u"<p>put it here</p>"_s);
        select(u"here"_s);
        const QString before = body();
        if (!picked.isEmpty())
            m_prompts->fileNames.enqueue(picked);

        insert(*m_editor);

        QCOMPARE(m_prompts->shown.size(), prompt.isEmpty() ? 0 : 1);
        if (!prompt.isEmpty())
            QCOMPARE(m_prompts->shown.first().text, prompt);
        QCOMPARE(m_editor->isDirty(), !expected.isEmpty());
        if (expected.isEmpty())
            QCOMPARE(body(), before);
        else
            QVERIFY2(QRegularExpression(QRegularExpression::anchoredPattern(expected))
                         .match(body())
                         .hasMatch(),
                qPrintable(body()));
    }

    void fontDialogShowsAndAppliesTheSelectionsFont()
    {
        using Vantry::FontChoice;
        load(u"<p><font face=\"Courier New\" size=\"5\" color=\"#008000\"><b>styled</b>"
             "</font> plain</p>"_s);
        m_surface->useElementFormatting();
        select(u"styled"_s);

        // Cancelled: nothing changes.
        m_prompts->fonts.enqueue(std::nullopt);
        const QString before = body();
        m_editor->Font();
        QCOMPARE(m_prompts->fontsShown.size(), 1);
        const FontChoice shown = m_prompts->fontsShown.first();
        QCOMPARE(shown, (FontChoice{u"Courier New"_s, 5, QColor(0, 0x80, 0), true}));
        QCOMPARE(body(), before);
        QVERIFY(!m_editor->isDirty());

        // Only what the user changed is applied: the face stays, bold goes, italic and
        // underline come, the size and colour change.
        FontChoice chosen = shown;
        chosen.htmlSize = 2;
        chosen.color = QColor(0xff, 0, 0);
        chosen.bold = false;
        chosen.italic = true;
        chosen.underline = true;
        m_prompts->fonts.enqueue(chosen);
        m_editor->Font();
        QVERIFY(m_editor->isDirty());
        const QString html = body().toLower();
        QVERIFY2(!html.contains(QLatin1String("<b>")), qPrintable(html));
        for (const char *part : {"<i>", "<u>", "size=\"2\"", "#ff0000", "courier new"})
            QVERIFY2(html.contains(QLatin1String(part)), qPrintable(html));

        // The dialog reads the result back as the user left it.
        select(u"styled"_s);
        m_prompts->fonts.enqueue(std::nullopt);
        m_editor->Font();
        QCOMPARE(m_prompts->fontsShown.last(), chosen);
        QVERIFY(m_prompts->unexpected.isEmpty());
    }

    void fontDialogEndsOnEscapeAndShowsNoStrikeOut()
    {
        Dialogs::FontDialog dialog(Dialogs::FontChoice{}, m_editor.get());
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QStringList boxes;
        for (const QCheckBox *box : dialog.fontChooser()->findChildren<QCheckBox *>()) {
            if (box->isVisible())
                boxes.append(box->text().remove(QLatin1Char('&')));
        }
        QCOMPARE(boxes, QStringList{u"Underline"_s});

        auto *families = dialog.fontChooser()->findChild<QListView *>();
        QVERIFY(families);
        families->setFocus();
        QTest::keyClick(families, Qt::Key_Escape);
        QVERIFY(!dialog.isVisible());
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
    }

    void pasteInsertsTheClipboard_data()
    {
        columns<QString, bool, QString>("html", "fromButton", "pasted");
        row("text by Paste()", QString(), false, "one pasted two");
        row("markup by the button", "<b>pasted</b>", true,
            "one(&nbsp;| )<b[^>]*>pasted</b>(&nbsp;| )two");
    }

    // Paste runs the engine's own paste, as Ctrl+V does, and is undone like any edit.
    void pasteInsertsTheClipboard()
    {
        auto [html, fromButton, pasted]
            = fetch<QString, bool, QString>("html", "fromButton", "pasted");
        load(u"<p>one XX two</p>"_s);
        select(u"XX"_s);
        auto *data = new QMimeData;
        data->setText(u"pasted"_s);
        if (!html.isEmpty())
            data->setHtml(html);
        QGuiApplication::clipboard()->setMimeData(data);

        if (fromButton)
            m_editor->findChild<QAction *>(u"Paste"_s)->trigger();
        else
            m_editor->Paste();

        QVERIFY2(body().contains(QRegularExpression(pasted)), qPrintable(body()));
        QVERIFY(m_editor->isDirty());
        m_editor->UnDo();
        QVERIFY2(body().contains(u"one XX two"_s), qPrintable(body()));
    }

    void keysReachTheirButtonOrTheEngine_data()
    {
        // The editor's button, or "host" for an action the host added with the same keys.
        columns<QKeyCombination, QString>("keys", "button");
        // Whether the button is on; off, the host may still allow it, and the key goes the
        // engine's own way: the body (without the '!' typed after it) and the clipboard then.
        columns<bool, bool, QString, QString>("on", "allowed", "expected", "clipboard");
        for (const auto &[name, key, button] :
            {std::tuple{"Ctrl+B", Qt::Key_B, "Bold"}, std::tuple{"Ctrl+I", Qt::Key_I, "Italic"},
                std::tuple{"Ctrl+U", Qt::Key_U, "Underline"},
                std::tuple{"Ctrl+K", Qt::Key_K, "Hyperlink"},
                std::tuple{"Ctrl+Z", Qt::Key_Z, "UnDo"}, std::tuple{"Ctrl+Y", Qt::Key_Y, "ReDo"},
                std::tuple{"Ctrl+F", Qt::Key_F, ""},
                std::tuple{"the host's Ctrl+S", Qt::Key_S, "host"}})
            row(name, Qt::CTRL | key, button, true, true, QString(), QString());
        const QString bold = u"<p>keep <b>every</b> word</p>"_s;
        const QString plain = u"<p>keep every word</p>"_s;
        const QString pasted = u"pasted"_s;
        row("Ctrl+C off", (Qt::CTRL | Qt::Key_C), "Copy", false, true, bold, "every");
        row("Ctrl+X off", (Qt::CTRL | Qt::Key_X), "Cut", false, true,
            "<p>keep( |&nbsp;){1,2}word</p>", "every");
        row("Ctrl+V off", (Qt::CTRL | Qt::Key_V), "Paste", false, true,
            "<p>keep( |&nbsp;)(<b>)?pasted(</b>)?( |&nbsp;)word</p>", pasted);
        row("Ctrl+Z off", (Qt::CTRL | Qt::Key_Z), "UnDo", false, true, plain, pasted);
        // Redone, the second bold takes the first away again.
        row("Ctrl+Y off", (Qt::CTRL | Qt::Key_Y), "ReDo", false, true, plain, pasted);
        row("Ctrl+Shift+Z off", (Qt::CTRL | Qt::SHIFT | Qt::Key_Z), "ReDo", false, true, plain,
            pasted);
        // The host's own switch is no lagging state: the key stays with the button.
        row("Ctrl+V switched off by the host", (Qt::CTRL | Qt::Key_V), "Paste", false, false, bold,
            pasted);
    }

    // The keys go the way the platform sends them: a shortcut override to the engine's focused
    // render widget first, which claims every key it has an editing binding for. A button off
    // by the document's state (a refresh that has not run yet leaves it so) must not make the
    // key vanish.
    void keysReachTheirButtonOrTheEngine()
    {
        auto [keys, button, on, allowed, expected, clipboard]
            = fetch<QKeyCombination, QString, bool, bool, QString, QString>(
                "keys", "button", "on", "allowed", "expected", "clipboard");
        QAction host;
        host.setShortcut(keys);
        if (button == QLatin1String("host"))
            m_editor->addAction(&host);
        QAction *action = button == QLatin1String("host") ? &host
            : button.isEmpty()                            ? nullptr
                                                          : m_editor->findChild<QAction *>(button);
        for (QAction *candidate : m_editor->findChildren<QAction *>()) {
            if (!action && candidate->shortcuts().contains(keys))
                action = candidate;
        }
        QVERIFY(action);
        load(u"<p>keep every word</p>"_s);
        select(u"every"_s);
        // Something to undo and to redo, so that every button is on.
        m_editor->Bold();
        m_editor->Bold();
        m_editor->UnDo();
        select(u"every"_s);
        QGuiApplication::clipboard()->setText(u"pasted"_s);
        m_editor->SetButtonState(button, allowed);
        QTRY_COMPARE(action->isEnabled(), allowed);
        if (!on)
            action->setEnabled(false);
        QWidget *input = VantryTest::giveFocus(m_surface->widget());
        QVERIFY(input);
        QSignalSpy triggered(action, &QAction::triggered);

        QTest::keyClick(input, keys.key(), keys.keyboardModifiers());
        // Dialogs opened by the keys (find) go away with the test.
        for (QDialog *dialog : m_editor->findChildren<QDialog *>())
            dialog->close();
        m_editor->SetButtonState(button, true);
        if (on) {
            QCOMPARE(triggered.count(), 1);
            QCOMPARE(m_surface->bodyInnerText(), u"keep every word"_s);
            return;
        }
        // Input is handled in order: once the next key is typed, the first has had its effect.
        QTest::keyClick(input, Qt::Key_End);
        QTest::keyClicks(input, u"!"_s);
        QTRY_VERIFY(m_surface->bodyInnerText().endsWith(QLatin1Char('!')));
        QVERIFY(triggered.isEmpty());
        QString html = body();
        html.remove(QLatin1Char('!'));
        QVERIFY2(QRegularExpression(QRegularExpression::anchoredPattern(expected))
                     .match(html)
                     .hasMatch(),
            qPrintable(html));
        QCOMPARE(QGuiApplication::clipboard()->text(), clipboard);
    }

    // The frame drawn around an element selected whole is the editor's, not the element's:
    // copied and pasted, the element comes without it.
    void copyingAnElementSelectedWholeLeavesItsFrame()
    {
        load(u"<p>one <img src=\"data:image/gif;base64,R0lGODlhAQABAIAAAP///"
             "wAAACH5BAEAAAAALAAAAAABAAEAAAICRAEAOw==\" width=\"20\"> two</p>"_s);
        QWidget *input = VantryTest::giveFocus(m_surface->widget());
        QVERIFY(input);
        selectElement(u"IMG"_s);
        QTest::keyClick(input, Qt::Key_C, Qt::ControlModifier);
        QTRY_VERIFY(
            QGuiApplication::clipboard()->mimeData()->html().contains(QLatin1String("<img")));
        QCOMPARE(m_surface->selectionType(), Platform::SelectionType::Control);
        select(u"two"_s);
        QTest::keyClick(input, Qt::Key_V, Qt::ControlModifier);
        QTRY_COMPARE(m_surface->images().size(), 2);
        QVERIFY2(!body().contains(QLatin1String("outline")), qPrintable(body()));
    }

    void tabMovesBetweenCells_data()
    {
        columns<QString, int, QString, int>("from", "key", "typed", "steps");
        const auto table = [](const char *b, const char *c, const char *extraRow = "") {
            return u"<table><tbody><tr><td>a</td><td>%1</td></tr><tr><td>%2</td>"
                   "<td>d</td></tr>%3</tbody></table>"_s.arg(
                       QLatin1String(b), QLatin1String(c), QLatin1String(extraRow));
        };
        row("Tab to the next cell", "a", int(Qt::Key_Tab), table("Xb", "c"), 1);
        row("Tab to the next row", "b", int(Qt::Key_Tab), table("b", "Xc"), 1);
        row("Shift+Tab back", "c", int(Qt::Key_Backtab), table("Xb", "c"), 1);
        row("Tab in the last cell adds a row", "d", int(Qt::Key_Tab),
            table("b", "c", "<tr><td>X</td><td></td></tr>"), 2);
    }

    void tabMovesBetweenCells()
    {
        auto [from, key, typed, steps]
            = fetch<QString, int, QString, int>("from", "key", "typed", "steps");
        const QString start = u"<table><tbody><tr><td>a</td><td>b</td></"
                              "tr><tr><td>c</td><td>d</td></tr></tbody></table>"_s;
        load(start);
        select(from);
        QWidget *input = VantryTest::giveFocus(m_surface->widget());
        QVERIFY(input);

        QTest::keyClick(
            input, Qt::Key(key), key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        QTest::keyClicks(input, u"X"_s);

        QTRY_COMPARE(body(), typed);
        // The typing and an added row are undone step by step.
        for (int i = 0; i < steps; ++i)
            m_editor->UnDo();
        QCOMPARE(body(), start);
    }

    // An editing-only style: never in the markup.
    void newEmptyCellsCanBeClickedInto()
    {
        load(u"<table border=\"1\"><tr><td>a</td></tr></table>"_s);
        select(u"a"_s);
        m_editor->InsertRow();
        m_editor->InsertColumn();
        const QList<Element> cells = m_surface->elementsByTagName(u"TD"_s);
        QCOMPARE(cells.size(), 4);
        for (const Element &cell : cells)
            QVERIFY2(m_surface->boundingRect(cell).height() >= 12,
                qPrintable(QString::number(m_surface->boundingRect(cell).height())));
        QVERIFY(!m_editor->GetHtmlSource().contains(u"height"_s, Qt::CaseInsensitive));
    }

    void findDialogOpensOnTheSelectedText()
    {
        load(u"<p>needle in a haystack, another needle</p>"_s);
        select(u"needle"_s);
        m_editor->Find();
        auto *dialog = m_editor->findChild<Dialogs::FindReplaceDialog *>();
        QVERIFY(dialog);
        QVERIFY(dialog->isVisible());
        QVERIFY(!dialog->isReplaceMode());
        dialog->findNext();
        QCOMPARE(dialog->statusText(), QString());
        QVERIFY(!m_editor->isDirty());
        // The second needle is the one found.
        m_editor->ReplaceSelectedHTML(u"<i>found</i>"_s);
        QCOMPARE(m_surface->bodyInnerText(), u"needle in a haystack, another found"_s);
        dialog->close();

        // Ctrl+F in the design view opens the same dialog again.
        QWidget *keys = VantryTest::giveFocus(m_surface->widget());
        QVERIFY(keys);
        QTest::keyClick(keys, Qt::Key_F, Qt::ControlModifier);
        QTRY_VERIFY(dialog->isVisible());
        dialog->close();
    }

    void uploadImageOpensTheUploadForm()
    {
        load(u"<p>text</p>"_s);
        const QString before = body();
        ImageUploadValues seen;
        auto dialogs = std::make_unique<AnsweringDialogs>();
        dialogs->upload = [&seen](ImageUploadValues &values) {
            seen = values;
            values.Cancel = true;
        };
        m_editor->setEditorDialogs(std::move(dialogs));
        m_editor->setProperty("FTP_OverWriteFiles", u"true"_s);
        m_editor->setProperty("FTP_AllowMultiableFiles", u"false"_s);
        m_editor->UploadImage();

        QVERIFY(seen.FTP_OverWriteFiles);
        QVERIFY(!seen.FTP_AllowMultiableFiles);
        QVERIFY(seen.FTP_IncermentExistingFileNames);
        QVERIFY(m_prompts->shown.isEmpty());
        QCOMPARE(body(), before);
        QVERIFY(!m_editor->isDirty());
    }

    // Command 13 through the link dialog's values: a portal page becomes an anchor with its
    // reference in dataFld; edited into a plain address the reference and pop-up go, and
    // without an address the anchor goes.
    void linkDialogWritesTheAnchorAndItsReference()
    {
        load(u"<p>go there now</p>"_s);
        select(u"there"_s);
        AnsweringDialogs answers;
        answers.link = [](LinkPropertiesValues &values) {
            QCOMPARE(values.Targets, (QStringList{u"main"_s, u"side"_s}));
            QCOMPARE(values.LinkOption, int(LinkPropertiesValues::LinkAddress));
            values.LinkOption = LinkPropertiesValues::LinkPortalPage;
            values.PortalPageID = u"7"_s;
            values.URL = u"/shop"_s;
            values.Target = u"main"_s;
            values.Popup = u"Our shop"_s;
            values.LinkColor = u"#C00000"_s;
            values.Decoration = u"none"_s;
        };
        Executor::Hooks hooks;
        hooks.linkSources = [](LinkPropertiesValues &values) {
            values.PortalPages = u"<P PortalPageID=\"7\"/>"_s;
            values.Targets = {u"main"_s, u"side"_s};
        };
        useDialogs(answers, std::move(hooks));

        m_executor->executeCommand(Command::Hyperlink);
        QList<Element> anchors = m_surface->elementsByTagName(u"A"_s);
        QCOMPARE(anchors.size(), 1);
        const QString made = m_surface->outerHTML(anchors.first());
        for (const char *part : {"href=\"/shop\"", "target=\"main\"", "title=\"Our shop\"",
                 "datafld=\"portal:7\"", "text-decoration: none"})
            QVERIFY2(made.contains(QLatin1String(part), Qt::CaseInsensitive), qPrintable(made));
        QCOMPARE(m_dirtyMarks, 1);

        select(u"there"_s);
        answers.link = [](LinkPropertiesValues &values) {
            QCOMPARE(values.LinkOption, int(LinkPropertiesValues::LinkPortalPage));
            QCOMPARE(values.PortalPageID, u"7"_s);
            QCOMPARE(values.Popup, u"Our shop"_s);
            QCOMPARE(values.LinkColor, u"#C00000"_s);
            QCOMPARE(values.URL, u"/shop"_s);
            values.LinkOption = LinkPropertiesValues::LinkAddress;
            values.URL = u"http://example.org/"_s;
            values.Popup.clear();
        };
        m_executor->executeCommand(Command::Hyperlink);
        anchors = m_surface->elementsByTagName(u"A"_s);
        QCOMPARE(anchors.size(), 1);
        const QString edited = m_surface->outerHTML(anchors.first());
        QVERIFY2(
            edited.contains(QLatin1String("href=\"http://example.org/\"")), qPrintable(edited));
        QVERIFY2(
            !edited.contains(QLatin1String("datafld"), Qt::CaseInsensitive), qPrintable(edited));
        QVERIFY2(!edited.contains(QLatin1String("title=")), qPrintable(edited));
        QCOMPARE(m_dirtyMarks, 2);

        // No address and no reference take the anchor away.
        select(u"there"_s);
        answers.link = [](LinkPropertiesValues &values) { values.URL.clear(); };
        m_executor->executeCommand(Command::Hyperlink);
        QVERIFY(m_surface->elementsByTagName(u"A"_s).isEmpty());
        QVERIFY(body().contains(QLatin1String("go there now")));
        QCOMPARE(m_dirtyMarks, 3);
    }

    // Command 50 reads the BODY in its order, writes the answer as one undo step (a newly
    // picked background placed first) and the title beside it; Cancel writes nothing.
    void pageDialogWritesTheBodyAsOneUndoStep()
    {
        load(u"<p>here</p>"_s);
        const Element body = m_surface->elementsByTagName(u"BODY"_s).first();
        QVERIFY(m_surface->setAttribute(body, u"bgColor"_s, u"#FFFFFF"_s));
        QVERIFY(m_surface->setAttribute(body, u"leftMargin"_s, u"5"_s));
        // Last, since undo puts a removed attribute back at the end.
        QVERIFY(m_surface->setAttribute(body, u"link"_s, u"#0000FF"_s));
        QVERIFY(m_surface->setTitle(u"Old"_s));
        select(u"here"_s);
        const QString before = m_surface->outerHTML(body);
        AnsweringDialogs answers;
        answers.page = [](PagePropertiesValues &values) {
            QCOMPARE(values.BackgroundColor, u"#FFFFFF"_s);
            QCOMPARE(values.LinkColor, u"#0000FF"_s);
            QCOMPARE(values.LeftMargin, u"5"_s);
            QCOMPARE(values.Title, u"Old"_s);
            QCOMPARE(values.ImageDirectory, u"/srv/img"_s);
            values.LinkColor.clear();
            values.TextColor = u"#111111"_s;
            values.TopMargin = u"9"_s;
            values.BackgroundImage = u"/tmp/bg.gif"_s;
            values.Title = u"New"_s;
        };
        Executor::Hooks hooks;
        hooks.imageDirectory = [] { return u"/srv/img"_s; };
        hooks.placeImage = [](const QString &path) -> QString {
            return u"images/"_s + path.section(QLatin1Char('/'), -1);
        };
        useDialogs(answers, std::move(hooks));

        m_executor->executeCommand(Command::PageProperties);
        const auto attribute = [this, &body](const char *name) {
            return m_surface->attribute(body, QLatin1String(name));
        };
        QCOMPARE(attribute("bgColor"), u"#FFFFFF"_s);
        QCOMPARE(attribute("text"), u"#111111"_s);
        QCOMPARE(attribute("topMargin"), u"9"_s);
        QCOMPARE(attribute("background"), u"images/bg.gif"_s);
        QVERIFY2(!m_surface->outerHTML(body).contains(QLatin1String(" link="), Qt::CaseInsensitive),
            qPrintable(m_surface->outerHTML(body)));
        QCOMPARE(m_surface->title(), u"New"_s);
        QCOMPARE(m_dirtyMarks, 1);
        m_executor->executeCommand(Command::UnDo);
        QCOMPARE(m_surface->outerHTML(body), before);

        answers.page = nullptr;
        select(u"here"_s);
        m_executor->executeCommand(Command::PageProperties);
        QCOMPARE(m_surface->outerHTML(body), before);
        QCOMPARE(m_dirtyMarks, 2);
    }

    void dialogsWriteOneUndoStep_data()
    {
        // Command 0: the dialog opens through the launcher, which says whether it wrote.
        columns<int, QString, QString, QString>("number", "dialog", "start", "expected");
        columns<QString>("info");
        row("insert table", 27, "", "<p>here</p>",
            "<table border=\"1\" cellpadding=\"2\" cellspacing=\"0\" "
            "width=\"50%\" align=\"center\"><tbody><tr><td bgcolor=\"#FF0000\">"
            "</td><td bgcolor=\"#FF0000\"></td></tr></tbody></table>",
            "");
        row("insert table refuses 0 rows", 27, "", "<p>here</p>", "",
            "A table needs 1 to 1000 rows and 1 to 100 columns.");
        row("table", 55, "",
            "<table style=\"width: 80%;\" bordercolordark=\"#000000\" width=\"80%\">"
            "<tbody><tr><td>here</td></tr></tbody></table>",
            "<table style=\"height: 40px;\" bordercolordark=\"#000000\" "
            "height=\"40\" bordercolorlight=\"#111111\"><tbody><tr><td>here</td>"
            "</tr></tbody></table>",
            "");
        row("cell", 56, "",
            "<table><tbody><tr><td bordercolorlight=\"#000000\" nowrap=\"\">here"
            "</td></tr></tbody></table>",
            "<table><tbody><tr><td bordercolorlight=\"#000000\" "
            "width=\"30%\" style=\"width: 30%;\" valign=\"top\">here</td></tr>"
            "</tbody></table>",
            "");
        row("element attributes", 0, "element", "<p id=\"a\" title=\"t\">here</p>",
            "<p id=\"b\" onclick=\"alert(1)\">here</p>", "");
        row("new Flash movie", 0, "flash", "<p>here</p>",
            "<param name=\"Movie\" value=\"m.swf\">    <param name=\"Src\" "
            "value=\"m.swf\">",
            "");
        row("Flash movie under the selection", 0, "flash",
            "<p><object classid=\"x\"><param name=\"movie\" value=\"old.swf\">"
            "<param name=\"Play\" value=\"1\"></object> here</p>",
            "<param name=\"movie\" value=\"new.swf\"><param name=\"Play\" value=\"0\">", "");
        row("style class", 0, "style",
            "<style>.warn { color: red; }</style><p class=\"x\">here</p>",
            "<p class=\"x warn\">here</p>", "");
    }

    // Each answer is checked against what the dialog was shown: the highlight box shows
    // borderColorDark, the shadow box borderColorLight, and the no-wrap flag the bare attribute.
    // Undo puts a removed attribute back last, so the documents hold those last already.
    void dialogsWriteOneUndoStep()
    {
        auto [number, dialog, start, expected, info]
            = fetch<int, QString, QString, QString, QString>(
                "number", "dialog", "start", "expected", "info");
        load(start);
        // A movie under the selection is selected whole, as a click selects it.
        if (start.contains(QLatin1String("<object")))
            selectElement(u"OBJECT"_s);
        else
            select(u"here"_s);
        AnsweringDialogs answers;
        const bool refuse = !info.isEmpty();
        answers.insert = [refuse](InsertTableValues &values) {
            values.Rows = refuse ? u"0"_s : u"1"_s;
            values.Columns = u"2"_s;
            values.Width = u"50%"_s;
            values.Alignment = u"center"_s;
            values.BGColorCell = u"#FF0000"_s;
        };
        answers.table = [](TablePropertiesValues &values) {
            QCOMPARE(values.BorderHighlight, u"#000000"_s);
            QCOMPARE(values.Width, u"80%"_s);
            values.Width = u"0"_s;
            values.Height = u"40"_s;
            values.BorderShadow = u"#111111"_s;
        };
        answers.cell = [](CellPropertiesValues &values) {
            QVERIFY(values.NoWrap);
            QCOMPARE(values.BorderShadow, u"#000000"_s);
            values.NoWrap = false;
            values.Width = u"30%"_s;
            values.VerticalAlignment = u"top"_s;
        };
        answers.element = [](ElementPropertiesValues &values) {
            QCOMPARE(values.TagName, u"P"_s);
            values.Attributes = {{u"id"_s, u"b"_s}, {u"onclick"_s, u"alert(1)"_s}};
        };
        answers.flash = [](FlashPropertiesValues &values) {
            values.Play = values.MovieURL.isEmpty() ? 1 : 0;
            values.MovieURL = values.MovieURL.isEmpty() ? u"m.swf"_s : u"new.swf"_s;
        };
        answers.style = [](SelectStyleValues &values) {
            QCOMPARE(values.StyleSheets.size(), 1);
            values.ClassName = u"warn"_s;
        };
        useDialogs(answers);
        // Whether the launcher wrote; a command says nothing.
        const auto run = [this, number, dialog]() -> std::optional<bool> {
            if (number != 0) {
                m_executor->executeCommand(Command(number));
                return std::nullopt;
            }
            DialogLauncher &launcher = m_executor->dialogs();
            return dialog == QLatin1String("element") ? launcher.elementProperties()
                : dialog == QLatin1String("flash")    ? launcher.flashProperties()
                                                      : launcher.selectStyle();
        };
        const QString before = body();

        QVERIFY(run().value_or(true));
        if (refuse) {
            QCOMPARE(m_prompts->texts(RecordingPrompts::Kind::Information), QStringList{info});
            QCOMPARE(body(), before);
            QCOMPARE(m_dirtyMarks, 0);
            return;
        }
        QVERIFY2(body().contains(expected), qPrintable(body()));
        if (number != 0)
            QCOMPARE(m_dirtyMarks, 1);
        m_executor->executeCommand(Command::UnDo);
        QCOMPARE(body(), before);

        // Cancel writes nothing.
        AnsweringDialogs cancelling;
        useDialogs(cancelling);
        select(u"here"_s);
        QVERIFY(!run().value_or(false));
        QCOMPARE(body(), before);
        if (number != 0)
            QCOMPARE(m_dirtyMarks, 2);
    }

    void styleSheetsOfTheDocument_data()
    {
        columns<QString, QStringList, QVariantList, QString>(
            "document", "sheets", "selectors", "links");

        const QString elsewhere = u"http://example.invalid/css/main.css"_s;
        const QString linked = u"<link rel=\"stylesheet\" href=\"%1\">"_s.arg(elsewhere);
        const QString embedded = u"<style>.warn { color: red; } p { margin: 0px; }</style>"_s;
        const QString link = u"<LINK href=\"%1\" rel=\"StyleSheet\">"_s.arg(elsewhere);
        row("none", "<p>x</p>", QStringList{QString()}, QVariantList{}, QString());
        row("embedded", embedded + u"<p>x</p>"_s, QStringList{QString()},
            QVariantList{u".warn"_s, u"p"_s}, QString());
        // Another origin's rules are not ours to read: the sheet is listed by its address.
        row("linked and embedded", linked + embedded + u"<p>x</p>"_s,
            QStringList{elsewhere, QString()}, QVariantList{u".warn"_s, u"p"_s}, link);
    }

    void styleSheetsOfTheDocument()
    {
        auto [document, sheets, selectors, links]
            = fetch<QString, QStringList, QVariantList, QString>(
                "document", "sheets", "selectors", "links");
        load(document);
        clsStyle &style = *m_editor->StyleSheet();
        QCOMPARE(style.GetAllStyleSheets(), sheets);
        QCOMPARE(style.GetAllStyleSheetRules(), selectors);
        QCOMPARE(style.LoadStylesSource(), links);

        const StyleSheetInfo found = style.GetStyleSheet(u"MAIN.css"_s);
        QCOMPARE(found.href, links.isEmpty() ? QString() : sheets.first());
        QVERIFY(found.isNull() || !found.rulesReadable);
        // Every address contains the empty name: the first sheet.
        const StyleSheetInfo first = style.GetStyleSheet(QString());
        const bool embeddedFirst = sheets.first().isEmpty() && !selectors.isEmpty();
        QCOMPARE(first.isNull(), selectors.isEmpty() && links.isEmpty());
        QCOMPARE(style.GetStyleSheetRule(first, u".warn"_s).value<StyleSheetRule>().cssText,
            embeddedFirst ? u"color: red;"_s : QString());
        QVERIFY(!style.GetStyleSheetRule(first, u"warn"_s).isValid());

        QVERIFY(!style.SetStyleSheet(u" "_s));
        QVERIFY(style.SetStyleSheet(u"extra.css"_s));
        QVERIFY(style.GetAllStyleSheets().contains(u"extra.css"_s));
        // The link is one undo step; taking it back keeps it from the next document.
        m_editor->UnDo();
        QCOMPARE(style.GetAllStyleSheets(), sheets);
    }

    void styleOfTheCurrentElement()
    {
        load(u"<p>some text</p>"_s);
        select(u"some"_s);
        m_editor->SetStyleOfCurrentElement(u"backgroundColor"_s, u"yellow"_s);
        m_editor->SetFilterOfCurrentElement(u"Alpha"_s, u"opacity=50"_s);
        QCOMPARE(body(),
            u"<p style=\"background-color: yellow; "
            "filter: progid:DXImageTransform.Microsoft.Alpha(opacity=50)\">some text</p>"_s);
        QCOMPARE(m_editor->GetStyleOfCurrentElement(u"Filter"_s),
            u"progid:DXImageTransform.Microsoft.Alpha(opacity=50)"_s);
        QCOMPARE(m_editor->GetStyleOfCurrentElement(u"background-color"_s), u"yellow"_s);
        QVERIFY(m_editor->isDirty());

        // A bare caret changes nothing.
        const QString before = body();
        caretAt(u"some"_s);
        m_editor->SetStyleOfCurrentElement(u"color"_s, u"red"_s);
        QCOMPARE(body(), before);
    }

    void contextMenuForWhatIsUnderTheSelection_data()
    {
        // The entries between the standard ones and the page and element properties, '|'
        // between them; "off": no menu at all.
        columns<QString, QString, QString>("document", "target", "entries");
        // Switched off by the host, and in the source view.
        columns<bool, bool>("disabled", "sourceView");
        const QString table = u"<table><tr><td>cell</td></tr></table>"_s;
        const QString cell
            = u"Insert Row|Insert Column|Delete Row|Delete Column|Table Cell Properties"_s;
        row("table cell", table, "cell", cell + u"|Table Properties"_s, false, false);
        row("image in a cell", "<table><tr><td><img src=\"a.gif\"></td></tr></table>", "IMG",
            "Make 2D|Image Properties", false, false);
        row("Flash movie",
            "<p><object classid=\"x\"><param name=\"Movie\" value=\"m.swf\"></object></p>",
            "OBJECT", "Make 2D|Flash Movie Properties", false, false);
        row("link", "<p><a href=\"x.htm\">linked</a></p>", "linked", "Link Properties", false,
            false);
        row("menus switched off", table, "cell", "off", true, false);
        row("source view", table, "cell", "off", false, true);
    }

    void contextMenuForWhatIsUnderTheSelection()
    {
        auto [document, target, entries, disabled, sourceView]
            = fetch<QString, QString, QString, bool, bool>(
                "document", "target", "entries", "disabled", "sourceView");
        load(document);
        if (target == target.toUpper())
            selectElement(target);
        else
            select(target);
        clsContextMenu &settings = *m_editor->ContextMenu();
        m_editor->setDisableContextMenus(disabled);
        if (sourceView)
            m_editor->ToggleDesignSourceView(u"source"_s);
        ContextMenus menus(*m_surface, *m_selection, menuHooks(settings));
        QStringList captions;
        for (const ContextMenuEntry &entry : menus.entriesForSelection()) {
            if (entry.kind != ContextMenuEntry::Kind::Separator)
                captions.append(entry.caption);
        }
        m_editor->setDisableContextMenus(false);

        const QStringList expected = entries == QLatin1String("off")
            ? QStringList()
            : u"Cut|Copy|Paste|Select All|Font...|%1|Page Properties|Element Properties"_s
                  .arg(entries)
                  .split(u'|', Qt::SkipEmptyParts);
        QCOMPARE(captions, expected);
    }

    void customEntryRaisesItsKeyOnly()
    {
        load(u"<p>text</p>"_s);
        select(u"text"_s);
        QList<Command> executed;
        QStringList clicked;
        int elementDialogs = 0;
        clsContextMenu settings;
        settings.AddCustomContextMenuItem(u"host.key"_s, u"Do It"_s);
        ContextMenus::Hooks hooks = menuHooks(settings);
        hooks.execute = [&executed](Command command) { executed.append(command); };
        hooks.elementProperties = [&elementDialogs] { ++elementDialogs; };
        hooks.customClicked = [&clicked](const QString &key) { clicked.append(key); };
        ContextMenus menus(*m_surface, *m_selection, std::move(hooks));
        const QList<ContextMenuEntry> entries = menus.entriesForSelection();
        QCOMPARE(entries.constLast().caption, u"Do It"_s);

        menus.choose(entries.constLast());
        QCOMPARE(clicked, QStringList{u"host.key"_s});
        QVERIFY(executed.isEmpty());

        menus.choose(entries.first());
        QCOMPARE(executed, QList<Command>{Command::Cut});
        for (const ContextMenuEntry &entry : entries) {
            if (entry.kind == ContextMenuEntry::Kind::ElementProperties)
                menus.choose(entry);
        }
        QCOMPARE(elementDialogs, 1);
        QCOMPARE(clicked.size(), 1);
    }

private:
    void load(const QString &body)
    {
        QVERIFY(m_surface->setBodyInnerHTML(body));
        m_editor->setisDirty(false);
    }

    // An executor on the editor's surface whose toolbar and dirty mark the test can see.
    Executor &localExecutor()
    {
        SelectionAccess::Hooks selectionHooks;
        selectionHooks.isReady = [] { return true; };
        selectionHooks.prompts = [this]() -> Platform::UserPrompts & { return *m_prompts; };
        m_selection = std::make_unique<SelectionAccess>(
            *m_surface, m_references, std::move(selectionHooks));
        Executor::Hooks hooks;
        hooks.designViewActive = [this] { return m_editor->DesignViewActive(); };
        hooks.markDirty = [this] { ++m_dirtyMarks; };
        hooks.prompts = [this]() -> Platform::UserPrompts & { return *m_prompts; };
        hooks.setButtonPressed = [this](const QString &key, bool on) { m_pressed.insert(key, on); };
        hooks.setButtonToolTip
            = [this](const QString &key, const QString &text) { m_toolTips.insert(key, text); };
        m_executor
            = std::make_unique<Executor>(*m_surface, *m_selection, m_references, std::move(hooks));
        return *m_executor;
    }

    // A local executor whose property dialogs the given answers fill in.
    void useDialogs(EditorDialogs &answers, Executor::Hooks hooks = {})
    {
        localExecutor();
        hooks.prompts = [this]() -> Platform::UserPrompts & { return *m_prompts; };
        hooks.dialogs = [&answers]() -> EditorDialogs & { return answers; };
        m_executor->setDialogLauncher(std::make_unique<EditorDialogLauncher>(
            *m_surface, *m_selection, m_references, std::move(hooks)));
    }

    // Menus on a local executor's selection that follow the editor's view and switch.
    ContextMenus::Hooks menuHooks(clsContextMenu &settings)
    {
        localExecutor();
        ContextMenus::Hooks hooks;
        hooks.designViewActive = [this] { return m_editor->DesignViewActive(); };
        hooks.disabled = [this] { return m_editor->DisableContextMenus(); };
        hooks.settings = [&settings]() -> clsContextMenu & { return settings; };
        return hooks;
    }

    RecordingPrompts *m_prompts = nullptr;
    DocumentReferences m_references;
    std::unique_ptr<SelectionAccess> m_selection;
    std::unique_ptr<Executor> m_executor;
    int m_dirtyMarks = 0;
    QHash<QString, bool> m_pressed;
    QHash<QString, QString> m_toolTips;
};

QTEST_MAIN(tst_Executor)
#include "tst_executor.moc"
