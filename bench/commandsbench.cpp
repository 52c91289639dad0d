#include "commandsbench.h"

#include "benchsupport.h"
#include "documents.h"
#include "report.h"
#include "subjects.h"

#include "commands/selectionstate.h"
#include "platform/webengine/webenginedesignsurface.h"

#include <VantryHTMLEditor/HTMLEditorComponent.h>

#include <functional>

namespace VantryBench {

using namespace std::chrono_literals;
using Vantry::Platform::WebEngineDesignSurface;

namespace {

// What the toolbar was told after the last bold, and whether the document agrees: checked
// after each timed run, outside the time, so that the state cannot be an old one.
QHash<int, Vantry::Platform::CommandState> shownAfterBold;

bool boldShownRight(WebEngineDesignSurface &s)
{
    const QVariantList states
        = s.call(QStringLiteral("commandStatus"), {QVariant(QVariantList{5000})})
              .value.toMap()
              .value(QStringLiteral("states"))
              .toList();
    return !states.isEmpty() && shownAfterBold.value(5000) == states.first().toInt();
}

const QString selectWord = QStringLiteral(
    "(() => { const s = document.getSelection(); s.modify('extend', 'forward', 'word'); "
    "return !s.isCollapsed; })()");

// The engine's own bold and the states of the same commands, font name and size included.
const QString baselineBold = QStringLiteral(
    "(() => { document.execCommand('bold'); const names = ['bold', 'italic', 'underline', "
    "'foreColor', 'hiliteColor', 'justifyLeft', 'justifyCenter', 'justifyRight', "
    "'insertOrderedList', 'insertUnorderedList', 'outdent', 'indent', 'createLink', "
    "'insertImage', 'cut', 'copy', 'paste', 'undo', 'redo']; const out = names.map(n => "
    "(document.queryCommandEnabled(n) ? 2 : 0) + (document.queryCommandState(n) ? 4 : 0)); "
    "out.push(document.queryCommandValue('fontName'), document.queryCommandValue('fontSize')); "
    "return out.length; })()");

// What a bold of the adapter's own would cost at least: the selected word moved into a new
// B element, recorded as one undo step, beside the engine's bold alone. A study: the
// engine's command also unbolds, merges and splits across blocks, which this does not.
const QString inlineBold = QStringLiteral(
    "(() => { const s = document.getSelection(); const r = s.getRangeAt(0); let ok = false; "
    "window.__vantry.recorded(() => { const b = document.createElement('b'); "
    "b.appendChild(r.extractContents()); r.insertNode(b); s.selectAllChildren(b); ok = true; "
    "}); return ok; })()");

const QString engineBold = QStringLiteral("document.execCommand('bold')");

const QString baselineRow = QStringLiteral(
    "(() => { const at = document.getSelection().anchorNode; const cell = (at.nodeType === 1 "
    "? at : at.parentElement).closest('td'); const tr = cell.parentNode; const row = "
    "tr.parentNode.insertRow(tr.sectionRowIndex); for (let i = 0; i < tr.cells.length; ++i) "
    "row.insertCell(); return true; })()");

const QString baselineColumn = QStringLiteral(
    "(() => { const at = document.getSelection().anchorNode; const cell = (at.nodeType === 1 "
    "? at : at.parentElement).closest('td'); const index = cell.cellIndex; for (const row of "
    "cell.closest('table').rows) row.insertCell(index); return true; })()");

struct Step
{
    QString label;
    QString file;
    QString caretTag;
    int caretIndex;
    bool selectWord;
    double limitMs;
    std::function<bool(WebEngineDesignSurface &)> ours;
    QString baseline;
    std::function<bool(WebEngineDesignSurface &)> check = {};
    bool study = false;
};

void measure(Report &report, const BenchDocuments &docs, EditorSubject &ours, RawSubject &baseline,
    int reps, const Step &step)
{
    const QString text = docs.read(step.file);
    auto *surface = ours.editor()->findChild<WebEngineDesignSurface *>();
    if (text.isEmpty() || !surface) {
        report.skip(
            step.label, QStringLiteral("cannot read %1 in %2").arg(step.file, docs.folder()));
        return;
    }
    say(QStringLiteral("%1 (%2 runs each)").arg(step.label).arg(reps));
    Samples samples[2];
    QString error;
    Subject *sides[2] = {&ours, &baseline};
    for (Subject *side : sides) {
        if (!side->load(text) || !side->waitForFrame()) {
            error = side->name() + QStringLiteral(" failed to load");
            break;
        }
        for (int round = 0; round <= reps && error.isEmpty(); ++round) {
            if (!side->placeCaret(step.caretTag, step.caretIndex, 0)
                || (step.selectWord && !side->evaluate(selectWord).toBool())) {
                error = side->name() + QStringLiteral(" could not place the selection");
                break;
            }
            side->waitForFrame();
            idle(20ms);
            const auto start = std::chrono::steady_clock::now();
            bool ok = false;
            if (side == &ours)
                ok = step.ours(*surface);
            else
                side->evaluate(step.baseline, 30s, &ok);
            const double ms = elapsedMs(start);
            if (!ok)
                error = side->name() + QStringLiteral(" failed: ") + surface->lastError();
            else if (side == &ours && step.check && !step.check(*surface))
                error = QStringLiteral("ours left the toolbar wrong");
            else if (round > 0) // round 0 warms up
                samples[side == &ours ? 0 : 1].add(ms);
        }
    }
    ResultRow row{step.label, samples[0].median(), samples[1].median(),
        step.study ? ResultRow::Target::None : ResultRow::Target::OursMedianBelow, step.limitMs,
        !error.isEmpty(), error};
    row.spread(samples[0], samples[1]);
    if (error.isEmpty())
        row.note = QStringLiteral("until the call returns (ours min %1, max %2)")
                       .arg(samples[0].min(), 0, 'f', 2)
                       .arg(samples[0].max(), 0, 'f', 2);
    report.add(row);
}

} // namespace

void commandsWorkload(
    Report &report, const BenchDocuments &docs, EditorSubject &ours, RawSubject &baseline, int reps)
{
    const Step steps[] = {
        {QStringLiteral("bold on a word + status refresh, 1 MB"),
            QStringLiteral("article-1mb.html"), QStringLiteral("p"), 250, true, 5.0,
            [](WebEngineDesignSurface &s) {
                // The toolbar's own question after the command, as its refresh asks it.
                QHash<int, QVariant> values;
                if (!s.execCommand(5000))
                    return false;
                shownAfterBold
                    = s.queryStatus(Vantry::Commands::SelectionState::queriedCommands(), &values);
                return !s.lastCallFailed();
            },
            baselineBold, boldShownRight},
        {QStringLiteral("study: adapter-side <b> vs the engine's bold, 1 MB"),
            QStringLiteral("article-1mb.html"), QStringLiteral("p"), 250, true, 5.0,
            [&ours](WebEngineDesignSurface &) {
                bool ok = false;
                return ours.evaluate(inlineBold, 30s, &ok).toBool() && ok;
            },
            engineBold, {}, true},
        {QStringLiteral("insert row, caret in row 500 of 1,000 x 5"),
            QStringLiteral("table-1000x5.html"), QStringLiteral("td"), 499 * 5, false, 50.0,
            [](WebEngineDesignSurface &s) { return s.execCommand(5021); }, baselineRow},
        {QStringLiteral("insert column, caret in row 500 of 1,000 x 5"),
            QStringLiteral("table-1000x5.html"), QStringLiteral("td"), 499 * 5, false, 50.0,
            [](WebEngineDesignSurface &s) { return s.execCommand(5020); }, baselineColumn},
    };
    for (const Step &step : steps)
        measure(report, docs, ours, baseline, reps, step);
}

} // namespace VantryBench
