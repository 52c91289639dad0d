#include "typing.h"

#include "subjects.h"

#include <QTest>

namespace VantryBench {

using namespace std::chrono_literals;

namespace {

const QString paragraphTag = QStringLiteral("P");

// Says where key input would go, for a key that got lost.
const char whereIsTheCaret[] = R"JS(
(() => {
    const s = document.getSelection();
    const node = s && s.anchorNode;
    const block = node && (node.nodeType === Node.TEXT_NODE ? node.parentNode : node);
    const index = [...document.getElementsByTagName('P')].indexOf(block);
    return 'document focused: ' + document.hasFocus() + ', caret in P ' + index + ' at ' +
           (s ? s.anchorOffset : -1) + ', active element ' +
           (document.activeElement ? document.activeElement.tagName : 'none');
})()
)JS";

} // namespace

TypingSession::TypingSession(Subject &side, int paragraph, int offset)
    : m_side(side)
    , m_paragraph(paragraph)
    , m_offset(offset)
{ }

bool TypingSession::fail(const QString &why)
{
    if (m_error.isEmpty())
        m_error = m_side.name() + QStringLiteral(": ") + why;
    return false;
}

bool TypingSession::typeBlock(int keys, std::chrono::milliseconds gap)
{
    if (failed())
        return false;
    if (!m_started) {
        m_original = m_side.elementText(paragraphTag, m_paragraph);
        if (m_original.isEmpty())
            return fail(QStringLiteral("paragraph %1 is missing or empty").arg(m_paragraph));
        m_started = true;
    }
    if (!m_side.focusInput())
        return fail(QStringLiteral("the view did not take the focus"));
    if (!m_side.placeCaret(paragraphTag, m_paragraph, m_offset + int(m_typed.size())))
        return fail(QStringLiteral("the caret could not be placed"));
    m_side.waitForFrame();
    idle(gap);

    QWidget *input = m_side.input();
    for (int k = 0; k < keys; ++k) {
        const char key = char('a' + m_typed.size() % 26);
        const qsizetype wanted = m_original.size() + m_typed.size() + 1;
        const auto start = std::chrono::steady_clock::now();
        QTest::keyClick(input, key);
        const bool arrived = pollUntil(
            [&] { return m_side.elementText(paragraphTag, m_paragraph).size() >= wanted; }, 5s);
        if (!arrived)
            return fail(QStringLiteral("key %1 never reached the paragraph (%2)")
                            .arg(k + 1)
                            .arg(m_side.evaluate(QLatin1String(whereIsTheCaret)).toString()));
        m_toDocument.add(elapsedMs(start));
        m_typed.append(QLatin1Char(key));
        if (!m_side.waitForFrame(5s))
            return fail(QStringLiteral("no frame came after key %1").arg(k + 1));
        m_toFrame.add(elapsedMs(start));
        idle(gap);
    }
    return true;
}

bool TypingSession::verify()
{
    if (failed())
        return false;
    // The caret goes into the paragraph's first text, which may be shorter than the offset
    // asked for: what counts is that the keys came out in one piece and nothing else moved.
    const QString text = m_side.elementText(paragraphTag, m_paragraph);
    const qsizetype at = text.indexOf(m_typed);
    if (at < 0 || at > m_offset || QString(text).remove(at, m_typed.size()) != m_original)
        return fail(QStringLiteral("the typed text is not where the caret was"));
    return true;
}

int paragraphCount(Subject &side)
{
    return side.evaluate(QStringLiteral("document.getElementsByTagName('P').length")).toInt();
}

namespace KeyProbe {

// Window listeners in the capture phase run before, and in the bubbling phase after, the
// document's own (the adapter listens on the document).
const char probeScript[] = R"JS(
(() => {
    const p = window.__benchProbe = { samples: [], current: null };
    const now = () => performance.now();
    window.addEventListener('keydown', () => { p.current = { kd0: now() }; }, true);
    window.addEventListener('keydown', () => { if (p.current) p.current.kd1 = now(); }, false);
    window.addEventListener('keypress', () => { if (p.current) p.current.kp0 = now(); }, true);
    window.addEventListener('beforeinput', () => { if (p.current) p.current.bi0 = now(); }, true);
    window.addEventListener('input', () => { if (p.current) p.current.in0 = now(); }, true);
    window.addEventListener('input', () => {
        const c = p.current;
        if (!c || c.in0 === undefined)
            return;
        c.in1 = now();
        p.current = null;
        requestAnimationFrame(() => {
            c.raf = now();
            // Handled after the frame's own work, like the frame tickets.
            const channel = new MessageChannel();
            channel.port1.onmessage = () => {
                c.done = now();
                channel.port1.close();
                p.samples.push({ handlers: c.kd1 - c.kd0, toKeypress: c.kp0 - c.kd1,
                                 toBeforeinput: c.bi0 - c.kp0, insertion: c.in0 - c.bi0,
                                 edit: c.in0 - c.kd1,
                                 input: c.in1 - c.in0, toFrame: c.raf - c.in1,
                                 frame: c.done - c.raf });
            };
            channel.port2.postMessage(null);
        });
    }, false);
    return true;
})()
)JS";

bool install(Subject &side)
{
    return side.evaluate(QLatin1String(probeScript)).toBool();
}

QVariantList take(Subject &side)
{
    return side
        .evaluate(QStringLiteral("window.__benchProbe ? window.__benchProbe.samples"
                                 ".splice(0) : []"))
        .toList();
}

} // namespace KeyProbe

} // namespace VantryBench
