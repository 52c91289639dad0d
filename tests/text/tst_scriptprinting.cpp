// The library script put into the page and the page printed, on the real engine: where
// the script lands, which blocks get a copy, what leaves the page alone, and that a
// printed page holds the page's text.

#include "../common/datarows.h"
#include "../common/enginetest.h"
#include "../common/recordingprompts.h"

#include "text/scriptinjection.h"

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace Vantry;
using namespace Qt::StringLiterals;

namespace {
const QString plainPage = u"<html><head><title>t</title></head><body><p>Hello</p></body></html>"_s;
const QString swapImage = u"SwapImage"_s;

// Markup passing through the parser keeps line feeds only, so compare the lines there.
QString lines(QString text)
{
    return text.remove(QLatin1Char('\r'));
}
} // namespace

class tst_ScriptPrinting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_editor = std::make_unique<HTMLEditorComponent>();
        m_editor->resize(800, 600);
        m_editor->show();
        auto prompts = std::make_unique<VantryTest::RecordingPrompts>();
        m_prompts = prompts.get();
        m_editor->setUserPrompts(std::move(prompts));
        QVERIFY(VantryTest::waitUntilReady(*m_editor));
        m_surface = VantryTest::surfaceOf(*m_editor);
        QVERIFY(m_surface);
    }

    void addsOneScriptAsLastChildOfHtml()
    {
        load(plainPage);
        m_editor->AddJavaScript(swapImage);
        // Adding it twice changes nothing.
        const QString once = m_surface->documentHTML();
        m_editor->AddJavaScript(swapImage);
        QCOMPARE(m_surface->documentHTML(), once);

        const auto scripts = m_surface->scripts();
        QCOMPARE(scripts.size(), 1);
        QCOMPARE(m_surface->attribute(scripts.first(), u"language"_s), u"JavaScript"_s);
        QCOMPARE(m_surface->innerHTML(scripts.first()), Text::libraryScript(swapImage));
        const auto parent = m_surface->parentElement(scripts.first());
        QCOMPARE(m_surface->tagName(parent).toUpper(), u"HTML"_s);

        // Kept in the saved page: after the body, as the last thing in the HTML element.
        m_editor->setReturnFullDocument(true);
        m_editor->setPreserveWhiteSpace(true);
        const QString saved = lines(m_editor->GetHtmlSource());
        const qsizetype bodyEnd = saved.indexOf(QLatin1String("</body>"), 0, Qt::CaseInsensitive);
        const qsizetype script = saved.indexOf(QLatin1String("<script"), 0, Qt::CaseInsensitive);
        const qsizetype htmlEnd = saved.indexOf(QLatin1String("</html>"), 0, Qt::CaseInsensitive);
        QVERIFY2(bodyEnd >= 0 && script > bodyEnd && htmlEnd > script, qPrintable(saved));
        QVERIFY2(saved.contains(lines(Text::libraryScript(swapImage))), qPrintable(saved));
        QVERIFY(saved.mid(script, htmlEnd - script).trimmed().endsWith(QLatin1String("</script>")));
    }

    void everyScriptBlockGetsACopy()
    {
        load(QStringLiteral("<html><head><script>var a = 1;</script>"
                            "<script>function SwapImage(o,s){}</script></head>"
                            "<body><p>x</p><script>var b = 2;</script></body></html>"));
        m_editor->AddJavaScript(swapImage);

        const auto scripts = m_surface->scripts();
        QCOMPARE(scripts.size(), 3);
        const QString copy = lines(Text::libraryScript(swapImage));
        QCOMPARE(lines(m_surface->innerHTML(scripts.at(0))), u"var a = 1;\n"_s + copy);
        // Already holds the name: left alone.
        QCOMPARE(m_surface->innerHTML(scripts.at(1)), u"function SwapImage(o,s){}"_s);
        QCOMPARE(lines(m_surface->innerHTML(scripts.at(2))), u"var b = 2;\n"_s + copy);
        for (const auto &script : scripts)
            QVERIFY(m_surface->attribute(script, u"language"_s).isEmpty());
    }

    void otherNamesChangeNothing_data()
    {
        columns<QVariant, bool>("name", "withScript");
        row("other case", QVariant(u"SWAPIMAGE"_s), true);
        row("other name", QVariant(u"Rollover"_s), true);
        row("empty", QVariant(QString()), false);
        row("number", QVariant(1), true);
    }

    void otherNamesChangeNothing()
    {
        auto [name, withScript] = fetch<QVariant, bool>("name", "withScript");
        load(withScript ? QStringLiteral("<html><head><script>var a;</script></head>"
                                         "<body><p>x</p></body></html>")
                        : plainPage);
        const QString before = m_surface->documentHTML();
        m_editor->AddJavaScript(name);
        QCOMPARE(m_surface->documentHTML(), before);
    }

    void printHtmlPrintsWhatTheDialogSetUp_data()
    {
        QTest::addColumn<bool>("cancelled");
        row("printed", false);
        row("cancelled", true);
    }

    void printHtmlPrintsWhatTheDialogSetUp()
    {
        const bool cancelled = std::get<0>(fetch<bool>("cancelled"));
        load(u"<html><body><p>Printed through the dialog</p></body></html>"_s);
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString file = dir.filePath(u"dialog.pdf"_s);
        m_prompts->shown.clear();
        if (!cancelled)
            m_prompts->printFiles.enqueue(file);
        m_editor->PrintHTML();
        QCOMPARE(m_prompts->shown.size(), 1);
        QCOMPARE(m_prompts->shown.first().kind, VantryTest::RecordingPrompts::Kind::Print);
        QCOMPARE(m_prompts->unexpected, cancelled ? QStringList{u"print"_s} : QStringList());
        m_prompts->unexpected.clear();
        QVERIFY(m_prompts->printFiles.isEmpty());
        // The engine prints to a printer as page images, so only the file itself is checked;
        // the page's text in PDF output is covered below.
        QFile pdf(file);
        QCOMPARE(pdf.open(QIODevice::ReadOnly), !cancelled);
        if (!cancelled) {
            QVERIFY(pdf.read(5) == "%PDF-");
            QVERIFY(pdf.size() > 1000);
        }
    }

    // A printed page holds the page's text. The borders, detail marks and selection frame are
    // editing aids: a printed page looks as if none were on.
    void printedPageShowsNoEditingAids()
    {
        load(u"<html><body><table><tr><td>Quarterly</td><td>report</td></tr></table>"
             "<!-- note --><p>Zebra<br>crossing</p><a name=\"here\"></a></body></html>"_s);
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QImage plain = printedPage(dir.filePath(u"plain"_s));
        QVERIFY2(!plain.isNull(), "printing or pdftoppm (poppler-utils) failed");
        const QString text = pdfText(dir.filePath(u"plain.pdf"_s));
        QVERIFY2(text.contains(QLatin1String("Quarterly")) && text.contains(QLatin1String("Zebra")),
            qPrintable(text));

        m_editor->Border();
        m_editor->Details();
        QVERIFY(m_surface->displaySwitch(u"borders"_s));
        QVERIFY(m_surface->displaySwitch(u"details"_s));
        QVERIFY(m_surface->selectElement(m_surface->elementsByTagName(u"TABLE"_s).first()));
        const QImage aided = printedPage(dir.filePath(u"aided"_s));
        m_editor->Border();
        m_editor->Details();

        QVERIFY(!aided.isNull());
        QVERIFY(aided == plain);
    }

private:
    void load(const QString &html) { QVERIFY(m_surface->setDocumentHTML(html)); }

    // The text pdftotext reads from file.
    QString pdfText(const QString &file)
    {
        const QString tool = QStandardPaths::findExecutable(u"pdftotext"_s);
        if (tool.isEmpty())
            return u"<pdftotext (poppler-utils) is not installed>"_s;
        QProcess process;
        process.start(tool, {file, u"-"_s});
        if (!process.waitForFinished(30000) || process.exitCode() != 0)
            return u"<pdftotext failed>"_s;
        return QString::fromUtf8(process.readAllStandardOutput());
    }

    // The first page of the surface printed to a PDF, rendered by pdftoppm.
    QImage printedPage(const QString &base)
    {
        const QString tool = QStandardPaths::findExecutable(u"pdftoppm"_s);
        if (tool.isEmpty() || !m_surface->printToPdf(base + u".pdf"_s))
            return {};
        QProcess process;
        process.start(
            tool, {u"-r"_s, u"60"_s, u"-png"_s, u"-singlefile"_s, base + u".pdf"_s, base});
        if (!process.waitForFinished(30000) || process.exitCode() != 0)
            return {};
        return QImage(base + u".png"_s);
    }

    std::unique_ptr<HTMLEditorComponent> m_editor;
    Platform::WebEngineDesignSurface *m_surface = nullptr;
    VantryTest::RecordingPrompts *m_prompts = nullptr;
};

QTEST_MAIN(tst_ScriptPrinting)
#include "tst_scriptprinting.moc"
