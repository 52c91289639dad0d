// Measures the editor against the bare engine it is built on: the same operations done
// directly on a QWebEngineView with plain JavaScript, in the same process and run.

#include "benchsupport.h"
#include "commandsbench.h"
#include "dialogsbench.h"
#include "documents.h"
#include "memory.h"
#include "replaceall.h"
#include "report.h"
#include "spelling.h"
#include "subjects.h"
#include "typing.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLoggingCategory>

#include <array>
#include <memory>

using namespace VantryBench;
using namespace std::chrono_literals;

namespace {

struct Options
{
    double repeatScale = 1.0;
    int keys = 40;
    double peerRssMB = 440;
    bool study = false;
    QStringList studyPages;
    QString studyRules;
    QString docs;
    QStringList only;

    int reps(int count) const { return qMax(3, qRound(count * repeatScale)); }
    bool wants(const QString &workload) const
    {
        return only.isEmpty() || only.contains(workload, Qt::CaseInsensitive);
    }
};

// Alternates which side goes first, so that neither always meets the engine as the other
// left it.
std::array<Subject *, 2> inTurn(int round, Subject &ours, Subject &baseline)
{
    if (round % 2)
        return {&baseline, &ours};
    return {&ours, &baseline};
}

// ---- start-up --------------------------------------------------------------------------

template <typename Side> double timeStartUp(QString *error)
{
    const auto start = std::chrono::steady_clock::now();
    auto side = std::make_unique<Side>();
    const bool ready = spinUntil([&side] { return side->isReady(); }, 60s);
    const double ms = elapsedMs(start);
    if (!ready && error)
        *error = side->name() + QStringLiteral(" never became ready");
    side.reset();
    // The engine tears pages down asynchronously; let it finish before the next start.
    idle(300ms);
    return ms;
}

void startUp(Report &report, const Options &options)
{
    say(QStringLiteral("start-up: warming the engine up (first profile and process)"));
    QString error;
    const double first = timeStartUp<EditorSubject>(&error);
    timeStartUp<RawSubject>(&error);
    say(QStringLiteral("  first start of the process: %1 ms (not counted)").arg(first, 0, 'f', 0));

    Samples ours, baseline;
    const int rounds = options.reps(9);
    for (int round = 0; round < rounds && error.isEmpty(); ++round) {
        if (round % 2) {
            baseline.add(timeStartUp<RawSubject>(&error));
            ours.add(timeStartUp<EditorSubject>(&error));
        } else {
            ours.add(timeStartUp<EditorSubject>(&error));
            baseline.add(timeStartUp<RawSubject>(&error));
        }
    }
    ResultRow row{QStringLiteral("start-up to document ready"), ours.median(), baseline.median(),
        ResultRow::Target::Ratio, 1.2, !error.isEmpty(), error};
    row.spread(ours, baseline);
    if (error.isEmpty())
        row.note = QStringLiteral("%1 rounds; ours min %2 / max %3 ms, baseline min %4 / max %5 ms")
                       .arg(rounds)
                       .arg(ours.min(), 0, 'f', 0)
                       .arg(ours.max(), 0, 'f', 0)
                       .arg(baseline.min(), 0, 'f', 0)
                       .arg(baseline.max(), 0, 'f', 0);
    report.add(row);
}

// ---- load and fetch --------------------------------------------------------------------

const QString emptyDocument = QStringLiteral("<p>.</p>");

void loadAndFetch(Report &report, const Options &options, const BenchDocuments &docs,
    EditorSubject &ours, Subject &baseline, const QString &file, const QString &label, int loadReps,
    int fetchReps)
{
    const QString text = docs.read(file);
    if (text.isEmpty()) {
        report.skip(label, QStringLiteral("cannot read %1").arg(file));
        return;
    }

    if (options.wants(QStringLiteral("load"))) {
        say(QStringLiteral("load %1 (%2 runs each)").arg(label).arg(loadReps));
        Samples samples[2];
        QString error;
        for (int round = 0; round < loadReps && error.isEmpty(); ++round) {
            for (Subject *side : inTurn(round, ours, baseline)) {
                // Every run replaces a small document, not the big one of the run before.
                side->load(emptyDocument);
                side->waitForFrame();
                idle(50ms);
                const auto start = std::chrono::steady_clock::now();
                const bool ok = side->load(text) && side->waitForFrame();
                const double ms = elapsedMs(start);
                if (!ok)
                    error = side->name() + QStringLiteral(" failed to load");
                samples[side == &ours ? 0 : 1].add(ms);
            }
        }
        ResultRow row{QStringLiteral("load %1 to next frame").arg(label), samples[0].median(),
            samples[1].median(), ResultRow::Target::Ratio, 1.2, !error.isEmpty(), error};
        row.spread(samples[0], samples[1]);
        report.add(row);
    }

    if (!options.wants(QStringLiteral("fetch")))
        return;
    // The same document in both, loaded untimed when the load workload did not run.
    if (!options.wants(QStringLiteral("load"))) {
        ours.load(text);
        baseline.load(text);
    }
    for (const bool whole : {false, true}) {
        say(QStringLiteral("fetch %1, %2 (%3 runs each)")
                .arg(label, whole ? QStringLiteral("whole document") : QStringLiteral("body"))
                .arg(fetchReps));
        Samples samples[2], adapterOnly;
        qsizetype sizes[2] = {0, 0};
        ours.fetch(whole); // switches ReturnFullDocument outside the measurement
        for (int round = 0; round < fetchReps; ++round) {
            for (Subject *side : inTurn(round, ours, baseline)) {
                idle(20ms);
                const auto start = std::chrono::steady_clock::now();
                const QString html = side->fetch(whole);
                const double ms = elapsedMs(start);
                const int i = side == &ours ? 0 : 1;
                samples[i].add(ms);
                sizes[i] = html.size();
            }
            // Where our time goes: the same text through the bridge, without the text rules
            // the editor applies to it afterwards.
            idle(20ms);
            const auto start = std::chrono::steady_clock::now();
            ours.adapterFetch(whole);
            adapterOnly.add(elapsedMs(start));
        }
        const bool broken = sizes[0] < text.size() / 2 || sizes[1] < text.size() / 2;
        ResultRow row{whole ? QStringLiteral("fetch %1 (ReturnFullDocument)").arg(label)
                            : QStringLiteral("fetch %1 (body)").arg(label),
            samples[0].median(), samples[1].median(), ResultRow::Target::Ratio, 1.5, broken,
            QStringLiteral("%1 / %2 characters returned; baseline %3; the "
                           "adapter call alone takes %4 ms of ours")
                .arg(sizes[0])
                .arg(sizes[1])
                .arg(whole ? QStringLiteral("document.documentElement.outerHTML")
                           : QStringLiteral("document.body.innerHTML"))
                .arg(adapterOnly.median(), 0, 'f', 1)};
        row.spread(samples[0], samples[1]);
        report.add(row);
    }
}

// ---- typing ----------------------------------------------------------------------------

struct TypingResult
{
    Samples toDocument[2];
    Samples toFrame[2];
    QString error;
};

// Both sides load the document, then type in turns of ten keys into its middle paragraph.
TypingResult typeInBoth(Subject &ours, Subject &baseline, const QString &html, int keys)
{
    TypingResult result;
    for (Subject *side : {&ours, &baseline}) {
        if (!side->load(html) || !side->waitForFrame())
            result.error = side->name() + QStringLiteral(" failed to load");
    }
    const int paragraphs = paragraphCount(ours);
    if (paragraphs == 0 && result.error.isEmpty())
        result.error = QStringLiteral("the document has no paragraphs");
    if (!result.error.isEmpty())
        return result;

    TypingSession sessions[2]
        = {TypingSession(ours, paragraphs / 2), TypingSession(baseline, paragraphs / 2)};
    const int block = 10;
    for (int typed = 0, round = 0; typed < keys; typed += block, ++round) {
        for (Subject *side : inTurn(round, ours, baseline))
            sessions[side == &ours ? 0 : 1].typeBlock(qMin(block, keys - typed));
    }
    for (int i = 0; i < 2; ++i) {
        sessions[i].verify();
        if (sessions[i].failed() && result.error.isEmpty())
            result.error = sessions[i].error();
        result.toDocument[i] = sessions[i].toDocument();
        result.toFrame[i] = sessions[i].toFrame();
    }
    return result;
}

const char blockLayoutOff[] = "(() => { const V = window.__vantry; V.benchLongDocument = "
                              "V.longDocument; V.longDocument = () => false; })()";
const char blockLayoutOn[]
    = "(() => { const V = window.__vantry; V.longDocument = V.benchLongDocument; })()";

QString spread(const Samples &s)
{
    return QStringLiteral("median %1, p95 %2, max %3")
        .arg(s.median(), 0, 'f', 1)
        .arg(s.percentile(95), 0, 'f', 1)
        .arg(s.max(), 0, 'f', 1);
}

void typing(Report &report, const Options &options, const BenchDocuments &docs, Subject &ours,
    Subject &baseline)
{
    struct Case
    {
        QString label;
        QString html;
    };
    // Generated: paragraphs of about 200 characters of plain words. The article, when it is
    // there, shows a real page of the same size: fewer, longer and styled blocks.
    QList<Case> cases{{QStringLiteral("1 MB, 5,000 paragraphs"), paragraphDocument(5000)},
        {QStringLiteral("5 MB, 25,000 paragraphs"), paragraphDocument(25000)}};
    const QString article = docs.read(QStringLiteral("article-5mb.html"));
    if (!article.isEmpty())
        cases.append({QStringLiteral("article-5mb.html"), article});

    for (const Case &c : std::as_const(cases)) {
        say(QStringLiteral("typing, %1 (%2 keys each)").arg(c.label).arg(options.keys));
        const TypingResult r = typeInBoth(ours, baseline, c.html, options.keys);
        // What laying the caret's block out on its own gives: the same keys with the adapter
        // told the document is short (the sheet that skips far blocks stays).
        Samples alone;
        if (r.error.isEmpty() && ours.load(c.html) && ours.waitForFrame()) {
            ours.evaluate(QLatin1String(blockLayoutOff));
            TypingSession session(ours, paragraphCount(ours) / 2);
            for (int typed = 0; typed < options.keys; typed += 10)
                session.typeBlock(qMin(10, options.keys - typed));
            if (session.verify())
                alone = session.toDocument();
            ours.evaluate(QLatin1String(blockLayoutOn));
        }
        ResultRow row{QStringLiteral("key to character in document, %1").arg(c.label),
            r.toDocument[0].median(), r.toDocument[1].median(), ResultRow::Target::OursMedianBelow,
            16, !r.error.isEmpty(), r.error};
        row.spread(r.toDocument[0], r.toDocument[1]);
        if (r.error.isEmpty())
            row.note = QStringLiteral("ours %1; baseline %2; key to next frame: ours %3, "
                                      "baseline %4; ours without the caret's block laid out "
                                      "alone: %5 (ms)")
                           .arg(spread(r.toDocument[0]), spread(r.toDocument[1]),
                               spread(r.toFrame[0]), spread(r.toFrame[1]),
                               alone.isEmpty() ? QStringLiteral("n/a") : spread(alone));
        report.add(row);
    }
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vantry-bench"));
    // The pages' console (the engine's own warnings included) would only clutter the table.
    QLoggingCategory::setFilterRules(QStringLiteral("js=false"));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Times the editor against a bare QWebEngineView on the same workloads."));
    parser.addHelpOption();
    const QCommandLineOption docsOption(QStringLiteral("docs"),
        QStringLiteral("Folder of the benchmark documents."), QStringLiteral("dir"));
    const QCommandLineOption quickOption(
        QStringLiteral("quick"), QStringLiteral("Fewer runs per workload."));
    const QCommandLineOption studyOption(
        QStringLiteral("study"), QStringLiteral("Also break the time of a key press down."));
    const QCommandLineOption onlyOption(QStringLiteral("only"),
        QStringLiteral(
            "Run only these workloads: startup, load, fetch, replace, commands, spelling, dialogs, "
            "images, memory, typing (comma list)."),
        QStringLiteral("list"));
    const QCommandLineOption keysOption(QStringLiteral("keys"),
        QStringLiteral("Key presses per typing case."), QStringLiteral("n"), QStringLiteral("40"));
    const QCommandLineOption peerRssOption(QStringLiteral("peer-rss"),
        QStringLiteral("The renderer peak RSS to stay below, in MB: TinyMCE's in the peer bench "
                       "run the same hour (default: its reference figure)."),
        QStringLiteral("mb"), QStringLiteral("440"));
    QCommandLineOption childOption(QStringLiteral("child"),
        QStringLiteral("Internal: one side of a memory workload."), QStringLiteral("mode"));
    childOption.setFlags(QCommandLineOption::HiddenFromHelp);
    const QCommandLineOption studyPagesOption(QStringLiteral("study-pages"),
        QStringLiteral("Study only these pages: 50, 5000, 15000, 25000, article (comma list); "
                       "alone: only the layout of one block laid out alone against the body."),
        QStringLiteral("list"));
    const QCommandLineOption studyRulesOption(QStringLiteral("study-rules"),
        QStringLiteral("Study these editor-only style rules beside the editor's own."),
        QStringLiteral("css"));
    parser.addOptions({docsOption, quickOption, studyOption, onlyOption, keysOption,
        studyPagesOption, studyRulesOption, peerRssOption, childOption});
    parser.process(app);

    Options options;
    options.docs = parser.value(docsOption);
    options.repeatScale = parser.isSet(quickOption) ? 0.5 : 1.0;
    options.study = parser.isSet(studyOption) || parser.isSet(studyPagesOption)
        || parser.isSet(studyRulesOption);
    options.studyRules = parser.value(studyRulesOption);
    options.studyPages = parser.value(studyPagesOption).split(QLatin1Char(','), Qt::SkipEmptyParts);
    options.keys = qMax(10, parser.value(keysOption).toInt());
    options.peerRssMB = parser.value(peerRssOption).toDouble();
    if (parser.isSet(onlyOption))
        options.only = parser.value(onlyOption).split(QLatin1Char(','), Qt::SkipEmptyParts);

    Report report;
    const BenchDocuments docs(options.docs);
    if (isMemoryChild(parser.value(childOption)))
        return runMemoryChild(parser.value(childOption), docs);
    const QStringList needed{
        QStringLiteral("article-1mb.html"), QStringLiteral("article-5mb.html")};
    const QStringList missing = docs.missing(needed);
    if (!missing.isEmpty())
        say(QStringLiteral("NOTE: benchmark documents missing in %1: %2. Set VANTRY_BENCH_DOCS "
                           "or pass --docs; the workloads that need them are skipped.")
                .arg(docs.folder(), missing.join(QStringLiteral(", "))));

    if (options.wants(QStringLiteral("startup")))
        startUp(report, options);

    // Before this process starts an engine of its own, so that the machine is as quiet for
    // the child processes as it can be.
    if (options.wants(QStringLiteral("memory")))
        memoryWorkloads(report, docs, options.reps(3), options.peerRssMB);

    auto ours = std::make_unique<EditorSubject>();
    auto baseline = std::make_unique<RawSubject>();
    // Typing gets pages of its own: dozens of megabytes loaded and thrown away before leave
    // both renderers slower at it, by amounts that differ between runs.
    auto renew = [&ours, &baseline] {
        ours.reset();
        baseline.reset();
        idle(300ms);
        ours = std::make_unique<EditorSubject>();
        baseline = std::make_unique<RawSubject>();
        return spinUntil([&] { return ours->isReady() && baseline->isReady(); }, 60s);
    };
    if (!spinUntil([&] { return ours->isReady() && baseline->isReady(); }, 60s)) {
        say(QStringLiteral("The engine did not start; nothing more to measure."));
        report.print();
        return 0;
    }

    if (options.wants(QStringLiteral("load")) || options.wants(QStringLiteral("fetch"))) {
        const struct
        {
            QString file, label;
            int loadReps, fetchReps;
        } cases[] = {{QStringLiteral("article-1mb.html"), QStringLiteral("1 MB"), 9, 11},
            {QStringLiteral("article-5mb.html"), QStringLiteral("5 MB"), 5, 7}};
        for (const auto &c : cases) {
            if (missing.contains(c.file))
                report.skip(QStringLiteral("load and fetch %1").arg(c.label),
                    QStringLiteral("%1 not found in %2").arg(c.file, docs.folder()));
            else
                loadAndFetch(report, options, docs, *ours, *baseline, c.file, c.label,
                    options.reps(c.loadReps), options.reps(c.fetchReps));
        }
    }

    if (options.wants(QStringLiteral("replace")))
        replaceAllWorkload(report, docs, *ours, *baseline, options.reps(7));

    if (options.wants(QStringLiteral("commands")))
        commandsWorkload(report, docs, *ours, *baseline, options.reps(21));

    if (options.wants(QStringLiteral("spelling")))
        spellingWorkload(report, docs, *ours, options.reps(7));

    if (options.wants(QStringLiteral("dialogs")))
        dialogsWorkload(report, *ours, options.reps(11));

    if (options.wants(QStringLiteral("images")))
        imageInsertWorkload(report, docs, *ours, *baseline, options.reps(11));

    const bool typingWanted = options.wants(QStringLiteral("typing")) || options.study;
    if (typingWanted && !renew()) {
        say(QStringLiteral("The engine did not start again; no typing measured."));
        report.print();
        return 0;
    }
    if (options.wants(QStringLiteral("typing")))
        typing(report, options, docs, *ours, *baseline);

    report.print();

    if (options.study)
        typingStudy(*ours, *baseline, options.keys, docs.read(QStringLiteral("article-5mb.html")),
            QStringLiteral("article-5mb.html"), options.studyPages, options.studyRules);
    return 0;
}
