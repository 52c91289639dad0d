// Selection access and HTML insertion through the editor's public methods, on the real
// engine, with the prompts answered by a recording double.

#include "../common/datarows.h"
#include "../common/recordingprompts.h"
#include "../common/surfacefixture.h"

#include "commands/selectionaccess.h"

using namespace Vantry;
using namespace Qt::StringLiterals;
using Platform::Element;
using VantryTest::RecordingPrompts;

class tst_SelectionAccess : public VantryTest::SurfaceFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_editor = std::make_unique<HTMLEditorComponent>();
        // Before the first document has loaded there is nothing to find.
        m_nothingBeforeReady = m_editor->GetSelectedElementObject().isNull()
            && m_editor->GetSelectedHTML().toString().isEmpty();
        m_editor->resize(800, 600);
        m_editor->show();
        QVERIFY(VantryTest::waitUntilReady(*m_editor));
        m_surface = VantryTest::surfaceOf(*m_editor);
        QVERIFY(m_surface);
        QVERIFY(m_nothingBeforeReady);
    }

    void init()
    {
        auto prompts = std::make_unique<RecordingPrompts>();
        m_prompts = prompts.get();
        m_editor->setUserPrompts(std::move(prompts));
    }

    void checkBoolean_data()
    {
        columns<QVariant, bool>("value", "result");
        row("tRuE", QVariant(u"tRuE"_s), true);
        row("text 1", QVariant(u"1"_s), true);
        row("number 1", QVariant(1), true);
        row("number 1.0", QVariant(1.0), true);
        row("Boolean true", QVariant(true), true);
        row("yes", QVariant(u"yes"_s), false);
        row("Boolean false", QVariant(false), false);
        row("minus one", QVariant(-1), false);
        row("text 1.0", QVariant(u"1.0"_s), false);
        row("nothing", QVariant(), false);
    }

    void checkBoolean()
    {
        auto [value, result] = fetch<QVariant, bool>("value", "result");
        const QVariant answer = m_editor->CheckBoolean(value);
        QCOMPARE(answer.typeId(), QMetaType::Bool);
        QCOMPARE(answer.toBool(), result);
    }

    void selectedElementObject_data()
    {
        columns<QString, QString, QString>("needle", "control", "tag");
        row("caret in bold", "bo", QString(), "B");
        row("text in paragraph", "plain", QString(), "P");
        row("selected image", QString(), "IMG", "IMG");
        row("selected table", QString(), "TABLE", "TABLE");
    }

    void selectedElementObject()
    {
        auto [needle, control, tag] = fetch<QString, QString, QString>("needle", "control", "tag");
        load(QStringLiteral("<p>plain <b>bold</b> <img src=\"x.png\"></p>"
                            "<table><tbody><tr><td>cell</td></tr></tbody></table>"));
        if (!control.isEmpty())
            selectElement(control);
        else if (tag == QLatin1String("B"))
            caretAt(needle, true);
        else
            select(needle);
        HTMLElement element;
        QVERIFY(QMetaObject::invokeMethod(m_editor.get(), "GetSelectedElementObject",
            Q_RETURN_ARG(Vantry::HTMLElement, element)));
        QVERIFY(!element.isNull());
        QCOMPARE(element.tagName(), tag);
    }

    void elementObjectReadsAndWrites()
    {
        load(u"<div id=\"outer\"><p class=\"c\">some <i>text</i></p></div>"_s);
        select(u"some"_s);
        HTMLElement paragraph = m_editor->GetSelectedElementObject();
        QCOMPARE(paragraph.getAttribute(u"class"_s), u"c"_s);
        QCOMPARE(paragraph.innerHTML(), u"some <i>text</i>"_s);
        QCOMPARE(paragraph.parentElement().getAttribute(u"id"_s), u"outer"_s);
        paragraph.setAttribute(u"title"_s, u"t"_s);
        paragraph.removeAttribute(u"class"_s);
        paragraph.setInnerHTML(u"new"_s);
        QCOMPARE(paragraph.outerHTML(), u"<p title=\"t\">new</p>"_s);

        // The element's document is gone: empty reads, ignored writes.
        load(u"<p>other</p>"_s);
        QCOMPARE(paragraph.tagName(), QString());
        paragraph.setInnerHTML(u"lost"_s);
        QCOMPARE(m_surface->bodyInnerHTML(), u"<p>other</p>"_s);
    }

    void findSelectedElementByTag_data()
    {
        columns<QString, QString, QString>("needle", "wanted", "found");
        row("caret in a cell finds its table", "cell", "table", "TABLE");
        row("the element itself", "cell", "Td", "TD");
        row("outside any table", "outside", "TABLE", QString());
        row("the walk ends at the root", "cell", "HTML", "HTML");
    }

    void findSelectedElementByTag()
    {
        auto [needle, wanted, found]
            = fetch<QString, QString, QString>("needle", "wanted", "found");
        load(QStringLiteral("<p>outside</p><table id=\"t\"><tbody><tr><td><b>cell</b></td></tr>"
                            "</tbody></table>"));
        caretAt(needle, true);

        Commands::DocumentReferences references;
        Commands::SelectionAccess::Hooks hooks;
        hooks.isReady = [] { return true; };
        hooks.prompts = [this]() -> Platform::UserPrompts & { return *m_prompts; };
        Commands::SelectionAccess access(*m_surface, references, std::move(hooks));

        QCOMPARE(access.findSelectedElementByTag(wanted), !found.isNull());
        QVERIFY(std::holds_alternative<Element>(references.current));
        if (!found.isNull())
            QCOMPARE(m_surface->tagName(references.found), found);
        else
            QVERIFY(references.found.isNull());
    }

    void removeSelectedElementObjectRemovesOnlyImages()
    {
        const QString table = u"<table><tbody><tr><td>c</td></tr></tbody></table>"_s;
        load(u"<p>a<img src=\"x.png\">b</p>"_s + table);
        selectElement(u"IMG"_s);
        m_editor->RemoveSelectedElementObject(u"TABLE"_s);
        QCOMPARE(m_surface->bodyInnerHTML(), u"<p>ab</p>"_s + table);

        selectElement(u"TABLE"_s);
        m_editor->RemoveSelectedElementObject(u"TABLE"_s);
        QCOMPARE(m_surface->bodyInnerHTML(), u"<p>ab</p>"_s + table);
    }

    void selectedHTML_data()
    {
        columns<QString, bool, QString>("needle", "image", "html");
        row("collapsed caret", "plain", false, QString());
        row("text", "ain bo", false, "ain <b>bo</b>");
        row("image", QString(), true, "<img src=\"x.png\" alt=\"x\">");
    }

    void selectedHTML()
    {
        auto [needle, image, html] = fetch<QString, bool, QString>("needle", "image", "html");
        load(u"<p>plain <b>bold</b><img src=\"x.png\" alt=\"x\"></p>"_s);
        if (image)
            selectElement(u"IMG"_s);
        else if (html.isEmpty())
            caretAt(needle);
        else
            select(needle);
        QCOMPARE(m_editor->GetSelectedHTML().toString(), html);
    }

    void replaceSelectedHTML_data()
    {
        columns<QString, bool, QString, QString>("needle", "image", "replacement", "body");
        row("control", QString(), true, "<hr>", "<p>one two<hr></p><p>three</p>");
        row("text with markup", "two", false, "<i>2</i>",
            "<p>one <i>2</i><img src=\"x.png\"></p>"
            "<p>three</p>");
        row("text with plain text", "one", false, "1",
            "<p>1 two<img src=\"x.png\"></p>"
            "<p>three</p>");
        row("caret", "one ", false, "<b>0</b>",
            "<p>one <b>0</b>two<img src=\"x.png\"></p>"
            "<p>three</p>");
    }

    void replaceSelectedHTML()
    {
        auto [needle, image, replacement, body]
            = fetch<QString, bool, QString, QString>("needle", "image", "replacement", "body");
        load(u"<p>one two<img src=\"x.png\"></p><p>three</p>"_s);
        if (image)
            selectElement(u"IMG"_s);
        else if (QByteArray(QTest::currentDataTag()) == "caret")
            caretAt(needle, true);
        else
            select(needle);
        m_editor->ReplaceSelectedHTML(replacement);
        QCOMPARE(m_surface->bodyInnerHTML(), body);
    }

    void replacingAcrossCellsKeepsTheTable_data()
    {
        columns<QByteArray, QString, QString, QString>("method", "from", "to", "body");

        // a1 b1 c1
        // a2 b2 c2
        const auto table = [](const char *row1, const char *row2) -> QString {
            return u"<table><tbody><tr>%1</tr><tr>%2</tr></tbody></table>"_s.arg(
                QLatin1String(row1), QLatin1String(row2));
        };
        const auto page = [&table](const char *row1, const char *row2) -> QString {
            return u"<p>before</p>"_s + table(row1, row2) + u"<p>after</p>"_s;
        };
        const char *row2 = "<td>a2</td><td>b2</td><td>c2</td>";
        row("replace across a row", QByteArray("ReplaceSelectedHTML"), "a1", "c1",
            page("<td><i>x</i></td><td></td><td></td>", row2));
        row("replace across rows", QByteArray("ReplaceSelectedHTML"), "b1", "b2",
            page("<td>a1</td><td><i>x</i></td><td></td>", "<td></td><td></td><td>c2</td>"));
        row("text box across rows", QByteArray("InsertTextBox"), "c1", "a2",
            page("<td>a1</td><td>b1</td><td><input type=\"text\" size=\"24\" value=\"\"></td>",
                "<td></td><td>b2</td><td>c2</td>"));
        row("from the text before into the table", QByteArray("ReplaceSelectedHTML"), "ore", "b2",
            u"<p>bef<i>x</i></p>"_s
                + table("<td></td><td></td><td></td>", "<td></td><td></td><td>c2</td>")
                + u"<p>after</p>"_s);
    }

    // Pasting over a selection that runs through cells clears what they hold and keeps every
    // cell, as the engine's own Cut does.
    void replacingAcrossCellsKeepsTheTable()
    {
        auto [method, from, to, body]
            = fetch<QByteArray, QString, QString, QString>("method", "from", "to", "body");
        load(QStringLiteral("<p>before</p><table><tbody><tr><td>a1</td><td>b1</td><td>c1</td></tr>"
                            "<tr><td>a2</td><td>b2</td><td>c2</td></tr></tbody></table>"
                            "<p>after</p>"));
        QVERIFY(VantryTest::adapterValue(*m_editor, u"selectBetween"_s, {from, to}).toBool());
        const QString x = u"<i>x</i>"_s;
        if (method == "ReplaceSelectedHTML")
            m_editor->ReplaceSelectedHTML(x);
        else
            QVERIFY(QMetaObject::invokeMethod(m_editor.get(), method.constData()));
        QCOMPARE(m_surface->bodyInnerHTML(), body);
    }

    void insertMethodsPasteTheirMarkup_data()
    {
        columns<QByteArray, QString>("method", "markup");
        row("button", QByteArray("InsertButton"), "<button title=\"Button\">Button!</button>");
        row("submit", QByteArray("InsertSubmitButton"), "<input type=\"submit\" value=\"Submit\">");
        row("reset", QByteArray("InsertResetButton"), "<input type=\"reset\" value=\"reset\">");
        row("check box", QByteArray("InsertCheckBox"),
            "<input type=\"checkbox\" checked=\"\" value=\"ON\">");
        row("radio", QByteArray("InsertRadio"), "<input type=\"radio\" checked=\"\" value=\"V1\">");
        row("drop-down", QByteArray("InsertDropDown"),
            "<select size=\"1\"><option></option></select>");
        row("list box", QByteArray("InsertListBox"),
            "<select size=\"4\"><option></option></select>");
        row("text box", QByteArray("InsertTextBox"),
            "<input type=\"text\" size=\"24\" value=\"\">");
        row("text area", QByteArray("InsertTextArea"),
            "<textarea rows=\"3\" cols=\"30\"></textarea>");
        row("form", QByteArray("InsertForm"), "<form action=\"\" method=\"POST\"></form>");
    }

    void insertMethodsPasteTheirMarkup()
    {
        auto [method, markup] = fetch<QByteArray, QString>("method", "markup");
        load(u"<p>before after</p>"_s);
        caretAt(u"before "_s, true);
        QVERIFY(QMetaObject::invokeMethod(m_editor.get(), method.constData()));
        QCOMPARE(m_surface->bodyInnerHTML(), u"<p>before "_s + markup + u"after</p>"_s);
        QVERIFY(m_prompts->shown.isEmpty());

        // InsertHTML pastes the caller's markup in place of selected text.
        select(u"after"_s);
        m_editor->InsertHTML(u"<em>x</em>"_s);
        QCOMPARE(m_surface->bodyInnerHTML(), u"<p>before "_s + markup + u"<em>x</em></p>"_s);
    }

    void insertingOnASelectedControlIsRefused()
    {
        const QString body = u"<p>a<img src=\"x.png\">b</p>"_s;
        load(body);
        selectElement(u"IMG"_s);
        m_editor->InsertTextBox();
        m_editor->InsertHTML(u"<b>x</b>"_s);
        QCOMPARE(m_prompts->texts(RecordingPrompts::Kind::Information),
            QStringList(2,
                QStringLiteral("You cannot insert a control element on a selected "
                               "control element")));
        QCOMPARE(m_surface->bodyInnerHTML(), body);
    }

    void insertingWithoutSelectionGoesBeforeTheFirstText()
    {
        // A new body drops the selection.
        load(u"<div style=\"color: red\">\n <p>first</p></div>"_s);
        QCOMPARE(m_surface->selectionType(), Platform::SelectionType::None);
        m_editor->InsertHTML(u"<b>x</b>"_s);
        QCOMPARE(m_surface->bodyInnerHTML(),
            u"<div style=\"color: red\">\n <p><b>x</b>first</p></div>"_s);
    }

    void findAndReplaceHTMLIgnoresCase()
    {
        load(u"<p><b>one</b> and <B>two</B></p>"_s);
        m_editor->FindAndReplaceHTML(u"<B>"_s, u"<B class=\"x\">"_s);
        QCOMPARE(m_surface->bodyInnerHTML(),
            u"<p><b class=\"x\">one</b> and <b class=\"x\">two</b></p>"_s);
    }

private:
    RecordingPrompts *m_prompts = nullptr;
    bool m_nothingBeforeReady = false;
};

QTEST_MAIN(tst_SelectionAccess)
#include "tst_selectionaccess.moc"
