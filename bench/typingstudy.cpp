#include "documents.h"
#include "report.h"
#include "subjects.h"
#include "typing.h"

#include <array>

namespace VantryBench {

using namespace std::chrono_literals;

namespace {

// Gives a side exactly these editor-only rules, in a constructed sheet as the adapter
// keeps its own; any other adopted sheet goes (the editor adopts its own again on every
// load, which is why the study sets the rules both before and after loading).
const char setRulesScript[] = R"JS(
((rules) => {
    const sheets = [];
    if (rules) {
        const sheet = new CSSStyleSheet();
        sheet.replaceSync(rules);
        sheets.push(sheet);
    }
    document.adoptedStyleSheets = sheets;
    return true;
})
)JS";

const char readRulesScript[] = R"JS(
[...document.adoptedStyleSheets].flatMap(s => [...s.cssRules].map(r => r.cssText)).join('\n')
)JS";

// In-page costs without key events, around the middle paragraph brought into view: one
// forced layout after a one-character text change, and one insertText command at a caret.
const char layoutProbeScript[] = R"JS(
((index, rounds) => {
    const median = list => list.sort((a, b) => a - b)[list.length >> 1];
    const p = document.getElementsByTagName('P')[index];
    let text = p.firstChild;
    while (text && text.nodeType !== Node.TEXT_NODE)
        text = text.firstChild;
    const layout = [], insert = [];
    p.scrollIntoView({ block: 'center' });
    void document.body.offsetHeight;
    for (let i = 0; i < rounds; ++i) {
        const t = performance.now();
        text.appendData('x');
        void document.body.offsetHeight;
        layout.push(performance.now() - t);
        text.deleteData(text.length - 1, 1);
        void document.body.offsetHeight;
    }
    const selection = document.getSelection();
    for (let i = 0; i < rounds; ++i) {
        const range = document.createRange();
        range.setStart(text, Math.min(50, text.length));
        selection.removeAllRanges();
        selection.addRange(range);
        void document.body.offsetHeight;
        const t = performance.now();
        document.execCommand('insertText', false, 'y');
        insert.push(performance.now() - t);
    }
    return [median(layout), median(insert)];
})
)JS";

// The layout after a one-character change with the changed block laid out alone (the
// rule the adapter gives the block typed into) against the same without it, in turns,
// on paragraphs made in the page under the editor's rules.
const char blockAloneProbeScript[] = R"JS(
((rules, count, rounds) => {
    const median = list => list.sort((a, b) => a - b)[list.length >> 1];
    const editor = new CSSStyleSheet(), own = new CSSStyleSheet();
    editor.replaceSync(rules);
    document.adoptedStyleSheets = [editor, own];
    const words = 'account balance channel decision evidence finance garden harbour income ';
    const body = document.createDocumentFragment();
    for (let i = 0; i < count; ++i) {
        const p = document.createElement('p');
        p.textContent = i + ' ' + words.repeat(3);
        body.appendChild(p);
    }
    document.body.replaceChildren(body);
    const p = document.body.children[count >> 1];
    const text = p.firstChild;
    p.scrollIntoView({ block: 'center' });
    const height = p.getBoundingClientRect().height;
    const alone = 'body > :nth-child(' + ((count >> 1) + 1) + ') { contain: strict; ' +
                  'box-sizing: border-box; height: ' + height + 'px; }';
    const one = () => {
        const t = performance.now();
        text.appendData('x');
        void document.body.offsetHeight;
        const spent = performance.now() - t;
        text.deleteData(text.length - 1, 1);
        void document.body.offsetHeight;
        return spent;
    };
    const whole = [], block = [];
    for (let i = 0; i < rounds; ++i) {
        own.replaceSync('');
        void document.body.offsetHeight;
        whole.push(one());
        own.replaceSync(alone);
        void document.body.offsetHeight;
        block.push(one());
    }
    document.body.replaceChildren();
    return [median(whole), median(block)];
})
)JS";

void setRules(Subject &side, const QString &rules)
{
    side.evaluate(
        QLatin1String(setRulesScript) + QLatin1Char('(') + jsString(rules) + QLatin1Char(')'));
}

QString ms(double value)
{
    return QString::number(value, 'f', value < 10 ? 2 : 1);
}

struct Phases
{
    static constexpr std::array<const char *, 8> names{"handlers", "toKeypress", "toBeforeinput",
        "insertion", "edit", "input", "toFrame", "frame"};
    std::array<Samples, names.size()> values;

    void add(const QVariantList &samples)
    {
        for (const QVariant &sample : samples) {
            const QVariantMap map = sample.toMap();
            for (std::size_t i = 0; i < names.size(); ++i)
                values[i].add(map.value(QLatin1String(names[i])).toDouble());
        }
    }
};

// Both sides edit as they run, under no rules, or under rules given on the command line.
struct Variant
{
    QString name;
    bool rules;
    bool late;
    QString ownRules = {}; // instead of the editor's
    bool live = false;     // each side's sheets as it keeps them while it runs
};

void prepare(Subject &ours, Subject &baseline, const QString &html, const Variant &variant,
    const QString &editorRules)
{
    const QString rules = !variant.rules ? QString()
        : variant.ownRules.isEmpty()     ? editorRules
                                         : variant.ownRules;
    const QString first = variant.late ? QString() : rules;
    for (Subject *side : {&ours, &baseline}) {
        if (variant.live) {
            side->load(html);
            side->waitForFrame();
            continue;
        }
        setRules(*side, first);
        side->load(html);
        // The editor puts its own rules back on every load.
        setRules(*side, first);
        side->waitForFrame();
        if (variant.late) {
            setRules(*side, rules);
            side->waitForFrame();
        }
    }
}

// Types keys into both sides with probes on and prints a line per side.
void studyCase(Subject &ours, Subject &baseline, const QString &label, const QString &html,
    const Variant &variant, const QString &editorRules, int keys)
{
    prepare(ours, baseline, html, variant, editorRules);
    const int paragraph = paragraphCount(ours) / 2;
    for (Subject *side : {&ours, &baseline}) {
        const QVariantList costs = side->evaluate(QLatin1String(layoutProbeScript)
                                           + QStringLiteral("(%1, 15)").arg(paragraph))
                                       .toList();
        if (costs.size() == 2)
            say(QStringLiteral("  %1 | %2 | %3 | without keys: a layout after a one-character "
                               "change %4 ms, an insertText command %5 ms")
                    .arg(label, variant.name, side->name(), ms(costs.at(0).toDouble()),
                        ms(costs.at(1).toDouble())));
    }

    // The probe above changed the documents: start again from the text.
    prepare(ours, baseline, html, variant, editorRules);
    for (Subject *side : {&ours, &baseline})
        KeyProbe::install(*side);
    TypingSession sessions[2]
        = {TypingSession(ours, paragraph), TypingSession(baseline, paragraph)};
    Phases phases[2];
    const int block = 10;
    for (int typed = 0, round = 0; typed < keys; typed += block, ++round) {
        for (int i : {round % 2, 1 - round % 2}) {
            sessions[i].typeBlock(qMin(block, keys - typed));
            // The session waited for the last key's frame, so its phases are all in.
            phases[i].add(KeyProbe::take(sessions[i].side()));
        }
    }
    for (int i = 0; i < 2; ++i) {
        TypingSession &s = sessions[i];
        s.verify();
        if (s.failed()) {
            say(QStringLiteral("  %1 | %2 | %3").arg(label, variant.name, s.error()));
            continue;
        }
        QStringList cells{label, variant.name, s.side().name(), ms(s.toDocument().median()),
            ms(s.toDocument().percentile(95)), ms(s.toFrame().median())};
        for (const Samples &phase : phases[i].values)
            cells.append(ms(phase.median()));
        say(QStringLiteral("  ") + cells.join(QStringLiteral(" | ")));
    }
}

// The round trip of one cheap call and an idle frame wait, with nothing else going on.
void pollCost(Subject &ours, Subject &baseline, const QString &label, const QString &html)
{
    for (Subject *side : {&ours, &baseline}) {
        side->load(html);
        side->waitForFrame();
        const int paragraph = paragraphCount(*side) / 2;
        Samples text, frame;
        for (int i = 0; i < 30; ++i) {
            auto start = std::chrono::steady_clock::now();
            side->elementText(QStringLiteral("P"), paragraph);
            text.add(elapsedMs(start));
            start = std::chrono::steady_clock::now();
            side->waitForFrame();
            frame.add(elapsedMs(start));
        }
        say(QStringLiteral("  %1 | %2 | one poll %3 ms (p90 %4) | an idle frame wait %5 ms")
                .arg(label, side->name(), ms(text.median()), ms(text.percentile(90)),
                    ms(frame.median())));
    }
}

} // namespace

void typingStudy(Subject &ours, Subject &baseline, int keys, const QString &extraPage,
    const QString &extraLabel, const QStringList &only, const QString &candidateRules)
{
    const auto wanted
        = [&only](const QString &page) { return only.isEmpty() || only.contains(page); };
    keys = qMax(10, keys / 2);
    say(QString());
    say(QStringLiteral("Typing study: where the time of a key press goes"));

    if (only.contains(QStringLiteral("alone"))) {
        const QString rules = ours.evaluate(QLatin1String(readRulesScript)).toString();
        for (const int count : {5000, 25000}) {
            const QVariantList costs
                = baseline
                      .evaluate(QLatin1String(blockAloneProbeScript)
                              + QStringLiteral("(%1, %2, 15)").arg(jsString(rules)).arg(count),
                          120s)
                      .toList();
            if (costs.size() == 2)
                say(QStringLiteral("  %1 paragraphs: a layout after a one-character change %2 "
                                   "ms, with the block laid out alone %3 ms")
                        .arg(count)
                        .arg(ms(costs.at(0).toDouble()), ms(costs.at(1).toDouble())));
        }
        return;
    }
    say(QStringLiteral("Cost of measuring (no key pressed):"));
    pollCost(ours, baseline, QStringLiteral("50 paragraphs"), paragraphDocument(50));
    pollCost(ours, baseline, QStringLiteral("25,000 paragraphs"), paragraphDocument(25000));

    const QString editorRules = ours.evaluate(QLatin1String(readRulesScript)).toString();
    say(QStringLiteral("The editor's rules: %1").arg(editorRules));
    // A copy of the editor's rules is fixed where they stood at the time of copying, the
    // blocks hidden far from the caret then included: only the live variant types into the
    // editor as it runs.
    QList<Variant> variants{{QStringLiteral("as each side runs"), false, false, {}, true},
        {QStringLiteral("no rules"), false, false}};
    if (!candidateRules.isEmpty()) {
        say(QStringLiteral("Candidate rules: %1").arg(candidateRules));
        variants = {variants.first(), {QStringLiteral("candidate"), true, false, candidateRules}};
    }

    say(QStringLiteral("Per key, medians in ms (%1 keys per side). Phases measured in the page: "
                       "handlers = keydown listeners; then until keypress, until beforeinput, "
                       "the insertion until input (edit = those three); input = input "
                       "listeners; toFrame = until the next frame starts; frame = its style, "
                       "layout and paint.")
            .arg(keys));
    say(QStringLiteral("  document | rules | side | key to text | p95 | key to frame | handlers | "
                       "to keypress | to beforeinput | insertion | edit | input | toFrame | "
                       "frame"));
    QList<QPair<QString, QString>> pages;
    for (const int paragraphs : {50, 5000, 15000, 25000}) {
        if (wanted(QString::number(paragraphs)))
            pages.append(
                {QStringLiteral("%1 paragraphs").arg(paragraphs), paragraphDocument(paragraphs)});
    }
    if (!extraPage.isEmpty() && wanted(QStringLiteral("article")))
        pages.append({extraLabel, extraPage});
    for (const auto &[label, html] : std::as_const(pages)) {
        for (const Variant &variant : variants)
            studyCase(ours, baseline, label, html, variant, editorRules, keys);
    }
}

} // namespace VantryBench
