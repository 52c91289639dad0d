#include "spelling.h"

#include "benchsupport.h"
#include "documents.h"
#include "report.h"
#include "subjects.h"

#include "platform/hunspell/dictionaries.h"
#include "platform/webengine/webenginedesignsurface.h"
#include "text/spelling.h"
#include "text/spellingcheck.h"

#include <VantryHTMLEditor/HTMLEditorComponent.h>

#include <QFile>
#include <QTemporaryDir>

#include <hunspell/hunspell.hxx>

namespace VantryBench {

namespace {

const QString documentFile = QStringLiteral("article-1mb.html");
const QString dictionary = QStringLiteral("en_US");

} // namespace

void spellingWorkload(Report &report, const BenchDocuments &docs, EditorSubject &ours, int reps)
{
    const QString label = QStringLiteral("spell check every word of 1 MB");
    const QString text = docs.read(documentFile);
    if (text.isEmpty()) {
        report.skip(label, QStringLiteral("cannot read %1 in %2").arg(documentFile, docs.folder()));
        return;
    }
    QTemporaryDir home;
    Vantry::Platform::Dictionaries dictionaries(
        Vantry::Platform::Dictionaries::defaultFolders(), home.filePath(QStringLiteral("words")));
    const QString dic = dictionaries.dictionaryFile(dictionary);
    if (dic.isEmpty()) {
        report.skip(label, QStringLiteral("no %1 dictionary installed").arg(dictionary));
        return;
    }
    auto *surface = ours.editor()->findChild<Vantry::Platform::WebEngineDesignSurface *>();
    if (!surface || !ours.load(text) || !ours.waitForFrame()) {
        report.skip(label, QStringLiteral("the editor did not load %1").arg(documentFile));
        return;
    }
    say(QStringLiteral("spell check every word of %1 (%2 runs each)").arg(documentFile).arg(reps));

    // The baseline's words, split once and encoded as the dictionary wants them.
    std::vector<std::string> words;
    const QString plain = surface->bodyInnerText();
    for (const Vantry::Text::WordSpan &word : Vantry::Text::checkableWords(plain))
        words.push_back(plain.mid(word.start, word.length).toStdString());
    Hunspell hunspell(QFile::encodeName(dic.chopped(4) + QStringLiteral(".aff")).constData(),
        QFile::encodeName(dic).constData());

    const QList<Vantry::Platform::Element> paragraphs
        = surface->elementsByTagName(QStringLiteral("p"));
    if (paragraphs.isEmpty()) {
        report.skip(label, QStringLiteral("%1 has no paragraph").arg(documentFile));
        return;
    }
    Vantry::Text::SpellingCheck check(*surface, dictionaries);
    check.misspeltWords(); // loads the dictionary
    Samples samples[3];
    qsizetype misspelt[3] = {0, 0, 0};
    for (int round = 0; round < reps; ++round) {
        auto start = std::chrono::steady_clock::now();
        misspelt[0] = check.misspeltWords().size();
        samples[0].add(elapsedMs(start));

        start = std::chrono::steady_clock::now();
        qsizetype wrong = 0;
        for (const std::string &word : words)
            wrong += hunspell.spell(word) ? 0 : 1;
        samples[1].add(elapsedMs(start));
        misspelt[1] = wrong;

        // Any change of the page makes the next check walk its text again.
        surface->setAttribute(
            paragraphs.first(), QStringLiteral("data-bench"), QString::number(round));
        ours.waitForFrame(); // the engine's own work on the change is not the check's
        start = std::chrono::steady_clock::now();
        misspelt[2] = check.misspeltWords().size();
        samples[2].add(elapsedMs(start));
    }

    ResultRow row{
        label, samples[0].median(), samples[1].median(), ResultRow::Target::Ratio, 1.5, false, {}};
    row.spread(samples[0], samples[1]);
    row.note = QStringLiteral("%1 words; misspelt: ours %2, baseline %3 (the baseline splits "
                              "the text once, outside the timing)")
                   .arg(words.size())
                   .arg(misspelt[0])
                   .arg(misspelt[1]);
    report.add(row);

    ResultRow changed{QStringLiteral("spell check after a change, 1 MB"), samples[2].median(),
        samples[1].median(), ResultRow::Target::None, 0, misspelt[2] != misspelt[1], {}};
    changed.spread(samples[2], samples[1]);
    changed.note = QStringLiteral("the same check after an attribute changed, which reads the "
                                  "page's text again; misspelt: %1")
                       .arg(misspelt[2]);
    report.add(changed);
}

} // namespace VantryBench
