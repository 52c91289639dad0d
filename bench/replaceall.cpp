#include "replaceall.h"

#include "benchsupport.h"
#include "documents.h"
#include "report.h"
#include "subjects.h"

#include <VantryHTMLEditor/HTMLEditorComponent.h>

namespace VantryBench {

using namespace std::chrono_literals;

namespace {

const QString documentFile = QStringLiteral("lorem-1mb.html");
constexpr int expectedHits = 10000;

// The plain way: every text node, every hit, in one script.
const QString baselineScript = QStringLiteral(
    "(() => { let hits = 0; const walker = document.createTreeWalker(document.body, "
    "NodeFilter.SHOW_TEXT); for (let n = walker.nextNode(); n; n = walker.nextNode()) { "
    "const text = n.data.replace(/lorem/gi, () => { ++hits; return 'ipsum'; }); "
    "if (text !== n.data) n.data = text; } return hits; })()");

const QString countScript = QStringLiteral(
    "(() => { const t = document.body.textContent; return [(t.match(/ipsum/g) || []).length, "
    "(t.match(/lorem/gi) || []).length]; })()");

} // namespace

void replaceAllWorkload(
    Report &report, const BenchDocuments &docs, EditorSubject &ours, RawSubject &baseline, int reps)
{
    const QString label = QStringLiteral("replace all, 10,000 hits in 1 MB");
    const QString text = docs.read(documentFile);
    if (text.isEmpty()) {
        report.skip(label, QStringLiteral("cannot read %1 in %2").arg(documentFile, docs.folder()));
        return;
    }
    say(QStringLiteral("replace all lorem by ipsum in %1 (%2 runs each)")
            .arg(documentFile)
            .arg(reps));

    // Round 0 warms both sides' script engines up and is reported apart.
    Samples toReturn[2], toFrame[2];
    double cold[2] = {0, 0};
    QString error;
    for (int round = 0; round <= reps && error.isEmpty(); ++round) {
        Subject *order[2] = {&ours, &baseline};
        if (round % 2)
            std::swap(order[0], order[1]);
        for (Subject *side : order) {
            const int i = side == &ours ? 0 : 1;
            if (!side->load(text) || !side->waitForFrame()) {
                error = side->name() + QStringLiteral(" failed to load");
                break;
            }
            idle(50ms);
            const auto start = std::chrono::steady_clock::now();
            if (side == &ours) {
                ours.editor()->ReplaceAllText(QStringLiteral("lorem"), QStringLiteral("ipsum"));
            } else {
                bool ok = false;
                baseline.evaluate(baselineScript, 60s, &ok);
                if (!ok)
                    error = QStringLiteral("the baseline script failed");
            }
            const double returned = elapsedMs(start);
            side->waitForFrame();
            if (round == 0) {
                cold[i] = returned;
            } else {
                toReturn[i].add(returned);
                toFrame[i].add(elapsedMs(start));
            }

            // Both must have done the whole job, or the times mean nothing.
            const QVariantList counts = side->evaluate(countScript).toList();
            if (counts.size() != 2 || counts.at(0).toInt() != expectedHits
                || counts.at(1).toInt() != 0)
                error = QStringLiteral("%1 left %2 ipsum and %3 lorem, not %4 and 0")
                            .arg(side->name())
                            .arg(counts.value(0).toInt())
                            .arg(counts.value(1).toInt())
                            .arg(expectedHits);
        }
    }

    ResultRow row{label, toReturn[0].median(), toReturn[1].median(), ResultRow::Target::Ratio, 3.0,
        !error.isEmpty(), error};
    row.spread(toReturn[0], toReturn[1]);
    if (error.isEmpty())
        row.note = QStringLiteral("until the call returns; ours must also stay below 500 ms "
                                  "(ours min %1, max %2; first, cold run: ours %3, baseline %4). "
                                  "Until the next frame: ours %5, baseline %6 ms")
                       .arg(toReturn[0].min(), 0, 'f', 0)
                       .arg(toReturn[0].max(), 0, 'f', 0)
                       .arg(cold[0], 0, 'f', 0)
                       .arg(cold[1], 0, 'f', 0)
                       .arg(toFrame[0].median(), 0, 'f', 0)
                       .arg(toFrame[1].median(), 0, 'f', 0);
    report.add(row);
}

} // namespace VantryBench
